#include "platform/os/resourceTexts.h"

#include "platform/os/os.h"

namespace zk::os {

bool loadResourceText(unsigned int id, std::string& text)
{
    // The call cuts what does not fit: a text that fills the buffer is asked for again.
    std::string buffer(256, '\0');
    for (;;) {
        int const length =
            LoadStringA(GetModuleHandleA(nullptr), id, buffer.data(), static_cast<int>(buffer.size()));
        if (length <= 0)
            return false;
        if (static_cast<std::size_t>(length) + 1 < buffer.size()) {
            text.assign(buffer, 0, static_cast<std::size_t>(length));
            return true;
        }
        buffer.resize(buffer.size() * 2);
    }
}

}  // namespace zk::os
