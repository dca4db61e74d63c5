// pumlRelation.h: reads a line that relates two classes.
//
//   readRelation("Shelf \"1\" *-- \"0..* books\" Book : holds")
//   // a composition: Shelf is the whole; the far end has the role "books", many of them
#pragma once

#include "examples/modelgen/model.h"

#include <variant>

namespace modelgen {

/// One end of a relation as it is written.
struct RelationEnd {
    CString name;
    std::vector<Type> arguments;  ///< "Repository<Book>"
    CString role;
    Visibility visibility = Visibility::isPublic;
    bool isMany = false;
    bool isWhole = false;      ///< a composition's filled diamond is at this end
    bool isShared = false;     ///< an aggregation's diamond is
    bool isGeneral = false;    ///< the triangle of an inheritance is
    bool isArrowHead = false;  ///< an open arrow is
    bool isExcluded = false;   ///< a cross is: not navigable
};

struct Relation {
    RelationEnd left;
    RelationEnd right;
    bool isDotted = false;
    bool isHidden = false;  ///< there for the layout only
    CString label;
    Place place;
};

enum class RelationFault {
    isNone,          ///< the line is no relation at all
    isUnknownArrow,  ///< it is one, with ends or a middle that mean nothing for code
    isBroken         ///< it lacks an end or a quote
};

std::variant<RelationFault, Relation> readRelation(char const* text);

}  // namespace modelgen
