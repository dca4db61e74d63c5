// linker.h: turns what diagrams say about pairs of classes into bases, roles and dependencies of the model.
//
// Relations may stand in front of the classes that they name, in another file even; so they are kept until all is
// read. A class that nothing declares is made where the relation stands.
#pragma once

#include "examples/modelgen/model.h"
#include "examples/modelgen/pumlRelation.h"
#include "examples/modelgen/report.h"

namespace modelgen {

class Linker {
public:
    Linker(Model& model, Report& report) : model_(model), report_(report) { }

    void addRelation(Package& scope, Relation relation);
    void addBase(Classifier& derived, CString const& base, std::vector<Type> arguments, Place place);
    void addNote(Package& scope, CString const& target, std::vector<CString> lines);
    /// A name in that file that relations may draw lines to without meaning anything for code.
    void addSilentName(int file, CString const& name);

    /// Resolves everything. Reports classes that nothing declares and inheritance that code cannot have.
    void link();

private:
    struct PendingRelation {
        Package* scope;
        Relation relation;
    };
    struct PendingBase {
        Classifier* derived;
        CString name;
        std::vector<Type> arguments;
        Place place;
    };
    struct PendingNote {
        Package* scope;
        CString target;
        std::vector<CString> lines;
    };

    bool isSilent(Place place, CString const& name) const;
    Classifier* find(Package const& scope, CString const& name) const;
    Classifier& findOrMake(Package& scope, CString const& name, Place place);
    void linkRelation(Package& scope, Relation const& relation);
    void linkAssociation(Classifier& left, Classifier& right, Relation const& relation);
    void addRole(Classifier& owner, Classifier& target, RelationEnd const& end, bool isOwned, bool mayBeLabel,
                 Relation const& relation);
    void inherit(Classifier& derived, Classifier& base, std::vector<Type> arguments, Place place);
    void checkCycles();
    void reportCycle(Base const& closing, Classifier const& derived);

    Model& model_;
    Report& report_;
    std::vector<PendingRelation> relations_;
    std::vector<PendingBase> bases_;
    std::vector<PendingNote> notes_;
    std::deque<NameSet> silentNames_;  // one set for each file
};

}  // namespace modelgen
