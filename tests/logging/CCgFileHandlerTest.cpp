#include "platform/os/os.h"
#include "tests/logging/FileHandlers.h"
#include "tests/support/ScopedHandle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;
using Files = std::map<std::string, std::string>;

class FileHandler : public FileHandlerTest { };

TEST_F(FileHandler, writesEachRecordAtOnce)
{
    startFiles();

    log("one");
    EXPECT_EQ(content("a.log"), "one\n");
    log("two");

    EXPECT_EQ(content("a.log"), "one\ntwo\n");
}

TEST_F(FileHandler, endsLinesAsTheSystemDoes)
{
    startFiles();

    log("one\ntwo");

    EXPECT_EQ(files_.read("logs/a.log"), zk::os::textLinesEndInCrLf ? "one\r\ntwo\r\n" : "one\ntwo\n");
}

TEST_F(FileHandler, withoutAFileNameWritesDefaultLogInTheDirectoryOfItsMaking)
{
    start();
    fs::current_path(files_.path("logs"));
    Owned const handler = object("made", "ccg_filehandler");
    Owned const logger = object("direct", "ccg_basiclogger");
    ccg_addListener(logger.get(), handler.get());
    fs::current_path(folder_.path());

    ccg_trace(logger.get(), "text");

    EXPECT_THAT(content("default.log"), testing::EndsWith(" text\n"));
}

TEST_F(FileHandler, keepsTheDirectoryThatWasCurrentWhenItsNameWasSet)
{
    startFiles();
    fs::current_path(files_.path("logs"));
    set("fileName", "sub/b.log");
    fs::current_path(folder_.path());

    log("one");

    EXPECT_THAT(files(), ElementsAre(Pair("sub/b.log", "one\n")));
}

TEST_F(FileHandler, makesTheFoldersOnTheWay)
{
    startFiles("out.fileName=" + path("x/y/a.log") + "\n");

    log("one");

    EXPECT_THAT(files(), ElementsAre(Pair("x/y/a.log", "one\n")));
    EXPECT_THAT(errorKeys(), IsEmpty());
}

TEST_F(FileHandler, writesNothingWhileItIsOff)
{
    startFiles("out.listenerNames=recorder\nout.logging=off\n");

    log("one");

    EXPECT_THAT(files(), IsEmpty());
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(FileHandler, writesNothingWithoutAText)
{
    startFiles("out.formatterName=recorder\n");

    log("one");

    EXPECT_THAT(files(), ElementsAre(Pair("a.log", "")));
}

TEST_F(FileHandler, handsRecordsOnToItsListeners)
{
    startFiles("out.listenerNames=recorder\n");

    log("one");

    EXPECT_THAT(texts(), ElementsAre("one"));
}

// Three records of four bytes fill a file of twelve.
TEST_F(FileHandler, rollsOverByTheNumberOfFiles)
{
    struct Row {
        int maxFiles;
        Files before;
        std::vector<char const*> records;
        Files after;
    };
    Row const rows[] = {
        {0, {}, {"r01", "r02", "r03", "r04", "r05"}, {{"a.log", "r01\nr02\nr03\nr04\nr05\n"}}},
        {1, {}, {"r01", "r02", "r03", "r04", "r05"}, {{"a.log", "r01\nr02\nr03\nr04\nr05\n"}}},
        {1,
         {{"a1.log", "old"}},
         {"r01", "r02", "r03", "r04"},
         {{"a.log", "r01\nr02\nr03\nr04\n"}, {"a1.log", "old"}}},
        {-5, {}, {"r01", "r02", "r03", "r04"}, {{"a.log", "r01\nr02\nr03\nr04\n"}}},
        {2, {}, {"r01", "r02", "r03"}, {{"a.log", "r01\nr02\nr03\n"}}},
        {2, {}, {"r01", "r02", "r03", "r04"}, {{"a.log", "r04\n"}, {"a1.log", "r01\nr02\nr03\n"}}},
        {2,
         {{"a1.log", "older"}, {"a2.log", "not ours"}},
         {"r01", "r02", "r03", "r04"},
         {{"a.log", "r04\n"}, {"a1.log", "r01\nr02\nr03\n"}, {"a2.log", "not ours"}}},
        {2,
         {},
         {"r01", "r02", "r03", "r04", "r05", "r06", "r07"},
         {{"a.log", "r07\n"}, {"a1.log", "r04\nr05\nr06\n"}}},
        {3,
         {{"a1.log", "older"}, {"a2.log", "oldest"}},
         {"r01", "r02", "r03", "r04"},
         {{"a.log", "r04\n"}, {"a1.log", "r01\nr02\nr03\n"}, {"a2.log", "older"}}},
        {3,
         {{"a1.log", "older"}},
         {"r01", "r02", "r03", "r04"},
         {{"a.log", "r04\n"}, {"a1.log", "r01\nr02\nr03\n"}, {"a2.log", "older"}}},
        {3,
         {{"a2.log", "oldest"}},
         {"r01", "r02", "r03", "r04"},
         {{"a.log", "r04\n"}, {"a1.log", "r01\nr02\nr03\n"}}},
        {10,
         {{"a1.log", "1"},
          {"a2.log", "2"},
          {"a5.log", "5"},
          {"a8.log", "8"},
          {"a9.log", "9"},
          {"a10.log", "10"}},
         {"r01", "r02", "r03", "r04"},
         {{"a.log", "r04\n"},
          {"a1.log", "r01\nr02\nr03\n"},
          {"a2.log", "1"},
          {"a3.log", "2"},
          {"a6.log", "5"},
          {"a9.log", "8"},
          {"a10.log", "10"}}},
    };
    for (Row const& row : rows) {
        for (auto const& [name, text] : row.before)
            write(name, text);
        startFiles("out.maxFileSize=12\nout.maxFiles=" + std::to_string(row.maxFiles) + "\n");

        for (char const* const record : row.records)
            log(record);

        EXPECT_EQ(files(), row.after) << "maxFiles " << row.maxFiles << ", row " << &row - rows;
        EXPECT_THAT(errorKeys(), IsEmpty()) << "row " << &row - rows;
        log_.reset();
        ccg_shutdownManager();
        fs::remove_all(files_.path("logs"));
        files_.makeFolder("logs");
    }
}

TEST_F(FileHandler, rollsOverAFileThatItFindsFull)
{
    write("a.log", "123456789012");
    startFiles("out.maxFileSize=12\n");

    log("one");

    EXPECT_THAT(files(), ElementsAre(Pair("a.log", "one\n"), Pair("a1.log", "123456789012")));
}

TEST_F(FileHandler, countsWhatOthersAppend)
{
    startFiles("out.maxFileSize=12\n");
    log("one");

    std::ofstream(files_.path("logs/a.log"), std::ios::app | std::ios::binary) << "of another\n";
    log("two");

    EXPECT_THAT(files(), ElementsAre(Pair("a.log", "two\n"), Pair("a1.log", "one\nof another\n")));
}

TEST_F(FileHandler, takesMaxFileBytesForMaxFileSize)
{
    startFiles("out.maxFileBytes=4\n");

    log("one");
    log("two");

    EXPECT_THAT(files(), ElementsAre(Pair("a.log", "two\n"), Pair("a1.log", "one\n")));
}

TEST_F(FileHandler, takes1024BytesAndThreeFilesForWhatIsNoNumber)
{
    startFiles("out.maxFileSize=many\nout.maxFiles=some\n");
    std::string const record(1023, 'x');

    for (int i = 0; i < 4; ++i)
        log(record.c_str());

    EXPECT_THAT(
        files(),
        ElementsAre(Pair("a.log", SizeIs(1024)), Pair("a1.log", SizeIs(1024)), Pair("a2.log", SizeIs(1024))));
}

TEST_F(FileHandler, takesASizeOfMinusOneForTheLargest)
{
    startFiles("out.maxFileSize=-1\n");

    log("one");
    log("two");

    EXPECT_THAT(files(), ElementsAre(Pair("a.log", "one\ntwo\n")));
}

TEST_F(FileHandler, rollsOverOncePerRecordWithASizeOfZero)
{
    startFiles("out.maxFileSize=0\nout.maxFiles=4\n");

    log("one");
    EXPECT_THAT(files(), ElementsAre(Pair("a.log", "one\n"), Pair("a1.log", "")));
    log("two");
    log("three");

    EXPECT_THAT(files(),
                ElementsAre(Pair("a.log", "three\n"), Pair("a1.log", "two\n"), Pair("a2.log", "one\n"),
                            Pair("a3.log", "")));
}

TEST_F(FileHandler, appendsUnlessItIsToldNotTo)
{
    write("a.log", "old\n");
    startFiles();
    log("one");
    EXPECT_EQ(content("a.log"), "old\none\n");

    set("appending", "false");
    log("two");
    log("three");
    EXPECT_EQ(content("a.log"), "two\nthree\n");
    set("maxFiles", "5");
    log("four");
    EXPECT_EQ(content("a.log"), "four\n") << "each change of a property opens the file anew";

    set("appending", "perhaps");
    log("five");
    EXPECT_EQ(content("a.log"), "four\nfive\n");
}

TEST_F(FileHandler, framesAFileWithHeaderAndFooter)
{
    startFiles("out.formatterName=framed\n");

    log("one");
    EXPECT_EQ(content("a.log"), "<\none\n");
    set("maxFiles", "4");
    EXPECT_EQ(content("a.log"), "<\none\n>\n");
    log("two");
    log_.reset();
    ccg_shutdownManager();

    EXPECT_EQ(content("a.log"), "<\none\n>\n<\ntwo\n>\n");
}

TEST_F(FileHandler, countsTheHeader)
{
    startFiles("out.formatterName=framed\nout.maxFileSize=6\n");

    log("one");
    log("two");

    EXPECT_THAT(files(), ElementsAre(Pair("a.log", "<\ntwo\n"), Pair("a1.log", "<\none\n>\n")));
}

TEST_F(FileHandler, isClosedByEveryPropertyButOne)
{
    for (char const* const key : {"maxFileSize", "maxFileBytes", "maxFiles", "fileName", "appending",
                                  "filePermission", "dirPermission", "fileEncoding", "MPFileSemKey",
                                  "formatterName", "logging", "description", "anything"}) {
        startFiles("out.formatterName=framed\n");
        log("one");

        set(key, "framed");

        EXPECT_THAT(content("a.log"), testing::EndsWith(">\n")) << key;
        log_.reset();
        ccg_shutdownManager();
        fs::remove_all(files_.path("logs"));
        files_.makeFolder("logs");
    }
    startFiles("out.formatterName=framed\n");
    log("one");

    set("logInternalErrs", "false");

    EXPECT_EQ(content("a.log"), "<\none\n");
}

TEST_F(FileHandler, isClosedWhenItsLastReferenceGoes)
{
    startFiles("out.formatterName=framed\n");
    log("one");
    {
        Owned const kept = object("out");
        log_.reset();
        EXPECT_EQ(content("a.log"), "<\none\n");
    }

    EXPECT_EQ(content("a.log"), "<\none\n>\n");
}

TEST_F(FileHandler, reportsANameThatIsMissing)
{
    startFiles();

    set("fileName", "");
    EXPECT_THAT(errorKeys(), ElementsAre(30));
    EXPECT_EQ(records("errors")[0].level, CCG_ERROR);
    EXPECT_THAT(texts("errors")[0], testing::HasSubstr("'fileName'"));
    log("one");

    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(FileHandler, reportsANameThatIsTooLong)
{
    startFiles();
    set("fileName", std::string(260, 'a'));
    EXPECT_THAT(errorKeys(), IsEmpty());

    set("fileName", std::string(261, 'a'));

    EXPECT_THAT(errorKeys(), ElementsAre(31));
    EXPECT_EQ(texts("errors")[0], "CCGBC0031E Property 'fileName' must be 260 characters or less.");
}

TEST_F(FileHandler, doesNotOpenAPathThatFileCallsWouldCut)
{
    startFiles();
    std::string name = path("");
    while (name.size() + 100 < 258)
        name += std::string(99, 'd') + "/";
    name += std::string(260 - name.size(), 'x');
    set("fileName", name);

    log("one");

    EXPECT_THAT(errorKeys(), ElementsAre(0));
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(FileHandler, reportsAPermissionThatIsNoOctalNumber)
{
    startFiles();

    set("filePermission", "rwx");
    EXPECT_THAT(errorKeys(), ElementsAre(74));
    EXPECT_EQ(records("errors")[0].level, CCG_WARN);
    EXPECT_THAT(texts("errors")[0],
                testing::AllOf(testing::HasSubstr("rwx"), testing::HasSubstr("handler out.")));
    set("dirPermission", "9");
    set("dirPermission", "0750");

    EXPECT_THAT(errorKeys(), ElementsAre(74, 74));
}

TEST_F(FileHandler, takesTheValueOfAppendingForWhetherItReports)
{
    startFiles("out.appending=false\nout.logInternalErrs=true\n");
    set("fileName", "");
    EXPECT_THAT(errorKeys(), IsEmpty());

    set("appending", "true");
    set("logInternalErrs", "false");
    set("fileName", "");

    EXPECT_THAT(errorKeys(), ElementsAre(30));
}

TEST_F(FileHandler, reportsWithoutAppendingWhateverItIsTold)
{
    startFiles("out.logInternalErrs=false\n");

    set("fileName", "");

    EXPECT_THAT(errorKeys(), ElementsAre(30));
}

TEST_F(FileHandler, reportsAFolderThatCannotBeMadeWithEachRecordAndGoesOnAfterwards)
{
    write("inTheWay", "");
    startFiles("out.fileName=" + path("inTheWay/a.log") + "\n");

    log("one");
    EXPECT_THAT(errorKeys(), ElementsAre(32, 0));
    EXPECT_EQ(records("errors")[0].level, CCG_ERROR);
    EXPECT_EQ(records("errors")[1].level, CCG_WARN);
    log("two");
    EXPECT_THAT(errorKeys(), ElementsAre(32, 0, 32, 0));
    fs::remove(files_.path("logs/inTheWay"));
    log("three");

    EXPECT_THAT(files(), ElementsAre(Pair("inTheWay/a.log", "three\n")));
}

TEST_F(FileHandler, keepsQuietAboutTheFolderIfToldSoButNotAboutTheFile)
{
    write("inTheWay", "");
    startFiles("out.appending=false\nout.logInternalErrs=x\nout.fileName=" + path("inTheWay/a.log") + "\n");

    log("one");

    EXPECT_THAT(errorKeys(), ElementsAre(0));
}

TEST_F(FileHandler, handsOnWhatItCouldNotWrite)
{
    write("inTheWay", "");
    startFiles("out.listenerNames=recorder\nout.fileName=" + path("inTheWay/a.log") + "\n");

    log("one");

    EXPECT_THAT(texts(), ElementsAre("one"));
}

TEST_F(FileHandler, ofTheErrorLoggerDropsReportsAboutItself)
{
    write("inTheWay", "");
    startFiles("out.fileName=" + path("inTheWay/a.log") + "\n");
    Owned const errors = object("cclog.errorLogger");
    ccg_setProperty(errors.get(), "listenerNames", "out");

    log("one");
    set("fileName", "");
    log("two");
    set("fileName", path("a.log"));
    set("filePermission", "?");

    EXPECT_THAT(content("a.log"), testing::StartsWith("CCGMP0074W"));
}

// Takes the file away in the ways that the system allows while it is open, and tells whether it did.
bool removed(std::string const& path)
{
    std::error_code error;
    return fs::remove(path, error);
}

TEST_F(FileHandler, makesAFileAnewThatWasRemoved)
{
    startFiles();
    log("one");
    bool const isGone = removed(files_.path("logs/a.log"));

    log("two");

    EXPECT_EQ(content("a.log"), isGone ? "two\n" : "one\ntwo\n");
    EXPECT_THAT(errorKeys(), IsEmpty());
}

TEST_F(FileHandler, makesAFileAnewThatWasRenamed)
{
    startFiles();
    log("one");
    std::error_code error;
    fs::rename(files_.path("logs/a.log"), files_.path("logs/b.log"), error);

    log("two");

    Files const renamed = {{"a.log", "two\n"}, {"b.log", "one\n"}};
    EXPECT_EQ(files(), error ? Files({{"a.log", "one\ntwo\n"}}) : renamed);
}

TEST_F(FileHandler, goesOnInTheFileThatHasTheName)
{
    startFiles();
    log("one");
    std::error_code error;
    fs::rename(files_.path("logs/a.log"), files_.path("logs/b.log"), error);
    if (!error)
        write("a.log", "new\n");

    log("two");

    EXPECT_EQ(content("a.log"), error ? "one\ntwo\n" : "new\ntwo\n");
}

TEST_F(FileHandler, makesAFolderAnewThatWasRemoved)
{
    startFiles();
    log("one");
    std::error_code error;
    fs::remove_all(files_.path("logs"), error);

    log("two");

    EXPECT_EQ(content("a.log"), error ? "one\ntwo\n" : "two\n");
    EXPECT_THAT(errorKeys(), IsEmpty());
}

TEST_F(FileHandler, makesAFolderAnewThatWasRenamed)
{
    startFiles();
    log("one");
    std::error_code error;
    fs::rename(files_.path("logs"), files_.path("old"), error);

    log("two");

    EXPECT_EQ(content("a.log"), error ? "one\ntwo\n" : "two\n");
    EXPECT_TRUE(error || files_.read("old/a.log").starts_with("one"));
}

// An open file that lets nobody rename or remove it.
ScopedHandle held(std::string const& path)
{
    return ScopedHandle(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

TEST_F(FileHandler, keepsEveryFileWhereOneCannotBeRenamed)
{
    Files const before = {{"a.log", "r01\n"}, {"a1.log", "1"}, {"a2.log", "2"}, {"a3.log", "3"}};
    for (char const* const name : {"a.log", "a1.log", "a2.log", "a3.log"}) {
        for (auto const& [file, text] : before)
            write(file, text);
        startFiles("out.maxFileSize=4\nout.maxFiles=4\n");
        {
            ScopedHandle const holder = held(files_.path(std::string("logs/") + name));
            ASSERT_TRUE(holder);

            log("r02");
            EXPECT_THAT(errorKeys(), ElementsAre(0)) << name;
            log("r03");
        }
        Files expected = before;
        expected["a.log"] = "r01\nr02\nr03\n";
        EXPECT_EQ(files(), expected) << name;

        log("r04");
        EXPECT_EQ(
            files(),
            Files({{"a.log", "r04\n"}, {"a1.log", "r01\nr02\nr03\n"}, {"a2.log", "1"}, {"a3.log", "2"}}))
            << name;
        log_.reset();
        ccg_shutdownManager();
    }
}

TEST_F(FileHandler, doesNotEmptyAFullFileThatCannotBeRenamed)
{
    write("a.log", "old\n");
    startFiles("out.maxFileSize=4\nout.maxFiles=2\nout.appending=false\n");
    log("one");
    ScopedHandle const holder = held(files_.path("logs/a.log"));

    log("two");

    EXPECT_THAT(files(), ElementsAre(Pair("a.log", "one\ntwo\n")));
}

TEST_F(FileHandler, leavesAFolderInTheWayOfTheOldestFile)
{
    startFiles("out.maxFileSize=4\nout.maxFiles=2\n");
    files_.makeFolder("logs/a1.log");
    write("a1.log/inside", "");

    log("one");
    log("two");

    EXPECT_THAT(files(), ElementsAre(Pair("a.log", "one\ntwo\n"), Pair("a1.log/inside", "")));
    EXPECT_THAT(errorKeys(), ElementsAre(0));
}

TEST_F(FileHandler, finishesARolloverThatWasCutOff)
{
    // The oldest was put aside and two were renamed when the process ended.
    write("a.log", "r01\n");
    write("a1.log", "1");
    write("a3.log", "2");
    write("a4.log", "3");
    write("a.log.dropped", "4");
    startFiles("out.maxFileSize=4\nout.maxFiles=5\n");

    log("r02");

    EXPECT_EQ(
        files(),
        Files({{"a.log", "r02\n"}, {"a1.log", "r01\n"}, {"a2.log", "1"}, {"a3.log", "2"}, {"a4.log", "3"}}));
}

TEST_F(FileHandler, rollsThousandsOfFilesWithoutLookingForMore)
{
    write("a.log", "r01\n");
    write("a1.log", "1");
    write("a1500.log", "not ours");
    startFiles("out.maxFileSize=4\nout.maxFiles=2000000000\n");

    log("r02");

    EXPECT_EQ(files(),
              Files({{"a.log", "r02\n"}, {"a1.log", "r01\n"}, {"a2.log", "1"}, {"a1500.log", "not ours"}}));
}

TEST_F(FileHandler, takesRecordsOfManyThreads)
{
    startFiles("out.maxFileSize=20000\nout.maxFiles=100\n");
    constexpr int threads = 4, records = 500;
    std::vector<std::thread> writers;
    for (int thread = 0; thread < threads; ++thread)
        writers.emplace_back([&, thread] {
            for (int i = 0; i < records; ++i)
                log(("thread " + std::to_string(thread) + " record " + std::to_string(i)).c_str());
        });
    for (std::thread& writer : writers)
        writer.join();

    std::map<std::string, int> lines;
    for (auto const& [name, text] : files()) {
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);)
            ++lines[line];
    }
    EXPECT_THAT(lines, SizeIs(threads * records));
    for (auto const& [line, count] : lines)
        EXPECT_EQ(count, 1) << line;
}

}  // namespace
