#include "logging/CCgResult.h"

#include "logging/CCgMisc.h"
#include "platform/os/os.h"

#include <cstring>

namespace zk::logging {

CCgResult lastSystemError() noexcept
{
    return {'w', static_cast<std::int32_t>(GetLastError())};
}

std::string textOf(CCgResult const& result)
{
    if (result.status == 'p')
        return utf8OfProcessText(std::strerror(result.code));
    if (result.status != 'w')
        return {};
    char text[512];
    DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                  static_cast<DWORD>(result.code), 0, text, sizeof text, nullptr);
    while (length > 0 && (text[length - 1] == '\n' || text[length - 1] == '\r'))
        --length;
    if (length == 0)
        return "error " + std::to_string(result.code);
    return utf8OfProcessText({text, length});
}

}  // namespace zk::logging
