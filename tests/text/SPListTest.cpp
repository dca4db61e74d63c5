#include "text/SPList.h"

#include "tests/text/fieldsOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

using zk::test::fieldsOf;

namespace {

SPList<SPString> listOf(char const* letters)
{
    SPList<SPString> list;
    for (; *letters != '\0'; ++letters)
        list.push(SPString(*letters));
    return list;
}

// The elements, with a dot for an empty one.
std::string joined(SPList<SPString> const& list)
{
    std::string text;
    for (int i = 0; i < list.count(); ++i)
        text += list[i].length() ? static_cast<char const*>(list[i]) : ".";
    return text;
}

}  // namespace

TEST(SPList, addsNoFields)
{
    static_assert(sizeof(SPList<SPString>) == sizeof(SPListBase<SPString>));
    static_assert(std::has_virtual_destructor_v<SPListBase<SPString>>);
    static_assert(sizeof(SPListBase<SPString>) == 2 * sizeof(void*) + 4 * 4);
}

TEST(SPList, pushesAndPops)
{
    SPList<SPString> list;

    list.push("a");
    list.push("b");

    EXPECT_EQ(list.pop(), "b");
    EXPECT_EQ(list.pop(), "a");
    EXPECT_EQ(list.count(), 0);
}

TEST(SPList, popOnAnEmptyListChangesNothing)
{
    SPList<SPString> list;

    EXPECT_EQ(list.pop(), "");

    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(fieldsOf(list).first, 10);
}

TEST(SPList, whatWasPoppedStaysInItsSlot)
{
    SPList<SPString> list = listOf("abc");

    list.pop();

    EXPECT_EQ(list[2], "c");
}

TEST(SPList, poppingTheOnlyElementPassesItsSlot)
{
    SPList<SPString> list = listOf("a");

    EXPECT_EQ(list.pop(), "a");

    EXPECT_EQ(fieldsOf(list).first, 11);
}

TEST(SPList, shiftsFromTheFront)
{
    SPList<SPString> list = listOf("abc");

    EXPECT_EQ(list.shift(), "a");

    EXPECT_EQ(joined(list), "bc");
    EXPECT_EQ(fieldsOf(list).first, 11);
}

TEST(SPList, shiftOnAnEmptyListPassesASlotEachTime)
{
    SPList<SPString> list;

    EXPECT_EQ(list.shift(), "");
    EXPECT_EQ(list.shift(), "");

    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(fieldsOf(list).first, 12);
}

TEST(SPList, shiftOnAnEmptyListGoesOnForEver)
{
    SPList<SPString> list;

    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(list.shift(), "");

    EXPECT_EQ(list.count(), 0);
    list.push("a");
    EXPECT_EQ(joined(list), "a");
}

TEST(SPList, shiftOnAnErasedListFindsTheOldElement)
{
    SPList<SPString> list = listOf("ab");

    list.reset();

    EXPECT_EQ(list.shift(), "a");
    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(list.shift(), "b");
    EXPECT_EQ(list.shift(), "");
}

TEST(SPList, unshiftPutsInFrontAndGivesTheCount)
{
    SPList<SPString> list = listOf("b");

    EXPECT_EQ(list.unshift("a"), 2);

    EXPECT_EQ(joined(list), "ab");
    EXPECT_EQ(fieldsOf(list).first, 9);
}

TEST(SPList, unshiftKeepsTheOrderOfAList)
{
    SPList<SPString> list = listOf("de");

    EXPECT_EQ(list.unshift(listOf("abc")), 5);

    EXPECT_EQ(joined(list), "abcde");
}

TEST(SPList, listsCanBePutIntoThemselves)
{
    SPList<SPString> pushed = listOf("abc");
    SPList<SPString> unshifted = listOf("abc");
    SPList<SPString> spliced = listOf("abc");

    pushed.push(pushed);
    unshifted.unshift(unshifted);
    spliced.splice(1, 1, spliced);

    EXPECT_EQ(joined(pushed), "abcabc");
    EXPECT_EQ(joined(unshifted), "abcabc");
    EXPECT_EQ(joined(spliced), "aabcc");
}

TEST(SPList, elementsCanBePutIntoTheirList)
{
    SPList<SPString> list = listOf("abc");

    list.unshift(list[2]);
    list.push(list[1]);

    EXPECT_EQ(joined(list), "cabca");
}

TEST(SPList, pushesAList)
{
    SPList<SPString> list = listOf("ab");

    list.push(listOf("cd"));

    EXPECT_EQ(joined(list), "abcd");
}

TEST(SPList, knowsWhetherItIsEmpty)
{
    SPList<SPString> list;

    EXPECT_TRUE(list.isempty());
    EXPECT_EQ(static_cast<void*>(list), nullptr);
    list.push("a");

    EXPECT_FALSE(list.isempty());
    EXPECT_EQ(static_cast<void*>(list), static_cast<void*>(&list));
    EXPECT_EQ(list.scalar(), 1);
    list.reset();
    EXPECT_TRUE(list.isempty());
}

TEST(SPList, reverseMakesANewList)
{
    SPList<SPString> const list = listOf("abc");

    EXPECT_EQ(joined(list.reverse()), "cba");

    EXPECT_EQ(joined(list), "abc");
}

TEST(SPList, sortMakesANewListInTheOrderOfBytes)
{
    SPList<SPString> list = listOf("bca");
    list.push("B");
    list.push("\xFF");
    list.push("ab");
    list.push("");

    EXPECT_EQ(joined(list.sort()), ".Baabbc\xFF");
    EXPECT_EQ(joined(list),
              "bcaB\xFF"
              "ab.");
    EXPECT_EQ(joined(SPList<SPString>().sort()), "");
    EXPECT_EQ(joined(listOf("x").sort()), "x");
}

TEST(SPList, sortComparesBehindEqualBeginnings)
{
    SPList<SPString> list;
    for (char const* text : {"12345678b", "12345678", "12345678a", "1234567", "1234567\xFF", "12345678ab"})
        list.push(text);

    SPList<SPString> const sorted = list.sort();

    char const* const expected[] = {"1234567",    "12345678",  "12345678a",
                                    "12345678ab", "12345678b", "1234567\xFF"};
    for (int i = 0; i < 6; ++i)
        EXPECT_STREQ(sorted[i], expected[i]);
}

TEST(SPList, sortKeepsTheOrderOfEqualElements)
{
    struct Pair {
        int key;
        int place;
        bool operator<(Pair const& other) const { return key < other.key; }
    };
    SPList<Pair> list;
    for (int i = 0; i < 1000; ++i)
        list.push(Pair{i * 7 % 5, i});

    SPList<Pair> const sorted = list.sort();

    for (int i = 1; i < 1000; ++i)
        EXPECT_TRUE(sorted[i - 1].key < sorted[i].key ||
                    (sorted[i - 1].key == sorted[i].key && sorted[i - 1].place < sorted[i].place));
}

TEST(SPList, sortOrdersLongListsToo)
{
    // Beginnings of every length up to twelve, many of them equal.
    std::mt19937 chance(1);
    SPList<SPString> list;
    std::vector<std::string> expected;
    for (int i = 0; i < 20000; ++i) {
        std::string text(chance() % 7, 'a');
        for (unsigned length = chance() % 7; text.size() < length + 6;)
            text += "ab\xFF"[chance() % 3];
        list.push(text.c_str());
        expected.push_back(text);
    }
    std::stable_sort(expected.begin(), expected.end());

    SPList<SPString> const sorted = list.sort();

    for (int i = 0; i < sorted.count(); ++i)
        ASSERT_EQ(std::string(sorted[i]), expected[std::size_t(i)]);
}

TEST(SPList, sortKeepsThePlace)
{
    SPList<SPString> list = listOf("cba");
    list.unshift("d");

    EXPECT_EQ(fieldsOf(list.sort()).first, 9);
    EXPECT_EQ(fieldsOf(list.sort()).allocated, 20);
}

TEST(SPList, spliceCuts)
{
    struct {
        int offset;
        int length;
        char const* cut;
        char const* rest;
    } const rows[] = {
        {0, 2, "ab", "cde"},   {1, 2, "bc", "ade"}, {3, 2, "de", "abc"},  {4, 1, "e", "abcd"},
        {5, 1, "", "abcde"},   {9, 1, "", "abcde"}, {2, 0, "", "abcde"},  {2, -1, "", "abcde"},
        {3, 4, "de..", "abc"}, {0, 5, "abcde", ""}, {-1, 1, "a", "bcde"},
    };
    for (auto const& row : rows) {
        SPList<SPString> list = listOf("abcde");

        SPList<SPString> const cut = list.splice(row.offset, row.length);

        EXPECT_EQ(joined(cut), row.cut) << row.offset << ", " << row.length;
        EXPECT_EQ(joined(list), row.rest) << row.offset << ", " << row.length;
    }
}

TEST(SPList, spliceWithoutALengthCutsToTheEnd)
{
    SPList<SPString> list = listOf("abcde");

    EXPECT_EQ(joined(list.splice(3)), "de");
    EXPECT_EQ(joined(list.splice(3)), "");
    EXPECT_EQ(joined(list), "abc");
    EXPECT_EQ(joined(list.splice(-7)), "abc");
    EXPECT_EQ(joined(list), "");
}

TEST(SPList, spliceReplaces)
{
    struct {
        int offset;
        int length;
        char const* elements;
        char const* cut;
        char const* result;
    } const rows[] = {
        {1, 2, "xyz", "bc", "axyzde"},    {0, 1, "xy", "a", "xybcde"},   {0, 0, "xy", "", "xyabcde"},
        {5, 0, "xy", "", "abcdexy"},      {9, 3, "xy", "", "abcdexy"},   {2, 1, "", "c", "abde"},
        {3, 9, "x", "de.......", "abcx"}, {0, 5, "xyz", "abcde", "xyz"},
    };
    for (auto const& row : rows) {
        SPList<SPString> list = listOf("abcde");

        SPList<SPString> const cut = list.splice(row.offset, row.length, listOf(row.elements));

        EXPECT_EQ(joined(cut), row.cut) << row.offset << ", " << row.length;
        EXPECT_EQ(joined(list), row.result) << row.offset << ", " << row.length;
    }
}

TEST(SPList, insertingBySpliceGrowsAsOneByOne)
{
    for (int offset : {0, 1, 7, 30})
        for (int count : {1, 5, 13, 50}) {
            SPList<SPString> list = listOf("0123456789abcdefghijklmnopqrst");
            SPList<SPString> oneByOne = list;
            SPList<SPString> elements;
            for (int i = 0; i < count; ++i)
                elements.push(SPString(std::to_string(i).c_str()));

            list.splice(offset, 0, elements);
            for (int i = 0; i < count; ++i)
                oneByOne.add(offset + i, elements[i]);

            EXPECT_EQ(joined(list), joined(oneByOne));
            EXPECT_EQ(fieldsOf(list).first, fieldsOf(oneByOne).first) << offset << " " << count;
            EXPECT_EQ(fieldsOf(list).allocated, fieldsOf(oneByOne).allocated);
        }
}

TEST(SPList, theLastElementStaysInTheSlotsThatSpliceFrees)
{
    SPList<SPString> middle = listOf("abcde");
    SPList<SPString> end = listOf("abcde");
    SPList<SPString> front = listOf("abcde");

    middle.splice(1, 2);
    end.splice(2);
    front.splice(0, 2);

    EXPECT_EQ(joined(middle), "ade");
    middle[5];
    EXPECT_EQ(joined(middle), "adeee.");
    end[4];
    EXPECT_EQ(joined(end), "abeee");
    EXPECT_EQ(fieldsOf(front).first, 12);
}

TEST(SPList, spliceOfALengthThatNoListHasFails)
{
    SPList<SPString> list = listOf("abc");

    EXPECT_THROW(list.splice(1, INT_MAX), std::bad_alloc);

    EXPECT_EQ(joined(list), "abc");
}

TEST(SPList, splicesOfLongListsTakeLinearTime)
{
    SPList<int> list;
    for (int i = 0; i < 400000; ++i)
        list.push(i);

    SPList<int> const cut = list.splice(100000, 200000);
    list.splice(50000, 0, cut);

    EXPECT_EQ(list.count(), 400000);
    EXPECT_EQ(list[50000], 100000);
    EXPECT_EQ(list[249999], 299999);
    EXPECT_EQ(list[250000], 50000);
    EXPECT_EQ(list[399999], 399999);
}

TEST(SPList, aQueueOfConstantLengthStaysWhereItIs)
{
    SPList<int> queue;
    for (int i = 0; i < 1000; ++i)
        queue.push(i);

    for (int i = 1000; i < 300000; ++i) {
        ASSERT_EQ(queue.shift(), i - 1000);
        queue.push(i);
    }

    EXPECT_EQ(queue.count(), 1000);
    EXPECT_LE(fieldsOf(queue).allocated, 1040);
}

TEST(SPList, aStackAtTheFrontGrowsToo)
{
    SPList<int> stack;

    for (int i = 0; i < 300000; ++i)
        stack.unshift(i);

    for (int i = 300000; i-- > 0;)
        ASSERT_EQ(stack.shift(), i);
}
