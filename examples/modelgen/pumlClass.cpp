#include "examples/modelgen/pumlClass.h"

#include "examples/modelgen/pumlLine.h"
#include "examples/modelgen/pumlType.h"
#include "examples/modelgen/report.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace modelgen {

namespace {

constexpr auto nowhere = std::string_view::npos;

struct Keyword {
    std::string_view word;
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
    if (std::string_view("+-#~").find(line.peek()) != nowhere && line.peek() != '\0')
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
    std::string_view list = name.view().substr(std::size_t(open) + 1);
    list.remove_suffix(1);
    while (!list.empty()) {
        std::size_t const comma = findOutside(list, ',');
        std::string_view const one = trimmed(list.substr(0, comma));
        parameters.push_back(textOf(one.substr(0, one.find_first_of(" :<="))));
        list = comma == nowhere ? std::string_view() : list.substr(comma + 1);
    }
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
            std::optional<std::vector<Type>> types = arguments ? readTypes(arguments->view()) : std::nullopt;
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
    std::string_view const rest = line.rest();
    if (rest.substr(0, 2) == "<<") {
        std::size_t const end = rest.find(">>");
        if (end == nowhere)
            return false;
        stereotypes.push_back(textOf(trimmed(rest.substr(2, end - 2))));
        line.skip(end + 2);
        return true;
    }
    if (rest.substr(0, 2) == "[[") {
        std::size_t const end = rest.find("]]");
        line.skip(end == nowhere ? 0 : end + 2);
        return end != nowhere;
    }
    if (line.peek() == '#' || line.peek() == '$') {
        line.skip(std::min(rest.find_first_of(" \t{"), rest.size()));
        return true;
    }
    return false;
}

CString chooseName(CString const& display, CString const& id)
{
    return isPlainName(display.view()) ? display : id;
}

}  // namespace

bool isPlainName(std::string_view text)
{
    if (text.empty() || (text[0] >= '0' && text[0] <= '9'))
        return false;
    for (char const c : text)
        if (!isWordCharacter(c) || c == '$' || static_cast<unsigned char>(c) >= 0x80)
            return false;
    return true;
}

bool startsClass(std::string_view text)
{
    PumlLine line(text);
    ClassDeclaration ignored;
    return takeKeywords(line, ignored) && std::string_view("-.=:").find(line.peek()) == nowhere;
}

std::variant<BadDeclaration, ClassDeclaration> readClass(std::string_view text)
{
    PumlLine line(text);
    ClassDeclaration declaration;
    takeKeywords(line, declaration);

    bool const isQuoted = line.peek() == '"';
    std::optional<CString> const first = line.name();
    if (!first || trimmed(first->view()).empty())
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
            declaration.body = textOf(line.rest());
            break;
        } else if (!takeDecoration(line, declaration.stereotypes)) {
            return BadDeclaration{CString("unexpected ") + quoted(textOf(line.rest())) + " in a declaration"};
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

std::variant<BadDeclaration, PackageDeclaration> readPackage(std::string_view text)
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
            else if (!isPlainName(declaration.name.view()))
                declaration.name = *alias;
        } else if (line.take("{")) {
            declaration.hasBody = true;
            if (!line.atEnd() && !line.take("}"))
                return BadDeclaration{CString("unexpected ") + quoted(textOf(line.rest())) + " behind '{'"};
            if (text.back() == '}')
                declaration.hasBody = false;  // opened and closed in one line
            break;
        } else if (!takeDecoration(line, stereotypes)) {
            return BadDeclaration{CString("unexpected ") + quoted(textOf(line.rest())) + " in a declaration"};
        }
    }
    return declaration;
}

}  // namespace modelgen
