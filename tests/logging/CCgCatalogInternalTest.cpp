#include "logging/CCgCatalog.h"

#include "logging/CCgCatalogCache.h"
#include "logging/CCgCodeset.h"
#include "logging/CCgI18Msg.h"
#include "platform/os/userLanguage.h"
#include "tests/logging/CatalogBytes.h"
#include "tests/logging/Toolkit.h"
#include "tests/support/ScopedEnvironment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using namespace zk::logging;
using testing::ElementsAre;
using zk::test::ScopedEnvironment;

namespace {

// A folder with catalogs, one folder for each locale, and nothing in the environment but where they are.
class Catalogs : public testing::Test {
protected:
    Catalogs() { ccg_purgeCatalogs(); }
    ~Catalogs() override { ccg_purgeCatalogs(); }

    // A catalog in a file "<locale>/<name>.cat" whose only message is a text.
    void write(std::string const& locale, std::string const& text, std::string const& name = "my")
    {
        std::filesystem::create_directories(folder_.path(locale));
        folder_.write(locale + "/" + name + ".cat", contentWith(text));
    }

    static std::string contentWith(std::string const& text)
    {
        CatalogBytes bytes;
        bytes.set(1).message(7, text);
        return bytes.content();
    }

    // The text that the catalog found for a locale has.
    static std::string found(char const* locale, unsigned flags = 0, char const* name = "my")
    {
        CCgCatalog* const catalog = ccg_openCatalog(name, flags, locale);
        std::string const text = ccg_getCatalogText(catalog, 1, 7, "(default)", utf8());
        ccg_closeCatalog(catalog);
        return text;
    }

    static CCgCodeset* utf8() { return ccg_openCodeset("UTF8"); }

    TemporaryFolder folder_;
    ScopedEnvironment const templates_{"NLSPATH", (folder_.path() + "/%L/%N.cat").c_str()};
    ScopedEnvironment const language_{"LANG", "C"};
    ScopedEnvironment const all_{"LC_ALL", nullptr};
    ScopedEnvironment const messages_{"LC_MESSAGES", nullptr};
};

using Paths = std::vector<std::string>;

// The paths that a catalog "n" may have.
Paths pathsIn(char const* templates, char const* locale, unsigned flags = 0)
{
    ScopedEnvironment const path("NLSPATH", templates);
    return catalogPaths("n", flags, locale);
}

}  // namespace

TEST(CatalogPaths, areTriedFromTheLocaleDownToC)
{
    EXPECT_THAT(pathsIn("%L/%N", "fr_CA.UTF-8"), ElementsAre("fr_CA/n", "fr/n", "fr_FR/n", "C/n"));
    EXPECT_THAT(pathsIn("%L/%N", "fr"), ElementsAre("fr/n", "fr_FR/n", "C/n"));
    EXPECT_THAT(pathsIn("%L/%N", "en_US"), ElementsAre("en_US/n", "en/n", "C/n"));
    EXPECT_THAT(pathsIn("%L/%N", "C"), ElementsAre("C/n"));
}

TEST(CatalogPaths, areLeftOutByFlags)
{
    EXPECT_THAT(pathsIn("%L/%N", "fr_CA", CCG_CAT_NO_LANGUAGE), ElementsAre("fr_CA/n", "fr_FR/n", "C/n"));
    EXPECT_THAT(pathsIn("%L/%N", "fr_CA", CCG_CAT_NO_ALTERNATE), ElementsAre("fr_CA/n", "fr/n", "C/n"));
    EXPECT_THAT(pathsIn("%L/%N", "fr_CA", CCG_CAT_NO_C), ElementsAre("fr_CA/n", "fr/n", "fr_FR/n"));
}

TEST(CatalogPaths, comeFromOneTemplateAfterTheOther)
{
    EXPECT_THAT(pathsIn("a/%L;b/%L:c", "de"), ElementsAre("a/de", "a/C", "b/de", "b/C", "c"));
    EXPECT_THAT(pathsIn(";;aa::", "de"), ElementsAre("aa"));
}

TEST(CatalogPaths, mayBeginWithADrive)
{
    EXPECT_THAT(pathsIn("C:\\x\\%N.cat", "de"), ElementsAre("C:\\x\\n.cat"));
    EXPECT_THAT(pathsIn("C:\\x\\%N.cat:D:/y", "de"), ElementsAre("C:\\x\\n.cat", "D:/y"));
}

TEST(CatalogPaths, withoutTemplatesAreTheNameInTheCurrentFolder)
{
    EXPECT_THAT(pathsIn(nullptr, "fr"), ElementsAre("n.cat"));
    EXPECT_THAT(pathsIn("", "fr"), ElementsAre("n.cat"));
}

TEST(CatalogPaths, holdThePartsOfTheLocale)
{
    EXPECT_THAT(pathsIn("%l-%t-%c-%L-%N", "de_DE", CCG_CAT_NO_LANGUAGE | CCG_CAT_NO_C),
                ElementsAre("de-DE--de_DE-n"));
    EXPECT_THAT(pathsIn("%l-%t-%c", "german.UTF-8", CCG_CAT_NO_LANGUAGE | CCG_CAT_NO_C),
                ElementsAre("german--UTF-8"));
}

TEST(CatalogPaths, keepAPercentSignThatSaysNothing)
{
    EXPECT_THAT(pathsIn("100%%/%x%", "C"), ElementsAre("100%%/%x%"));
}

TEST(CatalogPaths, ofANameWithASeparatorAreThatName)
{
    ScopedEnvironment const path("NLSPATH", "%L/%N");

    EXPECT_THAT(catalogPaths("sub/n", 0, "fr"), ElementsAre("sub/n"));
    EXPECT_THAT(catalogPaths("sub\\n", 0, "fr"), ElementsAre("sub\\n"));
}

TEST(CatalogPaths, dependOnTheLanguageOfTheUser)
{
    ScopedEnvironment const path("NLSPATH", "%L");
    ScopedEnvironment const all("LC_ALL", "it_IT");
    ScopedEnvironment const messages("LC_MESSAGES", "es_ES");
    ScopedEnvironment const language("LANG", "de_DE");
    auto const first = [](unsigned flags) { return catalogPaths("n", flags, nullptr).front(); };

    EXPECT_EQ(first(0), "de_DE");
    EXPECT_EQ(first(CCG_CAT_LC_VARIABLES), "it_IT");
    ScopedEnvironment const noAll("LC_ALL", "");
    EXPECT_EQ(first(CCG_CAT_LC_VARIABLES), "es_ES");
    ScopedEnvironment const noMessages("LC_MESSAGES", nullptr);
    EXPECT_EQ(first(CCG_CAT_LC_VARIABLES), "de_DE");
    ScopedEnvironment const noLanguage("LANG", nullptr);
    std::string const system = zk::os::userLanguage();
    EXPECT_EQ(first(0), system.empty() ? "C" : system);
}

TEST(NlsPath, isSetAndReadInTheEnvironment)
{
    ScopedEnvironment const before("NLSPATH", nullptr);

    EXPECT_EQ(ccg_getNlsPath(), "");
    EXPECT_TRUE(ccg_prependNlsPath("b"));
    EXPECT_TRUE(ccg_prependNlsPath("a"));
    EXPECT_EQ(ccg_getNlsPath(), "a;b");
    EXPECT_TRUE(ccg_setNlsPath("c"));
    EXPECT_EQ(ccg_getNlsPath(), "c");
    EXPECT_TRUE(ccg_prependNlsPath(nullptr));
    EXPECT_EQ(ccg_getNlsPath(), "c");
}

TEST_F(Catalogs, areFoundByTheLocale)
{
    write("C", "English");
    write("fr_FR", "French");
    write("de", "German");

    EXPECT_EQ(found("fr_FR"), "French");
    EXPECT_EQ(found("fr_CA"), "French");
    EXPECT_EQ(found("de_AT"), "German");
    EXPECT_EQ(found("it_IT"), "English");
    EXPECT_EQ(found("it_IT", CCG_CAT_NO_C), "(default)");
}

TEST_F(Catalogs, thatAreMissingGiveTheDefaultText)
{
    EXPECT_EQ(found("fr_FR"), "(default)");
    EXPECT_EQ(ccg_openCatalog("my", 0, "fr_FR"), nullptr);
    EXPECT_EQ(ccg_openCatalog(nullptr, 0, "fr_FR"), nullptr);
    ccg_closeCatalog(nullptr);
}

TEST_F(Catalogs, withoutTheMessageGiveTheDefaultText)
{
    write("C", "English");
    CCgCatalog* const catalog = ccg_openCatalog("my", 0, nullptr);

    EXPECT_STREQ(ccg_getCatalogText(catalog, 1, 8, "(default)", utf8()), "(default)");
    EXPECT_STREQ(ccg_getCatalogText(catalog, 2, 7, "(default)", utf8()), "(default)");
    EXPECT_EQ(ccg_getCatalogText(catalog, 2, 7, nullptr, utf8()), nullptr);
    ccg_closeCatalog(catalog);
}

TEST_F(Catalogs, endTheSearchAtAFileThatIsNone)
{
    write("C", "English");
    std::filesystem::create_directories(folder_.path("de"));
    folder_.write("de/my.cat", "*nazguL* and no catalog");

    EXPECT_EQ(found("de"), "(default)");
}

TEST_F(Catalogs, areOpenedByTheirPath)
{
    write("C", "English");

    EXPECT_EQ(found("de", 0, (folder_.path("C") + "/my.cat").c_str()), "English");
    EXPECT_EQ(found("de", 0, (folder_.path("C") + "/missing.cat").c_str()), "(default)");
}

TEST_F(Catalogs, giveTextsInCodeSets)
{
    write("C", "\xC3\xA9\xE3\x81\x82");
    CCgCatalog* const catalog = ccg_openCatalog("my", 0, nullptr);
    CCgCodeset* const latin = ccg_openCodeset("1252");
    CCgCodeset* const japanese = ccg_openCodeset("932");

    char const* const text = ccg_getCatalogText(catalog, 1, 7, "", latin);
    EXPECT_STREQ(text, "\xE9?");
    EXPECT_EQ(ccg_getCatalogText(catalog, 1, 7, "", latin), text) << "converted once";
    EXPECT_EQ(latin->lostCharacters, 1);
    EXPECT_STREQ(ccg_getCatalogText(catalog, 1, 7, "", japanese), "?\x82\xA0");
    EXPECT_STREQ(text, "\xE9?");
    EXPECT_STREQ(ccg_getCatalogText(catalog, 1, 7, "", nullptr), "\xE9?")
        << "plain bytes are the default here";
    EXPECT_STREQ(ccg_getCatalogText(catalog, 1, 7, "", utf8()), "\xC3\xA9\xE3\x81\x82");

    ccg_closeCodeset(latin);
    ccg_closeCodeset(japanese);
    ccg_closeCatalog(catalog);
}

TEST_F(Catalogs, stayInTheCacheWhenTheyAreClosed)
{
    write("C", "English");

    CCgCatalog* const first = ccg_openCatalog("my", 0, nullptr);
    CCgCatalog* const second = ccg_openCatalog("my", 0, nullptr);
    ccg_closeCatalog(first);
    ccg_closeCatalog(second);
    CCgCatalog* const third = ccg_openCatalog("my", 0, nullptr);

    EXPECT_EQ(first, second);
    EXPECT_EQ(first, third);
    EXPECT_EQ(catalogsInCache(), 1u);
    ccg_closeCatalog(third);
}

TEST_F(Catalogs, inTheCacheAreNotReadAgain)
{
    write("C", "old text");
    EXPECT_EQ(found(nullptr), "old text");
    write("C", "new text");

    EXPECT_EQ(found(nullptr), "old text");
}

TEST_F(Catalogs, areReadAnewAfterAPurge)
{
    write("C", "old");
    EXPECT_EQ(found(nullptr), "old");

    ccg_purgeCatalogs();
    EXPECT_EQ(catalogsInCache(), 0u);
    write("C", "new");

    EXPECT_EQ(found(nullptr), "new");
}

TEST_F(Catalogs, thatAreOpenLiveBeyondAPurge)
{
    write("C", "text");
    CCgCatalog* const catalog = ccg_openCatalog("my", 0, nullptr);

    ccg_purgeCatalogs();

    EXPECT_STREQ(ccg_getCatalogText(catalog, 1, 7, "", utf8()), "text");
    ccg_closeCatalog(catalog);
}

TEST_F(Catalogs, makeTheCacheGrowWhenAllAreInUse)
{
    std::vector<CCgCatalog*> open;
    for (int i = 0; i < 11; ++i) {
        std::string const name = "c" + std::to_string(i);
        write("C", name, name);
        open.push_back(ccg_openCatalog(name.c_str(), 0, nullptr));
        EXPECT_EQ(catalogPlaces(), i < 10 ? 10u : 20u);
    }

    EXPECT_EQ(catalogsInCache(), 11u);
    for (CCgCatalog* const catalog : open)
        ccg_closeCatalog(catalog);
}

TEST_F(Catalogs, giveTheirPlaceToTheNextOneIfTheyWereUnusedLongest)
{
    for (int i = 0; i < 10; ++i) {
        std::string const name = "c" + std::to_string(i);
        write("C", name, name);
        found(nullptr, 0, name.c_str());
    }
    CCgCatalog* const used = ccg_openCatalog("c0", 0, nullptr);
    CCgCatalog* const oldest = ccg_openCatalog("c1", 0, nullptr);
    ccg_closeCatalog(oldest);
    write("C", "next", "next");

    EXPECT_EQ(found(nullptr, 0, "next"), "next");

    EXPECT_EQ(catalogPlaces(), 10u);
    EXPECT_EQ(catalogsInCache(), 10u);
    EXPECT_EQ(ccg_openCatalog("c0", 0, nullptr), used) << "it was in use";
    EXPECT_EQ(ccg_openCatalog("c1", 0, nullptr), oldest) << "it was used later than the others";
    for (CCgCatalog* const catalog : {used, used, oldest})
        ccg_closeCatalog(catalog);
}

TEST_F(Catalogs, translateMessages)
{
    write("C", "%s has %d units");
    write("de", "%2$d Einheiten in %1$s");
    CCgI18Msg message("my", 1, 7, "default of %s");
    message.add("a.cpp");
    message.add(std::int32_t(12));

    EXPECT_EQ(taken(ccg_messageText(message)), "a.cpp has 12 units");
    message.locale = "de_DE";
    EXPECT_EQ(taken(ccg_messageText(message)), "12 Einheiten in a.cpp");
    message.locale = nullptr;
    ScopedEnvironment const german("LANG", "de");
    EXPECT_EQ(taken(ccg_messageText(message)), "12 Einheiten in a.cpp");
}

TEST_F(Catalogs, leaveMessagesThatTheyLackToTheDefaultText)
{
    write("C", "text");
    CCgI18Msg message("my", 1, 99, "default of %s");
    message.add("a.cpp");

    EXPECT_EQ(taken(ccg_messageText(message)), "default of a.cpp");
    message.catalogName = "missing";
    EXPECT_EQ(taken(ccg_messageText(message)), "default of a.cpp");
}

TEST_F(Catalogs, whoseTextDoesNotFitTheParametersLeaveItToTheDefaultTextAsItStands)
{
    write("C", "%3$s");
    CCgI18Msg message("my", 1, 7, "default of %s");
    message.add("a.cpp");

    EXPECT_EQ(taken(ccg_messageText(message)), "default of %s");
}

TEST_F(Catalogs, areLookedForAnewWhenTheEnvironmentChanges)
{
    write("C", "English");
    write("de", "German");
    TemporaryFolder other;
    other.write("my.cat", contentWith("other"));
    CCgI18Msg const message("my", 1, 7, "default");

    EXPECT_EQ(taken(ccg_messageText(message)), "English");
    {
        ScopedEnvironment const german("LANG", "de");
        EXPECT_EQ(taken(ccg_messageText(message)), "German");
    }
    EXPECT_EQ(taken(ccg_messageText(message)), "English");
    {
        ScopedEnvironment const templates("NLSPATH", (other.path() + "/%N.cat").c_str());
        EXPECT_EQ(taken(ccg_messageText(message)), "other");
    }
    EXPECT_EQ(taken(ccg_messageText(message)), "English");
    ccg_purgeCatalogs();
}

TEST_F(Catalogs, openedMeanwhileChangeNothingForMessages)
{
    write("C", "%d");
    CCgI18Msg message("my", 1, 7, "default");
    message.add(std::int32_t(1));
    EXPECT_EQ(taken(ccg_messageText(message)), "1");

    for (int i = 0; i < 30; ++i) {
        std::string const name = "c" + std::to_string(i);
        write("C", name, name);
        found(nullptr, 0, name.c_str());
        EXPECT_EQ(taken(ccg_messageText(message)), "1");
    }
}

class TranslatedRecords : public ToolkitTest { };

TEST_F(TranslatedRecords, areInTheLanguageOfTheirFormatter)
{
    CatalogBytes english;
    english.set(1).message(7, "%s has %d units");
    CatalogBytes german;
    german.set(1).message(7, "%2$d Einheiten in %1$s");
    folder_.makeFolder("C");
    folder_.makeFolder("de");
    folder_.write("C/my.cat", english.content());
    folder_.write("de/my.cat", german.content());
    ScopedEnvironment const templates("NLSPATH", (folder_.path() + "/%L/%N.cat").c_str());
    ScopedEnvironment const language("LANG", "C");
    start("german.className=ccg_basicformatter\ngerman.locale=de_DE\n"
          "plain.className=ccg_basicformatter\n");
    Owned const germanLines = object("german");
    Owned const plainLines = object("plain");
    CCgEvent event;
    event.message = CCgI18Msg("my", 1, 7, "default");
    event.message.add("a.cpp");
    event.message.add(std::int32_t(12));

    ccg_lock();
    EXPECT_THAT(taken(germanLines->objClass->formatter.format(germanLines.get(), &event)),
                testing::EndsWith(" 12 Einheiten in a.cpp\n"));
    EXPECT_THAT(taken(plainLines->objClass->formatter.format(plainLines.get(), &event)),
                testing::EndsWith(" a.cpp has 12 units\n"));
    ccg_unlock();
}

TEST_F(TranslatedRecords, ofTheToolkitItselfComeFromItsCatalog)
{
    CatalogBytes bytes;
    bytes.set(1).message(63, "keine Klasse f\xC3\xBCr %1$s").message(100, "Protokoll");
    folder_.write("ccgmsg.cat", bytes.content());
    ScopedEnvironment const templates("NLSPATH", (folder_.path() + "/%N.cat").c_str());
    start();

    object("nothing");

    EXPECT_EQ(texts("errors").at(0), "keine Klasse f\xC3\xBCr nothing");
    EXPECT_EQ(taken(ccg_getClassDescription("ccg_basiclogger")), "Protokoll");
    EXPECT_EQ(taken(ccg_getClassDescription("ccg_pdlogger")),
              "Logger for messages with detailed problem data");
}

TEST_F(TranslatedRecords, leaveNoCatalogOpenWhenTheToolkitStops)
{
    CatalogBytes bytes;
    bytes.set(1).message(63, "text");
    folder_.write("ccgmsg.cat", bytes.content());
    ScopedEnvironment const templates("NLSPATH", (folder_.path() + "/%N.cat").c_str());
    start();
    object("nothing");
    EXPECT_EQ(catalogsInCache(), 1u);

    ccg_shutdownManager();

    EXPECT_EQ(catalogsInCache(), 0u);
}
