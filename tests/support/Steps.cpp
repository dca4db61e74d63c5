#include "tests/support/Steps.h"

#include <stdexcept>
#include <utility>

#ifdef _WIN32
#    include <windows.h>
#else
#    include <sys/socket.h>
#    include <unistd.h>
#endif

namespace zk::test {
namespace {

#ifdef _WIN32

bool writeAll(NativePipe pipe, std::string const& text)
{
    DWORD done = 0;
    return WriteFile(reinterpret_cast<HANDLE>(pipe), text.data(), DWORD(text.size()), &done, nullptr) &&
        done == text.size();
}

bool readByte(NativePipe pipe, char& byte)
{
    DWORD done = 0;
    return ReadFile(reinterpret_cast<HANDLE>(pipe), &byte, 1, &done, nullptr) && done == 1;
}

void closePipe(NativePipe pipe)
{
    CloseHandle(reinterpret_cast<HANDLE>(pipe));
}

#else

// A line is shorter than what a socket takes at once.
bool writeAll(NativePipe pipe, std::string const& text)
{
    return send(int(pipe), text.data(), text.size(), MSG_NOSIGNAL) == ssize_t(text.size());
}

bool readByte(NativePipe pipe, char& byte)
{
    return read(int(pipe), &byte, 1) == 1;
}

void closePipe(NativePipe pipe)
{
    close(int(pipe));
}

#endif

}  // namespace

Steps::~Steps()
{
    open(none, none);
}

void Steps::open(NativePipe input, NativePipe output) noexcept
{
    for (NativePipe const old : {std::exchange(input_, input), std::exchange(output_, output)})
        if (old != none)
            closePipe(old);
}

void Steps::say(std::string const& line)
{
    if (!writeAll(output_, line + '\n'))
        throw std::runtime_error("nobody hears \"" + line + '"');
}

std::string Steps::hear()
{
    std::string line;
    for (char byte;;) {
        if (!readByte(input_, byte))
            throw std::runtime_error("the other side is gone after \"" + line + '"');
        if (byte == '\n')
            return line;
        line += byte;
    }
}

void Steps::awaits(std::string const& line)
{
    if (std::string const heard = hear(); heard != line)
        throw std::runtime_error("awaited \"" + line + "\", heard \"" + heard + '"');
}

}  // namespace zk::test
