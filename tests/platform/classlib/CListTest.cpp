#include "platform/classlib/CList.h"
#include "platform/classlib/CStringList.h"

#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using Numbers = CList<int>;

static_assert(std::is_base_of_v<CObject, Numbers>);
static_assert(std::has_virtual_destructor_v<Numbers>);
static_assert(!std::is_copy_constructible_v<Numbers>);
static_assert(!std::is_copy_assignable_v<CStringList>);

template <class List>
auto contents(List const& list)
{
    std::vector<std::decay_t<decltype(list.GetHead())>> result;
    for (POSITION at = list.GetHeadPosition(); at;)
        result.push_back(list.GetNext(at));
    return result;
}

template <class List>
auto backwards(List const& list)
{
    std::vector<std::decay_t<decltype(list.GetHead())>> result;
    for (POSITION at = list.GetTailPosition(); at;)
        result.push_back(list.GetPrev(at));
    return result;
}

void fill(Numbers& list, int count)
{
    for (int i = 0; i < count; ++i)
        list.AddTail(i);
}

using Expected = std::vector<int>;

// Counts how many of its kind are alive; throws where it is told to.
struct Counted {
    Counted() { ++alive; }
    Counted(Counted const& other) : number(other.number)
    {
        if (copiesUntilFailure-- == 0)
            throw std::runtime_error("copy");
        ++alive;
    }
    Counted& operator=(Counted const&) = default;
    ~Counted() { --alive; }

    int number = 0;
    static inline int alive = 0;
    static inline int copiesUntilFailure = -1;
};

}  // namespace

TEST(CList, isEmptyAtFirst)
{
    Numbers const list;

    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(list.GetSize(), 0);
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    EXPECT_EQ(list.GetTailPosition(), nullptr);
    EXPECT_EQ(contents(list), Expected{});
}

TEST(CList, addsAtBothEnds)
{
    Numbers list;

    POSITION const two = list.AddTail(2);
    list.AddHead(1);
    list.AddTail(3);

    EXPECT_EQ(contents(list), (Expected{1, 2, 3}));
    EXPECT_EQ(backwards(list), (Expected{3, 2, 1}));
    EXPECT_EQ(list.GetAt(two), 2);
    EXPECT_EQ(list.GetHead(), 1);
    EXPECT_EQ(list.GetTail(), 3);
    EXPECT_EQ(list.GetCount(), 3);
    EXPECT_FALSE(list.IsEmpty());
}

TEST(CList, addsCopiesOfAListInItsOrder)
{
    Numbers list;
    fill(list, 2);
    Numbers other;
    other.AddTail(7);
    other.AddTail(8);

    list.AddHead(&other);
    list.AddTail(&other);

    EXPECT_EQ(contents(list), (Expected{7, 8, 0, 1, 7, 8}));
    EXPECT_EQ(contents(other), (Expected{7, 8}));
}

TEST(CList, addsItsOwnElementsOnce)
{
    Numbers list;
    fill(list, 3);

    list.AddTail(&list);
    EXPECT_EQ(contents(list), (Expected{0, 1, 2, 0, 1, 2}));

    list.AddHead(&list);
    EXPECT_EQ(list.GetCount(), 12);
    EXPECT_EQ(contents(list), (Expected{0, 1, 2, 0, 1, 2, 0, 1, 2, 0, 1, 2}));
}

TEST(CList, removesAtBothEndsAndGivesTheElement)
{
    Numbers list;
    fill(list, 3);

    EXPECT_EQ(list.RemoveHead(), 0);
    EXPECT_EQ(list.RemoveTail(), 2);
    EXPECT_EQ(contents(list), Expected{1});
    EXPECT_EQ(list.RemoveTail(), 1);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetTailPosition(), nullptr);
}

TEST(CList, meetsTheEndsOfAnEmptyListAndNullWithAnException)
{
    Numbers list;
    POSITION none = nullptr;

    EXPECT_THROW(list.GetHead(), std::out_of_range);
    EXPECT_THROW(list.GetTail(), std::out_of_range);
    EXPECT_THROW(list.RemoveHead(), std::out_of_range);
    EXPECT_THROW(list.RemoveTail(), std::out_of_range);
    EXPECT_THROW(list.GetAt(none), std::out_of_range);
    EXPECT_THROW(list.SetAt(none, 1), std::out_of_range);
    EXPECT_THROW(list.RemoveAt(none), std::out_of_range);
    EXPECT_THROW(list.GetNext(none), std::out_of_range);
    EXPECT_THROW(list.GetPrev(none), std::out_of_range);
}

TEST(CList, readsAndWritesAtAPosition)
{
    Numbers list;
    fill(list, 3);
    POSITION at = list.GetHeadPosition();

    list.GetNext(at) = 10;
    list.SetAt(at, 11);
    list.GetTail() = 12;

    EXPECT_EQ(contents(list), (Expected{10, 11, 12}));
}

TEST(CList, insertsAroundAPosition)
{
    Numbers list;
    POSITION const middle = list.AddTail(5);

    EXPECT_EQ(list.GetAt(list.InsertBefore(middle, 4)), 4);
    EXPECT_EQ(list.GetAt(list.InsertAfter(middle, 6)), 6);
    list.InsertBefore(list.GetHeadPosition(), 3);
    list.InsertAfter(list.GetTailPosition(), 7);
    list.InsertBefore(nullptr, 2);
    list.InsertAfter(nullptr, 8);

    EXPECT_EQ(contents(list), (Expected{2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(backwards(list), (Expected{8, 7, 6, 5, 4, 3, 2}));
}

TEST(CList, letsTheCurrentElementBeRemovedOnAWalk)
{
    Numbers list;
    fill(list, 10);

    for (POSITION at = list.GetHeadPosition(); at;) {
        POSITION const current = at;
        if (list.GetNext(at) % 3 == 0)
            list.RemoveAt(current);
    }

    EXPECT_EQ(contents(list), (Expected{1, 2, 4, 5, 7, 8}));
    EXPECT_EQ(backwards(list), (Expected{8, 7, 5, 4, 2, 1}));
}

TEST(CList, findsAnElementFromTheHeadOrBehindAPosition)
{
    Numbers list;
    for (int number : {1, 2, 1, 3})
        list.AddTail(number);

    POSITION const first = list.Find(1);
    POSITION const second = list.Find(1, first);

    EXPECT_EQ(first, list.GetHeadPosition());
    EXPECT_EQ(second, list.FindIndex(2));
    EXPECT_EQ(list.Find(1, second), nullptr);
    EXPECT_EQ(list.Find(9), nullptr);
    EXPECT_EQ(list.Find(3, list.GetTailPosition()), nullptr);
}

TEST(CList, findsAnElementByItsNumber)
{
    Numbers list;
    fill(list, 5);

    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(list.GetAt(list.FindIndex(i)), i);
    EXPECT_EQ(list.FindIndex(5), nullptr);
    EXPECT_EQ(list.FindIndex(-1), nullptr);
}

TEST(CList, isWalkedByARangeLoop)
{
    Numbers list;
    fill(list, 3);

    for (int& number : list)
        number *= 2;

    EXPECT_EQ(std::vector<int>(list.begin(), list.end()), (Expected{0, 2, 4}));
    Numbers const& constant = list;
    EXPECT_EQ(*constant.begin(), 0);
    auto at = list.begin();
    EXPECT_EQ(*at++, 0);
    EXPECT_TRUE(at != list.end());
}

TEST(CList, isUsableAfterRemovingAll)
{
    Numbers list(3);
    fill(list, 10);

    list.RemoveAll();
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetHeadPosition(), nullptr);

    fill(list, 2);
    EXPECT_EQ(contents(list), (Expected{0, 1}));
}

TEST(CList, takesAnyBlockSize)
{
    for (int blockSize : {-1, 0, 1, 3, 1000}) {
        Numbers list(blockSize);
        fill(list, 20);
        EXPECT_EQ(list.GetCount(), 20) << blockSize;
        EXPECT_EQ(list.GetTail(), 19) << blockSize;
    }
}

TEST(CList, makesAndDestroysItsElements)
{
    {
        CList<Counted> list;
        list.AddTail(Counted());
        list.AddTail(Counted());
        list.AddTail(Counted());
        EXPECT_EQ(Counted::alive, 3);
        list.RemoveHead();
        EXPECT_EQ(Counted::alive, 2);
        list.RemoveAt(list.GetTailPosition());
        EXPECT_EQ(Counted::alive, 1);
        list.AddTail(&list);
        EXPECT_EQ(Counted::alive, 2);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(CList, isUnchangedWhenAnElementCannotBeCopied)
{
    CList<Counted> list;
    list.AddTail(Counted());
    Counted const element;

    Counted::copiesUntilFailure = 0;
    EXPECT_THROW(list.AddTail(element), std::runtime_error);
    Counted::copiesUntilFailure = -1;

    EXPECT_EQ(list.GetCount(), 1);
    list.AddTail(element);
    EXPECT_EQ(list.GetCount(), 2);
    list.RemoveAll();
    EXPECT_EQ(Counted::alive, 1);
}

TEST(CList, doesWhatAModelDoesOverRandomChanges)
{
    std::mt19937 random(20260113);
    Numbers list(3);
    std::list<int> model;
    for (int i = 0; i < 5000; ++i) {
        int const index = model.empty() ? 0 : static_cast<int>(random() % model.size());
        switch (random() % 6) {
        case 0:
            list.AddHead(i);
            model.push_front(i);
            break;
        case 1:
            list.AddTail(i);
            model.push_back(i);
            break;
        case 2:
            if (!model.empty()) {
                list.InsertAfter(list.FindIndex(index), i);
                model.insert(std::next(model.begin(), index + 1), i);
            }
            break;
        case 3:
            if (!model.empty()) {
                list.InsertBefore(list.FindIndex(index), i);
                model.insert(std::next(model.begin(), index), i);
            }
            break;
        default:
            if (!model.empty()) {
                list.RemoveAt(list.FindIndex(index));
                model.erase(std::next(model.begin(), index));
            }
        }
        ASSERT_EQ(list.GetCount(), static_cast<INT_PTR>(model.size()));
    }
    EXPECT_EQ(contents(list), std::vector<int>(model.begin(), model.end()));
    EXPECT_EQ(backwards(list), std::vector<int>(model.rbegin(), model.rend()));
}

TEST(CStringList, takesTextsOfEveryKind)
{
    CStringList list;
    CString const held("c");

    list.AddTail("b");
    list.AddTail(held);
    list.AddTail(CString("d"));
    list.AddHead("a");
    list.AddHead(held);
    list.AddHead(CString("e"));

    EXPECT_EQ(contents(list), (std::vector<CString>{"e", "c", "a", "b", "c", "d"}));
    EXPECT_EQ(list.GetAt(list.Find("b")), "b");
    EXPECT_EQ(list.Find("x"), nullptr);
    list.SetAt(list.FindIndex(0), "f");
    list.InsertAfter(list.FindIndex(0), "g");
    EXPECT_EQ(list.RemoveHead(), "f");
    EXPECT_EQ(list.RemoveHead(), "g");
}

TEST(CStringList, movesALongTextInAndOut)
{
    CStringList list;
    CString text('x', 100);
    char const* const block = text;

    list.AddTail(std::move(text));
    EXPECT_EQ(list.GetTail().GetString(), block);
    EXPECT_EQ(list.RemoveTail().GetString(), block);
}

TEST(CStringList, addsAList)
{
    CStringList list;
    list.AddTail("a");

    list.AddTail(&list);
    list.AddHead(&list);

    EXPECT_EQ(contents(list), (std::vector<CString>{"a", "a", "a", "a"}));
}

TEST(CStringList, hasAClassRecord)
{
    std::unique_ptr<CObject> const made(RUNTIME_CLASS(CStringList)->CreateObject());

    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CStringList)));
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_STREQ(made->GetRuntimeClass()->m_lpszClassName, "CStringList");
}
