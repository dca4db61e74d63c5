#include "tests/support/ChildProcess.h"

#include "tests/support/TemporaryFolder.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <map>
#include <stdexcept>
#include <utility>

#ifdef _WIN32
#    include <windows.h>
#else
#    include <csignal>
#    include <fcntl.h>
#    include <spawn.h>
#    include <sys/socket.h>
#    include <sys/wait.h>
#    include <unistd.h>

extern char** environ;
#endif

namespace zk::test {
namespace {

constexpr char marker[] = "--zk-child=";

std::map<std::string, ChildFunction>& functions()
{
    static std::map<std::string, ChildFunction> entries;
    return entries;
}

struct PipePair {
    NativePipe read, write;
};

#ifdef _WIN32

NativePipe native(HANDLE handle)
{
    return reinterpret_cast<NativePipe>(handle);
}

HANDLE handleOf(NativePipe pipe)
{
    return reinterpret_cast<HANDLE>(pipe);
}

PipePair makePipe()
{
    HANDLE read, write;
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    if (!CreatePipe(&read, &write, &inheritable, 0))
        throw std::runtime_error("no pipe");
    return {native(read), native(write)};
}

void closePipe(NativePipe pipe)
{
    CloseHandle(handleOf(pipe));
}

NativeProcess startSelf(std::string const& name, std::string const& argument, PipePair toChild,
                        PipePair toParent)
{
    SetHandleInformation(handleOf(toChild.write), HANDLE_FLAG_INHERIT, 0);
    SetHandleInformation(handleOf(toParent.read), HANDLE_FLAG_INHERIT, 0);
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, sizeof program);
    std::string command = '"' + std::string(program) + "\" " + marker + name + ' ' +
        std::to_string(toChild.read) + ' ' + std::to_string(toParent.write) + " \"" + argument + '"';
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started;
    if (!CreateProcessA(program, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &started))
        throw std::runtime_error("cannot start " + name);
    CloseHandle(started.hThread);
    return native(started.hProcess);
}

void killProcess(NativeProcess process)
{
    TerminateProcess(handleOf(process), 255);
}

int waitForEnd(NativeProcess process)
{
    DWORD code = 0;
    WaitForSingleObject(handleOf(process), INFINITE);
    GetExitCodeProcess(handleOf(process), &code);
    CloseHandle(handleOf(process));
    return int(code);
}

HANDLE openInheritable(std::string const& name, DWORD access, DWORD creation)
{
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    return CreateFileA(name.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, creation, 0,
                       nullptr);
}

// An argument as the C runtime takes it apart: a backslash counts only before a quote.
std::string quotedArgument(std::string const& argument)
{
    std::string quoted = "\"";
    std::size_t backslashes = 0;
    for (char const c : argument) {
        if (c == '"')
            quoted.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    return quoted.append(backslashes, '\\') + '"';
}

HANDLE openOutput(Output output, std::string const& file)
{
    if (output == Output::kept)
        return openInheritable(file, GENERIC_WRITE, CREATE_ALWAYS);
    if (output == Output::closed)
        return nullptr;
    PipePair const pipe = makePipe();
    closePipe(pipe.read);
    return handleOf(pipe.write);
}

NativeProcess startProgram(std::string const& program, std::vector<std::string> const& arguments,
                           Output output, std::string const& out, std::string const& err)
{
    std::string command = '"' + program + '"';
    for (std::string const& argument : arguments)
        command += ' ' + quotedArgument(argument);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = openInheritable("NUL", GENERIC_READ, OPEN_EXISTING);
    startup.hStdOutput = openOutput(output, out);
    startup.hStdError = openInheritable(err, GENERIC_WRITE, CREATE_ALWAYS);
    PROCESS_INFORMATION started;
    bool const isStarted = CreateProcessA(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                          nullptr, &startup, &started);
    for (HANDLE const handle : {startup.hStdInput, startup.hStdOutput, startup.hStdError})
        if (handle)
            CloseHandle(handle);
    if (!isStarted)
        throw std::runtime_error("cannot start " + program);
    CloseHandle(started.hThread);
    return native(started.hProcess);
}

#else

PipePair makePipe()
{
    int ends[2];  // sockets, so that speaking to a side that is gone raises no signal
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        throw std::runtime_error("no pipe");
    return {ends[0], ends[1]};
}

void closePipe(NativePipe pipe)
{
    close(int(pipe));
}

// The child's ends get these numbers, above those of anything else it inherits.
constexpr int childInput = 198, childOutput = 199;

NativeProcess startSelf(std::string const& name, std::string const& argument, PipePair toChild,
                        PipePair toParent)
{
    std::string words[] = {"/proc/self/exe", marker + name, std::to_string(childInput),
                           std::to_string(childOutput), argument};
    char* arguments[] = {words[0].data(), words[1].data(), words[2].data(),
                         words[3].data(), words[4].data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, int(toChild.read), childInput);
    posix_spawn_file_actions_adddup2(&actions, int(toParent.write), childOutput);
    pid_t child;
    int const error = posix_spawn(&child, "/proc/self/exe", &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throw std::runtime_error("cannot start " + name);
    return child;
}

NativeProcess startProgram(std::string const& program, std::vector<std::string> const& arguments,
                           Output output, std::string const& out, std::string const& err)
{
    std::vector<std::string> words(arguments);
    words.insert(words.begin(), program);
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    if (output == Output::kept)
        posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT, 0600);
    else if (output == Output::closed)
        posix_spawn_file_actions_addclose(&actions, 1);
    else
        posix_spawn_file_actions_addopen(&actions, 1, "/dev/full", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), O_WRONLY | O_CREAT, 0600);
    pid_t child;
    int const error = posix_spawn(&child, program.c_str(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throw std::runtime_error("cannot start " + program);
    return child;
}

void killProcess(NativeProcess process)
{
    ::kill(pid_t(process), SIGKILL);
}

int waitForEnd(NativeProcess process)
{
    int status = 0;
    while (waitpid(pid_t(process), &status, 0) == -1 && errno == EINTR) { }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

#endif

}  // namespace

ChildEntry::ChildEntry(char const* name, ChildFunction function)
{
    functions().emplace(name, function);
}

ChildProcess::ChildProcess(std::string const& name, std::string const& argument)
{
    if (functions().count(name) == 0)
        throw std::runtime_error("no ZK_CHILD(" + name + ")");
    PipePair const toChild = makePipe();
    PipePair const toParent = makePipe();
    process_ = startSelf(name, argument, toChild, toParent);
    closePipe(toChild.read);
    closePipe(toParent.write);
    open(toParent.read, toChild.write);
}

ChildProcess::~ChildProcess()
{
    if (!hasEnded_)
        kill();
}

void ChildProcess::kill()
{
    killProcess(process_);
    waitForEnd(process_);
    hasEnded_ = true;
}

int ChildProcess::exitCode()
{
    if (!std::exchange(hasEnded_, true))
        exitCode_ = waitForEnd(process_);
    return exitCode_;
}

ProgramResult runProgram(std::string const& program, std::vector<std::string> const& arguments, Output output)
{
    TemporaryFolder folder;
    NativeProcess const process =
        startProgram(program, arguments, output, folder.path("out"), folder.path("err"));
    ProgramResult result;
    result.code = waitForEnd(process);
    if (output == Output::kept)
        result.out = folder.read("out");
    result.err = folder.read("err");
    return result;
}

bool runAsChild(int argc, char** argv, int& exitCode)
{
    std::size_t const length = sizeof marker - 1;
    if (argc != 5 || std::strncmp(argv[1], marker, length) != 0)
        return false;
    exitCode = 254;
    try {
        Parent parent(std::atoll(argv[2]), std::atoll(argv[3]), argv[4]);
        exitCode = functions().at(argv[1] + length)(parent);
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "child %s: %s\n", argv[1] + length, failure.what());
    }
    return true;
}

}  // namespace zk::test
