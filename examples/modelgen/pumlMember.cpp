#include "examples/modelgen/pumlMember.h"

#include "examples/modelgen/pumlLine.h"
#include "examples/modelgen/pumlType.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace modelgen {

namespace {

constexpr auto nowhere = std::string_view::npos;
constexpr std::size_t longestMark = 30;

// What stands around a member: marks in braces, stereotypes, the visibility, words of programming languages.
struct Marks {
    Visibility visibility = Visibility::isPublic;
    bool isStatic = false;
    bool isAbstract = false;
    bool isReadOnly = false;
    bool isQuery = false;
    bool isField = false;
    bool isMethod = false;
    bool isOutput = false;
};

bool obeyMark(std::string_view mark, Marks& marks)
{
    mark = trimmed(mark);
    if (mark == "static" || mark == "classifier")
        marks.isStatic = true;
    else if (mark == "abstract")
        marks.isAbstract = true;
    else if (mark == "field")
        marks.isField = true;
    else if (mark == "method")
        marks.isMethod = true;
    else if (mark == "readOnly" || mark == "readonly" || mark == "frozen")
        marks.isReadOnly = true;
    else if (mark == "query")
        marks.isQuery = true;
    else if (mark != "ordered" && mark != "unique" && mark != "sorted" && mark != "id" && mark != "nonunique")
        return false;
    return true;
}

// Takes {marks} and <<stereotypes>> out of a line, wherever they stand outside quotes.
CString takeMarks(std::string_view text, Marks& marks)
{
    CString kept;
    bool inQuotes = false;
    bool noMoreGuillemets = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"')
            inQuotes = !inQuotes;
        if (!inQuotes && text[i] == '{') {
            std::size_t const length = text.substr(i, longestMark).find('}');
            if (length != nowhere && obeyMark(text.substr(i + 1, length - 1), marks)) {
                i += length;
                continue;
            }
        }
        if (!inQuotes && text.substr(i, 2) == "<<" && !noMoreGuillemets) {
            std::size_t const end = text.find(">>", i);
            noMoreGuillemets = end == nowhere;
            if (end != nowhere) {
                i = end + 1;
                continue;
            }
        }
        kept += text[i];
    }
    return kept;
}

// Words that say something about a member in front of it.
bool takeModifier(PumlLine& line, Marks& marks)
{
    if (line.takeWord("static"))
        marks.isStatic = true;
    else if (line.takeWord("abstract"))
        marks.isAbstract = true;
    else if (line.takeWord("readonly") || line.takeWord("final"))
        marks.isReadOnly = true;
    else if (line.takeWord("public"))
        marks.visibility = Visibility::isPublic;
    else if (line.takeWord("protected"))
        marks.visibility = Visibility::isProtected;
    else if (line.takeWord("private"))
        marks.visibility = Visibility::isPrivate;
    else
        return line.takeWord("virtual") || line.takeWord("synchronized");
    return true;
}

// A modifier is one only in front of something: "static" alone, "final : int" and "final()" name a member.
void takeModifiers(PumlLine& line, Marks& marks)
{
    for (;;) {
        PumlLine ahead = line;
        Marks withModifier = marks;
        if (!takeModifier(ahead, withModifier) || ahead.atEnd() ||
            std::string_view(":(=[").find(ahead.peek()) != nowhere)
            return;
        line = ahead;
        marks = withModifier;
    }
}

void takeVisibility(PumlLine& line, Marks& marks, CString const& owner)
{
    line.take("\\");  // keeps the next character from meaning anything to whoever draws the diagram
    std::string_view const rest = line.rest();
    if (rest.empty())
        return;
    if (rest[0] == '~' && rest.substr(1, owner.view().size()) == owner.view() &&
        trimmed(rest.substr(1 + owner.view().size())).substr(0, 1) == "(")
        return;  // the destructor
    switch (rest[0]) {
    case '+': marks.visibility = Visibility::isPublic; break;
    case '-': marks.visibility = Visibility::isPrivate; break;
    case '#': marks.visibility = Visibility::isProtected; break;
    case '~': marks.visibility = Visibility::isPackage; break;
    default: return;
    }
    line.skip(1);
}

// "name : Type = value", "Type name = value", "name", each with "[0..*]" behind the name.
struct Declaration {
    CString name;
    Type type;
    CString defaultValue;
};

std::size_t findAssignment(std::string_view text)
{
    std::size_t at = findOutside(text, '=');
    while (at != nowhere &&
           (text.substr(at, 2) == "==" || (at > 0 && std::string_view("<>!=").find(text[at - 1]) != nowhere)))
        at = findOutside(text, '=', at + 1);
    return at;
}

std::size_t findColon(std::string_view text)
{
    std::size_t at = findOutside(text, ':');
    while (at != nowhere && text.substr(at, 2) == "::")
        at = findOutside(text, ':', at + 2);
    return at;
}

// Gives where the name begins in "Type name".
std::size_t startOfLastWord(std::string_view text)
{
    std::size_t start = text.size();
    if (start > 0 && text[start - 1] == '"') {
        std::size_t const open = text.rfind('"', start - 2 < start ? start - 2 : 0);
        if (open != nowhere && open + 1 < start)
            return open;
    }
    while (start > 0 && isWordCharacter(text[start - 1]))
        --start;
    return start;
}

CString unquoted(std::string_view text)
{
    text = trimmed(text);
    if (text.size() > 1 && text.front() == '"' && text.back() == '"')
        text = trimmed(text.substr(1, text.size() - 2));
    return textOf(text);
}

Type inForm(char const* form, Type inner)
{
    Type outer;
    outer.name = form;
    outer.arguments.push_back(std::move(inner));
    return outer;
}

// Applies "[0..*]", standing behind a name, to the type.
bool applyBounds(std::string_view bounds, Type& type)
{
    std::optional<Multiplicity> const multiplicity = readMultiplicity(bounds);
    bool const isEmpty = trimmed(bounds.substr(1, bounds.size() - 2)).empty();
    if (!multiplicity && !isEmpty)
        return false;
    if (isEmpty || multiplicity->isMany)
        type = inForm("[]", std::move(type));
    else if (multiplicity->isOptional)
        type = inForm("?", std::move(type));
    return true;
}

std::optional<Declaration> readDeclaration(std::string_view text)
{
    Declaration declaration;
    std::size_t const assignment = findAssignment(text);
    if (assignment != nowhere) {
        declaration.defaultValue = textOf(trimmed(text.substr(assignment + 1)));
        text = trimmed(text.substr(0, assignment));
    }

    std::size_t const colon = findColon(text);
    std::string_view name = trimmed(text.substr(0, colon));
    std::string_view bounds;
    if (!name.empty() && name.back() == ']') {
        std::size_t const open = name.rfind('[');
        if (open == nowhere)
            return std::nullopt;
        // "String[] names" and "names[] : String" have them; in "String[]" they belong to the type.
        bounds = name.substr(open);
        name = trimmed(name.substr(0, open));
    }
    if (colon != nowhere) {
        std::string_view const type = trimmed(text.substr(colon + 1));
        if (!type.empty()) {
            std::optional<Type> read = readType(type);
            if (!read)
                return std::nullopt;
            declaration.type = std::move(*read);
        }
        declaration.name = unquoted(name);
    } else {
        std::size_t const start = startOfLastWord(name);
        std::string_view const type = trimmed(name.substr(0, start));
        declaration.name = unquoted(name.substr(start));
        if (!type.empty()) {
            std::optional<Type> read = readType(type);
            if (!read)
                return std::nullopt;
            declaration.type = std::move(*read);
        }
    }
    if (!bounds.empty() && !applyBounds(bounds, declaration.type))
        return std::nullopt;
    return declaration;
}

// A parameter that is a single word may be a name or a type.
bool looksLikeType(std::string_view word)
{
    constexpr std::string_view known[] = {"int",  "bool",  "boolean", "char", "double", "float",
                                          "long", "short", "string",  "byte", "void"};
    for (std::string_view const type : known)
        if (word == type)
            return true;
    return !word.empty() && ((word[0] >= 'A' && word[0] <= 'Z') || word.find_first_of("<[*&.") != nowhere);
}

std::optional<Parameter> readParameter(std::string_view text)
{
    PumlLine line(text);
    Parameter parameter;
    PumlLine ahead = line;
    bool const isOutput = ahead.takeWord("inout") || ahead.takeWord("out");
    if ((isOutput || ahead.takeWord("in")) && !ahead.atEnd() && ahead.peek() != ':') {
        line = ahead;
        parameter.isOutput = isOutput;
    }

    std::string_view const rest = line.rest();
    if (findColon(rest) == nowhere && rest.find_first_of(" \t=") == nowhere && looksLikeType(rest)) {
        std::optional<Type> type = readType(rest);
        if (!type)
            return std::nullopt;
        parameter.type = std::move(*type);
        return parameter;
    }
    std::optional<Declaration> declaration = readDeclaration(rest);
    if (!declaration)
        return std::nullopt;
    if (declaration->name.IsEmpty() && !declaration->type.isGiven())
        return std::nullopt;
    parameter.name = declaration->name;
    parameter.type = std::move(declaration->type);
    parameter.defaultValue = declaration->defaultValue;
    return parameter;
}

bool readParameters(std::string_view text, std::vector<Parameter>& parameters)
{
    text = trimmed(text);
    while (!text.empty()) {
        std::size_t const comma = findOutside(text, ',');
        std::optional<Parameter> parameter = readParameter(trimmed(text.substr(0, comma)));
        if (!parameter)
            return false;
        parameters.push_back(std::move(*parameter));
        text = comma == nowhere ? std::string_view() : trimmed(text.substr(comma + 1));
        if (comma != nowhere && text.empty())
            return false;
    }
    return true;
}

NoMember broken(char const* reason)
{
    return {true, reason};
}

NoMember prose()
{
    return {false, "not understood: passed over"};
}

// What stands behind the parameters: "const", ": Type", "= 0", "throws X".
bool readTail(std::string_view text, Operation& operation)
{
    PumlLine line(text);
    if (line.takeWord("const"))
        operation.isQuery = true;
    while (line.takeWord("override") || line.takeWord("noexcept") || line.takeWord("final")) { }
    if (line.take(":") || line.take("->")) {
        std::string_view type = line.rest();
        std::size_t const assignment = findAssignment(type);
        if (assignment != nowhere)
            type = trimmed(type.substr(0, assignment));
        std::size_t const thrown = type.find(" throws ");
        std::optional<Type> read = readType(type.substr(0, thrown));
        if (!read)
            return false;
        operation.returnType = std::move(*read);
        line.skip(type.size());
    }
    if (line.take("=")) {
        if (line.take("0"))
            operation.isAbstract = true;
        else if (!line.takeWord("default") && !line.takeWord("delete"))
            return false;
    }
    line.take(";");
    return line.atEnd() || line.takeWord("throws");
}

std::variant<NoMember, Attribute, Operation> readOperation(std::string_view text, std::size_t open,
                                                           Marks const& marks)
{
    std::size_t const close = closingBracket(text, open);
    if (close == nowhere)
        return broken("the parameter list is not closed");
    std::string_view const head = trimmed(text.substr(0, open));
    if (head.empty())
        return broken("an operation needs a name");

    Operation operation;
    std::size_t start = startOfLastWord(head);
    if (start > 0 && start < head.size() && head[start - 1] == '~')
        --start;
    if (start == head.size())
        return prose();
    operation.name = unquoted(head.substr(start));
    if (operation.name.IsEmpty())
        return broken("an operation needs a name");
    if (start > 0) {
        std::optional<Type> type = readType(trimmed(head.substr(0, start)));
        if (!type)
            return prose();
        operation.returnType = std::move(*type);
    }
    if (!readParameters(text.substr(open + 1, close - open - 1), operation.parameters))
        return broken("the parameter list is not understood");
    operation.visibility = marks.visibility;
    operation.isStatic = marks.isStatic;
    operation.isAbstract = marks.isAbstract;
    operation.isQuery = marks.isQuery;
    if (!readTail(trimmed(text.substr(close + 1)), operation))
        return prose();
    return operation;
}

}  // namespace

std::variant<NoMember, Attribute, Operation> readMember(std::string_view text, CString const& owner)
{
    Marks marks;
    CString const unmarked = takeMarks(text, marks);
    PumlLine line(unmarked.view());
    takeVisibility(line, marks, owner);
    takeModifiers(line, marks);
    line.take("/");  // derived
    if (line.atEnd())
        return broken("a member needs a name");

    std::size_t const open = marks.isField ? nowhere : line.rest().find('(');
    std::size_t const assignment = findAssignment(line.rest());
    std::size_t const quote = line.rest().find('"');
    std::size_t const limit = quote == 0 ? assignment : std::min(assignment, quote);
    if (open != nowhere && open < limit)
        return readOperation(line.rest(), open, marks);
    if (marks.isMethod)
        return broken("an operation needs its parameters in parentheses");

    std::string_view declared = line.rest();
    if (!declared.empty() && declared.back() == ';')
        declared = trimmed(declared.substr(0, declared.size() - 1));
    std::optional<Declaration> declaration = readDeclaration(declared);
    if (!declaration)
        return prose();
    if (declaration->name.IsEmpty())
        return broken("an attribute needs a name");
    Attribute attribute;
    attribute.name = declaration->name;
    attribute.type = std::move(declaration->type);
    attribute.defaultValue = declaration->defaultValue;
    attribute.visibility = marks.visibility;
    attribute.isStatic = marks.isStatic;
    attribute.isReadOnly = marks.isReadOnly;
    return attribute;
}

bool looksLikeMember(std::string_view text)
{
    Marks marks;
    CString const unmarked = takeMarks(text, marks);
    std::string_view const bare = trimmed(unmarked.view());
    if (bare.empty())
        return false;
    if (marks.isField || marks.isMethod || marks.isStatic || marks.isAbstract)
        return true;
    if (std::string_view("+-#~").find(bare[0]) != nowhere || findColon(bare) != nowhere)
        return true;
    std::string_view const name = trimmed(bare.substr(0, bare.find_first_of("=(,")));
    bool const hasEmptyList = bare.find("()") != nowhere;
    bool const isShouting = name.find_first_of("abcdefghijklmnopqrstuvwxyz") == nowhere;
    return hasEmptyList && !isShouting;
}

std::variant<NoMember, Literals> readLiterals(std::string_view text)
{
    Marks marks;
    CString const unmarked = takeMarks(text, marks);
    std::string_view rest = trimmed(unmarked.view());
    Literals read;
    while (!rest.empty()) {
        std::size_t end = findOutside(rest, ',');
        std::string_view one = trimmed(rest.substr(0, end));
        rest = end == nowhere ? std::string_view() : trimmed(rest.substr(end + 1));
        if (!one.empty() && one.back() == ';')
            one = trimmed(one.substr(0, one.size() - 1));
        if (one.empty())
            continue;
        Literal literal;
        std::size_t const assignment = findAssignment(one);
        if (assignment != nowhere) {
            literal.value = textOf(trimmed(one.substr(assignment + 1)));
            one = trimmed(one.substr(0, assignment));
        }
        std::size_t const open = one.find('(');
        if (open != nowhere) {
            if (closingBracket(one, open) == nowhere)
                return broken("the argument list is not closed");
            read.hasArguments = true;
            one = trimmed(one.substr(0, open));
        }
        literal.name = unquoted(one);
        if (literal.name.IsEmpty())
            return broken("a literal needs a name");
        if (literal.name.view().find(' ') != nowhere)
            return prose();
        read.literals.push_back(std::move(literal));
    }
    return read;
}

}  // namespace modelgen
