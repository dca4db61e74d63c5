// split and s on any bytes: no field is lost, and no replacement changes the rest.
#include "text/SPStringList.h"
#include "text/regexpEngine.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size < 2 || size > 2048)
        return 0;
    int const limit = int(data[0] % 8) - 1;
    auto const bytes = reinterpret_cast<char const*>(data) + 1;
    std::string const pattern(bytes, strnlen(bytes, size - 1));
    if (pattern.size() + 1 >= size - 1)
        return 0;
    std::string const text = std::string(bytes + pattern.size() + 1, size - 2 - pattern.size()).c_str();

    // Each separator kept as a field: then the fields are the text.
    RegexpFault fault;
    std::string const grouped = "(" + pattern + ")";
    regexp* const compiled =
        pattern.find_first_of("()") != pattern.npos ? nullptr : regcomp(grouped.c_str(), fault);
    if (!compiled)
        return 0;
    bool const outOfSteps = regexec(compiled, text.c_str(), 10000) == RegexpOutcome::outOfSteps;
    std::free(compiled);
    if (outOfSteps)
        return 0;

    SPStringList fields;
    int const count = fields.split(text.c_str(), grouped.c_str(), limit);
    std::string const joined(fields.join(""));
    if (count != fields.count() || text.compare(0, joined.size(), joined) != 0)
        std::abort();
    if (limit >= 0 && joined != text)
        std::abort();

    // Each match replaced by itself changes nothing.
    SPString same(text.c_str());
    int const matches = same.s(grouped.c_str(), "$&", data[0] & 64 ? "g" : "");
    if (text != std::string(same) || (matches > 0) != (SPString(text.c_str()).m(grouped.c_str()) > 0))
        std::abort();

    // The other ways to split.
    SPStringList characters, words;
    if (characters.split(text.c_str(), "") != int(text.size()))
        std::abort();
    words.split(text.c_str(), "' '");
    for (int i = 0; i < words.count(); ++i)
        if (words[i].length() == 0 || std::strpbrk(words[i], " \t\n"))
            std::abort();
    return 0;
}
