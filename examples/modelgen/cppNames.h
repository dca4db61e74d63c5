// cppNames.h: makes identifiers of C++ and names of files from the names of a diagram, whatever these are.
//
//   cppIdentifier("My Class");        // "My_Class"
//   cppIdentifier("../x");            // "x"
//   cppIdentifier("class");           // "class_"
//   cppIdentifier("\xC3\xA4");        // "u00E4"
#pragma once

#include "examples/modelgen/model.h"
#include "examples/modelgen/report.h"

namespace modelgen {

/// An identifier of ASCII letters, digits and single underscores, at most 120 long: never a keyword, never a macro
/// of a standard header, never reserved to the compiler. The same text gives the same identifier on every machine.
CString cppIdentifier(CString const& text);

/// Names of which none is given twice. Remembers the last number given for a name: many equal ones cost no search.
class UniqueNames {
public:
    void reserve(CString const& name) { taken_.SetAt(name, true); }
    bool isTaken(CString const& name) const { return taken_.PLookup(name) != nullptr; }
    /// Takes `wanted`, or if it is taken the first of "wanted2", "wanted3", ... that is free.
    CString claim(CString const& wanted);

private:
    bool take(CString const& name);

    NameSet taken_;
    CMap<CString, CString const&, int, int> lastNumber_;
};

/// Where the code of a classifier goes.
struct CppPlace {
    CString name;       ///< its identifier
    CString qualified;  ///< how others call it: "lending::Book"
    CString stem;       ///< of its files: "lending/Book"
};

/// The identifiers of all packages and classifiers of a model, and their files. Within a package, no two of them
/// share an identifier, and no two files differ in case alone.
class CppNames {
public:
    CppNames(Model const& model, Report& report);

    CppPlace const& of(Classifier const& classifier) const { return places_[std::size_t(classifier.index)]; }
    /// "lending::desk"; empty for the root.
    CString const& namespaceOf(Package const& package) const
    {
        return namespaces_[std::size_t(package.index)];
    }
    /// Whether any class or namespace has this identifier: no member may have it then.
    bool isTypeName(CString const& identifier) const { return typeNames_.PLookup(identifier) != nullptr; }

private:
    CString choose(CString const& name, UniqueNames& scope, bool isGlobal, Place place, char const* what);
    CString chooseFile(CString const& identifier, UniqueNames& folder, Place place);

    Report& report_;
    std::vector<CppPlace> places_;
    std::vector<CString> namespaces_;
    NameSet typeNames_;
};

}  // namespace modelgen
