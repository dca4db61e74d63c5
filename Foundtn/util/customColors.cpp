#include "Foundtn/util/customColors.h"

#include "Foundtn/util/IAppProfileInterface.h"
#include "Foundtn/util/getEnv.h"

namespace {

constexpr int colorCount = 16;
constexpr char section[] = "Settings";
constexpr char key[] = "CustomColors";
constexpr char separator = ':';

}  // namespace

bool omGetEnvCustomColors(unsigned long* colors)
{
    CString text;
    if (!omGetEnvVar(section, key, text))
        return false;
    int begin = 0;
    for (int i = 0; i < colorCount && begin <= text.GetLength(); ++i) {
        int const mark = text.Find(separator, begin);
        int const end = mark < 0 ? text.GetLength() : mark;
        colors[i] = IAppProfileInterface::String2Color(text.Mid(begin, end - begin), 0ul);
        begin = end + 1;
    }
    return true;
}

bool omSetEnvCustomColors(unsigned long* colors)
{
    IAppProfileInterface* const profile = IAppProfileInterface::Instance();
    if (!profile || !colors)
        return false;
    CString text;
    for (int i = 0; i < colorCount; ++i) {
        if (i > 0)
            text += separator;
        text += IAppProfileInterface::Color2String(colors[i]);
    }
    profile->WriteProfileStringA(section, key, text);
    return true;
}
