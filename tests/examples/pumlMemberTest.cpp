#include "examples/modelgen/pumlMember.h"
#include "tests/examples/modelgenFixture.h"

using namespace modelgen;
using modelgen::test::spelled;

namespace {

// A member in one line: visibility, marks, name, types, default values.
std::string told(std::string const& text, char const* owner = "Book")
{
    constexpr char visibilities[] = {'+', '#', '-', '~'};
    std::variant<NoMember, Attribute, Operation> const read = readMember(text.c_str(), owner);
    std::string line;
    if (NoMember const* const none = std::get_if<NoMember>(&read))
        return (none->isBroken ? "broken: " : "prose: ") + std::string(none->reason.GetString());
    if (Attribute const* const attribute = std::get_if<Attribute>(&read)) {
        line += visibilities[int(attribute->visibility)];
        line += attribute->isStatic ? " static" : "";
        line += attribute->isReadOnly ? " readOnly" : "";
        line += std::string(" ") + attribute->name.GetString() + ":" + spelled(attribute->type);
        return attribute->defaultValue.IsEmpty() ? line : line + "=" + attribute->defaultValue.GetString();
    }
    Operation const& operation = std::get<Operation>(read);
    line += visibilities[int(operation.visibility)];
    line += operation.isStatic ? " static" : "";
    line += operation.isAbstract ? " abstract" : "";
    line += operation.isQuery ? " query" : "";
    line += std::string(" ") + operation.name.GetString() + "(";
    for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
        Parameter const& parameter = operation.parameters[i];
        line += i > 0 ? "," : "";
        line += parameter.isOutput ? "out " : "";
        line += std::string(parameter.name.GetString()) + ":" + spelled(parameter.type);
        if (!parameter.defaultValue.IsEmpty())
            line += std::string("=") + parameter.defaultValue.GetString();
    }
    return line + "):" + spelled(operation.returnType);
}

struct Row {
    char const* text;
    char const* expected;
};

}  // namespace

TEST(PumlMember, readsAttributesInBothNotations)
{
    Row const rows[] = {
        {"name : String", "+ name:String"},
        {"name: String", "+ name:String"},
        {"String name", "+ name:String"},
        {"- count : int = 0", "- count:int=0"},
        {"- int count = 0", "- count:int=0"},
        {"# names : List<String>", "# names:List<String>"},
        {"~Map<String, int> byName", "~ byName:Map<String,int>"},
        {"+ {static} limit : int = 12", "+ static limit:int=12"},
        {"{static} - limit : int", "- static limit:int"},
        {"-static int limit", "- static limit:int"},
        {"+ id : long {readOnly}", "+ readOnly id:long"},
        {"final int id", "+ readOnly id:int"},
        {"private String secret;", "- secret:String"},
        {"/total : double", "+ total:double"},
        {"name", "+ name:"},
        {"name = \"a : b\"", "+ name:=\"a : b\""},
        {"tags : String [0..*]", "+ tags:[]<String>"},
        {"tags[0..*] : String", "+ tags:[]<String>"},
        {"String tags[]", "+ tags:[]<String>"},
        {"String[] tags", "+ tags:[]<String>"},
        {"back : Node[0..1]", "+ back:?<Node>"},
        {"text : String = \"with (parentheses)\"", "+ text:String=\"with (parentheses)\""},
        {"{field} odd(name) : int", "+ odd(name):int"},
        {"\"first name\" : String", "+ first name:String"},
        {"- first name : String", "- first name:String"},
        {"<<id>> key : int", "+ key:int"},
        {"unsigned long big", "+ big:unsigned long"},
        {"static : boolean", "+ static:boolean"},
        {"\\~odd : int", "~ odd:int"},
        {"value : ns::Type", "+ value:ns::Type"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(told(row.text), row.expected) << row.text;
}

TEST(PumlMember, readsOperationsInBothNotations)
{
    Row const rows[] = {
        {"run()", "+ run():"},
        {"+ run() : void", "+ run():void"},
        {"+ void run()", "+ run():void"},
        {"- lend(reader : Reader, days : int = 14) : Loan", "- lend(reader:Reader,days:int=14):Loan"},
        {"- Loan lend(Reader reader, int days = 14)", "- lend(reader:Reader,days:int=14):Loan"},
        {"# {abstract} area() : double", "# abstract area():double"},
        {"abstract double area()", "+ abstract area():double"},
        {"virtual double area() const = 0", "+ abstract query area():double"},
        {"+{static} of(text : String) : Date", "+ static of(text:String):Date"},
        {"find(m : Map<String, int>, k : String) : int", "+ find(m:Map<String,int>,k:String):int"},
        {"say(text : String = \"a, b)\")", "+ say(text:String=\"a, b)\"):"},
        {"f(int, String, x)", "+ f(:int,:String,x:):"},
        {"f(in a : int, out b : int, inout c : int)", "+ f(a:int,out b:int,out c:int):"},
        {"f(out : int)", "+ f(out:int):"},
        {"get() : int {query}", "+ query get():int"},
        {"Book(title : String)", "+ Book(title:String):"},
        {"~Book()", "+ ~Book():"},
        {"+ ~Book()", "+ ~Book():"},
        {"~run()", "~ run():"},
        {"load() throws IOException", "+ load():"},
        {"load() : int throws IOException", "+ load():int"},
        {"<<create>> make() : Book", "+ make():Book"},
        {"final()", "+ final():"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(told(row.text), row.expected) << row.text;
}

TEST(PumlMember, saysWhatIsBroken)
{
    Row const rows[] = {
        {"run(", "broken: the parameter list is not closed"},
        {"run(a : int", "broken: the parameter list is not closed"},
        {"()", "broken: an operation needs a name"},
        {"+ () : int", "broken: an operation needs a name"},
        {"run(a,)", "broken: the parameter list is not understood"},
        {"run(a b c)", "broken: the parameter list is not understood"},
        {"run(, a)", "broken: the parameter list is not understood"},
        {": int", "broken: an attribute needs a name"},
        {"= 3", "broken: an attribute needs a name"},
        {"-", "broken: a member needs a name"},
        {"{static}", "broken: a member needs a name"},
        {"{method} run", "broken: an operation needs its parameters in parentheses"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(told(row.text), row.expected) << row.text;
}

TEST(PumlMember, passesOverProse)
{
    for (char const* const text :
         {"keeps all books", "see chapter 4, page 7", "a : two words", "run() and then some"})
        EXPECT_EQ(told(text), "prose: not understood: passed over") << text;
}

TEST(PumlMember, readsLiterals)
{
    std::variant<NoMember, Literals> const read = readLiterals("RED = 1, GREEN(2, \"g\"), blue;");

    Literals const& literals = std::get<Literals>(read);
    ASSERT_EQ(literals.literals.size(), 3u);
    EXPECT_EQ(literals.literals[0].name, "RED");
    EXPECT_EQ(literals.literals[0].value, "1");
    EXPECT_EQ(literals.literals[1].name, "GREEN");
    EXPECT_EQ(literals.literals[2].name, "blue");
    EXPECT_TRUE(literals.hasArguments);
}

TEST(PumlMember, tellsMembersOfAnEnumerationFromLiterals)
{
    for (char const* const text :
         {"+ code : int", "code : int", "toString() : String", "label()", "{static} x"})
        EXPECT_TRUE(looksLikeMember(text)) << text;
    for (char const* const text : {"RED", "RED = 1", "RED(1)", "RED()", "red, green", ""})
        EXPECT_FALSE(looksLikeMember(text)) << text;
}

TEST(PumlMember, takesLinearTimeForTextThatIsNothingButBrackets)
{
    // What took quadratic time would not end here while anybody watches.
    for (char const* const piece : {"{", "<<", "\\\"", "(", "\"", "<", "[", "=", "::", "{a}", "=="}) {
        std::string text = "x ";
        while (text.size() < 400000)
            text += piece;

        readMember(text.c_str(), "Book");
        readMember((text + "}").c_str(), "Book");
        readLiterals(text.c_str());
    }
}
