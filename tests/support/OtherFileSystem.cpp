#include "tests/support/OtherFileSystem.h"

#ifdef _WIN32
#    include "platform/os/os.h"
#else
#    include <sys/stat.h>
#endif

#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

#ifdef _WIN32

fs::path const otherFolder = "Z:/dev/shm";  // Wine's name for it

bool isElsewhere(fs::path const& folder, fs::path const& candidate)
{
    std::string const probe = (folder / "zk-probe").string();
    std::string const moved = (candidate / "zk-probe").string();
    std::ofstream(probe).put('x');
    bool const wasMoved = MoveFileExA(probe.c_str(), moved.c_str(), 0);
    DWORD const error = GetLastError();
    DeleteFileA(wasMoved ? moved.c_str() : probe.c_str());
    return !wasMoved && error == ERROR_NOT_SAME_DEVICE;
}

#else

fs::path const otherFolder = "/dev/shm";

bool isElsewhere(fs::path const& folder, fs::path const& candidate)
{
    struct stat mine, other;
    return stat(folder.c_str(), &mine) == 0 && stat(candidate.c_str(), &other) == 0 &&
        mine.st_dev != other.st_dev;
}

#endif

}  // namespace

OtherFileSystem::OtherFileSystem(TemporaryFolder const& folder)
{
    std::error_code error;
    fs::path const candidate = otherFolder / fs::path(folder.path()).filename();
    if (!fs::create_directory(candidate, error))
        return;
    if (isElsewhere(folder.path(), candidate))
        folder_ = candidate;
    else
        fs::remove_all(candidate, error);
}

OtherFileSystem::~OtherFileSystem()
{
    std::error_code ignored;
    if (!folder_.empty())
        fs::remove_all(folder_, ignored);
}

std::string OtherFileSystem::read(std::string_view entry) const
{
    std::ifstream file(path(entry), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
