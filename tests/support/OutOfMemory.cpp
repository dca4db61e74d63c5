#include "tests/support/OutOfMemory.h"

#include <cstdlib>
#include <new>

namespace {

thread_local constinit int left = -1;  // below 0: as many as are asked for
thread_local constinit bool failsOnce = false;
thread_local constinit bool failed = false;

void* allocate(std::size_t size) noexcept
{
    if (left == 0) {
        failed = true;
        if (failsOnce)
            left = -1;
        return nullptr;
    }
    if (left > 0)
        --left;
    return std::malloc(size != 0 ? size : 1);
}

void* allocateOrThrow(std::size_t size)
{
    void* const place = allocate(size);
    return place ? place : throw std::bad_alloc();
}

void failFrom(int successes, bool once) noexcept
{
    failed = false;
    failsOnce = once;
    left = successes;
}

}  // namespace

// For the whole program; every pair of them, so that no other one's memory is given back here.
void* operator new(std::size_t size)
{
    return allocateOrThrow(size);
}
void* operator new[](std::size_t size)
{
    return allocateOrThrow(size);
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    return allocate(size);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept
{
    return allocate(size);
}
void operator delete(void* place) noexcept
{
    std::free(place);
}
void operator delete[](void* place) noexcept
{
    std::free(place);
}
void operator delete(void* place, std::size_t) noexcept
{
    std::free(place);
}
void operator delete[](void* place, std::size_t) noexcept
{
    std::free(place);
}
void operator delete(void* place, std::nothrow_t const&) noexcept
{
    std::free(place);
}
void operator delete[](void* place, std::nothrow_t const&) noexcept
{
    std::free(place);
}

namespace zk::test {

OutOfMemory::OutOfMemory(int successes) noexcept
{
    failFrom(successes, false);
}

OutOfMemory::~OutOfMemory()
{
    left = -1;
}

FailingAllocation::FailingAllocation(int number) noexcept
{
    failFrom(number - 1, true);
}

FailingAllocation::~FailingAllocation()
{
    left = -1;
}

bool OutOfMemory::hasFailed() noexcept
{
    return failed;
}

int failuresOf(std::function<void()> const& work, std::function<bool()> const& isUnchanged)
{
    constexpr int tooMany = 1000;
    for (int failures = 0; failures < tooMany; ++failures) {
        try {
            OutOfMemory const outOfMemory(failures);
            work();
            return OutOfMemory::hasFailed() ? -1 : failures;
        } catch (std::bad_alloc const&) {
            if (!isUnchanged())
                return -1;
        }
    }
    return -1;
}

}  // namespace zk::test
