#include "platform/os/os.h"

#include "tests/support/expectFails.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>
#include <vector>

namespace {

constexpr UINT first = WM_USER + 1;
constexpr UINT second = WM_USER + 2;
constexpr UINT answering = WM_USER + 3;   // gives wParam + lParam
constexpr UINT forwarding = WM_USER + 4;  // sends `answering` on to the window in wParam
constexpr UINT ending = WM_USER + 5;      // ends the thread's loop
auto const nowhere = reinterpret_cast<HWND>(std::uintptr_t(0x1234));
auto const noWindow = reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1));

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case answering: return static_cast<LRESULT>(wParam) + lParam;
    case forwarding: return SendMessageA(reinterpret_cast<HWND>(wParam), answering, 40, lParam);
    case ending: PostQuitMessage(static_cast<int>(wParam)); return 0;
    default: return DefWindowProcA(window, message, wParam, lParam);
    }
}

HWND makeWindow(HWND parent = HWND_MESSAGE)
{
    static ATOM const windowClass = [] {
        WNDCLASSEXA description{};
        description.cbSize = sizeof description;
        description.lpfnWndProc = procedure;
        description.hInstance = GetModuleHandleA(nullptr);
        description.lpszClassName = "ZkMessageQueueTest";
        return RegisterClassExA(&description);
    }();
    return CreateWindowExA(0, MAKEINTATOM(windowClass), "", parent == HWND_MESSAGE ? 0 : WS_CHILD, 0, 0, 0, 0,
                           parent, nullptr, GetModuleHandleA(nullptr), nullptr);
}

// Each test has a thread, and with it a queue, of its own.
template <class Body>
void inThread(Body body)
{
    std::thread(body).join();
}

// A thread with a window and a message loop.
class Receiver {
public:
    Receiver() : thread_([this] { run(); }) { window_ = ready_.get_future().get(); }
    ~Receiver()
    {
        PostMessageA(window_, ending, 0, 0);
        thread_.join();
    }
    HWND window() const { return window_; }

private:
    void run()
    {
        HWND const window = makeWindow();
        ready_.set_value(window);
        MSG message;
        while (GetMessageA(&message, nullptr, 0, 0) > 0)
            DispatchMessageA(&message);
        DestroyWindow(window);
    }

    std::promise<HWND> ready_;
    HWND window_ = nullptr;
    std::thread thread_;
};

MSG take(HWND filter = nullptr, UINT low = 0, UINT high = 0)
{
    MSG message{};
    EXPECT_TRUE(PeekMessageA(&message, filter, low, high, PM_REMOVE));
    return message;
}

bool isEmpty()
{
    MSG message;
    return !PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
}

TEST(MessageQueue, isWaitedForUntilANewMessageComes)
{
    inThread([] {
        HWND const window = makeWindow();
        MSG message;
        PeekMessageA(&message, window, 0, 0, PM_NOREMOVE);
        std::thread poster([window] {
            Sleep(20);
            PostMessageA(window, first, 7, 0);
        });

        EXPECT_TRUE(WaitMessage());

        EXPECT_TRUE(PeekMessageA(&message, window, first, first, PM_REMOVE));
        EXPECT_EQ(message.wParam, 7u);
        poster.join();
        DestroyWindow(window);
    });
}

}  // namespace

TEST(MessageQueue, isEmptyAtFirst)
{
    inThread([] { EXPECT_TRUE(isEmpty()); });
}

TEST(MessageQueue, givesMessagesInTheOrderInWhichTheyWerePosted)
{
    inThread([] {
        HWND const window = makeWindow();
        EXPECT_SUCCEEDS(PostMessageA(window, second, 1, 2));
        EXPECT_SUCCEEDS(PostMessageA(window, first, 3, 4));

        MSG message;
        EXPECT_EQ(GetMessageA(&message, nullptr, 0, 0), 1);
        EXPECT_EQ(message.hwnd, window);
        EXPECT_EQ(message.message, second);
        EXPECT_EQ(message.wParam, 1u);
        EXPECT_EQ(message.lParam, 2);
        EXPECT_EQ(take().message, first);
        EXPECT_TRUE(isEmpty());
        DestroyWindow(window);
    });
}

TEST(MessageQueue, keepsAMessageThatIsOnlyLookedAt)
{
    inThread([] {
        PostMessageA(nullptr, first, 0, 0);
        MSG message{};

        EXPECT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
        EXPECT_EQ(message.message, first);
        EXPECT_EQ(take().message, first);
        EXPECT_TRUE(isEmpty());
    });
}

TEST(MessageQueue, isFilteredByNumber)
{
    inThread([] {
        PostMessageA(nullptr, first, 0, 0);
        PostMessageA(nullptr, second, 0, 0);

        EXPECT_EQ(take(nullptr, second, second).message, second);
        EXPECT_EQ(take(nullptr, first, second).message, first);
    });
}

TEST(MessageQueue, isFilteredByWindow)
{
    inThread([] {
        HWND const window = makeWindow();
        HWND const child = makeWindow(window);
        ASSERT_NE(child, nullptr);
        PostMessageA(nullptr, first, 0, 0);
        PostMessageA(child, first, 0, 0);
        PostMessageA(window, second, 0, 0);

        EXPECT_EQ(take(window, first, second).hwnd, child);
        EXPECT_EQ(take(window, first, second).hwnd, window);
        MSG message;
        EXPECT_FALSE(PeekMessageA(&message, window, first, second, PM_REMOVE));
        EXPECT_EQ(take(noWindow).message, first);
        EXPECT_FALSE(PeekMessageA(&message, noWindow, 0, 0, PM_REMOVE));
        DestroyWindow(window);
    });
}

TEST(MessageQueue, isNotFilteredByWhatIsNoWindow)
{
    inThread([] {
        MSG message;

        EXPECT_FAILS(PeekMessageA(&message, nowhere, 0, 0, PM_REMOVE), ERROR_INVALID_WINDOW_HANDLE);
    });
}

TEST(MessageQueue, endsWithTheExitCodeOnceNothingPostedIsLeft)
{
    inThread([] {
        PostQuitMessage(3);
        PostMessageA(nullptr, first, 0, 0);
        MSG message;

        EXPECT_EQ(GetMessageA(&message, nullptr, 0, 0), 1);
        EXPECT_EQ(message.message, first);
        EXPECT_EQ(GetMessageA(&message, nullptr, 0, 0), 0);
        EXPECT_EQ(message.message, WM_QUIT);
        EXPECT_EQ(message.wParam, 3u);
        EXPECT_EQ(message.hwnd, nullptr);
        EXPECT_TRUE(isEmpty());
    });
}

TEST(MessageQueue, endsWhateverTheFilter)
{
    inThread([] {
        PostMessageA(nullptr, first, 0, 0);
        PostQuitMessage(4);

        EXPECT_EQ(take(nullptr, second, second).message, WM_QUIT);
        EXPECT_EQ(take().message, first);
    });
}

TEST(MessageQueue, isReachedByThreadNumberOnceItIsThere)
{
    std::promise<DWORD> number;
    std::promise<void> posted;
    std::thread thread([&] {
        DWORD process;
        number.set_value(GetWindowThreadProcessId(makeWindow(), &process));
        posted.get_future().wait();
        EXPECT_EQ(take(noWindow).message, first);
    });
    DWORD const id = number.get_future().get();

    EXPECT_SUCCEEDS(PostThreadMessageA(id, first, 1, 2));

    posted.set_value();
    thread.join();
    SetLastError(0);
    EXPECT_FALSE(PostThreadMessageA(id, first, 1, 2));
}

TEST(MessageQueue, takesNothingForWhatIsNoWindow)
{
    EXPECT_FAILS(PostMessageA(nowhere, first, 0, 0), ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_FAILS(SendMessageA(nowhere, first, 0, 0), ERROR_INVALID_WINDOW_HANDLE);
}

TEST(MessageQueue, dropsWhatWasPostedToADestroyedWindow)
{
    inThread([] {
        HWND const window = makeWindow();
        PostMessageA(window, first, 0, 0);

        DestroyWindow(window);

        EXPECT_TRUE(isEmpty());
    });
}

TEST(MessageQueue, holdsTenThousandMessages)
{
    inThread([] {
        for (int i = 0; i < 10000; ++i)
            ASSERT_TRUE(PostMessageA(nullptr, first, static_cast<WPARAM>(i), 0));
        for (int i = 0; i < 10000; ++i)
            ASSERT_EQ(take().wParam, static_cast<WPARAM>(i));
    });
}

TEST(Messages, areDispatchedToTheWindowsProcedure)
{
    inThread([] {
        HWND const window = makeWindow();
        MSG message{window, answering, 2, 3, 0, {0, 0}};

        EXPECT_EQ(DispatchMessageA(&message), 5);
        message.hwnd = nullptr;
        EXPECT_EQ(DispatchMessageA(&message), 0);
        message.hwnd = nowhere;
        EXPECT_EQ(DispatchMessageA(&message), 0);
        message.message = WM_USER;
        EXPECT_FALSE(TranslateMessage(&message));
        DestroyWindow(window);
    });
}

TEST(Messages, wakeAThreadThatWaits)
{
    Receiver const receiver;

    EXPECT_EQ(SendMessageA(receiver.window(), answering, 1, 2), 3);
    EXPECT_TRUE(PostMessageA(receiver.window(), first, 0, 0));
    EXPECT_EQ(SendMessageA(receiver.window(), answering, 3, 4), 7);
}

TEST(Messages, comeFromManyThreads)
{
    std::atomic<int> sum = 0;
    {
        Receiver const receiver;
        std::vector<std::thread> senders;
        for (int i = 0; i < 4; ++i) {
            senders.emplace_back([&, i] {
                for (int k = 0; k < 100; ++k)
                    sum += static_cast<int>(
                        SendMessageA(receiver.window(), answering, static_cast<WPARAM>(i), 1));
            });
        }
        for (std::thread& sender : senders)
            sender.join();
    }

    EXPECT_EQ(sum, 100 * (1 + 2 + 3 + 4));
}

TEST(Messages, areAnsweredByAThreadThatWaitsForAnAnswer)
{
    inThread([] {
        HWND const own = makeWindow();
        Receiver const receiver;

        // The receiver sends back to this thread before it answers.
        EXPECT_EQ(SendMessageA(receiver.window(), forwarding, reinterpret_cast<WPARAM>(own), 2), 42);

        DestroyWindow(own);
    });
}

TEST(Messages, areAnsweredWhileOneLooksForOthers)
{
    inThread([] {
        HWND const window = makeWindow();
        std::atomic<LRESULT> answer = 0;
        std::thread sender([&] {
            answer = SendMessageA(window, answering, 20, 3);
            PostMessageA(window, first, 0, 0);
        });
        MSG message;

        EXPECT_EQ(GetMessageA(&message, nullptr, first, first), 1);

        sender.join();
        EXPECT_EQ(answer, 23);
        DestroyWindow(window);
    });
}

TEST(Messages, toAThreadThatEndsAreAnsweredWithNothing)
{
    std::promise<HWND> window;
    std::promise<void> go;
    std::thread receiver([&] {
        window.set_value(makeWindow());
        go.get_future().wait();
    });
    HWND const target = window.get_future().get();
    std::atomic<bool> begun = false;
    LRESULT answer = 1;
    std::thread sender([&] {
        begun = true;
        answer = SendMessageA(target, answering, 1, 2);
    });
    while (!begun)
        std::this_thread::yield();

    go.set_value();

    receiver.join();
    sender.join();
    EXPECT_EQ(answer, 0);
    EXPECT_FALSE(IsWindow(target));
}
