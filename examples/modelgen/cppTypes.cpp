#include "examples/modelgen/cppTypes.h"

#include "text/stringHelpers.h"

#include <string_view>

namespace modelgen {

namespace {

// Names are compared in lower case and without "std::".
struct KnownType {
    char const* name;
    char const* text;
    char const* header;
    CppCategory category;
    int bits;
    int arguments;
};

constexpr auto integer = CppCategory::integer;
constexpr auto floating = CppCategory::floating;
constexpr auto boolean = CppCategory::boolean;
constexpr auto character = CppCategory::character;
constexpr auto text = CppCategory::text;
constexpr auto value = CppCategory::value;
constexpr char timePoint[] = "std::chrono::system_clock::time_point";

constexpr KnownType knownTypes[] = {
    {"void", "void", "", CppCategory::nothing, 0, 0},
    {"int", "int", "", integer, -32, 0},
    {"integer", "int", "", integer, -32, 0},
    {"int32", "int", "", integer, -32, 0},
    {"int32_t", "std::int32_t", "cstdint", integer, -32, 0},
    {"signed", "int", "", integer, -32, 0},
    {"signed int", "int", "", integer, -32, 0},
    {"unsigned", "unsigned int", "", integer, 32, 0},
    {"unsigned int", "unsigned int", "", integer, 32, 0},
    {"uint", "unsigned int", "", integer, 32, 0},
    {"uint32", "std::uint32_t", "cstdint", integer, 32, 0},
    {"uint32_t", "std::uint32_t", "cstdint", integer, 32, 0},
    {"unlimitednatural", "unsigned int", "", integer, 32, 0},
    {"natural", "unsigned int", "", integer, 32, 0},
    {"short", "std::int16_t", "cstdint", integer, -16, 0},
    {"short int", "std::int16_t", "cstdint", integer, -16, 0},
    {"int16", "std::int16_t", "cstdint", integer, -16, 0},
    {"int16_t", "std::int16_t", "cstdint", integer, -16, 0},
    {"unsigned short", "std::uint16_t", "cstdint", integer, 16, 0},
    {"uint16", "std::uint16_t", "cstdint", integer, 16, 0},
    {"uint16_t", "std::uint16_t", "cstdint", integer, 16, 0},
    {"long", "std::int64_t", "cstdint", integer, -64, 0},
    {"long int", "std::int64_t", "cstdint", integer, -64, 0},
    {"long long", "std::int64_t", "cstdint", integer, -64, 0},
    {"long long int", "std::int64_t", "cstdint", integer, -64, 0},
    {"int64", "std::int64_t", "cstdint", integer, -64, 0},
    {"int64_t", "std::int64_t", "cstdint", integer, -64, 0},
    {"biginteger", "std::int64_t", "cstdint", integer, -64, 0},
    {"unsigned long", "std::uint64_t", "cstdint", integer, 64, 0},
    {"unsigned long int", "std::uint64_t", "cstdint", integer, 64, 0},
    {"unsigned long long", "std::uint64_t", "cstdint", integer, 64, 0},
    {"ulong", "std::uint64_t", "cstdint", integer, 64, 0},
    {"uint64", "std::uint64_t", "cstdint", integer, 64, 0},
    {"uint64_t", "std::uint64_t", "cstdint", integer, 64, 0},
    {"size_t", "std::size_t", "cstddef", integer, 32, 0},
    {"byte", "std::uint8_t", "cstdint", integer, 8, 0},
    {"uint8", "std::uint8_t", "cstdint", integer, 8, 0},
    {"uint8_t", "std::uint8_t", "cstdint", integer, 8, 0},
    {"unsigned char", "std::uint8_t", "cstdint", integer, 8, 0},
    {"int8", "std::int8_t", "cstdint", integer, -8, 0},
    {"int8_t", "std::int8_t", "cstdint", integer, -8, 0},
    {"signed char", "std::int8_t", "cstdint", integer, -8, 0},
    {"float", "float", "", floating, 32, 0},
    {"double", "double", "", floating, 64, 0},
    {"long double", "long double", "", floating, 80, 0},
    {"real", "double", "", floating, 64, 0},
    {"number", "double", "", floating, 64, 0},
    {"decimal", "double", "", floating, 64, 0},
    {"bigdecimal", "double", "", floating, 64, 0},
    {"bool", "bool", "", boolean, 0, 0},
    {"boolean", "bool", "", boolean, 0, 0},
    {"char", "char", "", character, 0, 0},
    {"character", "char", "", character, 0, 0},
    {"string", "std::string", "string", text, 0, 0},
    {"text", "std::string", "string", text, 0, 0},
    {"str", "std::string", "string", text, 0, 0},
    {"cstring", "std::string", "string", text, 0, 0},
    {"string_view", "std::string", "string", text, 0, 0},
    {"uuid", "std::string", "string", text, 0, 0},
    {"guid", "std::string", "string", text, 0, 0},
    {"uri", "std::string", "string", text, 0, 0},
    {"url", "std::string", "string", text, 0, 0},
    {"date", timePoint, "chrono", value, 0, 0},
    {"time", timePoint, "chrono", value, 0, 0},
    {"datetime", timePoint, "chrono", value, 0, 0},
    {"timestamp", timePoint, "chrono", value, 0, 0},
    {"instant", timePoint, "chrono", value, 0, 0},
    {"localdate", timePoint, "chrono", value, 0, 0},
    {"localtime", timePoint, "chrono", value, 0, 0},
    {"localdatetime", timePoint, "chrono", value, 0, 0},
    {"zoneddatetime", timePoint, "chrono", value, 0, 0},
    {"duration", "std::chrono::milliseconds", "chrono", value, 0, 0},
    {"timespan", "std::chrono::milliseconds", "chrono", value, 0, 0},
    {"object", "std::any", "any", value, 0, 0},
    {"any", "std::any", "any", value, 0, 0},
    {"variant", "std::any", "any", value, 0, 0},
    {"[]", "std::vector", "vector", value, 0, 1},
    {"list", "std::vector", "vector", value, 0, 1},
    {"arraylist", "std::vector", "vector", value, 0, 1},
    {"linkedlist", "std::vector", "vector", value, 0, 1},
    {"vector", "std::vector", "vector", value, 0, 1},
    {"array", "std::vector", "vector", value, 0, 1},
    {"collection", "std::vector", "vector", value, 0, 1},
    {"sequence", "std::vector", "vector", value, 0, 1},
    {"iterable", "std::vector", "vector", value, 0, 1},
    {"queue", "std::deque", "deque", value, 0, 1},
    {"deque", "std::deque", "deque", value, 0, 1},
    {"set", "std::set", "set", value, 0, 1},
    {"hashset", "std::set", "set", value, 0, 1},
    {"sortedset", "std::set", "set", value, 0, 1},
    {"treeset", "std::set", "set", value, 0, 1},
    {"orderedset", "std::set", "set", value, 0, 1},
    {"map", "std::map", "map", value, 0, 2},
    {"hashmap", "std::map", "map", value, 0, 2},
    {"treemap", "std::map", "map", value, 0, 2},
    {"sortedmap", "std::map", "map", value, 0, 2},
    {"dictionary", "std::map", "map", value, 0, 2},
    {"unordered_map", "std::map", "map", value, 0, 2},
    {"pair", "std::pair", "utility", value, 0, 2},
    {"optional", "std::optional", "optional", value, 0, 1},
    {"?", "std::optional", "optional", value, 0, 1},
    {"shared_ptr", "std::shared_ptr", "memory", value, 0, 1},
    {"weak_ptr", "std::weak_ptr", "memory", value, 0, 1},
};

KnownType const* findKnown(CString const& name)
{
    static CMap<CString, CString const&, KnownType const*, KnownType const*> table;
    if (table.IsEmpty())
        for (KnownType const& known : knownTypes)
            table.SetAt(known.name, &known);
    CString lower = name;
    lower.MakeLower();
    advanceIfStartsWith(lower, "std::");
    KnownType const* found = nullptr;
    table.Lookup(lower, found);
    return found;
}

// The types of the members of a structure that must be complete where it is defined.
template <class Visitor>
void visitHeldTypes(Classifier const& classifier, Visitor visit)
{
    for (Base const& base : classifier.bases)
        for (Type const& argument : base.arguments)
            visit(argument);
    for (Attribute const& attribute : classifier.attributes)
        if (!attribute.isStatic || !classifier.typeParameters.empty())
            visit(attribute.type);
    for (Role const& role : classifier.roles)
        for (Type const& argument : role.arguments)
            visit(argument);
    if (classifier.typeParameters.empty())
        return;  // its functions are defined in its source
    for (Operation const& operation : classifier.operations) {
        visit(operation.returnType);
        for (Parameter const& parameter : operation.parameters)
            visit(parameter.type);
    }
}

}  // namespace

void collectMentioned(Model const& model, Package const& from, Type const& type,
                      std::vector<Classifier const*>& mentioned)
{
    if (type.isGiven() && type.name != "[]" && type.name != "*" && type.name != "&" && type.name != "?")
        if (Classifier const* const found = model.find(from, type.name))
            mentioned.push_back(found);
    for (Type const& argument : type.arguments)
        collectMentioned(model, from, argument, mentioned);
}

CppTypes::CppTypes(Model const& model, CppNames const& names, Report& report)
    : model_(model), names_(names), report_(report), isValue_(model.classifiers().size(), false),
      literals_(model.classifiers().size())
{
    for (Classifier const& classifier : model.classifiers())
        for (Literal const& literal : classifier.literals)
            literals_[std::size_t(classifier.index)].SetAt(literal.name, true);
    findValues();
}

// A structure is a value unless it owns parts, has abstract operations, cannot be made by everyone, inherits from
// what is none, or holds itself by way of others. Structures that hold each other in a circle are found by taking
// away, again and again, those that hold none of the rest, and then those that none of the rest holds.
void CppTypes::findValues()
{
    std::size_t const count = isValue_.size();
    auto& isValue = isValue_;
    for (Classifier const& classifier : model_.classifiers()) {
        bool isOne = classifier.kind == Kind::isStruct && !classifier.isAbstract;
        for (Role const& role : classifier.roles)
            isOne = isOne &&
                !(role.isOwned && role.target->kind != Kind::isEnum && role.target->kind != Kind::isStruct);
        for (Operation const& operation : classifier.operations)
            isOne = isOne && !operation.isAbstract &&
                !(operation.name == classifier.name && operation.visibility != Visibility::isPublic);
        isValue[std::size_t(classifier.index)] = isOne || classifier.kind == Kind::isEnum;
    }

    std::vector<std::vector<int>> holds(count), heldBy(count);
    auto link = [&](Classifier const& holder, Classifier const& held) {
        holds[std::size_t(holder.index)].push_back(held.index);
        heldBy[std::size_t(held.index)].push_back(holder.index);
    };
    for (Classifier const& classifier : model_.classifiers()) {
        if (classifier.kind != Kind::isStruct || !isValue[std::size_t(classifier.index)])
            continue;
        std::vector<Classifier const*> held;
        visitHeldTypes(classifier,
                       [&](Type const& type) { collectMentioned(model_, *classifier.package, type, held); });
        for (Role const& role : classifier.roles)
            held.push_back(role.target);
        for (Base const& base : classifier.bases)
            held.push_back(base.target);
        for (Classifier const* const one : held)
            if (one->kind == Kind::isStruct && isValue[std::size_t(one->index)])
                link(classifier, *one);
    }
    std::vector<bool> isCleared(count, false);
    auto clear = [&](std::vector<std::vector<int>> const& out, std::vector<std::vector<int>> const& in) {
        std::vector<std::size_t> open(count, 0), ready;
        for (std::size_t i = 0; i < count; ++i) {
            for (int const other : out[i])
                open[i] += isCleared[std::size_t(other)] ? 0 : 1;
            if (open[i] == 0 && !isCleared[i])
                ready.push_back(i);
        }
        while (!ready.empty()) {
            std::size_t const i = ready.back();
            ready.pop_back();
            isCleared[i] = true;
            for (int const other : in[i])
                if (--open[std::size_t(other)] == 0 && !isCleared[std::size_t(other)])
                    ready.push_back(std::size_t(other));
        }
    };
    clear(holds, heldBy);
    clear(heldBy, holds);
    std::vector<int> lost;
    for (std::size_t i = 0; i < count; ++i) {
        bool const isStruct = model_.classifiers()[i].kind == Kind::isStruct;
        if (isStruct && !isCleared[i])
            isValue[i] = false;
        for (Base const& base : model_.classifiers()[i].bases)
            if (base.target->kind != Kind::isStruct)
                isValue[i] = false;
        if (isStruct && !isValue[i])
            lost.push_back(int(i));
    }
    std::vector<std::vector<int>> derived(count), wholes(count);
    for (Classifier const& classifier : model_.classifiers()) {
        for (Base const& base : classifier.bases)
            derived[std::size_t(base.target->index)].push_back(classifier.index);
        for (Role const& role : classifier.roles)
            if (role.isOwned)
                wholes[std::size_t(role.target->index)].push_back(classifier.index);
    }
    while (!lost.empty()) {
        std::size_t const i = std::size_t(lost.back());
        lost.pop_back();
        for (auto const* const affected : {&derived[i], &wholes[i]}) {
            for (int const other : *affected) {
                if (isValue[std::size_t(other)] &&
                    model_.classifiers()[std::size_t(other)].kind == Kind::isStruct) {
                    isValue[std::size_t(other)] = false;
                    lost.push_back(other);
                }
            }
        }
    }
}

CppType CppTypes::anything(Place place, CString const& why, CppNeeds& needs) const
{
    report_.warning(place, why + ": std::any stands for it");
    needs.standardHeaders.insert("any");
    return {"std::any", "std::any", CppCategory::value, 0, nullptr, false};
}

CppType CppTypes::render(Type const& type, Classifier const& from, CppSubstitution const& parameters, Use use,
                         Place place, CppNeeds& needs) const
{
    if (!type.isGiven()) {
        if (use == Use::result)
            return {"void", "void", CppCategory::nothing, 0, nullptr, false};
        return anything(place, "a type is missing", needs);
    }
    CppType const rendered = renderKnown(type, from, parameters, place, needs);
    if (rendered.category == CppCategory::nothing && use != Use::result)
        return anything(place, "nothing can be of type void", needs);
    return rendered;
}

CppType CppTypes::refer(Classifier const& target, std::vector<Type> const& arguments, Classifier const& from,
                        CppSubstitution const& parameters, Place place, CppNeeds& needs) const
{
    CppType type = renderBare(target, arguments, from, parameters, place, needs);
    type.classifier = &target;
    if (isValue(target)) {
        type.category = target.kind == Kind::isEnum ? CppCategory::enumeration : CppCategory::value;
        needs.complete.push_back(&target);
    } else {
        type.category = CppCategory::pointer;
        type.append("*");
        needs.declared.push_back(&target);
    }
    return type;
}

CppType CppTypes::renderBare(Classifier const& target, std::vector<Type> const& arguments,
                             Classifier const& from, CppSubstitution const& parameters, Place place,
                             CppNeeds& needs) const
{
    CppPlace const& cpp = names_.of(target);
    CppType bare;
    bare.text = target.package == from.package ? cpp.name : cpp.qualified;
    bare.canonical = cpp.qualified;
    if (target.typeParameters.empty())
        return bare;
    bare.append("<");
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        CppType const argument = render(arguments[i], from, parameters, Use::argument, place, needs);
        bare.text += (i > 0 ? ", " : "") + argument.text;
        bare.canonical += (i > 0 ? ", " : "") + argument.canonical;
    }
    bare.append(">");
    return bare;
}

CppType CppTypes::renderKnown(Type const& type, Classifier const& from, CppSubstitution const& parameters,
                              Place place, CppNeeds& needs) const
{
    if (type.arguments.empty())
        for (auto const& [name, text] : parameters)
            if (name == type.name)
                return {text, text, CppCategory::value, 0, nullptr, true};

    if (type.name == "&")  // how a parameter is passed is decided by its type
        return render(type.arguments[0], from, parameters, Use::member, place, needs);
    if (type.name == "*") {
        Type const& inner = type.arguments[0];
        if (inner.name == "char") {
            needs.standardHeaders.insert("string");
            return {"std::string", "std::string", CppCategory::text, 0, nullptr, false};
        }
        CppType pointee = renderKnown(inner, from, parameters, place, needs);
        if (pointee.category == CppCategory::pointer && inner.name != "*")
            return pointee;  // an object, which is held by pointer anyway
        pointee.append(inner.isConst ? " const*" : "*");
        pointee.category = CppCategory::pointer;
        pointee.isParameter = false;
        return pointee;
    }

    if (Classifier const* const target = model_.find(*from.package, type.name)) {
        if (target->typeParameters.size() == type.arguments.size())
            return refer(*target, type.arguments, from, parameters, place, needs);
        CString why;
        why.Format(" needs %d type arguments, not %d", int(target->typeParameters.size()),
                   int(type.arguments.size()));
        return anything(place, quoted(type.name) + why, needs);
    }

    KnownType const* const known = findKnown(type.name);
    if (!known || (std::size_t(known->arguments) != type.arguments.size() && !type.arguments.empty()))
        return anything(place,
                        CString("type ") + (type.name == "?" ? CString("'?'") : quoted(type.name)) +
                            " is not known",
                        needs);
    CppType rendered{known->text, known->text, known->category, known->bits, nullptr, false};
    if (known->arguments > 0) {
        bool const isPointer = known->header == std::string_view("memory");
        bool const isOptional = known->header == std::string_view("optional");
        rendered.append("<");
        for (int i = 0; i < known->arguments; ++i) {
            if (i > 0)
                rendered.append(", ");
            if (type.arguments.empty()) {
                needs.standardHeaders.insert("any");
                rendered.append("std::any");
                continue;
            }
            Type const& argument = type.arguments[std::size_t(i)];
            CppType inner = render(argument, from, parameters, Use::argument, place, needs);
            if (isOptional && inner.category == CppCategory::pointer)
                return inner;  // a pointer may be null
            if (isPointer && inner.category == CppCategory::pointer && inner.classifier) {
                inner.text.Truncate(inner.text.GetLength() - 1);
                inner.canonical.Truncate(inner.canonical.GetLength() - 1);
            }
            rendered.text += inner.text;
            rendered.canonical += inner.canonical;
        }
        rendered.append(">");
    }
    if (*known->header)
        needs.standardHeaders.insert(known->header);
    return rendered;
}

}  // namespace modelgen
