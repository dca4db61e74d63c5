#include "tests/support/SmallStackThread.h"

#include <stdexcept>

#ifdef _WIN32
#    include <windows.h>

void runWithSmallStack(std::size_t stackSize, std::function<void()> const& function)
{
    auto const run = [](void* argument) -> DWORD {
        (*static_cast<std::function<void()> const*>(argument))();
        return 0;
    };
    HANDLE const thread = CreateThread(nullptr, stackSize, run, const_cast<std::function<void()>*>(&function),
                                       STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (!thread)
        throw std::runtime_error("no thread with a small stack");
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}

#else
#    include <pthread.h>

void runWithSmallStack(std::size_t stackSize, std::function<void()> const& function)
{
    auto const run = [](void* argument) -> void* {
        (*static_cast<std::function<void()> const*>(argument))();
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_t thread;
    bool const started = pthread_attr_setstacksize(&attributes, stackSize) == 0 &&
        pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&function)) == 0;
    pthread_attr_destroy(&attributes);
    if (!started)
        throw std::runtime_error("no thread with a small stack");
    pthread_join(thread, nullptr);
}

#endif
