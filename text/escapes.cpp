#include "text/escapes.h"

#include "text/reserve.h"

#include <array>
#include <cstring>
#include <string_view>

namespace {

struct Escape {
    char character;
    std::string_view form;
};

// Which escape belongs to a character; 0 stands for none.
template <std::size_t Count>
constexpr std::array<unsigned char, 256> indexByCharacter(Escape const (&escapes)[Count])
{
    std::array<unsigned char, 256> index{};
    for (std::size_t i = 0; i < Count; ++i)
        index[static_cast<unsigned char>(escapes[i].character)] = static_cast<unsigned char>(i + 1);
    return index;
}

constexpr Escape xmlEscapes[] = {
    {'&', "&amp;"}, {'"', "&quot;"}, {'\'', "&apos;"}, {'<', "&lt;"}, {'>', "&gt;"}};
constexpr Escape urlEscapes[] = {{'%', "%25"}, {':', "%3A"}, {'/', "%2F"}, {'+', "%2B"}, {'?', "%3F"},
                                 {'=', "%3D"}, {'&', "%26"}, {'"', "%22"}, {'#', "%23"}, {' ', "%20"}};
constexpr auto xmlIndex = indexByCharacter(xmlEscapes);
constexpr auto urlIndex = indexByCharacter(urlEscapes);

// The first position from `at` on whose character is escaped, or the text's length.
std::size_t findEscaped(std::string_view text, std::size_t at, std::array<unsigned char, 256> const& index)
{
    auto const needsNone = [&](std::size_t position) {
        return index[static_cast<unsigned char>(text[position])] == 0;
    };
    while (at + 4 <= text.size() && needsNone(at) && needsNone(at + 1) && needsNone(at + 2) &&
           needsNone(at + 3))
        at += 4;
    while (at < text.size() && needsNone(at))
        ++at;
    return at;
}

// One pass gives what replacing in order gives, since the mark of an escape ('&', '%') is itself
// escaped first.
template <std::size_t Count>
CString encoded(std::string_view text, Escape const (&escapes)[Count],
                std::array<unsigned char, 256> const& index)
{
    std::size_t next = findEscaped(text, 0, index);
    std::size_t length = text.size();
    for (std::size_t at = next; at < text.size(); at = findEscaped(text, at + 1, index))
        length += escapes[index[static_cast<unsigned char>(text[at])] - 1].form.size() - 1;

    CString result;
    zk::reserve(result, length);
    for (std::size_t done = 0;; next = findEscaped(text, done, index)) {
        result += text.substr(done, next - done);
        if (next == text.size())
            return result;
        result += escapes[index[static_cast<unsigned char>(text[next])] - 1].form;
        done = next + 1;
    }
}

// One pass gives what replacing in order gives, with the form of the mark itself replaced last: no
// decoded character can become part of another form before that.
template <std::size_t Count>
CString decoded(std::string_view text, Escape const (&escapes)[Count])
{
    char const mark = escapes[0].form[0];
    CString result;
    result.Preallocate(int(text.size()));
    for (std::size_t done = 0;;) {
        std::size_t const next = text.find(mark, done);
        result += text.substr(done, next - done);
        if (next == std::string_view::npos)
            return result;
        done = next + 1;
        char character = mark;
        for (Escape const& escape : escapes) {
            if (text.compare(next, escape.form.size(), escape.form) == 0) {
                character = escape.character;
                done = next + escape.form.size();
                break;
            }
        }
        result += character;
    }
}

std::string_view viewOf(char const* text)
{
    return text ? std::string_view(text) : std::string_view();
}

}  // namespace

CString omString2XMLEncodedValue(char const* text)
{
    return encoded(viewOf(text), xmlEscapes, xmlIndex);
}

CString omXMLEncodedValue2String(char const* text)
{
    return decoded(viewOf(text), xmlEscapes);
}

void omEncodeUrl(CString& text)
{
    if (findEscaped(text.view(), 0, urlIndex) != text.view().size())
        text = encoded(text.view(), urlEscapes, urlIndex);
}

void omDecodeUrl(CString& text)
{
    if (text.view().find('%') != std::string_view::npos)
        text = decoded(text.view(), urlEscapes);
}
