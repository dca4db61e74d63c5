// sleepers.h: waiting until something can be taken from a word, by threads of one or more processes.
//
//   Takers const takers(words[0], words[1], Sharing::ofProcess);
//   takers.wait(100, [&] { return takeOne(words[0]); });      // WAIT_OBJECT_0 or WAIT_TIMEOUT
//   words[0].store(1);
//   takers.wakeUp(1);
//
// The second word counts those who may sleep, so that nobody enters the kernel
// for a word that none waits for. A waiter that is killed leaves the count too
// high, which costs later callers a needless look into the kernel, no more.
#pragma once

#include "platform/os/posix/futex.h"
#include "platform/os/posix/threadRecord.h"
#include "platform/os/posix/waits.h"

namespace zk::os {

class Takers {
public:
    Takers(std::atomic<std::uint32_t>& word, std::atomic<std::uint32_t>& sleepers, Sharing sharing) noexcept
        : word_(word), sleepers_(sleepers), sharing_(sharing)
    {
    }

    /// Calls `take` until it succeeds, or until the time has passed; sleeps while the word is 0.
    template <class Take>
    DWORD wait(DWORD milliseconds, Take take) const noexcept
    {
        if (take())
            return WAIT_OBJECT_0;
        if (milliseconds == 0)
            return WAIT_TIMEOUT;
        Deadline const deadline(milliseconds);
        Sleeper const sleeper(*this);
        for (;;) {
            if (take())
                return WAIT_OBJECT_0;
            if (sleepOn(word_, 0, sharing_, deadline) == Wake::timedOut)
                return take() ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
        }
    }

    /// Wakes `count` waiters after the word has changed.
    void wakeUp(int count) const noexcept
    {
        if (sleepers_.load(std::memory_order_seq_cst) == 0)
            return;
        // A process that is killed between its wake-up and its taking would
        // lose the wake-up for all others: between processes everybody looks.
        wake(word_, sharing_, sharing_ == Sharing::ofProcess ? count : everySleeper);
    }

private:
    // Counted for its life, and known to the handler that may end the thread.
    class Sleeper {
    public:
        explicit Sleeper(Takers const& takers) noexcept : takers_(takers), record_(threadRecord())
        {
            takers_.sleepers_.fetch_add(1, std::memory_order_seq_cst);
            if (record_ && takers_.sharing_ == Sharing::ofProcess)
                record_->sleepsOn = &takers_.word_;
        }

        ~Sleeper()
        {
            if (record_)
                record_->sleepsOn = nullptr;
            takers_.sleepers_.fetch_sub(1, std::memory_order_seq_cst);
        }

    private:
        Takers const& takers_;
        ThreadRecord* const record_;
    };

    std::atomic<std::uint32_t>& word_;
    std::atomic<std::uint32_t>& sleepers_;
    Sharing const sharing_;
};

}  // namespace zk::os
