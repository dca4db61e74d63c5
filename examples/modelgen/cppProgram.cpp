#include "examples/modelgen/cppProgram.h"

#include "examples/modelgen/cppMembers.h"
#include "examples/modelgen/cppOverrides.h"
#include "examples/modelgen/cppValues.h"

#include <unordered_set>
#include <utility>

namespace modelgen {

CppSubstitution substitutionOf(Classifier const& classifier, CppNames const& names)
{
    CppSubstitution parameters;
    UniqueNames unique;
    unique.reserve(names.of(classifier).name);
    for (CString const& name : classifier.typeParameters) {
        CString identifier = cppIdentifier(name == "?" ? CString("Any") : name);
        if (names.isTypeName(identifier))
            identifier += '_';
        parameters.emplace_back(name, unique.claim(identifier));
    }
    return parameters;
}

CString keyOf(CppFunction const& function)
{
    CString key = function.name + "(";
    for (CppParameter const& parameter : function.parameters) {
        key += parameter.canonical;
        key += parameter.passing == "&" ? "&" : "";
        key += ',';
    }
    return key;
}

CppProgram::CppProgram(Model const& model, CppNames const& names, CppTypes const& types, Report& report)
    : model_(model), names_(names), types_(types), report_(report), classes_(model.classifiers().size())
{
    std::vector<Classifier const*> const order = basesFirst();
    for (Classifier const* const classifier : order)
        planClass(*classifier);
    for (Classifier const* const classifier : order)
        resolveOverrides(classes_[std::size_t(classifier->index)], classes_, report_);
    CppMembers members(model_, names_, types_, report_, classes_);
    for (Classifier const* const classifier : order)
        members.plan(classes_[std::size_t(classifier->index)]);
}

// Every class behind all of its bases. The linker has made sure that they form no circle.
std::vector<Classifier const*> CppProgram::basesFirst() const
{
    std::vector<Classifier const*> order;
    std::vector<bool> isReached(model_.classifiers().size(), false);
    std::vector<std::pair<Classifier const*, std::size_t>> path;
    for (Classifier const& start : model_.classifiers()) {
        if (isReached[std::size_t(start.index)])
            continue;
        isReached[std::size_t(start.index)] = true;
        path.emplace_back(&start, 0);
        while (!path.empty()) {
            auto& [current, next] = path.back();
            if (next == current->bases.size()) {
                order.push_back(current);
                path.pop_back();
                continue;
            }
            Classifier const* const base = current->bases[next++].target;
            if (!isReached[std::size_t(base->index)]) {
                isReached[std::size_t(base->index)] = true;
                path.emplace_back(base, 0);
            }
        }
    }
    return order;
}

void CppProgram::planClass(Classifier const& classifier)
{
    CppClass& planned = classes_[std::size_t(classifier.index)];
    planned.classifier = &classifier;
    if (classifier.kind == Kind::isEnum) {
        for (Attribute const& attribute : classifier.attributes)
            report_.warning(attribute.place, "an enumeration has no attributes in C++: passed over");
        for (Operation const& operation : classifier.operations)
            report_.warning(operation.place, "an enumeration has no operations in C++: passed over");
        return;
    }
    planned.isStruct = types_.isValue(classifier);
    CppSubstitution const parameters = substitutionOf(classifier, names_);
    for (auto const& parameter : parameters)
        planned.typeParameters.push_back(parameter.second);
    planBases(planned, parameters);
    NameSet keys;
    for (Operation const& operation : classifier.operations)
        planOperation(planned, operation, parameters, keys);
    for (Classifier const* const used : classifier.dependencies)
        if (used->kind != Kind::isEnum)
            planned.sourceNeeds.complete.push_back(used);
}

// Interfaces are inherited virtually, so that one reached on two ways is one. A base that another base inherits
// from already is left out.
void CppProgram::planBases(CppClass& planned, CppSubstitution const& parameters)
{
    Classifier const& classifier = *planned.classifier;
    std::unordered_set<Classifier const*> inherited;
    if (classifier.bases.size() > 1) {
        std::vector<Classifier const*> open;
        for (Base const& base : classifier.bases)
            for (Base const& above : base.target->bases)
                open.push_back(above.target);
        while (!open.empty()) {
            Classifier const* const one = open.back();
            open.pop_back();
            if (inherited.insert(one).second)
                for (Base const& above : one->bases)
                    open.push_back(above.target);
        }
    }
    for (Base const& base : classifier.bases) {
        bool const isInterface = base.target->kind == Kind::isInterface;
        std::vector<CString>& arguments = planned.baseArguments.emplace_back();
        for (Type const& argument : base.arguments) {
            arguments.push_back(types_
                                    .render(argument, classifier, parameters, CppTypes::Use::argument,
                                            base.place, planned.headerNeeds)
                                    .canonical);
        }
        planned.headerNeeds.complete.push_back(base.target);
        planned.overridesDestructor |= !types_.isValue(*base.target);
        classes_[std::size_t(base.target->index)].hasDerived = true;
        if (!isInterface && inherited.count(base.target) > 0) {
            report_.warning(base.place,
                            quoted(base.target->name) + " is a base of another base: passed over");
            continue;
        }
        CppPlace const& cpp = names_.of(*base.target);
        CString text = base.target->package == classifier.package ? cpp.name : cpp.qualified;
        for (std::size_t i = 0; i < arguments.size(); ++i)
            text += (i == 0 ? "<" : ", ") + arguments[i];
        if (!arguments.empty())
            text += '>';
        planned.bases.push_back((isInterface ? "public virtual " : "public ") + text);
    }
}

void CppProgram::planOperation(CppClass& planned, Operation const& operation,
                               CppSubstitution const& parameters, NameSet& keys)
{
    Classifier const& classifier = *planned.classifier;
    if (operation.name[0] == '~')
        return;  // every class has its destructor
    CppFunction function;
    function.place = operation.place;
    function.operation = &operation;
    function.visibility = operation.visibility;
    function.isConstructor =
        operation.name == classifier.name || operation.name == names_.of(classifier).name;
    function.isStatic = operation.isStatic && !function.isConstructor;
    function.isPure = !function.isConstructor && !function.isStatic && !planned.isStruct &&
        (operation.isAbstract || classifier.kind == Kind::isInterface);
    function.isVirtual = function.isPure;
    function.isConst = operation.isQuery && !function.isStatic && !function.isConstructor;
    if (function.isPure && function.visibility == Visibility::isPrivate &&
        classifier.kind == Kind::isInterface)
        function.visibility = Visibility::isPublic;
    if (operation.isAbstract && !function.isPure)
        report_.warning(operation.place, quoted(operation.name) + " cannot be abstract in C++");

    // Values in a template's functions must be complete; elsewhere functions are defined in the source.
    CppNeeds needs;
    function.name = function.isConstructor ? names_.of(classifier).name : cppIdentifier(operation.name);
    if (!function.isConstructor) {
        if (names_.isTypeName(function.name))
            function.name += '_';
        if (function.name != operation.name)
            report_.warning(operation.place,
                            CString("operation ") + quoted(operation.name) + " is called " + function.name +
                                " in code");
        CppType const result = types_.render(operation.returnType, classifier, parameters,
                                             CppTypes::Use::result, operation.place, needs);
        function.result = result.text;
        function.canonicalResult = result.canonical;
    }
    UniqueNames parameterNames;
    for (auto const& parameter : parameters)
        parameterNames.reserve(parameter.second);
    bool mayHaveValue = true;
    for (Parameter const& parameter : operation.parameters) {
        CppType const type = types_.render(parameter.type, classifier, parameters, CppTypes::Use::member,
                                           operation.place, needs);
        CppParameter made;
        made.baseType = type.text;
        made.canonical = type.canonical;
        if (parameter.isOutput)
            made.passing = "&";
        else if (!type.isParameter && !type.isSmall())
            made.passing = " const&";
        made.name = cppIdentifier(parameter.name.IsEmpty() ? CString("value") : parameter.name);
        if (names_.isTypeName(made.name))
            made.name += '_';
        made.name = parameterNames.claim(made.name);
        if (!parameter.defaultValue.IsEmpty()) {
            std::optional<CString> const value = cppValue(parameter.defaultValue, type, types_);
            // An "{}" of a type that is only declared here could not be made.
            bool const isUsable = value && !parameter.isOutput && !(*value == "{}" && type.classifier);
            if (isUsable)
                made.value = *value;
            else
                report_.warning(operation.place,
                                CString("default value ") + quoted(parameter.defaultValue) +
                                    " is not understood: passed over");
        }
        function.parameters.push_back(std::move(made));
    }
    for (std::size_t i = function.parameters.size();
         i-- > 0;) {  // only the last ones may have default values
        mayHaveValue = mayHaveValue && !function.parameters[i].value.IsEmpty();
        if (!mayHaveValue)
            function.parameters[i].value.Empty();
    }
    if (function.isConstructor) {
        if (function.parameters.empty()) {
            for (CppFunction& other : planned.functions)
                if (other.isConstructor && other.parameters.empty())
                    return;
        } else {
            function.parameters[0].value.Empty();  // there is a constructor without parameters anyway
            CString const own = names_.of(classifier).name;
            if (planned.isStruct && function.parameters.size() == 1 && function.parameters[0].baseType == own)
                return;  // a value can be copied as it is
        }
    }
    function.key = keyOf(function);
    if (std::exchange(keys[function.key], true)) {
        report_.warning(operation.place,
                        CString("operation ") + quoted(operation.name) +
                            " is there with the same parameters already: passed over");
        return;
    }
    bool const isTemplate = !planned.typeParameters.empty();
    CppNeeds& target = planned.headerNeeds;
    for (Classifier const* const one : needs.complete)
        (isTemplate || one->kind == Kind::isEnum ? target.complete : target.declared).push_back(one);
    target.declared.insert(target.declared.end(), needs.declared.begin(), needs.declared.end());
    target.standardHeaders.insert(needs.standardHeaders.begin(), needs.standardHeaders.end());
    planned.functions.push_back(std::move(function));
}

}  // namespace modelgen
