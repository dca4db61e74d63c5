#include "Foundtn/util/IAppProfileInterface.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string_view>

namespace {

constexpr char trueText[] = "TRUE";
constexpr char falseText[] = "FALSE";

IAppProfileInterface* instance = nullptr;

constexpr bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// What a number stands for that no float can hold: infinity, or 0 for a very small one.
float outOfRange(std::string_view number)
{
    std::size_t const letter = number.find_first_of("eE");
    std::string_view const digits = number.substr(0, letter);
    // The place of the first digit that counts, as a power of ten. No text is so long that it overflows.
    std::size_t const point = std::min(digits.find('.'), digits.size());
    std::size_t const first = digits.find_first_of("123456789");
    if (first == digits.npos)
        return 0;
    std::int64_t const power = first < point ? static_cast<std::int64_t>(point - first - 1)
                                             : -static_cast<std::int64_t>(first - point);
    std::int64_t exponent = 0;
    if (letter != number.npos) {
        std::string_view text = number.substr(letter + 1);
        bool const isNegative = text.starts_with('-');
        text.remove_prefix(isNegative || text.starts_with('+') ? 1 : 0);
        constexpr std::int64_t beyondAllTexts = std::int64_t{1} << 40;
        for (char const c : text)
            exponent = std::min(exponent * 10 + (c - '0'), beyondAllTexts);
        exponent = isNegative ? -exponent : exponent;
    }
    return exponent + power > 0 ? std::numeric_limits<float>::infinity() : 0.0F;
}

// Reads a text from its front; the first thing that doesn't fit ends the reading for good.
class Scanner {
public:
    explicit Scanner(CString const& text) : next_(text.GetString()), end_(next_ + text.GetLength()) { }

    // A decimal number behind any blanks.
    bool readInt(int& value)
    {
        skipBlanks();
        bool const isNegative = takeSign();
        if (next_ == end_ || !isDigit(*next_))
            return stop();
        std::int64_t magnitude = 0;
        constexpr std::int64_t limit = std::int64_t{1} << 31;
        for (; next_ != end_ && isDigit(*next_); ++next_) {
            if (magnitude <= limit)
                magnitude = magnitude * 10 + (*next_ - '0');
        }
        magnitude = magnitude > limit ? limit : magnitude;
        if (isNegative)
            value = static_cast<int>(-magnitude);
        else
            value = static_cast<int>(magnitude == limit ? limit - 1 : magnitude);
        return true;
    }

    bool readFloat(float& value)
    {
        skipBlanks();
        bool const isNegative = takeSign();
        char const* const digit = next_ != end_ && *next_ == '.' ? next_ + 1 : next_;
        if (digit == end_ || !isDigit(*digit))
            return stop();  // words such as "nano" and "information" are no numbers
        float magnitude = 0;
        auto const result = std::from_chars(next_, end_, magnitude);
        if (result.ec == std::errc::result_out_of_range)
            magnitude = outOfRange(std::string_view(next_, static_cast<std::size_t>(result.ptr - next_)));
        next_ = result.ptr;
        value = isNegative ? -magnitude : magnitude;
        return true;
    }

    bool take(char expected)
    {
        if (next_ == end_ || *next_ != expected)
            return stop();
        ++next_;
        return true;
    }

private:
    void skipBlanks()
    {
        while (next_ != end_ && isBlank(*next_))
            ++next_;
    }

    bool takeSign()
    {
        if (next_ == end_ || (*next_ != '-' && *next_ != '+'))
            return false;
        return *next_++ == '-';
    }

    bool stop()
    {
        next_ = end_;
        return false;
    }

    char const* next_;
    char const* end_;
};

constexpr unsigned long lowByte(unsigned long value)
{
    return value & 0xFF;
}

}  // namespace

IAppProfileInterface::IAppProfileInterface(bool isLocal)
{
    if (!isLocal && !instance)
        instance = this;
}

IAppProfileInterface::~IAppProfileInterface()
{
    if (instance == this)
        instance = nullptr;
}

IAppProfileInterface* IAppProfileInterface::Instance()
{
    return instance;
}

void IAppProfileInterface::String2Int(CString const& text, int& ok, int& value)
{
    ok = Scanner(text).readInt(value);
}

int IAppProfileInterface::String2Int(CString const& text, int defaultValue)
{
    int ok = 0;
    int value = 0;
    String2Int(text, ok, value);
    return ok ? value : defaultValue;
}

void IAppProfileInterface::Int2String(int value, CString& text)
{
    text.Format("%d", value);
}

CString IAppProfileInterface::Int2String(int value)
{
    CString text;
    Int2String(value, text);
    return text;
}

void IAppProfileInterface::String2Double(CString const& text, int& ok, double& value)
{
    float read = 0;
    ok = Scanner(text).readFloat(read);
    if (ok)
        value = read;
}

double IAppProfileInterface::String2Double(CString const& text, double defaultValue)
{
    int ok = 0;
    double value = defaultValue;
    String2Double(text, ok, value);
    return value;
}

void IAppProfileInterface::Double2String(double value, CString& text)
{
    // Not by Format: the point is one in every locale, as it is read.
    constexpr int decimals = 6;
    char buffer[330];
    auto const result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
    text = CString(buffer, static_cast<int>(result.ptr - buffer));
}

CString IAppProfileInterface::Double2String(double value)
{
    CString text;
    Double2String(value, text);
    return text;
}

void IAppProfileInterface::String2Bool(CString const& text, int& ok, int& value)
{
    bool const isTrue = text.CompareNoCase(trueText) == 0;
    ok = isTrue || text.CompareNoCase(falseText) == 0;
    if (ok)
        value = isTrue;
}

int IAppProfileInterface::String2Bool(CString const& text, int defaultValue)
{
    int ok = 0;
    int value = defaultValue;
    String2Bool(text, ok, value);
    return value;
}

void IAppProfileInterface::Bool2String(int value, CString& text)
{
    text = value ? trueText : falseText;
}

CString IAppProfileInterface::Bool2String(int value)
{
    return value ? trueText : falseText;
}

void IAppProfileInterface::String2Color(CString const& text, int& ok, unsigned long& value)
{
    int red = 0, green = 0, blue = 0;
    Scanner scanner(text);
    ok = scanner.readInt(red) && scanner.take(',') && scanner.readInt(green) && scanner.take(',') &&
        scanner.readInt(blue);
    value = lowByte(static_cast<unsigned long>(red)) | lowByte(static_cast<unsigned long>(green)) << 8 |
        lowByte(static_cast<unsigned long>(blue)) << 16;
}

unsigned long IAppProfileInterface::String2Color(CString const& text, unsigned long defaultValue)
{
    int ok = 0;
    unsigned long value = 0;
    String2Color(text, ok, value);
    return ok ? value : defaultValue;
}

void IAppProfileInterface::Color2String(unsigned long value, CString& text)
{
    text.Format("%d,%d,%d", static_cast<int>(lowByte(value)), static_cast<int>(lowByte(value >> 8)),
                static_cast<int>(lowByte(value >> 16)));
}

CString IAppProfileInterface::Color2String(unsigned long value)
{
    CString text;
    Color2String(value, text);
    return text;
}

bool IAppProfileInterface::String2Rect(CString const& text, CRect& value)
{
    int left = 0, top = 0, right = 0, bottom = 0;
    Scanner scanner(text);
    bool const isRect = scanner.take('(') && scanner.readInt(left) && scanner.take(',') &&
        scanner.readInt(top) && scanner.take(',') && scanner.readInt(right) && scanner.take(',') &&
        scanner.readInt(bottom);
    if (isRect)
        value.SetRect(left, top, right, bottom);
    return isRect;
}

void IAppProfileInterface::Rect2String(CRect value, CString& text)
{
    text.Format("(%d,%d,%d,%d)", static_cast<int>(value.left), static_cast<int>(value.top),
                static_cast<int>(value.right), static_cast<int>(value.bottom));
}

CString IAppProfileInterface::Rect2String(CRect value)
{
    CString text;
    Rect2String(value, text);
    return text;
}
