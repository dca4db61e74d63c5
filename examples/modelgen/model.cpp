#include "examples/modelgen/model.h"

namespace modelgen {

Model::Model()
{
    packages_.emplace_back();
}

Package& Model::package(Package& parent, CString const& name, Place place)
{
    Package*& known = parent.packages[name];
    if (!known) {
        known = &packages_.emplace_back();
        known->name = name;
        known->parent = &parent;
        known->place = place;
        known->index = static_cast<int>(packages_.size()) - 1;
        known->depth = parent.depth + 1;
    }
    return *known;
}

Classifier& Model::add(Package& package, CString const& id, CString const& name)
{
    Classifier& added = classifiers_.emplace_back();
    added.name = name;
    added.package = &package;
    added.index = static_cast<int>(classifiers_.size()) - 1;

    package.classifiers.SetAt(id, &added);
    if (!package.classifiers.PLookup(name))
        package.classifiers.SetAt(name, &added);
    for (CString const* const key : {&id, &name}) {
        auto* const known = uniqueByName_.PLookup(*key);
        if (!known)
            uniqueByName_.SetAt(*key, &added);
        else if (known->value != &added)
            known->value = nullptr;
    }
    return added;
}

Classifier* Model::findIn(Package const& package, CString const& id) const
{
    Classifier* found = nullptr;
    package.classifiers.Lookup(id, found);
    return found;
}

Classifier* Model::find(Package const& from, CString const& name) const
{
    for (Package const* scope = &from; scope; scope = scope->parent)
        if (Classifier* const found = findIn(*scope, name))
            return found;

    if (name.Find('.') < 0 && name.Find("::") < 0) {
        Classifier* found = nullptr;
        uniqueByName_.Lookup(name, found);
        return found;
    }
    return findQualified(from, splitQualifiedName(name));
}

Classifier* Model::findQualified(Package const& from, std::vector<CString> const& parts) const
{
    if (parts.empty())
        return nullptr;
    for (Package const* scope = &from; scope; scope = scope->parent) {
        Package const* inner = scope;
        for (std::size_t i = 0; inner && i + 1 < parts.size(); ++i) {
            auto const* const next = inner->packages.PLookup(parts[i]);
            inner = next ? next->value : nullptr;
        }
        Classifier* const found = inner ? findIn(*inner, parts.back()) : nullptr;
        if (found)
            return found;
    }
    return nullptr;
}

std::vector<CString> splitQualifiedName(CString const& name)
{
    std::vector<CString> parts;
    int start = 0;
    for (int i = 0; i <= name.GetLength(); ++i) {
        bool const isEnd = i == name.GetLength();
        bool const isColons = !isEnd && name[i] == ':' && name[i + 1] == ':';
        if (!isEnd && name[i] != '.' && !isColons)
            continue;
        if (i > start)
            parts.push_back(name.Mid(start, i - start));
        i += isColons ? 1 : 0;
        start = i + 1;
    }
    return parts;
}

}  // namespace modelgen
