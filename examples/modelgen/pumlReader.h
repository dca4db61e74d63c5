// pumlReader.h: reads class diagrams in PlantUML's notation into a model.
//
//   Model model;
//   Report report(std::cerr);
//   PumlReader reader(model, report);
//   reader.read("shelf.puml", "@startuml\nclass Shelf {\n  places : int\n}\n@enduml\n");
//   reader.finish();
//   model.classifiers().front().attributes.front().name;      // "places"
//
// Any bytes may be read. What is not understood is passed over with a warning; what is broken is an error, and
// reading goes on behind it, so that one run tells all errors. Time and memory are linear in the text.
#pragma once

#include "examples/modelgen/linker.h"
#include "examples/modelgen/model.h"
#include "examples/modelgen/pumlClass.h"
#include "examples/modelgen/pumlLine.h"
#include "examples/modelgen/report.h"

namespace modelgen {

class PumlReader {
public:
    PumlReader(Model& model, Report& report) : model_(model), report_(report), linker_(model, report) { }

    /// Reads one file, which may hold several diagrams. Diagrams and files add up to one model.
    void read(CString const& fileName, CString const& text);

    /// To be called once, behind the last file: links what the diagrams relate.
    void finish() { linker_.link(); }

private:
    // What a '{' has opened.
    struct Scope {
        Package* package = nullptr;
        Classifier* classifier = nullptr;  // null in a package or a group
        int line = 0;
    };
    // Lines that belong together and mean nothing for code, but for the text of a note.
    struct Block {
        CString what;
        CString end;  // the line that ends it, without blanks and in lower case; empty: by braces
        int braces = 0;
        int line = 0;
        CString noteTarget;
        std::vector<CString> text;
    };

    void readDiagramLine(char const* text);
    void readStatement(char const* text);
    bool readFurniture(char const* text);
    bool readTitled(char const* text);
    bool readNote(char const* text);
    bool readDirective(char const* text);
    bool readPackageLine(char const* text);
    bool readSetting(char const* text);
    void readClassLine(char const* text);
    void readBodyLine(char const* text);
    void addMember(Classifier& owner, char const* text);
    bool readShorthand(char const* text);
    bool readRelationLine(char const* text);
    void passOver(char const* text);
    void openBlock(char const* what, char const* end, char const* text);
    void readBlockLine(char const* text);
    void endDiagram();

    Package& packageFor(CString const& name, bool isQualified, CString& last);
    Classifier* declare(ClassDeclaration const& declaration);
    Package& here() { return scopes_.empty() ? model_.root() : *scopes_.back().package; }
    void open(Package& package, Classifier* classifier);
    Place place() const { return {file_, line_}; }
    Place at(int line) const { return {file_, line}; }

    Model& model_;
    Report& report_;
    Linker linker_;
    int file_ = 0;
    int line_ = 0;
    int diagram_ = 0;  // the line of @startuml; 0 outside
    bool separatesNames_ = true;
    std::vector<Scope> scopes_;
    Scope expected_;  // what the next line may open with a lone '{'
    bool isBlock_ = false;
    Block block_;
};

}  // namespace modelgen
