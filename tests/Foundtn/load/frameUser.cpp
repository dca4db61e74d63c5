// A module that uses the library from its static objects and when it is asked
// to, as the application's other modules do. moduleLoadTest loads it.
#include "tests/Foundtn/load/frameUser.h"

#include "zk_util.h"

#include <cstdlib>
#include <iterator>

namespace {

FrameUserReport* report = nullptr;

// At file scope: made when the module is loaded, destroyed when it is unloaded.
class StaticUser {
public:
    StaticUser() : text_("from the first")
    {
        text_.MakeUpper();
        hadTextAtLoad = text_ == "FROM THE FIRST" && !AfxGetApp();
    }

    ~StaticUser()
    {
        if (report)
            report->libraryWorkedAtUnload =
                text_.Find("FIRST") == 9 && SPString("a,b").split(",").count() == 2;
    }

    bool hadTextAtLoad;

private:
    CString text_;
};

StaticUser const user;

// What is kept for later calls: command line, read profiles, named objects, texts, blocks of memory, clipboard formats.
bool usesWhatThePlatformKeeps()
{
    static ZkText const texts[] = {{61000, "a text of the user's"}};
    char const* const folder = std::getenv("ZK_SOURCE_DIR");
    CString text;
    char value[8] = "";
    GetPrivateProfileStringA("section", "key", "none", value, sizeof value,
                             CString(folder ? folder : ".") + "/CMakePresets.json");
    HANDLE const mutex = CreateMutexA(nullptr, TRUE, "zkFrameUser");
    zkRegisterTexts(texts, std::size(texts));
    bool const hasText = text.LoadString(61000);
    GlobalFree(GlobalAlloc(GMEM_MOVEABLE, 100));
    CloseHandle(mutex);
    return hasText && *GetCommandLineA() && CString(value) == "none";
}

DWORD WINAPI setEvent(LPVOID event)
{
    return SetEvent(event) ? 7 : 0;
}

}  // namespace

extern "C" FRAME_USER_API void reportTo(FrameUserReport* target)
{
    report = target;
    if (report)
        report->libraryWorkedAtLoad = user.hadTextAtLoad;
}

extern "C" FRAME_USER_API int useLibrary()
{
    CString text;
    text.Format("%s has %d letters, more than a short text holds", "library", 7);
    SPString const words("one two three");
    HANDLE const event = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    HANDLE const thread = CreateThread(nullptr, 0, setEvent, event, 0, nullptr);
    DWORD const waited = WaitForSingleObject(event, INFINITE);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    CloseHandle(event);
    return usesWhatThePlatformKeeps() && text.Find("letters") == 14 && words.split(" ").count() == 3 &&
        waited == WAIT_OBJECT_0;
}
