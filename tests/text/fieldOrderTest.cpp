// The order and the widths of the fields of the text utilities, as other modules may rely on them.
#include "tests/text/fieldsOf.h"
#include "text/CStringBuffer.h"
#include "text/HyperLink.h"
#include "text/URLParams.h"
#include "text/base64.h"
#include "text/miniParser.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace {

// The field of type `Field` that stands `offset` bytes into an object.
template <class Field, class Object>
Field const& fieldAt(Object const& object, std::size_t offset)
{
    return *reinterpret_cast<Field const*>(reinterpret_cast<char const*>(&object) + offset);
}

constexpr std::size_t behindTable = sizeof(void*);

TEST(FieldOrder, ofABufferIsBlockLengthAndCapacity)
{
    struct Fields {
        void* table;
        char* buffer;
        std::int32_t length;
        std::int32_t capacity;
    };
    CStringBuffer buffer(9);
    buffer.Append("abc");

    auto const fields = zk::test::readFields<Fields>(buffer);

    EXPECT_EQ(std::memcmp(fields.buffer, "abc", 3), 0);
    EXPECT_EQ(fields.length, 3);
    EXPECT_EQ(fields.capacity, 10);
}

TEST(FieldOrder, ofAnEncoderIsStateAndBufferSize)
{
    struct Fields {
        std::int32_t step;
        char result;
        std::int32_t stepcount;
        std::int32_t buffersize;
    };
    base64::encoder encoder(77);
    char out[16];
    encoder.encode("abcd", 4, out);

    auto const fields = zk::test::readFields<Fields>(encoder);

    EXPECT_EQ(fields.step, 1);  // the second byte of a group is next
    EXPECT_EQ(fields.result, ('d' & 3) << 4);
    EXPECT_EQ(fields.stepcount, 1);
    EXPECT_EQ(fields.buffersize, 77);
    EXPECT_EQ(zk::test::readFields<Fields>(base64::encoder()).buffersize, 4096);
}

TEST(FieldOrder, ofParametersIsTextAndFlag)
{
    URLParams params("a=1");
    params.setEncode(false);

    EXPECT_STREQ(fieldAt<CString>(params, behindTable), "a=1");
    EXPECT_FALSE(fieldAt<bool>(params, behindTable + sizeof(CString)));
}

TEST(FieldOrder, ofALinkIsRangeKeywordTypeAndTarget)
{
    HyperLink const link("key", HyperLink::fileLink, "target", {3, 7});

    EXPECT_EQ(fieldAt<std::int32_t>(link, behindTable), 3);
    EXPECT_EQ(fieldAt<std::int32_t>(link, behindTable + 4), 7);
    EXPECT_STREQ(fieldAt<CString>(link, behindTable + 8), "key");
    EXPECT_EQ(fieldAt<HyperLink::LinkType>(link, behindTable + 8 + sizeof(CString)), HyperLink::fileLink);
    EXPECT_STREQ(fieldAt<CString>(link, behindTable + 16 + sizeof(CString)), "target");
}

TEST(FieldOrder, ofAParserBeginsWithItsAlphabetAndItsWords)
{
    using Alphabet = CMap<char, char, miniParser::charType, miniParser::charType>;
    miniParser const parser;
    std::size_t const strings = behindTable + sizeof(Alphabet);

    miniParser::charType kind = miniParser::charUnknown;
    EXPECT_TRUE(fieldAt<Alphabet>(parser, behindTable).Lookup('#', kind));
    EXPECT_EQ(kind, miniParser::charPreprocessor);
    EXPECT_EQ(fieldAt<Alphabet>(parser, behindTable).GetHashTableSize(), 17u);
    char const* const words[] = {"([{<", ")]}>", "ifdef", "ifndif", "endif"};
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_STREQ(fieldAt<CString>(parser, strings + i * sizeof(CString)), words[i]);
}

// A parser in the middle of a text.
class OpenParser : public miniParser {
public:
    OpenParser()
    {
        int at = 0;
        checkIfdefStart("#ifdef", at);
        at = 0;
        checkIfdefStart("#ifdef", at);
        at = 0;
        checkHardStart("'", at, 1);
    }
};

TEST(FieldOrder, ofAParserGoesOnWithStateLevelAndOpenBlock)
{
    using Alphabet = CMap<char, char, miniParser::charType, miniParser::charType>;
    constexpr std::size_t state = behindTable + sizeof(Alphabet) + 5 * sizeof(CString);
    OpenParser const parser;

    EXPECT_EQ(fieldAt<std::int32_t>(parser, state), 0);
    EXPECT_EQ(fieldAt<std::int32_t>(parser, state + 4), 2);
    EXPECT_TRUE(fieldAt<bool>(parser, state + 8));
    EXPECT_EQ(fieldAt<char>(parser, state + 9), '\'');
}

}  // namespace
