// What strings and containers are after memory lacked: what they were before.
#include "platform/classlib/CArray.h"
#include "platform/classlib/CList.h"
#include "platform/classlib/CMap.h"
#include "platform/classlib/CString.h"
#include "platform/classlib/CStringMaps.h"
#include "tests/support/OutOfMemory.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using zk::test::failuresOf;

constexpr char text[] = "twenty bytes of text";
constexpr char more[] = "and some more, enough to need another block of memory";

struct Row {
    char const* what;
    std::function<void(CString&)> change;
};

TEST(CStringWithoutMemory, staysAsItWas)
{
    CString const addition(more);
    Row const rows[] = {
        {"assign", [&](CString& s) { s = addition; }},
        {"assign characters", [](CString& s) { s = more; }},
        {"append", [&](CString& s) { s += addition; }},
        {"append a character",
         [](CString& s) {
             for (int i = 0; i < 3; ++i)
                 s.AppendChar(' '), s.Truncate(20), s.FreeExtra();
         }},
        {"insert", [](CString& s) { s.Insert(3, more); }},
        {"replace", [](CString& s) { s.Replace("t", more); }},
        {"get a buffer", [](CString& s) { s.GetBuffer(500); }},
        {"format", [](CString& s) { s.Format("%s %600d", more, 1); }},
        {"append a format", [](CString& s) { s.AppendFormat("%s", more); }},
        {"append itself", [](CString& s) { s += s; }},
    };
    for (Row const& row : rows) {
        CString changed(text);
        changed.FreeExtra();
        auto const isUnchanged = [&] { return changed == text && changed.GetString()[20] == '\0'; };

        EXPECT_GT(failuresOf([&] { row.change(changed); }, isUnchanged), 0) << row.what;
    }
}

TEST(CStringWithoutMemory, makesNoParts)
{
    CString const whole(more);
    CString part("kept");

    EXPECT_GT(
        failuresOf([&] { part = whole.Mid(2) + whole; }, [&] { return part == "kept" && whole == more; }), 0);
}

TEST(CStringWithoutMemory, needsNoneForFifteenBytes)
{
    CString changed("0123456789abcde");

    EXPECT_EQ(failuresOf(
                  [&] {
                      CString const copy(changed);
                      changed = copy.Left(7) + copy.Right(8);
                      changed.Replace("abc", "ABC");
                      changed.Format("%d/%s", 12345, "ten bytes");
                  },
                  [] { return true; }),
              0);
    EXPECT_EQ(changed, "12345/ten bytes");
}

TEST(CMapWithoutMemory, keepsItsEntries)
{
    CMapStringToString map;
    for (char const* const key : {"a", "b", "c"})
        map[key] = key;
    auto const isUnchanged = [&] {
        CString value;
        return map.GetCount() == 3 && map.Lookup("b", value) && value == "b" && !map.Lookup(more, value);
    };

    EXPECT_GT(failuresOf([&] { map.SetAt(more, more); }, isUnchanged), 0);
    CString value;
    EXPECT_TRUE(map.Lookup(more, value));
    EXPECT_EQ(value, more);
}

TEST(CMapWithoutMemory, keepsItsEntriesWhileItGrows)
{
    CMap<int, int, int, int> map;
    for (int next = 0; next < 2000; ++next) {
        auto const isUnchanged = [&] {
            int value = -1;
            return map.GetCount() == next && !map.Lookup(next, value) &&
                (next == 0 || (map.Lookup(next - 1, value) && value == next - 1));
        };
        ASSERT_GE(failuresOf([&] { map.SetAt(next, next); }, isUnchanged), 0) << next;
    }
    EXPECT_EQ(map.GetCount(), 2000);
}

TEST(CArrayWithoutMemory, keepsItsElements)
{
    CArray<CString, CString const&> array;
    for (char const* const element : {"a", "b", "c"})
        array.Add(element);
    CString const added(more);
    auto const isUnchanged = [&] { return array.GetSize() == 3 && array[0] == "a" && array[2] == "c"; };
    std::function<void()> const changes[] = {
        [&] { array.InsertAt(1, added, 20), array.RemoveAt(1, 20), array.FreeExtra(); },
        [&] { array.InsertAt(10, added, 20), array.SetSize(3), array.FreeExtra(); },
        [&] { array.SetAtGrow(10, added), array.SetSize(3), array.FreeExtra(); },
        [&] { array.Add(added), array.SetSize(3), array.FreeExtra(); },
    };

    for (auto const& change : changes) {
        // The change and what takes it back: memory may lack before it is taken back only.
        array.FreeExtra();
        for (int successes = 0;; ++successes) {
            ASSERT_LT(successes, 100);
            try {
                zk::test::OutOfMemory const outOfMemory(successes);
                change();
            } catch (std::bad_alloc const&) {
                EXPECT_TRUE(isUnchanged()) << successes;
                continue;
            }
            if (!zk::test::OutOfMemory::hasFailed())
                break;
        }
        EXPECT_TRUE(isUnchanged());
    }
}

TEST(CListWithoutMemory, keepsItsElements)
{
    CList<CString, CString const&> list;
    list.AddTail("a");
    CString const added(more);

    EXPECT_GT(failuresOf([&] { list.AddTail(added); },
                         [&] { return list.GetCount() == 1 && list.GetTail() == "a"; }),
              0);
    EXPECT_EQ(list.GetTail(), more);
}

}  // namespace
