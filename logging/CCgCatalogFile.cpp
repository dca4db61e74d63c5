#include "logging/CCgCatalogFile.h"

#include "logging/util/CxFile.h"

#include <algorithm>
#include <cstddef>

namespace zk::logging {

namespace {

// Numbers in a row.
class Fields {
public:
    explicit Fields(char const* bytes) noexcept : bytes_(bytes) { }

    std::uint32_t next() noexcept
    {
        std::uint32_t value = 0;
        for (int i = 0; i < 4; ++i)
            value = value << 8 | static_cast<unsigned char>(*bytes_++);
        return value;
    }

private:
    char const* bytes_;
};

// Reads exactly what is asked for; false if the file has not as much.
bool readAt(std::int32_t file, std::uint64_t offset, char* bytes, std::size_t length)
{
    if (!CxFileSeek(file, static_cast<std::int64_t>(offset)).ok())
        return false;
    while (length > 0) {
        std::size_t done = 0;
        if (!CxFileRead(file, bytes, length, done).ok() || done == 0)
            return false;
        bytes += done;
        length -= done;
    }
    return true;
}

bool lies(std::uint64_t offset, std::uint64_t length, std::uint64_t size) noexcept
{
    return offset <= size && length <= size - offset;
}

// Follows the chain of the sets. False if it leads out of the file or into its header, as its end does.
bool readSets(CCgCatalog& catalog, std::uint64_t size, std::uint32_t count, std::uint32_t offset)
{
    // No two records are the same one: more cannot be.
    if (count > size / catalogSetSize)
        return false;
    for (std::uint32_t i = 0; i < count; ++i) {
        char record[catalogSetSize];
        if (offset < catalogHeaderSize || !lies(offset, sizeof record, size) ||
            !readAt(catalog.file, offset, record, sizeof record))
            return false;
        Fields fields(record);
        CatalogSet set;
        set.id = static_cast<std::int32_t>(fields.next());
        offset = fields.next();
        set.messagesAt = fields.next();
        set.textsAt = fields.next();
        set.textsLength = fields.next();
        set.messageCount = fields.next();
        bool const isInvalid = fields.next() != 0;
        if (!isInvalid)
            catalog.sets.push_back(std::move(set));
    }
    return true;
}

// Reads the messages of a set and their texts. On failure the set has no messages.
void load(std::int32_t file, CatalogSet& set)
{
    set.loaded = true;
    set.isDamaged = true;  // until all is read
    std::uint64_t size = 0;
    std::uint64_t const messagesLength = std::uint64_t(set.messageCount) * catalogMessageSize;
    if (!CxFileSize(file, size).ok() || !lies(set.messagesAt, messagesLength, size) ||
        !lies(set.textsAt, set.textsLength, size))
        return;
    std::string records(messagesLength, '\0');
    std::string texts(set.textsLength, '\0');
    if (!readAt(file, set.messagesAt, records.data(), records.size()) ||
        !readAt(file, set.textsAt, texts.data(), texts.size()))
        return;
    set.isDamaged = false;
    std::size_t const lastEnd = texts.rfind('\0');  // behind it no text is terminated
    Fields fields(records.data());
    for (std::uint32_t i = 0; i < set.messageCount; ++i) {
        auto const id = static_cast<std::int32_t>(fields.next());
        std::uint32_t const textAt = fields.next();
        if (fields.next() != 0)
            continue;  // it is invalid
        if (lastEnd != std::string::npos && textAt <= lastEnd)
            set.messages.push_back({id, textAt});
        else
            set.isDamaged = true;
    }
    set.texts = std::move(texts);
}

// The entry of an id in a list that is sorted by it. Ids mostly count from 1 on without gaps: the first guess is
// the index that is the id, and the next one as far from it as the ids differ.
template <class Entries>
auto* findById(Entries& entries, std::int32_t id) noexcept
{
    using Entry = std::remove_reference_t<decltype(entries[0])>;
    std::ptrdiff_t low = 0;
    std::ptrdiff_t high = std::ssize(entries);
    std::ptrdiff_t guess = id >= 0 && id < high ? id : high / 2;
    for (int steps = 0; low < high; ++steps) {
        Entry& entry = entries[static_cast<std::size_t>(guess)];
        if (entry.id == id)
            return &entry;
        (entry.id < id ? low : high) = entry.id < id ? guess + 1 : guess;
        constexpr int mostGuesses = 4;  // then the ids are scattered
        std::int64_t const distance = std::int64_t(id) - entry.id;
        std::int64_t const next = steps < mostGuesses ? guess + distance : low + (high - low) / 2;
        guess = std::clamp<std::int64_t>(next, low, std::max(low, high - 1));
    }
    return static_cast<Entry*>(nullptr);
}

}  // namespace

std::unique_ptr<CCgCatalog> readCatalog(std::string const& path)
{
    auto catalog = std::make_unique<CCgCatalog>();
    std::uint64_t size = 0;
    char header[catalogHeaderSize];
    if (!CxFileOpen(catalog->file, path.c_str(), CX_FILE_READ).ok() ||
        !CxFileSize(catalog->file, size).ok() || !readAt(catalog->file, 0, header, sizeof header) ||
        std::string_view(header, catalogMagic.size()) != catalogMagic)
        return nullptr;
    Fields fields(header + catalogMagic.size());
    std::uint32_t const major = fields.next();
    fields.next();  // the minor version
    catalog->flags = fields.next();
    std::uint32_t const count = fields.next();
    std::uint32_t const first = fields.next();
    if (major != catalogMajorVersion || count == 0 || !readSets(*catalog, size, count, first))
        return nullptr;
    return catalog;
}

CatalogSet* findSet(CCgCatalog& catalog, std::int32_t id)
{
    CatalogSet* const set = findById(catalog.sets, id);
    if (set && !set->loaded)
        load(catalog.file, *set);
    return set;
}

CatalogMessage const* findMessage(CatalogSet const& set, std::int32_t id) noexcept
{
    return findById(set.messages, id);
}

char const* catalogText(CCgCatalog& catalog, std::int32_t set, std::int32_t key)
{
    CatalogSet const* const found = findSet(catalog, set);
    CatalogMessage const* const message = found ? findMessage(*found, key) : nullptr;
    return message ? found->texts.c_str() + message->textAt : nullptr;
}

}  // namespace zk::logging

CCgCatalog::~CCgCatalog()
{
    if (file != -1)
        CxFileClose(file);
}
