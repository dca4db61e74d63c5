// FileHandlers.h: a toolkit whose handlers write files into a folder of the test's own.
//
//   class FileHandler : public FileHandlerTest { };
//   TEST_F(FileHandler, ...)
//   {
//       startFiles("out.maxFiles=2\n");
//       log("one");
//       EXPECT_THAT(files(), ElementsAre(Pair("a.log", "one\n")));
//   }
//
// The logger "log" has the handler "out", which writes "a.log" with a formatter that gives the message and a line
// feed; "framed" is one that has a header and a footer too.
#pragma once

#include "logging/CCgReadProps.h"
#include "platform/os/textFiles.h"
#include "tests/logging/Toolkit.h"
#include "tests/logging/newText.h"

#include <filesystem>
#include <map>
#include <string>

class FileHandlerTest : public ToolkitTest {
protected:
    FileHandlerTest() { files_.makeFolder("logs"); }
    ~FileHandlerTest() override
    {
        log_.reset();
        framed_.reset();
        plain_.reset();
        std::filesystem::current_path(before_);
    }

    /// Starts the toolkit; `className` is the handler's class, "out." properties come on top.
    void startFiles(std::string const& properties = "", char const* className = "ccg_filehandler")
    {
        start();
        CCgFormatterEntries entries;
        entries.format = [](CCgObject*, CCgEvent* event) { return line(*event); };
        ccg_registerFormatter("test_plain", nullptr, entries, {});
        entries.header = [](CCgObject*) { return newText("<\n"); };
        entries.footer = [](CCgObject*) { return newText(">\n"); };
        ccg_registerFormatter("test_framed", nullptr, entries, {});
        plain_ = object("plain", "test_plain");
        framed_ = object("framed", "test_framed");
        configure(
            "log.className=ccg_basiclogger\nlog.listenerNames=out\nout.formatterName=plain\nout.fileName=" +
            path("a.log") + "\n" + "out.className=" + className + "\n" + properties);
        log_ = object("log");
        allRecords().clear();
    }

    /// Adds properties as a file would.
    static void configure(std::string const& properties)
    {
        ccg_lock();
        EXPECT_TRUE(zk::logging::readProperties(properties, nullptr));
        ccg_unlock();
    }

    /// The path of a file in the folder, with "/" as separator.
    std::string path(std::string_view name) const
    {
        return std::filesystem::path(files_.path(std::string("logs/").append(name))).generic_string();
    }

    void log(char const* text) { ccg_trace(log_.get(), "%s", CCG_TEXT, text, 0); }

    static void set(char const* key, std::string const& value)
    {
        Owned const handler = object("out");
        ccg_setProperty(handler.get(), key, value.c_str());
    }

    /// All files in the folder, with line feeds as line ends.
    std::map<std::string, std::string> files() const
    {
        std::map<std::string, std::string> found;
        for (auto const& entry : std::filesystem::recursive_directory_iterator(files_.path("logs")))
            if (entry.is_regular_file()) {
                auto const name = std::filesystem::relative(entry.path(), files_.path("logs"));
                found[name.generic_string()] = content(name.generic_string());
            }
        return found;
    }

    std::string content(std::string_view name) const
    {
        std::string text = files_.read(std::string("logs/").append(name));
        if (zk::os::textLinesEndInCrLf)
            std::erase(text, '\r');
        return text;
    }

    void write(std::string_view name, std::string_view text) const
    {
        files_.write(std::string("logs/").append(name), text);
    }

    TemporaryFolder files_;
    Owned log_;

private:
    static char* line(CCgEvent const& event) { return newText(taken(ccg_messageText(event.message)) + "\n"); }

    std::filesystem::path const before_ = std::filesystem::current_path();
    Owned plain_, framed_;
};
