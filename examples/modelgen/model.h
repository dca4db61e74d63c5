// model.h: what class diagrams say, free of the notation they were read from and of any target language.
//
// The model owns its packages and classifiers; pointers to them stay valid as it grows. Names are those of the
// diagram: a language writer makes identifiers of them.
//
// Here the maps of the class library are at work: names lead to packages and classifiers.
#pragma once

#include "platform/classlib/CMap.h"
#include "platform/classlib/CString.h"

#include <deque>
#include <vector>

namespace modelgen {

/// A line of one of the files that were read.
struct Place {
    int file = 0;  ///< as numbered by Report::addFile
    int line = 0;  ///< 1 is the first
};

enum class Visibility { isPublic, isProtected, isPrivate, isPackage };

/// A type as the diagram gives it: "Map<String, Book[]>" is Map with the arguments String and [] of Book.
struct Type {
    CString
        name;  ///< empty where the diagram names no type; "[]", "*", "&" and "?" stand before one argument
    std::vector<Type> arguments;
    bool isConst = false;

    bool isGiven() const { return !name.IsEmpty(); }
};

struct Attribute {
    CString name;
    Type type;
    CString defaultValue;  ///< as written; empty if there is none
    Visibility visibility = Visibility::isPublic;
    bool isStatic = false;
    bool isReadOnly = false;
    Place place;
};

struct Parameter {
    CString name;  ///< may be empty
    Type type;
    CString defaultValue;
    bool isOutput = false;
};

struct Operation {
    CString name;
    Type returnType;
    std::vector<Parameter> parameters;
    Visibility visibility = Visibility::isPublic;
    bool isStatic = false;
    bool isAbstract = false;
    bool isQuery = false;  ///< leaves the object alone
    Place place;
};

struct Literal {
    CString name;
    CString value;  ///< as written; empty if there is none
    Place place;
};

struct Classifier;

/// The far end of an association, as the near class sees it.
struct Role {
    CString name;  ///< empty where the diagram gives none
    Classifier* target = nullptr;
    std::vector<Type> arguments;  ///< for the type parameters of the target
    bool isMany = false;
    bool isOwned = false;  ///< the near class is the whole of a composition
    Visibility visibility = Visibility::isPublic;
    CString label;
    Place place;
};

struct Base {
    Classifier* target = nullptr;
    std::vector<Type> arguments;
    Place place;
};

/// Packages may not be nested deeper; every look-up by name walks outward from package to package.
inline constexpr int deepestPackage = 32;

/// A set of names: those in it are true.
using NameSet = CMap<CString, CString const&, bool, bool>;

struct Package;
using PackagesByName = CMap<CString, CString const&, Package*, Package*>;
using ClassifiersByName = CMap<CString, CString const&, Classifier*, Classifier*>;

struct Package {
    CString name;
    Package* parent = nullptr;  ///< null for the root, which has no name
    Place place;                ///< of its first mention
    int index = 0;
    int depth = 0;
    PackagesByName packages;        ///< those directly in it
    ClassifiersByName classifiers;  ///< likewise, by all ways to refer to them
};

enum class Kind { isClass, isInterface, isEnum, isStruct };

struct Classifier {
    CString name;
    Package* package = nullptr;
    Kind kind = Kind::isClass;
    bool isAbstract = false;
    bool isDeclared = false;  ///< false while it is known from relations only
    std::vector<CString> typeParameters;
    std::vector<CString> stereotypes;
    std::vector<Attribute> attributes;
    std::vector<Operation> operations;
    std::vector<Literal> literals;
    std::vector<Base> bases;
    std::vector<Role> roles;
    std::vector<Classifier*> dependencies;
    std::vector<CString> notes;  ///< lines of text
    Place place;
    int index = 0;
};

class Model {
public:
    Model();
    Model(Model const&) = delete;
    Model& operator=(Model const&) = delete;

    Package& root() { return packages_.front(); }
    std::deque<Package> const& packages() const { return packages_; }
    std::deque<Classifier>& classifiers() { return classifiers_; }
    std::deque<Classifier> const& classifiers() const { return classifiers_; }

    /// The package of that name directly in `parent`, made if there is none; `place` is where it is mentioned.
    Package& package(Package& parent, CString const& name, Place place);

    /// Adds a classifier that `id` refers to within `package`; its name is a second way to refer to it.
    Classifier& add(Package& package, CString const& id, CString const& name);

    /// What `id` refers to in exactly this package; null if nothing.
    Classifier* findIn(Package const& package, CString const& id) const;

    /// What a name means that stands in `from`: looked for in `from`, then in the packages around it, then in
    /// the whole model if only one classifier has that name. Qualified names have '.' or "::" between their
    /// parts. Null if nothing is found.
    Classifier* find(Package const& from, CString const& name) const;

private:
    Classifier* findQualified(Package const& from, std::vector<CString> const& parts) const;

    std::deque<Package> packages_;
    std::deque<Classifier> classifiers_;
    ClassifiersByName uniqueByName_;  // null where several share a name
};

/// The parts of a qualified name: "a.b::c" has three. Empty parts are left out.
std::vector<CString> splitQualifiedName(CString const& name);

}  // namespace modelgen
