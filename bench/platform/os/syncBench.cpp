// Threads, mutexes and their kin against what the standard library offers for the same work.
#include "platform/os/os.h"

#include <benchmark/benchmark.h>

#include <mutex>
#include <semaphore>
#include <thread>

namespace {

DWORD WINAPI nothing(LPVOID)
{
    return 0;
}

void thread(benchmark::State& state)
{
    for (auto _ : state) {
        HANDLE const started = CreateThread(nullptr, 0, nothing, nullptr, 0, nullptr);
        WaitForSingleObject(started, INFINITE);
        CloseHandle(started);
    }
}

void threadPeer(benchmark::State& state)
{
    for (auto _ : state) {
        std::thread started([] { nothing(nullptr); });
        started.join();
    }
}

void mutex(benchmark::State& state)
{
    HANDLE const mutex = CreateMutexA(nullptr, FALSE, nullptr);
    for (auto _ : state) {
        WaitForSingleObject(mutex, INFINITE);
        ReleaseMutex(mutex);
    }
    CloseHandle(mutex);
}

void namedMutex(benchmark::State& state)
{
    HANDLE const mutex = CreateMutexA(nullptr, FALSE, "Local\\zk bench mutex");
    for (auto _ : state) {
        WaitForSingleObject(mutex, INFINITE);
        ReleaseMutex(mutex);
    }
    CloseHandle(mutex);
}

template <class Mutex>
void mutexPeer(benchmark::State& state)
{
    Mutex mutex;
    for (auto _ : state) {
        mutex.lock();
        benchmark::DoNotOptimize(mutex);
        mutex.unlock();
    }
}

void section(benchmark::State& state)
{
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    for (auto _ : state) {
        EnterCriticalSection(&section);
        benchmark::DoNotOptimize(section);
        LeaveCriticalSection(&section);
    }
    DeleteCriticalSection(&section);
}

void semaphore(benchmark::State& state)
{
    HANDLE const semaphore = CreateSemaphoreA(nullptr, 0, 10, nullptr);
    for (auto _ : state) {
        ReleaseSemaphore(semaphore, 1, nullptr);
        WaitForSingleObject(semaphore, INFINITE);
    }
    CloseHandle(semaphore);
}

void semaphorePeer(benchmark::State& state)
{
    std::counting_semaphore<10> semaphore(0);
    for (auto _ : state) {
        semaphore.release();
        semaphore.acquire();
    }
}

// Threads that take one lock by turns.
template <class Lock>
void contended(benchmark::State& state, Lock lock)
{
    static int counter = 0;
    for (auto _ : state)
        lock([] { benchmark::DoNotOptimize(++counter); });
}

void contendedMutex(benchmark::State& state)
{
    static HANDLE const mutex = CreateMutexA(nullptr, FALSE, nullptr);
    contended(state, [](auto work) {
        WaitForSingleObject(mutex, INFINITE);
        work();
        ReleaseMutex(mutex);
    });
}

void contendedSection(benchmark::State& state)
{
    static CRITICAL_SECTION section;
    contended(state, [](auto work) {
        EnterCriticalSection(&section);
        work();
        LeaveCriticalSection(&section);
    });
}

void contendedPeer(benchmark::State& state)
{
    static std::mutex mutex;
    contended(state, [](auto work) {
        std::lock_guard const lock(mutex);
        work();
    });
}

BENCHMARK(thread)->Name("make, await and close a thread/ours")->UseRealTime();
BENCHMARK(threadPeer)->Name("make, await and close a thread/std::thread")->UseRealTime();
BENCHMARK(mutex)->Name("take and release a mutex/ours");
BENCHMARK(mutexPeer<std::mutex>)->Name("take and release a mutex/std::mutex");
BENCHMARK(mutexPeer<std::timed_mutex>)->Name("take and release a mutex/std::timed_mutex");
BENCHMARK(namedMutex)->Name("take and release a named mutex/ours");
BENCHMARK(mutexPeer<std::mutex>)->Name("take and release a named mutex/std::mutex");
BENCHMARK(section)->Name("enter and leave a critical section/ours");
BENCHMARK(mutexPeer<std::mutex>)->Name("enter and leave a critical section/std::mutex");
BENCHMARK(mutexPeer<std::recursive_mutex>)->Name("enter and leave a critical section/std::recursive_mutex");
BENCHMARK(semaphore)->Name("release and take a semaphore/ours");
BENCHMARK(semaphorePeer)->Name("release and take a semaphore/std::counting_semaphore");
BENCHMARK(contendedMutex)->Name("a mutex under 2 threads/ours")->Threads(2)->UseRealTime();
BENCHMARK(contendedPeer)->Name("a mutex under 2 threads/std::mutex")->Threads(2)->UseRealTime();
BENCHMARK(contendedSection)->Name("a critical section under 2 threads/ours")->Threads(2)->UseRealTime();
BENCHMARK(contendedPeer)->Name("a critical section under 2 threads/std::mutex")->Threads(2)->UseRealTime();

}  // namespace
