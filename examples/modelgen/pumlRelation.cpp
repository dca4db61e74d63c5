#include "examples/modelgen/pumlRelation.h"

#include "examples/modelgen/pumlLine.h"
#include "examples/modelgen/pumlType.h"

#include <optional>
#include <utility>

namespace modelgen {

namespace {

constexpr auto nowhere = std::string_view::npos;

bool isIn(char c, std::string_view set)
{
    return c != '\0' && set.find(c) != nowhere;
}

// The marks that an arrow may bear at an end, as they look with the end on the left.
bool obeyMark(std::string_view mark, RelationEnd& end)
{
    if (mark == "<|" || mark == "^")
        end.isGeneral = true;
    else if (mark == "*")
        end.isWhole = true;
    else if (mark == "o")
        end.isShared = true;
    else if (mark == "<" || mark == "<<")
        end.isArrowHead = true;
    else if (mark == "x")
        end.isExcluded = true;
    else
        return mark.empty();
    return true;
}

// "-up->", "-l-": a direction is one only between two pieces of the line.
std::size_t lengthOfDirection(std::string_view text)
{
    constexpr std::string_view directions[] = {"left", "right", "up", "down", "le", "ri",
                                               "do",   "l",     "r",  "u",    "d"};
    for (std::string_view const direction : directions)
        if (text.substr(0, direction.size()) == direction && text.size() > direction.size() &&
            isIn(text[direction.size()], "-.=~["))
            return direction.size();
    return 0;
}

class RelationReader {
public:
    explicit RelationReader(std::string_view text) : line_(text) { }

    std::variant<RelationFault, Relation> read()
    {
        if (!readName(relation_.left))
            return RelationFault::isNone;
        bool const isBroken = !readEndText(relation_.left);
        if (!startsArrow())
            return RelationFault::isNone;
        if (isBroken)
            return RelationFault::isBroken;
        bool const isKnown = readArrow();
        if (!hasBody_)
            return RelationFault::isNone;
        if (!isKnown)
            return RelationFault::isUnknownArrow;
        if ((!isQuotedName() && !readEndText(relation_.right)) || !readName(relation_.right))
            return RelationFault::isBroken;
        readTail();
        return std::move(relation_);
    }

private:
    bool readName(RelationEnd& end)
    {
        std::optional<CString> const name = line_.name();
        if (!name || name->IsEmpty())
            return false;
        end.name = *name;
        // "Order::lines" points at a member: the class is what counts. Packages are parted by dots there.
        if (line_.peek() == '<' && !isIn(line_.peek(1), "|<-.=~")) {
            PumlLine ahead = line_;
            std::optional<CString> const arguments = ahead.angled();
            std::optional<std::vector<Type>> types = arguments ? readTypes(arguments->view()) : std::nullopt;
            if (types) {
                end.arguments = std::move(*types);
                line_ = ahead;
            }
        }
        return true;
    }

    // Whether the quoted text that stands here is the name behind the arrow rather than the text in front of it.
    bool isQuotedName() const
    {
        PumlLine ahead = line_;
        return ahead.quotedText() && ahead.peek() != '"' && !ahead.name();
    }

    bool startsArrow() const
    {
        if (isIn(line_.peek(), "-.=~<*+^#}{0|@()"))
            return true;
        return isIn(line_.peek(), "ox") && isIn(line_.peek(1), "-.=~");
    }

    // The quoted text at an end: a multiplicity, a role name with its visibility, or both.
    bool readEndText(RelationEnd& end)
    {
        while (line_.peek() == '"') {
            PumlLine ahead = line_;
            std::optional<CString> const text = ahead.quotedText();
            if (!text)
                return false;
            line_ = ahead;
            takeEndWords(text->view(), end);
        }
        return true;
    }

    static void takeEndWords(std::string_view text, RelationEnd& end)
    {
        CString spaced = textOf(text);
        spaced.Replace("\\n", " ");  // drawn on two lines
        text = trimmed(spaced.view());
        if (std::optional<Multiplicity> const whole = readMultiplicity(text)) {
            end.isMany = whole->isMany;
            return;
        }
        while (!text.empty()) {
            std::size_t const stop = text[0] == '{' ? text.find('}') : text.find_first_of(" \t");
            std::string_view const word = text.substr(0, stop);
            text = stop == nowhere ? std::string_view() : trimmed(text.substr(stop + 1));
            if (word[0] == '{')
                continue;  // a constraint such as {ordered}
            if (std::optional<Multiplicity> const multiplicity = readMultiplicity(word))
                end.isMany = multiplicity->isMany;
            else if (end.role.IsEmpty())
                takeRole(word, end);
        }
    }

    static void takeRole(std::string_view word, RelationEnd& end)
    {
        switch (word[0]) {
        case '+': end.visibility = Visibility::isPublic; break;
        case '-': end.visibility = Visibility::isPrivate; break;
        case '#': end.visibility = Visibility::isProtected; break;
        case '~': end.visibility = Visibility::isPackage; break;
        default: end.role = textOf(word); return;
        }
        end.role = textOf(word.substr(1));
    }

    // Takes the whole arrow. False if it is of no kind that is known here.
    bool readArrow()
    {
        std::string_view const text = line_.rest();
        std::size_t at = 0;
        while (at < text.size() && isIn(text[at], "<|*+^#x}{0o@()"))
            ++at;
        std::string_view const left = text.substr(0, at);

        bool isKnown = true;
        while (at < text.size()) {
            if (isIn(text[at], "-.=~")) {
                hasBody_ = true;
                relation_.isDotted |= text[at] == '.';
                isKnown &= text[at] == '-' || text[at] == '.';
                ++at;
            } else if (text[at] == '[' && hasBody_) {
                std::size_t const end = text.find(']', at);
                if (end == nowhere)
                    return false;
                std::string_view const style = text.substr(at, end - at);
                relation_.isHidden |= style.find("hidden") != nowhere;
                relation_.isDotted |= style.find("dashed") != nowhere || style.find("dotted") != nowhere;
                at = end + 1;
            } else if (std::size_t const length = hasBody_ ? lengthOfDirection(text.substr(at)) : 0) {
                at += length;
            } else {
                break;
            }
        }
        std::size_t const rightStart = at;
        while (at < text.size() && isIn(text[at], ">|*+^#}{0@()"))
            ++at;
        if (at < text.size() && isIn(text[at], "ox") &&
            (at + 1 == text.size() || isIn(text[at + 1], " \t\"<>")))
            ++at;
        CString right = textOf(text.substr(rightStart, at - rightStart));
        line_.skip(at);

        right.MakeReverse();  // "|>" and "<|" are the same mark
        right.Replace('>', '<');
        return obeyMark(left, relation_.left) & obeyMark(right.view(), relation_.right) & isKnown;
    }

    void readTail()
    {
        while (!line_.atEnd() && line_.peek() != ':') {
            std::size_t const next = line_.rest().find_first_of(" \t:");
            line_.skip(next == 0 ? 1 : next);  // colours, stereotypes, links
        }
        if (line_.take(":"))
            relation_.label = textOf(line_.rest());
    }

    PumlLine line_;
    Relation relation_;
    bool hasBody_ = false;
};

}  // namespace

std::variant<RelationFault, Relation> readRelation(std::string_view text)
{
    return RelationReader(text).read();
}

}  // namespace modelgen
