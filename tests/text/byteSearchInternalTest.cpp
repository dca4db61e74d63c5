#include "text/byteSearch.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// The text ends the buffer, so that a checker sees a read behind it; it starts at each place in a block.
template <class Check>
void atEachPlace(std::string const& text, Check check)
{
    for (std::size_t shift = 0; shift < 33; ++shift) {
        std::string const buffer = std::string(shift, 'x') + text;
        check(buffer.c_str() + shift);
    }
}

zk::ByteTable tableOf(std::string const& members)
{
    zk::ByteTable table;
    table.add('\0');
    for (char const member : members)
        table.add(member);
    return table;
}

}  // namespace

TEST(ByteSet, holdsWhatWasPutIn)
{
    for (int byte = 0; byte < 256; ++byte) {
        zk::ByteSet set;
        set.add(static_cast<char>(byte));
        EXPECT_EQ(set.size(), 1u);
        for (int other = 0; other < 256; ++other)
            EXPECT_EQ(set.has(static_cast<char>(other)), other == byte);

        set.invert();
        EXPECT_EQ(set.size(), 255u);
        EXPECT_FALSE(set.has(static_cast<char>(byte)));
        set.add(static_cast<char>(byte));
        EXPECT_EQ(set, zk::ByteSet::full());
        set.remove(static_cast<char>(byte));
        EXPECT_FALSE(set.has(static_cast<char>(byte)));
    }
}

TEST(ByteSearch, findsEachByteOfASet)
{
    for (int byte = 1; byte < 256; ++byte) {
        zk::ByteTable const one = tableOf(std::string(1, static_cast<char>(byte)));
        zk::ByteTable others = one;
        others.invert();
        others.add('\0');
        for (std::size_t room = 0; room < 40; room += 3) {
            std::string const text = std::string(room, byte == '.' ? ',' : '.') + static_cast<char>(byte);
            ASSERT_EQ(zk::findInSet(text.c_str(), one) - text.c_str(), static_cast<std::ptrdiff_t>(room))
                << byte;
            std::string const same = std::string(room, static_cast<char>(byte)) + (byte == '.' ? "," : ".");
            ASSERT_EQ(zk::findInSet(same.c_str(), others) - same.c_str(), static_cast<std::ptrdiff_t>(room))
                << byte;
        }
    }
}

TEST(ByteSearch, stopsAtTheEndOfTheText)
{
    zk::ByteTable const vowels = tableOf("aeiou");
    for (std::size_t size = 0; size < 50; ++size) {
        atEachPlace(std::string(size, 'b'), [&](char const* text) {
            ASSERT_EQ(zk::findInSet(text, vowels), text + size);
            ASSERT_EQ(zk::bytewise::findInSet(text, vowels), text + size);
            ASSERT_EQ(zk::bytewise::findText(text, zk::makeNeedle("abbb", 4)), nullptr);
            ASSERT_EQ(zk::findText(text, zk::makeNeedle("a", 1)), nullptr);
            ASSERT_EQ(zk::findText(text, zk::makeNeedle("ab", 2)), nullptr);
            ASSERT_EQ(zk::findText(text, zk::makeNeedle("abbb", 4)), nullptr);
        });
    }
}

TEST(ByteSearch, findsTheFirstOccurrenceOfAText)
{
    for (std::string const needle : {"q", "qu", "que", "quee", "equeen", "aaaa", "a quick brown fox jumps"}) {
        zk::TextNeedle const prepared = zk::makeNeedle(needle.data(), needle.size());
        for (std::size_t room = 0; room < 50; ++room) {
            // What looks like the needle comes first.
            std::string const text =
                std::string(room, 'a') + needle.substr(0, needle.size() - 1) + "." + needle + needle;
            atEachPlace(text, [&](char const* subject) {
                ASSERT_EQ(zk::bytewise::findText(subject, prepared), zk::findText(subject, prepared));
                ASSERT_EQ(zk::findText(subject, prepared) - subject,
                          static_cast<std::ptrdiff_t>(text.find(needle)))
                    << needle << " in " << text;
            });
        }
    }
}

TEST(ByteSearch, letsThroughEveryPlaceWhereAPrefixStands)
{
    zk::PrefixFilter filter;
    int bucket = 0;
    for (std::string const word : {"cat", "dog", "fi", "\xE4\xF6\xFC"}) {
        for (std::size_t i = 0; i < 3; ++i) {
            zk::ByteSet set;
            if (i < word.size()) {
                set.add(word[i]);
                filter.allow(static_cast<int>(i), bucket, set);
            } else {
                filter.allowAll(static_cast<int>(i), bucket);
            }
        }
        ++bucket;
    }
    for (std::string const word : {"cat", "dog", "fi!", "\xE4\xF6\xFC"}) {
        for (std::size_t room = 0; room < 50; ++room) {
            atEachPlace(std::string(room, '-') + word + "---", [&](char const* text) {
                ASSERT_EQ(zk::findPrefix(text, filter) - text, static_cast<std::ptrdiff_t>(room));
                ASSERT_EQ(zk::bytewise::findPrefix(text, filter), zk::findPrefix(text, filter));
            });
        }
    }
}

TEST(ByteSearch, letsThroughTheLastTwoPlacesAndTheEnd)
{
    zk::PrefixFilter nothing;
    for (std::size_t size = 0; size < 40; ++size) {
        atEachPlace(std::string(size, '-'), [&](char const* text) {
            std::size_t const first = size < 2 ? 0 : size - 2;
            char const* place = zk::findPrefix(text, nothing);
            ASSERT_EQ(place, text + first);
            ASSERT_EQ(zk::bytewise::findPrefix(text, nothing), place);
            while (*place != '\0') {
                ASSERT_EQ(zk::findPrefix(place + 1, nothing), place + 1);
                ++place;
            }
            ASSERT_EQ(place, text + size);
        });
    }
}
