#include "platform/os/resourceTexts.h"

namespace zk::os {

bool loadResourceText(unsigned int, std::string&)
{
    return false;
}

}  // namespace zk::os
