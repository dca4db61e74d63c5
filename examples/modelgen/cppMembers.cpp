#include "examples/modelgen/cppMembers.h"

#include "examples/modelgen/cppValues.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>

namespace modelgen {

namespace {

char upper(char c)
{
    return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c;
}

CString withUpperStart(CString name)
{
    name.SetAt(0, upper(name[0]));
    return name;
}

// "OrderLine" gives "orderLine", "PDFReport" gives "pdfReport".
CString withLowerStart(CString name)
{
    auto const isUpper = [&](int i) { return name[i] >= 'A' && name[i] <= 'Z'; };
    for (int i = 0; isUpper(i) && (i == 0 || i + 1 == name.GetLength() || isUpper(i + 1)); ++i)
        name.SetAt(i, char(name[i] - 'A' + 'a'));
    return name;
}

bool endsWith(CString const& text, std::string_view end)
{
    return text.view().size() >= end.size() && text.view().substr(text.view().size() - end.size()) == end;
}

CString pluralOf(CString const& word)
{
    bool const isYAfterConsonant = endsWith(word, "y") && word.GetLength() > 1 &&
        std::string_view("aeiou").find(word[word.GetLength() - 2]) == std::string_view::npos;
    if (isYAfterConsonant)
        return word.Left(word.GetLength() - 1) + "ies";
    if (endsWith(word, "s") || endsWith(word, "x") || endsWith(word, "ch") || endsWith(word, "sh"))
        return word + "es";
    return word + "s";
}

// Of the regular plurals only; other words stay as they are.
CString singularOf(CString const& word)
{
    int const length = word.GetLength();
    if (endsWith(word, "ies") && length > 4)
        return word.Left(length - 3) + "y";
    for (std::string_view const end : {"ses", "xes", "ches", "shes"})
        if (endsWith(word, end) && length > int(end.size()) + 1)
            return word.Left(length - 2);
    if (endsWith(word, "s") && !endsWith(word, "ss") && length > 1)
        return word.Left(length - 1);
    return word;
}

CString withoutTrailingBar(CString name)
{
    return name.TrimRight('_');
}

CString slot(CString const& name, std::size_t parameters)
{
    return name + "/" + CString(std::string_view(std::to_string(parameters)));
}

bool startsLikeQuestion(CString const& name)
{
    auto const isUpperAt = [&](int i) { return name[i] >= 'A' && name[i] <= 'Z'; };
    return (name.Left(2) == "is" && isUpperAt(2)) || (name.Left(3) == "has" && isUpperAt(3));
}

}  // namespace

struct CppMembers::Work {
    Work(CppClass& planned, CppSubstitution parameters) : planned(planned), parameters(std::move(parameters))
    {
    }

    CppFunction* functionAt(CString const& slot)
    {
        auto const* const known = slots.PLookup(slot);
        return known ? &planned.functions[known->value] : nullptr;
    }
    void add(CppFunction function)
    {
        slots.SetAt(slot(function.name, function.parameters.size()), planned.functions.size());
        identifiers.reserve(function.name);
        planned.functions.push_back(std::move(function));
    }

    CppClass& planned;
    CppSubstitution parameters;
    UniqueNames identifiers;  // of all that stands in the class
    CMap<CString, CString const&, std::size_t, std::size_t>
        slots;  // functions by name and number of parameters
    CMap<CString, CString const&, Attribute const*, Attribute const*> attributes;
    NameSet roles;
};

CppMembers::CppMembers(Model const& model, CppNames const& names, CppTypes const& types, Report& report,
                       CppClasses const& classes)
    : model_(model), names_(names), types_(types), report_(report), classes_(classes)
{
    for (CppClass const& planned : classes)
        for (CppFunction const& function : planned.functions)
            operationNames_.SetAt(function.name, true);
}

void CppMembers::plan(CppClass& planned)
{
    Classifier const& classifier = *planned.classifier;
    if (classifier.kind == Kind::isEnum)
        return;
    Work work(planned, substitutionOf(classifier, names_));
    work.identifiers.reserve(names_.of(classifier).name);
    for (CString const& parameter : planned.typeParameters)
        work.identifiers.reserve(parameter);
    for (std::size_t i = 0; i < planned.functions.size(); ++i) {
        work.identifiers.reserve(planned.functions[i].name);
        CString const own = slot(planned.functions[i].name, planned.functions[i].parameters.size());
        if (!work.slots.PLookup(own))
            work.slots.SetAt(own, i);
    }
    for (Attribute const& attribute : classifier.attributes)
        planAttribute(work, attribute);
    for (Role const& role : classifier.roles)
        planRole(work, role);
}

CString CppMembers::memberName(Work& work, CString const& identifier) const
{
    CString name = work.planned.isStruct ? identifier : withoutTrailingBar(identifier) + "_";
    if (names_.isTypeName(name))
        name = withoutTrailingBar(identifier) + "Value" + (work.planned.isStruct ? "" : "_");
    return work.identifiers.claim(name);
}

// What a member's type names must be complete before it, but a static one is defined in the source.
void CppMembers::need(CppClass& planned, CppNeeds const& needs, bool isStatic) const
{
    bool const isLater = isStatic && planned.typeParameters.empty();
    for (Classifier const* const one : needs.complete) {
        if (isLater && one->kind != Kind::isEnum)
            planned.headerNeeds.declared.push_back(one);
        else
            planned.headerNeeds.complete.push_back(one);
    }
    planned.headerNeeds.declared.insert(planned.headerNeeds.declared.end(), needs.declared.begin(),
                                        needs.declared.end());
    planned.headerNeeds.standardHeaders.insert(needs.standardHeaders.begin(), needs.standardHeaders.end());
}

void CppMembers::planAttribute(Work& work, Attribute const& attribute)
{
    Classifier const& classifier = *work.planned.classifier;
    if (work.attributes.PLookup(attribute.name)) {
        report_.warning(attribute.place, quoted(attribute.name) + " is an attribute already: passed over");
        return;
    }
    work.attributes.SetAt(attribute.name, &attribute);
    CString const identifier = cppIdentifier(attribute.name);
    if (withoutTrailingBar(identifier) != withoutTrailingBar(attribute.name))
        report_.warning(attribute.place,
                        CString("attribute ") + quoted(attribute.name) + " is called " + identifier +
                            " in code");
    CppNeeds needs;
    CppType const type = types_.render(attribute.type, classifier, work.parameters, CppTypes::Use::member,
                                       attribute.place, needs);
    need(work.planned, needs, attribute.isStatic);

    CppMember member;
    member.type = type.text;
    member.name = memberName(work, identifier);
    member.isStatic = attribute.isStatic;
    switch (type.category) {
    case CppCategory::integer: member.value = "0"; break;
    case CppCategory::floating: member.value = "0.0"; break;
    case CppCategory::boolean: member.value = "false"; break;
    case CppCategory::character: member.value = "'\\0'"; break;
    case CppCategory::pointer: member.value = "nullptr"; break;
    case CppCategory::enumeration: member.value = "{}"; break;
    default: break;
    }
    if (type.isParameter)
        member.value = "{}";
    if (!attribute.defaultValue.IsEmpty()) {
        std::optional<CString> const value = cppValue(attribute.defaultValue, type, types_);
        if (value)
            member.value = *value;
        else
            report_.warning(attribute.place,
                            CString("default value ") + quoted(attribute.defaultValue) +
                                " is not understood: passed over");
    }
    work.planned.members.push_back(member);
    if (work.planned.isStruct)
        return;

    Visibility const visibility =
        attribute.visibility == Visibility::isProtected ? Visibility::isProtected : Visibility::isPublic;
    CString const stem = withoutTrailingBar(identifier);
    CString const getter = type.category == CppCategory::boolean
        ? startsLikeQuestion(stem) ? stem : CString("is") + withUpperStart(stem)
        : CString("get") + withUpperStart(stem);
    addGetter(work, member, type, getter, member.name, visibility);
    if (!attribute.isReadOnly)
        addSetter(work, member, type, CString("set") + withUpperStart(stem), visibility);
}

bool CppMembers::isFree(Work const& work, CString const& name, std::size_t parameters) const
{
    return !work.slots.PLookup(slot(name, parameters)) && name != names_.of(*work.planned.classifier).name &&
        !names_.isTypeName(name) && !inheritsOperation(work.planned, name);
}

bool CppMembers::inheritsOperation(CppClass const& planned, CString const& name) const
{
    if (!operationNames_.PLookup(name))
        return false;
    std::vector<Classifier const*> open{planned.classifier};
    std::unordered_set<Classifier const*> seen;
    while (!open.empty()) {
        Classifier const* const one = open.back();
        open.pop_back();
        for (Base const& base : one->bases) {
            if (!seen.insert(base.target).second)
                continue;
            for (CppFunction const& function : classes_[std::size_t(base.target->index)].functions)
                if (function.operation && function.name == name)
                    return true;
            open.push_back(base.target);
        }
    }
    return false;
}

void CppMembers::addGetter(Work& work, CppMember const& member, CppType const& type, CString const& name,
                           CString const& returned, Visibility visibility)
{
    if (CppFunction* const existing = work.functionAt(slot(name, 0))) {
        CppFunction& function = *existing;
        if (function.canonicalResult == type.canonical && !function.isConstructor &&
            function.body.IsEmpty() && (member.isStatic || !function.isStatic))
            function.body = "return " + returned + ";";
    }
    if (!isFree(work, name, 0))
        return;
    CppFunction getter;
    getter.name = name;
    getter.result = type.isSmall() ? type.text : type.text + " const&";
    getter.visibility = visibility;
    getter.isStatic = member.isStatic;
    getter.isConst = !member.isStatic;
    getter.body = "return " + returned + ";";
    work.add(std::move(getter));
}

void CppMembers::addSetter(Work& work, CppMember const& member, CppType const& type, CString const& name,
                           Visibility visibility)
{
    if (CppFunction* const existing = work.functionAt(slot(name, 1))) {
        CppFunction& function = *existing;
        if (function.canonicalResult == "void" && function.parameters[0].canonical == type.canonical &&
            function.body.IsEmpty() && !function.isConst && (member.isStatic || !function.isStatic))
            function.body = member.name + " = " + function.parameters[0].name + ";";
    }
    if (!isFree(work, name, 1))
        return;
    CppFunction setter;
    setter.name = name;
    setter.result = "void";
    setter.visibility = visibility;
    setter.isStatic = member.isStatic;
    setter.parameters.push_back({type.text, type.isSmall() ? "" : " const&", type.canonical, "value", {}});
    setter.body = member.name + " = value;";
    work.add(std::move(setter));
}

void CppMembers::planRole(Work& work, Role const& role)
{
    Classifier const& classifier = *work.planned.classifier;
    Classifier const& target = *role.target;
    if (target.typeParameters.size() != role.arguments.size()) {
        CString why;
        why.Format(" needs %d type arguments, not %d: passed over", int(target.typeParameters.size()),
                   int(role.arguments.size()));
        report_.warning(role.place, quoted(target.name) + why);
        return;
    }
    CString name = role.name;
    if (name.IsEmpty()) {
        name = withLowerStart(withoutTrailingBar(names_.of(target).name));
        if (role.isMany)
            name = pluralOf(name);
    }
    auto const* const attribute = work.attributes.PLookup(name);
    if (attribute) {
        std::vector<Classifier const*> mentioned;
        collectMentioned(model_, *classifier.package, attribute->value->type, mentioned);
        if (std::find(mentioned.begin(), mentioned.end(), &target) != mentioned.end())
            return;  // the attribute says the same
    }
    if (!role.name.IsEmpty() && (attribute || work.roles.PLookup(name))) {
        report_.warning(role.place, quoted(name) + " is an attribute or a role already: passed over");
        return;
    }
    work.roles.SetAt(name, true);
    CString const identifier = cppIdentifier(name);
    if (!role.name.IsEmpty() && identifier != name)
        report_.warning(role.place,
                        CString("role ") + quoted(name) + " is called " + identifier + " in code");

    CppNeeds needs;
    CppType const type = types_.refer(target, role.arguments, classifier, work.parameters, role.place, needs);
    bool const isObject = type.category == CppCategory::pointer;
    bool const isOwned = role.isOwned && isObject;
    if (role.isMany)
        needs.standardHeaders.insert("vector");
    if (isOwned) {
        needs.standardHeaders.insert("memory");
        work.planned.sourceNeeds.complete.push_back(&target);
    }
    need(work.planned, needs, false);

    CString const held =
        isOwned ? CString("std::unique_ptr<") + type.text.Left(type.text.GetLength() - 1) + ">" : type.text;
    CppMember member;
    member.type = role.isMany ? "std::vector<" + held + ">" : held;
    member.name = memberName(work, identifier);
    if (!role.isMany && !isOwned)
        member.value = isObject ? "nullptr" : target.kind == Kind::isEnum ? "{}" : "";
    member.note = role.label;
    work.planned.members.push_back(member);
    if (work.planned.isStruct)
        return;

    Visibility const visibility =
        role.visibility == Visibility::isProtected ? Visibility::isProtected : Visibility::isPublic;
    // Names of members are unique; names made from them are as well.
    CString const stem = withUpperStart(withoutTrailingBar(member.name));
    if (role.isMany) {
        addToMany(work, member, type, stem, isOwned, visibility);
    } else if (isOwned) {
        addGetter(work, member, type, "get" + stem, member.name + ".get()", visibility);
        addToMany(work, member, type, stem, isOwned, visibility);
    } else {
        addGetter(work, member, type, "get" + stem, member.name, visibility);
        addSetter(work, member, type, "set" + stem, visibility);
    }
}

// Access to several objects, or to one that is owned: setting it hands it over.
void CppMembers::addToMany(Work& work, CppMember const& member, CppType const& element, CString const& stem,
                           bool isOwned, Visibility visibility)
{
    bool const isMany = member.type.Left(12) == "std::vector<";
    CString held = element.text;
    if (isOwned)
        held = CString("std::unique_ptr<") + element.text.Left(element.text.GetLength() - 1) + ">";
    if (isMany) {
        CppType all;
        all.text = all.canonical = member.type;
        addGetter(work, member, all, "get" + stem, member.name, visibility);
    }
    CppFunction adder;
    adder.name = (isMany ? "add" : "set") + (isMany ? singularOf(stem) : stem);
    if (!isFree(work, adder.name, 1))
        return;
    adder.result = "void";
    adder.visibility = visibility;
    adder.parameters.push_back({held, isOwned || element.isSmall() ? "" : " const&", held, "value", {}});
    if (isMany)
        adder.body = member.name + (isOwned ? ".push_back(std::move(value));" : ".push_back(value);");
    else
        adder.body = member.name + " = std::move(value);";
    if (isOwned)
        work.planned.sourceNeeds.standardHeaders.insert("utility");
    work.add(std::move(adder));
}

}  // namespace modelgen
