// A user's first program, built against the installed library.
#include <zk_util.h>

#include <cstdio>

int main()
{
    SetLastError(ERROR_SUCCESS);
    std::printf("separator %c\n", zk::os::nativeSeparator());
    return 0;
}
