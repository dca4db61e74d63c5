#include "Foundtn/util/animationPorts.h"

#include "Foundtn/util/IAppProfileInterface.h"
#include "Foundtn/util/getEnv.h"

namespace {

constexpr int noPort = -1;
constexpr int standardPort = 6423;

int configuredPort = 0;
int dynamicPort = noPort;

// 0 if absent or no number.
int readNumber(CString const& name, CString* error)
{
    CString text;
    return omGetEnvVar("General", name, text, error) ? IAppProfileInterface::String2Int(text, 0) : 0;
}

}  // namespace

int zkGetAnimationPortNumber(CString* error)
{
    if (configuredPort == 0) {
        int const port = readNumber("AnimationPortNumber", error);
        configuredPort = port == 0 ? standardPort : port;
    }
    return configuredPort;
}

int zkGetAnimationSndBufSize(CString* error)
{
    int const size = readNumber("AnimationSndBufSize", error);
    return size == 0 ? -1 : size;
}

int zkGetAnimationPortRange(CString* error)
{
    return readNumber("AnimationPortRange", error);
}

void zkSetDynamicAnimPortNumber(int port)
{
    dynamicPort = port;
}

int zkGetDynamicAnimPortNumber()
{
    return dynamicPort;
}
