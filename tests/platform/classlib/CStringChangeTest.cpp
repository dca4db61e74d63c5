// Changing a CString: case, ends, replacing, inserting, deleting.
#include "platform/classlib/CString.h"

#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <string>
#include <vector>

namespace {

char const* const noText = nullptr;

}  // namespace

TEST(CStringCase, changesInAsciiOnly)
{
    CString text("aZ09@[`{\xE4\xC4");

    EXPECT_EQ(text.MakeUpper(), "AZ09@[`{\xE4\xC4");
    EXPECT_EQ(text.MakeLower(), "az09@[`{\xE4\xC4");
}

TEST(CStringCase, changesBehindNulBytesToo)
{
    CString text("a\0b", 3);

    EXPECT_EQ(text.MakeUpper(), std::string_view("A\0B", 3));
}

TEST(CStringReverse, turnsTheBytesRound)
{
    EXPECT_EQ(CString("abc").MakeReverse(), "cba");
    EXPECT_EQ(CString("").MakeReverse(), "");
}

TEST(CStringTrim, cutsBlanksOff)
{
    for (char const* text : {"a b", " a b", "a b ", " \t\n\v\f\ra b\r\f\v\n\t ", "\n\na b\n\n"})
        EXPECT_EQ(CString(text).Trim(), "a b") << text;

    EXPECT_EQ(CString("  a  ").TrimLeft(), "a  ");
    EXPECT_EQ(CString("  a  ").TrimRight(), "  a");
    EXPECT_EQ(CString("   ").TrimLeft(), "");
    EXPECT_EQ(CString("   ").TrimRight(), "");
    EXPECT_EQ(CString("").Trim(), "");
    EXPECT_EQ(CString("\xA0"
                      "a\x85")
                  .Trim(),
              "\xA0"
              "a\x85");
}

TEST(CStringTrim, cutsOneCharacterOff)
{
    EXPECT_EQ(CString("xxaxx").TrimLeft('x'), "axx");
    EXPECT_EQ(CString("xxaxx").TrimRight('x'), "xxa");
    EXPECT_EQ(CString("xxaxx").Trim('x'), "a");
    EXPECT_EQ(CString("xxxx").TrimLeft('x'), "");
    EXPECT_EQ(CString("xxxx").TrimRight('x'), "");
    EXPECT_EQ(CString("").Trim('x'), "");
    EXPECT_EQ(CString(" x ").Trim('x'), " x ");
}

TEST(CStringTrim, cutsASetOff)
{
    EXPECT_EQ(CString("xyaxy").TrimLeft("yx"), "axy");
    EXPECT_EQ(CString("xyaxy").TrimRight("yx"), "xya");
    EXPECT_EQ(CString("xyaxy").Trim("yx"), "a");
    EXPECT_EQ(CString("xyxy").Trim("yx"), "");
    EXPECT_EQ(CString(" a ").Trim(""), " a ");
    EXPECT_EQ(CString(" a ").Trim(noText), " a ");
    EXPECT_EQ(CString("").Trim("x"), "");
}

TEST(CStringReplace, replacesACharacterEverywhereAndCounts)
{
    CString text("a/b/c");

    EXPECT_EQ(text.Replace('/', '\\'), 2);
    EXPECT_EQ(text, "a\\b\\c");
    EXPECT_EQ(text.Replace('x', 'y'), 0);
    EXPECT_EQ(text.Replace('\\', '\\'), 0);
    EXPECT_EQ(text, "a\\b\\c");
}

TEST(CStringReplace, replacesATextEverywhereAndCounts)
{
    struct Row {
        char const* text;
        char const* from;
        char const* to;
        int count;
        char const* result;
    };
    for (auto const& [text, from, to, count, result] : std::vector<Row>{
             {"abcabc", "bc", "X", 2, "aXaX"},
             {"abcabc", "bc", "XYZ", 2, "aXYZaXYZ"},
             {"abcabc", "bc", "XY", 2, "aXYaXY"},
             {"abcabc", "abc", "", 2, ""},
             {"abcabc", "abc", noText, 2, ""},
             {"abcabc", "x", "y", 0, "abcabc"},
             {"abcabc", "", "y", 0, "abcabc"},
             {"abcabc", noText, "y", 0, "abcabc"},
             {"aaaa", "aa", "a", 2, "aa"},
             {"aaa", "aa", "b", 1, "ba"},
             {"a&b", "&", "&amp;", 1, "a&amp;b"},
             {"", "a", "b", 0, ""},
             {"aaaaaaaaaaaaaaaa", "a", "bb", 16, "bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb"},
         }) {
        CString changed(text);
        EXPECT_EQ(changed.Replace(from, to), count) << text << ' ' << result;
        EXPECT_EQ(changed, result);
        EXPECT_STREQ(changed, result);
    }
}

TEST(CStringReplace, seesNulBytes)
{
    CString text("a\0b\0c", 5);

    EXPECT_EQ(text.Replace(CString("\0", 1), "-"), 2);
    EXPECT_EQ(text, "a-b-c");
    EXPECT_EQ(text.Replace("-", CString("\0", 1)), 2);
    EXPECT_EQ(text, std::string_view("a\0b\0c", 5));
    EXPECT_EQ(text.Replace('\0', '+'), 2);
    EXPECT_EQ(text, "a+b+c");
}

TEST(CStringReplace, takesItsOwnPartsAsArguments)
{
    CString text("abab");

    EXPECT_EQ(text.Replace(text.GetString() + 2, text), 2);
    EXPECT_EQ(text, "abababab");
    EXPECT_EQ(text.Replace(text, "x"), 1);
    EXPECT_EQ(text, "x");
}

TEST(CStringReplace, beyondTheLongestTextIsOutOfMemory)
{
    CString text('a', 1 << 16);
    CString const to('b', 1 << 15);

    EXPECT_THROW(text.Replace("a", to), std::bad_alloc);
    EXPECT_EQ(text.GetLength(), 1 << 16);
}

TEST(CStringRemove, deletesACharacterEverywhereAndCounts)
{
    CString text("This is a test.");

    EXPECT_EQ(text.Remove('t'), 2);
    EXPECT_EQ(text, "This is a es.");
    EXPECT_EQ(text.Remove('x'), 0);
    EXPECT_EQ(CString("").Remove('x'), 0);
}

TEST(CStringInsert, putsTextBeforeAPositionAndGivesTheLength)
{
    struct Row {
        int index;
        char const* inserted;
        char const* result;
    };
    for (auto const& [index, inserted, result] : std::vector<Row>{
             {0, "XY", "XYabc"},
             {1, "XY", "aXYbc"},
             {3, "XY", "abcXY"},
             {4, "XY", "abcXY"},
             {INT_MAX, "XY", "abcXY"},
             {-1, "XY", "XYabc"},
             {INT_MIN, "XY", "XYabc"},
             {1, "", "abc"},
             {1, noText, "abc"},
             {1, "0123456789ABCDEF", "a0123456789ABCDEFbc"},
         }) {
        CString text("abc");
        EXPECT_EQ(text.Insert(index, inserted), static_cast<int>(std::string(result).size()));
        EXPECT_EQ(text, result) << index;
        if (inserted) {
            CString other("abc");
            other.Insert(index, CString(inserted));
            EXPECT_EQ(other, result) << index;
        }
    }
}

TEST(CStringInsert, putsACharacterIn)
{
    CString text("abc");

    EXPECT_EQ(text.Insert(1, 'X'), 4);
    EXPECT_EQ(text.Insert(100, 'Y'), 5);
    EXPECT_EQ(text.Insert(-1, 'Z'), 6);
    EXPECT_EQ(text, "ZaXbcY");
}

TEST(CStringInsert, takesItsOwnPartsAsArguments)
{
    CString text("abc");

    text.Insert(1, text);
    EXPECT_EQ(text, "aabcbc");
    text.Insert(2, text.GetString() + 3);
    EXPECT_EQ(text, "aacbcbcbc");
    text.Preallocate(100);
    text.Insert(0, text.GetString() + 7);
    EXPECT_EQ(text, "bcaacbcbcbc");
}

TEST(CStringDelete, removesBytesAndGivesTheLength)
{
    struct Row {
        int index;
        int count;
        char const* result;
    };
    for (auto const& [index, count, result] : std::vector<Row>{
             {0, 1, "bcdef"},
             {1, 2, "adef"},
             {4, 2, "abcd"},
             {4, 3, "abcd"},
             {4, INT_MAX, "abcd"},
             {6, 1, "abcdef"},
             {7, 1, "abcdef"},
             {INT_MAX, INT_MAX, "abcdef"},
             {-1, 2, "cdef"},
             {INT_MIN, INT_MAX, ""},
             {1, 0, "abcdef"},
             {1, -1, "abcdef"},
             {0, 6, ""},
         }) {
        CString text("abcdef");
        EXPECT_EQ(text.Delete(index, count), static_cast<int>(std::string(result).size()));
        EXPECT_EQ(text, result) << index << ' ' << count;
    }
    CString text("abc");
    EXPECT_EQ(text.Delete(1), 2);
    EXPECT_EQ(text, "ac");
}

TEST(CStringChange, mayTakeItsOwnText)
{
    // Short texts, those in a block that is full, and those in a block with room.
    for (std::size_t const length : {std::size_t(7), std::size_t(15), std::size_t(40)}) {
        for (bool const hasRoom : {false, true}) {
            std::string const text = std::string(length - 4, 'x') + "tail";
            CString made(text.c_str());
            if (hasRoom)
                made.Preallocate(200);
            std::string const part = text.substr(3);
            int const count = static_cast<int>(length);
            auto const changed = [&](auto change) {
                CString own(made);
                if (hasRoom)
                    own.Preallocate(200);
                change(own);
                return std::string(own.view());
            };

            EXPECT_EQ(changed([&](CString& s) { s.Append(s.GetString(), count + 1); }),
                      text + text + std::string(1, '\0'));
            EXPECT_EQ(changed([](CString& s) { s.Append(s.GetString() + 3); }), text + part);
            EXPECT_EQ(changed([](CString& s) { s += s; }), text + text);
            EXPECT_EQ(changed([](CString& s) { s += s.GetString() + 3; }), text + part);
            EXPECT_EQ(changed([](CString& s) { s = s.GetString() + 3; }), part);
            EXPECT_EQ(changed([](CString& s) { s.SetString(s.GetString() + 3, 2); }), part.substr(0, 2));
            EXPECT_EQ(changed([](CString& s) { s = s.Mid(3) + s; }), part + text);
            EXPECT_EQ(changed([](CString& s) { s = static_cast<CString&&>(s) + s; }), text + text);
            EXPECT_EQ(changed([](CString& s) { s.Insert(2, s.GetString() + 3); }),
                      text.substr(0, 2) + part + text.substr(2));
            EXPECT_EQ(changed([](CString& s) { s.Insert(2, s); }), text.substr(0, 2) + text + text.substr(2));
            EXPECT_EQ(changed([&](CString& s) { s.Replace("tail", s.GetString() + 3); }),
                      text.substr(0, length - 4) + part);
            EXPECT_EQ(changed([&](CString& s) { s.Replace(s.GetString() + length - 4, "t"); }),
                      text.substr(0, length - 4) + "t");
            EXPECT_EQ(changed([&](CString& s) { s.Replace(s, s.GetString() + length - 4); }), "tail");
            EXPECT_EQ(changed([](CString& s) { s.Format("%s|%s", s, s.GetString() + 3); }),
                      text + '|' + part);
            EXPECT_EQ(changed([](CString& s) { s.AppendFormat("%s", s.GetString() + 3); }), text + part);
        }
    }
}
