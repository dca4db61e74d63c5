#include "text/sorting.h"

#include <gtest/gtest.h>

#include <string>

namespace {

char const* const shuffled[] = {"b", "", "\xC3\xA4", "a", "B", "ab", "a", "10", "9"};
std::string const sorted = ",10,9,B,a,a,ab,b,\xC3\xA4";

void fill(CStringList& list)
{
    for (char const* text : shuffled)
        list.AddTail(text);
}

std::string told(CStringList const& list)
{
    std::string all;
    for (POSITION at = list.GetHeadPosition(); at;) {
        all += list.GetNext(at).GetString();
        all += at ? "," : "";
    }
    return all;
}

TEST(Sorting, putsAListInAscendingOrderOfItsBytes)
{
    CStringList bubble, library, other;
    for (CStringList* list : {&bubble, &library, &other})
        fill(*list);

    BubbleSort(&bubble);
    Sort(library);
    omSortStringList(&other);

    EXPECT_EQ(told(bubble), sorted);
    EXPECT_EQ(told(library), sorted);
    EXPECT_EQ(told(other), sorted);
}

TEST(Sorting, putsAnArrayInTheSameOrder)
{
    CStringArray array;
    for (char const* text : shuffled)
        array.Add(text);

    BubbleSort(&array);

    std::string all;
    for (int i = 0; i < int(array.GetSize()); ++i)
        all += (i ? "," : "") + std::string(array.GetAt(i));
    EXPECT_EQ(all, sorted);
}

TEST(Sorting, leavesNothingAndOneElementAlone)
{
    CStringList list;
    CStringArray array;

    BubbleSort(&list);
    BubbleSort(&array);
    Sort(list);
    omSortStringList(&list);
    EXPECT_TRUE(list.IsEmpty());

    list.AddTail("a");
    BubbleSort(&list);
    EXPECT_EQ(told(list), "a");
}

TEST(Sorting, takesNullForNothing)
{
    BubbleSort(static_cast<CStringList*>(nullptr));
    BubbleSort(static_cast<CStringArray*>(nullptr));
    omSortStringList(nullptr);
}

TEST(Sorting, takesAHundredThousandElements)
{
    CStringList list;
    for (int i = 100000; i > 0; --i) {
        CString text;
        text.Format("%06d", i);
        list.AddTail(text);
    }

    BubbleSort(&list);

    EXPECT_STREQ(list.GetHead(), "000001");
    EXPECT_STREQ(list.GetTail(), "100000");
}

TEST(Sorting, comparesUpToANulWhereItGoesByMultibyteOrder)
{
    CString const second("a\0z", 3);
    CString const first("a\0b", 3);
    CStringList bubble, other, library;
    CStringArray array;
    for (CStringList* list : {&bubble, &other, &library}) {
        list->AddTail(second);
        list->AddTail(first);
    }
    array.Add(second);
    array.Add(first);

    BubbleSort(&bubble);
    omSortStringList(&other);
    BubbleSort(&array);
    Sort(library);

    EXPECT_EQ(bubble.GetHead(), second);  // they are equal: each stays in its place
    EXPECT_EQ(other.GetHead(), second);
    EXPECT_EQ(array.GetAt(0), second);
    EXPECT_EQ(library.GetHead(), first);
}

}  // namespace
