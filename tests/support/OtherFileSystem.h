// OtherFileSystem.h: a folder on a file system other than that of a given one, if the machine has one.
//
//   OtherFileSystem const other(folder);
//   if (!other)
//       GTEST_SKIP() << "only one file system";
//   other.path("file");
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

class OtherFileSystem {
public:
    explicit OtherFileSystem(TemporaryFolder const& folder);
    ~OtherFileSystem();
    OtherFileSystem(OtherFileSystem const&) = delete;
    OtherFileSystem& operator=(OtherFileSystem const&) = delete;

    explicit operator bool() const noexcept { return !folder_.empty(); }
    std::string path(std::string_view entry) const { return (folder_ / entry).make_preferred().string(); }
    std::string read(std::string_view entry) const;

private:
    std::filesystem::path folder_;  // empty: there is none
};
