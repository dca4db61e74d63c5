// TemporaryFolder.h: a folder of the test's own, removed with everything in it.
//
//   TemporaryFolder folder;
//   folder.write("model.ini", "[General]\n");
//   folder.path("model.ini");                     // full path, native separators
//   folder.read("model.ini");                     // "[General]\n", every byte as it is
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;

    /// The folder's full path, or that of an entry in it.
    std::string path() const { return folder_.string(); }
    std::string path(std::string_view entry) const;

    void write(std::string_view entry, std::string_view content) const;
    std::string read(std::string_view entry) const;
    void makeFolder(std::string_view entry) const;
    bool exists(std::string_view entry) const;

private:
    std::filesystem::path folder_;
};
