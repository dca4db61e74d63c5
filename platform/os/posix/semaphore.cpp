#include "platform/os/posix/semaphore.h"

#include "platform/os/posix/sleepers.h"
#include "platform/os/posix/sync.h"

namespace zk::os {
namespace {

// The words of a semaphore; in shared memory, those of its header.
enum : std::size_t { count, sleepers, maximum };

class Semaphore final : public KernelObject {
public:
    Semaphore(std::uint32_t initially, std::uint32_t limit) noexcept
        : words_(own_), limit_(limit), takers_(words_[count], words_[sleepers], Sharing::ofProcess)
    {
        words_[count].store(initially, std::memory_order_relaxed);
    }

    explicit Semaphore(std::unique_ptr<NamedMemory> memory) noexcept
        : memory_(std::move(memory)), words_(memory_->header().words),
          limit_(words_[maximum].load(std::memory_order_relaxed)),
          takers_(words_[count], words_[sleepers], Sharing::betweenProcesses)
    {
    }

    DWORD wait(DWORD milliseconds) noexcept override
    {
        auto& available = words_[count];
        return takers_.wait(milliseconds, [&] {
            std::uint32_t seen = available.load(std::memory_order_relaxed);
            while (seen != 0)
                if (available.compare_exchange_weak(seen, seen - 1, std::memory_order_seq_cst))
                    return true;
            return false;
        });
    }

    DWORD release(std::uint32_t added, LONG* previous) noexcept
    {
        auto& available = words_[count];
        std::uint32_t seen = available.load(std::memory_order_relaxed);
        do
            if (seen > limit_ || added > limit_ - seen)
                return ERROR_TOO_MANY_POSTS;
        while (!available.compare_exchange_weak(seen, seen + added, std::memory_order_seq_cst));
        if (added != 0)
            takers_.wakeUp(int(added));
        if (previous)
            *previous = LONG(seen);
        return ERROR_SUCCESS;
    }

private:
    std::unique_ptr<NamedMemory> const memory_;
    std::atomic<std::uint32_t> own_[3]{};
    std::atomic<std::uint32_t>* const words_;
    std::uint32_t const limit_;
    Takers const takers_;
};

constexpr NamedKind semaphoreKind = {
    .kind = ObjectKind::semaphore,
    .makeUnnamed = [](NamedParameters const& parameters) -> std::shared_ptr<KernelObject> {
        return std::make_shared<Semaphore>(parameters.first, parameters.second);
    },
    .initialise =
        [](NamedMemory& memory, NamedParameters const& parameters) {
            memory.header().words[count] = parameters.first;
            memory.header().words[maximum] = parameters.second;
            return ERROR_SUCCESS;
        },
    .makeShared = [](std::unique_ptr<NamedMemory> memory) -> std::shared_ptr<KernelObject> {
        return std::make_shared<Semaphore>(std::move(memory));
    },
};

}  // namespace
}  // namespace zk::os

using namespace zk::os;

HANDLE CreateSemaphoreA(LPSECURITY_ATTRIBUTES attributes, LONG initial, LONG maximum, LPCSTR name) noexcept
{
    if (initial < 0 || maximum <= 0 || initial > maximum) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    NamedParameters const parameters = {.first = std::uint32_t(initial), .second = std::uint32_t(maximum)};
    return createObject(semaphoreKind, attributes, name, parameters);
}

HANDLE OpenSemaphoreA(DWORD, BOOL inherit, LPCSTR name) noexcept
{
    return openObject(semaphoreKind, inherit, name);
}

BOOL ReleaseSemaphore(HANDLE handle, LONG count, LPLONG previous) noexcept
{
    Pinned<Semaphore> const semaphore(handle);
    return semaphore ? report(semaphore->release(std::uint32_t(count), previous)) : FALSE;
}
