#include "logging/CCgReadProps.h"

#include "logging/CCgInternalError.h"
#include "logging/CCgLogManager.h"
#include "logging/util/CxPrintUtil.h"
#include "platform/os/os.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace zk::logging {

namespace {

enum class State {
    lineStart,
    leadingSpace,
    comment,
    key,
    keyEscape,
    afterKey,
    beforeValue,
    value,
    valueEscape,
    continuation,
    hex1,
    hex2,
    hex3,
    hex4,
};

bool isBlank(char c) noexcept
{
    return c == '\t' || c == '\v' || c == '\f' || c == ' ';
}

bool isLineEnd(char c) noexcept
{
    return c == '\n' || c == '\r';
}

bool isSeparator(char c) noexcept
{
    return c == ':' || c == '=';
}

bool isComment(char c) noexcept
{
    return c == '!' || c == '#';
}

// The value of a digit of "\uXXXX", -1 for another character. "a" to "f" count from 0 on, as those who
// write such files have come to expect.
int hexDigit(char c) noexcept
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a';
    if (c >= 'A' && c <= 'F')
        return c - 'A';
    return -1;
}

// Up to its first NUL, which ends a text here.
std::string_view text(CxStringBuff const& buffer) noexcept
{
    return buffer.text();
}

class PropertiesReader {
public:
    explicit PropertiesReader(CCgStringToStringMap* target) noexcept : target_(target) { }

    bool take(std::string_view bytes)
    {
        for (char const c : bytes) {
            bool const skip = isLineEnd(previous_) && isLineEnd(c);
            previous_ = c;
            if (!skip && !step(c))
                return false;
        }
        return true;
    }

    // A key at the end of the file counts, with what there is of its value.
    bool end() { return key_.length() == 0 || commit(); }

private:
    bool step(char c)
    {
        switch (state_) {
        case State::lineStart: return atLineStart(c);
        case State::leadingSpace: return inLeadingSpace(c);
        case State::comment: return isLineEnd(c) ? startLine() : true;
        case State::key: return inKey(c);
        case State::keyEscape: return inKeyEscape(c);
        case State::afterKey: return afterKey(c);
        case State::beforeValue: return beforeValue(c);
        case State::value: return inValue(c);
        case State::valueEscape: return inValueEscape(c);
        case State::continuation: return inContinuation(c);
        default: return inHexDigits(c);
        }
    }

    bool go(State next) noexcept
    {
        state_ = next;
        return true;
    }

    bool addToKey(char c)
    {
        key_.append(c);
        return go(State::key);
    }

    bool addToValue(char c)
    {
        value_.append(c);
        return go(State::value);
    }

    bool startLine()
    {
        key_.truncate(0);
        value_.truncate(0);
        return go(State::lineStart);
    }

    bool commitAndStartLine() { return commit() && startLine(); }

    bool atLineStart(char c)
    {
        if (isBlank(c))
            return go(State::leadingSpace);
        if (isComment(c))
            return go(State::comment);
        return isLineEnd(c) ? startLine() : addToKey(c);
    }

    bool inLeadingSpace(char c)
    {
        if (isBlank(c))
            return true;
        if (isComment(c))
            return go(State::comment);
        if (isLineEnd(c))
            return startLine();
        return !isSeparator(c) && addToKey(c);
    }

    bool inKey(char c)
    {
        if (c == '\\')
            return go(State::keyEscape);
        if (isBlank(c))
            return go(State::afterKey);
        if (isSeparator(c))
            return go(State::beforeValue);
        return !isLineEnd(c) && addToKey(c);
    }

    bool inKeyEscape(char c) { return (c == '\\' || isBlank(c) || isSeparator(c)) && addToKey(c); }

    bool afterKey(char c)
    {
        if (isBlank(c))
            return true;
        if (isSeparator(c))
            return go(State::beforeValue);
        if (c == '\\')
            return go(State::valueEscape);
        return !isLineEnd(c) && addToValue(c);
    }

    bool beforeValue(char c)
    {
        if (isBlank(c))
            return true;
        return inValue(c);
    }

    bool inValue(char c)
    {
        if (c == '\\')
            return go(State::valueEscape);
        return isLineEnd(c) ? commitAndStartLine() : addToValue(c);
    }

    bool inValueEscape(char c)
    {
        if (isBlank(c) || c == '"' || c == '\'' || c == '\\')
            return addToValue(c);
        if (isLineEnd(c))
            return go(State::continuation);
        if (c == 'U' || c == 'u')
            return go(State::hex1);
        printError(52, {CCgParm::ofText(key_.text())});
        return false;
    }

    bool inContinuation(char c)
    {
        if (isBlank(c))
            return true;
        return inValue(c);
    }

    bool inHexDigits(char c)
    {
        int const digit = hexDigit(c);
        if (digit < 0)
            return false;
        int const place = static_cast<int>(state_) - static_cast<int>(State::hex1);
        std::uint32_t const weight = 0x1000u >> (4 * place);
        codePoint_ = std::min(codePoint_ + static_cast<std::uint32_t>(digit) * weight, largestCodePoint);
        if (state_ != State::hex4)
            return go(static_cast<State>(static_cast<int>(state_) + 1));
        CxAppendUtf8(value_, codePoint_);
        return go(State::value);
    }

    bool commit()
    {
        std::string_view const key = text(key_);
        if (target_) {
            target_->set(key, std::string(text(value_)));
            return true;
        }
        std::size_t const dot = key.rfind('.');
        return dot != std::string_view::npos &&
            setConfigProperty(key.substr(0, dot), key.substr(dot + 1), std::string(text(value_)));
    }

    static constexpr std::uint32_t largestCodePoint = 0x7FFFFFFF;  // of six bytes in UTF-8

    CCgStringToStringMap* target_;
    CxStringBuff key_, value_;
    State state_ = State::lineStart;
    char previous_ = '\0';
    std::uint32_t codePoint_ = 0;  // goes on from one escape to the next, on purpose
};

struct OpenFile {
    HANDLE handle;
    ~OpenFile()
    {
        if (handle != INVALID_HANDLE_VALUE)
            CloseHandle(handle);
    }
};

}  // namespace

bool readProperties(std::string_view bytes, CCgStringToStringMap* target)
{
    PropertiesReader reader(target);
    return reader.take(bytes) && reader.end();
}

}  // namespace zk::logging

bool CCgReadProps(char const* path, CCgStringToStringMap* target)
{
    zk::logging::Locked const locked;
    if (!path || !locked)
        return false;
    zk::logging::OpenFile const file{CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                                 nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)};
    if (file.handle == INVALID_HANDLE_VALUE)
        return false;
    zk::logging::PropertiesReader reader(target);
    char buffer[16384];
    DWORD length = 0;
    do {
        if (!ReadFile(file.handle, buffer, sizeof buffer, &length, nullptr) || !reader.take({buffer, length}))
            return false;
    } while (length > 0);
    return reader.end();
}
