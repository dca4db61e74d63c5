#include "text/stringHelpers.h"

#include "text/SPString.h"
#include "text/stringListConversions.h"

#include "platform/classlib/textSearch.h"
#include "platform/os/os.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <memory>
#include <string>
#include <string_view>

namespace {

unsigned byteOf(char character)
{
    return static_cast<unsigned char>(character);
}

bool isSpace(char character)
{
    return _ismbcspace(byteOf(character)) != 0;
}

bool isAlphaNumeric(char character)
{
    return _ismbcalnum(byteOf(character)) != 0;
}

bool isUpper(char character)
{
    return _ismbcupper(byteOf(character)) != 0;
}

bool isWordCharacter(char character)
{
    return character == '_' || isAlphaNumeric(character);
}

int positionOf(std::size_t found)
{
    return found == std::string_view::npos ? -1 : int(found);
}

// Whether a capital follows an ASCII letter in lower case or '#'.
bool hasInnerCapital(std::string_view text)
{
    auto const isInner = [](char left, char right) {
        return ((left >= 'a' && left <= 'z') || left == '#') && right >= 'A' && right <= 'Z';
    };
    return std::adjacent_find(text.begin(), text.end(), isInner) != text.end();
}

// Converts `text` from one code page to another through wide characters.
bool convertCodePage(CString& text, UINT from, UINT to)
{
    if (text.IsEmpty())
        return true;
    int const wideLength =
        MultiByteToWideChar(from, MB_ERR_INVALID_CHARS, text, text.GetLength(), nullptr, 0);
    if (wideLength <= 0)
        return false;
    std::wstring wide(std::size_t(wideLength), L'\0');
    MultiByteToWideChar(from, MB_ERR_INVALID_CHARS, text, text.GetLength(), wide.data(), wideLength);

    int const length = WideCharToMultiByte(to, 0, wide.data(), wideLength, nullptr, 0, nullptr, nullptr);
    if (length <= 0)
        return false;
    CString converted;
    int const written = WideCharToMultiByte(to, 0, wide.data(), wideLength, converted.GetBuffer(length),
                                            length, nullptr, nullptr);
    converted.ReleaseBufferSetLength(written);
    if (written > 0)
        text = std::move(converted);
    return written > 0;
}

}  // namespace

CString omRemoveTrailingAndLeadingBlanks(CString text)
{
    text.TrimLeft();
    text.TrimRight();
    return text;
}

CString cleanWhiteSpaces(CString const& text)
{
    std::string cleaned(text.view());
    cleaned.erase(std::remove_if(cleaned.begin(), cleaned.end(), isSpace), cleaned.end());
    return CString(std::string_view(cleaned));
}

void omMakeLower(CString& text)
{
    text.MakeLower();
}

void omMakeUpper(CString& text)
{
    text.MakeUpper();
}

CString convertToStrictAlphaNum(CString const& text)
{
    CString strict(text);
    for (int i = 0; i < strict.GetLength(); ++i) {
        if (!isAlphaNumeric(strict[i]))
            strict.SetAt(i, '_');
    }
    return strict;
}

CString toLowerCaseFirstLetter(CString const& text)
{
    std::unique_ptr<CStringList> const parts(omConvertStringToStringList(text, "-", 0, 1));
    for (POSITION at = parts->GetHeadPosition(); at;) {
        CString& part = parts->GetNext(at);
        if (!part.IsEmpty())
            part.SetAt(0, static_cast<char>(_mbctolower(byteOf(part[0]))));
    }
    return omConvertStringListToString(parts.get(), '-');
}

CString insertSpaces(CString const& text)
{
    if (text == "SysMLPort" || !hasInnerCapital(text.view()))
        return text;
    CString label;
    bool isBehindLower = !isUpper(text[0]);
    for (char const character : text.view()) {
        bool const isCapital = isUpper(character);
        if (isCapital && isBehindLower)
            label += ' ';
        isBehindLower = !isCapital;
        label += character;
    }
    return label;
}

int identicalUpToSpaces(CString const& left, CString const& right)
{
    std::string_view const a = left.view();
    std::string_view const b = right.view();
    auto inA = a.begin();
    auto inB = b.begin();
    for (;; ++inA, ++inB) {
        inA = std::find_if_not(inA, a.end(), isSpace);
        inB = std::find_if_not(inB, b.end(), isSpace);
        if (inA == a.end())
            return inB == b.end();
        if (inB == b.end() || *inA != *inB)
            return 0;
    }
}

int countCharacterInStr(CString const& text, char character)
{
    return int(std::count(text.view().begin(), text.view().end(), character));
}

int ReverseFind(CString const& text, char character, int low, int high)
{
    if (high <= low)
        return -1;
    int const last = std::min(high, text.GetLength() - 1);
    int const first = std::max(low, -1) + 1;
    if (last < first)
        return -1;
    std::string_view const searched = text.view().substr(std::size_t(first), std::size_t(last - first + 1));
    int const found = positionOf(searched.rfind(character));
    return found < 0 ? -1 : first + found;
}

int ReverseFind(CString const& text, CString const& pattern)
{
    return int(zk::findLast(text.view(), pattern.view()));
}

int startsWith(CString const& text, CString const& prefix, int pos, int limit)
{
    if (pos < 0 || prefix.GetLength() > text.GetLength() - pos)
        return -1;
    if (limit >= 0 && pos > limit - prefix.GetLength())
        return -1;
    return text.view().compare(std::size_t(pos), std::size_t(prefix.GetLength()), prefix.view()) == 0 ? 0
                                                                                                      : -1;
}

bool IsTheStringEndWithPattern(CString const& text, CString const& pattern)
{
    int const last = ReverseFind(text, pattern);
    return last >= 0 && last + pattern.GetLength() == text.GetLength();
}

int omFindExactString(CString const& word, CString const& text)
{
    if (word.IsEmpty())
        return -1;
    std::string_view const all = text.view();
    std::size_t const length = word.view().size();
    std::size_t from = 0;
    for (;;) {
        std::ptrdiff_t const found = zk::findFirst(all, word.view(), from);
        if (found < 0)
            return -1;
        auto const at = std::size_t(found);
        from = at + length;
        bool const isCutBefore = at > 0 && isWordCharacter(all[at - 1]);
        bool const isCutBehind = from < all.size() && isWordCharacter(all[from]);
        if (!isCutBefore && !isCutBehind)
            return int(at);
    }
}

bool omFindExactString2(CString const& word, CString const& list)
{
    std::unique_ptr<CStringList> const elements(omConvertStringToStringList(list, ",;", 0, 0));
    return elements->Find(word) != nullptr;
}

POSITION omFindInStringListNoCase(CStringList const& list, CString const& text)
{
    for (POSITION at = list.GetHeadPosition(); at;) {
        POSITION const here = at;
        if (list.GetNext(at).CompareNoCase(text) == 0)
            return here;
    }
    return nullptr;
}

bool omIsRTF(CString text)
{
    return text.view().substr(0, 5) == "{\\rtf";
}

int cstringCompare(void const* left, void const* right)
{
    return std::strcmp(**static_cast<CString const* const*>(left),
                       **static_cast<CString const* const*>(right));
}

int advanceIfStartsWith(CString& text, char const* prefix)
{
    CString const wanted(prefix);
    if (startsWith(text, wanted) != 0)
        return 0;
    text.Delete(0, wanted.GetLength());
    return 1;
}

void zkyEatOneToken(CString& text, CString& token, int const* table)
{
    std::string_view const all = text.view();
    auto const isRefused = [=](char character) { return table[byteOf(character)] == 0; };
    auto const length = int(std::find_if(all.begin(), all.end(), isRefused) - all.begin());
    CString const taken = text.Left(length);
    text.Delete(0, length);
    token = taken;
}

CString zkyGetShortAlphaNumString(std::istream& in)
{
    constexpr int maximum = 255;
    CString word;
    for (int next = in.peek(); next != std::istream::traits_type::eof(); next = in.peek()) {
        char const character = std::istream::traits_type::to_char_type(next);
        bool const isLeadingSpace = word.IsEmpty() && isSpace(character);
        if (!isLeadingSpace && (!isAlphaNumeric(character) || word.GetLength() == maximum))
            break;
        if (!isLeadingSpace)
            word += character;
        in.get();
    }
    return word;
}

void omReplaceToken(CString& text, CString const& pattern, CString const& replacement)
{
    SPString replaced(text.GetString());
    if (replaced.s(pattern, replacement, "g") > 0)
        text = static_cast<char const*>(replaced);
}

bool omConvertStringToUTF8(CString& text)
{
    return convertCodePage(text, CP_ACP, CP_UTF8);
}

bool omConvertUTF8ToString(CString& text)
{
    return convertCodePage(text, CP_UTF8, CP_ACP);
}
