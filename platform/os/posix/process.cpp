#include "platform/os/posix/process.h"

#include "platform/os/commandLine.h"
#include "platform/os/posix/descriptor.h"
#include "platform/os/posix/environment.h"
#include "platform/os/posix/fileStatus.h"
#include "platform/os/posix/handles.h"
#include "platform/os/posix/outOfMemory.h"
#include "platform/os/posix/shieldedLock.h"
#include "platform/os/posix/systemCalls.h"
#include "platform/os/posix/threads.h"
#include "platform/os/posix/waits.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zk::os {
namespace {

constexpr DWORD unknownCode = 0xFFFFFFFF;

// What the kernel knows of a child's end, which stays there for the next question.
DWORD exitCodeOf(int process, int andReap = WNOWAIT) noexcept
{
    siginfo_t info = {};
    int const result = uninterrupted(
        [&] { return systemCalls().waitid(P_PIDFD, id_t(process), &info, WEXITED | WNOHANG | andReap); });
    if (result == -1)
        return unknownCode;  // it is gone, and its code with it
    if (info.si_pid == 0)
        return STILL_ACTIVE;
    return info.si_code == CLD_EXITED ? DWORD(info.si_status) : 128 + DWORD(info.si_status);
}

// Whether a process has ended. Its code says nothing: a program may end with the code 259.
bool hasEnded(int process, int milliseconds) noexcept
{
    pollfd waiting = {process, POLLIN, 0};
    return systemCalls().poll(&waiting, 1, milliseconds) == 1;
}

// Children whose last handle was closed while they ran.
struct Orphans {
    std::mutex mutex;
    std::vector<Descriptor> processes;

    void sweep() noexcept
    {
        ShieldedLock const lock(mutex);
        std::erase_if(processes, [](Descriptor const& process) {
            return hasEnded(process.get(), 0) && (exitCodeOf(process.get(), 0), true);
        });
    }

    void add(Descriptor process) noexcept
    {
        ShieldedLock const lock(mutex);
        guarded([&] {
            processes.push_back(std::move(process));
            return ERROR_SUCCESS;
        });
    }
};

Orphans& orphans() noexcept
{
    static auto* const list = new Orphans;  // a process object may be destroyed after all statics
    return *list;
}

class Process final : public KernelObject {
public:
    // Before anybody else knows the object. No descriptor: the process has ended.
    void attach(Descriptor process) noexcept { process_ = std::move(process); }

    ~Process() override
    {
        if (!process_)
            return;
        if (hasEnded(process_.get(), 0))
            exitCodeOf(process_.get(), 0);
        else
            orphans().add(std::move(process_));
    }

    DWORD wait(DWORD milliseconds) noexcept override
    {
        if (!process_)
            return WAIT_OBJECT_0;
        timespec now;
        systemCalls().clock_gettime(CLOCK_MONOTONIC, &now);
        auto const toMilliseconds = [](timespec const& time) {
            return LONGLONG(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
        };
        LONGLONG const deadline = toMilliseconds(now) + milliseconds;
        for (;;) {
            LONGLONG const left = deadline - toMilliseconds(now);
            bool const forEver = milliseconds == INFINITE;
            int const step = forEver ? -1 : int(std::clamp<LONGLONG>(left, 0, INT_MAX));
            if (hasEnded(process_.get(), step))
                return WAIT_OBJECT_0;
            if (!forEver && left <= 0)
                return WAIT_TIMEOUT;
            systemCalls().clock_gettime(CLOCK_MONOTONIC, &now);
        }
    }

    DWORD exitCode() const noexcept
    {
        if (!process_)
            return unknownCode;
        return hasEnded(process_.get(), 0) ? exitCodeOf(process_.get()) : STILL_ACTIVE;
    }

private:
    Descriptor process_;
};

class SpawnSettings {
public:
    SpawnSettings() noexcept
    {
        posix_spawnattr_init(&attributes_);
        posix_spawn_file_actions_init(&actions_);
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    }
    ~SpawnSettings()
    {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnSettings(SpawnSettings const&) = delete;
    SpawnSettings& operator=(SpawnSettings const&) = delete;

    DWORD spawn(std::string const& program, std::vector<std::string>& arguments, pid_t& child)
    {
        std::vector<std::string> variables = environmentSnapshot();
        int const error =
            systemCalls().posix_spawn(&child, program.c_str(), &actions_, &attributes_,
                                      pointersTo(arguments).data(), pointersTo(variables).data());
        switch (error) {
        case 0: return ERROR_SUCCESS;
        case ENOEXEC: return ERROR_BAD_EXE_FORMAT;
        case EAGAIN:
        case ENOMEM: return ERROR_NOT_ENOUGH_MEMORY;
        default: return errorOfPath(program.c_str(), error);
        }
    }

private:
    static std::vector<char*> pointersTo(std::vector<std::string>& texts)
    {
        std::vector<char*> pointers;
        for (std::string& text : texts)
            pointers.push_back(text.data());
        pointers.push_back(nullptr);
        return pointers;
    }

    posix_spawnattr_t attributes_;
    posix_spawn_file_actions_t actions_;
};

bool isProgram(std::string const& path) noexcept
{
    FileStatus status;
    return statusOf(path.c_str(), status) == ERROR_SUCCESS && status.isRegular() &&
        systemCalls().faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0;
}

// Where a program lies that is told by its name; empty if it lies nowhere.
std::string placeOf(std::string const& name)
{
    if (name.find('/') != std::string::npos)
        return name;
    std::string folders;
    char self[PATH_MAX];
    if (ssize_t const length = systemCalls().readlink("/proc/self/exe", self, sizeof self); length > 0)
        folders = folderOf({self, std::size_t(length)});
    folders += ':' + environmentVariable("PATH").value_or("/usr/bin:/bin");
    for (std::string_view rest = folders; !rest.empty();) {
        std::string_view const folder = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(folder.size() + 1, rest.size()));
        std::string path = std::string(folder.empty() ? "." : folder) + '/' + name;
        if (isProgram(path))
            return path;
    }
    return {};
}

bool isPlain(SECURITY_ATTRIBUTES const* security) noexcept
{
    return !security || (!security->lpSecurityDescriptor && !security->bInheritHandle);
}

DWORD start(char const* application, char const* commandLine, PROCESS_INFORMATION& started)
{
    std::vector<std::string> arguments = splitCommandLine(commandLine ? commandLine : application);
    if (!commandLine)
        arguments = {application};
    std::string const program = application ? application : placeOf(arguments.front());

    if (program.empty())
        return ERROR_FILE_NOT_FOUND;

    HandlePlace processPlace;
    HandlePlace threadPlace;
    if (processPlace.error() || threadPlace.error())
        return processPlace.error() ? processPlace.error() : threadPlace.error();
    auto object = std::make_shared<Process>();
    orphans().sweep();
    pid_t child = 0;
    if (DWORD const error = SpawnSettings().spawn(program, arguments, child))
        return error;

    Descriptor process(systemCalls().pidfd_open(child, 0));
    if (!process && errno != ESRCH) {
        DWORD const error = errorFromErrno(errno);
        // Nobody could ever tell how it ends.
        kill(child, SIGKILL);
        uninterrupted([&] { return waitpid(child, nullptr, 0); });
        return error;
    }
    // Nobody waits for the children of a program that ignores SIGCHLD: this one may have gone without trace.
    object->attach(std::move(process));
    started.hThread = threadPlace.open(object, false);
    started.hProcess = processPlace.open(std::move(object), false);
    started.dwProcessId = DWORD(child);
    started.dwThreadId = DWORD(child);
    return ERROR_SUCCESS;
}

}  // namespace
}  // namespace zk::os

using namespace zk::os;

BOOL WINAPI CreateProcessA(LPCSTR application, LPSTR commandLine, LPSECURITY_ATTRIBUTES process,
                           LPSECURITY_ATTRIBUTES thread, BOOL inheritHandles, DWORD flags, LPVOID environment,
                           LPCSTR currentDirectory, LPSTARTUPINFOA startup,
                           LPPROCESS_INFORMATION started) noexcept
{
    bool const isSupplied = (application || commandLine) && isPlain(process) && isPlain(thread) &&
        !inheritHandles && (flags & ~CREATE_NO_WINDOW) == 0 && !environment && !currentDirectory && startup &&
        (startup->dwFlags & ~STARTF_USESHOWWINDOW) == 0 && started;
    if (!isSupplied)
        return report(ERROR_INVALID_PARAMETER);
    return report(guarded([&] { return start(application, commandLine, *started); }));
}

BOOL WINAPI GetExitCodeProcess(HANDLE handle, LPDWORD code) noexcept
{
    if (handle == GetCurrentProcess()) {
        *code = STILL_ACTIVE;
        return TRUE;
    }
    auto const process = objectOf<Process>(handle);
    if (!process)
        return FALSE;
    *code = process->exitCode();
    return TRUE;
}
