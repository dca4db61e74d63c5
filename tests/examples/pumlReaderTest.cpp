#include "tests/examples/modelgenFixture.h"

using namespace modelgen;
using modelgen::test::Reading;
using modelgen::test::spelled;
using testing::HasSubstr;

TEST(PumlReader, readsEveryKindOfClassifier)
{
    Reading const read("class A\nabstract class B\nabstract C\ninterface D\nenum E\nstruct F\nentity G\n"
                       "class H <<value>>\nclass I <<interface>>\nrecord J\n+class K\n");

    EXPECT_EQ(read.messages(), "");
    EXPECT_EQ(read.classNamed("A").kind, Kind::isClass);
    EXPECT_TRUE(read.classNamed("B").isAbstract);
    EXPECT_TRUE(read.classNamed("C").isAbstract);
    EXPECT_EQ(read.classNamed("D").kind, Kind::isInterface);
    EXPECT_EQ(read.classNamed("E").kind, Kind::isEnum);
    EXPECT_EQ(read.classNamed("F").kind, Kind::isStruct);
    EXPECT_EQ(read.classNamed("G").kind, Kind::isClass);
    EXPECT_EQ(read.classNamed("H").kind, Kind::isStruct);
    EXPECT_EQ(read.classNamed("I").kind, Kind::isInterface);
    EXPECT_EQ(read.classNamed("J").kind, Kind::isStruct);
    EXPECT_EQ(read.classNamed("K").kind, Kind::isClass);
}

TEST(PumlReader, readsABodyWithItsSeparators)
{
    Reading const read("class A {\n  x : int\n--\n.. more ..\n  y : int\n==\n__ operations __\n  run()\n}\n"
                       "enum E {\n one\n --\n two, three\n}\n");

    EXPECT_EQ(read.messages(), "");
    EXPECT_EQ(read.classNamed("A").attributes.size(), 2u);
    EXPECT_EQ(read.classNamed("A").operations.size(), 1u);
    EXPECT_EQ(read.classNamed("E").literals.size(), 3u);
}

TEST(PumlReader, remembersWhereEachMemberStands)
{
    Reading const read("class A {\n  x : int\n}\n");

    EXPECT_EQ(read.classNamed("A").place.line, 2);
    EXPECT_EQ(read.classNamed("A").attributes[0].place.line, 3);
}

TEST(PumlReader, readsBodiesThatOpenOrCloseInOddPlaces)
{
    Reading const read("class A\n{\n x : int\n}\nclass B {}\nclass C { }\nclass D { x : int; y : int }\n"
                       "package p\n{\n class E\n}\npackage q {}\nclass F { x : int\n y : int\n}\n");

    EXPECT_EQ(read.messages(), "");
    EXPECT_EQ(read.classNamed("A").attributes.size(), 1u);
    EXPECT_EQ(read.classNamed("D").attributes.size(), 2u);
    EXPECT_EQ(read.classNamed("p.E").package->name, "p");
    EXPECT_EQ(read.classNamed("F").attributes.size(), 2u);
}

TEST(PumlReader, addsUpSeveralDeclarationsOfAClass)
{
    Reading const read("class A\nA : x : int\nA : run()\nclass A {\n y : int\n}\n");

    EXPECT_EQ(read.messages(), "");
    EXPECT_EQ(read.model.classifiers().size(), 1u);
    EXPECT_EQ(read.classNamed("A").attributes.size(), 2u);
    EXPECT_EQ(read.classNamed("A").operations.size(), 1u);
}

TEST(PumlReader, readsNestedPackagesAndNamespaces)
{
    Reading const read("package a {\n namespace b.c {\n  class X\n }\n package \"d e\" {\n  class Y\n }\n}\n"
                       "class f::g::Z\n");

    EXPECT_EQ(read.messages(), "");
    EXPECT_EQ(read.classNamed("a.b.c.X").package->depth, 3);
    EXPECT_EQ(read.classNamed("Y").package->name, "d e");
    EXPECT_EQ(read.classNamed("f.g.Z").package->name, "g");
}

TEST(PumlReader, keepsDotsInNamesIfTheyPartNothing)
{
    Reading const read("set separator none\nclass a.b\n");

    EXPECT_EQ(read.model.classifiers().front().name, "a.b");
    EXPECT_EQ(read.model.packages().size(), 1u);
}

TEST(PumlReader, namesAClassByItsAliasOnlyIfItsNameIsNoIdentifier)
{
    Reading const read(
        "class \"Long name\" as L\nclass \"Short\" as S\nclass T as \"Shown\"\nclass \"Map<K, V>\" as M\n"
        "L --> S\nS --> T\n");

    EXPECT_EQ(read.messages(), "");
    EXPECT_EQ(read.classNamed("L").name, "L");
    EXPECT_EQ(read.classNamed("S").name, "Short");
    EXPECT_EQ(read.classNamed("T").name, "Shown");
    EXPECT_EQ(read.classNamed("M").name, "Map");
    EXPECT_EQ(read.classNamed("M").typeParameters.size(), 2u);
    EXPECT_EQ(read.classNamed("L").roles[0].target, &read.classNamed("S"));
}

TEST(PumlReader, readsTypeParametersStereotypesColoursTagsAndLinks)
{
    Reading const read(
        "class A<T extends Comparable, U> <<Service>> <<(S,#FF7700) Singleton>> $tag [[http://x]] #pink "
        "##[dashed]red {\n}\n");

    EXPECT_EQ(read.messages(), "");
    Classifier const& a = read.classNamed("A");
    ASSERT_EQ(a.typeParameters.size(), 2u);
    EXPECT_EQ(a.typeParameters[0], "T");
    EXPECT_EQ(a.stereotypes.size(), 2u);
}

TEST(PumlReader, readsBasesBehindTheName)
{
    Reading const read("class A extends B implements C, D<int> {\n}\nclass B\ninterface C\ninterface D<T>\n");

    EXPECT_EQ(read.messages(), "");
    Classifier const& a = read.classNamed("A");
    ASSERT_EQ(a.bases.size(), 3u);
    EXPECT_EQ(a.bases[0].target, &read.classNamed("B"));
    EXPECT_EQ(spelled(a.bases[2].arguments[0]), "int");
}

TEST(PumlReader, readsBasesFromArrowsOnce)
{
    Reading const read("A <|-- B\nB --|> A\nI <|.. B\nclass A\nclass B\ninterface I\n");

    EXPECT_EQ(read.messages(), "");
    ASSERT_EQ(read.classNamed("B").bases.size(), 2u);
    EXPECT_TRUE(read.classNamed("A").bases.empty());
}

TEST(PumlReader, makesRolesOfAssociations)
{
    Reading const read(
        "class A\nclass B\nclass C\nclass D\nclass E\nA \"1 a\" *-- \"0..* bs\" B\nA --> C : link\n"
        "A -- D : two words\nA --x E\n");

    EXPECT_EQ(read.messages(), "");
    Classifier const& a = read.classNamed("A");
    ASSERT_EQ(a.roles.size(), 3u);
    EXPECT_EQ(a.roles[0].name, "bs");
    EXPECT_TRUE(a.roles[0].isMany);
    EXPECT_TRUE(a.roles[0].isOwned);
    EXPECT_EQ(a.roles[1].name, "link");
    EXPECT_EQ(a.roles[2].name, "");
    EXPECT_EQ(read.classNamed("B").roles.size(), 1u);
    EXPECT_FALSE(read.classNamed("B").roles[0].isOwned);
    EXPECT_TRUE(read.classNamed("C").roles.empty());
    EXPECT_EQ(read.classNamed("D").roles.size(), 1u);
    EXPECT_EQ(read.classNamed("E").roles.size(), 1u);
}

TEST(PumlReader, makesADependencyOfADottedArrow)
{
    Reading const read("class A\nclass B\nA ..> B\nA .. B\nA -[hidden]- B\n");

    EXPECT_EQ(read.messages(), "");
    EXPECT_EQ(read.classNamed("A").dependencies.size(), 1u);
    EXPECT_TRUE(read.classNamed("B").dependencies.empty());
}

TEST(PumlReader, findsNamesFromTheInsideOutward)
{
    Reading const read(
        "class X\npackage p {\n class X\n class Y\n Y --> X\n package q {\n  class Z\n  Z --> X\n }\n}\n"
        "class W\nW --> X\n");

    EXPECT_EQ(read.messages(), "");
    EXPECT_EQ(read.classNamed("p.Y").roles[0].target, &read.classNamed("p.X"));
    EXPECT_EQ(read.classNamed("Z").roles[0].target, &read.classNamed("p.X"));
    EXPECT_EQ(read.classNamed("W").roles[0].target, &read.classNamed("X"));
}

TEST(PumlReader, findsTheClassOfAMemberThatALinePointsAt)
{
    Reading const read("class A\nclass B\nA::x --> B::y\n");

    EXPECT_EQ(read.messages(), "");
    EXPECT_EQ(read.classNamed("A").roles.size(), 1u);
}

TEST(PumlReader, makesAnEmptyClassOfANameThatNothingDeclares)
{
    Reading const read("class A\nA --> p.B\n");

    EXPECT_EQ(read.messages(), "m.puml:3: warning: 'p.B' is not declared: an empty class stands for it\n");
    EXPECT_EQ(read.classNamed("p.B").package->name, "p");
}

TEST(PumlReader, takesNotesAsTheTextOfTheirClass)
{
    Reading const read(
        "class A\nnote left of A\n first\n second\nend note\nnote right of A #pink : third\\nfourth\n"
        "note \"floating\" as N\nN .. A\nnote as M\n text\nendnote\nM -- A\nnote on link : x\n"
        "note left\n of the last class\nend note\n");

    EXPECT_EQ(read.messages(), "");
    EXPECT_THAT(read.classNamed("A").notes, testing::ElementsAre("first", "second", "third", "fourth"));
    EXPECT_TRUE(read.classNamed("A").roles.empty());
}

TEST(PumlReader, passesOverComments)
{
    Reading const read("' class A\n/' class B\n class C '/ class D\nclass E /' inline '/ {\n x : int\n}\n"
                       "class F /' one '/ /' two '/\n/' whole '/\nclass G '/\n");

    EXPECT_THAT(read.messages(), HasSubstr("m.puml:10: unexpected ''/'"));
    EXPECT_EQ(read.model.classifiers().size(), 3u);
    EXPECT_EQ(read.classNamed("E").attributes.size(), 1u);
}

TEST(PumlReader, passesOverWhatOnlyConcernsTheDrawing)
{
    Reading const read(
        "!theme plain\n!pragma layout smetana\nskinparam classFontSize 12\nskinparam {\n class {\n  x y\n "
        "}\n}\n"
        "title One line\ntitle\n several\nend title\nheader x\nheader\n y\nendheader\ncenter footer z\n"
        "legend left\n anything {\nend legend\nhide empty members\nshow A fields\nremove B\n"
        "left to right direction\ntop to bottom direction\nscale 2\ncaption c\nallowmixing\n"
        "<style>\n classDiagram {\n }\n</style>\ntogether {\n class A\n class B\n}\nnewpage\nmainframe m\n"
        "sprite $s {\n FFFF\n}\npage 2x2\nurl of A is [[x]]\n");

    EXPECT_EQ(read.messages(), "");
    EXPECT_EQ(read.model.classifiers().size(), 2u);
}

TEST(PumlReader, warnsOfWhatItPassesOver)
{
    struct {
        char const* text;
        char const* message;
    } const rows[] = {
        {"class A\nA +-- A\n", "m.puml:3: warning: unknown arrow: passed over: 'A +-- A'\n"},
        {"!include x.puml\n",
         "m.puml:2: warning: directives are not obeyed: passed over: '!include x.puml'\n"},
        {"!if X\n", "m.puml:2: warning: directives are not obeyed: passed over: '!if X'\n"},
        {"gibberish here\n", "m.puml:2: warning: not understood: passed over: 'gibberish here'\n"},
        {"object o {\n x = 1\n}\n", "m.puml:2: warning: not understood: passed over: 'object o {'\n"},
        {"class A {\n some prose here\n}\n",
         "m.puml:3: warning: not understood: passed over: 'some prose here'\n"},
        {"enum E {\n A(1)\n}\n", "m.puml:3: warning: arguments of a literal are passed over\n"},
        {"enum E {\n one two\n}\n", "m.puml:3: warning: not understood: passed over: 'one two'\n"},
        {"class A\nenum E\nA --|> E\n",
         "m.puml:4: warning: an enumeration neither inherits nor is inherited from: passed over\n"},
        {"class A\nenum E\nE --> A\n",
         "m.puml:4: warning: 'E' is an enumeration and holds no others: passed over\n"},
        {"class A\nclass B<T>\nA --|> B\n",
         "m.puml:4: warning: 'B' needs 1 type arguments as a base, not 0: passed over\n"},
        {"class A\nclass B\nA <|--|> B\n",
         "m.puml:4: warning: an arrow with a triangle and another mark: passed over\n"},
        {"note left of\n x\nend note\n", "m.puml:2: warning: a note of nothing: passed over\n"},
    };
    for (auto const& row : rows) {
        Reading const read(row.text);

        EXPECT_EQ(read.messages(), row.message) << row.text;
    }
}

TEST(PumlReader, tellsEveryErrorWithItsLine)
{
    struct {
        char const* text;
        char const* message;
    } const rows[] = {
        {"}\n", "m.puml:2: '}' without '{'\n"},
        {"class A {\n", "m.puml:2: '{' is not closed\n"},
        {"package p {\nclass A\n", "m.puml:2: '{' is not closed\n"},
        {"class\n", "m.puml:2: the declaration lacks a name\n"},
        {"class \"\" {\n}\n", "m.puml:2: the declaration lacks a name\n"},
        {"class \"A\n", "m.puml:2: a quote is not closed\n"},
        {"class A B\n", "m.puml:2: unexpected 'B' in a declaration\n"},
        {"class A as\n", "m.puml:2: 'as' needs a name\n"},
        {"class A<T\n", "m.puml:2: '<' is not closed\n"},
        {"class A extends\n", "m.puml:2: the list of bases is not understood\n"},
        {"class A extends B<\n", "m.puml:2: the list of bases is not understood\n"},
        {"class A extends B,\n", "m.puml:2: the list of bases is not understood\n"},
        {"package \"p {\n}\n", "m.puml:2: a quote is not closed\n"},
        {"package p q {\n}\n", "m.puml:2: unexpected 'q {' in a declaration\n"},
        {"package p as {\n}\n", "m.puml:2: 'as' needs a name\n"},
        {"package p { class A\n}\n", "m.puml:2: unexpected 'class A' behind '{'\n"},
        {"class A {\n run(\n}\n", "m.puml:3: the parameter list is not closed\n"},
        {"class A {\n : int\n}\n", "m.puml:3: an attribute needs a name\n"},
        {"class A {\n ()\n}\n", "m.puml:3: an operation needs a name\n"},
        {"enum E {\n = 3\n}\n", "m.puml:3: a literal needs a name\n"},
        {"enum E {\n A(1\n}\n", "m.puml:3: the argument list is not closed\n"},
        {"class A\nA :\n", "m.puml:3: a member needs a name\n"},
        {"class A\nA -->\n", "m.puml:3: the relation lacks an end or a quote\n"},
        {"class A\nA --> \"1 A\n", "m.puml:3: the relation lacks an end or a quote\n"},
        {"class A\ninterface A\n", "m.puml:3: 'A' was declared as something else in line 2\n"},
        {"class A\nA --|> A\n", "m.puml:3: 'A' inherits from itself\n"},
        {"class A\nclass B\nA --|> B\nB --|> A\n", "m.puml:5: 'B' inherits from itself by way of 'A'\n"},
        {"note left of A\n", "m.puml:2: a note is not ended\n"},
        {"note \"x\n", "m.puml:2: a quote is not closed\n"},
        {"legend\n", "m.puml:2: the legend is not ended\n"},
        {"skinparam {\n", "m.puml:2: skinparam is not ended\n"},
    };
    for (auto const& row : rows) {
        Reading const read(row.text);

        EXPECT_EQ(read.messages(), row.message) << row.text;
        EXPECT_TRUE(read.hasErrors()) << row.text;
    }
}

TEST(PumlReader, tellsErrorsOfTheDiagramsFrame)
{
    struct {
        char const* text;
        char const* message;
    } const rows[] = {
        {"", "m.puml:1: there is no diagram: @startuml is missing\n"},
        {"class A\n", "m.puml:1: there is no diagram: @startuml is missing\n"},
        {"@startuml\n", "m.puml:1: @enduml is missing\n"},
        {"@startuml\n@startuml\n@enduml\n", "m.puml:2: @startuml inside a diagram: @enduml is missing\n"},
        {"@startuml\n@enduml\n@enduml\n", "m.puml:3: @enduml without @startuml\n"},
        {"@startuml\n/' x\n@enduml\n", "m.puml:2: the comment is not closed\nm.puml:1: @enduml is missing\n"},
    };
    for (auto const& row : rows) {
        Reading const read(Reading::Raw(), row.text);

        EXPECT_EQ(read.messages(), row.message) << row.text;
    }
}

TEST(PumlReader, readsSeveralDiagramsOfAFileAndWhatLinesEndWith)
{
    Reading const read(Reading::Raw(),
                       "\xEF\xBB\xBFprose\r\n@startuml one\r\nclass A {\r\n x : int\r\n}\r\n@enduml\r\n"
                       "more prose\r@startuml\rclass B\rA --> B\r@enduml");

    EXPECT_EQ(read.messages(), "");
    EXPECT_EQ(read.classNamed("A").attributes[0].name, "x");
    EXPECT_EQ(read.classNamed("A").roles.size(), 1u);
}

TEST(PumlReader, goesOnBehindAnError)
{
    Reading const read("class A {\n run(\n x : int\n}\nclass {\n y : int\n}\n: odd\n}\nclass B\n");

    EXPECT_THAT(read.messages(), HasSubstr("m.puml:3: "));
    EXPECT_THAT(read.messages(), HasSubstr("m.puml:6: "));
    EXPECT_THAT(read.messages(), HasSubstr("m.puml:10: "));
    EXPECT_EQ(read.classNamed("A").attributes.size(), 1u);
    EXPECT_EQ(read.classNamed("B").name, "B");
}

TEST(PumlReader, tellsTwentyErrorsAndTheNumberOfTheOthers)
{
    std::string body;
    for (int i = 0; i < 25; ++i)
        body += "}\n";
    Reading read(body);

    read.report().close();

    EXPECT_THAT(read.messages(), HasSubstr("m.puml:21: "));
    EXPECT_THAT(read.messages(), testing::Not(HasSubstr("m.puml:22: ")));
    EXPECT_THAT(read.messages(), HasSubstr("and 5 more errors\n"));
}

TEST(PumlReader, refusesPackagesThatAreNestedTooDeep)
{
    std::string body;
    for (int i = 0; i < 33; ++i)
        body += "package p {\n";
    for (int i = 0; i < 33; ++i)
        body += "}\n";
    Reading const read(body);

    EXPECT_EQ(read.messages(), "m.puml:34: packages are nested more than 32 deep\n");
}

TEST(PumlReader, refusesInheritanceThatIsTooDeep)
{
    std::string body;
    for (int i = 0; i < 202; ++i)
        body += "class C" + std::to_string(i) + "\n";
    for (int i = 1; i < 202; ++i)
        body += "C" + std::to_string(i) + " --|> C" + std::to_string(i - 1) + "\n";
    Reading const read(body);

    EXPECT_EQ(read.messages(), "m.puml:203: 'C201' inherits through more than 200 levels\n");
}

TEST(PumlReader, quotesHostileInputReadably)
{
    EXPECT_EQ(quoted("a\x1B[31m"), "'a?[31m'");
    EXPECT_EQ(quoted(CString('x', 100)).GetLength(), 65);
    EXPECT_EQ(quoted(CString('x', 59) + "\xC3\xA4 and more"), "'" + CString('x', 59) + "...'");
}
