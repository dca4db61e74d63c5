#include "tools/zkprofile/run.h"

#include "Foundtn/util/IAppProfileService.h"
#include "Foundtn/util/globalFlags.h"
#include "Foundtn/util/profileOrigin.h"
#include "tools/zkprofile/commands.h"
#include "tools/zkprofile/messages.h"

#include <ostream>

namespace zkprofile {

namespace {

CString fullPath(CString const& name)
{
    DWORD const room = GetFullPathNameA(name, 0, nullptr, nullptr);
    CString path;
    DWORD const length = GetFullPathNameA(name, room, path.GetBuffer(static_cast<int>(room)), nullptr);
    path.ReleaseBuffer(length < room ? static_cast<int>(length) : 0);
    if (path.IsEmpty())
        throw Failure(failed, "cannot find " + quoted(name) + ": " + reasonFor(GetLastError()));
    return path;
}

// Lets the profile object select the file, as the application does.
Profile selectProfile(Arguments const& arguments, IAppProfileService& service)
{
    if (!arguments.hasFile) {
        service.InitProfileName(nullptr, nullptr, nullptr);
        return {service.GetProfileName(), zk::profileFile()};
    }
    CString const file = fullPath(arguments.file);
    if (isThere(file)) {
        setGlobalFlag const flag("CommandLine", "-iniFile=\"" + file + "\"");
        service.InitProfileName(nullptr, nullptr, nullptr);
    } else if (arguments.command != Arguments::set) {
        throw Failure(failed, "there is no file " + quoted(file));
    }
    return {file, file};
}

ExitCode work(Arguments const& arguments, std::ostream& out)
{
    std::string text = arguments.answer;
    ExitCode code = done;
    if (arguments.command != Arguments::none) {
        IAppProfileService service(false);
        code = carryOut(arguments, selectProfile(arguments, service), text);
    }
    out << text;
    out.flush();
    if (!out)
        throw Failure(failed, "cannot write the output");
    return code;
}

}  // namespace

ExitCode run(int count, char const* const* words, std::ostream& out, std::ostream& err)
{
    Arguments const arguments = readArguments(count, words);
    if (!arguments.mistake.empty()) {
        err << "zkprofile: " << arguments.mistake << "\nTry 'zkprofile --help'.\n";
        return wrongArguments;
    }
    try {
        return work(arguments, out);
    } catch (Failure const& failure) {
        err << "zkprofile: " << failure.what() << '\n';
        return failure.code;
    }
}

}  // namespace zkprofile
