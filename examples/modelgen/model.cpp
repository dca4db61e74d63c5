#include "examples/modelgen/model.h"

namespace modelgen {

Model::Model()
{
    packages_.emplace_back();
}

Package& Model::package(Package& parent, CString const& name, Place place)
{
    Package*& known = packageByName_[{parent.index, name}];
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

    classifierByName_.insert_or_assign({package.index, id}, &added);
    classifierByName_.try_emplace({package.index, name}, &added);
    auto makeReachable = [&](CString const& key) {
        auto const [entry, isNew] = uniqueByName_.try_emplace(key, &added);
        if (!isNew && entry->second != &added)
            entry->second = nullptr;
    };
    makeReachable(id);
    makeReachable(name);
    return added;
}

Classifier* Model::findIn(Package const& package, CString const& id) const
{
    auto const found = classifierByName_.find({package.index, id});
    return found == classifierByName_.end() ? nullptr : found->second;
}

Package const* Model::findPackage(Package const& parent, CString const& name) const
{
    auto const found = packageByName_.find({parent.index, name});
    return found == packageByName_.end() ? nullptr : found->second;
}

Classifier* Model::find(Package const& from, CString const& name) const
{
    for (Package const* scope = &from; scope; scope = scope->parent)
        if (Classifier* const found = findIn(*scope, name))
            return found;

    if (name.Find('.') < 0 && name.Find("::") < 0) {
        auto const found = uniqueByName_.find(name);
        return found == uniqueByName_.end() ? nullptr : found->second;
    }
    return findQualified(from, splitQualifiedName(name));
}

Classifier* Model::findQualified(Package const& from, std::vector<CString> const& parts) const
{
    if (parts.empty())
        return nullptr;
    for (Package const* scope = &from; scope; scope = scope->parent) {
        Package const* inner = scope;
        for (std::size_t i = 0; inner && i + 1 < parts.size(); ++i)
            inner = findPackage(*inner, parts[i]);
        if (!inner)
            continue;
        if (Classifier* const found = findIn(*inner, parts.back()))
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
