#include "examples/modelgen/pumlRelation.h"

#include "examples/modelgen/pumlLine.h"
#include "examples/modelgen/pumlType.h"

#include <cstring>
#include <optional>
#include <utility>

namespace modelgen {

namespace {

// The marks that an arrow may bear at an end, as they look with the end on the left.
bool obeyMark(CString const& mark, RelationEnd& end)
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
        return mark.IsEmpty();
    return true;
}

// "o-[#red,dashed]up->>": the marks of both ends, and between them the line, with styles, and with directions between
// two of its pieces.
Regexp arrow("^([<|*+^#x}{0o@()]*)"
             "([-.=~]((left|right|up|down|le|ri|do|l|r|u|d)?([-.=~]|\\[[^]]*]))*)"
             "([>|*+^#}{0@()]*[ox]?)");
constexpr int leftMarks = 1, drawnLine = 2, rightMarks = 6;  // groups

CString arrowPart(char const* text, int group)
{
    Range const range = arrow.getgroup(group);
    return CString(text + range.start(), range.length());
}

class RelationReader {
public:
    explicit RelationReader(char const* text) : line_(text) { }

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
        if (line_.peek() == '<' && !isOneOf(line_.peek(1), "|<-.=~")) {
            PumlLine ahead = line_;
            std::optional<CString> const arguments = ahead.angled();
            std::optional<std::vector<Type>> types = arguments ? readTypes(*arguments) : std::nullopt;
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
        return isOneOf(line_.peek(), "-.=~<*+^#}{0|@()") ||
            (isOneOf(line_.peek(), "ox") && isOneOf(line_.peek(1), "-.=~"));
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
            takeEndWords(*text, end);
        }
        return true;
    }

    static void takeEndWords(CString text, RelationEnd& end)
    {
        text.Replace("\\n", " ");  // drawn on two lines
        if (std::optional<Multiplicity> const whole = readMultiplicity(text)) {
            end.isMany = whole->isMany;
            return;
        }
        SPString unconstrained(text);
        if (unconstrained.index("{") >= 0)
            unconstrained.s("{[^}]*}?", " ", "g");  // such as {ordered}
        SPStringList const words = unconstrained.split("' '");
        for (int i = 0; i < words.count(); ++i) {
            if (std::optional<Multiplicity> const multiplicity = readMultiplicity(words[i]))
                end.isMany = multiplicity->isMany;
            else if (end.role.IsEmpty())
                takeRole(words[i], end);
        }
    }

    static void takeRole(SPString const& word, RelationEnd& end)
    {
        switch (word[0]) {
        case '+': end.visibility = Visibility::isPublic; break;
        case '-': end.visibility = Visibility::isPrivate; break;
        case '#': end.visibility = Visibility::isProtected; break;
        case '~': end.visibility = Visibility::isPackage; break;
        default: end.role = word; return;
        }
        end.role = &word[1];
    }

    // Takes the whole arrow. False if it is of no kind that is known here.
    bool readArrow()
    {
        char const* const text = line_.rest();
        hasBody_ = line_.takeMatch(arrow) > 0;
        if (!hasBody_ || line_.peek() == '[')  // a style that has no end
            return false;
        CString const left = arrowPart(text, leftMarks);
        CString right = arrowPart(text, rightMarks);
        char const behind = text[arrow.getgroup(rightMarks).end() + 1];
        bool const isLetterOfName = !right.IsEmpty() && isOneOf(right[right.GetLength() - 1], "ox") &&
            behind != '\0' && !isOneOf(behind, " \t\"<>");
        if (isLetterOfName) {
            right.Truncate(right.GetLength() - 1);
            line_ = PumlLine(text + arrow.getgroup(rightMarks).end());
        }

        SPString drawn(arrowPart(text, drawnLine));
        if (drawn.index("[") >= 0)
            takeStyles(drawn);
        relation_.isDotted |= drawn.index(".") >= 0;
        bool const isKnown = drawn.tr("=~", "") == 0;

        right.MakeReverse();  // "|>" and "<|" are the same mark
        right.Replace('>', '<');
        return obeyMark(left, relation_.left) & obeyMark(right, relation_.right) & isKnown;
    }

    // "-[hidden]-", "-[#red,dashed]-"
    void takeStyles(SPString& drawn)
    {
        relation_.isHidden = drawn.m("\\[[^]]*hidden");
        relation_.isDotted = drawn.m("\\[[^]]*(dashed|dotted)");
        drawn.s("\\[[^]]*]", "", "g");
    }

    void readTail()
    {
        if (char const* const colon = std::strchr(line_.rest(), ':'))  // behind colours, stereotypes, links
            relation_.label = CString(colon + 1).Trim();
    }

    PumlLine line_;
    Relation relation_;
    bool hasBody_ = false;
};

}  // namespace

std::variant<RelationFault, Relation> readRelation(char const* text)
{
    return RelationReader(text).read();
}

}  // namespace modelgen
