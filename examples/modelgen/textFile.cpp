#include "examples/modelgen/textFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>

namespace fs = std::filesystem;

namespace modelgen {

namespace {

constexpr std::size_t largestFile = std::size_t(1) << 30;

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

CString lastReason()
{
    return errno == 0 ? "unknown error" : std::strerror(errno);
}

bool writeNew(CString const& name, CString const& content, CString& reason)
{
    errno = 0;
    File file(std::fopen(name, "wb"));
    if (!file) {
        reason = lastReason();
        return false;
    }
    std::size_t const length = std::size_t(content.GetLength());
    bool isWritten = std::fwrite(content.GetString(), 1, length, file.get()) == length;
    isWritten = std::fflush(file.get()) == 0 && isWritten;
    if (!isWritten)
        reason = lastReason();
    isWritten = std::fclose(file.release()) == 0 && isWritten;
    if (!isWritten && reason.IsEmpty())
        reason = lastReason();
    return isWritten;
}

}  // namespace

bool readFile(CString const& name, std::string& content, CString& reason)
{
    std::error_code error;
    if (fs::is_directory(name.GetString(), error)) {
        reason = "it is a folder";
        return false;
    }
    errno = 0;
    File const file(std::fopen(name, "rb"));
    if (!file) {
        reason = lastReason();
        return false;
    }
    content.clear();
    auto const buffer = std::make_unique<char[]>(1 << 16);
    while (std::size_t const count = std::fread(buffer.get(), 1, 1 << 16, file.get())) {
        content.append(buffer.get(), count);
        if (content.size() > largestFile) {
            reason = "it is larger than a gigabyte";
            return false;
        }
    }
    if (std::ferror(file.get())) {
        reason = lastReason();
        return false;
    }
    return true;
}

bool replaceFile(CString const& name, CString const& content, CString& reason)
{
    static std::random_device random;
    CString temporary;
    temporary.Format("%s.%08x.new", name, random());
    std::error_code error;
    bool isDone = writeNew(temporary, content, reason);
    if (isDone) {
        fs::rename(temporary.GetString(), name.GetString(), error);
        if (error)
            reason = error.message().c_str();
        isDone = !error;
    }
    if (!isDone) {
        std::error_code ignored;
        fs::remove(temporary.GetString(), ignored);
    }
    return isDone;
}

}  // namespace modelgen
