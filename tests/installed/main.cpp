// A user's first program, built against the installed library.
#include <zk_util.h>

#ifdef ZK_WITH_HOST_TEXTS
#    include <resources/hostTexts.h>
#endif

#include <cstdio>

int main()
{
    CString title("outside");
#ifdef ZK_WITH_HOST_TEXTS
    zkRegisterHostTexts();
    if (!title.LoadString(47188))
        return 1;
#endif
    try {
        CFile missing("no such file", CFile::modeRead);
        return 1;
    } catch (CFileException* failure) {
        failure->Delete();  // thrown by the module, caught here
    }
    std::printf("%s: separator %c\n", static_cast<char const*>(title), zk::os::nativeSeparator());
    return 0;
}
