#include "platform/os/posix/debugOutput.h"

#include "platform/os/posix/environment.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/systemCalls.h"
#include "platform/os/posix/writing.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace zk::os {
namespace {

constinit std::atomic<DebugSink> debugSink = nullptr;

bool isWanted() noexcept
{
    return GetEnvironmentVariableA("ZK_DEBUG_OUTPUT", nullptr, 0) > 1;
}

// Whole texts at once, past the buffers of the C library. What cannot be written is lost.
void writeToStandardError(char const* text) noexcept
{
    NoPipeSignal const guard;
    for (std::size_t left = std::strlen(text); left > 0;) {
        ssize_t const written =
            whenReady(STDERR_FILENO, POLLOUT, [&] { return systemCalls().write(STDERR_FILENO, text, left); });
        if (written <= 0)
            return;
        text += written;
        left -= static_cast<std::size_t>(written);
    }
}

}  // namespace

DebugSink setDebugSink(DebugSink sink) noexcept
{
    return debugSink.exchange(sink);
}

}  // namespace zk::os

using namespace zk::os;

void OutputDebugStringA(LPCSTR text) noexcept
{
    PreserveLastError const kept;
    if (!text)
        text = "";
    if (DebugSink const sink = debugSink.load())
        sink(text);
    else if (isWanted())
        writeToStandardError(text);
}

BOOL IsDebuggerPresent() noexcept
{
    int const descriptor =
        uninterrupted([] { return systemCalls().open("/proc/self/status", O_RDONLY | O_CLOEXEC, 0); });
    if (descriptor < 0)
        return FALSE;
    char buffer[4096];  // the line stands within the first few hundred bytes
    std::size_t length = 0;
    ssize_t count;
    do {
        count = uninterrupted(
            [&] { return systemCalls().read(descriptor, buffer + length, sizeof buffer - length); });
        length += static_cast<std::size_t>(count > 0 ? count : 0);
    } while (count > 0 && length < sizeof buffer);
    systemCalls().close(descriptor);

    constexpr std::string_view label = "TracerPid:\t";
    std::string_view const status(buffer, length);
    std::size_t const place = status.find(label);
    return place != status.npos && place + label.size() < length && status[place + label.size()] != '0';
}
