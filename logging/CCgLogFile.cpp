#include "logging/CCgLogFile.h"

#include "logging/util/CxFile.h"
#include "platform/os/fileDescriptors.h"
#include "platform/os/textFiles.h"

#include <cerrno>

namespace zk::logging {

namespace {

std::string withCrLf(std::string_view text)
{
    std::string lines;
    lines.reserve(text.size() + 8);
    for (char const c : text) {
        if (c == '\n')
            lines += '\r';
        lines += c;
    }
    return lines;
}

}  // namespace

CCgResult LogFile::open(std::string const& path, unsigned flags, int permissions)
{
    close();
    path_ = path;
    constexpr unsigned always = CX_FILE_READ | CX_FILE_WRITE | CX_FILE_CREATE | CX_FILE_APPEND | CX_FILE_WARY;
    if (CCgResult const result = CxFileOpen(descriptor_, path.c_str(), always | flags, permissions);
        !result.ok())
        return result;
    CxFileStatus status;
    if (CCgResult const result = CxFileStat(descriptor_, status); !result.ok()) {
        CxFileClose(descriptor_);
        return result;
    }
    isRegular_ = status.isRegular;
    size_ = status.isRegular ? status.size : 0;
    device_ = status.device;
    number_ = status.number;
    lookedAt_ = -1;  // the file may have lost its name before it was watched
    watch_.start(path.c_str());
    return {};
}

CCgResult LogFile::close() noexcept
{
    if (!isOpen())
        return {};
    watch_.stop();
    if (!isStillOurs()) {
        descriptor_ = noDescriptor;
        return libraryError(EBADF);
    }
    return CxFileClose(descriptor_);
}

LogFile::State LogFile::look(std::int64_t now)
{
    bool const isTold = watch_.mayHaveChanged();
    if (isTold || now / 1000 != lookedAt_) {
        lookedAt_ = now / 1000;
        if (isTold && watch_.isAtWork())
            watch_.start(path_.c_str());  // folders on the way may be others now
        if (!isNamed())
            return isStillOurs() ? State::gone : (descriptor_ = noDescriptor, State::lost);
    }
    std::int64_t const end = os::seekDescriptor(descriptor_, 0, os::SeekFrom::end);
    std::uint64_t const size = end > 0 && isRegular_ ? static_cast<std::uint64_t>(end) : 0;
    if (end == -1 ? isRegular_ || errno == EBADF : size != size_ && !isStillOurs()) {
        descriptor_ = noDescriptor;
        return State::lost;
    }
    size_ = size;
    return State::inPlace;
}

CCgResult LogFile::write(std::string_view text)
{
    if constexpr (os::textLinesEndInCrLf)
        return writeBytes(withCrLf(text));
    else
        return writeBytes(text);
}

bool LogFile::endsLine(std::string_view lineEnd) const
{
    std::string last(lineEnd.size(), '\0');
    if (size_ < last.size())
        return size_ == 0;
    std::size_t done = 0;
    return !CxFileSeek(descriptor_, static_cast<std::int64_t>(size_ - last.size())).ok() ||
        !CxFileRead(descriptor_, last.data(), last.size(), done).ok() || done < last.size() ||
        last == lineEnd;
}

CCgResult LogFile::empty() noexcept
{
    CCgResult const result = CxFileTruncate(descriptor_);
    if (result.ok())
        size_ = 0;
    return result;
}

// Whether the descriptor still has our file behind it.
bool LogFile::isStillOurs() const noexcept
{
    return os::descriptorIsOf(descriptor_, device_, number_);
}

// Whether the path still leads to our file. What cannot be looked at, for want of rights, counts as there.
bool LogFile::isNamed()
{
    CxFileStatus status;
    CCgResult const result = CxFileStat(path_.c_str(), status);
    if (!result.ok())
        return result != libraryError(ENOENT) && result != libraryError(ENOTDIR);
    return status.isRegular == isRegular_ &&
        (number_ == 0 || (status.device == device_ && status.number == number_));
}

CCgResult LogFile::writeBytes(std::string_view bytes)
{
    CCgResult const result = CxFileWrite(descriptor_, bytes);
    if (!result.ok())
        takeBack(bytes);
    else if (isRegular_)
        size_ += bytes.size();
    return result;
}

// Of bytes that were not written whole, takes away what stands at the end of the file.
void LogFile::takeBack(std::string_view bytes) noexcept
{
    std::int64_t const end = os::seekDescriptor(descriptor_, 0, os::SeekFrom::end);
    std::int64_t const before = static_cast<std::int64_t>(size_);
    if (!isRegular_ || end <= before || static_cast<std::uint64_t>(end - before) >= bytes.size())
        return;
    std::string_view left = bytes.substr(0, static_cast<std::size_t>(end - before));
    if (os::seekDescriptor(descriptor_, before, os::SeekFrom::start) == -1)
        return;
    char found[512];
    while (!left.empty()) {
        std::int64_t const count =
            os::readDescriptor(descriptor_, found, std::min(left.size(), sizeof found));
        if (count <= 0 ||
            left.substr(0, static_cast<std::size_t>(count)) !=
                std::string_view(found, static_cast<std::size_t>(count)))
            return;
        left.remove_prefix(static_cast<std::size_t>(count));
    }
    os::resizeDescriptor(descriptor_, before);
}

}  // namespace zk::logging
