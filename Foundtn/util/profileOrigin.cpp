#include "Foundtn/util/profileOrigin.h"

#include "Foundtn/util/IAppProfileService.h"
#include "platform/os/os.h"
#include "platform/os/profileFile.h"
#include "platform/os/profileText.h"
#include "platform/os/wideText.h"
#include "text/stringHelpers.h"

namespace zk {
namespace {

// What a file holds; as much of it as can be read.
std::string contentOf(char const* path)
{
    std::string content;
    // Nobody who changes or replaces the profile is hindered meanwhile.
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    HANDLE const file =
        CreateFileA(path, GENERIC_READ, shared, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return content;
    char buffer[16 * 1024];
    DWORD count = 0;
    while (ReadFile(file, buffer, sizeof buffer, &count, nullptr) && count > 0)
        content.append(buffer, count);
    CloseHandle(file);
    return content;
}

// The line that a setting stands in.
int lineIn(CString const& file, CString section, CString name)
{
    std::string content = contentOf(file);
    if (os::isWideText(content)) {
        omConvertStringToUTF8(section);
        omConvertStringToUTF8(name);
    }
    os::ProfileText const text(std::move(content));
    return static_cast<int>(text.lineOf(section.view(), name.view()));
}

}  // namespace

CString profileFile()
{
    IAppProfileInterface* const instance = IAppProfileInterface::Instance();
    return instance ? CString(os::profileFile(instance->GetProfileName())) : CString();
}

ProfileOrigin profileOrigin(CString const& section, CString const& name)
{
    ProfileOrigin origin;
    IAppProfileInterface* const instance = IAppProfileInterface::Instance();
    if (instance && instance->GetProfileValue(section, name, origin.value, nullptr) &&
        !origin.value.IsEmpty()) {
        origin.source = ProfileOrigin::profile;
        origin.file = profileFile();
        origin.line = lineIn(origin.file, section, name);
    } else if (IAppProfileService::GetEnvironmentVariableA(name, origin.value, nullptr) &&
               !origin.value.IsEmpty()) {
        origin.source = ProfileOrigin::environment;
    }
    return origin;
}

}  // namespace zk
