// host.h: the program as an application of the library: what there is before the first setting is read.
//
//   Host const host(options.profile);
//   omGetEnvVarInt("General", "ToldErrors", 20);       // from the profile, else from the environment
//
// The order is that of the members and then of the constructor; at the end it is the other way round. Each step
// needs the ones before it: the search for the profile looks at the modes, and all that is read afterwards
// comes from the file that it found.
#pragma once

#include "Foundtn/util/IAppProfileService.h"
#include "platform/classlib/CWinApp.h"

namespace modelgen {

class Host {
public:
    /// Selects the profile: `profile` if that names a file that exists, else the first "modelgen.ini" that
    /// the library finds. No such file at all is a normal state.
    explicit Host(CString const& profile);
    Host(Host const&) = delete;
    Host& operator=(Host const&) = delete;

private:
    CString commandLine_;
    CWinApp application_{"modelgen"};    // what AfxGetApp() gives
    IAppProfileService service_{false};  // what IAppProfileInterface::Instance() gives
};

}  // namespace modelgen
