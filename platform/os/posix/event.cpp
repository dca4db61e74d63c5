#include "platform/os/posix/event.h"

#include "platform/os/posix/sleepers.h"
#include "platform/os/posix/sync.h"

#include <climits>

namespace zk::os {
namespace {

// The words of an event; in shared memory, those of its header.
enum : std::size_t { isSet, sleepers, isManual };

class Event final : public KernelObject {
public:
    Event(bool manual, bool initiallySet) noexcept
        : words_(own_), manual_(manual), takers_(words_[isSet], words_[sleepers], Sharing::ofProcess)
    {
        words_[isSet].store(initiallySet, std::memory_order_relaxed);
    }

    explicit Event(std::unique_ptr<NamedMemory> memory) noexcept
        : memory_(std::move(memory)), words_(memory_->header().words),
          manual_(words_[isManual].load(std::memory_order_relaxed) != 0),
          takers_(words_[isSet], words_[sleepers], Sharing::betweenProcesses)
    {
    }

    DWORD wait(DWORD milliseconds) noexcept override
    {
        auto& set = words_[isSet];
        if (manual_)
            return takers_.wait(milliseconds, [&] { return set.load(std::memory_order_seq_cst) != 0; });
        return takers_.wait(milliseconds, [&] {
            return set.load(std::memory_order_relaxed) != 0 &&
                set.exchange(0, std::memory_order_seq_cst) != 0;
        });
    }

    void set() noexcept
    {
        words_[isSet].store(1, std::memory_order_seq_cst);
        takers_.wakeUp(manual_ ? INT_MAX : 1);
    }

    void reset() noexcept { words_[isSet].store(0, std::memory_order_seq_cst); }

private:
    std::unique_ptr<NamedMemory> const memory_;
    std::atomic<std::uint32_t> own_[3]{};
    std::atomic<std::uint32_t>* const words_;
    bool const manual_;
    Takers const takers_;
};

constexpr NamedKind eventKind = {
    .kind = ObjectKind::event,
    .makeUnnamed = [](NamedParameters const& parameters) -> std::shared_ptr<KernelObject> {
        return std::make_shared<Event>(parameters.first != 0, parameters.second != 0);
    },
    .initialise =
        [](NamedMemory& memory, NamedParameters const& parameters) {
            memory.header().words[isManual] = parameters.first;
            memory.header().words[isSet] = parameters.second;
            return ERROR_SUCCESS;
        },
    .makeShared = [](std::unique_ptr<NamedMemory> memory) -> std::shared_ptr<KernelObject> {
        return std::make_shared<Event>(std::move(memory));
    },
};

}  // namespace
}  // namespace zk::os

using namespace zk::os;

HANDLE CreateEventA(LPSECURITY_ATTRIBUTES attributes, BOOL manualReset, BOOL initialState,
                    LPCSTR name) noexcept
{
    NamedParameters const parameters = {.first = manualReset != 0, .second = initialState != 0};
    return createObject(eventKind, attributes, name, parameters);
}

HANDLE OpenEventA(DWORD, BOOL inherit, LPCSTR name) noexcept
{
    return openObject(eventKind, inherit, name);
}

BOOL SetEvent(HANDLE handle) noexcept
{
    Pinned<Event> const event(handle);
    if (!event)
        return FALSE;
    event->set();
    return TRUE;
}

BOOL ResetEvent(HANDLE handle) noexcept
{
    Pinned<Event> const event(handle);
    if (!event)
        return FALSE;
    event->reset();
    return TRUE;
}

BOOL PulseEvent(HANDLE handle) noexcept
{
    return Pinned<Event>(handle) ? report(ERROR_NOT_SUPPORTED) : FALSE;
}
