// cppProgram.h: the plan of the C++ code for a model: everything decided, nothing written.
#pragma once

#include "examples/modelgen/cppNames.h"
#include "examples/modelgen/cppTypes.h"

#include <deque>

namespace modelgen {

struct CppParameter {
    CString baseType;   ///< what it names: "std::string"
    CString passing;    ///< how it is passed: " const&", "&" or nothing
    CString canonical;  ///< the base type with all names in full
    CString name;       ///< never empty
    CString value;      ///< the default; empty if there is none
};

struct CppFunction {
    CString name;
    CString result;
    CString canonicalResult;
    std::vector<CppParameter> parameters;
    Visibility visibility = Visibility::isPublic;
    bool isConstructor = false;
    bool isStatic = false;
    bool isVirtual = false;
    bool isPure = false;
    bool isOverride = false;
    bool isConst = false;
    CString key;  ///< the name and the canonical types of the parameters: equal where one overrides the other
    CString body;  ///< one statement; empty if there is none
    Place place;
    Operation const* operation = nullptr;  ///< null for an accessor
};

struct CppMember {
    CString type;
    CString name;
    CString value;  ///< empty if it has none
    bool isStatic = false;
    CString note;
};

struct CppClass {
    Classifier const* classifier = nullptr;
    bool isStruct = false;             ///< a value: members are open, and it may be copied
    bool overridesDestructor = false;  ///< a base has a virtual one
    bool hasDerived = false;
    std::vector<CString> typeParameters;
    std::vector<CString> bases;                       ///< "public virtual Lendable"
    std::vector<std::vector<CString>> baseArguments;  ///< of every base of the classifier, canonical
    std::vector<CppMember> members;
    std::vector<CppFunction> functions;
    CppNeeds headerNeeds;
    CppNeeds sourceNeeds;
};

/// The plans of all classes, by the index of their classifier.
using CppClasses = std::deque<CppClass>;

class CppProgram {
public:
    CppProgram(Model const& model, CppNames const& names, CppTypes const& types, Report& report);

    CppClasses const& classes() const { return classes_; }

private:
    void planClass(Classifier const& classifier);
    void planBases(CppClass& planned, CppSubstitution const& parameters);
    void planOperation(CppClass& planned, Operation const& operation, CppSubstitution const& parameters,
                       NameSet& keys);
    std::vector<Classifier const*> basesFirst() const;

    Model const& model_;
    CppNames const& names_;
    CppTypes const& types_;
    Report& report_;
    CppClasses classes_;
};

/// The identifiers of the type parameters, with which types are rendered.
CppSubstitution substitutionOf(Classifier const& classifier, CppNames const& names);

/// The key of CppFunction.
CString keyOf(CppFunction const& function);

}  // namespace modelgen
