#include "examples/modelgen/pumlType.h"

#include "examples/modelgen/pumlLine.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace modelgen {

namespace {

constexpr int deepestNesting = 16;
constexpr std::string_view arithmeticWords[] = {"unsigned", "signed", "long",  "short",
                                                "int",      "char",   "double"};

bool isArithmeticWord(std::string_view word)
{
    return std::find(std::begin(arithmeticWords), std::end(arithmeticWords), word) !=
        std::end(arithmeticWords);
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
    explicit TypeReader(std::string_view text) : line_(text) { }

    std::optional<Type> read()
    {
        std::optional<Type> type = readOne();
        return line_.atEnd() ? type : std::nullopt;
    }

    std::optional<std::vector<Type>> readList(char end)
    {
        std::vector<Type> types;
        do {
            std::optional<Type> type = readOne();
            if (!type)
                return std::nullopt;
            types.push_back(std::move(*type));
        } while (line_.take(","));
        if (end == '\0' ? !line_.atEnd() : !line_.take(std::string_view(&end, 1)))
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
        while (isArithmeticWord(lastWord(type.name.view())) && startsArithmeticWord())
            type.name += CString(" ") + textOf(line_.word());
        if (line_.peek() == '<') {
            line_.skip(1);
            std::optional<std::vector<Type>> arguments = readList('>');
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
                std::size_t const end = line_.rest().find(']');
                if (end == std::string_view::npos)
                    return std::nullopt;
                std::string_view const bounds = trimmed(line_.rest().substr(1, end - 1));
                std::optional<Multiplicity> const multiplicity = readMultiplicity(bounds);
                line_.skip(end + 1);
                if (bounds.empty() || !multiplicity || multiplicity->isMany)
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

    static std::string_view lastWord(std::string_view name)
    {
        std::size_t const blank = name.rfind(' ');
        return blank == std::string_view::npos ? name : name.substr(blank + 1);
    }

    bool startsArithmeticWord() const
    {
        PumlLine ahead = line_;
        return isArithmeticWord(ahead.word());
    }

    PumlLine line_;
    int depth_ = 0;
};

bool isNumber(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool isUnlimited(std::string_view text)
{
    return text == "*" || text == "n" || text == "m" || text == "N" || text == "M" || text == "many";
}

}  // namespace

std::optional<Type> readType(std::string_view text)
{
    return TypeReader(text).read();
}

std::optional<std::vector<Type>> readTypes(std::string_view text)
{
    return TypeReader(text).readList('\0');
}

std::optional<Multiplicity> readMultiplicity(std::string_view text)
{
    text = trimmed(text);
    if (text.size() > 1 && text.front() == '[' && text.back() == ']')
        text = trimmed(text.substr(1, text.size() - 2));
    std::size_t const dots = text.find("..");
    std::string_view const lower = trimmed(text.substr(0, dots));
    std::string_view const upper = dots == std::string_view::npos ? lower : trimmed(text.substr(dots + 2));
    if (!(isNumber(lower) || isUnlimited(lower)) || !(isNumber(upper) || isUnlimited(upper)))
        return std::nullopt;
    Multiplicity multiplicity;
    multiplicity.isMany = isUnlimited(upper) || !(upper == "1" || upper == "0");
    multiplicity.isOptional = !multiplicity.isMany && lower == "0";
    return multiplicity;
}

}  // namespace modelgen
