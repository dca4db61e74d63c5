// cppMembers.h: data members for attributes and roles, and the functions that give access to them.
//
//   - title : String               std::string title_; getTitle(), setTitle()
//   Shelf *-- "0..*" Book          std::vector<std::unique_ptr<Book>> books_; getBooks(), addBook() ...
#pragma once

#include "examples/modelgen/cppProgram.h"

namespace modelgen {

class CppMembers {
public:
    CppMembers(Model const& model, CppNames const& names, CppTypes const& types, Report& report,
               CppClasses const& classes);

    /// Adds members and accessors to a class whose operations are resolved. An operation of the diagram that is
    /// called like an accessor takes its place, and its body.
    void plan(CppClass& planned);

private:
    struct Work;  // what is known about the names of one class

    void planAttribute(Work& work, Attribute const& attribute);
    void planRole(Work& work, Role const& role);
    void addGetter(Work& work, CppMember const& member, CppType const& type, CString const& stem,
                   CString const& returned, Visibility visibility);
    void addSetter(Work& work, CppMember const& member, CppType const& type, CString const& stem,
                   Visibility visibility);
    void addToMany(Work& work, CppMember const& member, CppType const& element, CString const& stem,
                   bool isOwned, Visibility visibility);
    bool isFree(Work const& work, CString const& name, std::size_t parameters) const;
    bool inheritsOperation(CppClass const& planned, CString const& name) const;
    CString memberName(Work& work, CString const& identifier) const;
    void need(CppClass& planned, CppNeeds const& needs, bool isStatic) const;

    Model const& model_;
    CppNames const& names_;
    CppTypes const& types_;
    Report& report_;
    CppClasses const& classes_;
    NameSet operationNames_;  // of all classes
};

}  // namespace modelgen
