// Toolkit.h: a toolkit that is started for one test, and what arrives at its handlers.
//
//   class Loggers : public ToolkitTest { };
//   TEST_F(Loggers, ...)
//   {
//       start("a.className=ccg_basiclogger\na.listenerNames=recorder\n");
//       ...
//       EXPECT_EQ(records("recorder").at(0).text, "text");
//       EXPECT_THAT(errorKeys(), ElementsAre(63));
//   }
//
// "recorder" and every other object of class "test_recorder" keep what they are given, by their names;
// the toolkit's reports about itself go to "errors".
#pragma once

#include "logging/CCgEvent.h"
#include "logging/CCgLogManager.h"
#include "logging/CCgLogger.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct Record {
    std::string text;
    CCgLevel level;
    std::int32_t key;
    bool isMessage;
    CCgStringToStringMap properties;
};

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

/// A text that a call gave to its caller; "(none)" for none.
inline std::string taken(char* text)
{
    std::unique_ptr<char, FreeText> const own(text);
    return own ? own.get() : "(none)";
}

struct Release {
    void operator()(CCgObject* object) const { ccg_releaseObject(object); }
};
using Owned = std::unique_ptr<CCgObject, Release>;

inline std::map<std::string, std::vector<Record>>& allRecords()
{
    static std::map<std::string, std::vector<Record>> records;
    return records;
}

inline void keepRecord(CCgObject* handler, CCgEvent* event)
{
    allRecords()[handler->name].push_back({taken(ccg_messageText(event->message)), event->level,
                                           event->message.key, event->isMessage, event->properties});
    if (!handler->listeners.empty())
        ccg_forward(handler, event);
}

inline void registerRecorder()
{
    CCgHandlerEntries entries;
    entries.handle = keepRecord;
    ccg_registerHandler("test_recorder", nullptr, entries, {});
}

class ToolkitTest : public testing::Test {
protected:
    ToolkitTest() { allRecords().clear(); }
    ~ToolkitTest() override
    {
        recorder_.reset();
        errors_.reset();
        ccg_shutdownManager();
    }

    /// Starts the toolkit with a properties file of that content.
    void start(std::string_view properties = "")
    {
        folder_.write("test.properties", properties);
        ASSERT_TRUE(ccg_initManager(folder_.path("test.properties").c_str()));
        registerRecorder();
        errors_.reset(ccg_getObject("errors", "test_recorder"));
        recorder_.reset(ccg_getObject("recorder", "test_recorder"));
        Owned const errorLogger(ccg_getObject("cclog.errorLogger", nullptr));
        ccg_setProperty(errorLogger.get(), "listenerNames", "errors");
        ccg_setProperty(errorLogger.get(), "level", "ALL");
        allRecords().clear();
    }

    static Owned object(char const* name, char const* className = nullptr)
    {
        return Owned(ccg_getObject(name, className));
    }

    static std::vector<Record>& records(char const* handler) { return allRecords()[handler]; }

    static std::vector<std::string> texts(char const* handler = "recorder")
    {
        std::vector<std::string> texts;
        for (Record const& record : records(handler))
            texts.push_back(record.text);
        return texts;
    }

    static std::vector<std::int32_t> errorKeys()
    {
        std::vector<std::int32_t> keys;
        for (Record const& record : records("errors"))
            keys.push_back(record.key);
        return keys;
    }

    TemporaryFolder folder_;

private:
    Owned errors_, recorder_;
};
