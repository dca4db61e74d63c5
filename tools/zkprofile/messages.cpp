#include "tools/zkprofile/messages.h"

namespace zkprofile {

std::string reasonFor(DWORD error)
{
    char sentence[256] = "";
    FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, sentence,
                   sizeof sentence, nullptr);
    CString const reason = CString(sentence).TrimRight(".\r\n ");
    return reason.IsEmpty() ? "error " + std::to_string(error) : std::string(reason.view());
}

std::string quoted(CString const& name)
{
    std::string shown(name.view());
    for (char& c : shown)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            c = '?';
    return "'" + shown + "'";
}

}  // namespace zkprofile
