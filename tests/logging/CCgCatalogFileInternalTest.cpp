#include "logging/CCgCatalogFile.h"

#include "logging/CCgCatalog.h"
#include "tests/logging/CatalogBytes.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

using namespace zk::logging;

namespace {

class CatalogFile : public testing::Test {
protected:
    std::unique_ptr<CCgCatalog> read(std::string const& content)
    {
        folder_.write("a.cat", content);
        return readCatalog(folder_.path("a.cat"));
    }

    // The text of a message, or why there is none.
    static std::string text(std::unique_ptr<CCgCatalog> const& catalog, std::int32_t set, std::int32_t key)
    {
        if (!catalog)
            return "(no catalog)";
        char const* const found = catalogText(*catalog, set, key);
        return found ? found : "(none)";
    }

    static std::string oneMessage()
    {
        CatalogBytes bytes;
        bytes.set(1).message(7, "text");
        return bytes.content();
    }

    TemporaryFolder folder_;
};

}  // namespace

TEST_F(CatalogFile, holdsTextsBySetAndKey)
{
    CatalogBytes bytes;
    bytes.set(1).message(1, "one").message(2, "two").message(7, "seven");
    bytes.set(3).message(1, "three-one");
    auto const catalog = read(bytes.content());

    EXPECT_EQ(text(catalog, 1, 1), "one");
    EXPECT_EQ(text(catalog, 1, 2), "two");
    EXPECT_EQ(text(catalog, 1, 7), "seven");
    EXPECT_EQ(text(catalog, 3, 1), "three-one");
}

TEST_F(CatalogFile, hasNoTextForOtherNumbers)
{
    auto const catalog = read(oneMessage());

    for (std::int32_t const key : {-1, 0, 6, 8, 2147483647, -2147483647 - 1})
        EXPECT_EQ(text(catalog, 1, key), "(none)") << key;
    for (std::int32_t const set : {-1, 0, 2, 2147483647, -2147483647 - 1})
        EXPECT_EQ(text(catalog, set, 7), "(none)") << set;
}

TEST_F(CatalogFile, findsScatteredNumbers)
{
    CatalogBytes bytes;
    auto& set = bytes.set(1000000);
    for (std::uint32_t i = 1; i <= 300; ++i)
        set.message(i * i * i, std::to_string(i));
    auto const catalog = read(bytes.content());

    for (std::int32_t i = 1; i <= 300; ++i) {
        EXPECT_EQ(text(catalog, 1000000, i * i * i), std::to_string(i));
        EXPECT_EQ(text(catalog, 1000000, i * i * i + 1), "(none)");
    }
}

TEST_F(CatalogFile, withoutAMessageInASetIsRead)
{
    CatalogBytes bytes;
    bytes.set(1);
    auto const catalog = read(bytes.content());

    EXPECT_EQ(text(catalog, 1, 1), "(none)");
}

TEST_F(CatalogFile, doesNotCountASetThatIsInvalid)
{
    CatalogBytes bytes;
    bytes.set(1).message(1, "one");
    auto& set = bytes.set(2).message(1, "two");
    set.invalid = true;
    bytes.set(3).message(1, "three");
    auto const catalog = read(bytes.content());

    ASSERT_TRUE(catalog);
    EXPECT_EQ(catalog->sets.size(), 2u);
    EXPECT_EQ(text(catalog, 1, 1), "one");
    EXPECT_EQ(text(catalog, 2, 1), "(none)");
    EXPECT_EQ(text(catalog, 3, 1), "three");
}

TEST_F(CatalogFile, lacksAMessageThatIsInvalid)
{
    CatalogBytes bytes;
    bytes.set(1).message(1, "one", true).message(2, "two");
    auto const catalog = read(bytes.content());

    EXPECT_EQ(text(catalog, 1, 1), "(none)");
    EXPECT_EQ(text(catalog, 1, 2), "two");
}

TEST_F(CatalogFile, readsTheMessagesOfASetAtItsFirstUse)
{
    auto const catalog = read(oneMessage());

    EXPECT_FALSE(catalog->sets[0].loaded);
    EXPECT_EQ(text(catalog, 1, 7), "text");
    EXPECT_TRUE(catalog->sets[0].loaded);
}

TEST_F(CatalogFile, isNoneWithAnotherHeader)
{
    std::string const good = oneMessage();

    EXPECT_EQ(readCatalog(folder_.path("missing.cat")), nullptr);
    EXPECT_EQ(readCatalog(folder_.path()), nullptr);
    EXPECT_EQ(read(""), nullptr);
    EXPECT_EQ(read(good.substr(0, 27)), nullptr);
    EXPECT_EQ(read("*Nazgul*" + good.substr(8)), nullptr);
    EXPECT_EQ(read(CatalogBytes::with(good, 8, 0)), nullptr);
    EXPECT_EQ(read(CatalogBytes::with(good, 8, 2)), nullptr);
    EXPECT_EQ(read(CatalogBytes::with(good, CatalogBytes::setCount, 0)), nullptr);
    EXPECT_NE(read(CatalogBytes::with(good, 12, 99)), nullptr) << "the minor version does not count";
}

TEST_F(CatalogFile, isNoneIfItsSetsLeadOutOfIt)
{
    std::string const good = oneMessage();
    auto const size = static_cast<std::uint32_t>(good.size());

    EXPECT_EQ(read(CatalogBytes::with(good, CatalogBytes::setCount, 2)), nullptr) << "the chain ends at 0";
    EXPECT_EQ(read(CatalogBytes::with(good, CatalogBytes::setCount, 0xFFFFFFFF)), nullptr);
    for (std::uint32_t const offset : {size - 27, size, 0x7FFFFFFFu, 0xFFFFFFFFu})
        EXPECT_EQ(read(CatalogBytes::with(good, CatalogBytes::firstSet, offset)), nullptr) << offset;
}

TEST_F(CatalogFile, withSetsInACircleIsReadOnceAround)
{
    CatalogBytes bytes;
    bytes.set(1).message(7, "text");
    bytes.set(2).message(7, "text two");
    std::string const content = bytes.content();

    auto const catalog = read(CatalogBytes::with(content, CatalogBytes::nextSet, 28));

    EXPECT_EQ(text(catalog, 1, 7), "text");
    EXPECT_EQ(text(catalog, 2, 7), "(none)");
}

TEST_F(CatalogFile, lacksMessagesThatLieOutsideOfIt)
{
    std::string const good = oneMessage();
    auto const size = static_cast<std::uint32_t>(good.size());

    for (std::uint32_t const offset : {size - 11, size, 0xFFFFFFFFu})
        EXPECT_EQ(text(read(CatalogBytes::with(good, CatalogBytes::messagesAt, offset)), 1, 7), "(none)");
    for (std::uint32_t const count : {size, 0x15555556u, 0xFFFFFFFFu})
        EXPECT_EQ(text(read(CatalogBytes::with(good, CatalogBytes::messageCount, count)), 1, 7), "(none)");
}

TEST_F(CatalogFile, lacksTextsThatLieOutsideOfIt)
{
    std::string const good = oneMessage();
    auto const size = static_cast<std::uint32_t>(good.size());

    for (std::uint32_t const offset : {size - 4, size, 0xFFFFFFFFu})
        EXPECT_EQ(text(read(CatalogBytes::with(good, CatalogBytes::textsAt, offset)), 1, 7), "(none)");
    for (std::uint32_t const length : {6u, size, 0xFFFFFFFFu})
        EXPECT_EQ(text(read(CatalogBytes::with(good, CatalogBytes::textsLength, length)), 1, 7), "(none)");
    for (std::uint32_t const offset : {5u, size, 0xFFFFFFFFu})
        EXPECT_EQ(text(read(CatalogBytes::with(good, CatalogBytes::firstTextAt, offset)), 1, 7), "(none)");
}

TEST_F(CatalogFile, lacksATextThatIsNotTerminated)
{
    std::string const good = oneMessage();

    EXPECT_EQ(text(read(CatalogBytes::with(good, CatalogBytes::textsLength, 4)), 1, 7), "(none)");
    EXPECT_EQ(text(read(CatalogBytes::with(good, CatalogBytes::textsLength, 0)), 1, 7), "(none)");
    EXPECT_EQ(text(read(CatalogBytes::with(good, CatalogBytes::firstTextAt, 4)), 1, 7), "");
}

TEST_F(CatalogFile, thatIsCutOffIsReadAsFarAsItGoes)
{
    CatalogBytes bytes;
    bytes.set(1).message(1, "one");
    bytes.set(2).message(1, "two");
    std::string const content = bytes.content();

    auto const catalog = read(content.substr(0, content.size() - 1));

    EXPECT_EQ(text(catalog, 1, 1), "one");
    EXPECT_EQ(text(catalog, 2, 1), "(none)");
}

TEST_F(CatalogFile, thatShrinksWhileItIsOpenLosesItsMessages)
{
    auto const catalog = read(oneMessage());
    folder_.write("a.cat", "short");

    EXPECT_EQ(text(catalog, 1, 7), "(none)");
}

TEST_F(CatalogFile, withSetsOutOfOrderIsSafeToSearch)
{
    CatalogBytes bytes;
    for (std::uint32_t const id : {5u, 1u, 9u, 2u, 0xFFFFFFFFu, 3u})
        bytes.set(id).message(2, "b").message(1, "a");
    auto const catalog = read(bytes.content());

    for (std::int32_t id = -2; id < 12; ++id)
        text(catalog, id, 1);
    SUCCEED();
}
