// FaultInjector.h: makes a call into the kernel fail, for tests of internals.
//
//   FaultInjector<&SystemCalls::write> const full({.error = ENOSPC, .onCall = 2});
//   ...                                            // the second write fails, all others are real
//   EXPECT_EQ(full.calls(), 2);
//
//   ShortTransfers<&SystemCalls::write> const drops(1);      // a write takes one byte at most
//   BeforeCall<&SystemCalls::open> const race([&] { folder.write("late", ""); });
//
// The table's entry is restored at the end of the scope. An entry may have one
// interceptor of each kind at a time. Put them in place while no other thread
// is at work in the seam; the calls themselves may come from any thread.
#pragma once

#include "platform/os/posix/systemCalls.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <type_traits>
#include <utility>

namespace zk::test {

using zk::os::SystemCalls;

/// Which calls of an entry fail, and how.
struct Fault {
    int error = EIO;  ///< the errno of the failure
    int onCall = 1;   ///< the first call that fails, counted from 1
    int times = 1;    ///< how many calls in a row fail, from that one on
};

/// For Fault::times: no call from the first one on succeeds.
inline constexpr int always = 1 << 30;

/// How an entry tells a failure: -1 or null, with errno set. Specialise it for
/// an entry that does so in another way, such as MAP_FAILED.
template <auto Entry>
struct FailureOf {
    template <class Result>
    static Result give(int error) noexcept
    {
        errno = error;
        if constexpr (std::is_pointer_v<Result>)
            return nullptr;
        else
            return Result(-1);
    }
};

/// Base of a FailureOf for an entry whose result is the error number.
struct ResultIsErrorNumber {
    template <class Result>
    static Result give(int error) noexcept
    {
        return error;
    }
};

template <>
struct FailureOf<&SystemCalls::clock_nanosleep> : ResultIsErrorNumber {
};

template <>
struct FailureOf<&SystemCalls::getpwuid_r> : ResultIsErrorNumber {
};

template <>
struct FailureOf<&SystemCalls::posix_fallocate> : ResultIsErrorNumber {
};

template <>
struct FailureOf<&SystemCalls::pthread_create> : ResultIsErrorNumber {
};

template <>
struct FailureOf<&SystemCalls::posix_spawn> : ResultIsErrorNumber {
};

template <>
struct FailureOf<&SystemCalls::mmap> {
    template <class Result>
    static Result give(int error) noexcept
    {
        errno = error;
        return reinterpret_cast<Result>(-1);
    }
};

/// Stands in a table entry for the life of the object. `Kind` derives from
/// this class and has a template <class Result> Result intercept(call, arguments...),
/// where `call` is what stood in the entry before.
template <auto Entry, class Kind>
class Interceptor {
public:
    Interceptor(Interceptor const&) = delete;
    Interceptor& operator=(Interceptor const&) = delete;

protected:
    Interceptor() noexcept : original_(zk::os::systemCalls().*Entry)
    {
        if (std::exchange(inPlace_, static_cast<Kind*>(this)))
            std::abort();  // two of one kind would call each other for ever
        zk::os::systemCalls().*Entry = entryLike(original_);
    }

    ~Interceptor()
    {
        zk::os::systemCalls().*Entry = original_;
        inPlace_ = nullptr;
    }

private:
    template <class Result, class... Arguments>
    static auto entryLike(Result (*)(Arguments...)) noexcept
    {
        return +[](Arguments... arguments) -> Result {
            return inPlace_->template intercept<Result>(inPlace_->Interceptor::original_, arguments...);
        };
    }

    std::remove_reference_t<decltype(std::declval<SystemCalls&>().*Entry)> const original_;
    inline static Kind* inPlace_ = nullptr;
};

/// Lets chosen calls of an entry fail without reaching the kernel.
template <auto Entry>
class FaultInjector : public Interceptor<Entry, FaultInjector<Entry>> {
public:
    explicit FaultInjector(Fault fault) noexcept : fault_(fault) { }

    /// How often the entry was called, failed calls included.
    int calls() const noexcept { return calls_; }

    template <class Result, class Call, class... Arguments>
    Result intercept(Call call, Arguments... arguments)
    {
        int const number = ++calls_;
        bool const fails = number >= fault_.onCall && number - fault_.onCall < fault_.times;
        return fails ? FailureOf<Entry>::template give<Result>(fault_.error) : call(arguments...);
    }

private:
    Fault const fault_;
    std::atomic<int> calls_ = 0;
};

/// Cuts the length (the std::size_t argument) of each call of an entry down to a limit.
template <auto Entry>
class ShortTransfers : public Interceptor<Entry, ShortTransfers<Entry>> {
public:
    explicit ShortTransfers(std::size_t limit) noexcept : limit_(limit) { }

    template <class Result, class Call, class... Arguments>
    Result intercept(Call call, Arguments... arguments)
    {
        return call(shortened(arguments)...);
    }

private:
    template <class Argument>
    Argument shortened(Argument argument) const noexcept
    {
        if constexpr (std::is_same_v<Argument, std::size_t>)
            return std::min(argument, limit_);
        else
            return argument;
    }

    std::size_t const limit_;
};

/// Does something before each call of an entry: what another process might do in that moment.
template <auto Entry>
class BeforeCall : public Interceptor<Entry, BeforeCall<Entry>> {
public:
    explicit BeforeCall(std::function<void()> action) : action_(std::move(action)) { }

    template <class Result, class Call, class... Arguments>
    Result intercept(Call call, Arguments... arguments)
    {
        action_();
        return call(arguments...);
    }

private:
    std::function<void()> const action_;
};

}  // namespace zk::test
