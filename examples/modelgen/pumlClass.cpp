#include "examples/modelgen/pumlClass.h"

#include "examples/modelgen/pumlFields.h"
#include "examples/modelgen/pumlLine.h"
#include "examples/modelgen/pumlType.h"
#include "examples/modelgen/report.h"

#include <cstring>
#include <optional>
#include <utility>

namespace modelgen {

namespace {

struct Keyword {
    char const* word;
    Kind kind;
};
constexpr Keyword keywords[] = {
    {"class", Kind::isClass},   {"interface", Kind::isInterface}, {"enum", Kind::isEnum},
    {"struct", Kind::isStruct}, {"record", Kind::isStruct},       {"dataclass", Kind::isStruct},
    {"entity", Kind::isClass},  {"exception", Kind::isClass},     {"protocol", Kind::isInterface},
};

// Takes the words in front of the name. False if they declare no class.
bool takeKeywords(PumlLine& line, ClassDeclaration& declaration)
{
    if (isOneOf(line.peek(), "+-#~"))
        line.skip(1);
    while (line.takeWord("static") || line.takeWord("final")) { }
    bool const isAbstract = line.takeWord("abstract");
    declaration.isAbstract = isAbstract;
    for (Keyword const& keyword : keywords) {
        if (line.takeWord(keyword.word)) {
            declaration.kind = keyword.kind;
            return true;
        }
    }
    return isAbstract;
}

// Parts "Map<K, V extends Object>" into its name and the names of its parameters.
CString takeTypeParameters(CString const& name, std::vector<CString>& parameters)
{
    int const open = name.Find('<');
    if (open <= 0 || name[name.GetLength() - 1] != '>')
        return name;
    CString const list = name.Mid(open + 1, name.GetLength() - open - 2);
    SPStringList fields = fieldsOf(list);
    if (fields[fields.count() - 1] == "")
        fields.pop();
    for (int i = 0; i < fields.count(); ++i)
        parameters.push_back(CString(fields[i]).SpanExcluding(" :<="));
    CString bare = name.Left(open);
    return bare.Trim();
}

bool readBases(PumlLine& line, std::vector<BaseName>& bases)
{
    do {
        std::optional<CString> const name = line.name();
        if (!name || name->IsEmpty())
            return false;
        BaseName base;
        base.name = *name;
        if (line.peek() == '<' && line.peek(1) != '<') {
            std::optional<CString> const arguments = line.angled();
            std::optional<std::vector<Type>> types = arguments ? readTypes(*arguments) : std::nullopt;
            if (!types)
                return false;
            base.arguments = std::move(*types);
        }
        bases.push_back(std::move(base));
    } while (line.take(","));
    return true;
}

// Takes a stereotype, a colour, a tag or a link: nothing of these makes a difference to code but the first.
bool takeDecoration(PumlLine& line, std::vector<CString>& stereotypes)
{
    static Regexp stereotype("^<<([^>]*(>[^>]+)*)>>");
    static Regexp link("^\\[\\[[^]]*(][^]]+)*]]");
    static Regexp colourOrTag("^[#$][^ \t{]*");
    if (line.peek() == '<') {
        char const* const text = line.rest();
        int const length = line.takeMatch(stereotype);
        if (length > 0)
            stereotypes.push_back(CString(text + 2, length - 4).Trim());
        return length > 0;
    }
    return line.takeMatch(link) > 0 || line.takeMatch(colourOrTag) > 0;
}

CString chooseName(CString const& display, CString const& id)
{
    return isPlainName(display) ? display : id;
}

}  // namespace

bool isPlainName(char const* text)
{
    static Regexp plainName("^[A-Za-z_][A-Za-z0-9_]*$");
    return plainName.match(text);
}

bool startsClass(char const* text)
{
    PumlLine line(text);
    ClassDeclaration ignored;
    return takeKeywords(line, ignored) && !isOneOf(line.peek(), "-.=:");
}

std::variant<BadDeclaration, ClassDeclaration> readClass(char const* text)
{
    PumlLine line(text);
    ClassDeclaration declaration;
    takeKeywords(line, declaration);

    bool const isQuoted = line.peek() == '"';
    std::optional<CString> const first = line.name();
    if (!first || CString(*first).Trim().IsEmpty())
        return BadDeclaration{isQuoted && !first ? "a quote is not closed" : "the declaration lacks a name"};
    declaration.id = *first;
    CString display = takeTypeParameters(*first, declaration.typeParameters);
    bool isIdQuoted = isQuoted;

    while (!line.atEnd()) {
        if (line.takeWord("as")) {
            bool const isAliasQuoted = line.peek() == '"';
            std::optional<CString> const alias = line.name();
            if (!alias || alias->IsEmpty())
                return BadDeclaration{"'as' needs a name"};
            if (isAliasQuoted && !isQuoted) {
                display = takeTypeParameters(*alias, declaration.typeParameters);
            } else {
                declaration.id = *alias;
                isIdQuoted = isAliasQuoted;
            }
        } else if (line.takeWord("extends") || line.takeWord("implements")) {
            if (!readBases(line, declaration.bases))
                return BadDeclaration{"the list of bases is not understood"};
        } else if (line.peek() == '<' && line.peek(1) != '<') {
            std::optional<CString> const parameters = line.angled();
            if (!parameters)
                return BadDeclaration{"'<' is not closed"};
            takeTypeParameters("x<" + *parameters + ">", declaration.typeParameters);
        } else if (line.take("{")) {
            declaration.hasBody = true;
            declaration.body = line.rest();
            break;
        } else if (!takeDecoration(line, declaration.stereotypes)) {
            return BadDeclaration{CString("unexpected ") + quoted(line.rest()) + " in a declaration"};
        }
    }
    declaration.isQualified = !isIdQuoted;
    if (isQuoted && declaration.id == *first)
        declaration.name = display;  // the one name that there is
    else if (declaration.id == *first && !isQuoted && display == *first)
        declaration.name = display;
    else
        declaration.name = chooseName(display, declaration.id);
    if (declaration.kind == Kind::isInterface)
        declaration.isAbstract = true;
    for (CString const& stereotype : declaration.stereotypes) {
        if (declaration.kind != Kind::isClass)
            break;
        if (stereotype.CompareNoCase("interface") == 0) {
            declaration.kind = Kind::isInterface;
            declaration.isAbstract = true;
        } else if (stereotype.CompareNoCase("struct") == 0 || stereotype.CompareNoCase("value") == 0 ||
                   stereotype.CompareNoCase("dataType") == 0 ||
                   stereotype.CompareNoCase("value object") == 0) {
            declaration.kind = Kind::isStruct;
        } else if (stereotype.CompareNoCase("enumeration") == 0 || stereotype.CompareNoCase("enum") == 0) {
            declaration.kind = Kind::isEnum;
        }
    }
    return declaration;
}

std::variant<BadDeclaration, PackageDeclaration> readPackage(char const* text)
{
    PumlLine line(text);
    PackageDeclaration declaration;
    std::vector<CString> stereotypes;
    bool const isQuoted = line.peek() == '"';
    if (std::optional<CString> const name = line.name()) {
        declaration.name = *name;
        declaration.isQualified = !isQuoted;
    } else if (isQuoted) {
        return BadDeclaration{"a quote is not closed"};
    }
    while (!line.atEnd()) {
        if (line.takeWord("as")) {
            bool const isAliasQuoted = line.peek() == '"';
            std::optional<CString> const alias = line.name();
            if (!alias || alias->IsEmpty())
                return BadDeclaration{"'as' needs a name"};
            declaration.isQualified = false;
            if (!isAliasQuoted)
                declaration.name = chooseName(declaration.name, *alias);
            else if (!isPlainName(declaration.name))
                declaration.name = *alias;
        } else if (line.take("{")) {
            declaration.hasBody = true;
            if (!line.atEnd() && !line.take("}"))
                return BadDeclaration{CString("unexpected ") + quoted(line.rest()) + " behind '{'"};
            if (text[std::strlen(text) - 1] == '}')
                declaration.hasBody = false;  // opened and closed in one line
            break;
        } else if (!takeDecoration(line, stereotypes)) {
            return BadDeclaration{CString("unexpected ") + quoted(line.rest()) + " in a declaration"};
        }
    }
    return declaration;
}

}  // namespace modelgen
