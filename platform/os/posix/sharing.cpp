#include "platform/os/posix/sharing.h"

#include "platform/os/posix/descriptor.h"
#include "platform/os/posix/lastError.h"
#include "platform/os/posix/systemCalls.h"

#include <fcntl.h>
#include <sys/file.h>

namespace zk::os {
namespace {

// In this order most openers need one lock for all their marks: whoever
// doesn't share removal and writing, and reads and writes.
enum Mark : unsigned {
    deniesWriting,
    deniesRemoval,
    reads,
    writes,
    deniesReading,
    removes,
    markCount,
};

constexpr unsigned bit(Mark mark) noexcept
{
    return 1u << mark;
}

unsigned marksOf(Sharing const& sharing) noexcept
{
    unsigned marks = 0;
    marks |= sharing.access & Sharing::read ? bit(reads) : 0;
    marks |= sharing.access & Sharing::write ? bit(writes) : 0;
    marks |= sharing.access & Sharing::remove ? bit(removes) : 0;
    marks |= sharing.denied & Sharing::read ? bit(deniesReading) : 0;
    marks |= sharing.denied & Sharing::write ? bit(deniesWriting) : 0;
    marks |= sharing.denied & Sharing::remove ? bit(deniesRemoval) : 0;
    return marks;
}

// The marks of others that such an opener must not meet.
unsigned oppositeOf(Sharing const& sharing) noexcept
{
    return marksOf({.access = sharing.denied, .denied = sharing.access});
}

// Where a mark's places for openers that may only write begin, counted like the marks.
constexpr unsigned placesPerMark = 256;
constexpr unsigned firstPlaceOf(unsigned mark) noexcept
{
    return markCount + mark * placesPerMark;
}
constexpr unsigned marksAndPlaces = firstPlaceOf(markCount);

struct flock rangeOf(unsigned first, unsigned count, short type) noexcept
{
    struct flock range = {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = firstMark + off_t(first);
    range.l_len = off_t(count);
    return range;
}

bool isHeldByOthers(int descriptor, unsigned first, unsigned count) noexcept
{
    struct flock range = rangeOf(first, count, F_WRLCK);
    return systemCalls().lockRange(descriptor, F_OFD_GETLK, &range) == 0 && range.l_type != F_UNLCK;
}

bool meets(int descriptor, unsigned marks) noexcept
{
    if (!isHeldByOthers(descriptor, 0, marksAndPlaces))
        return false;  // mostly nobody else has the file open
    for (unsigned mark = 0; mark < markCount; ++mark)
        if ((marks & 1u << mark) &&
            (isHeldByOthers(descriptor, mark, 1) ||
             isHeldByOthers(descriptor, firstPlaceOf(mark), placesPerMark)))
            return true;
    return false;
}

// Sets a lock on marks or places; gives an errno value.
int lock(int descriptor, unsigned first, unsigned count, short type) noexcept
{
    struct flock range = rangeOf(first, count, type);
    int const result =
        uninterrupted([&] { return systemCalls().lockRange(descriptor, F_OFD_SETLK, &range); });
    return result == -1 ? errno : 0;
}

bool isConflict(int error) noexcept
{
    return error == EWOULDBLOCK || error == EACCES;
}

// Takes a free place of each mark.
DWORD setMarksOfWriter(int descriptor, unsigned marks) noexcept
{
    for (unsigned mark = 0; mark < markCount; ++mark) {
        if (!(marks & 1u << mark))
            continue;
        unsigned place = 0;
        while (place < placesPerMark && isConflict(lock(descriptor, firstPlaceOf(mark) + place, 1, F_WRLCK)))
            ++place;
        if (place == placesPerMark)
            return ERROR_SHARING_VIOLATION;
    }
    return ERROR_SUCCESS;
}

DWORD setMarks(int descriptor, unsigned marks) noexcept
{
    for (unsigned first = 0; first < markCount; ++first) {
        unsigned end = first;
        while (marks & 1u << end)
            ++end;
        if (end == first)
            continue;
        int const error = lock(descriptor, first, end - first, F_RDLCK);
        if (error == EBADF)
            return setMarksOfWriter(descriptor, marks);  // it was opened for writing alone
        if (isConflict(error))
            return ERROR_SHARING_VIOLATION;
        first = end;
    }
    return ERROR_SUCCESS;
}

}  // namespace

DWORD claim(int descriptor, Sharing const& sharing) noexcept
{
    constexpr unsigned content = Sharing::read | Sharing::write;
    if (sharing.access == Sharing::none)
        return ERROR_SUCCESS;
    int const kind = (sharing.denied & content) == content ? LOCK_EX : LOCK_SH;
    if ((sharing.access & content) != 0 &&
        uninterrupted([&] { return systemCalls().flock(descriptor, kind | LOCK_NB); }) == -1 &&
        isConflict(errno))
        return ERROR_SHARING_VIOLATION;
    if (DWORD const error = setMarks(descriptor, marksOf(sharing)))
        return error;
    return meets(descriptor, oppositeOf(sharing)) ? ERROR_SHARING_VIOLATION : ERROR_SUCCESS;
}

DWORD checkSharing(char const* path, Sharing const& sharing) noexcept
{
    auto const open = [path](int way) {
        int const flags = way | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
        return Descriptor(uninterrupted([&] { return systemCalls().open(path, flags, 0); }));
    };
    Descriptor file = open(O_RDONLY);
    if (!file && errno == EACCES)
        file = open(O_WRONLY);
    if (!file)
        return errno == EMFILE || errno == ENFILE || errno == ENOMEM ? errorFromErrno(errno) : ERROR_SUCCESS;
    return meets(file.get(), oppositeOf(sharing)) ? ERROR_SHARING_VIOLATION : ERROR_SUCCESS;
}

}  // namespace zk::os
