#include "text/VarString.h"

#include "tests/text/fieldsOf.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <utility>

using zk::test::fieldsOf;
using zk::test::StringFields;

namespace {

void expectFields(VarString const& text, char const* view, std::size_t len, std::size_t allocated,
                  std::size_t allocinc)
{
    StringFields const fields = fieldsOf(text);
    EXPECT_STREQ(text, view);
    EXPECT_EQ(text.length(), len);
    EXPECT_EQ(fields.len, len);
    EXPECT_EQ(fields.allocated, allocated);
    EXPECT_EQ(fields.allocinc, allocinc);
}

}  // namespace

TEST(VarString, defaultIsAnEmptyBufferOf32)
{
    VarString text;

    expectFields(text, "", 0, 32, 32);
}

TEST(VarString, aSizeIsAlsoTheStep)
{
    VarString text(std::size_t(100));

    expectFields(text, "", 0, 100, 100);
}

TEST(VarString, aPlainNumberIsASize)
{
    VarString text(10);

    expectFields(text, "", 0, 10, 10);
}

TEST(VarString, growsByItsOwnSize)
{
    VarString text(10);

    for (char const c : std::string("123456789"))
        text.add(c);
    expectFields(text, "123456789", 9, 10, 10);
    text.add('0');

    expectFields(text, "1234567890", 10, 20, 10);
}

TEST(VarString, aSizeOfZeroCountsAsOne)
{
    VarString text(0);

    expectFields(text, "", 0, 1, 1);
    text.add('a');
    expectFields(text, "a", 1, 2, 1);
    text.add("bcd");
    expectFields(text, "abcd", 4, 5, 1);
}

TEST(VarString, aNegativeSizeCannotBeHad)
{
    EXPECT_THROW(VarString(-1), std::bad_alloc);
}

TEST(VarString, aCopyOfATextJustHoldsIt)
{
    VarString text("abc");

    expectFields(text, "abc", 3, 4, 32);
}

TEST(VarString, aNullTextIsEmpty)
{
    VarString text(static_cast<char const*>(nullptr));

    expectFields(text, "", 0, 1, 32);
    text.add(static_cast<char const*>(nullptr));
    expectFields(text, "", 0, 1, 32);
}

TEST(VarString, takesAsMuchOfATextAsAskedFor)
{
    VarString text("abcdef", 3);

    expectFields(text, "abc", 3, 4, 32);
}

TEST(VarString, aShorterTextThanAskedForIsFilledUp)
{
    VarString text("ab", 5);

    expectFields(text, "ab", 5, 6, 32);
    EXPECT_EQ(text[3], '\0');
}

TEST(VarString, addsBehindTheRealEndOfAFilledUpText)
{
    VarString text("ab", 5);

    text.add("x");

    expectFields(text, "abx", 6, 38, 32);
}

TEST(VarString, aFilledUpTextIsCopiedUpToItsRealEnd)
{
    VarString text("ab", 5);

    VarString copy(text);
    copy.add("x");
    VarString assigned;
    assigned = text;
    assigned.add("y");

    expectFields(copy, "abx", 6, 38, 32);
    expectFields(assigned, "aby", 6, 32, 32);
}

TEST(VarString, aCharacterIsATextOfOne)
{
    VarString text('c');

    expectFields(text, "c", 1, 2, 32);
}

TEST(VarString, aCopyTakesOverSizeAndStep)
{
    VarString source(10);
    source.add("abc");

    VarString copy(source);

    expectFields(copy, "abc", 3, 10, 10);
    EXPECT_NE(static_cast<char const*>(copy), static_cast<char const*>(source));
}

TEST(VarString, movingTakesTheBufferAndLeavesTheDefault)
{
    VarString source("some text that is longer than the buffer of a default string");
    char const* const buffer = source;

    VarString target(std::move(source));

    EXPECT_EQ(static_cast<char const*>(target), buffer);
    expectFields(source, "", 0, 32, 32);
    source.add("usable");
    expectFields(source, "usable", 6, 32, 32);
}

TEST(VarString, moveAssignmentTakesTheBuffer)
{
    VarString source("abc");
    char const* const buffer = source;
    VarString target("old");

    target = std::move(source);

    EXPECT_EQ(static_cast<char const*>(target), buffer);
    expectFields(target, "abc", 3, 4, 32);
    expectFields(source, "", 0, 32, 32);
}

TEST(VarString, movingToItselfKeepsTheText)
{
    VarString text("abc");
    VarString& same = text;

    text = std::move(same);

    expectFields(text, "abc", 3, 4, 32);
}

TEST(VarString, assignmentKeepsABufferThatIsLargeEnough)
{
    VarString target(10);
    VarString source("12345678");

    target = source;

    expectFields(target, "12345678", 8, 10, 10);
}

TEST(VarString, assignmentOfATextThatJustFillsTheBufferTakesOverSizeAndStep)
{
    VarString target(10);
    VarString source("123456789");

    target = source;

    expectFields(target, "123456789", 9, 10, 32);
}

TEST(VarString, assignmentToItselfDoesNothing)
{
    VarString text("abc");
    VarString& same = text;
    text.erase();

    text = same;

    expectFields(text, "abc", 0, 4, 32);
}

TEST(VarString, assignmentOfATextGrowsToItsLengthPlusTheStep)
{
    VarString text("abc");

    text = "abcd";

    expectFields(text, "abcd", 4, 36, 32);
}

TEST(VarString, assignmentOfATextThatJustFillsTheBufferGrows)
{
    VarString text("abc");

    text = "xyz";

    expectFields(text, "xyz", 3, 35, 32);
}

TEST(VarString, assignmentOfATextThatFitsKeepsTheBuffer)
{
    VarString text("abc");

    text = "x";

    expectFields(text, "x", 1, 4, 32);
}

TEST(VarString, whereTheAmountToGrowIsZeroTheStepIsAdded)
{
    VarString text(1);

    text = "";

    expectFields(text, "", 0, 2, 1);
}

TEST(VarString, aPartOfItselfCanBeAssigned)
{
    VarString text("abcdef");

    text = static_cast<char const*>(text) + 2;

    expectFields(text, "cdef", 4, 7, 32);
}

TEST(VarString, itsWholeTextCanBeAssigned)
{
    VarString text("abc");

    text = static_cast<char const*>(text);

    expectFields(text, "abc", 3, 35, 32);
}

TEST(VarString, addingACharacterGrowsByTheStep)
{
    VarString text("abc");

    text.add('d');

    expectFields(text, "abcd", 4, 36, 32);
}

TEST(VarString, addingACharacterThatLeavesRoomDoesNotGrow)
{
    VarString text("abc");
    text = "x";

    text.add('y');

    expectFields(text, "xy", 2, 4, 32);
}

TEST(VarString, addingATextGrowsToTheNewLengthPlusTheStep)
{
    VarString text("abc");

    text.add("defg");

    expectFields(text, "abcdefg", 7, 39, 32);
}

TEST(VarString, aTextThatWouldJustFillTheBufferGrowsIt)
{
    VarString text(8);
    text.add("1234");

    text.add("567");
    expectFields(text, "1234567", 7, 8, 8);
    text.add("8");

    expectFields(text, "12345678", 8, 16, 8);
}

TEST(VarString, addsItself)
{
    VarString exact("abc");
    VarString roomy;
    roomy = "abc";

    exact.add(exact);
    roomy.add(static_cast<char const*>(roomy) + 1);

    expectFields(exact, "abcabc", 6, 38, 32);
    expectFields(roomy, "abcbc", 5, 32, 32);
}

TEST(VarString, insertsATextAtAPosition)
{
    VarString text("abc");

    text.add(1, "xy");

    expectFields(text, "axybc", 5, 37, 32);
}

TEST(VarString, insertsItself)
{
    VarString text("abc");

    text.add(1, text);

    expectFields(text, "aabcbc", 6, 38, 32);
}

TEST(VarString, insertsPastTheEndAtTheEnd)
{
    VarString text("abc");

    text.add(100, "d");

    EXPECT_STREQ(text, "abcd");
}

TEST(VarString, removesCharacters)
{
    VarString text("abcdef");

    text.remove(1, 3);

    expectFields(text, "aef", 3, 7, 32);
}

TEST(VarString, removesWhatThereIs)
{
    VarString text("abcdef");

    text.remove(4, 100);
    text.remove(100, 1);

    expectFields(text, "abcd", 4, 7, 32);
}

TEST(VarString, eraseLeavesTheFormerTextInView)
{
    VarString text("abc");

    text.erase();

    expectFields(text, "abc", 0, 4, 32);
}

TEST(VarString, addsBehindAnErasedTextThatStillStandsThere)
{
    VarString text("abc");

    text.erase();
    text.add("x");

    EXPECT_STREQ(text, "abcx");
    EXPECT_EQ(text.length(), 1u);
    EXPECT_GE(fieldsOf(text).allocated, 5u);
}

TEST(VarString, addingACharacterEndsTheViewOfAnErasedText)
{
    VarString text("abc");

    text.erase();
    text.add('x');

    expectFields(text, "x", 1, 4, 32);
}

TEST(VarString, assignmentEndsTheViewOfAnErasedText)
{
    VarString text("abc");

    text.erase();
    text = "y";

    expectFields(text, "y", 1, 4, 32);
}

TEST(VarString, anErasedTextIsAssignedAsItIsSeen)
{
    std::string const old(50, 'o');
    VarString source(old.c_str());
    source.erase();
    VarString target;

    target = source;

    EXPECT_STREQ(target, old.c_str());
    EXPECT_EQ(target.length(), 0u);
    EXPECT_GE(fieldsOf(target).allocated, 51u);
}

TEST(VarString, anErasedTextIsCopiedAsItIsSeen)
{
    VarString source("abc");
    source.erase();

    VarString copy(source);

    expectFields(copy, "abc", 0, 4, 32);
}

TEST(VarString, insertingIntoAnErasedTextStaysInsideTheBuffer)
{
    for (int length = 1; length < 80; ++length) {
        VarString text("abc");
        text.erase();

        text.add(0, std::string(static_cast<std::size_t>(length), 'x').c_str());

        EXPECT_EQ(text.length(), std::size_t(length));
        EXPECT_EQ(std::string(text).substr(0, static_cast<std::size_t>(length)),
                  std::string(static_cast<std::size_t>(length), 'x'));
    }
}

TEST(VarString, aWrittenNulEndsTheView)
{
    VarString text("abcdef");

    text[2] = '\0';
    EXPECT_STREQ(text, "ab");
    EXPECT_EQ(text.length(), 6u);
    text.add("x");

    EXPECT_STREQ(text, "abx");
    EXPECT_EQ(text.length(), 7u);
}

TEST(VarString, anAddedNulEndsTheView)
{
    VarString text("ab");

    text.add('\0');
    text.add("c");

    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(text.length(), 4u);
}

TEST(VarString, charactersCanBeWritten)
{
    VarString text("abc");

    text[1] = 'x';
    text.add("d");

    EXPECT_STREQ(text, "axcd");
    EXPECT_EQ(text[1], 'x');
}

TEST(VarString, aDefaultStringIsABufferToWriteInto)
{
    VarString text;

    text[0] = 'a';
    text[1] = '\0';

    EXPECT_STREQ(text, "a");
    EXPECT_STREQ(VarString(), "");
}

TEST(VarString, theSizeThatCountsGrowsLinearlyHoweverLongTheText)
{
    VarString text;

    for (int i = 0; i < 100000; ++i)
        text.add('x');

    // The smallest multiple of the step that leaves room for the terminator.
    EXPECT_EQ(fieldsOf(text).allocated, 100000u / 32 * 32 + 32);
    EXPECT_EQ(std::string(text), std::string(100000, 'x'));
}

TEST(VarString, longTextsGrowByTextsToo)
{
    VarString text;
    std::string expected;

    for (int i = 0; i < 3000; ++i) {
        text.add("0123456789");
        expected += "0123456789";
    }

    EXPECT_EQ(std::string(text), expected);
    EXPECT_GT(fieldsOf(text).allocated, 30000u);
    EXPECT_LE(fieldsOf(text).allocated, 30000u + 32);
}

TEST(VarString, aLengthThatNoTextHasCannotBeHad)
{
    EXPECT_THROW(VarString("abc", static_cast<std::size_t>(-1)), std::bad_alloc);
}

TEST(VarString, aNumberOfAnyTypeIsASize)
{
    EXPECT_EQ(fieldsOf(VarString(10u)).allocated, 10u);
    EXPECT_EQ(fieldsOf(VarString(10l)).allocinc, 10u);
    EXPECT_EQ(fieldsOf(VarString(10ull)).allocated, 10u);
    EXPECT_THROW(VarString(-1l), std::bad_alloc);
}

TEST(VarString, insertingIntoAnErasedTextMovesItsFirstCharacter)
{
    VarString text("abc");
    text.erase();

    text.add(0, "x");

    EXPECT_STREQ(text, "xac");
    EXPECT_EQ(text.length(), 1u);
    EXPECT_EQ(fieldsOf(text).allocated, 4u);
}

// What other modules read in the last field is the step, but for the mark in its highest bit.
TEST(VarString, writingThroughAnIndexMarksTheStep)
{
    struct Fields {
        char* s;
        std::uint64_t len;
        std::uint64_t allocated;
        std::uint64_t allocinc;
    };
    using zk::test::readFields;
    constexpr std::uint64_t mark = std::uint64_t(1) << 63;
    VarString text;
    text = "abc";
    char const read = std::as_const(text)[0];
    EXPECT_EQ(read, 'a');
    EXPECT_EQ(readFields<Fields>(text).allocinc, 32u);

    text[0] = 'x';

    EXPECT_EQ(readFields<Fields>(text).allocinc, mark + 32);
    text.add("d");
    EXPECT_EQ(readFields<Fields>(text).allocinc, 32u);
}
