// Any text as a command line: what it is split into is what its joined form is split into.
#include "platform/os/commandLine.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace zk::os;
    auto const arguments = splitCommandLine({reinterpret_cast<char const*>(data), size});
    if (arguments.empty() || splitCommandLine(joinCommandLine(arguments)) != arguments)
        std::abort();
    return 0;
}
