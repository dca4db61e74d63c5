#include "platform/os/profileText.h"

#include "platform/os/wideText.h"

#include <algorithm>
#include <cstring>

namespace zk::os {
namespace {

// The old end-of-file mark of text files counts as a blank.
bool isBlank(char c) noexcept
{
    return c == ' ' || (c >= '\t' && c <= '\r') || c == '\x1A';
}

char lower(char c) noexcept
{
    return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
}

bool isSameName(std::string_view a, std::string_view b) noexcept
{
    return a.size() == b.size() &&
        std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return lower(x) == lower(y); });
}

std::string_view trimmedLeft(std::string_view text) noexcept
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

std::string_view trimmed(std::string_view text) noexcept
{
    text = trimmedLeft(text);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string_view upToNul(std::string_view text) noexcept
{
    return text.substr(0, text.find('\0'));
}

bool isLineEnd(char c) noexcept
{
    return c == '\n' || c == '\r';
}

// The place of the line end at or behind `from`; the text's size if there is none.
std::size_t lineEndOf(std::string_view text, std::size_t from) noexcept
{
    while (from < text.size() && !isLineEnd(text[from]))
        ++from;
    return from;
}

// The start of the line behind the line end at `end`.
std::size_t behindLineEnd(std::string_view text, std::size_t end) noexcept
{
    if (end == text.size())
        return end;
    return end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
}

std::size_t startOf(std::string_view text) noexcept
{
    return text.starts_with(utf8Mark) ? utf8Mark.size() : 0;
}

// A line inside a section, taken apart. The views are into the text.
struct Line {
    enum Kind { blank, comment, keyOnly, keyAndValue };

    Kind kind = blank;
    std::string_view content;  // without the blanks around it
    std::string_view name;
    std::string_view field;  // what stands behind "=", without the blanks around it
    std::string_view value() const noexcept { return trimmed(upToNul(field)); }
};

Line parseLine(std::string_view text) noexcept
{
    Line line;
    line.content = trimmed(text);
    if (line.content.empty())
        return line;
    if (line.content.front() == ';') {
        line.kind = Line::comment;
        return line;
    }
    std::size_t const equals = line.content.find('=');
    line.name = trimmed(upToNul(line.content.substr(0, equals)));
    line.kind = equals == line.content.npos ? Line::keyOnly : Line::keyAndValue;
    if (line.kind == Line::keyAndValue)
        line.field = trimmedLeft(line.content.substr(equals + 1));
    return line;
}

// A section in a text: its header line, if it has one, and the lines up to the next header.
struct Place {
    std::string_view name;
    std::size_t header;
    std::size_t body;
    std::size_t end;
};

// The name in a line that begins a section.
std::optional<std::string_view> headerName(std::string_view line) noexcept
{
    std::string_view const content = trimmedLeft(line);
    std::size_t const closing = content.rfind(']');
    if (!content.starts_with('[') || closing == content.npos)
        return std::nullopt;
    return trimmed(upToNul(content.substr(1, closing - 1)));
}

// The next header line at or behind `from`, the start of a line. Its `end` is not known yet.
// Brackets are looked for first: a text has few of them, and a search for a byte is fast.
std::optional<Place> nextHeader(std::string_view text, std::size_t const start) noexcept
{
    for (std::size_t at = text.find('[', start); at != text.npos; at = text.find('[', at)) {
        std::size_t line = at;
        while (line > start && isBlank(text[line - 1]) && !isLineEnd(text[line - 1]))
            --line;
        if (line > start && !isLineEnd(text[line - 1])) {
            ++at;
            continue;
        }
        std::size_t const end = lineEndOf(text, at);
        if (auto const name = headerName(text.substr(line, end - line)))
            return Place{*name, line, behindLineEnd(text, end), 0};
        at = end;
    }
    return std::nullopt;
}

// Goes through the sections of a text, the unnamed one first.
template <class Visit>
void forEachSection(std::string_view text, Visit visit)
{
    std::size_t const start = startOf(text);
    Place place{text.substr(start, 0), start, start, start};
    for (bool isLast = false; !isLast;) {
        auto const next = nextHeader(text, place.body);
        place.end = next ? next->header : text.size();
        isLast = !next;
        if (!visit(place))
            return;
        if (next)
            place = *next;
    }
}

std::optional<Place> findSection(std::string_view text, std::string_view name)
{
    std::optional<Place> found;
    forEachSection(text, [&](Place const& place) {
        if (isSameName(place.name, name))
            found = place;
        return !found;
    });
    return found;
}

// Goes through lines; `visit` gets each one's start and the start of the next.
template <class Visit>
void forEachLine(std::string_view text, std::size_t from, std::size_t to, Visit visit)
{
    while (from < to) {
        std::size_t const end = lineEndOf(text, from);
        std::size_t const next = behindLineEnd(text, end);
        if (!visit(parseLine(text.substr(from, end - from)), from, next))
            return;
        from = next;
    }
}

// Where the lines of a section end that are its own: without blank lines at the
// end, and without comments that stand, behind a blank line, above the next header.
struct OwnLines {
    std::size_t end;     // behind the last line with content
    std::size_t remove;  // the end of what goes with the section
};

OwnLines ownLines(std::string_view text, Place const& place)
{
    constexpr std::size_t none = std::string_view::npos;
    OwnLines own{place.body, place.end};
    std::size_t heading = none;  // the start of comments behind a blank line
    std::size_t headingEnd = none;
    bool isBehindBlank = false;
    forEachLine(text, place.body, place.end, [&](Line const& line, std::size_t from, std::size_t next) {
        if (line.kind == Line::comment && isBehindBlank) {
            heading = heading == none ? from : heading;
            headingEnd = next;
            return true;
        }
        if (line.kind != Line::blank)
            own.end = next;
        else if (heading != none)
            own.end = headingEnd;
        heading = none;
        isBehindBlank = line.kind == Line::blank;
        return true;
    });
    if (heading != none && place.end == text.size())
        own.end = headingEnd;
    else if (heading != none)
        own.remove = heading;
    return own;
}

// The line end that fits at a place: that of the line before, else the first one of the text.
std::string_view lineEndFor(std::string_view text, std::size_t place) noexcept
{
    std::string_view const before = text.substr(0, place);
    if (before.ends_with("\r\n"))
        return "\r\n";
    if (before.ends_with('\n') || before.ends_with('\r'))
        return before.substr(place - 1);
    std::size_t const end = lineEndOf(text, 0);
    return end == text.size() ? "\n" : text.substr(end, behindLineEnd(text, end) - end);
}

// Puts lines at the start of a line, or behind a last line that has no end.
void insertLines(std::string& text, std::size_t place, std::initializer_list<std::string_view> lines)
{
    std::string const end(lineEndFor(text, place));
    std::string added;
    if (place > startOf(text) && !isLineEnd(text[place - 1]))
        added += end;
    for (std::string_view const line : lines)
        added.append(line).append(end);
    text.insert(place, added);
}

bool beginsWithMark(std::string_view text) noexcept
{
    return text.starts_with(utf8Mark) || isWideText(text);
}

// Whether a line would be read as what it is meant to be.
bool canBeKey(std::string_view line, std::string_view key, std::string_view value) noexcept
{
    Line const parsed = parseLine(line);
    return lineEndOf(line, 0) == line.size() && !headerName(line) && parsed.kind == Line::keyAndValue &&
        parsed.name == key && parsed.value() == value && !beginsWithMark(key);
}

bool canBeHeader(std::string_view line, std::string_view section) noexcept
{
    return lineEndOf(line, 0) == line.size() && headerName(line) == section;
}

// Where a view into a text begins.
std::size_t placeOf(std::string_view text, std::string_view part) noexcept
{
    return std::size_t(part.data() - text.data());
}

// Changes a text that may be in UTF-16. False, with the text as it was, if the change doesn't fit into that.
template <class Change>
bool changeAsUtf8(std::string& text, Change change)
{
    if (!isWideText(text)) {
        change(text);
        return true;
    }
    std::string const before = utf8OfWideText(text);
    std::string after = before;
    change(after);
    if (after == before)
        return true;
    auto wide = wideTextOfUtf8(after, isBigEndian(text));
    if (wide)
        text = *std::move(wide);
    return wide.has_value();
}

void setValue(std::string& text, std::string_view section, std::string_view header, std::string_view key,
              std::string_view value)
{
    std::string const newLine = std::string(key).append("=").append(value);
    auto const place = findSection(text, section);
    if (!place) {
        insertLines(text, text.size(), {header, newLine});
        return;
    }
    std::optional<Line> found;
    forEachLine(text, place->body, place->end, [&](Line const& line, std::size_t, std::size_t) {
        if ((line.kind == Line::keyOnly || line.kind == Line::keyAndValue) && isSameName(line.name, key))
            found = line;
        return !found;
    });
    if (!found) {
        insertLines(text, ownLines(text, *place).end, {newLine});
    } else if (found->kind == Line::keyOnly) {
        std::size_t const end = placeOf(text, found->content) + found->content.size();
        text.insert(end, std::string("=").append(value));
    } else if (found->field != value) {
        std::size_t start = placeOf(text, found->field);
        while (found->field.empty() && start < text.size() && isBlank(text[start]) && !isLineEnd(text[start]))
            ++start;
        text.replace(start, found->field.size(), value);
    }
}

void removeKey(std::string& text, std::string_view section, std::string_view key)
{
    auto const place = findSection(text, section);
    if (!place)
        return;
    bool isThere = false;
    std::size_t start = 0;
    std::size_t end = 0;
    forEachLine(text, place->body, place->end, [&](Line const& line, std::size_t from, std::size_t next) {
        bool const isKey = line.kind == Line::keyOnly || line.kind == Line::keyAndValue;
        isThere = isKey && isSameName(line.name, key);
        start = from;
        end = next;
        return !isThere;
    });
    if (!isThere)
        return;
    // What stands behind the first line must not become a mark: an empty line stays before it.
    if (start == 0 && beginsWithMark(std::string_view(text).substr(end)))
        end = lineEndOf(text, 0);
    text.erase(start, end - start);
}

void removeSection(std::string& text, std::string_view section)
{
    auto const place = findSection(text, section);
    if (place)
        text.erase(place->header, ownLines(text, *place).remove - place->header);
}

}  // namespace

std::uint32_t NameIndex::hashOf(std::string_view name) noexcept
{
    std::uint64_t hash = 0xCBF29CE484222325;
    for (char const c : name)
        hash = (hash ^ static_cast<unsigned char>(lower(c))) * 0x100000001B3;
    return std::uint32_t(hash ^ (hash >> 32));
}

bool NameIndex::isSame(std::string_view a, std::string_view b) noexcept
{
    return isSameName(a, b);
}

ProfileText::ProfileText(std::string bytes)
    : bytes_(isWideText(bytes) ? utf8OfWideText(bytes) : std::move(bytes))
{
    std::string_view const text = bytes_;
    forEachSection(text, [&](Place const& place) {
        sections_.emplace_back(place.name, text.substr(place.body, place.end - place.body));
        return true;
    });
    index_.build(sections_);
}

ProfileText::Section const* ProfileText::sectionOf(std::string_view name) const
{
    std::size_t const number = index_.find(sections_, trimmed(name));
    if (number == NameIndex::none)
        return nullptr;
    Section const& section = sections_[number];
    std::call_once(section.isIndexed, [&] {
        section.keys.clear();  // of an attempt that found no memory
        forEachLine(section.body, 0, section.body.size(), [&](Line const& line, std::size_t, std::size_t) {
            if (line.kind == Line::keyOnly || line.kind == Line::keyAndValue)
                section.keys.push_back({line.name, line.value(), line.kind == Line::keyAndValue});
            return true;
        });
        section.index.build(section.keys);
    });
    return &section;
}

ProfileText::Key const* ProfileText::keyOf(std::string_view section, std::string_view key) const
{
    Section const* const place = sectionOf(section);
    std::size_t const number = place ? place->index.find(place->keys, trimmed(key)) : NameIndex::none;
    return number == NameIndex::none ? nullptr : &place->keys[number];
}

std::optional<std::string_view> ProfileText::value(std::string_view section, std::string_view key) const
{
    Key const* const found = keyOf(section, key);
    return found && found->hasValue ? std::optional(found->value) : std::nullopt;
}

std::size_t ProfileText::lineOf(std::string_view section, std::string_view key) const
{
    Key const* const found = keyOf(section, key);
    if (!found || !found->hasValue)
        return 0;
    std::string_view const text = bytes_;
    std::size_t const place = placeOf(text, found->name);
    std::size_t number = 1;
    for (std::size_t end = lineEndOf(text, 0); end < place; end = lineEndOf(text, behindLineEnd(text, end)))
        ++number;
    return number;
}

std::string ProfileText::sectionNames() const
{
    std::string names;
    for (Section const& section : sections_)
        if (!section.name.empty())
            names.append(section.name).push_back('\0');
    return names;
}

std::string ProfileText::keyNames(std::string_view section) const
{
    std::string names;
    if (Section const* const place = sectionOf(section))
        for (Key const& key : place->keys)
            if (key.hasValue)
                names.append(key.name).push_back('\0');
    return names;
}

std::string_view withoutQuotes(std::string_view value) noexcept
{
    bool const isQuoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

bool setProfileValue(std::string& text, std::string_view section, std::string_view key,
                     std::string_view value)
{
    section = trimmed(section);
    key = trimmed(key);
    value = trimmed(value);
    std::string const header = std::string("[").append(section).append("]");
    std::string const newLine = std::string(key).append("=").append(value);
    return canBeHeader(header, section) && canBeKey(newLine, key, value) &&
        changeAsUtf8(text, [&](std::string& narrow) { setValue(narrow, section, header, key, value); });
}

void removeProfileKey(std::string& text, std::string_view section, std::string_view key)
{
    changeAsUtf8(text, [&](std::string& narrow) { removeKey(narrow, trimmed(section), trimmed(key)); });
}

void removeProfileSection(std::string& text, std::string_view section)
{
    changeAsUtf8(text, [&](std::string& narrow) { removeSection(narrow, trimmed(section)); });
}

}  // namespace zk::os
