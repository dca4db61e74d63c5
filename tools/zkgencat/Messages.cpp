#include "tools/zkgencat/Messages.h"

#include "logging/CCgCatalogFile.h"
#include "logging/CCgResult.h"
#include "logging/util/CxFile.h"
#include "logging/util/CxSystem.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <system_error>
#include <vector>

namespace zkgencat {

namespace {

using namespace zk::logging;
namespace fs = std::filesystem;

void check(CCgResult const& result, std::string const& what)
{
    if (!result.ok())
        throw Failure(failed, what + ": " + textOf(result));
}

// File calls would cut it, and take another file.
void checkLength(std::string const& file)
{
    if (file.size() > CX_LONGEST_PATH)
        throw Failure(failed,
                      "the path " + quoted(file) + " has more than " + std::to_string(CX_LONGEST_PATH) +
                          " bytes");
}

void appendNumber(std::string& bytes, std::uint64_t value)
{
    if (value > std::numeric_limits<std::uint32_t>::max())
        throw Failure(mistaken, "the messages take more than a catalog can hold");
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift);
}

struct SetBytes {
    std::int32_t id;
    std::uint32_t count = 0;
    std::string messages = {};
    std::string texts = {};
};

std::vector<SetBytes> setsOf(Messages const& messages)
{
    std::vector<SetBytes> sets;
    for (auto const& [id, text] : messages) {
        if (sets.empty() || sets.back().id != id.first)
            sets.push_back({id.first});
        SetBytes& set = sets.back();
        appendNumber(set.messages, static_cast<std::uint32_t>(id.second));
        appendNumber(set.messages, set.texts.size());
        appendNumber(set.messages, 0);
        set.texts += text;
        set.texts += '\0';
        ++set.count;
    }
    return sets;
}

// A file beside its place that goes again unless it is put there.
class NewFile {
public:
    explicit NewFile(std::string const& place)
        : place_(place), path_(place + "." + std::to_string(CxProcessId()) + ".new")
    {
        checkLength(path_);
        CxFileDelete(path_.c_str());  // what another one of this number left
        check(CxFileOpen(file_, path_.c_str(), CX_FILE_WRITE | CX_FILE_CREATE | CX_FILE_EXCLUSIVE, 0666),
              "cannot write " + quoted(place_));
    }
    ~NewFile()
    {
        if (file_ != -1)
            CxFileClose(file_);
        if (!inPlace_)
            CxFileDelete(path_.c_str());
    }
    NewFile(NewFile const&) = delete;
    NewFile& operator=(NewFile const&) = delete;

    void write(std::string const& bytes)
    {
        check(CxFileWrite(file_, bytes), "cannot write " + quoted(place_));
    }

    void putInPlace()
    {
        check(CxFileFlush(file_), "cannot write " + quoted(place_));
        check(CxFileClose(file_), "cannot write " + quoted(place_));
        check(CxFileRename(path_.c_str(), place_.c_str()), "cannot replace " + quoted(place_));
        inPlace_ = true;
    }

private:
    std::string const place_;
    std::string const path_;
    std::int32_t file_ = -1;
    bool inPlace_ = false;
};

}  // namespace

Messages readMessages(std::string const& file)
{
    checkLength(file);
    std::uint64_t size = 0;
    check(CxFileSizeOfPath(file.c_str(), size), "cannot read " + quoted(file));
    auto const catalog = readCatalog(file);
    if (!catalog)
        throw Failure(failed, quoted(file) + " is no catalog");
    Messages messages;
    for (CatalogSet& listed : catalog->sets) {
        CatalogSet const* const set = findSet(*catalog, listed.id);
        if (!set || set != &listed || set->isDamaged)
            throw Failure(failed,
                          quoted(file) + " is damaged: not all messages of set " + std::to_string(listed.id) +
                              " can be read");
        for (CatalogMessage const& message : set->messages)
            messages[{set->id, message.id}] = set->texts.c_str() + message.textAt;
    }
    return messages;
}

void writeMessages(std::string const& file, Messages const& messages)
{
    std::string const bytes = catalogOf(messages);
    // A link stays one.
    std::error_code error;
    fs::path const place = fs::weakly_canonical(file, error);
    NewFile made(error ? file : place.string());
    made.write(bytes);
    made.putInPlace();
}

std::string catalogOf(Messages const& messages)
{
    std::vector<SetBytes> sets = setsOf(messages);
    if (sets.empty())
        sets.push_back({1});  // a catalog has one set at least
    std::string bytes(catalogMagic);
    appendNumber(bytes, catalogMajorVersion);
    appendNumber(bytes, 0);  // the minor version
    appendNumber(bytes, 0);  // flags
    appendNumber(bytes, sets.size());
    appendNumber(bytes, catalogHeaderSize);

    std::uint64_t next = catalogHeaderSize;
    std::uint64_t content = catalogHeaderSize + sets.size() * std::uint64_t(catalogSetSize);
    for (SetBytes const& set : sets) {
        next += catalogSetSize;
        appendNumber(bytes, static_cast<std::uint32_t>(set.id));
        appendNumber(bytes, &set == &sets.back() ? 0 : next);
        appendNumber(bytes, content);
        content += set.messages.size();
        appendNumber(bytes, content);
        content += set.texts.size();
        appendNumber(bytes, set.texts.size());
        appendNumber(bytes, set.count);
        appendNumber(bytes, 0);  // it is valid
    }
    for (SetBytes const& set : sets)
        bytes += set.messages + set.texts;
    return bytes;
}

std::string quoted(std::string const& name)
{
    std::string shown = name;
    for (char& c : shown)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            c = '?';
    return "'" + shown + "'";
}

}  // namespace zkgencat
