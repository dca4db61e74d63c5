#include "tests/support/TemporaryFolder.h"

#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
{
    std::random_device device;
    do {
        std::ostringstream name;
        name << "zk-test-" << std::hex << device() << device();
        folder_ = fs::temp_directory_path() / name.str();
    } while (!fs::create_directory(folder_));
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
    if (!ignored)
        return;
    // Something below was made read-only: give every folder its rights back and try again.
    for (fs::recursive_directory_iterator entry(folder_, ignored), end; !ignored && entry != end;
         entry.increment(ignored))
        fs::permissions(entry->path(), fs::perms::owner_all,
                        fs::perm_options::add | fs::perm_options::nofollow, ignored);
    fs::permissions(folder_, fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(folder_, ignored);
}

std::string TemporaryFolder::path(std::string_view entry) const
{
    return (folder_ / fs::path(entry)).make_preferred().string();
}

void TemporaryFolder::write(std::string_view entry, std::string_view content) const
{
    std::ofstream file(path(entry), std::ios::binary | std::ios::trunc);
    file.write(content.data(), std::streamsize(content.size()));
    if (!file.flush())
        throw std::runtime_error("cannot write " + path(entry));
}

std::string TemporaryFolder::read(std::string_view entry) const
{
    std::ifstream file(path(entry), std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path(entry));
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

void TemporaryFolder::makeFolder(std::string_view entry) const
{
    fs::create_directories(path(entry));
}

bool TemporaryFolder::exists(std::string_view entry) const
{
    return fs::exists(fs::symlink_status(path(entry)));
}
