#include "examples/modelgen/host.h"

#include "Foundtn/util/IToolMode.h"

namespace modelgen {

Host::Host(CString const& profile)
{
    // The library takes all text behind the flag for the file's name. With the flag alone in the command line
    // of the application object, it may stand anywhere in that of the program.
    if (!profile.IsEmpty())
        commandLine_ = "-iniFile=\"" + profile + "\"";
    AfxWinInit(GetModuleHandleA(nullptr), nullptr, commandLine_.GetBuffer(), 0);

    IToolMode::setIsInModelServerMode(false);
    IToolMode::setLang(IToolMode::LangCpp);

    service_.InitProfileName("modelgen.ini", nullptr, &application_);
}

}  // namespace modelgen
