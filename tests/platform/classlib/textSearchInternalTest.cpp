#include "platform/classlib/textSearch.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

std::ptrdiff_t placeOf(std::size_t found)
{
    return found == std::string::npos ? -1 : static_cast<std::ptrdiff_t>(found);
}

}  // namespace

// Texts that resemble the part nearly everywhere, so that the search changes to its table.
TEST(TextSearch, findsPartsOfRepetitions)
{
    std::mt19937 chance(7);
    int found = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string unit;
        for (std::size_t length = 1 + chance() % 6; unit.size() < length;)
            unit += "ab"[chance() % 2];
        std::string part;
        for (std::size_t length = 1 + chance() % 400; part.size() < length;)
            part += unit;
        part += std::string(chance() % 3, "ab"[chance() % 2]);
        std::string text;
        while (text.size() < 2000) {
            text += part.substr(0, chance() % (part.size() + 1));
            text += chance() % 4 ? unit : "b";
        }
        std::size_t const from = chance() % 100;

        ASSERT_EQ(zk::findFirst(text, part, from), placeOf(text.find(part, from))) << text << " " << part;
        ASSERT_EQ(zk::findLast(text, part), placeOf(text.rfind(part))) << text << " " << part;
        found += text.find(part, from) != text.npos;
    }
    EXPECT_GT(found, 500);
    EXPECT_LT(found, 2900);
}
