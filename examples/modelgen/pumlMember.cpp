#include "examples/modelgen/pumlMember.h"

#include "examples/modelgen/pumlFields.h"
#include "examples/modelgen/pumlLine.h"
#include "examples/modelgen/pumlType.h"

#include <climits>
#include <cstring>
#include <optional>
#include <utility>

namespace modelgen {

namespace {

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

bool obeyMark(CString const& mark, Marks& marks)
{
    static Regexp withoutMeaning("^(ordered|unique|sorted|id|nonunique)$");
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
    else
        return withoutMeaning.match(mark);
    return true;
}

// Takes {marks} and <<stereotypes>> out of a line, wherever they stand outside quotes.
CString takeMarks(char const* text, Marks& marks)
{
    static Regexp mark("^{[ \t]*([A-Za-z]+)[ \t]*}");
    if (!std::strpbrk(text, "{<"))
        return CString(text).Trim();
    CString kept;
    bool inQuotes = false;
    bool noMoreGuillemets = false;
    for (; *text != '\0'; ++text) {
        if (*text == '"')
            inQuotes = !inQuotes;
        if (!inQuotes && *text == '{' && mark.match(text)) {
            Range const word = mark.getgroup(1);
            if (obeyMark(CString(text + word.start(), word.length()), marks)) {
                text += mark.getgroup(0).end();
                continue;
            }
        }
        if (!inQuotes && text[0] == '<' && text[1] == '<' && !noMoreGuillemets) {
            char const* const end = std::strstr(text, ">>");
            noMoreGuillemets = end == nullptr;
            if (end) {
                text = end + 1;
                continue;
            }
        }
        kept += *text;
    }
    return kept.Trim();
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
        if (!takeModifier(ahead, withModifier) || ahead.atEnd() || isOneOf(ahead.peek(), ":(=["))
            return;
        line = ahead;
        marks = withModifier;
    }
}

void takeVisibility(PumlLine& line, Marks& marks, CString const& owner)
{
    line.take("\\");  // keeps the next character from meaning anything to whoever draws the diagram
    char const* const rest = line.rest();
    if (rest[0] == '~' && rest[1] == owner[0]) {
        PumlLine ahead(rest + 1);
        if (ahead.take(owner) && ahead.peek() == '(')
            return;  // the destructor
    }
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

int findAssignment(char const* text)
{
    int at = findOutside(text, '=');
    while (at >= 0 && (text[at + 1] == '=' || (at > 0 && isOneOf(text[at - 1], "<>!="))))
        at = findOutside(text, '=', at + 1);
    return at;
}

int findColon(char const* text)
{
    int at = findOutside(text, ':');
    while (at >= 0 && text[at + 1] == ':')
        at = findOutside(text, ':', at + 2);
    return at;
}

// Gives where the name begins in "Type name".
int startOfLastWord(CString const& text)
{
    int start = text.GetLength();
    if (start > 1 && text[start - 1] == '"') {
        int const open = text.Left(start - 1).ReverseFind('"');
        if (open >= 0)
            return open;
    }
    while (start > 0 && isWordCharacter(text[start - 1]))
        --start;
    return start;
}

CString trimmedPart(CString const& text, int start, int count = INT_MAX)
{
    return text.Mid(start, count).Trim();
}

CString unquoted(CString text)
{
    text.Trim();
    if (text.GetLength() > 1 && text[0] == '"' && text[text.GetLength() - 1] == '"')
        text = trimmedPart(text, 1, text.GetLength() - 2);
    return text;
}

Type inForm(char const* form, Type inner)
{
    Type outer;
    outer.name = form;
    outer.arguments.push_back(std::move(inner));
    return outer;
}

// Applies "[0..*]", standing behind a name, to the type.
bool applyBounds(CString const& bounds, Type& type)
{
    std::optional<Multiplicity> const multiplicity = readMultiplicity(bounds);
    bool const isEmpty = trimmedPart(bounds, 1, bounds.GetLength() - 2).IsEmpty();
    if (!multiplicity && !isEmpty)
        return false;
    if (isEmpty || multiplicity->isMany)
        type = inForm("[]", std::move(type));
    else if (multiplicity->isOptional)
        type = inForm("?", std::move(type));
    return true;
}

std::optional<Declaration> readDeclaration(CString text)
{
    Declaration declaration;
    int const assignment = findAssignment(text);
    if (assignment >= 0) {
        declaration.defaultValue = trimmedPart(text, assignment + 1);
        text = trimmedPart(text, 0, assignment);
    }

    int const colon = findColon(text);
    CString name = colon < 0 ? text : trimmedPart(text, 0, colon);
    CString bounds;
    if (!name.IsEmpty() && name[name.GetLength() - 1] == ']') {
        int const open = name.ReverseFind('[');
        if (open < 0)
            return std::nullopt;
        // "String[] names" and "names[] : String" have them; in "String[]" they belong to the type.
        bounds = name.Mid(open);
        name = trimmedPart(name, 0, open);
    }
    CString type;
    if (colon >= 0) {
        type = trimmedPart(text, colon + 1);
        declaration.name = unquoted(name);
    } else {
        int const start = startOfLastWord(name);
        type = trimmedPart(name, 0, start);
        declaration.name = unquoted(name.Mid(start));
    }
    if (!type.IsEmpty()) {
        std::optional<Type> read = readType(type);
        if (!read)
            return std::nullopt;
        declaration.type = std::move(*read);
    }
    if (!bounds.IsEmpty() && !applyBounds(bounds, declaration.type))
        return std::nullopt;
    return declaration;
}

// A parameter that is a single word may be a name or a type.
bool looksLikeType(char const* word)
{
    static Regexp known("^(int|bool|boolean|char|double|float|long|short|string|byte|void)$");
    static Regexp typical("^[A-Z]|[[<*&.]");
    return known.match(word) || typical.match(word);
}

std::optional<Parameter> readParameter(char const* text)
{
    PumlLine line(text);
    Parameter parameter;
    PumlLine ahead = line;
    bool const isOutput = ahead.takeWord("inout") || ahead.takeWord("out");
    if ((isOutput || ahead.takeWord("in")) && !ahead.atEnd() && ahead.peek() != ':') {
        line = ahead;
        parameter.isOutput = isOutput;
    }

    char const* const rest = line.rest();
    if (findColon(rest) < 0 && !std::strpbrk(rest, " \t=") && looksLikeType(rest)) {
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

bool readParameters(CString const& text, std::vector<Parameter>& parameters)
{
    SPStringList const fields = fieldsOf(text);
    if (fields.count() == 1 && fields[0] == "")
        return true;
    for (int i = 0; i < fields.count(); ++i) {
        std::optional<Parameter> parameter = readParameter(fields[i]);
        if (!parameter)
            return false;
        parameters.push_back(std::move(*parameter));
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
bool readTail(char const* text, Operation& operation)
{
    PumlLine line(text);
    if (line.takeWord("const"))
        operation.isQuery = true;
    while (line.takeWord("override") || line.takeWord("noexcept") || line.takeWord("final")) { }
    if (line.take(":") || line.take("->")) {
        CString type(line.rest());
        int const assignment = findAssignment(type);
        if (assignment >= 0)
            type = trimmedPart(type, 0, assignment);
        line.skip(type.GetLength());
        int const thrown = type.Find(" throws ");
        std::optional<Type> read = readType(thrown < 0 ? type : trimmedPart(type, 0, thrown));
        if (!read)
            return false;
        operation.returnType = std::move(*read);
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

std::variant<NoMember, Attribute, Operation> readOperation(CString const& text, int open, Marks const& marks)
{
    std::optional<CString> const parameters = parenthesised(text, open);
    if (!parameters)
        return broken("the parameter list is not closed");
    CString const head = trimmedPart(text, 0, open);
    if (head.IsEmpty())
        return broken("an operation needs a name");

    Operation operation;
    int start = startOfLastWord(head);
    if (start > 0 && start < head.GetLength() && head[start - 1] == '~')
        --start;
    if (start == head.GetLength())
        return prose();
    operation.name = unquoted(head.Mid(start));
    if (operation.name.IsEmpty())
        return broken("an operation needs a name");
    if (start > 0) {
        std::optional<Type> type = readType(trimmedPart(head, 0, start));
        if (!type)
            return prose();
        operation.returnType = std::move(*type);
    }
    if (!readParameters(*parameters, operation.parameters))
        return broken("the parameter list is not understood");
    operation.visibility = marks.visibility;
    operation.isStatic = marks.isStatic;
    operation.isAbstract = marks.isAbstract;
    operation.isQuery = marks.isQuery;
    if (!readTail(trimmedPart(text, open + parameters->GetLength() + 2), operation))
        return prose();
    return operation;
}

}  // namespace

std::variant<NoMember, Attribute, Operation> readMember(char const* text, CString const& owner)
{
    Marks marks;
    CString const unmarked = takeMarks(text, marks);
    PumlLine line(unmarked);
    takeVisibility(line, marks, owner);
    takeModifiers(line, marks);
    line.take("/");  // derived
    if (line.atEnd())
        return broken("a member needs a name");

    CString declared(line.rest());
    int const open = marks.isField ? -1 : declared.Find('(');
    int const assignment = findAssignment(declared);
    int const quote = declared.Find('"');
    auto const isBefore = [open](int limit) { return limit < 0 || open < limit; };
    if (open >= 0 && isBefore(assignment) && (quote == 0 || isBefore(quote)))
        return readOperation(declared, open, marks);
    if (marks.isMethod)
        return broken("an operation needs its parameters in parentheses");

    if (declared[declared.GetLength() - 1] == ';')
        declared = trimmedPart(declared, 0, declared.GetLength() - 1);
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

bool looksLikeMember(char const* text)
{
    static Regexp shouting("^[^a-z]*[=(,]|^[^a-z]*$");
    Marks marks;
    CString const bare = takeMarks(text, marks);
    if (bare.IsEmpty())
        return false;
    if (marks.isField || marks.isMethod || marks.isStatic || marks.isAbstract)
        return true;
    if (isOneOf(bare[0], "+-#~") || findColon(bare) >= 0)
        return true;
    return bare.Find("()") >= 0 && !shouting.match(bare);
}

std::variant<NoMember, Literals> readLiterals(char const* text)
{
    Marks marks;
    CString const rest = takeMarks(text, marks);
    Literals read;
    int end = 0;
    for (int start = 0; start < rest.GetLength(); start = end + 1) {
        end = findOutside(rest, ',', start);
        if (end < 0)
            end = rest.GetLength();
        CString one = trimmedPart(rest, start, end - start);
        if (!one.IsEmpty() && one[one.GetLength() - 1] == ';')
            one = trimmedPart(one, 0, one.GetLength() - 1);
        if (one.IsEmpty())
            continue;
        Literal literal;
        int const assignment = findAssignment(one);
        if (assignment >= 0) {
            literal.value = trimmedPart(one, assignment + 1);
            one = trimmedPart(one, 0, assignment);
        }
        int const open = one.Find('(');
        if (open >= 0) {
            if (closingBracket(one, open) < 0)
                return broken("the argument list is not closed");
            read.hasArguments = true;
            one = trimmedPart(one, 0, open);
        }
        literal.name = unquoted(one);
        if (literal.name.IsEmpty())
            return broken("a literal needs a name");
        if (literal.name.Find(' ') >= 0)
            return prose();
        read.literals.push_back(std::move(literal));
    }
    return read;
}

}  // namespace modelgen
