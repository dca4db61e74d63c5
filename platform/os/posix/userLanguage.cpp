#include "platform/os/userLanguage.h"

namespace zk::os {

std::string userLanguage()
{
    return {};
}

}  // namespace zk::os
