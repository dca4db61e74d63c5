#include "platform/classlib/textTables.h"
#include "platform/classlib/CTime.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

// Numbers that no other table has.
constexpr unsigned int title = 9900001;
constexpr unsigned int greeting = 9900002;
constexpr unsigned int unknown = 9900003;

ZkText const oldTexts[] = {{title, "old title"}, {greeting, "old %s"}, {unknown, nullptr}, {title, "second"}};
ZkText const newTexts[] = {{title, "new title"}};

class TextTables : public testing::Test {
protected:
    ~TextTables() override
    {
        zkUnregisterTexts(oldTexts);
        zkUnregisterTexts(newTexts);
    }
};

}  // namespace

TEST_F(TextTables, giveNoTextBeforeOneIsRegistered)
{
    CString text("before");

    EXPECT_FALSE(text.LoadString(title));

    EXPECT_EQ(text, "");
    EXPECT_EQ(zkFindText(title), nullptr);
}

TEST_F(TextTables, giveTheTextOfANumber)
{
    zkRegisterTexts(oldTexts, 4);
    CString text("before");

    EXPECT_TRUE(text.LoadString(greeting));

    EXPECT_EQ(text, "old %s");
    EXPECT_EQ(zkFindText(greeting), oldTexts[1].text);
}

TEST_F(TextTables, countANullTextAsAbsentAndTheFirstOfTwo)
{
    zkRegisterTexts(oldTexts, 4);

    EXPECT_EQ(zkFindText(unknown), nullptr);
    EXPECT_STREQ(zkFindText(title), "old title");
}

TEST_F(TextTables, askTheNewestTableFirst)
{
    zkRegisterTexts(oldTexts, 4);
    zkRegisterTexts(newTexts, 1);

    EXPECT_STREQ(zkFindText(title), "new title");
    EXPECT_STREQ(zkFindText(greeting), "old %s");
}

TEST_F(TextTables, moveATableToTheFrontWhenItIsRegisteredAgain)
{
    zkRegisterTexts(oldTexts, 4);
    zkRegisterTexts(newTexts, 1);

    zkRegisterTexts(oldTexts, 4);

    EXPECT_STREQ(zkFindText(title), "old title");
    EXPECT_TRUE(zkUnregisterTexts(oldTexts));
    EXPECT_STREQ(zkFindText(title), "new title");
    EXPECT_FALSE(zkUnregisterTexts(oldTexts));
}

TEST_F(TextTables, takeATableOutAgain)
{
    zkRegisterTexts(oldTexts, 4);

    EXPECT_TRUE(zkUnregisterTexts(oldTexts));

    EXPECT_EQ(zkFindText(title), nullptr);
    EXPECT_FALSE(zkUnregisterTexts(oldTexts));
}

// Where programs have resources, dialogs.rc gives this one texts whose numbers
// are 61000 and their length; the system's own call cuts those that fill its buffer.
TEST_F(TextTables, giveWayToResourcesOfAnyLength)
{
    for (int const length : {253, 254, 255, 256, 1000}) {
        CString text;
        bool const found = text.LoadString(61000u + static_cast<unsigned int>(length));
#ifdef _WIN32
        EXPECT_TRUE(found);
        EXPECT_EQ(text.GetLength(), length);
        EXPECT_EQ(text.Right(1), ".");
#else
        EXPECT_FALSE(found);
        EXPECT_EQ(text, "");
#endif
    }
}

TEST_F(TextTables, mayBeEmpty)
{
    zkRegisterTexts(newTexts, 0);

    EXPECT_EQ(zkFindText(title), nullptr);
}

TEST_F(TextTables, giveFormatsToStringsAndTimes)
{
    static ZkText const formats[] = {{title, "%1!s!-%2"}, {greeting, "%H"}};
    zkRegisterTexts(oldTexts, 4);
    CString text;

    text.Format(greeting, "man");
    EXPECT_EQ(text, "old man");
    text.AppendFormat(greeting, 5);
    EXPECT_EQ(text, "old manold 5");

    zkRegisterTexts(formats, 2);
    text.FormatMessage(title, "a", "b");
    EXPECT_EQ(text, "a-b");
    EXPECT_EQ(CTime(3600 * 5).FormatGmt(greeting), "05");
    EXPECT_EQ(CTimeSpan(3600 * 5).Format(greeting), "05");
    EXPECT_EQ(CTime(0).Format(greeting), CTime(0).Format("%H"));
    zkUnregisterTexts(formats);

    text.Format(unknown, 5);
    EXPECT_EQ(text, "");
}

TEST_F(TextTables, areSafeForManyThreads)
{
    zkRegisterTexts(oldTexts, 4);
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;

    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([i, &wrong] {
            for (int round = 0; round < 500; ++round) {
                if (i == 0) {
                    zkRegisterTexts(newTexts, 1);
                    zkUnregisterTexts(newTexts);
                } else {
                    CString text;
                    bool const good = text.LoadString(title) && (text == "old title" || text == "new title");
                    wrong += good ? 0 : 1;
                }
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(wrong, 0);
}
