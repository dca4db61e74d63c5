// cppTypes.h: what a type of the diagram is in C++, and what code must include to use it.
//
//   List<String>     std::vector<std::string>
//   Book             Book*, if Book is a class: objects with an identity are held by pointer
//   Money            Money, if Money is a structure: a value
//   Map<Date, int>   std::map<std::chrono::system_clock::time_point, int>
#pragma once

#include "examples/modelgen/cppNames.h"
#include "examples/modelgen/model.h"
#include "examples/modelgen/report.h"

#include <set>
#include <utility>

namespace modelgen {

enum class CppCategory { nothing, integer, floating, boolean, character, text, enumeration, pointer, value };

struct CppType {
    CString text;       ///< as the class at hand writes it
    CString canonical;  ///< the same with all names in full: one text for one type, valid everywhere
    CppCategory category = CppCategory::value;
    int bits = 0;  ///< of an integer; negative for a signed one
    Classifier const* classifier = nullptr;
    bool isParameter = false;  ///< a type parameter of the class, or what stands for one

    void append(char const* more)
    {
        text += more;
        canonical += more;
    }

    /// Whether a parameter of this type is passed as it is rather than by reference.
    bool isSmall() const { return category != CppCategory::value && category != CppCategory::text; }
};

/// What a piece of code needs to know before it.
struct CppNeeds {
    std::set<CString> standardHeaders;
    std::vector<Classifier const*> complete;  ///< whole definitions
    std::vector<Classifier const*> declared;  ///< declarations
};

/// What type parameters stand for: the text of a C++ type for each name.
using CppSubstitution = std::vector<std::pair<CString, CString>>;

/// Gives the classifiers that a type mentions, found from `from`.
void collectMentioned(Model const& model, Package const& from, Type const& type,
                      std::vector<Classifier const*>& mentioned);

class CppTypes {
public:
    CppTypes(Model const& model, CppNames const& names, Report& report);

    /// Whether objects of it are values: enumerations, and structures that own nothing and override nothing.
    bool isValue(Classifier const& classifier) const { return isValue_[std::size_t(classifier.index)]; }

    enum class Use { member, argument, result };

    /// The type as code in class `from` writes it. What isn't known is std::any, with a warning at `place`.
    CppType render(Type const& type, Classifier const& from, CppSubstitution const& parameters, Use use,
                   Place place, CppNeeds& needs) const;

    /// The classifier itself with its arguments, without a pointer to it.
    CppType renderBare(Classifier const& target, std::vector<Type> const& arguments, Classifier const& from,
                       CppSubstitution const& parameters, Place place, CppNeeds& needs) const;

    /// The type of a reference to `target`: a pointer, or the value.
    CppType refer(Classifier const& target, std::vector<Type> const& arguments, Classifier const& from,
                  CppSubstitution const& parameters, Place place, CppNeeds& needs) const;

    bool hasLiteral(Classifier const& enumeration, CString const& name) const
    {
        return literals_[std::size_t(enumeration.index)].PLookup(name) != nullptr;
    }
    CppNames const& names() const { return names_; }

private:
    void findValues();
    CppType renderKnown(Type const& type, Classifier const& from, CppSubstitution const& parameters,
                        Place place, CppNeeds& needs) const;
    CppType anything(Place place, CString const& why, CppNeeds& needs) const;

    Model const& model_;
    CppNames const& names_;
    Report& report_;
    std::vector<bool> isValue_;
    std::vector<NameSet> literals_;  // by the index of their enumeration
};

}  // namespace modelgen
