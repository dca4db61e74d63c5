#include "examples/modelgen/pumlType.h"

#include "examples/modelgen/pumlLine.h"

#include <cstring>
#include <utility>

namespace modelgen {

namespace {

constexpr int deepestNesting = 16;

// Words that C++ writes side by side.
bool isArithmeticWord(CString const& word)
{
    static Regexp words("^(unsigned|signed|long|short|int|char|double)$");
    return words.match(word);
}

Type wrapped(char const* form, Type inner)
{
    Type type;
    type.name = form;
    type.arguments.push_back(std::move(inner));
    return type;
}

class TypeReader {
public:
    explicit TypeReader(char const* text) : line_(text) { }

    std::optional<Type> read()
    {
        std::optional<Type> type = readOne();
        return line_.atEnd() ? type : std::nullopt;
    }

    /// Reads up to `end`; with an empty one up to the end of the text.
    std::optional<std::vector<Type>> readList(char const* end)
    {
        std::vector<Type> types;
        do {
            std::optional<Type> type = readOne();
            if (!type)
                return std::nullopt;
            types.push_back(std::move(*type));
        } while (line_.take(","));
        if (*end == '\0' ? !line_.atEnd() : !line_.take(end))
            return std::nullopt;
        return types;
    }

private:
    std::optional<Type> readOne()
    {
        if (++depth_ > deepestNesting)
            return std::nullopt;
        std::optional<Type> type = readUndecorated();
        if (type)
            type = readDecorations(std::move(*type));
        --depth_;
        return type;
    }

    std::optional<Type> readUndecorated()
    {
        Type type;
        while (line_.takeWord("const") || line_.takeWord("final"))
            type.isConst = true;
        if (line_.take("?")) {  // any type, or any below a bound
            if (line_.takeWord("extends") || line_.takeWord("super"))
                return readOne();
            type.name = "?";
            return type;
        }
        if (line_.peek() == '"')
            return std::nullopt;
        line_.take("::");
        std::optional<CString> const name = line_.name();
        if (!name || (*name)[0] == '@')
            return std::nullopt;
        type.name = *name;
        while (startsArithmeticWord() && isArithmeticWord(lastWord(type.name)))
            type.name += " " + line_.word();
        if (line_.peek() == '<') {
            line_.skip(1);
            std::optional<std::vector<Type>> arguments = readList(">");
            if (!arguments)
                return std::nullopt;
            type.arguments = std::move(*arguments);
        }
        return type;
    }

    std::optional<Type> readDecorations(Type type)
    {
        for (int count = 0;; ++count) {
            if (line_.takeWord("const")) {
                type.isConst = true;
                continue;
            }
            char const* form = nullptr;
            if (line_.take("*"))
                form = "*";
            else if (line_.take("&&") || line_.take("&"))
                form = "&";
            else if (line_.take("?"))
                form = "?";
            else if (line_.take("..."))
                form = "[]";
            else if (line_.peek() == '[') {
                char const* const end = std::strchr(line_.rest(), ']');
                if (!end)
                    return std::nullopt;
                int const length = int(end - line_.rest());
                CString const bounds = CString(line_.rest() + 1, length - 1).Trim();
                std::optional<Multiplicity> const multiplicity = readMultiplicity(bounds);
                line_.skip(length + 1);
                if (bounds.IsEmpty() || !multiplicity || multiplicity->isMany)
                    form = "[]";
                else if (multiplicity->isOptional)
                    form = "?";
                else
                    continue;  // exactly one is the type itself
            }
            if (!form)
                return type;
            if (count == deepestNesting)
                return std::nullopt;
            type = wrapped(form, std::move(type));
        }
    }

    static CString lastWord(CString const& name) { return name.Mid(name.ReverseFind(' ') + 1); }

    bool startsArithmeticWord() const
    {
        PumlLine ahead = line_;
        return isWordCharacter(line_.peek()) && isArithmeticWord(ahead.word());
    }

    PumlLine line_;
    int depth_ = 0;
};

bool isUnlimited(CString const& bound)
{
    return bound.FindOneOf("*nmNM") >= 0;  // "many" too
}

}  // namespace

std::optional<Type> readType(char const* text)
{
    return TypeReader(text).read();
}

std::optional<std::vector<Type>> readTypes(char const* text)
{
    return TypeReader(text).readList("");
}

// Group 2 is the lower bound, group 4 the upper one, group 1 and 5 are the brackets.
std::optional<Multiplicity> readMultiplicity(char const* text)
{
    static Regexp bounds("^[ \t]*(\\[?)[ \t]*([0-9]+|many|[*nmNM])"
                         "([ \t]*\\.\\.[ \t]*([0-9]+|many|[*nmNM]))?[ \t]*(]?)[ \t]*$");
    if (!bounds.match(text) || bounds.getgroup(1).length() != bounds.getgroup(5).length())
        return std::nullopt;
    auto const group = [&](int number) {
        Range const range = bounds.getgroup(number);
        return CString(text + range.start(), range.length());
    };
    CString const lower = group(2);
    CString const upper = bounds.getgroup(4).length() > 0 ? group(4) : lower;
    Multiplicity multiplicity;
    multiplicity.isMany = isUnlimited(upper) || !(upper == "1" || upper == "0");
    multiplicity.isOptional = !multiplicity.isMany && lower == "0";
    return multiplicity;
}

}  // namespace modelgen
