#include "examples/modelgen/cppReserved.h"
#include "tests/examples/modelgenFixture.h"

using namespace modelgen;
using modelgen::test::Generated;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Key;

TEST(CppNames, makesIdentifiersOfAnyText)
{
    struct {
        char const* text;
        char const* identifier;
    } const rows[] = {
        {"Book", "Book"},
        {"My Class", "My_Class"},
        {"../x", "x"},
        {"/etc/passwd", "etc_passwd"},
        {"a/b", "a_b"},
        {"C:\\x", "C_x"},
        {"class", "class_"},
        {"errno", "errno_"},
        {"std", "std_"},
        {"1st", "n1st"},
        {"__x__y__", "x_y"},
        {"_Upper", "Upper"},
        {"", "unnamed"},
        {"...", "unnamed"},
        {"\xC3\xA4", "u00E4"},
        {"Gr\xC3\xB6\xC3\x9F"
         "e",
         "Gru00F6u00DFe"},
        {"\xF0\x9F\x98\x80", "u1F600"},
        {"\xFF\xFE", "u00FFu00FE"},
        {"\xC3", "u00C3"},
        {"a\xE2\x82", "au00E2u0082"},
    };
    for (auto const& row : rows)
        EXPECT_EQ(cppIdentifier(row.text), row.identifier) << row.text;
}

TEST(CppNames, shortensLongNamesWithoutMakingThemEqual)
{
    CString const one = cppIdentifier(CString('x', 100000) + "1");
    CString const other = cppIdentifier(CString('x', 100000) + "2");

    EXPECT_EQ(one.GetLength(), 120);
    EXPECT_NE(one, other);
}

TEST(CppNames, knowsWhatIsReserved)
{
    EXPECT_TRUE(isReservedWord("while"));
    EXPECT_TRUE(isReservedWord("EOF"));
    EXPECT_FALSE(isReservedWord("Book"));
    EXPECT_TRUE(isReservedGlobally("time"));
    EXPECT_FALSE(isReservedGlobally("times"));
    EXPECT_TRUE(isDeviceName("com1"));
    EXPECT_FALSE(isDeviceName("com"));
}

TEST(CppNames, numbersEqualNames)
{
    UniqueNames names;

    EXPECT_EQ(names.claim("a"), "a");
    EXPECT_EQ(names.claim("a"), "a2");
    EXPECT_EQ(names.claim("a"), "a3");
    EXPECT_EQ(names.claim("a2"), "a22");
}

TEST(CppNames, neverLeadsOutOfTheFolder)
{
    for (char const* const name : {"../x", "../../x", "/etc/x", "a/../../b", "C:\\x", "..", ".", "\\\\srv\\x",
                                   "a\\b", "~", "x:y", "*", "?", "nul.", "a b."}) {
        Generated const made(std::string("class \"") + name + "\"\npackage \"" + name + "\" {\n class \"" +
                             name + "\"\n}\n");

        EXPECT_FALSE(made.hasErrors()) << made.messages();
        for (auto const& [path, content] : made.files) {
            EXPECT_EQ(
                path.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./"),
                std::string::npos)
                << path;
            EXPECT_NE(path.front(), '/') << path;
            EXPECT_EQ(path.find(".."), std::string::npos) << path;
            EXPECT_EQ(path.find("//"), std::string::npos) << path;
        }
    }
}

TEST(CppNames, keepsFilesApartThatDifferInCaseAlone)
{
    Generated const made("enum Book\nenum book\npackage P {\n enum X\n}\npackage p {\n enum X\n}\n");

    EXPECT_THAT(made.files, ElementsAre(Key("Book.h"), Key("P/X.h"), Key("book2.h"), Key("p2/X.h")));
    EXPECT_THAT(made.file("book2.h"), HasSubstr("enum class book {"));
    EXPECT_THAT(made.file("p2/X.h"), HasSubstr("namespace p {"));
    EXPECT_THAT(made.messages(), HasSubstr("m.puml:3: warning: the files of 'book' are called 'book2'\n"));
}

TEST(CppNames, keepsClassesApartThatBecomeOneIdentifier)
{
    Generated const made("enum \"a b\"\nenum \"a-b\"\n");

    EXPECT_THAT(made.files, ElementsAre(Key("a_b.h"), Key("a_b2.h")));
    EXPECT_THAT(made.messages(), HasSubstr("m.puml:3: warning: class 'a-b' is called a_b2 in code\n"));
}

TEST(CppNames, givesNoFileTheNameOfADevice)
{
    Generated const made("enum con\nenum LPT1\npackage aux {\n enum X\n}\n");

    EXPECT_THAT(made.files, ElementsAre(Key("LPT1_.h"), Key("aux_/X.h"), Key("con_.h")));
    EXPECT_THAT(made.file("con_.h"), HasSubstr("enum class con {"));
}

TEST(CppNames, givesNamesThatTheLibraryHasAnUnderscore)
{
    Generated const made("enum time\npackage system {\n enum time\n}\npackage std {\n enum X\n}\n");

    EXPECT_THAT(made.files, ElementsAre(Key("std_/X.h"), Key("system_/time.h"), Key("time_.h")));
}

TEST(CppNames, givesWayToAClassThatIsCalledLikeAPackage)
{
    Generated const made("package Order {\n enum X\n}\nenum Order\n");

    EXPECT_THAT(made.file("Order.h"), HasSubstr("enum class Order {"));
    EXPECT_THAT(made.file("Order2/X.h"), HasSubstr("namespace Order2 {"));
}

TEST(CppNames, shortensNamesOfFiles)
{
    Generated const made("enum " + std::string(5000, 'x') + "\n");

    ASSERT_EQ(made.files.size(), 1u);
    EXPECT_EQ(made.files.begin()->first.size(), 82u);
}
