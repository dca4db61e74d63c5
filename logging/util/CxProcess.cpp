#include "logging/util/CxProcess.h"

CCgResult CxProcessStart(CxProcess& process, std::string const& program,
                         std::vector<std::string> const& arguments)
{
    std::string command = program;
    for (std::string const& argument : arguments)
        command += ' ' + argument;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started;
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &started))
        return zk::logging::lastSystemError();
    CloseHandle(started.hThread);
    process.handle = started.hProcess;
    return {};
}

CCgResult CxProcessWait(CxProcess const& process, std::int32_t& exitCode) noexcept
{
    if (!process.handle)
        return zk::logging::invalidArguments;
    DWORD code = 0;
    if (WaitForSingleObject(process.handle, INFINITE) != WAIT_OBJECT_0 ||
        !GetExitCodeProcess(process.handle, &code))
        return zk::logging::lastSystemError();
    exitCode = static_cast<std::int32_t>(code);
    return {};
}

CCgResult CxProcessClose(CxProcess& process) noexcept
{
    if (!process.handle)
        return zk::logging::invalidArguments;
    HANDLE const handle = process.handle;
    process.handle = nullptr;
    return CloseHandle(handle) ? CCgResult() : zk::logging::lastSystemError();
}
