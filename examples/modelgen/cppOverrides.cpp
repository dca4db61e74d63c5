#include "examples/modelgen/cppOverrides.h"

#include "examples/modelgen/pumlLine.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace modelgen {

namespace {

struct Inherited {
    CppClass* declarer;
    CppFunction* function;
    CString result;
    std::vector<CString> parameters;  // their canonical types, as the class at hand sees them
};

using Replacements = std::vector<std::pair<CString, CString>>;

// Puts arguments in place of type parameters. Names behind "::" are somebody else's.
CString substituted(CString const& text, Replacements const& replacements)
{
    if (replacements.empty())
        return text;
    CString result;
    std::string_view const all = text.view();
    for (std::size_t at = 0; at < all.size();) {
        if (!isWordCharacter(all[at])) {
            result += all[at++];
            continue;
        }
        std::size_t end = at;
        while (end < all.size() && isWordCharacter(all[end]))
            ++end;
        std::string_view word = all.substr(at, end - at);
        if (at == 0 || all[at - 1] != ':')
            for (auto const& [name, replacement] : replacements)
                if (name == word) {
                    word = replacement.view();
                    break;
                }
        result += word;
        at = end;
    }
    return result;
}

// Collects the operations that a class inherits, those of near bases first, once for each way in which a template
// is used, and groups them by their keys.
class Collector {
public:
    explicit Collector(CppClasses& classes) : classes_(classes) { }

    void collect(CppClass& derived)
    {
        struct Step {
            CppClass* at;
            Replacements replacements;
        };
        std::vector<Step> steps;
        NameSet seen;
        steps.push_back({&derived, {}});
        for (std::size_t i = 0; i < steps.size(); ++i) {
            CppClass& current = *steps[i].at;
            if (i > 0)
                addFunctions(current, steps[i].replacements);
            for (std::size_t b = 0; b < current.classifier->bases.size(); ++b) {
                CppClass& base = classes_[std::size_t(current.classifier->bases[b].target->index)];
                Replacements replacements;
                CString way;
                way.Format("%d", base.classifier->index);
                for (std::size_t p = 0; p < base.typeParameters.size(); ++p) {
                    CString argument = substituted(current.baseArguments[b][p], steps[i].replacements);
                    way += "," + argument;
                    replacements.emplace_back(base.typeParameters[p], std::move(argument));
                }
                if (!std::exchange(seen[way], true))
                    steps.push_back({&base, std::move(replacements)});
            }
        }
    }

    std::vector<CString> const& keys() const { return keys_; }
    std::vector<Inherited>& group(CString const& key) { return groups_[key]; }
    bool has(CString const& key) const { return groups_.PLookup(key) != nullptr; }

private:
    void addFunctions(CppClass& base, Replacements const& replacements)
    {
        if (base.isStruct)
            return;
        for (CppFunction& function : base.functions) {
            bool const isHidden = function.visibility == Visibility::isPrivate && !function.isVirtual;
            if (function.isConstructor || function.isStatic || isHidden)
                continue;
            Inherited inherited{&base, &function, substituted(function.canonicalResult, replacements), {}};
            CString key = function.name + "(";
            for (CppParameter const& parameter : function.parameters) {
                inherited.parameters.push_back(substituted(parameter.canonical, replacements));
                key += inherited.parameters.back() + (parameter.passing == "&" ? "&," : ",");
            }
            std::vector<Inherited>& group = groups_[key];
            if (group.empty())
                keys_.push_back(key);
            group.push_back(std::move(inherited));
        }
    }

    CppClasses& classes_;
    std::vector<CString> keys_;
    CMap<CString, CString const&, std::vector<Inherited>, std::vector<Inherited> const&> groups_;
};

// Those of a group that no other one of it overrides.
std::vector<Inherited const*> finalOnes(std::vector<Inherited> const& group)
{
    std::vector<Inherited const*> finals;
    for (Inherited const& one : group) {
        bool const isOverridden = std::any_of(group.begin(), group.end(), [&](Inherited const& other) {
            return other.declarer != one.declarer &&
                isDerivedFrom(*other.declarer->classifier, *one.declarer->classifier);
        });
        if (!isOverridden)
            finals.push_back(&one);
    }
    return finals;
}

bool agree(std::vector<Inherited> const& group)
{
    return std::all_of(group.begin(), group.end(), [&](Inherited const& one) {
        return !one.function->isVirtual || one.result == group.front().result;
    });
}

void reportDisagreement(CppClass const& planned, CString const& name, Report& report)
{
    report.error(planned.classifier->place,
                 quoted(planned.classifier->name) + " inherits operation " + quoted(name) +
                     " with different results, which C++ cannot join");
}

void overrideWith(CppFunction& own, std::vector<Inherited>& group, CppClass const& planned, Report& report)
{
    if (!agree(group)) {
        reportDisagreement(planned, own.name, report);
        return;
    }
    Inherited const& nearest = group.front();
    if (own.canonicalResult != nearest.result) {
        report.warning(own.place,
                       CString("operation ") + quoted(own.name) +
                           " has the result of the one it overrides: " + nearest.result);
        own.result = own.canonicalResult = nearest.result;
    }
    for (std::size_t i = 0; i < own.parameters.size(); ++i)
        own.parameters[i].passing = nearest.function->parameters[i].passing;
    own.isConst = nearest.function->isConst;
    own.isVirtual = own.isOverride = true;
    for (Inherited& inherited : group)
        if (inherited.result == nearest.result)
            inherited.function->isVirtual = true;
}

void addOverride(CppClass& planned, Inherited const& inherited, CString const& key, bool isPure,
                 CppClasses const& classes)
{
    CppFunction made = *inherited.function;
    made.result = made.canonicalResult = inherited.result;
    for (std::size_t i = 0; i < made.parameters.size(); ++i) {
        made.parameters[i].baseType = made.parameters[i].canonical = inherited.parameters[i];
        made.parameters[i].value.Empty();
    }
    made.key = key;
    made.body.Empty();
    made.isPure = isPure;
    made.isVirtual = made.isOverride = true;
    planned.functions.push_back(std::move(made));
    // The base declares what the types name; the source needs it whole, and so does a template, for its values.
    for (Classifier const* const named : inherited.declarer->headerNeeds.declared) {
        planned.sourceNeeds.complete.push_back(named);
        if (!planned.typeParameters.empty() && classes[std::size_t(named->index)].isStruct)
            planned.headerNeeds.complete.push_back(named);
    }
}

}  // namespace

bool isDerivedFrom(Classifier const& derived, Classifier const& base)
{
    std::vector<Classifier const*> open{&derived};
    std::unordered_set<Classifier const*> seen;
    while (!open.empty()) {
        Classifier const* const one = open.back();
        open.pop_back();
        for (Base const& above : one->bases) {
            if (above.target == &base)
                return true;
            if (seen.insert(above.target).second)
                open.push_back(above.target);
        }
    }
    return false;
}

void resolveOverrides(CppClass& planned, CppClasses& classes, Report& report)
{
    Classifier const& classifier = *planned.classifier;
    if (classifier.bases.empty() || planned.isStruct)
        return;
    Collector inherited(classes);
    inherited.collect(planned);

    NameSet own;
    auto const isLost = [&](CppFunction& function) {
        if (function.isConstructor || !inherited.has(function.key))
            return false;
        if (function.isStatic) {
            report.warning(function.place,
                           CString("operation ") + quoted(function.name) +
                               " is static but overrides an inherited one: passed over");
            return true;
        }
        own.SetAt(function.key, true);
        overrideWith(function, inherited.group(function.key), planned, report);
        return false;
    };
    planned.functions.erase(std::remove_if(planned.functions.begin(), planned.functions.end(), isLost),
                            planned.functions.end());

    bool const isConcrete = classifier.kind != Kind::isInterface && !classifier.isAbstract;
    for (CString const& key : inherited.keys()) {
        if (own.PLookup(key))
            continue;
        std::vector<Inherited>& group = inherited.group(key);
        bool const isAnyVirtual = std::any_of(group.begin(), group.end(),
                                              [](Inherited const& one) { return one.function->isVirtual; });
        if (!isAnyVirtual)
            continue;
        std::vector<Inherited const*> const finals = finalOnes(group);
        bool const isAnyPure = std::any_of(finals.begin(), finals.end(),
                                           [](Inherited const* one) { return one->function->isPure; });
        bool const isAllPure = std::all_of(finals.begin(), finals.end(),
                                           [](Inherited const* one) { return one->function->isPure; });
        bool const isUnclear = finals.size() > 1 && group.size() > finals.size();
        if (!(isConcrete && isAnyPure) && !isUnclear)
            continue;
        if (!agree(group)) {
            reportDisagreement(planned, group.front().function->name, report);
            continue;
        }
        auto const model = std::find_if(finals.begin(), finals.end(),
                                        [](Inherited const* one) { return one->function->isVirtual; });
        addOverride(planned, model == finals.end() ? *finals.front() : **model, key, isAllPure && !isConcrete,
                    classes);
    }
}

}  // namespace modelgen
