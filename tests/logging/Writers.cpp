#include "tests/logging/Writers.h"

#include "logging/CCgLogManager.h"
#include "logging/CCgLogger.h"
#include "platform/os/fileDescriptors.h"
#include "tests/logging/newText.h"
#include "tests/support/ChildProcess.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <sstream>
#include <thread>
#include <vector>

namespace zk::test {

namespace {

namespace fs = std::filesystem;

std::string recordText(int writer, int number)
{
    char text[100];
    std::snprintf(text, sizeof text, "writer %d record %06d the quick brown fox jumps over the lazy dog %06d",
                  writer, number, number);
    return text;
}

std::string progressPath(std::string const& folder, int writer)
{
    return folder + "/progress" + std::to_string(writer);
}

char* formatPlain(CCgObject*, CCgEvent* event)
{
    char* const text = ccg_messageText(event->message);
    std::string const line = std::string(text) + "\n";
    std::free(text);
    return newText(line);
}

// The number of the last record whose call returned; 0: none.
int progressOf(std::string const& folder, int writer)
{
    std::ifstream file(progressPath(folder, writer), std::ios::binary);
    int number = 0;
    file >> number;
    return number;
}

}  // namespace

// Argument: folder, key, writer, first and last record, maxFileSize, maxFiles.
ZK_CHILD(writesNumberedRecords)
{
    std::istringstream argument(parent.argument());
    std::string folder, key, maxFileSize, maxFiles;
    int writer = 0, first = 0, last = 0;
    argument >> folder >> key >> writer >> first >> last >> maxFileSize >> maxFiles;
    int const progress =
        os::openDescriptor(progressPath(folder, writer).c_str(), os::openWrite | os::openCreate, 0600);

    if (progress == -1 || !ccg_initManager(nullptr))
        return 1;
    CCgFormatterEntries entries;
    entries.format = formatPlain;
    ccg_registerFormatter("test_plain", nullptr, entries, {});
    CCgObject* const formatter = ccg_getObject("plain", "test_plain");
    CCgObject* const handler = ccg_getObject("out", "ccg_multiproc_filehandler");
    ccg_setProperty(handler, "formatterName", "plain");
    ccg_setProperty(handler, "fileName", (folder + "/a.log").c_str());
    ccg_setProperty(handler, "MPFileSemKey", key.c_str());
    ccg_setProperty(handler, "maxFileSize", maxFileSize.c_str());
    ccg_setProperty(handler, "maxFiles", maxFiles.c_str());
    CCgObject* const logger = ccg_getObject("log", "ccg_basiclogger");
    ccg_addListener(logger, handler);
    parent.say("ready");
    for (int number = first; number <= last; ++number) {
        ccg_trace(logger, "%s", CCG_TEXT, recordText(writer, number).c_str(), 0);
        char text[16];
        int const length = std::snprintf(text, sizeof text, "%08d", number);
        os::seekDescriptor(progress, 0, os::SeekFrom::start);
        os::writeDescriptor(progress, text, static_cast<std::size_t>(length));
    }
    for (CCgObject* const object : {logger, handler, formatter})
        ccg_releaseObject(object);
    ccg_shutdownManager();
    os::closeDescriptor(progress);
    parent.say("done");
    return 0;
}

namespace {

class Writers {
public:
    Writers(int count, WriterTask const& task) : task_(task), children_(static_cast<std::size_t>(count))
    {
        for (int writer = 0; writer < count; ++writer)
            start(writer, 1);
    }

    void kill(int writer)
    {
        children_[static_cast<std::size_t>(writer)]->kill();
        ++kills_;
        int const next = progressOf(task_.folder, writer) + 1;
        if (next > task_.records)
            return;
        met_.insert(recordText(writer, next));
        start(writer, next + 1);
    }

    bool isDone(int writer) const
    {
        return progressOf(task_.folder, writer) >= task_.records || isAtEnd(writer);
    }

    void finish()
    {
        for (auto& child : children_)
            if (child)
                child->exitCode();
    }

    WriterResult result() const
    {
        WriterResult result;
        result.kills = kills_;
        std::map<std::string, int> counts;
        std::ostringstream faults;
        for (auto const& entry : fs::directory_iterator(task_.folder)) {
            if (entry.path().extension() != ".log")
                continue;
            ++result.files;
            std::ifstream file(entry.path());  // as text: lines end as the system's
            for (std::string line; std::getline(file, line);)
                ++counts[line];
        }
        for (int writer = 0; writer < static_cast<int>(children_.size()); ++writer)
            for (int number = 1; number <= task_.records; ++number) {
                std::string const text = recordText(writer, number);
                auto const found = counts.find(text);
                int const count = found == counts.end() ? 0 : found->second;
                if (count > 1 || (count == 0 && !met_.contains(text)))
                    faults << count << " times: " << text << '\n';
                if (found != counts.end())
                    counts.erase(found);
            }
        for (auto const& [line, count] : counts)
            if (!isPartOfAMetRecord(line))
                faults << "torn: " << line << '\n';
        result.faults = faults.str().substr(0, 2000);
        return result;
    }

private:
    void start(int writer, int first)
    {
        std::ostringstream argument;
        argument << task_.folder << ' ' << task_.key << ' ' << writer << ' ' << first << ' ' << task_.records
                 << ' ' << task_.maxFileSize << ' ' << task_.maxFiles;
        auto& child = children_[static_cast<std::size_t>(writer)];
        if (first > task_.records) {
            child.reset();
            return;
        }
        child = std::make_unique<ChildProcess>("writesNumberedRecords", argument.str());
        child->awaits("ready");
    }

    bool isAtEnd(int writer) const { return !children_[static_cast<std::size_t>(writer)]; }

    bool isPartOfAMetRecord(std::string const& line) const
    {
        for (std::string const& text : met_)
            if (text.starts_with(line))
                return true;
        return false;
    }

    WriterTask const task_;
    std::vector<std::unique_ptr<ChildProcess>> children_;
    std::set<std::string> met_;  // what was being written by a process that was killed
    int kills_ = 0;
};

}  // namespace

WriterResult runWriters(int count, WriterTask const& task, std::chrono::milliseconds killEach)
{
    Writers writers(count, task);
    std::mt19937 random(20240506);
    auto const running = [&] {
        std::vector<int> found;
        for (int writer = 0; writer < count; ++writer)
            if (!writers.isDone(writer))
                found.push_back(writer);
        return found;
    };
    if (killEach.count() > 0)
        for (std::vector<int> left = running(); !left.empty(); left = running()) {
            std::this_thread::sleep_for(killEach);
            writers.kill(left[random() % left.size()]);
        }
    writers.finish();
    return writers.result();
}

}  // namespace zk::test
