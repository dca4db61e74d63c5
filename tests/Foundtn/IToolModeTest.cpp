#include "Foundtn/util/IToolMode.h"

#include "tests/support/freshProcess.h"

#include <gtest/gtest.h>

#include <type_traits>

#include <sstream>

namespace {

using Query = int (*)();

struct LanguageRow {
    IToolMode::Lang lang;
    char const* name;
    Query isCurrent;
};

LanguageRow const languages[] = {
    {IToolMode::LangCpp, "C++", IToolMode::isLangCpp},
    {IToolMode::LangC, "C", IToolMode::isLangC},
    {IToolMode::LangJava, "Java", IToolMode::isLangJava},
    {IToolMode::LangCorba, "Unknown", IToolMode::isLangCorba},
    {IToolMode::LangAda, "Ada", IToolMode::isLangAda},
    {IToolMode::LangCom, "Unknown", IToolMode::isLangCom},
    {IToolMode::LangCSharp, "C#", IToolMode::isLangCSharp},
};

TEST(ToolMode, numbersTheLanguages)
{
    EXPECT_EQ(IToolMode::LangCpp, 0);
    EXPECT_EQ(IToolMode::LangC, 1);
    EXPECT_EQ(IToolMode::LangJava, 2);
    EXPECT_EQ(IToolMode::LangCorba, 3);
    EXPECT_EQ(IToolMode::LangAda, 4);
    EXPECT_EQ(IToolMode::LangCom, 5);
    EXPECT_EQ(IToolMode::LangCSharp, 6);
}

TEST_IN_FRESH_PROCESS(ToolMode, hasNoLanguageBeforeTheFirstIsSet)
{
    EXPECT_EQ(IToolMode::getLangEnum(), IToolMode::LangCpp);
    for (LanguageRow const& row : languages)
        EXPECT_EQ(row.isCurrent(), 0) << row.lang;
}

TEST(ToolMode, setsALanguageByValueAndAnswersForItAlone)
{
    for (LanguageRow const& row : languages) {
        IToolMode::setLang(row.lang);

        EXPECT_EQ(IToolMode::getLangEnum(), row.lang);
        EXPECT_STREQ(IToolMode::getLang(), row.name);
        for (LanguageRow const& other : languages)
            EXPECT_EQ(other.isCurrent(), other.lang == row.lang) << row.lang << ' ' << other.lang;
    }
}

TEST(ToolMode, namesLanguagesByValue)
{
    for (LanguageRow const& row : languages)
        EXPECT_STREQ(IToolMode::getLang(row.lang), row.name);
    EXPECT_STREQ(IToolMode::getLang(static_cast<IToolMode::Lang>(7)), "Unknown");
    EXPECT_STREQ(IToolMode::getLang(static_cast<IToolMode::Lang>(-1)), "Unknown");
}

TEST_IN_FRESH_PROCESS(ToolMode, setsALanguageByItsExactName)
{
    IToolMode::setLang("csharp");
    EXPECT_EQ(IToolMode::isLangCpp(), 0) << "an unknown name chooses nothing";

    for (char const* const name : {"C#", "CSharp"}) {
        IToolMode::setLang(IToolMode::LangCpp);
        IToolMode::setLang(CString(name));
        EXPECT_EQ(IToolMode::isLangCSharp(), 1) << name;
    }
    for (char const* const name : {"csharp", "c++", "JAVA", "Unknown", "", " C", "C "}) {
        IToolMode::setLang(CString(name));
        EXPECT_EQ(IToolMode::isLangCSharp(), 1) << "changed by '" << name << "'";
    }
    for (LanguageRow const& row : languages) {
        if (CString(row.name) == "Unknown")
            continue;
        IToolMode::setLang(CString(row.name));
        EXPECT_EQ(IToolMode::getLangEnum(), row.lang) << row.name;
    }
}

TEST(ToolMode, givesTheCurrentLanguageForAnUnknownName)
{
    IToolMode::setLang(IToolMode::LangAda);

    EXPECT_EQ(IToolMode::getLangAsEnum("Java"), IToolMode::LangJava);
    EXPECT_EQ(IToolMode::getLangAsEnum("CSharp"), IToolMode::LangCSharp);
    EXPECT_EQ(IToolMode::getLangAsEnum("java"), IToolMode::LangAda);
    EXPECT_EQ(IToolMode::getLangAsEnum("Unknown"), IToolMode::LangAda);
}

TEST_IN_FRESH_PROCESS(ToolMode, answersForANameEvenBeforeALanguageIsChosen)
{
    EXPECT_EQ(IToolMode::isLangCpp("C++"), 1);
    EXPECT_EQ(IToolMode::isLangC("C"), 1);
    EXPECT_EQ(IToolMode::isLangJava("Java"), 1);
    EXPECT_EQ(IToolMode::isLangAda("Ada"), 1);
    EXPECT_EQ(IToolMode::isLangCSharp("C#"), 1);
    EXPECT_EQ(IToolMode::isLangCSharp("CSharp"), 1);
    EXPECT_EQ(IToolMode::isLangC("C++"), 0);
    EXPECT_EQ(IToolMode::isLangJava("Ada"), 0);

    EXPECT_EQ(IToolMode::isLangCpp("nonsense"), 1) << "as the current language does";
    IToolMode::setLang(IToolMode::LangJava);
    EXPECT_EQ(IToolMode::isLangCpp("nonsense"), 0);
    EXPECT_EQ(IToolMode::isLangJava("nonsense"), 1);
}

TEST(ToolMode, readsALanguageFromOneWordOfAStream)
{
    std::istringstream in("  Java nonsense C#\nCSharp Ada C C++");
    auto const next = [&in](IToolMode::Lang lang) {
        in >> lang;
        return lang;
    };

    EXPECT_EQ(next(IToolMode::LangCpp), IToolMode::LangJava);
    EXPECT_EQ(next(IToolMode::LangCom), IToolMode::LangCom) << "unchanged by an unknown word";
    EXPECT_EQ(next(IToolMode::LangCpp), IToolMode::LangCSharp);
    EXPECT_EQ(next(IToolMode::LangCpp), IToolMode::LangCSharp);
    EXPECT_EQ(next(IToolMode::LangCpp), IToolMode::LangAda);
    EXPECT_EQ(next(IToolMode::LangCpp), IToolMode::LangC);
    EXPECT_EQ(next(IToolMode::LangC), IToolMode::LangCpp);
    EXPECT_EQ(next(IToolMode::LangAda), IToolMode::LangAda) << "unchanged at the end of the stream";
    EXPECT_FALSE(in);
}

TEST_IN_FRESH_PROCESS(ToolMode, beginsInTheDeveloperPerspectiveWithNoMode)
{
    EXPECT_EQ(IToolMode::getPerspective(), IToolMode::DeveloperPerspective);
    EXPECT_EQ(IToolMode::getToolSet(), IToolMode::ToolSet{0});
    EXPECT_EQ(IToolMode::getZktMode(), 0);
    EXPECT_EQ(IToolMode::isReader(), 0);
    EXPECT_EQ(IToolMode::isConverter(), 0);
    EXPECT_FALSE(IToolMode::isInGlenImport());
    EXPECT_FALSE(IToolMode::isInKernelMode());
    EXPECT_FALSE(IToolMode::isMultiLanguage());
    EXPECT_FALSE(IToolMode::isInModelServerMode());
    EXPECT_FALSE(IToolMode::isInComApiMode());
    EXPECT_FALSE(IToolMode::isProcessOwnerAnotherZentrika());
}

TEST(ToolMode, tellsThePerspective)
{
    IToolMode::setPerspective(IToolMode::SystemPerspective);
    EXPECT_EQ(IToolMode::getPerspective(), 1);
    EXPECT_EQ(IToolMode::isSystemPerspective(), 1);
    EXPECT_EQ(IToolMode::isDeveloperPerspective(), 0);

    IToolMode::setPerspective(IToolMode::DeveloperPerspective);
    EXPECT_EQ(IToolMode::getPerspective(), 0);
    EXPECT_EQ(IToolMode::isSystemPerspective(), 0);
    EXPECT_EQ(IToolMode::isDeveloperPerspective(), 1);
}

TEST(ToolMode, takesThePerspectiveFromTheToolSet)
{
    for (int number = -1; number <= 6; ++number) {
        IToolMode::ToolSet const toolSet{number};
        IToolMode::setPerspective(number == 2 ? IToolMode::SystemPerspective
                                              : IToolMode::DeveloperPerspective);

        IToolMode::setToolSet(toolSet);

        EXPECT_EQ(IToolMode::getToolSet(), toolSet);
        EXPECT_EQ(IToolMode::isSystemPerspective(), number == 1 || number == 4) << number;
    }
}

TEST_IN_FRESH_PROCESS(ToolMode, countsAToolSetAsAChosenLanguage)
{
    EXPECT_EQ(IToolMode::isLangCpp(), 0);

    IToolMode::setToolSet(IToolMode::ToolSet{3});

    EXPECT_EQ(IToolMode::isLangCpp(), 1);
}

TEST(ToolMode, tellsTheServer)
{
    struct Row {
        int mode, isKM, isZMM;
    };
    for (Row const& row : {Row{0, 0, 0}, Row{1, 1, 0}, Row{2, 0, 1}, Row{3, 0, 0}}) {
        IToolMode::setZktMode(static_cast<IToolMode::ZktMode>(row.mode));

        EXPECT_EQ(IToolMode::getZktMode(), row.mode);
        EXPECT_EQ(IToolMode::isKM(), row.isKM) << row.mode;
        EXPECT_EQ(IToolMode::isZMM(), row.isZMM) << row.mode;
    }
}

TEST(ToolMode, keepsTheReaderModeAsItWasGiven)
{
    IToolMode::setIsReader(7);
    EXPECT_EQ(IToolMode::isReader(), 7);
    IToolMode::setIsReader(0);
    EXPECT_EQ(IToolMode::isReader(), 0);
}

TEST(ToolMode, isNeverAConverter)
{
    IToolMode::setIsConverter(1);

    EXPECT_EQ(IToolMode::isConverter(), 0);
}

TEST(ToolMode, keepsEachSwitchApart)
{
    struct Switch {
        void (*set)(bool);
        bool (*get)();
    };
    Switch const switches[] = {
        {IToolMode::setIsInGlen, IToolMode::isInGlenImport},
        {IToolMode::setIsInKernelMode, IToolMode::isInKernelMode},
        {IToolMode::setIsInModelServerMode, IToolMode::isInModelServerMode},
        {IToolMode::setProcessOwnerAnotherZentrika, IToolMode::isProcessOwnerAnotherZentrika},
        {[](bool on) { IToolMode::setIsInComApiMode(on); }, IToolMode::isInComApiMode},
    };
    for (Switch const& on : switches) {
        on.set(true);
        for (Switch const& other : switches)
            EXPECT_EQ(other.get(), &other == &on);
        on.set(false);
        EXPECT_FALSE(on.get());
    }
}

TEST(ToolMode, isMultiLanguageInModelServerModeToo)
{
    for (bool const multi : {false, true}) {
        for (bool const server : {false, true}) {
            IToolMode::setMultiLanguage(multi);
            IToolMode::setIsInModelServerMode(server);
            EXPECT_EQ(IToolMode::isMultiLanguage(), multi || server);
        }
    }
    IToolMode::setMultiLanguage(false);
    IToolMode::setIsInModelServerMode(false);
}

TEST(ToolMode, givesTheFormerComApiMode)
{
    EXPECT_FALSE(IToolMode::setIsInComApiMode(true));
    EXPECT_TRUE(IToolMode::setIsInComApiMode(true));
    EXPECT_TRUE(IToolMode::setIsInComApiMode(false));
    EXPECT_FALSE(IToolMode::setIsInComApiMode(false));
}

TEST(ToolMode, supportsPanelDiagrams)
{
    EXPECT_TRUE(IToolMode::IsPanelDiagramSupported());
}

static_assert(std::has_virtual_destructor_v<IToolLangLocalSwitcher>);

// A switcher that takes the language of a later moment for the one to put back.
class LaterSwitcher : public IToolLangLocalSwitcher {
public:
    void take() { InitClassData(); }
};

TEST(ToolLangLocalSwitcher, putsBackTheLanguageThatADerivedClassTookLast)
{
    IToolMode::setLang(IToolMode::LangCpp);
    {
        LaterSwitcher later;
        IToolMode::setLang(IToolMode::LangAda);
        later.take();
        IToolMode::setLang(IToolMode::LangJava);
    }
    EXPECT_EQ(IToolMode::getLangEnum(), IToolMode::LangAda);
    IToolMode::setLang(IToolMode::LangCpp);
}

TEST(ToolLangLocalSwitcher, restoresTheLanguageAtTheEndOfItsScope)
{
    IToolMode::setLang(IToolMode::LangJava);
    {
        IToolLangLocalSwitcher const outer(IToolMode::LangCorba);
        EXPECT_EQ(IToolMode::getLangEnum(), IToolMode::LangCorba);
        {
            IToolLangLocalSwitcher const inner(CString("CSharp"));
            EXPECT_EQ(IToolMode::getLangEnum(), IToolMode::LangCSharp);
        }
        EXPECT_EQ(IToolMode::getLangEnum(), IToolMode::LangCorba);
    }
    EXPECT_EQ(IToolMode::getLangEnum(), IToolMode::LangJava);
}

TEST(ToolLangLocalSwitcher, savesWithoutChangingAndIgnoresUnknownNames)
{
    IToolMode::setLang(IToolMode::LangAda);
    {
        IToolLangLocalSwitcher const saves;
        EXPECT_EQ(IToolMode::getLangEnum(), IToolMode::LangAda);
        IToolMode::setLang(IToolMode::LangC);
    }
    EXPECT_EQ(IToolMode::getLangEnum(), IToolMode::LangAda);
    {
        IToolLangLocalSwitcher const ignores(CString("nonsense"));
        EXPECT_EQ(IToolMode::getLangEnum(), IToolMode::LangAda);
    }
}

TEST_IN_FRESH_PROCESS(ToolLangLocalSwitcher, countsAsHavingChosenALanguageInsideAndAfterwards)
{
    {
        IToolLangLocalSwitcher const inJava(IToolMode::LangJava);
        EXPECT_EQ(IToolMode::isLangJava(), 1);
    }
    EXPECT_EQ(IToolMode::isLangCpp(), 1);
}

TEST_IN_FRESH_PROCESS(ToolLangLocalSwitcher, choosesALanguageOnlyAtItsEndWhenItIsGivenNone)
{
    {
        IToolLangLocalSwitcher const saves;
        EXPECT_EQ(IToolMode::isLangCpp(), 0);
    }
    EXPECT_EQ(IToolMode::isLangCpp(), 1);
}

}  // namespace
