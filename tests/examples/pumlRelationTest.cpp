#include "examples/modelgen/pumlRelation.h"
#include "tests/examples/modelgenFixture.h"

using namespace modelgen;

namespace {

// What an end is: G general, W whole, S shared, > arrow head, x excluded, * many, and its role.
std::string told(RelationEnd const& end)
{
    std::string text(end.name.GetString());
    text += end.isGeneral ? " G" : "";
    text += end.isWhole ? " W" : "";
    text += end.isShared ? " S" : "";
    text += end.isArrowHead ? " >" : "";
    text += end.isExcluded ? " x" : "";
    text += end.isMany ? " *" : "";
    return end.role.IsEmpty() ? text : text + " " + end.role.GetString();
}

std::string told(std::string const& text)
{
    std::variant<RelationFault, Relation> const read = readRelation(text.c_str());
    if (RelationFault const* const fault = std::get_if<RelationFault>(&read))
        return *fault == RelationFault::isNone  ? "none"
            : *fault == RelationFault::isBroken ? "broken"
                                                : "unknown";
    Relation const& relation = std::get<Relation>(read);
    std::string const line = relation.isHidden ? " hidden " : relation.isDotted ? " .. " : " -- ";
    std::string const label = relation.label.IsEmpty() ? "" : std::string(" : ") + relation.label.GetString();
    return told(relation.left) + line + told(relation.right) + label;
}

struct Row {
    char const* text;
    char const* expected;
};

}  // namespace

TEST(PumlRelation, readsEveryArrowInBothDirections)
{
    Row const rows[] = {
        {"A <|-- B", "A G -- B"},
        {"A --|> B", "A -- B G"},
        {"A <|.. B", "A G .. B"},
        {"A ..|> B", "A .. B G"},
        {"A ^-- B", "A G -- B"},
        {"A *-- B", "A W -- B"},
        {"A --* B", "A -- B W"},
        {"A o-- B", "A S -- B"},
        {"A --o B", "A -- B S"},
        {"A --> B", "A -- B >"},
        {"A <-- B", "A > -- B"},
        {"A -->> B", "A -- B >"},
        {"A <--> B", "A > -- B >"},
        {"A *--> B", "A W -- B >"},
        {"A <--o B", "A > -- B S"},
        {"A -- B", "A -- B"},
        {"A - B", "A -- B"},
        {"A ..> B", "A .. B >"},
        {"A .. B", "A .. B"},
        {"A x--> B", "A x -- B >"},
        {"A --x B", "A -- B x"},
        {"A-->B", "A -- B >"},
        {"A--|>B", "A -- B G"},
        {"A..B", "A .. B"},
        {"A.x..B.y", "A.x .. B.y"},
        {"A -up-> B", "A -- B >"},
        {"A -l-> B", "A -- B >"},
        {"A <|-left- B", "A G -- B"},
        {"A *-down-> B", "A W -- B >"},
        {"A -[#red,dashed]-> B", "A .. B >"},
        {"A -[bold]-> B", "A -- B >"},
        {"A -[hidden]- B", "A hidden B"},
        {"A ---> B", "A -- B >"},
        {"A ...|> B", "A .. B G"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(told(row.text), row.expected) << row.text;
}

TEST(PumlRelation, readsNamesMultiplicitiesRolesAndLabels)
{
    Row const rows[] = {
        {"\"My A\" --> \"My B\"", "My A -- My B >"},
        {"a::A --> a.b.B", "a::A -- a.b.B >"},
        {"A \"1\" --> \"0..*\" B", "A -- B > *"},
        {"A \"1 owner\" -- \"* items\" B : holds", "A owner -- B * items : holds"},
        {"A \"owner\" -- \"-items 1..*\" B", "A owner -- B * items"},
        {"A -- \"items\\n0..*\" B", "A -- B * items"},
        {"A -- \"{ordered} 0..* items\" B", "A -- B * items"},
        {"A --> B : uses >", "A -- B > : uses >"},
        {"A --> B #green : uses", "A -- B > : uses"},
        {"A --> B <<trace>>", "A -- B >"},
        {"A --> List<B>", "A -- List >"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(told(row.text), row.expected) << row.text;
}

TEST(PumlRelation, readsTheVisibilityOfARole)
{
    std::variant<RelationFault, Relation> const read = readRelation("A --> \"#parts *\" B");

    EXPECT_EQ(std::get<Relation>(read).right.visibility, Visibility::isProtected);
}

TEST(PumlRelation, readsTypeArgumentsOfAnEnd)
{
    std::variant<RelationFault, Relation> const read = readRelation("A --> Map<K, V>");

    ASSERT_EQ(std::get<Relation>(read).right.arguments.size(), 2u);
}

TEST(PumlRelation, tellsUnknownArrowsFromBrokenOnesAndFromOtherLines)
{
    Row const rows[] = {
        {"A +-- B", "unknown"},
        {"A #-- B", "unknown"},
        {"A }-- B", "unknown"},
        {"A == B", "unknown"},
        {"A ~~ B", "unknown"},
        {"A --( B", "unknown"},
        {"A -[ B", "unknown"},
        {"A <|*-- B", "unknown"},
        {"A -->", "broken"},
        {"A --> \"1", "broken"},
        {"A \"1 --> B", "none"},
        {"A \"1\" --> \"\"", "broken"},
        {"A", "none"},
        {"A B", "none"},
        {"A : x", "none"},
        {"-- A", "none"},
        {"", "none"},
        {"A <", "none"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(told(row.text), row.expected) << row.text;
}
