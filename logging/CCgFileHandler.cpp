#include "logging/CCgFileHandler.h"

#include "logging/CCgEvent.h"
#include "logging/CCgFileRollover.h"
#include "logging/CCgFileState.h"
#include "logging/CCgHandler.h"
#include "logging/CCgLogger.h"
#include "logging/CCgObject.h"
#include "logging/util/CxFile.h"
#include "logging/util/CxSystem.h"

#include <cerrno>
#include <cstdlib>
#include <memory>

namespace zk::logging {

namespace {

using FreeText = std::unique_ptr<char, decltype(&std::free)>;

// The header or footer of a file.
CCgResult writeFrame(FileState& state, char* text)
{
    FreeText const own(text, std::free);
    if (!own)
        return {};
    std::string room;
    return state.file.write(state.encoded(own.get(), room));
}

void closeFile(CCgObject* handler, Reports& reports)
{
    FileState& state = fileStateOf(handler);
    if (!state.file.isOpen())
        return;
    reports.add(writeFrame(state, ccg_formatFooter(handler)));
    reports.add(state.file.close());
}

// One opening, with at most one rollover.
class Opening {
public:
    Opening(CCgObject* handler, std::int64_t now, Reports& reports)
        : handler_(handler), state_(fileStateOf(handler)), now_(now), reports_(reports)
    {
    }

    CCgResult run()
    {
        if (state_.path.empty() || isUsable())
            return {};
        state_.makeDirectory(reports_);
        if (CCgResult const result = openOnce(); !result.ok())
            return result;
        if (state_.isFull() && !rolledOver_) {
            makeRoom();
            if (CCgResult const result = openOnce(); !result.ok())
                return result;
        }
        CCgResult const result = writeFrame(state_, ccg_formatHeader(handler_));
        if (!result.ok())
            state_.file.close();
        return result;
    }

private:
    // Whether the file is open, in its place, and not full; if not it is closed.
    bool isUsable()
    {
        if (!state_.file.isOpen())
            return false;
        switch (state_.file.look(now_)) {
        case LogFile::State::inPlace:
            if (!state_.isFull())
                return true;
            makeRoom();
            break;
        case LogFile::State::gone: closeFile(handler_, reports_); break;
        case LogFile::State::lost: keepsContent_ = true; break;
        }
        return false;
    }

    // Closes the full file and gives it the next index. One that stays where it is keeps what it has.
    void makeRoom()
    {
        closeFile(handler_, reports_);
        rolledOver_ = true;
        if (rollOver({.name = state_.name, .maxFiles = state_.maxFiles}, reports_))
            removeOldest(state_.name, reports_);
        else
            keepsContent_ = true;
    }

    CCgResult openOnce()
    {
        return state_.openFile(state_.appending || keepsContent_ ? 0u : unsigned(CX_FILE_TRUNCATE));
    }

    CCgObject* const handler_;
    FileState& state_;
    std::int64_t const now_;
    Reports& reports_;
    bool rolledOver_ = false;
    bool keepsContent_ = false;
};

CCgResult open(CCgObject* handler)
{
    Reports reports;
    CCgResult const result = Opening(handler, CxTimeInMilliseconds(), reports).run();
    reports.send();
    return result;
}

void close(CCgObject* handler)
{
    Reports reports;
    closeFile(handler, reports);
    reports.send();
}

CCgResult writeRecord(CCgObject* handler, CCgEvent* event, Reports& reports)
{
    FileState& state = fileStateOf(handler);
    CCgResult result = Opening(handler, event->time, reports).run();
    if (!result.ok())
        return result;
    EncodedRecord const record(handler, event);
    if (!record.hasText())
        return {};
    return state.file.write(record.bytes());
}

void handle(CCgObject* handler, CCgEvent* event)
{
    if (!handler->logging.load(std::memory_order_relaxed))
        return;
    Reports reports;
    reports.add(writeRecord(handler, event, reports));
    reports.send();
    ccg_forward(handler, event);
}

}  // namespace

CCgHandlerEntries const fileHandlerEntries = {handle, open, close};
CCgObjectEntries const fileHandlerObjectEntries = {createFileState, destroyFileState, configureFileHandler};

}  // namespace zk::logging
