#include "tests/logging/Toolkit.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct ReleaseNode {
    void operator()(CCgObjConfig* node) const { ccg_releaseConfig(node); }
};
using Node = std::unique_ptr<CCgObjConfig, ReleaseNode>;

Node node(char const* name)
{
    return Node(ccg_getConfig(name));
}

std::string lookedUp(char const* name, char const* key)
{
    Node const start = node(name);
    bool found = false;
    std::string const value = taken(ccg_lookupConfig(start.get(), key, &found));
    EXPECT_EQ(found, value != "(none)");
    return value;
}

std::vector<std::string> childrenOf(char const* name)
{
    Node const parent = node(name);
    return {parent->children.begin(), parent->children.end()};
}

class CCgObjConfigs : public ToolkitTest { };

TEST_F(CCgObjConfigs, lineOfTheFileMakesANodeWithAProperty)
{
    start("a.b=1\n");

    Node const a = node("a");

    EXPECT_TRUE(a->defined);
    EXPECT_EQ(*a->properties.find("b"), "1");
}

TEST_F(CCgObjConfigs, keyIsSplitAtItsLastDot)
{
    start("cclog.errorLogger.level=WARN\n");

    EXPECT_EQ(*node("cclog.errorLogger")->properties.find("level"), "WARN");
}

TEST_F(CCgObjConfigs, nodeThatIsOnlyAskedForIsMadeAndNotDefined)
{
    start();

    Node const made = node("x.y");

    ASSERT_NE(made, nullptr);
    EXPECT_FALSE(made->defined);
    EXPECT_EQ(node("x.y"), made);
}

TEST_F(CCgObjConfigs, thereIsNoNodeForNoNameAndForTheRoot)
{
    start();

    EXPECT_EQ(ccg_getConfig(nullptr), nullptr);
    EXPECT_EQ(ccg_getConfig(""), nullptr);
    EXPECT_EQ(ccg_getConfig("/"), nullptr);
}

TEST_F(CCgObjConfigs, propertyOfNoNameOrNoKeyIsRefused)
{
    start();

    EXPECT_FALSE(ccg_setConfigProperty("", "key", "value"));
    EXPECT_FALSE(ccg_setConfigProperty("name", "", "value"));
    EXPECT_FALSE(ccg_setConfigProperty("/", "key", "value"));
    EXPECT_FALSE(ccg_setConfigProperty(nullptr, "key", "value"));
    EXPECT_TRUE(ccg_setConfigProperty("name", "key", "value"));
}

TEST_F(CCgObjConfigs, valueIsLookedUpInTheNodeAndThenAboveIt)
{
    start("a.level=1\na.color=red\na.b.level=2\na.b.c.d=3\n");

    EXPECT_EQ(lookedUp("a.b.c", "d"), "3");
    EXPECT_EQ(lookedUp("a.b.c", "level"), "2");
    EXPECT_EQ(lookedUp("a.b.c", "color"), "red");
    EXPECT_EQ(lookedUp("a.b.c", "size"), "(none)");
}

TEST_F(CCgObjConfigs, namesBetweenMayBeMissing)
{
    start("a.color=red\na.b.c.d.e=1\n");

    EXPECT_EQ(lookedUp("a.b.c.d", "color"), "red");
}

TEST_F(CCgObjConfigs, nodeMadeLaterBetweenTwoTakesOverTheDescendants)
{
    start("a.x=1\na.b.c.x=1\na.bc.x=1\n");
    EXPECT_THAT(childrenOf("a"), ElementsAre("a.b.c", "a.bc"));

    ccg_setConfigProperty("a.b", "color", "red");

    EXPECT_THAT(childrenOf("a"), ElementsAre("a.bc", "a.b"));
    EXPECT_THAT(childrenOf("a.b"), ElementsAre("a.b.c"));
    EXPECT_EQ(lookedUp("a.b.c", "color"), "red");
    EXPECT_EQ(lookedUp("a.bc", "color"), "(none)");
}

TEST_F(CCgObjConfigs, nodeMadeLaterAboveTheFirstOnesIsTheirParent)
{
    start("a.b.c.x=1\n");

    ccg_setConfigProperty("a.b", "color", "red");

    EXPECT_EQ(lookedUp("a.b.c", "color"), "red");
}

TEST_F(CCgObjConfigs, namesOfAllNodesAreListedInTheOrderOfTheirMaking)
{
    start("b.x=1\na.x=1\nb.y=2\n");

    CCgStringGroup const names = ccg_getConfigNames();

    EXPECT_EQ(names.at(0), "b");
    EXPECT_EQ(names.at(1), "a");
    EXPECT_EQ(std::count(names.begin(), names.end(), "b"), 1);
}

TEST_F(CCgObjConfigs, nodeThatIsHeldOutlivesTheToolkit)
{
    start("a.b=1\n");
    Node const held = node("a");

    ccg_shutdownManager();

    EXPECT_EQ(*held->properties.find("b"), "1");
    EXPECT_EQ(taken(ccg_lookupConfig(held.get(), "b", nullptr)), "1");
    EXPECT_EQ(taken(ccg_lookupConfig(held.get(), "c", nullptr)), "(none)");
}

TEST_F(CCgObjConfigs, stoppedToolkitHasNoNodes)
{
    EXPECT_EQ(ccg_getConfig("a"), nullptr);
    EXPECT_FALSE(ccg_setConfigProperty("a", "b", "1"));
    EXPECT_THAT(ccg_getConfigNames(), IsEmpty());
}

}  // namespace
