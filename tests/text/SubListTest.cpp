#include "text/SubList.h"

#include "text/SPStringList.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

namespace {

SPStringList listOf(char const* letters)
{
    SPStringList list;
    list.split(letters, "");
    return list;
}

// A textual slice writes to the standard output stream.
class SilentOutput {
public:
    SilentOutput() : old_(std::cout.rdbuf(sink_.rdbuf())) { }
    ~SilentOutput() { std::cout.rdbuf(old_); }

private:
    std::ostringstream sink_;
    std::streambuf* old_;
};

}  // namespace

TEST(SubList, picksElementsRangeByRange)
{
    SPStringList list = listOf("abcdefgh");

    SPStringList const part(SPList<SPString>(list(Slice(1, 2, 3, 7, 0, -1))));

    EXPECT_STREQ(part.join(""), "bcdha");
}

TEST(SubList, picksByARange)
{
    SPStringList list = listOf("abcdef");

    EXPECT_STREQ(SPStringList(SPList<SPString>(list(Range(1, 3)))).join(""), "bcd");
    EXPECT_STREQ(SPStringList(SPList<SPString>(list(Range(3, 1)))).join(""), "");
}

TEST(SubList, picksByOffsetAndLength)
{
    SPStringList list = listOf("abcdef");

    EXPECT_STREQ(SPStringList(SPList<SPString>(list(2, 3))).join(""), "cde");
    EXPECT_STREQ(SPStringList(SPList<SPString>(list(0))).join(""), "a");
}

TEST(SubList, picksByText)
{
    SilentOutput const silent;
    SPStringList list = listOf("abcdef");

    EXPECT_STREQ(SPStringList(SPList<SPString>(list("0..2,5"))).join(""), "abcf");
}

TEST(SubList, aRangePastTheEndLengthensTheList)
{
    SPStringList list = listOf("abc");

    SPList<SPString> const part = list(1, 4);

    EXPECT_EQ(part.count(), 4);
    EXPECT_EQ(part[0], "b");
    EXPECT_EQ(part[3], "");
    EXPECT_EQ(list.count(), 5);
}

TEST(SubList, hasASliceOfItsOwn)
{
    SPStringList list = listOf("abcdef");
    Slice slice(1);

    SubList<SPString> const view = list(slice);
    slice.add(5);
    SubList<SPString> const copy(view);

    EXPECT_EQ(SPList<SPString>(view).count(), 1);
    EXPECT_EQ(SPList<SPString>(copy).count(), 1);
}

TEST(SubList, seesTheListAsItIsNow)
{
    SPStringList list = listOf("abc");
    SubList<SPString> const view = list(1, 1);

    list[1] = "changed";

    EXPECT_EQ(SPList<SPString>(view)[0], "changed");
}

TEST(SubList, holdsASliceAndAReference)
{
    static_assert(sizeof(SubList<SPString>) == 2 * sizeof(void*));
}
