#include "examples/modelgen/pumlReader.h"

#include "examples/modelgen/pumlMember.h"
#include "examples/modelgen/pumlRelation.h"
#include "text/stringHelpers.h"

#include <cstring>
#include <optional>
#include <utility>

namespace modelgen {

namespace {

// Lines that only arrange or decorate the drawing.
Regexp decoration(
    "^(hide|show|remove|restore|scale|left to right direction|top to bottom direction|skin|url|page|"
    "newpage|autonewpage|allowmixing|allow_mixing|caption|mainframe)([^A-Za-z0-9_$\x80-\xFF]|$)");

constexpr char const* packageWords[] = {"package", "namespace", "folder",    "frame",
                                        "node",    "cloud",     "rectangle", "database"};

// "-- title --", "..", "====": a line between the members of a class.
Regexp separator("^(--|\\.\\.|==|__$|___$|__.*__$)");

Regexp procedure("^!(unquoted )?procedure");
Regexp function("^!(unquoted )?function");
Regexp directive("^!(include|import|if|else|define|foreach|while)");

bool begins(char const* text, char const* start)
{
    return std::strncmp(text, start, std::strlen(start)) == 0;
}

char lastOf(char const* text)
{
    return text[std::strlen(text) - 1];
}

int countBraces(CString const& text)
{
    return countCharacterInStr(text, '{') - countCharacterInStr(text, '}');
}

}  // namespace

void PumlReader::read(CString const& fileName, CString const& text)
{
    file_ = report_.addFile(fileName);
    line_ = 0;
    diagram_ = 0;
    bool hasDiagram = false;
    PumlSource source(text);
    while (source.next()) {
        line_ = source.line();
        char const* const line = source.text();
        if (begins(line, "@startuml")) {
            if (diagram_ > 0) {
                report_.error(place(), "@startuml inside a diagram: @enduml is missing");
                endDiagram();
            }
            diagram_ = line_;
            hasDiagram = true;
            separatesNames_ = true;
        } else if (begins(line, "@enduml")) {
            if (diagram_ == 0)
                report_.error(place(), "@enduml without @startuml");
            endDiagram();
        } else if (diagram_ > 0) {
            readDiagramLine(line);
        }
    }
    if (source.openComment() > 0)
        report_.error(at(source.openComment()), "the comment is not closed");
    if (diagram_ > 0) {
        report_.error(at(diagram_), "@enduml is missing");
        endDiagram();
    }
    if (!hasDiagram)
        report_.error(at(1), "there is no diagram: @startuml is missing");
}

void PumlReader::endDiagram()
{
    if (isBlock_)
        report_.error(at(block_.line), block_.what + " is not ended");
    for (Scope const& scope : scopes_)
        report_.error(at(scope.line), "'{' is not closed");
    isBlock_ = false;
    scopes_.clear();
    expected_ = {};
    diagram_ = 0;
}

void PumlReader::readDiagramLine(char const* text)
{
    if (isBlock_) {
        readBlockLine(text);
    } else if (text[0] == '{' && text[1] == '\0' && expected_.package) {
        open(*expected_.package, expected_.classifier);
        expected_ = {};
    } else {
        expected_ = {};
        if (!scopes_.empty() && scopes_.back().classifier)
            readBodyLine(text);
        else
            readStatement(text);
    }
}

void PumlReader::open(Package& package, Classifier* classifier)
{
    scopes_.push_back({&package, classifier, line_});
}

// -- Blocks ------------------------------------------------------------------------------

void PumlReader::openBlock(char const* what, char const* end, char const* text)
{
    block_ = {};
    block_.what = what;
    block_.end = end;
    block_.line = line_;
    block_.braces = countBraces(text);
    isBlock_ = block_.end.GetLength() > 0 || block_.braces > 0;
}

void PumlReader::readBlockLine(char const* text)
{
    if (block_.end.IsEmpty()) {
        block_.braces += countBraces(text);
        isBlock_ = block_.braces > 0;
        return;
    }
    if (CString const end = cleanWhiteSpaces(text); end.CompareNoCase(block_.end) == 0) {
        isBlock_ = false;
        if (!block_.noteTarget.IsEmpty())
            linker_.addNote(here(), block_.noteTarget, std::move(block_.text));
        return;
    }
    if (!block_.noteTarget.IsEmpty())
        block_.text.push_back(text);
}

// -- Statements ----------------------------------------------------------------------------

void PumlReader::readStatement(char const* text)
{
    if (text[0] == '}') {
        if (scopes_.empty())
            report_.error(place(), "'}' without '{'");
        else
            scopes_.pop_back();
        return;
    }
    if (startsClass(text)) {
        readClassLine(text);
        return;
    }
    if (readDirective(text) || readNote(text) || readPackageLine(text) || readRelationLine(text) ||
        readSetting(text) || readFurniture(text) || readShorthand(text))
        return;
    passOver(text);
}

void PumlReader::passOver(char const* text)
{
    report_.warning(place(), CString("not understood: passed over: ") + quoted(text));
    if (lastOf(text) == '{')
        openBlock("a block", "", "{");
}

bool PumlReader::readDirective(char const* text)
{
    if (text[0] != '!')
        return false;
    bool const isSingle = std::strstr(text, "return") != nullptr;
    if (procedure.match(text))
        openBlock("a procedure", "!endprocedure", text);
    else if (function.match(text) && !isSingle)
        openBlock("a function", "!endfunction", text);
    if (directive.match(text))
        report_.warning(place(), CString("directives are not obeyed: passed over: ") + quoted(text));
    return true;
}

bool PumlReader::readSetting(char const* text)
{
    PumlLine line(text);
    if (!line.takeWord("set"))
        return false;
    if (line.takeWord("namespaceSeparator") || line.takeWord("separator"))
        separatesNames_ = std::strcmp(line.rest(), "none") != 0;
    return true;
}

bool PumlReader::readFurniture(char const* text)
{
    PumlLine line(text);
    if (decoration.match(text))
        return true;
    if (line.takeWord("skinparam") || line.takeWord("sprite")) {
        openBlock("skinparam", "", text);
        return true;
    }
    if (line.take("<style>")) {
        if (!std::strstr(line.rest(), "</style>"))
            openBlock("<style>", "</style>", text);
        return true;
    }
    if (line.takeWord("together")) {
        expected_ = {&here(), nullptr, line_};
        if (line.take("{") && !line.take("}")) {
            expected_ = {};
            open(here(), nullptr);
        }
        return true;
    }
    if (line.take("{")) {  // a frame without a name
        open(here(), nullptr);
        return true;
    }
    return readTitled(text);
}

// Titles and the like: on one line with their text, or a block without.
bool PumlReader::readTitled(char const* text)
{
    PumlLine line(text);
    if (line.takeWord("left") || line.takeWord("center") || line.takeWord("right")) {
        if (line.peek() != 'h' && line.peek() != 'f')
            return false;
    }
    if (line.takeWord("legend")) {
        openBlock("the legend", "endlegend", text);
        return true;
    }
    struct Titled {
        char const* word;
        char const* end;
    };
    constexpr Titled titled[] = {{"title", "endtitle"}, {"header", "endheader"}, {"footer", "endfooter"}};
    for (Titled const& one : titled) {
        if (!line.takeWord(one.word))
            continue;
        if (line.atEnd())
            openBlock(one.word, one.end, text);
        return true;
    }
    return false;
}

bool PumlReader::readNote(char const* text)
{
    PumlLine line(text);
    if (!line.takeWord("note"))
        return false;
    if (line.peek() == '"') {
        std::optional<CString> const content = line.quotedText();
        if (!content) {
            report_.error(place(), "a quote is not closed");
            return true;
        }
        if (line.takeWord("as"))
            if (std::optional<CString> const name = line.name())
                linker_.addSilentName(file_, *name);
        return true;
    }
    if (line.peek() == '-' || line.peek() == '.')
        return false;  // a relation of something called "note"

    CString target;
    for (char const* const side : {"left", "right", "top", "bottom"})
        line.takeWord(side);
    if (line.takeWord("of")) {
        std::optional<CString> const name = line.name();
        target = name ? *name : CString();
        if (target.IsEmpty())
            report_.warning(place(), "a note of nothing: passed over");
    } else if (line.takeWord("as")) {
        if (std::optional<CString> const name = line.name())
            linker_.addSilentName(file_, *name);
    } else if (line.takeWord("on")) {
        line.takeWord("link");
    }
    char const* const colon = std::strchr(line.rest(), ':');
    if (!colon) {
        openBlock("a note", "endnote", text);
        block_.noteTarget = target;
    } else if (!target.IsEmpty()) {
        SPStringList const parts = trimmed(colon + 1).split("\\\\n");  // drawn on several lines
        std::vector<CString> lines;
        for (int i = 0; i < parts.count(); ++i)
            lines.push_back(CString(parts[i]));
        linker_.addNote(here(), target, std::move(lines));
    }
    return true;
}

// -- Packages and classes --------------------------------------------------------------------

Package& PumlReader::packageFor(CString const& name, bool isQualified, CString& last)
{
    Package* package = &here();
    if (!isQualified || !separatesNames_) {
        last = name;
        return *package;
    }
    std::vector<CString> const parts = splitQualifiedName(name);
    last = parts.empty() ? name : parts.back();
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        if (package->depth == deepestPackage) {
            report_.error(place(), "packages are nested more than 32 deep");
            break;
        }
        package = &model_.package(*package, parts[i], place());
    }
    return *package;
}

bool PumlReader::readPackageLine(char const* text)
{
    PumlLine line(text);
    bool isPackage = false;
    for (char const* const word : packageWords)
        isPackage = isPackage || line.takeWord(word);
    if (!isPackage || isOneOf(line.peek(), "-.=:"))
        return false;

    std::variant<BadDeclaration, PackageDeclaration> const read = readPackage(line.rest());
    if (BadDeclaration const* const bad = std::get_if<BadDeclaration>(&read)) {
        report_.error(place(), bad->reason);
        if (countBraces(text) > 0)
            open(here(), nullptr);  // so that its end fits
        return true;
    }
    PackageDeclaration const& declaration = std::get<PackageDeclaration>(read);
    Package* package = &here();
    if (!declaration.name.IsEmpty()) {
        linker_.addSilentName(file_, declaration.name);
        CString last;
        Package& parent = packageFor(declaration.name, declaration.isQualified, last);
        if (parent.depth == deepestPackage)
            report_.error(place(), "packages are nested more than 32 deep");
        else
            package = &model_.package(parent, last, place());
    }
    bool const isClosed = lastOf(text) == '}';
    if (declaration.hasBody)
        open(*package, nullptr);
    else if (!isClosed)
        expected_ = {package, nullptr, line_};
    return true;
}

Classifier* PumlReader::declare(ClassDeclaration const& declaration)
{
    CString id;
    Package& package = packageFor(declaration.id, declaration.isQualified, id);
    CString const name = declaration.name == declaration.id ? id : declaration.name;
    Classifier* classifier = model_.findIn(package, id);
    if (!classifier)
        classifier = &model_.add(package, id, name);
    if (classifier->isDeclared && classifier->kind != declaration.kind) {
        CString before;
        before.Format(" was declared as something else in line %d", classifier->place.line);
        report_.error(place(), quoted(id) + before);
        return classifier;
    }
    if (!classifier->isDeclared) {
        classifier->place = place();
        classifier->isDeclared = true;
        classifier->kind = declaration.kind;
    }
    classifier->isAbstract |= declaration.isAbstract;
    if (classifier->typeParameters.empty())
        classifier->typeParameters = declaration.typeParameters;
    classifier->stereotypes.insert(classifier->stereotypes.end(), declaration.stereotypes.begin(),
                                   declaration.stereotypes.end());
    return classifier;
}

void PumlReader::readClassLine(char const* text)
{
    std::variant<BadDeclaration, ClassDeclaration> read = readClass(text);
    if (BadDeclaration const* const bad = std::get_if<BadDeclaration>(&read)) {
        report_.error(place(), bad->reason);
        if (countBraces(text) > 0)
            openBlock("the class", "", "{");
        return;
    }
    ClassDeclaration& declaration = std::get<ClassDeclaration>(read);
    Classifier* const classifier = declare(declaration);
    for (BaseName& base : declaration.bases)
        linker_.addBase(*classifier, base.name, std::move(base.arguments), place());
    if (!declaration.hasBody) {
        expected_ = {&here(), classifier, line_};
        return;
    }
    CString body = declaration.body;
    bool const isClosed = body.Right(1) == "}";
    if (isClosed)
        body = body.Left(body.GetLength() - 1);
    else
        open(here(), classifier);
    int end = 0;
    for (int start = 0; start < body.GetLength(); start = end + 1) {  // members with semicolons between
        end = findOutside(body, ';', start);
        if (end < 0)
            end = body.GetLength();
        CString const one = body.Mid(start, end - start).Trim();
        if (!one.IsEmpty())
            addMember(*classifier, one);
    }
}

void PumlReader::readBodyLine(char const* text)
{
    if (text[0] == '}')
        scopes_.pop_back();
    else if (!separator.match(text))
        addMember(*scopes_.back().classifier, text);
}

void PumlReader::addMember(Classifier& owner, char const* text)
{
    if (owner.kind == Kind::isEnum && !looksLikeMember(text)) {
        std::variant<NoMember, Literals> read = readLiterals(text);
        if (NoMember const* const none = std::get_if<NoMember>(&read)) {
            if (none->isBroken)
                report_.error(place(), none->reason);
            else
                report_.warning(place(), none->reason + CString(": ") + quoted(text));
            return;
        }
        Literals& literals = std::get<Literals>(read);
        if (literals.hasArguments)
            report_.warning(place(), "arguments of a literal are passed over");
        for (Literal& literal : literals.literals) {
            literal.place = place();
            owner.literals.push_back(std::move(literal));
        }
        return;
    }
    std::variant<NoMember, Attribute, Operation> read = readMember(text, owner.name);
    if (NoMember const* const none = std::get_if<NoMember>(&read)) {
        if (none->isBroken)
            report_.error(place(), none->reason);
        else
            report_.warning(place(), none->reason + CString(": ") + quoted(text));
    } else if (Attribute* const attribute = std::get_if<Attribute>(&read)) {
        attribute->place = place();
        owner.attributes.push_back(std::move(*attribute));
    } else {
        Operation& operation = std::get<Operation>(read);
        operation.place = place();
        owner.operations.push_back(std::move(operation));
    }
}

// "Book : + title : String" adds to a class from outside.
bool PumlReader::readShorthand(char const* text)
{
    PumlLine line(text);
    std::optional<CString> const name = line.name();
    if (!name || name->IsEmpty() || line.peek() != ':' || line.peek(1) == ':')
        return false;
    line.skip(1);
    if (line.atEnd()) {
        report_.error(place(), "a member needs a name");
        return true;
    }
    Classifier* owner = model_.find(here(), *name);
    if (!owner) {
        CString id;
        Package& package = packageFor(*name, true, id);
        owner = &model_.add(package, id, id);
        owner->place = place();
    }
    addMember(*owner, line.rest());
    return true;
}

bool PumlReader::readRelationLine(char const* text)
{
    std::variant<RelationFault, Relation> read = readRelation(text);
    if (Relation* const relation = std::get_if<Relation>(&read)) {
        relation->place = place();
        linker_.addRelation(here(), std::move(*relation));
        return true;
    }
    switch (std::get<RelationFault>(read)) {
    case RelationFault::isNone: return false;
    case RelationFault::isUnknownArrow:
        report_.warning(place(), CString("unknown arrow: passed over: ") + quoted(text));
        return true;
    case RelationFault::isBroken: report_.error(place(), "the relation lacks an end or a quote"); return true;
    }
    return false;
}

}  // namespace modelgen
