// The table behind the handles: pins, lifetime and what concurrent closes do.
#include "platform/os/os.h"
#include "platform/os/posix/threadRecord.h"
#include "tests/support/expectFails.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace {

using namespace zk::os;

// Counts the living ones, and notices a use after its end.
class Probe : public KernelObject {
public:
    explicit Probe(std::atomic<int>& alive) : alive_(alive) { ++alive_; }
    ~Probe() override
    {
        usable_ = 0;
        --alive_;
    }

    bool isUsable() const { return usable_ == 42; }
    DWORD wait(DWORD) noexcept override { return isUsable() ? 0 : 0xFFFFFFFFu; }

private:
    std::atomic<int>& alive_;
    int usable_ = 42;
};

class Other : public KernelObject { };

class DerivedProbe : public Probe {
    using Probe::Probe;
};

// Takes the remote fence away, as a kernel without it would.
class WithoutRemoteFence {
public:
    WithoutRemoteFence() : had_(hasRemoteFence) { hasRemoteFence = false; }
    ~WithoutRemoteFence() { hasRemoteFence = had_; }

private:
    bool const had_;
};

class HandleTable : public testing::Test {
protected:
    HANDLE open(bool inheritable = false) { return openHandle(std::make_shared<Probe>(alive), inheritable); }

    std::atomic<int> alive = 0;
};

TEST_F(HandleTable, anObjectEndsWithItsLastHandle)
{
    HANDLE const first = open();
    HANDLE second = nullptr;
    ASSERT_TRUE(DuplicateHandle(INVALID_HANDLE_VALUE, first, INVALID_HANDLE_VALUE, &second, 0, FALSE,
                                DUPLICATE_SAME_ACCESS));

    EXPECT_TRUE(CloseHandle(first));
    EXPECT_EQ(alive, 1);

    EXPECT_TRUE(CloseHandle(second));
    EXPECT_EQ(alive, 0);
}

TEST_F(HandleTable, anObjectInUseOutlivesItsHandle)
{
    HANDLE const handle = open();
    auto object = objectOf(handle);

    CloseHandle(handle);

    EXPECT_EQ(alive, 1);
    object.reset();
    EXPECT_EQ(alive, 0);
}

TEST_F(HandleTable, aStaleValueNeverReachesTheSlotsNextObject)
{
    HANDLE const stale = open();
    CloseHandle(stale);
    HANDLE const next = open();  // takes the slot again

    EXPECT_NE(next, stale);
    EXPECT_FAILS(objectOf(stale).get(), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(CloseHandle(stale), ERROR_INVALID_HANDLE);
    CloseHandle(next);
}

TEST_F(HandleTable, noMadeUpValueIsAHandle)
{
    HANDLE const handle = open();
    auto const value = reinterpret_cast<std::uintptr_t>(handle);

    for (std::uintptr_t const wrong :
         {std::uintptr_t(0), std::uintptr_t(1), value + 1, value + 2, value + 4,
          value ^ (std::uintptr_t(1) << 24), value | (std::uintptr_t(1) << 63), std::uintptr_t(0x7FFFFF),
          std::uintptr_t(0x800000), std::uintptr_t(0xFFFFFC), std::uintptr_t(-3), std::uintptr_t(-4)})
        EXPECT_FAILS(CloseHandle(reinterpret_cast<HANDLE>(wrong)), ERROR_INVALID_HANDLE);
    CloseHandle(handle);
}

TEST_F(HandleTable, aTypedLookUpAcceptsTheTypeAndThoseDerivedFromIt)
{
    HANDLE const exact = open();
    HANDLE const derived = openHandle(std::make_shared<DerivedProbe>(alive), false);
    HANDLE const other = openHandle(std::make_shared<Other>(), false);

    EXPECT_TRUE(Pinned<Probe>(exact));
    EXPECT_TRUE(Pinned<Probe>(derived));
    EXPECT_FAILS(Pinned<Probe>(other).get(), ERROR_INVALID_HANDLE);
    EXPECT_FAILS(objectOf<Probe>(other).get(), ERROR_INVALID_HANDLE);
    for (HANDLE const handle : {exact, derived, other})
        CloseHandle(handle);
}

TEST_F(HandleTable, morePinsThanPlacesHoldTheirObjectsToo)
{
    constexpr unsigned count = ThreadRecord::pinCapacity + 3;
    std::vector<HANDLE> handles(count);
    for (HANDLE& handle : handles)
        handle = open();
    {
        std::array<std::optional<Pinned<Probe>>, count> pins;
        for (unsigned i = 0; i < count; ++i)
            pins[i].emplace(handles[i]);

        for (auto const& pin : pins)
            EXPECT_TRUE((*pin)->isUsable());
    }

    for (HANDLE const handle : handles)
        EXPECT_TRUE(CloseHandle(handle));
    EXPECT_EQ(alive, 0);
}

TEST_F(HandleTable, aSharedPinKeepsTheObjectBeyondItself)
{
    HANDLE const handle = open();
    std::shared_ptr<Probe> const kept = Pinned<Probe>(handle).share();

    CloseHandle(handle);

    EXPECT_TRUE(kept->isUsable());
}

TEST_F(HandleTable, closingInAnotherThreadReleasesAtOnce)
{
    HANDLE const handle = open();

    std::thread([&] { EXPECT_TRUE(CloseHandle(handle)); }).join();

    EXPECT_EQ(alive, 0);
}

TEST_F(HandleTable, inheritableObjectsAreThoseMarked)
{
    HANDLE const marked = open(true);
    HANDLE const unmarked = open(false);
    HANDLE const later = open(false);
    SetHandleInformation(later, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);

    std::vector<HANDLE> found;
    for (auto const& [handle, object] : inheritableObjects())
        found.push_back(handle);

    auto const holds = [&](HANDLE handle) {
        return std::find(found.begin(), found.end(), handle) != found.end();
    };
    EXPECT_TRUE(holds(marked));
    EXPECT_FALSE(holds(unmarked));
    EXPECT_TRUE(holds(later));
    for (HANDLE const handle : {marked, unmarked, later})
        CloseHandle(handle);
}

// Threads use handles while others close them: a pinned object is always
// usable, and after CloseHandle() it is gone.
void useWhileOthersClose(std::atomic<int>& alive)
{
    constexpr int users = 2;
    constexpr int rounds = 500;
    std::atomic<HANDLE> current = nullptr;
    std::atomic<bool> done = false;
    std::atomic<int> faults = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < users; ++i)
        threads.emplace_back([&] {
            while (!done) {
                Pinned<Probe> const pin(current.load());
                if (pin && !pin->isUsable())
                    ++faults;
            }
        });

    for (int round = 0; round < rounds; ++round) {
        current = openHandle(std::make_shared<Probe>(alive), false);
        if (round % 16 == 0)
            std::this_thread::yield();
        CloseHandle(current);
        if (alive != 0)
            ++faults;
    }
    done = true;
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(faults, 0);
}

TEST_F(HandleTable, aCloseWaitsForPinsOfOtherThreads)
{
    useWhileOthersClose(alive);
}

TEST_F(HandleTable, aCloseWaitsForPinsWithoutTheKernelsHelpToo)
{
    WithoutRemoteFence const fallback;

    useWhileOthersClose(alive);
}

TEST_F(HandleTable, threadsThatEndHandTheirRecordsOn)
{
    ThreadRecord* first = nullptr;
    std::thread([&] { first = threadRecord(); }).join();
    ThreadRecord* second = nullptr;
    std::thread([&] { second = threadRecord(); }).join();

    EXPECT_EQ(first, second);
    EXPECT_NE(first, threadRecord());
}

TEST_F(HandleTable, aPlaceThatIsNotUsedIsGivenBack)
{
    auto const object = std::make_shared<Probe>(alive);
    HANDLE first = nullptr;
    {
        HandlePlace const unused;
        ASSERT_EQ(unused.error(), ERROR_SUCCESS);
        HandlePlace used;
        first = used.open(object, true);
    }
    DWORD flags = 0;

    EXPECT_EQ(objectOf(first), object);
    EXPECT_TRUE(GetHandleInformation(first, &flags));
    EXPECT_EQ(flags, HANDLE_FLAG_INHERIT);
    EXPECT_TRUE(CloseHandle(first));
    EXPECT_FAILS(CloseHandle(first), ERROR_INVALID_HANDLE);
}

TEST_F(HandleTable, growsBeyondItsFirstChunk)
{
    std::vector<HANDLE> handles(3000);
    for (HANDLE& handle : handles)
        handle = open();
    EXPECT_EQ(alive, 3000);

    for (HANDLE const handle : handles)
        EXPECT_TRUE(CloseHandle(handle));

    EXPECT_EQ(alive, 0);
}

// Threads use handles of all kinds while others close them and make new ones.
// Each call must succeed or fail with "invalid handle"; nothing may hang or crash.
TEST_F(HandleTable, mayBeClosedWhileOthersUseThem)
{
    constexpr int places = 16;
    constexpr int rounds = 3000;
    std::atomic<HANDLE> handles[places] = {};
    std::atomic<int> wrong = 0;
    std::atomic<bool> goesOn = true;
    auto const isExpected = [](BOOL result) {
        DWORD const error = GetLastError();
        return result || error == ERROR_INVALID_HANDLE || error == ERROR_NOT_OWNER ||
            error == ERROR_TOO_MANY_POSTS;
    };

    std::vector<std::thread> users;
    for (unsigned user = 0; user < 3; ++user)
        users.emplace_back([&, user] {
            for (unsigned turn = user; goesOn; ++turn) {
                HANDLE const handle = handles[turn % places];
                if (!handle)
                    continue;
                DWORD const waited = WaitForSingleObject(handle, 0);
                bool const hasWaited = waited == WAIT_OBJECT_0 || waited == WAIT_TIMEOUT ||
                    waited == WAIT_ABANDONED ||
                    (waited == WAIT_FAILED && GetLastError() == ERROR_INVALID_HANDLE);
                wrong += !hasWaited;
                wrong += !isExpected(SetEvent(handle));
                wrong += !isExpected(ReleaseSemaphore(handle, 1, nullptr));
                wrong += !isExpected(ReleaseMutex(handle));
            }
        });
    for (unsigned round = 0; round < rounds; ++round) {
        auto& place = handles[round % places];
        if (HANDLE const old = place.exchange(nullptr))
            wrong += !CloseHandle(old);
        place = round % 3 == 0 ? CreateEventA(nullptr, round % 2, FALSE, nullptr)
            : round % 3 == 1   ? CreateSemaphoreA(nullptr, 0, 5, nullptr)
                               : CreateMutexA(nullptr, FALSE, nullptr);
    }
    goesOn = false;
    for (std::thread& user : users)
        user.join();
    for (HANDLE const handle : handles)
        CloseHandle(handle);

    EXPECT_EQ(wrong, 0);
}

}  // namespace
