#include "examples/modelgen/pumlType.h"
#include "tests/examples/modelgenFixture.h"

using namespace modelgen;
using modelgen::test::spelled;

namespace {

struct Row {
    char const* text;
    char const* spelling;  // null: no type
};

}  // namespace

TEST(PumlType, readsTypesInEveryNotation)
{
    Row const rows[] = {
        {"int", "int"},
        {"a.b::C", "a.b::C"},
        {"::std::string", "std::string"},
        {"List<String>", "List<String>"},
        {"Map< String , List<Book> >", "Map<String,List<Book>>"},
        {"Book[]", "[]<Book>"},
        {"Book[*]", "[]<Book>"},
        {"Book[0..1]", "?<Book>"},
        {"Book[1]", "Book"},
        {"Book[2..5]", "[]<Book>"},
        {"Book?", "?<Book>"},
        {"Book*", "*<Book>"},
        {"const Book&", "&<const Book>"},
        {"Book const*", "*<const Book>"},
        {"String...", "[]<String>"},
        {"unsigned long int", "unsigned long int"},
        {"List<? extends Book>", "List<Book>"},
        {"Class<?>", "Class<?>"},
        {"two words", nullptr},
        {"", nullptr},
        {"List<", nullptr},
        {"List<int", nullptr},
        {"List<>", nullptr},
        {"a[", nullptr},
        {"<int>", nullptr},
        {"\"quoted\"", nullptr},
        {"int int2;", nullptr},
    };
    for (Row const& row : rows) {
        std::optional<Type> const type = readType(row.text);

        ASSERT_EQ(type.has_value(), row.spelling != nullptr) << row.text;
        if (type) {
            EXPECT_EQ(spelled(*type), row.spelling) << row.text;
        }
    }
}

TEST(PumlType, refusesArgumentsThatAreNestedTooDeep)
{
    auto const nested = [](int depth) {
        std::string text = "int";
        for (int i = 0; i < depth; ++i)
            text = "List<" + text + ">";
        return text;
    };

    EXPECT_TRUE(readType(nested(15).c_str()));
    EXPECT_FALSE(readType(nested(16).c_str()));
    EXPECT_FALSE(readType(nested(3000).c_str()));
    EXPECT_FALSE(readType(("int" + std::string(100000, '*')).c_str()));
}

TEST(PumlType, readsMultiplicities)
{
    struct {
        char const* text;
        int expected;  // -1 none, 0 one, 1 optional, 2 many
    } const rows[] = {
        {"1", 0},    {"0..1", 1}, {"*", 2},     {"0..*", 2},   {"1..*", 2},   {"n", 2},
        {"0..n", 2}, {"5", 2},    {"2..4", 2},  {"many", 2},   {"[0..1]", 1}, {"1..1", 0},
        {"", -1},    {"x", -1},   {"1..x", -1}, {"items", -1},
    };
    for (auto const& row : rows) {
        std::optional<Multiplicity> const read = readMultiplicity(row.text);

        int const found = !read ? -1 : read->isMany ? 2 : read->isOptional ? 1 : 0;
        EXPECT_EQ(found, row.expected) << row.text;
    }
}
