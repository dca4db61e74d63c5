#include "tests/examples/modelgenFixture.h"

using namespace modelgen;
using modelgen::test::Generated;
using testing::HasSubstr;
using testing::Not;

TEST(CppOverrides, marksAnOperationThatABaseHas)
{
    Generated const made(
        "class A {\n run(x : String) : int\n other()\n}\nclass B extends A {\n run(y : String) : int\n}\n");

    EXPECT_THAT(made.file("A.h"),
                HasSubstr("    virtual int run(std::string const& x);\n    void other();\n"));
    EXPECT_THAT(made.file("B.h"), HasSubstr("    ~B() override;\n"));
    EXPECT_THAT(made.file("B.h"), HasSubstr("    int run(std::string const& y) override;\n"));
}

TEST(CppOverrides, addsWhatAConcreteClassMustImplement)
{
    Generated const made(
        "interface I {\n run() : int\n}\nabstract class A implements I\nclass B extends A\n");

    EXPECT_THAT(made.file("A.h"), Not(HasSubstr("run")));
    EXPECT_THAT(made.file("B.h"), HasSubstr("    int run() override;\n"));
    EXPECT_THAT(made.file("B.cpp"), HasSubstr("int B::run()\n{\n    return {};\n}\n"));
}

TEST(CppOverrides, leavesAloneWhatABaseImplements)
{
    Generated const made(
        "interface I {\n run() : int\n}\nclass A implements I\nclass B extends A implements I\n");

    EXPECT_THAT(made.file("B.h"), HasSubstr("class B : public A, public virtual I {"));
    EXPECT_THAT(made.file("B.h"), Not(HasSubstr("run")));
}

TEST(CppOverrides, joinsTwoImplementationsOfOneOperation)
{
    Generated const made("interface I {\n run() : int\n}\nclass A implements I\nclass B implements I\n"
                         "class C extends A, B\nabstract class D extends A, B\n");

    EXPECT_THAT(made.file("C.h"), HasSubstr("    int run() override;\n"));
    EXPECT_THAT(made.file("D.h"), HasSubstr("    int run() override;\n"));
}

TEST(CppOverrides, seesThroughTypeParameters)
{
    Generated const made(
        "package p {\n class Book\n interface Repository<T> {\n find(id : int) : T\n save(item : T)\n"
        " all() : List<T>\n }\n class Middle<U> implements Repository<U>\n}\n"
        "package q {\n class Books extends p.Middle<p.Book> {\n save(b : p.Book)\n }\n"
        " class Texts implements p.Repository<String> {\n save(s : String)\n }\n}\n");

    EXPECT_EQ(made.messages(), "");
    EXPECT_THAT(made.file("p/Middle.h"), HasSubstr("    U find(int id) override;\n"));
    EXPECT_THAT(made.file("q/Books.h"), HasSubstr("class Books : public p::Middle<p::Book*> {"));
    EXPECT_THAT(made.file("q/Books.h"), HasSubstr("    void save(p::Book* b) override;\n"));
    EXPECT_THAT(made.file("q/Texts.h"), HasSubstr("    void save(std::string s) override;\n"));
    EXPECT_THAT(made.file("q/Texts.h"), HasSubstr("    std::string find(int id) override;\n"));
    EXPECT_THAT(made.file("q/Texts.h"), HasSubstr("    std::vector<std::string> all() override;\n"));
}

TEST(CppOverrides, takesTheResultAndTheConstOfTheBase)
{
    Generated const made("class A {\n run() : int {query}\n}\nclass B extends A {\n run() : String\n}\n");

    EXPECT_EQ(made.messages(),
              "m.puml:6: warning: operation 'run' has the result of the one it overrides: int\n");
    EXPECT_THAT(made.file("B.h"), HasSubstr("    int run() const override;\n"));
}

TEST(CppOverrides, refusesResultsThatDoNotAgree)
{
    Generated const added(
        "interface I {\n run() : int\n}\ninterface J {\n run() : String\n}\nclass A implements I, J\n");
    Generated const given("interface I {\n run() : int\n}\ninterface J {\n run() : String\n}\n"
                          "class A implements I, J {\n run() : int\n}\n");

    EXPECT_EQ(added.messages(),
              "m.puml:8: 'A' inherits operation 'run' with different results, which C++ cannot join\n");
    EXPECT_EQ(given.messages(), added.messages());
    EXPECT_TRUE(given.files.empty());
}

TEST(CppOverrides, passesOverAStaticOperationThatWouldOverride)
{
    Generated const made("interface I {\n run()\n}\nclass A implements I {\n {static} run()\n}\n");

    EXPECT_THAT(made.messages(), HasSubstr("m.puml:6: warning: operation 'run' is static"));
    EXPECT_THAT(made.file("A.h"), HasSubstr("    void run() override;\n"));
}

TEST(CppOverrides, leavesPrivateOperationsOfABaseAlone)
{
    Generated const made("class A {\n - run()\n}\nclass B extends A {\n - run()\n}\n");

    EXPECT_THAT(made.file("A.h"), Not(HasSubstr("virtual void run")));
    EXPECT_THAT(made.file("B.h"), Not(HasSubstr("run() override")));
}

TEST(CppOverrides, leavesOutAccessorsThatWouldHideAnInheritedOperation)
{
    Generated const made("abstract class A {\n {abstract} getX() : String {query}\n}\n"
                         "abstract class B extends A {\n - x : int\n}\n");

    EXPECT_THAT(made.file("B.h"), Not(HasSubstr("getX")));
    EXPECT_THAT(made.file("B.h"), HasSubstr("    void setX(int value);\n"));
}

TEST(CppOverrides, leavesOutABaseThatAnotherBaseHas)
{
    Generated const made("class A\nclass B extends A\nclass C extends B, A\n");

    EXPECT_EQ(made.messages(), "m.puml:4: warning: 'A' is a base of another base: passed over\n");
    EXPECT_THAT(made.file("C.h"), HasSubstr("class C : public B {"));
}
