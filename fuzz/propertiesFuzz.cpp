// Any bytes as a properties file: they are read as the table of states below says, which tells each step apart.
#include "logging/CCgReadProps.h"
#include "logging/util/CxPrintUtil.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

enum Step { none, toKey, toValue, commit, fail, digit };

struct Row {
    int state;
    std::string_view bytes;  // empty: any other
    Step step;
    int next;
};

constexpr std::string_view blank("\t\v\f ");
constexpr std::string_view lineEnd("\n\r");
constexpr std::string_view hexDigits("0123456789abcdefABCDEF");

// Of a state the first row that has the byte counts.
constexpr Row rows[] = {
    {1, blank, none, 2},
    {1, "!#", none, 3},
    {1, lineEnd, none, 1},
    {1, {}, toKey, 4},
    {2, blank, none, 2},
    {2, "!#", none, 3},
    {2, lineEnd, none, 1},
    {2, ":=", fail, 0},
    {2, {}, toKey, 4},
    {3, lineEnd, none, 1},
    {3, {}, none, 3},
    {4, "\\", none, 5},
    {4, blank, none, 6},
    {4, ":=", none, 7},
    {4, lineEnd, fail, 0},
    {4, {}, toKey, 4},
    {5, "\\ \t\v\f=:", toKey, 4},
    {5, {}, fail, 0},
    {6, blank, none, 6},
    {6, ":=", none, 7},
    {6, "\\", none, 9},
    {6, lineEnd, fail, 0},
    {6, {}, toValue, 8},
    {7, blank, none, 7},
    {7, lineEnd, commit, 1},
    {7, "\\", none, 9},
    {7, {}, toValue, 8},
    {8, "\\", none, 9},
    {8, lineEnd, commit, 1},
    {8, {}, toValue, 8},
    {9, "\t\v\f \"'\\", toValue, 8},
    {9, lineEnd, none, 10},
    {9, "Uu", none, 11},
    {9, {}, fail, 0},
    {10, "\\", none, 9},
    {10, blank, none, 10},
    {10, lineEnd, commit, 1},
    {10, {}, toValue, 8},
    {11, hexDigits, digit, 12},
    {11, {}, fail, 0},
    {12, hexDigits, digit, 13},
    {12, {}, fail, 0},
    {13, hexDigits, digit, 14},
    {13, {}, fail, 0},
    {14, hexDigits, digit, 8},
    {14, {}, fail, 0},
};

Row const& rowOf(int state, char byte)
{
    Row const* row = rows;
    while (row->state != state || (!row->bytes.empty() && row->bytes.find(byte) == std::string_view::npos))
        ++row;
    return *row;
}

class Reference {
public:
    bool read(std::string_view bytes, CCgStringToStringMap& map)
    {
        char previous = '\0';
        for (char const byte : bytes) {
            bool const isSecondEnd = isLineEnd(previous) && isLineEnd(byte);
            previous = byte;
            if (!isSecondEnd && !take(byte, map))
                return false;
        }
        if (!key_.empty())
            set(map);
        return true;
    }

private:
    static bool isLineEnd(char byte) { return lineEnd.find(byte) != std::string_view::npos; }

    bool take(char byte, CCgStringToStringMap& map)
    {
        Row const& row = rowOf(state_, byte);
        switch (row.step) {
        case none: break;
        case toKey: key_ += byte; break;
        case toValue: value_ += byte; break;
        case commit: set(map); break;
        case fail: return false;
        case digit: takeDigit(byte); break;
        }
        state_ = row.next;
        if (state_ == 1) {
            key_.clear();
            value_.clear();
        }
        return true;
    }

    void takeDigit(char byte)
    {
        std::size_t const place = hexDigits.find(byte);
        std::uint64_t const value = place < 10 ? place : (place - 10) % 6;
        codePoint_ += value << (4 * (14 - state_));
        if (codePoint_ > 0x7FFFFFFF)
            codePoint_ = 0x7FFFFFFF;
        if (state_ != 14)
            return;
        CxStringBuff character;
        CxAppendUtf8(character, static_cast<std::uint32_t>(codePoint_));
        value_ += character.view();
    }

    // A NUL ends a text.
    void set(CCgStringToStringMap& map) const { map.set(key_.c_str(), value_.c_str()); }

    int state_ = 1;
    std::string key_, value_;
    std::uint64_t codePoint_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const bytes(reinterpret_cast<char const*>(data), size);
    CCgStringToStringMap ours;
    CCgStringToStringMap expected;

    bool const isRead = zk::logging::readProperties(bytes, &ours);

    require(isRead == Reference().read(bytes, expected));
    require(ours.size() == expected.size());
    for (std::size_t i = 0; i < ours.size(); ++i)
        require(ours.at(i) == expected.at(i));
    return 0;
}
