#include "tools/zkgencat/Comparison.h"

#include "logging/CCgPrintfDirective.h"

#include <optional>

namespace zkgencat {

namespace {

using namespace zk::logging;

// The kinds of the values that a text shows, by position from 1 on.
using Values = std::map<int, std::string>;

std::string kindOf(FormatPiece const& piece)
{
    if (piece.isInteger())
        return "an integer";
    if (piece.isNumber())
        return "a number";
    if (piece.isCharacter())
        return "a character";
    if (piece.isText())
        return "a text";
    return piece.conversion == 'p' ? "an address" : "nothing";
}

// Nothing for a text with a malformed directive, or one value of two kinds.
std::optional<Values> valuesOf(std::string const& text)
{
    Values values;
    int next = 0;
    auto const note = [&](int position, std::string const& kind) {
        return values.try_emplace(position > 0 ? position : ++next, kind).first->second == kind;
    };
    char const* format = text.c_str();
    FormatPiece piece;
    do {
        if (!takePiece(format, piece))
            return std::nullopt;
        if (piece.conversion == '\0' || piece.conversion == '%')
            continue;
        for (FormatSize const& size : {piece.width, piece.precision})
            if (size.source == FormatSize::Source::parameter && !note(size.value, "an integer"))
                return std::nullopt;
        if (!note(piece.position, kindOf(piece)))
            return std::nullopt;
    } while (piece.conversion != '\0');
    return values;
}

class Comparison {
public:
    std::vector<std::string> run(Messages const& reference, Messages const& other)
    {
        for (auto const& [id, text] : other) {
            id_ = id;
            auto const counterpart = reference.find(id);
            if (counterpart == reference.end())
                complain("has no counterpart");
            else
                compare(counterpart->second, text);
        }
        return std::move(mistakes_);
    }

private:
    void complain(std::string const& text)
    {
        mistakes_.push_back("set " + std::to_string(id_.first) + ", message " + std::to_string(id_.second) +
                            ": " + text);
    }

    void compare(std::string const& referenceText, std::string const& text)
    {
        auto const expected = valuesOf(referenceText);
        auto const shown = valuesOf(text);
        if (!expected || !shown) {
            complain(std::string(expected ? "the translation" : "the original") +
                     " has a directive that cannot be read");
            return;
        }
        for (auto const& [position, kind] : *expected)
            if (auto const found = shown->find(position); found == shown->end())
                complain("value " + std::to_string(position) + " is not shown");
            else if (found->second != kind)
                complain("value " + std::to_string(position) + " is " + found->second + " instead of " +
                         kind);
        for (auto const& [position, kind] : *shown)
            if (expected->count(position) == 0)
                complain("there is no value " + std::to_string(position));
    }

    MessageId id_;
    std::vector<std::string> mistakes_;
};

}  // namespace

std::vector<std::string> compare(Messages const& reference, Messages const& other)
{
    return Comparison().run(reference, other);
}

}  // namespace zkgencat
