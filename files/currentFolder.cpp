#include "files/currentFolder.h"

namespace zk {

bool readCurrentFolder(CString& folder)
{
    DWORD room = MAX_PATH;
    for (;;) {
        DWORD const length = GetCurrentDirectoryA(room, folder.GetBuffer(static_cast<int>(room)));
        if (length < room) {
            folder.ReleaseBuffer(static_cast<int>(length));
            return length != 0;
        }
        folder.ReleaseBuffer(0);
        room = length + 1;  // the folder may have got a longer name meanwhile: look again
    }
}

}  // namespace zk
