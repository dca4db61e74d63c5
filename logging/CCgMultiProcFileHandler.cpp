#include "logging/CCgMultiProcFileHandler.h"

#include "logging/CCgEvent.h"
#include "logging/CCgFileRollover.h"
#include "logging/CCgFileState.h"
#include "logging/CCgLogger.h"
#include "logging/CCgObject.h"
#include "logging/util/CxFile.h"
#include "logging/util/CxListUtil.h"
#include "logging/util/CxSystem.h"

#include <cstdio>
#include <string>

namespace zk::logging {

namespace {

constexpr std::size_t copyBlock = 8192;

// The keys of reports.
constexpr std::int32_t cannotRead = 72;
constexpr std::int32_t cannotWrite = 73;

// The mutex of a key, made once per process and never closed: the handlers of a key share it.
CCgResult openSemaphore(FileState& state)
{
    static auto& known = *new NamedList<CxMutex>;  // files are written by static destructors too
    std::string const key = std::to_string(state.semaphoreKey);
    if (CxMutex const* const found = known.find(key)) {
        state.semaphore = *found;
    } else {
        if (CCgResult const result = CxMutexCreateNamed(state.semaphore, state.semaphoreKey); !result.ok())
            return result;
        known.set(key, state.semaphore);
    }
    state.semaphoreOpen = true;
    return {};
}

// Holds the mutex for the life of the object, if it can be had.
class Turn {
public:
    explicit Turn(CxMutex const& semaphore) noexcept
        : semaphore_(semaphore), result_(CxMutexLockNamed(semaphore, wasAbandoned_))
    {
    }
    ~Turn()
    {
        if (result_.ok())
            CxMutexUnlock(semaphore_);
    }
    Turn(Turn const&) = delete;
    Turn& operator=(Turn const&) = delete;

    CCgResult const& result() const noexcept { return result_; }
    bool wasAbandoned() const noexcept { return wasAbandoned_; }

private:
    CxMutex const& semaphore_;
    bool wasAbandoned_ = false;
    CCgResult const result_;
};

class ScopedFile {
public:
    ScopedFile() = default;
    ~ScopedFile()
    {
        if (isOpen())
            CxFileClose(descriptor);
    }
    ScopedFile(ScopedFile const&) = delete;
    ScopedFile& operator=(ScopedFile const&) = delete;

    bool isOpen() const noexcept { return descriptor != -1; }

    std::int32_t descriptor = -1;
};

// Reads a block whole, but for the end of the file.
CCgResult readBlock(std::int32_t file, char (&block)[copyBlock], std::size_t& length) noexcept
{
    length = 0;
    for (std::size_t done = 1; done > 0 && length < sizeof block; length += done)
        if (CCgResult const result = CxFileRead(file, block + length, sizeof block - length, done);
            !result.ok())
            return result;
    return {};
}

// Whether a file has nothing else than what another one begins with.
bool isBeginningOf(std::int32_t part, std::int32_t whole)
{
    char ofPart[copyBlock], ofWhole[copyBlock];
    std::size_t partLength = sizeof ofPart, wholeLength = 0;
    while (partLength == sizeof ofPart) {
        if (!readBlock(part, ofPart, partLength).ok() || !readBlock(whole, ofWhole, wholeLength).ok() ||
            wholeLength < partLength ||
            std::string_view(ofPart, partLength) != std::string_view(ofWhole, partLength))
            return false;
    }
    return true;
}

class Rolling {
public:
    Rolling(FileState& state, bool wasInterrupted, Reports& reports)
        : state_(state), backup_(state.name.path(1)), wasInterrupted_(wasInterrupted), reports_(reports)
    {
    }

    void run()
    {
        // What the last process was copying when it ended is copied anew; the older files have their new names.
        bool const isHalfDone = (state_.mayBeHalfRolled || wasInterrupted_) && backupIsBeginning();
        if (!isHalfDone &&
            !rollOver({.name = state_.name,
                       .maxFiles = state_.maxFiles,
                       .lowest = 1,
                       .wasInterrupted = wasInterrupted_},
                      reports_))
            return;
        std::int32_t fault = copy();
        // The oldest file goes last, but not for want of its room.
        if (fault == cannotWrite && removeOldest(state_.name, reports_))
            fault = copy();
        if (fault != 0)
            complain(fault);
        reports_.add(state_.file.empty());
        removeOldest(state_.name, reports_);
        state_.mayBeHalfRolled = false;
    }

private:
    bool backupIsBeginning() const
    {
        ScopedFile active, backup;
        return CxFileOpen(backup.descriptor, backup_.c_str(), CX_FILE_READ | CX_FILE_WARY).ok() &&
            CxFileOpen(active.descriptor, state_.path.c_str(), CX_FILE_READ | CX_FILE_WARY).ok() &&
            isBeginningOf(backup.descriptor, active.descriptor);
    }

    // Gives the key of the report that is due, or 0.
    std::int32_t copy()
    {
        ScopedFile backup;
        constexpr unsigned flags =
            CX_FILE_READ | CX_FILE_WRITE | CX_FILE_CREATE | CX_FILE_TRUNCATE | CX_FILE_WARY;
        if (!CxFileOpen(backup.descriptor, backup_.c_str(), flags, state_.filePermission).ok()) {
            std::printf("ERR opening %s pre rollover\n", backup_.c_str());
            return cannotWrite;
        }
        if (std::int32_t const fault = copyTo(backup.descriptor))
            return fault;
        return CxFileFlush(backup.descriptor).ok() && CxFileClose(backup.descriptor).ok() ? 0 : cannotWrite;
    }

    std::int32_t copyTo(std::int32_t backup)
    {
        std::int32_t const active = state_.file.descriptor();
        char block[copyBlock];
        std::size_t length = sizeof block;
        if (!CxFileSeek(active, 0).ok())
            return cannotRead;
        while (length == sizeof block) {
            bool const isRead = readBlock(active, block, length).ok();
            if (!CxFileWrite(backup, {block, length}).ok())
                return cannotWrite;
            if (!isRead)
                return cannotRead;
        }
        return 0;
    }

    void complain(std::int32_t fault)
    {
        std::string const& name = fault == cannotRead ? state_.path : backup_;
        state_.complain(reports_, CCG_WARN, fault, {CCgParm::ofText(name.c_str())});
    }

    FileState& state_;
    std::string const backup_;
    bool const wasInterrupted_;
    Reports& reports_;
};

CCgResult openFile(FileState& state, Reports& reports)
{
    if (state.file.isOpen() || state.path.empty())
        return {};
    if (!state.semaphoreOpen)
        if (CCgResult const result = openSemaphore(state); !result.ok())
            return result;
    state.makeDirectory(reports);
    CCgResult const result = state.openFile(0);
    state.mayBeHalfRolled = true;
    return result;
}

// Within one's turn: the file, as it is now and with room for a record.
CCgResult prepareFile(FileState& state, bool wasInterrupted, std::int64_t now, Reports& reports)
{
    if (state.file.look(now) != LogFile::State::inPlace) {
        reports.add(state.file.close());
        if (CCgResult const result = openFile(state, reports); !result.ok())
            return result;
    }
    if (wasInterrupted) {
        std::string room;
        std::string_view const lineEnd = state.encoded("\n", room);
        if (!state.file.endsLine(lineEnd))
            reports.add(state.file.write(lineEnd));
    }
    if (state.isFull())
        Rolling(state, wasInterrupted, reports).run();
    else if (wasInterrupted)
        removeOldest(state.name, reports);
    return {};
}

void writeRecord(FileState& state, std::string_view bytes, std::int64_t now, Reports& reports)
{
    Turn const turn(state.semaphore);
    if (!turn.result().ok()) {
        reports.add(turn.result());
        return;
    }
    CCgResult result = prepareFile(state, turn.wasAbandoned(), now, reports);
    if (result.ok())
        result = state.file.write(bytes);
    reports.add(result);
}

CCgResult open(CCgObject* handler)
{
    Reports reports;
    CCgResult const result = openFile(fileStateOf(handler), reports);
    reports.send();
    return result;
}

void close(CCgObject* handler)
{
    reportResult(fileStateOf(handler).file.close());
}

void handle(CCgObject* handler, CCgEvent* event)
{
    if (!handler->logging.load(std::memory_order_relaxed))
        return;
    FileState& state = fileStateOf(handler);
    Reports reports;
    reports.add(openFile(state, reports));
    bool const isOpen = state.file.isOpen();
    if (isOpen) {
        EncodedRecord const record(handler, event);
        if (record.hasText() && state.file.isOpen())
            writeRecord(state, record.bytes(), event->time, reports);
    }
    reports.send();
    if (isOpen)
        ccg_forward(handler, event);
}

}  // namespace

CCgHandlerEntries const multiProcFileHandlerEntries = {handle, open, close};
CCgObjectEntries const multiProcFileHandlerObjectEntries = {createFileState, destroyFileState,
                                                            configureFileHandler};

}  // namespace zk::logging
