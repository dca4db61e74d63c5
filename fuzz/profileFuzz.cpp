// Any bytes as a profile: they are read, a key is set, and of all other bytes none changes.
//
// The input is "section NUL key NUL value NUL profile".
#include "platform/os/profileText.h"
#include "platform/os/wideText.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

using namespace zk::os;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

std::string takeText(std::string_view& input)
{
    std::size_t const end = input.find('\0');
    std::string text(input.substr(0, end));
    input.remove_prefix(end == input.npos ? input.size() : end + 1);
    return text;
}

// Whether `after` is `before` but for one stretch that grew, shrank or was replaced, and where it
// was not at the end of `before`, whole lines or a value stay around it.
void requireOneChange(std::string_view before, std::string_view after, std::size_t most)
{
    std::size_t head = 0;
    while (head < before.size() && head < after.size() && before[head] == after[head])
        ++head;
    before.remove_prefix(head);
    after.remove_prefix(head);
    while (!before.empty() && !after.empty() && before.back() == after.back()) {
        before.remove_suffix(1);
        after.remove_suffix(1);
    }
    require(after.size() <= most);
    require(before.find_first_of("\r\n") == before.npos);
}

// A text in UTF-16 as UTF-8, in which changes can be seen; that loses nothing.
std::string narrow(std::string const& text)
{
    if (!isWideText(text))
        return text;
    std::string const utf8 = utf8OfWideText(text);
    require(wideTextOfUtf8(utf8, isBigEndian(text)) == (text.size() % 2 == 0 ? text : text + '\0'));
    return utf8;
}

// Blanks and a part of quotes as the value is read.
std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks(" \t\n\v\f\r\x1A");
    std::size_t const first = text.find_first_not_of(blanks);
    if (first == text.npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

std::string lower(std::string_view text)
{
    std::string result(text);
    for (char& c : result)
        c = c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
    return result;
}

// What a profile gives for all keys but one, or for all sections but one.
std::string restOf(std::string const& text, std::string const& section, std::string const* key)
{
    ProfileText const profile(text);
    std::string rest;
    std::string const sections = '\0' + profile.sectionNames();  // the unnamed one is not listed
    for (std::string_view names = sections; !names.empty();) {
        std::string const name = takeText(names);
        bool const isTheSection = lower(name) == section;
        if (isTheSection && !key)
            continue;
        rest += '[' + name + ']';
        std::string const keys = profile.keyNames(name);
        for (std::string_view left = keys; !left.empty();) {
            std::string const one = takeText(left);
            if (!isTheSection || lower(one) != *key)
                rest.append(one).append("=").append(profile.value(name, one).value_or("")).append("\n");
        }
    }
    return rest;
}

// Whether `after` is `before` without one stretch, or the same.
bool isCut(std::string_view before, std::string_view after)
{
    std::size_t head = 0;
    while (head < after.size() && head < before.size() && before[head] == after[head])
        ++head;
    return after.size() <= before.size() && before.ends_with(after.substr(head));
}

// The name as it is looked for.
std::string sought(std::string const& name)
{
    return lower(trimmed(name));
}

// What is removed is one stretch; all other keys give what they gave.
void requireThatRemovalsTakeNothingElse(std::string const& before, std::string const& section,
                                        std::string const& key)
{
    std::string const theSection = sought(section);
    std::string const theKey = sought(key);
    std::string text = before;
    removeProfileKey(text, section, key);
    require(isWideText(text) == isWideText(before));
    require(isCut(narrow(before), narrow(text)));
    require(restOf(text, theSection, &theKey) == restOf(before, theSection, &theKey));

    text = before;
    removeProfileSection(text, section);
    require(isWideText(text) == isWideText(before));
    require(isCut(narrow(before), narrow(text)));
    require(restOf(text, theSection, nullptr) == restOf(before, theSection, nullptr));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view input(reinterpret_cast<char const*>(data), size);
    std::string const section = takeText(input);
    std::string const key = takeText(input);
    std::string const value = takeText(input);
    std::string const before(input);

    ProfileText const profile(before);
    profile.sectionNames();
    profile.keyNames(section);
    require(profile.value(section, key).has_value() == (profile.lineOf(section, key) != 0));

    std::string text = before;
    if (!setProfileValue(text, section, key, value)) {
        require(text == before);
        return 0;
    }
    // A header, the line and up to three line ends.
    require(isWideText(text) == isWideText(before));
    requireOneChange(narrow(before), narrow(text), section.size() + key.size() + value.size() + 10);
    ProfileText const changed(text);
    auto const read = changed.value(section, key);
    require(read.has_value());
    require(*read == trimmed(value));

    std::string again = text;
    require(setProfileValue(again, section, key, value) && again == text);
    requireThatRemovalsTakeNothingElse(text, section, key);
    requireThatRemovalsTakeNothingElse(before, section, key);
    return 0;
}
