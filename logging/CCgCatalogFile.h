// CCgCatalogFile.h: the content of a catalog file.
//
// All numbers are of 32 bits, the highest byte first; offsets count from the begin of the file.
//
//   header        "*nazgul*", major version 1, minor version, flags, number of sets, offset of the first set
//   set           id, offset of the next set, offset of its messages, offset and length of its texts,
//                 number of messages, invalid flag: 28 bytes, a chained list
//   message       id, offset of its NUL-terminated text in the set's texts, invalid flag: 12 bytes
//
// Sets and messages are in the order of their ids; texts are UTF-8. Any bytes may stand in a file that calls
// itself a catalog: every offset and count is checked against the file's size before it is used.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct CCgCodeset;

namespace zk::logging {

struct CatalogMessage {
    std::int32_t id;
    std::uint32_t textAt;  // in the texts of the set
};

struct CatalogSet {
    std::int32_t id;
    std::uint32_t messagesAt;
    std::uint32_t textsAt;
    std::uint32_t textsLength;
    std::uint32_t messageCount;

    bool loaded = false;
    bool isDamaged = false;                // messages that are said to be valid cannot be read
    std::vector<CatalogMessage> messages;  // those that are valid
    std::string texts;
    // What was converted, by message and name of the code set.
    std::map<std::pair<std::int32_t, std::string>, std::string> converted = {};
};

inline constexpr std::string_view catalogMagic("*nazgul*");
inline constexpr std::uint32_t catalogMajorVersion = 1;
inline constexpr std::uint32_t catalogHeaderSize = 28;
inline constexpr std::uint32_t catalogSetSize = 28;
inline constexpr std::uint32_t catalogMessageSize = 12;

}  // namespace zk::logging

struct CCgCatalog {
    std::uint32_t flags = 0;
    std::int32_t file = -1;
    std::vector<zk::logging::CatalogSet> sets;  // those that are valid

    // Of the cache.
    std::string path;
    std::uint64_t stamp = 0;
    std::int32_t users = 0;
    bool cached = false;

    CCgCatalog() = default;
    ~CCgCatalog();
    CCgCatalog(CCgCatalog const&) = delete;
    CCgCatalog& operator=(CCgCatalog const&) = delete;
};

namespace zk::logging {

/// Opens a file and reads its sets, but none of their messages. Null for what is no catalog.
std::unique_ptr<CCgCatalog> readCatalog(std::string const& path);

/// A set, with its messages, which are read at its first use; null if there is none.
CatalogSet* findSet(CCgCatalog& catalog, std::int32_t id);

/// A message of a set; null if there is none.
CatalogMessage const* findMessage(CatalogSet const& set, std::int32_t id) noexcept;

/// The text of a message, NUL-terminated; null if there is none.
char const* catalogText(CCgCatalog& catalog, std::int32_t set, std::int32_t key);

}  // namespace zk::logging
