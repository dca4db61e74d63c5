#include "examples/modelgen/linker.h"

#include "examples/modelgen/pumlClass.h"

#include <algorithm>
#include <utility>

namespace modelgen {

// Code that inherits through more levels than this is no model but an accident, or an attack.
constexpr int deepestInheritance = 200;

void Linker::addRelation(Package& scope, Relation relation)
{
    relations_.push_back({&scope, std::move(relation)});
}

void Linker::addBase(Classifier& derived, CString const& base, std::vector<Type> arguments, Place place)
{
    bases_.push_back({&derived, base, std::move(arguments), place});
}

void Linker::addNote(Package& scope, CString const& target, std::vector<CString> lines)
{
    notes_.push_back({&scope, target, std::move(lines)});
}

void Linker::addSilentName(int file, CString const& name)
{
    while (silentNames_.size() <= std::size_t(file))
        silentNames_.emplace_back();
    silentNames_[std::size_t(file)].SetAt(name, true);
}

bool Linker::isSilent(Place place, CString const& name) const
{
    return std::size_t(place.file) < silentNames_.size() &&
        silentNames_[std::size_t(place.file)].PLookup(name) != nullptr;
}

// "Order::lines" is a member of Order unless there is a class of that qualified name.
Classifier* Linker::find(Package const& scope, CString const& name) const
{
    Classifier* found = model_.find(scope, name);
    if (!found) {
        int colons = name.GetLength() - 1;
        while (colons > 0 && !(name[colons] == ':' && name[colons - 1] == ':'))
            --colons;
        if (colons > 1)
            found = model_.find(scope, name.Left(colons - 1));
    }
    return found;
}

Classifier& Linker::findOrMake(Package& scope, CString const& name, Place place)
{
    if (Classifier* const found = find(scope, name))
        return *found;
    std::vector<CString> parts = splitQualifiedName(name);
    CString const own = parts.empty() ? name : parts.back();
    Package* package = &scope;
    if (parts.size() > 1) {
        package = &model_.root();
        for (std::size_t i = 0; i + 1 < parts.size() && package->depth < deepestPackage; ++i)
            package = &model_.package(*package, parts[i], place);
    }
    report_.warning(place, quoted(name) + " is not declared: an empty class stands for it");
    Classifier& made = model_.add(*package, own, own);
    made.place = place;
    return made;
}

void Linker::link()
{
    for (PendingBase& pending : bases_)
        inherit(*pending.derived, findOrMake(*pending.derived->package, pending.name, pending.place),
                std::move(pending.arguments), pending.place);
    for (PendingRelation& pending : relations_)
        linkRelation(*pending.scope, pending.relation);
    for (PendingNote& pending : notes_)
        if (Classifier* const target = find(*pending.scope, pending.target))
            target->notes.insert(target->notes.end(), pending.lines.begin(), pending.lines.end());
    checkCycles();
}

void Linker::linkRelation(Package& scope, Relation const& relation)
{
    if (relation.isHidden)
        return;
    for (CString const& name : {relation.left.name, relation.right.name})
        if (isSilent(relation.place, name) && !find(scope, name))
            return;
    Classifier& left = findOrMake(scope, relation.left.name, relation.place);
    Classifier& right = findOrMake(scope, relation.right.name, relation.place);

    bool const hasDiamond =
        relation.left.isWhole || relation.left.isShared || relation.right.isWhole || relation.right.isShared;
    if (relation.left.isGeneral || relation.right.isGeneral) {
        if (relation.left.isGeneral == relation.right.isGeneral || hasDiamond)
            report_.warning(relation.place, "an arrow with a triangle and another mark: passed over");
        else if (relation.left.isGeneral)
            inherit(right, left, relation.left.arguments, relation.place);
        else
            inherit(left, right, relation.right.arguments, relation.place);
    } else if (relation.isDotted && !hasDiamond) {
        if (relation.right.isArrowHead)
            left.dependencies.push_back(&right);
        if (relation.left.isArrowHead)
            right.dependencies.push_back(&left);
    } else {
        linkAssociation(left, right, relation);
    }
}

// An end is reached from the other one if its arrow says so; without any arrow, the whole of a diamond reaches its
// parts, and both ends of a plain line reach each other. A role name makes its end reachable, a cross doesn't.
void Linker::linkAssociation(Classifier& left, Classifier& right, Relation const& relation)
{
    RelationEnd const& l = relation.left;
    RelationEnd const& r = relation.right;
    bool const leftIsWhole = l.isWhole || l.isShared;
    bool const rightIsWhole = r.isWhole || r.isShared;
    bool const isPlain =
        !l.isArrowHead && !r.isArrowHead && !leftIsWhole && !rightIsWhole && !l.isExcluded && !r.isExcluded;

    bool const reachesRight = !r.isExcluded &&
        (r.isArrowHead || leftIsWhole || isPlain || !r.role.IsEmpty() || (l.isExcluded && !l.isArrowHead));
    bool const reachesLeft = !l.isExcluded &&
        (l.isArrowHead || rightIsWhole || isPlain || !l.role.IsEmpty() || (r.isExcluded && !r.isArrowHead));
    if (reachesRight)
        addRole(left, right, r, l.isWhole, !reachesLeft, relation);
    if (reachesLeft)
        addRole(right, left, l, r.isWhole, !reachesRight, relation);
}

void Linker::addRole(Classifier& owner, Classifier& target, RelationEnd const& end, bool isOwned,
                     bool mayBeLabel, Relation const& relation)
{
    if (owner.kind == Kind::isEnum) {
        report_.warning(relation.place,
                        quoted(owner.name) + " is an enumeration and holds no others: passed over");
        return;
    }
    Role role;
    role.name = end.role;
    role.label = relation.label;
    if (role.name.IsEmpty() && mayBeLabel && isPlainName(relation.label))
        role.name = relation.label;
    role.target = &target;
    role.arguments = end.arguments;
    role.isMany = end.isMany;
    role.isOwned = isOwned;
    role.visibility = end.visibility;
    role.place = relation.place;
    owner.roles.push_back(std::move(role));
}

void Linker::inherit(Classifier& derived, Classifier& base, std::vector<Type> arguments, Place place)
{
    if (derived.kind == Kind::isEnum || base.kind == Kind::isEnum) {
        report_.warning(place, "an enumeration neither inherits nor is inherited from: passed over");
        return;
    }
    if (base.typeParameters.size() != arguments.size()) {
        CString text;
        text.Format(" needs %d type arguments as a base, not %d: passed over",
                    int(base.typeParameters.size()), int(arguments.size()));
        report_.warning(place, quoted(base.name) + text);
        return;
    }
    for (Base const& known : derived.bases)
        if (known.target == &base)
            return;  // drawn twice
    derived.bases.push_back({&base, std::move(arguments), place});
}

// Walks depth first with a stack of its own. A base that is on the walk's path closes a cycle.
void Linker::checkCycles()
{
    enum : char { isNew, isOnPath, isDone };
    struct Step {
        Classifier const* classifier;
        std::size_t nextBase;
    };
    std::vector<char> state(model_.classifiers().size(), isNew);
    std::vector<int> height(state.size(), 0);
    std::vector<Step> path;
    for (Classifier const& start : model_.classifiers()) {
        if (state[std::size_t(start.index)] != isNew)
            continue;
        path.push_back({&start, 0});
        state[std::size_t(start.index)] = isOnPath;
        while (!path.empty()) {
            Classifier const& current = *path.back().classifier;
            if (path.back().nextBase == current.bases.size()) {
                int& own = height[std::size_t(current.index)];
                for (Base const& base : current.bases)
                    own = std::max(own, height[std::size_t(base.target->index)] + 1);
                if (own == deepestInheritance + 1)
                    report_.error(current.place,
                                  quoted(current.name) + " inherits through more than 200 levels");
                state[std::size_t(current.index)] = isDone;
                path.pop_back();
                continue;
            }
            Base const& base = current.bases[path.back().nextBase++];
            char& baseState = state[std::size_t(base.target->index)];
            if (baseState == isOnPath) {
                reportCycle(base, current);
            } else if (baseState == isNew) {
                baseState = isOnPath;
                path.push_back({base.target, 0});
            }
        }
    }
}

void Linker::reportCycle(Base const& closing, Classifier const& derived)
{
    report_.error(
        closing.place,
        quoted(derived.name) + " inherits from itself" +
            (closing.target == &derived ? CString() : CString(" by way of ") + quoted(closing.target->name)));
}

}  // namespace modelgen
