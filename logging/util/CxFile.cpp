#include "logging/util/CxFile.h"

#include "logging/util/CxSystem.h"
#include "platform/os/fileDescriptors.h"
#include "platform/os/os.h"

#include <algorithm>
#include <cerrno>

namespace {

using namespace zk::logging;

static_assert(unsigned(CX_FILE_READ) == zk::os::openRead && unsigned(CX_FILE_WRITE) == zk::os::openWrite &&
              unsigned(CX_FILE_APPEND) == zk::os::openAppend &&
              unsigned(CX_FILE_CREATE) == zk::os::openCreate &&
              unsigned(CX_FILE_TRUNCATE) == zk::os::openTruncate &&
              unsigned(CX_FILE_EXCLUSIVE) == zk::os::openExclusive &&
              unsigned(CX_FILE_TEXT) == zk::os::openText && unsigned(CX_FILE_WARY) == zk::os::openWary);

constexpr int noDescriptor = -1;

// The error number of the call that has just failed.
CCgResult failed() noexcept
{
    return libraryError(errno);
}

CCgResult resultOf(bool done) noexcept
{
    return done ? CCgResult() : failed();
}

CCgResult systemResultOf(BOOL done) noexcept
{
    return done ? CCgResult() : lastSystemError();
}

CxFileStatus statusOf(zk::os::DescriptorStatus const& status) noexcept
{
    return {status.size,      status.modified, status.accessed, status.changed,
            status.isRegular, status.isFolder, status.device,   status.number};
}

}  // namespace

CCgResult CxMapPath(CxMappedPath& mapped, char const* path)
{
    if (!path)
        return invalidArguments;
    std::size_t length = 0;
    auto const append = [&](std::string_view part) {
        length += part.copy(mapped.text + length, CX_LONGEST_PATH - length);
    };
    bool const isMapped = zk::os::nativeSeparatorIsBackslash();
    if (isMapped && path[0] == '/') {
        auto const drive = CxGetEnvironment("SystemDrive");
        if (!drive)
            return invalidArguments;
        append(*drive);
        append("\\");
    }
    append(path);
    if (isMapped)
        std::replace(mapped.text, mapped.text + length, '/', '\\');
    mapped.text[length] = '\0';
    return {};
}

CCgResult CxFileOpen(std::int32_t& file, char const* path, unsigned flags, int mode)
{
    file = noDescriptor;
    CxMappedPath mapped;
    if (CCgResult const result = CxMapPath(mapped, path); !result.ok())
        return result;
    file = zk::os::openDescriptor(mapped.text, flags, mode);
    return resultOf(file != noDescriptor);
}

CCgResult CxFileClose(std::int32_t& file) noexcept
{
    int const descriptor = file;
    file = noDescriptor;
    return resultOf(zk::os::closeDescriptor(descriptor) == 0);
}

CCgResult CxFileRead(std::int32_t file, void* buffer, std::size_t length, std::size_t& done) noexcept
{
    std::int64_t const count = zk::os::readDescriptor(file, buffer, length);
    done = count < 0 ? 0 : static_cast<std::size_t>(count);
    return resultOf(count >= 0);
}

CCgResult CxFileWrite(std::int32_t file, std::string_view bytes) noexcept
{
    return resultOf(zk::os::writeDescriptor(file, bytes.data(), bytes.size()));
}

CCgResult CxFileSeek(std::int32_t file, std::int64_t offset) noexcept
{
    return resultOf(zk::os::seekDescriptor(file, offset, zk::os::SeekFrom::start) != -1);
}

CCgResult CxFileTruncate(std::int32_t file) noexcept
{
    if (CCgResult const result = CxFileSeek(file, 0); !result.ok())
        return result;
    if (!zk::os::resizeDescriptor(file, 0))
        return failed();
    std::uint64_t size = 0;
    CCgResult const result = CxFileSize(file, size);
    return result.ok() && size != 0 ? libraryError(EIO) : result;
}

CCgResult CxFileFlush(std::int32_t file) noexcept
{
    return systemResultOf(zk::os::flushDescriptor(file));
}

CCgResult CxFileSize(std::int32_t file, std::uint64_t& size) noexcept
{
    zk::os::DescriptorStatus status;
    if (!zk::os::statusOfDescriptor(file, status))
        return failed();
    size = status.size;
    return {};
}

CCgResult CxFileSizeOfPath(char const* path, std::uint64_t& size)
{
    CxFileStatus status;
    CCgResult const result = CxFileStat(path, status);
    if (result.ok())
        size = status.size;
    return result;
}

CCgResult CxFileDelete(char const* path)
{
    CxMappedPath mapped;
    CCgResult const result = CxMapPath(mapped, path);
    return result.ok() ? systemResultOf(DeleteFileA(mapped.text)) : result;
}

CCgResult CxFileRename(char const* from, char const* to)
{
    CxMappedPath mappedFrom, mappedTo;
    if (CCgResult const result = CxMapPath(mappedFrom, from); !result.ok())
        return result;
    if (CCgResult const result = CxMapPath(mappedTo, to); !result.ok())
        return result;
    return systemResultOf(MoveFileExA(mappedFrom.text, mappedTo.text, MOVEFILE_REPLACE_EXISTING));
}

CCgResult CxFileStat(char const* path, CxFileStatus& status)
{
    CxMappedPath mapped;
    if (CCgResult const result = CxMapPath(mapped, path); !result.ok())
        return result;
    zk::os::DescriptorStatus found;
    if (!zk::os::statusOfPath(mapped.text, found))
        return failed();
    status = statusOf(found);
    return {};
}

CCgResult CxFileStat(std::int32_t file, CxFileStatus& status) noexcept
{
    zk::os::DescriptorStatus found;
    if (!zk::os::statusOfDescriptor(file, found))
        return failed();
    status = statusOf(found);
    return {};
}
