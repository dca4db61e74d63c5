#include "text/SPListBase.h"

#include "tests/text/fieldsOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <string>
#include <utility>
#include <vector>

using zk::test::fieldsOf;
using zk::test::ListFields;

namespace {

template <class T>
void expectPlace(SPListBase<T> const& list, int cnt, int first, int allocated)
{
    ListFields<T> const fields = fieldsOf(list);
    EXPECT_EQ(fields.cnt, cnt);
    EXPECT_EQ(list.count(), cnt);
    EXPECT_EQ(fields.first, first);
    EXPECT_EQ(fields.allocated, allocated);
}

template <class T>
std::vector<T> elementsOf(SPListBase<T> const& list)
{
    std::vector<T> elements;
    for (int i = 0; i < list.count(); ++i)
        elements.push_back(list[i]);
    return elements;
}

SPListBase<SPString> listOf(std::initializer_list<char const*> texts)
{
    SPListBase<SPString> list;
    for (char const* text : texts)
        list.add(SPString(text));
    return list;
}

std::string joined(SPListBase<SPString> const& list)
{
    std::string text;
    for (int i = 0; i < list.count(); ++i)
        text += std::string(i ? "," : "") + static_cast<char const*>(list[i]);
    return text;
}

}  // namespace

TEST(SPListBase, startsInTheMiddleOf20Slots)
{
    SPListBase<SPString> list;

    expectPlace(list, 0, 10, 20);
    EXPECT_EQ(fieldsOf(list).allocinc, 20);
}

TEST(SPListBase, aSizeIsAlsoTheStep)
{
    SPListBase<SPString> list(7);

    expectPlace(list, 0, 3, 7);
    EXPECT_EQ(fieldsOf(list).allocinc, 7);
}

TEST(SPListBase, anIndexExtendsTheList)
{
    SPListBase<SPString> list;

    list[5] = "f";

    EXPECT_EQ(list.count(), 6);
    EXPECT_EQ(joined(list), ",,,,,f");
}

TEST(SPListBase, anIndexPastTheSlotsGrowsThem)
{
    SPListBase<SPString> list;

    list[10];

    // 20 - 20 + 10 + 10 more slots, centred as if 11 elements were there.
    expectPlace(list, 11, 15, 40);
}

TEST(SPListBase, addingAtTheEndOfTheArrayCentresInPlace)
{
    SPListBase<SPString> list;

    for (int i = 0; i < 10; ++i)
        list.add(SPString(std::to_string(i).c_str()));
    expectPlace(list, 10, 10, 20);
    list.add("10");

    expectPlace(list, 11, 5, 20);
    EXPECT_EQ(joined(list), "0,1,2,3,4,5,6,7,8,9,10");
}

TEST(SPListBase, aFullArrayGrowsByTheStep)
{
    SPListBase<SPString> list;
    std::vector<ListFields<SPString>> places;

    for (int i = 0; i < 20; ++i) {
        list.add("x");
        places.push_back(fieldsOf(list));
    }

    // Centred in place behind 10 and 15 elements; with 17 there is no room left on both sides.
    EXPECT_EQ(places[9].first, 10);
    EXPECT_EQ(places[10].first, 5);
    EXPECT_EQ(places[15].first, 3);
    EXPECT_EQ(places[16].first, 3);
    EXPECT_EQ(places[16].allocated, 20);
    EXPECT_EQ(places[17].first, 12);
    EXPECT_EQ(places[17].allocated, 40);
}

TEST(SPListBase, anEmptyListAtTheEndOfItsSlotsIsCentred)
{
    SPList<SPString> list;
    for (int i = 0; i < 10; ++i)
        list.shift();
    expectPlace(list, 0, 20, 20);

    list.add("a");

    expectPlace(list, 1, 10, 20);
}

TEST(SPListBase, eraseKeepsTheElementsInTheirSlots)
{
    SPListBase<SPString> list = listOf({"a", "b"});

    list.erase();

    expectPlace(list, 0, 10, 20);
    EXPECT_EQ(list[1], "b");
    EXPECT_EQ(list.count(), 2);
    EXPECT_EQ(list[0], "a");
    EXPECT_EQ(list[2], "");
}

TEST(SPListBase, insertsInFront)
{
    SPListBase<SPString> list = listOf({"a", "b"});

    list.add(0, "x");

    expectPlace(list, 3, 9, 20);
    EXPECT_EQ(joined(list), "x,a,b");
}

TEST(SPListBase, insertsInTheMiddle)
{
    SPListBase<SPString> list = listOf({"a", "b", "c"});

    list.add(1, "x");

    expectPlace(list, 4, 10, 20);
    EXPECT_EQ(joined(list), "a,x,b,c");
}

TEST(SPListBase, insertsInFrontOfAListWithoutRoomThere)
{
    SPListBase<SPString> list;
    for (int i = 0; i < 30; ++i)
        list.add(0, SPString(std::to_string(i).c_str()));

    EXPECT_EQ(list.count(), 30);
    EXPECT_EQ(list[0], "29");
    EXPECT_EQ(list[29], "0");
}

TEST(SPListBase, insertsItsOwnElement)
{
    SPListBase<SPString> list = listOf({"a", "b", "c"});

    list.add(1, list[2]);
    list.add(0, list[1]);

    EXPECT_EQ(joined(list), "c,a,c,b,c");
}

TEST(SPListBase, whatIsInsertedPastTheEndShowsWhenAnIndexReachesIt)
{
    SPListBase<SPString> list = listOf({"a"});

    list.add(4, "far");

    EXPECT_EQ(list.count(), 2);
    EXPECT_EQ(list[1], "");
    EXPECT_EQ(list[4], "far");
    EXPECT_EQ(list.count(), 5);
}

TEST(SPListBase, insertingFarPastTheEndGrowsTheArray)
{
    SPListBase<SPString> list = listOf({"a"});

    list.add(1000, "far");

    EXPECT_EQ(list.count(), 2);
    EXPECT_EQ(list[1000], "far");
    EXPECT_EQ(list[0], "a");
}

TEST(SPListBase, addsItsOwnElementWhenFull)
{
    for (int count = 1; count < 60; ++count) {
        SPListBase<SPString> list;
        for (int i = 0; i < count; ++i)
            list.add("first");

        list.add(list[0]);

        EXPECT_EQ(list[count], "first");
        EXPECT_EQ(list[0], "first");
    }
}

TEST(SPListBase, addingTheSlotItselfSkipsTheCopy)
{
    SPListBase<SPString> list = listOf({"a", "b"});
    SPString const& slot = list[1];
    list.erase();
    list[0];

    list.add(slot);

    EXPECT_EQ(joined(list), "a,b");
}

TEST(SPListBase, aListThatGrowsByOneFindsItsSlots)
{
    for (int size : {1, 0, -3, 2, 3}) {
        SPListBase<SPString> list(size);
        std::string expected;

        for (int i = 0; i < 50; ++i) {
            list.add(SPString(std::to_string(i).c_str()));
            expected += (i ? "," : "") + std::to_string(i);
        }

        EXPECT_EQ(joined(list), expected);
        list.add(0, "front");
        EXPECT_EQ(list[0], "front");
        EXPECT_EQ(list[51], "");
        EXPECT_EQ(list.count(), 52);
    }
}

TEST(SPListBase, copiesKeepTheirPlaces)
{
    SPListBase<SPString> list = listOf({"a", "b"});
    list.add(0, "x");

    SPListBase<SPString> copy(list);
    SPListBase<SPString> assigned(3);
    assigned = list;
    list[0] = "changed";

    expectPlace(copy, 3, 9, 20);
    expectPlace(assigned, 3, 9, 20);
    EXPECT_EQ(joined(copy), "x,a,b");
    EXPECT_EQ(joined(assigned), "x,a,b");
}

TEST(SPListBase, assignmentToItselfDoesNothing)
{
    SPListBase<SPString> list = listOf({"a", "b"});
    SPListBase<SPString> const& same = list;

    list = same;

    EXPECT_EQ(joined(list), "a,b");
}

TEST(SPListBase, aListThatWasMovedFromIsEmptyAndUsable)
{
    SPListBase<SPString> list = listOf({"a", "b"});

    SPListBase<SPString> target(std::move(list));

    EXPECT_EQ(joined(target), "a,b");
    EXPECT_EQ(list.count(), 0);
    list.add("c");
    list.add(0, "d");
    EXPECT_EQ(list[2], "");
    EXPECT_EQ(joined(list), "d,c,");
}

TEST(SPListBase, aConstantListIsNotExtended)
{
    SPListBase<SPString> const list = listOf({"a"});

    EXPECT_EQ(list[3], "");
    EXPECT_EQ(list[1000], "");
    EXPECT_EQ(list[INT_MAX], "");
    EXPECT_EQ(list[INT_MIN], "");
    EXPECT_EQ(list.count(), 1);
}

TEST(SPListBase, anIndexBeforeTheSlotsStaysInsideTheArray)
{
    SPListBase<SPString> list = listOf({"a"});

    EXPECT_EQ(list[-1], "");
    EXPECT_EQ(list[-1000], "");
    EXPECT_EQ(list.count(), 1);
}

TEST(SPListBase, anIndexThatCannotBeHadLeavesTheListAlone)
{
    SPListBase<SPString> list = listOf({"a", "b"});

    EXPECT_THROW(list[INT_MAX], std::bad_alloc);

    EXPECT_EQ(joined(list), "a,b");
}

// The fields of a list whose rules are followed literally, on an array of their own.
class LiteralList {
public:
    int cnt = 0, first = 10, allocated = 20;
    int const allocinc = 20;

    void grow(int amount = 0, int newcnt = -1)
    {
        if (amount < 1) {
            int const ideal = (allocated >> 1) - (cnt >> 1);
            if (ideal > 0 && cnt + ideal + 1 < allocated) {
                first = ideal;
                return;
            }
            amount = allocinc;
        }
        if (newcnt < 0)
            newcnt = cnt;
        allocated += amount;
        first = (allocated >> 1) - (newcnt >> 1);
    }
    void add()
    {
        if (first + cnt >= allocated)
            grow();
        ++cnt;
    }
    void unshift()
    {
        if (first < 1)
            grow();
        --first;
        ++cnt;
    }
    void shift()
    {
        at(0);
        ++first;
        --cnt;
    }
    void at(int i)
    {
        if (first + i >= allocated)
            grow(allocinc - allocated + first + i, i + 1);
        if (i >= cnt)
            cnt = i + 1;
    }
};

TEST(SPListBase, placesFollowTheRulesThroughAnyOrderOfOperations)
{
    std::mt19937 chance(1);
    for (int round = 0; round < 40; ++round) {
        SPList<SPString> list;
        LiteralList literal;
        std::vector<std::string> expected;
        unsigned const lean = chance() % 5;

        for (int step = 0; step < 1500; ++step) {
            std::string const value = std::to_string(step);
            unsigned const kind = chance() % 10;
            if (kind < 3 + lean) {
                list.push(SPString(value.c_str()));
                literal.add();
                expected.push_back(value);
            } else if (kind < 6) {
                list.unshift(SPString(value.c_str()));
                literal.unshift();
                expected.insert(expected.begin(), value);
            } else if (kind < 9) {
                list.shift();
                literal.shift();
                if (!expected.empty())
                    expected.erase(expected.begin());
            } else {
                int const index = int(chance() % 3);
                if (index < list.count()) {
                    list[index] = value.c_str();
                    literal.at(index);
                    expected[std::size_t(index)] = value;
                }
            }
            expectPlace(list, literal.cnt, literal.first, literal.allocated);
        }

        ASSERT_EQ(std::size_t(list.count()), expected.size());
        for (int i = 0; i < list.count(); ++i)
            EXPECT_STREQ(list[i], expected[std::size_t(i)].c_str());
    }
}

TEST(SPListBase, aMillionElementsGrowByTheStep)
{
    SPListBase<int> list;

    for (int i = 0; i < 1000000; ++i)
        list.add(i);

    EXPECT_EQ(list.count(), 1000000);
    EXPECT_EQ(list[0], 0);
    EXPECT_EQ(list[123456], 123456);
    EXPECT_EQ(list[999999], 999999);
    // Linear in the step: at most a step, and the room that centring leaves, is free.
    EXPECT_LE(fieldsOf(list).allocated, 1000020);
}

namespace {

// Counts the objects alive, and can be told to fail.
struct Brittle {
    static inline int alive = 0;
    static inline int copiesLeft = INT_MAX;
    int value = 0;

    Brittle() { ++alive; }
    explicit Brittle(int v) : value(v) { ++alive; }
    Brittle(Brittle const& other) : value(other.value)
    {
        if (--copiesLeft < 0)
            throw std::bad_alloc();
        ++alive;
    }
    Brittle& operator=(Brittle const&) = default;
    ~Brittle() { --alive; }
};

}  // namespace

TEST(SPListBase, aFailureToGrowKeepsTheOldArray)
{
    {
        SPListBase<Brittle> list;
        for (int i = 0; i < 17; ++i)
            list.add(Brittle(i));
        Brittle const next(17);
        Brittle::copiesLeft = 5;

        EXPECT_THROW(list.add(next), std::bad_alloc);

        Brittle::copiesLeft = INT_MAX;
        EXPECT_EQ(list.count(), 17);
        for (int i = 0; i < 17; ++i)
            EXPECT_EQ(list[i].value, i);
    }
    EXPECT_EQ(Brittle::alive, 0);
}

TEST(SPListBase, everyElementIsDestroyedOnce)
{
    {
        SPList<Brittle> list;
        for (int i = 0; i < 500; ++i)
            list.push(Brittle(i));
        for (int i = 0; i < 400; ++i)
            list.shift();
        SPList<Brittle> copy(list);
        copy = list.splice(10, 20);
        list[1000];
    }

    EXPECT_EQ(Brittle::alive, 0);
}
