// The two functions of paths.h that remove "." and ".." components. Their results are those of
// searching again from the start after each removal; one pass in place gives the same.
//
// A pass goes from dot to dot, since all that it removes begins or ends in one: what stands
// between two dots moves in one piece.
#include "files/paths.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace {

constexpr std::string_view parent = "..";

// The text of a path while it is being worked on: it only ever gets shorter.
class PathBuffer {
public:
    explicit PathBuffer(CString& path)
        : path_(path), length_(std::size_t(path.GetLength())), text_(path.GetBuffer())
    {
    }
    ~PathBuffer() { path_.ReleaseBufferSetLength(int(length_)); }
    PathBuffer(PathBuffer const&) = delete;
    PathBuffer& operator=(PathBuffer const&) = delete;

    char* begin() const { return text_; }
    char* end() const { return text_ + length_; }
    std::size_t size() const { return length_; }
    void endAt(char const* end) { length_ = std::size_t(end - text_); }

private:
    CString& path_;
    std::size_t length_;
    char* text_;
};

char const* findDot(char const* from, char const* end)
{
    void const* const dot = std::memchr(from, '.', std::size_t(end - from));
    return dot ? static_cast<char const*>(dot) : end;
}

char* move(char* out, char const* from, char const* end)
{
    auto const length = std::size_t(end - from);
    if (out != from)
        std::memmove(out, from, length);
    return out + length;
}

// The beginning of the last component of [begin, end): behind its last separator.
char* lastComponent(char* begin, char* end, char separator)
{
    while (end != begin && end[-1] != separator)
        --end;
    return end;
}

// Whether `out` stands behind `separator`, "..".
bool standsBehindParent(char const* begin, char const* out, char separator)
{
    return out - begin >= 3 && out[-1] == '.' && out[-2] == '.' && out[-3] == separator;
}

std::size_t leadingCount(char const* text, std::size_t length, char character)
{
    return std::size_t(std::find_if(text, text + length, [=](char c) { return c != character; }) - text);
}

// Whether `character` stands twice in a row in [begin, end). Eight pairs at a time: a byte of the
// combined word is 0 where both of a pair are the character.
bool standsTwice(char const* begin, char const* end, char character)
{
    constexpr std::uint64_t ones = 0x0101010101010101u;
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    std::uint64_t const pattern = ones * static_cast<unsigned char>(character);
    char const* at = begin;
    for (; end - at > 8; at += 8) {
        std::uint64_t first;
        std::uint64_t second;
        std::memcpy(&first, at, sizeof first);
        std::memcpy(&second, at + 1, sizeof second);
        std::uint64_t const differing = (first ^ pattern) | (second ^ pattern);
        if ((differing - ones) & ~differing & highBits)
            return true;
    }
    for (; end - at > 1; ++at) {
        if (at[0] == character && at[1] == character)
            return true;
    }
    return false;
}

// Makes one of each run of `character` in [begin, end); gives the new end.
char* collapseRuns(char* begin, char* end, char character)
{
    if (!standsTwice(begin, end, character))
        return end;
    return std::unique(begin, end,
                       [=](char left, char right) { return left == character && right == character; });
}

void replace(CString& path, char from, char to)
{
    if (path.view().find(from) != std::string_view::npos)
        path.Replace(from, to);
}

// Drops "./" from the start and "/." from the end, and makes "/" of "/./".
void dropCurrentComponents(PathBuffer& path, char separator)
{
    char const* in = path.begin();
    char const* end = path.end();
    while (end - in >= 2 && in[0] == '.' && in[1] == separator)
        in += 2;
    while (end - in >= 2 && end[-1] == '.' && end[-2] == separator)
        end -= 2;

    char* out = path.begin();
    while (in != end) {
        char const* const dot = findDot(in, end);
        out = move(out, in, dot);
        in = dot;
        if (in == end)
            break;
        bool const isComponent =
            out != path.begin() && out[-1] == separator && end - in >= 2 && in[1] == separator;
        if (isComponent) {
            in += 2;
        } else {
            *out++ = '.';
            ++in;
        }
    }
    path.endAt(out);
}

// Removes each "/.." together with the component before it and the one character behind it.
//
// A match that must stay moves `start` behind its beginning; matches before `start` are not looked at.
void dropParentComponents(PathBuffer& path, char separator)
{
    char* const begin = path.begin();
    char const* const end = path.end();
    std::ptrdiff_t start = 0;
    char* out = begin;
    for (char const* in = begin; in < end;) {
        char const* const dot = findDot(in, end);
        out = move(out, in, dot);
        in = dot;
        if (in == end)
            break;
        *out++ = '.';
        ++in;
        if (!standsBehindParent(begin, out, separator) || out - 3 - begin < start)
            continue;
        char* const match = out - 3;
        char* const component = lastComponent(begin, match, separator);
        if (match == begin) {
            start = 3;  // a rooted ".." stays
        } else if (std::string_view(component, std::size_t(match - component)) == parent) {
            start = match + 1 - begin;  // nothing to remove: the component before it climbs too
        } else {
            out = component;
            ++in;
        }
    }
    path.endAt(out);
}

// The work of omCutMidDDot. The path is [front_, out_), which holds no match, followed by [in_, end_).
//
// A removal may join the two so that a new match, or a "../" at the front, comes into being. The first
// piece grows by what the second loses, so that each is met as soon as it is complete.
class ParentCutter {
public:
    ParentCutter(PathBuffer& path, char separator)
        : path_(path), separator_(separator), front_(path.begin()), out_(path.begin()), in_(path.begin()),
          end_(path.end())
    {
    }

    void cut(char native)
    {
        std::size_t const rootsBefore = leadingCount(path_.begin(), path_.size(), native);
        countClimbs();
        while (in_ != end_) {
            char const* const dot = findDot(in_, end_);
            out_ = move(out_, in_, dot);
            in_ = dot;
            if (in_ == end_)
                break;
            *out_++ = '.';
            ++in_;
            if (!standsBehindParent(front_, out_, separator_))
                continue;
            char* const match = out_ - 3;
            if (match == front_)
                break;  // the path now begins with "/..": it stays, and so does all behind it
            char* const component = lastComponent(front_, match, separator_);
            out_ = component == front_ ? front_ : component - 1;
            if (begins({&separator_, 1}))
                drop(1);
            countClimbs();
        }
        out_ = move(out_, in_, end_);
        putTogether(rootsBefore, native);
    }

private:
    // Takes each "../" off the front; putTogether puts them back.
    void countClimbs()
    {
        char const climb[] = {'.', '.', separator_};
        while (begins({climb, sizeof climb})) {
            ++climbs_;
            drop(sizeof climb);
        }
    }

    bool begins(std::string_view prefix) const
    {
        std::size_t const inFront = std::min(std::size_t(out_ - front_), prefix.size());
        std::size_t const inRest = prefix.size() - inFront;
        return std::size_t(end_ - in_) >= inRest && prefix.compare(0, inFront, front_, inFront) == 0 &&
            prefix.compare(inFront, inRest, in_, inRest) == 0;
    }

    void drop(std::size_t count)
    {
        std::size_t const fromFront = std::min(count, std::size_t(out_ - front_));
        front_ += fromFront;
        in_ += count - fromFront;
    }

    // Leading separators, the climbs and what is left. Each of the first two was part of the
    // text before, so all of it finds room.
    void putTogether(std::size_t rootsBefore, char native)
    {
        auto const length = std::size_t(out_ - front_);
        std::size_t const rootsLeft = climbs_ > 0 ? 0 : leadingCount(front_, length, native);
        std::size_t const rootsLost = rootsBefore > rootsLeft ? rootsBefore - rootsLeft : 0;
        char* const begin = path_.begin();
        std::memmove(begin + rootsLost + 3 * climbs_, front_, length);
        char* out = std::fill_n(begin, rootsLost, native);
        for (std::size_t i = 0; i < climbs_; ++i) {
            *out++ = '.';
            *out++ = '.';
            *out++ = separator_;
        }
        path_.endAt(out + length);
    }

    PathBuffer& path_;
    char separator_;
    std::size_t climbs_ = 0;
    char* front_;
    char* out_;
    char const* in_;
    char const* end_;
};

}  // namespace

void omCutMidDDot(CString& path, char separator)
{
    if (path.view().substr(0, 8) == "https://" || path.view().substr(0, 7) == "http://")
        return;
    char const native = omPathSeparator();
    if (separator == '/' || separator == '\\')
        replace(path, separator == '/' ? '\\' : '/', separator);
    else
        separator = native;
    PathBuffer buffer(path);
    ParentCutter(buffer, separator).cut(native);
}

void omCleanPath(CString& path, char separator, bool keepCase, bool resolveDots, bool collapseSeparators)
{
    char const doubled = separator == '/' ? '/' : '\\';
    replace(path, separator == '/' ? '\\' : '/', separator);
    if (!keepCase)
        path.MakeLower();

    PathBuffer buffer(path);
    if (collapseSeparators)
        buffer.endAt(collapseRuns(buffer.begin(), buffer.end(), doubled));
    if (resolveDots) {
        dropCurrentComponents(buffer, separator);
        dropParentComponents(buffer, separator);
        // A pair at the start stays: the runs are made single from its second one on.
        bool const isDoubledAtStart =
            buffer.size() >= 2 && buffer.begin()[0] == doubled && buffer.begin()[1] == doubled;
        buffer.endAt(collapseRuns(buffer.begin() + isDoubledAtStart, buffer.end(), doubled));
    }
}
