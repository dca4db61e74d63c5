// tr on any bytes, against a plain walk through its steps, one after the other.
#include "text/SPString.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using Byte = unsigned char;

// The walk through a list of characters and ranges that both arguments take.
template <class OnCharacter, class OnRange>
void walk(std::string const& list, OnCharacter onCharacter, OnRange onRange)
{
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (i == 0 || list[i] != '-') {
            onCharacter(Byte(list[i]));
        } else {
            onRange(i, i + 1 < list.size() ? Byte(list[i + 1]) : 0);
            ++i;
        }
    }
}

int stepwise(std::string& text, std::string const& from, std::string const& to, std::string const& opts)
{
    bool const c = opts.find('c') != opts.npos, d = opts.find('d') != opts.npos,
               s = opts.find('s') != opts.npos;
    if (text.empty() || from.empty())
        return 0;
    int table[256] = {}, count = 0, last = 0;
    walk(
        from, [&](Byte ch) { table[last = ch] = ++count; },
        [&](std::size_t, int upper) {
            for (int ch = last + 1; ch <= upper; ++ch)
                table[ch] = ++count;
            last = 0;
        });
    std::string rhs;
    walk(
        to, [&](Byte ch) { rhs += char(ch); },
        [&](std::size_t i, int upper) {
            if (i - 1 < rhs.size())
                for (int ch = Byte(rhs[i - 1]) + 1; ch <= upper; ++ch)
                    rhs += char(ch);
        });
    while (!d && !to.empty() && int(rhs.size()) < count)
        rhs += rhs.back();
    std::string out;
    int result = 0;
    auto const put = [&](char ch) {
        if (!s || out.empty() || out.back() != ch)
            out += ch;
    };
    for (char const ch : text) {
        int const k = table[Byte(ch)];
        if (c ? k != 0 : k == 0) {
            out += ch;
            continue;
        }
        ++result;
        if (c) {
            if (!d)
                put(rhs.empty() ? ch : rhs.back());
        } else if (rhs.empty()) {
            if (!d)
                put(ch);
        } else if (std::size_t(k - 1) < rhs.size()) {
            put(rhs[std::size_t(k - 1)]);
        }
    }
    text = out;
    return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string parts[4];
    int part = 0;
    for (std::size_t i = 0; i < size && part < 4; ++i)
        if (data[i] == 0)
            ++part;
        else
            parts[part] += char(data[i]);
    if (parts[0].size() + parts[1].size() + parts[2].size() > 4096)
        return 0;

    SPString text(parts[3].c_str());
    int const count = text.tr(parts[0].c_str(), parts[1].c_str(), parts[2].c_str());
    std::string expected = parts[3];
    if (count != stepwise(expected, parts[0], parts[1], parts[2]) || expected != std::string(text) ||
        text.length() != expected.size())
        std::abort();
    return 0;
}
