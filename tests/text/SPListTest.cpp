#include "text/SPList.h"

#include "tests/text/fieldsOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <new>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
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

TEST(SPList, splicesLongLists)
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

namespace {

// Has the value -1 once it was moved from or destroyed.
struct Clearing {
    int value = 0;
    Clearing() = default;
    explicit Clearing(int v) : value(v) { }
    Clearing(Clearing const&) = default;
    Clearing(Clearing&& other) noexcept : value(std::exchange(other.value, -1)) { }
    Clearing& operator=(Clearing const&) = default;
    Clearing& operator=(Clearing&& other) noexcept
    {
        value = std::exchange(other.value, -1);
        return *this;
    }
    ~Clearing() { *const_cast<int volatile*>(&value) = -1; }
};

}  // namespace

TEST(SPList, itsOwnElementCanBeAddedWhateverRoomThereIs)
{
    for (int size : {20, 1, 3}) {
        SPList<Clearing> pushed(size), unshifted(size), added(size), inserted(size);
        for (SPList<Clearing>* list : {&pushed, &unshifted, &added, &inserted})
            for (int i = 0; i < 2; ++i)
                list->push(Clearing(7));
        for (int count = 2; count < 60; ++count) {
            pushed.push(pushed[0]);
            unshifted.unshift(unshifted[count - 1]);
            added.add(0, added[count - 1]);
            inserted.add(1, inserted[count - 1]);
        }
        for (int i = 0; i < 60; ++i) {
            EXPECT_EQ(pushed[i].value, 7) << i;
            EXPECT_EQ(unshifted[i].value, 7) << i;
            EXPECT_EQ(added[i].value, 7) << i;
            EXPECT_EQ(inserted[i].value, 7) << i;
        }
    }
}

TEST(SPList, insertsInTheMiddleOfListsOfAnySize)
{
    for (int size : {0, 1, 2}) {
        SPList<SPString> list(size);
        list.push("a");
        for (int i = 0; i < 50; ++i)
            list.add(1, SPString(static_cast<char>('b' + i % 20)));

        EXPECT_EQ(list.count(), 51);
        EXPECT_EQ(list[0], "a");
        EXPECT_EQ(list[1], "k");
        EXPECT_EQ(list[50], "b");
    }
}

TEST(SPList, everyOperationServesAListThatWasMovedFrom)
{
    for (int size : {20, 1}) {
        auto const movedFrom = [size] {
            SPList<SPString> list(size);
            list.push("old");
            SPList<SPString> const taken(std::move(list));
            return list;
        };
        auto const with = [&](auto operation) {
            SPList<SPString> list(size);
            list.push("old");
            SPList<SPString> const taken(std::move(list));
            operation(list);
            return joined(list);
        };
        EXPECT_EQ(movedFrom().count(), 0);
        EXPECT_EQ(with([](auto& list) { list[-1] = "a"; }), "");
        EXPECT_EQ(with([](auto& list) { EXPECT_EQ(list.shift(), ""); }), "");
        EXPECT_EQ(with([](auto& list) { EXPECT_EQ(list.pop(), ""); }), "");
        EXPECT_EQ(with([](auto& list) { list.unshift("a"); }), "a");
        EXPECT_EQ(with([](auto& list) { list.push("a"); }), "a");
        EXPECT_EQ(with([](auto& list) { list.add(0, "a"); }), "a");
        EXPECT_EQ(with([](auto& list) { EXPECT_EQ(list.splice(0).count(), 0); }), "");
        EXPECT_EQ(with([](auto& list) { EXPECT_EQ(list.sort().count() + list.reverse().count(), 0); }), "");
        EXPECT_EQ(with([](auto& list) { EXPECT_EQ(SPList<SPString>(list).count(), 0); }), "");
    }
}

TEST(SPList, elementsThatAreOnlyMovedByTheirOwnMeansKeepTheirPlaces)
{
    std::mt19937 chance(3);
    SPList<std::string> list;
    std::vector<std::string> expected;
    for (int step = 0; step < 5000; ++step) {
        std::string const value = "a value that needs a block of its own " + std::to_string(step);
        unsigned const kind = chance() % 8;
        if (kind < 3) {
            list.push(value);
            expected.push_back(value);
        } else if (kind < 6) {
            list.unshift(value);
            expected.insert(expected.begin(), value);
        } else if (!expected.empty()) {
            EXPECT_EQ(list.shift(), expected.front());
            expected.erase(expected.begin());
        }
    }
    ASSERT_EQ(std::size_t(list.count()), expected.size());
    for (int i = 0; i < list.count(); ++i)
        EXPECT_EQ(list[i], expected[std::size_t(i)]);
}

TEST(SPList, spliceBeyondTheEndGrowsAsIndexAfterIndexDoes)
{
    for (int length : {5, 12, 40, 1000}) {
        SPList<SPString> list = listOf("a");
        SPList<SPString> indexed = listOf("a");

        SPList<SPString> const cut = list.splice(0, length);
        for (int i = 0; i < length; ++i)
            indexed[i];

        EXPECT_EQ(cut.count(), length);
        EXPECT_EQ(fieldsOf(list).allocated, fieldsOf(indexed).allocated) << length;
        EXPECT_EQ(fieldsOf(list).first, fieldsOf(indexed).first + length) << length;
    }
}

TEST(SPList, aViewThatEndsBeyondAllNumbersIsEmpty)
{
    SPList<SPString> list = listOf("abc");

    EXPECT_EQ(SPList<SPString>(list(INT_MAX, 2)).count(), 0);
    EXPECT_EQ(SPList<SPString>(list(2, 0)).count(), 0);
    EXPECT_EQ(SPList<SPString>(list(2, -1)).count(), 0);
    EXPECT_EQ(joined(SPList<SPString>(list(Slice(-1, 1)))), ".b");
    EXPECT_EQ(list.count(), 3);
}

TEST(SPList, sortKeepsTheStepOfItsListAndOtherResultsHaveTheirOwn)
{
    SPList<SPString> list(7);
    for (char const* text : {"b", "a", "c"})
        list.push(text);

    EXPECT_EQ(fieldsOf(list.sort()).allocinc, 7);
    EXPECT_EQ(fieldsOf(list.reverse()).allocinc, 20);
    EXPECT_EQ(fieldsOf(list.splice(1)).allocinc, 20);
    EXPECT_EQ(fieldsOf(list).allocinc, 7);
}

TEST(SPList, sortOfOneElementIsACopy)
{
    SPList<SPString> list = listOf("ab");
    list.pop();

    SPList<SPString> sorted = list.sort();

    EXPECT_EQ(joined(sorted), "a");
    EXPECT_EQ(sorted[1], "b");  // the old element in the slot behind
}

namespace {

// Counts how many copies may still be made; moves never fail.
struct Costly {
    static inline int copiesLeft = INT_MAX;
    int value = 0;

    Costly() = default;
    explicit Costly(int v) : value(v) { }
    Costly(Costly const& other) : value(other.value) { spend(); }
    Costly(Costly&&) noexcept = default;
    Costly& operator=(Costly const& other)
    {
        spend();
        value = other.value;
        return *this;
    }
    Costly& operator=(Costly&&) noexcept = default;

private:
    static void spend()
    {
        if (copiesLeft == 0)
            throw std::bad_alloc();
        --copiesLeft;
    }
};

SPList<Costly> numbers(int from, int count)
{
    SPList<Costly> list;
    for (int i = 0; i < count; ++i)
        list.push(Costly(from + i));
    return list;
}

std::vector<int> valuesOf(SPList<Costly> const& list)
{
    std::vector<int> values;
    for (int i = 0; i < list.count(); ++i)
        values.push_back(list[i].value);
    return values;
}

}  // namespace

TEST(SPList, spliceDoesAllOrNothing)
{
    for (int offset : {0, 1, 5, 14}) {
        for (int length : {0, 1, 12, 40}) {
            for (int copies = 0;; ++copies) {
                SPList<Costly> list = numbers(0, 15);
                SPList<Costly> const more = numbers(100, 30);
                std::vector<int> const before = valuesOf(list);
                bool failed = false;
                Costly::copiesLeft = copies;
                try {
                    list.splice(offset, length, more);
                } catch (std::bad_alloc const&) {
                    failed = true;
                }
                Costly::copiesLeft = INT_MAX;
                if (!failed) {
                    EXPECT_EQ(list.count(), 15 - std::min(length, 15 - offset) + 30);
                    EXPECT_EQ(list[offset].value, 100);
                    break;
                }
                ASSERT_EQ(valuesOf(list), before) << offset << " " << length << " " << copies;
            }
        }
    }
}
