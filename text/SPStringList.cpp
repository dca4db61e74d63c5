#include "text/SPStringList.h"

#include "text/Regexp.h"
#include "text/copyShort.h"
#include "text/endSearch.h"
#include "text/options.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <string>

namespace {

constexpr char const* wordsPattern = "' '";
constexpr char const* blanks = " \t\n";

// The length of a text to which others are added, and the size to which its buffer would grow.
struct JoinedSize {
    JoinedSize(std::size_t startSize, std::size_t growth) : allocated(startSize), step(growth) { }

    void add(std::size_t more)
    {
        length += more;
        if (length >= allocated)
            allocated = length + step;
    }

    // What all `count` parts take if they are like the first `seen`, and a quarter more if they are not.
    std::size_t roomFor(int seen, int count) const
    {
        if (seen == count)
            return allocated;
        std::size_t const rest =
            length / static_cast<std::size_t>(seen) * static_cast<std::size_t>(count - seen);
        return allocated + rest + (length + rest) / 4;
    }

    std::size_t length = 0;
    std::size_t allocated;
    std::size_t step;
};

// How many bytes are copied at once, also where a text has less: cheaper than to look how many.
constexpr std::size_t unit = 16;

// A separator in front of readable bytes.
struct Separator {
    explicit Separator(char const* separator) : length(std::strlen(separator)), text(separator)
    {
        if (length <= unit)
            text = static_cast<char const*>(std::memcpy(padded, separator, length));
    }
    Separator(Separator const&) = delete;
    Separator& operator=(Separator const&) = delete;

    std::size_t length;
    char const* text;
    char padded[unit] = {};
};

// Copies `length` bytes of `text`, where `readable` ones may be read, to `out`, where those up to `end`
// may be written.
inline char* put(char* out, char const* end, char const* text, std::size_t length, std::size_t readable)
{
    if (length > unit || readable < unit || static_cast<std::size_t>(end - out) < unit)
        return zk::copyShort(out, text, length);
    std::memcpy(out, text, unit);
    return out + length;
}

}  // namespace

SPStringList::SPStringList(int size) : SPList<SPString>(size)
{
}

SPStringList::SPStringList(char const* pattern, char const* target, char const* opts) : SPStringList(20)
{
    m(pattern, target, opts);
    shift();  // which passes a slot where there is nothing
}

SPStringList::SPStringList(SPStringList const& other)
    : SPStringList(static_cast<SPList<SPString> const&>(other))
{
}

SPStringList::SPStringList(SPList<SPString> const& other) : SPStringList(20)
{
    SPList<SPString>::push(other);
}

SPStringList::SPStringList(SPStringList&& other) noexcept = default;

SPStringList& SPStringList::operator=(SPList<SPString> const& other)
{
    if (this != &other) {
        reset();
        SPList<SPString>::push(other);
    }
    return *this;
}

SPStringList& SPStringList::operator=(SPStringList const& other)
{
    return *this = static_cast<SPList<SPString> const&>(other);
}

SPStringList& SPStringList::operator=(SPStringList&& other) noexcept = default;

SPStringList::~SPStringList() = default;

int SPStringList::split(char const* text, char const* pattern, int limit)
{
    std::string const copy(text ? text : "");  // `text` may be an element of this list
    int const before = count();
    try {
        return splitText(copy, pattern, limit);
    } catch (...) {
        cnt_ = before;
        throw;
    }
}

int SPStringList::splitText(std::string_view text, char const* pattern, int limit)
{
    if (!pattern || *pattern == '\0')
        splitIntoCharacters(text);
    else if (std::strcmp(pattern, wordsPattern) == 0)
        splitIntoWords(text);
    else
        splitByExpression(text, pattern, limit);
    if (limit < 0)
        dropEmptyEnd();
    return count();
}

void SPStringList::splitIntoCharacters(std::string_view text)
{
    makeRoomAtEnd(static_cast<std::int64_t>(text.size()));
    for (char const& c : text)
        putText(std::string_view(&c, 1));
}

void SPStringList::splitIntoWords(std::string_view text)
{
    for (;;) {
        std::size_t const start = text.find_first_not_of(blanks);
        if (start == text.npos)
            break;
        std::size_t const end = std::min(text.find_first_of(blanks, start), text.size());
        pushText(text.substr(start, end - start));
        text.remove_prefix(end);
    }
}

void SPStringList::splitByExpression(std::string_view text, char const* pattern, int limit)
{
    zk::EndSearch search(pattern, false, text);
    if (limit < 0 && search.isOneCharacter() && !text.empty()) {
        splitAtCharacter(text, search.character());
        return;
    }
    std::string_view rest = text;
    for (int field = 1; search.next(); ++field) {
        if (limit >= 0 && field >= limit)
            break;
        if (search.rest().size() == rest.size() && limit < 0)
            break;  // an empty match, which would come again for ever
        pushText(search.before());
        int const groups = search.groups();
        for (int group = 1; group < groups; ++group)
            pushText(search.group(group));
        rest = search.rest();
    }
    if (!rest.empty())
        pushText(rest);
}

// All fields are known to come, so that the list need not grow step by step.
void SPStringList::splitAtCharacter(std::string_view text, char separator)
{
    bool const hasRest = text.back() != separator;
    makeRoomAtEnd(std::count(text.begin(), text.end(), separator) + hasRest);
    char const* const end = text.data() + text.size();
    char const* start = text.data();
    while (auto const found = static_cast<char const*>(std::memchr(start, separator, end - start))) {
        putText({start, static_cast<std::size_t>(found - start)});
        start = found + 1;
    }
    if (hasRest)
        putText({start, static_cast<std::size_t>(end - start)});
}

void SPStringList::dropEmptyEnd()
{
    int last = count();
    while (last > 0 && (*this)[last - 1].length() == 0)
        --last;
    splice(last);
}

SPString SPStringList::join(char const* separator) const
{
    constexpr int sample = 1024;  // elements from which the room for all is estimated
    constexpr int ahead = 32;
    SPString const* const elements = a_ + first_;
    Separator const between(separator ? separator : "");
    SPString joined;
    VarString& text = joined.text_;

    JoinedSize size(text.allocated_, text.step_);
    auto const count = [&](int i) {
        size.add(elements[i].textLength());
        if (i + 1 < cnt_)
            size.add(between.length);
    };
    for (int i = 0; i < std::min(cnt_, sample); ++i)
        count(i);
    if (size.length == 0 && cnt_ <= sample)
        return joined;
    std::size_t room = size.roomFor(std::min(cnt_, sample), cnt_);
    text.enlarge(room, 0);

    size = JoinedSize(VarString::defaultSize, text.step_);
    char* out = text.text_;
    char const* end = out + room;
    for (int i = 0; i < cnt_; ++i) {
        // Texts lie where memory was free: fetch a later one while this one is copied.
        if (i + ahead < cnt_)
            __builtin_prefetch(elements[i + ahead].text_.text_);
        std::size_t const done = size.length;
        count(i);
        if (size.allocated > room) {
            room = size.roomFor(i + 1, cnt_);
            text.enlarge(room, done);
            out = text.text_ + done;
            end = text.text_ + room;
        }
        VarString const& element = elements[i].text_;
        out = put(out, end, element.text_, elements[i].textLength(), element.allocated_);
        if (i + 1 < cnt_)
            out = put(out, end, between.text, between.length, sizeof between.padded);
    }
    *out = '\0';
    text.length_ = size.length;
    text.allocated_ = size.allocated;
    return joined;
}

int SPStringList::m(char const* pattern, char const* target, char const* opts)
{
    Regexp expression(pattern, zk::hasOption(opts, 'i'));
    if (!expression.match(target ? target : ""))
        return 0;
    // `target` may be an element of this list; what matched holds all groups.
    Range const whole = expression.getgroup(0);
    std::string const matched(target ? target + whole.start() : "", static_cast<std::size_t>(whole.length()));
    return pushGroups(expression, matched.data(), whole.start());
}

SPStringList SPStringList::grep(char const* pattern, char const* opts) const
{
    Regexp expression(pattern, zk::hasOption(opts, 'i'));
    SPStringList found;
    for (int i = 0; i < count(); ++i)
        if (expression.match((*this)[i]))
            found.push((*this)[i]);
    return found;
}

// Appends `text`, which is no part of this list.
void SPStringList::pushText(std::string_view text)
{
    if (first_ + cnt_ >= allocated_)
        makeRoomAtEnd();
    putText(text);
}

// The same where there is room.
void SPStringList::putText(std::string_view text)
{
    VarString& slot = a_[first_ + cnt_].text_;
    if (slot.isUnused())
        slot.begin(text.data(), text.size());
    else
        slot.take(text.data(), text.size());
    ++cnt_;
}

// Appends the groups of the last match, all or none. `text` is the subject from position `start` on.
int SPStringList::pushGroups(Regexp const& expression, char const* text, int start)
{
    int const before = count();
    int const groups = expression.groups();
    try {
        for (int group = 0; group < groups; ++group) {
            Range const range = expression.getgroup(group);
            pushText({text + (range.start() - start), static_cast<std::size_t>(range.length())});
        }
    } catch (...) {
        cnt_ = before;
        throw;
    }
    return groups;
}

std::ostream& operator<<(std::ostream& stream, SPStringList const& list)
{
    for (int i = 0; i < list.count(); ++i)
        stream << list[i] << std::endl;
    return stream;
}

std::istream& operator>>(std::istream& stream, SPStringList& list)
{
    list.reset();
    for (SPString line; stream >> line;)
        list.push(line);
    return stream;
}
