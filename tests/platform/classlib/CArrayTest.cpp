#include "platform/classlib/CArray.h"
#include "platform/classlib/CPtrArray.h"
#include "platform/classlib/CStringArray.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <random>
#include <stdexcept>
#include <type_traits>
#include <vector>

namespace {

using Numbers = CArray<int>;
using Expected = std::vector<int>;

static_assert(std::is_base_of_v<CObject, Numbers>);
static_assert(!std::is_copy_constructible_v<Numbers>);

template <class Array>
auto contents(Array const& array)
{
    return std::vector<std::decay_t<decltype(array.GetAt(0))>>(array.begin(), array.end());
}

void fill(Numbers& array, int count)
{
    for (int i = 0; i < count; ++i)
        array.Add(i);
}

struct Counted {
    explicit Counted(int value = 0) : number(value) { ++alive; }
    Counted(Counted const& other) : number(other.number)
    {
        if (copiesUntilFailure-- == 0)
            throw std::runtime_error("copy");
        ++alive;
    }
    Counted& operator=(Counted const&) = default;
    ~Counted() { --alive; }

    int number;
    static inline int alive = 0;
    static inline int copiesUntilFailure = -1;
};

}  // namespace

TEST(CArray, isEmptyAtFirst)
{
    Numbers const array;

    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.GetCount(), 0);
    EXPECT_EQ(array.GetUpperBound(), -1);
    EXPECT_EQ(array.GetData(), nullptr);
}

TEST(CArray, addsElementsAndGivesTheirIndex)
{
    Numbers array;

    EXPECT_EQ(array.Add(5), 0);
    EXPECT_EQ(array.Add(6), 1);
    EXPECT_EQ(contents(array), (Expected{5, 6}));
    EXPECT_EQ(array.GetUpperBound(), 1);
    EXPECT_EQ(array.GetData()[1], 6);
}

TEST(CArray, readsAndWritesElements)
{
    Numbers array;
    fill(array, 4);

    array[0] = 10;
    array.SetAt(1, 11);
    array.ElementAt(2) = 12;
    array.GetAt(3) = 13;

    Numbers const& constant = array;
    EXPECT_EQ(constant[0], 10);
    EXPECT_EQ(constant.GetAt(1), 11);
    EXPECT_EQ(constant.ElementAt(2), 12);
    EXPECT_EQ(constant.GetData()[3], 13);
}

TEST(CArray, meetsAnIndexOutsideWithAnException)
{
    Numbers array;
    fill(array, 3);

    for (INT_PTR index : {INT_PTR(-1), INT_PTR(3), std::numeric_limits<INT_PTR>::min(),
                          std::numeric_limits<INT_PTR>::max()}) {
        EXPECT_THROW(array[index], std::out_of_range);
        EXPECT_THROW(array.GetAt(index), std::out_of_range);
        EXPECT_THROW(array.ElementAt(index), std::out_of_range);
        EXPECT_THROW(array.SetAt(index, 1), std::out_of_range);
        EXPECT_THROW(array.RemoveAt(index), std::out_of_range);
    }
    EXPECT_THROW(array.SetAtGrow(-1, 1), std::out_of_range);
    EXPECT_THROW(array.InsertAt(-1, 1), std::out_of_range);
    EXPECT_THROW(array.InsertAt(0, 1, -1), std::out_of_range);
    EXPECT_THROW(array.InsertAt(-1, &array), std::out_of_range);
    EXPECT_THROW(array.SetSize(-1), std::out_of_range);
    EXPECT_THROW(array.RemoveAt(2, 2), std::out_of_range);
    EXPECT_THROW(array.RemoveAt(0, -1), std::out_of_range);
    EXPECT_EQ(contents(array), (Expected{0, 1, 2}));
}

TEST(CArray, changesItsSizeAtTheEnd)
{
    Numbers array;
    fill(array, 3);

    array.SetSize(5);
    EXPECT_EQ(contents(array), (Expected{0, 1, 2, 0, 0}));
    array.SetSize(2, 100);
    EXPECT_EQ(contents(array), (Expected{0, 1}));
    array.SetSize(0);
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.GetData(), nullptr);
}

TEST(CArray, addsMemoryInStepsOfGrowBy)
{
    Numbers array;
    array.SetSize(1, 100);

    array.Add(1);
    int const* const data = array.GetData();
    fill(array, 98);

    EXPECT_EQ(array.GetData(), data);
    EXPECT_EQ(array.GetSize(), 100);
}

TEST(CArray, grownByAnIndexFillsTheGap)
{
    Numbers array;
    array.Add(1);

    array.SetAtGrow(0, 5);
    array.SetAtGrow(3, 7);

    EXPECT_EQ(contents(array), (Expected{5, 0, 0, 7}));
}

TEST(CArray, insertsBeforeAnIndex)
{
    Numbers array;
    fill(array, 3);

    array.InsertAt(1, 10);
    EXPECT_EQ(contents(array), (Expected{0, 10, 1, 2}));
    array.InsertAt(4, 11, 2);
    EXPECT_EQ(contents(array), (Expected{0, 10, 1, 2, 11, 11}));
    array.InsertAt(8, 12);
    EXPECT_EQ(contents(array), (Expected{0, 10, 1, 2, 11, 11, 0, 0, 12}));
    array.InsertAt(0, 13, 0);
    EXPECT_EQ(array.GetSize(), 9);
}

TEST(CArray, insertsAnotherArray)
{
    Numbers array;
    fill(array, 3);
    Numbers other;
    other.Add(10);
    other.Add(11);

    array.InsertAt(1, &other);
    EXPECT_EQ(contents(array), (Expected{0, 10, 11, 1, 2}));
    array.InsertAt(6, &other);
    EXPECT_EQ(contents(array), (Expected{0, 10, 11, 1, 2, 0, 10, 11}));
    Numbers const empty;
    array.InsertAt(0, &empty);
    EXPECT_EQ(array.GetSize(), 8);
}

TEST(CArray, removesElements)
{
    Numbers array;
    fill(array, 6);

    array.RemoveAt(0);
    EXPECT_EQ(contents(array), (Expected{1, 2, 3, 4, 5}));
    array.RemoveAt(1, 2);
    EXPECT_EQ(contents(array), (Expected{1, 4, 5}));
    array.RemoveAt(1, 2);
    EXPECT_EQ(contents(array), Expected{1});
    array.RemoveAt(1, 0);
    EXPECT_EQ(array.GetSize(), 1);
    array.RemoveAll();
    EXPECT_TRUE(array.IsEmpty());
}

TEST(CArray, appendsAndCopiesArrays)
{
    Numbers array;
    fill(array, 2);
    Numbers other;
    other.Add(7);

    EXPECT_EQ(array.Append(other), 2);
    EXPECT_EQ(contents(array), (Expected{0, 1, 7}));
    EXPECT_EQ(array.Append(array), 3);
    EXPECT_EQ(contents(array), (Expected{0, 1, 7, 0, 1, 7}));
    other.Copy(array);
    EXPECT_EQ(contents(other), contents(array));
    other.Copy(other);
    EXPECT_EQ(other.GetSize(), 6);
}

TEST(CArray, takesItsOwnElementsAsArguments)
{
    CStringArray array;
    array.Add(CString('a', 50));
    for (int i = 0; i < 40; ++i)
        array.Add(array[0]);
    array.InsertAt(0, array[0], 3);
    array.SetAtGrow(100, array[0]);

    EXPECT_EQ(array.GetSize(), 101);
    EXPECT_EQ(array[43], CString('a', 50));
    EXPECT_EQ(array[100], CString('a', 50));
    EXPECT_EQ(array[60], "");
}

TEST(CArray, givesExtraMemoryBack)
{
    Numbers array;
    array.SetSize(10, 1000);
    array.Add(1);
    int const* const before = array.GetData();

    array.FreeExtra();
    EXPECT_EQ(array.GetSize(), 11);
    EXPECT_EQ(array[10], 1);
    EXPECT_NE(array.GetData(), before);
    array.FreeExtra();
    array.RemoveAt(0, 11);
    array.FreeExtra();
    EXPECT_EQ(array.GetData(), nullptr);
}

TEST(CArray, makesAndDestroysItsElements)
{
    {
        CArray<Counted> array;
        array.SetSize(3);
        array.Add(Counted(1));
        array.InsertAt(1, Counted(2), 2);
        EXPECT_EQ(Counted::alive, 6);
        array.RemoveAt(0, 2);
        EXPECT_EQ(Counted::alive, 4);
        array.SetSize(1);
        EXPECT_EQ(Counted::alive, 1);
        EXPECT_EQ(array[0].number, 2);
        CArray<Counted> other;
        other.Copy(array);
        EXPECT_EQ(Counted::alive, 2);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(CArray, isUnchangedWhenElementsCannotBeCopied)
{
    {
        CArray<Counted> array;
        array.SetSize(4);
        CArray<Counted> other;
        other.SetSize(3);
        Counted const element(7);
        for (int copies = 0; copies < 3; ++copies) {
            Counted::copiesUntilFailure = copies;
            EXPECT_THROW(array.InsertAt(1, element, 5), std::runtime_error);
            EXPECT_EQ(array.GetSize(), 4);
            Counted::copiesUntilFailure = copies;
            EXPECT_THROW(array.InsertAt(6, &other), std::runtime_error);
            EXPECT_EQ(array.GetSize(), 4);
            Counted::copiesUntilFailure = copies;
            EXPECT_THROW(array.Append(other), std::runtime_error);
            EXPECT_EQ(array.GetSize(), 4);
        }
        Counted::copiesUntilFailure = -1;
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(CArray, keepsItsSizeWhenAnInsertionBehindTheEndFails)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizers' operator new ends the process for want of memory";
#endif
    INT_PTR const tooMany = std::numeric_limits<INT_PTR>::max() / 8;
    Numbers array;
    fill(array, 3);

    EXPECT_THROW(array.InsertAt(7, 1, tooMany), std::bad_alloc);
    EXPECT_EQ(contents(array), (Expected{0, 1, 2}));
    EXPECT_THROW(array.SetAtGrow(std::numeric_limits<INT_PTR>::max(), 1), std::bad_alloc);
    EXPECT_EQ(contents(array), (Expected{0, 1, 2}));
}

TEST(CArray, beyondTheAddressSpaceIsOutOfMemory)
{
    Numbers array;
    fill(array, 3);

    EXPECT_THROW(array.SetSize(std::numeric_limits<INT_PTR>::max()), std::bad_alloc);
    EXPECT_THROW(array.InsertAt(0, 1, std::numeric_limits<INT_PTR>::max()), std::bad_alloc);
    EXPECT_EQ(contents(array), (Expected{0, 1, 2}));
}

TEST(CArray, holdsBooleans)
{
    CArray<bool> array;
    array.SetSize(3);
    array[1] = true;

    bool const* const data = array.GetData();

    EXPECT_FALSE(data[0]);
    EXPECT_TRUE(data[1]);
}

TEST(CStringArray, takesTextsOfEveryKind)
{
    CStringArray array;
    CString const held("b");

    array.Add("a");
    array.Add(held);
    array.Add(CString("c"));
    array.SetAt(0, "d");
    array.InsertAt(1, "e");
    array.SetAtGrow(5, "f");

    EXPECT_EQ(contents(array), (std::vector<CString>{"d", "e", "b", "c", "", "f"}));
}

TEST(CStringArray, movesALongTextIn)
{
    CStringArray array;
    CString text('x', 100);
    char const* const block = text;

    array.Add(std::move(text));
    for (int i = 0; i < 100; ++i)
        array.Add("");

    EXPECT_EQ(array[0].GetString(), block);
}

TEST(CStringArray, hasAClassRecord)
{
    std::unique_ptr<CObject> const strings(RUNTIME_CLASS(CStringArray)->CreateObject());
    std::unique_ptr<CObject> const pointers(RUNTIME_CLASS(CPtrArray)->CreateObject());

    EXPECT_STREQ(strings->GetRuntimeClass()->m_lpszClassName, "CStringArray");
    EXPECT_STREQ(pointers->GetRuntimeClass()->m_lpszClassName, "CPtrArray");
}

TEST(CTypedPtrArray, givesPointersOfItsType)
{
    CTypedPtrArray<CPtrArray, CString*> array;
    CString a("a");
    CString b("b");

    EXPECT_EQ(array.Add(&a), 0);
    array.SetAtGrow(1, &b);
    array.InsertAt(0, &b);
    EXPECT_EQ(*array[0] + *array[1] + *array.GetAt(2), "bab");

    array.SetAt(0, &a);
    CTypedPtrArray<CPtrArray, CString*> other;
    other.Copy(array);
    EXPECT_EQ(other.Append(array), 3);
    other.InsertAt(0, &array);
    EXPECT_EQ(other.GetSize(), 9);
    EXPECT_EQ(other[8], &b);
}
