// Any pattern and any text: they match as the steps below say, taken one by one.
//
// The input is "pattern NUL text".
#include "logging/CCgMsgIdFilter.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

bool matches(std::string const& pattern, std::string const& text)
{
    std::vector<std::string> tokens;
    std::string token;
    for (char const c : pattern + '*') {
        if (c != '*') {
            token += c;
        } else if (!token.empty()) {
            tokens.push_back(token);
            token.clear();
        }
    }
    std::size_t position = 0;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        std::string const& piece = tokens[i];
        bool const isLast = i + 1 == tokens.size();
        if (i == 0 && pattern.compare(0, piece.size(), piece) == 0) {
            bool const starts = text.compare(0, piece.size(), piece) == 0;
            if (starts && (!isLast || pattern.size() > piece.size()))
                position = piece.size();
            else if (text != pattern)
                return false;
            else
                return true;
            continue;
        }
        std::size_t const found = text.find(piece, position);
        if (found == std::string::npos)
            return false;
        position = found + piece.size();
        if (isLast && position != text.size())
            return false;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const input(reinterpret_cast<char const*>(data), size);
    std::size_t const end = input.find('\0');
    if (end == std::string_view::npos)
        return 0;
    std::string const pattern(input.substr(0, end));
    std::string const text(input.substr(end + 1));
    if (ccg_matchesMsgId(pattern, text) != matches(pattern, text))
        std::abort();
    return 0;
}
