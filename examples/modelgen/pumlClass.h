// pumlClass.h: reads the line that declares a class, an interface, an enumeration, a structure or a package.
//
//   readClass("abstract class \"Loan desk\" as Desk<T> extends Counter {")
//   // an abstract class "Desk" of one type parameter, with the base Counter; a body follows
#pragma once

#include "examples/modelgen/model.h"

#include <variant>

namespace modelgen {

struct BaseName {
    CString name;
    std::vector<Type> arguments;
};

struct ClassDeclaration {
    Kind kind = Kind::isClass;
    bool isAbstract = false;
    CString id;               ///< what relations call it
    CString name;             ///< what code calls it
    bool isQualified = true;  ///< dots in `id` part packages; not so in a quoted name
    std::vector<CString> typeParameters;
    std::vector<CString> stereotypes;
    std::vector<BaseName> bases;
    bool hasBody = false;
    CString body;  ///< what stands behind the opening brace
};

struct PackageDeclaration {
    CString name;  ///< empty: a frame without a name
    bool isQualified = true;
    bool hasBody = false;
};

/// A reason why the line is bad input.
struct BadDeclaration {
    CString reason;
};

/// What declares classes: gives nothing but true or false, so that a line can be told apart without reading it.
bool startsClass(char const* text);
std::variant<BadDeclaration, ClassDeclaration> readClass(char const* text);

/// Reads what stands behind the keyword of a package.
std::variant<BadDeclaration, PackageDeclaration> readPackage(char const* text);

/// Whether the text could be an identifier as it stands.
bool isPlainName(char const* text);

}  // namespace modelgen
