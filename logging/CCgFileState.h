// CCgFileState.h: what the two file handlers keep, and the properties that both have.
//
//   maxFileSize, maxFileBytes   the size in bytes from which the file is full, default 1048576
//   maxFiles                    how many files there are at most, the active one included; default 3
//   fileName                    default "default.log" in the directory that is current at creation
//   appending                   true: a file keeps its content when it is opened (default)
//   filePermission              the mode of a new file, octal; default 0744
//   dirPermission               the mode of a new folder, where the system has such; default 0771
//   fileEncoding                a code set; default UTF-8
//   MPFileSemKey                the key of the mutex of all processes that write the file; default 31821
//   logInternalErrs             whether the handler reports its mistakes; takes the value of "appending"
//
// A change of any of them, but for the last, closes the file: the next record opens it anew.
#pragma once

#include "logging/CCgCodeset.h"
#include "logging/CCgFileName.h"
#include "logging/CCgLogFile.h"
#include "logging/CCgReports.h"
#include "logging/util/CxMutex.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct CCgEvent;
struct CCgObject;

namespace zk::logging {

struct FileState {
    LogFile file;
    std::uint32_t maxFileSize = 1048576;
    std::int32_t maxFiles = 3;
    std::string path;  ///< of the active file; empty: there is none
    FileName name;
    std::int32_t filePermission = 0744;
    std::int32_t dirPermission = 0771;
    std::unique_ptr<CCgCodeset, decltype(&ccg_closeCodeset)> codeset{nullptr,
                                                                     ccg_closeCodeset};  ///< none: UTF-8
    bool appending = true;
    bool semaphoreOpen = false;
    std::int32_t semaphoreKey = 31821;
    CxMutex semaphore;
    bool logInternalErrs = true;
    bool mayBeHalfRolled = false;  ///< whether the rollover of a process that ended may have to be finished

    FileState();

    bool rollsOver() const noexcept { return maxFiles > 1; }
    bool isFull() const noexcept { return rollsOver() && file.size() >= maxFileSize; }

    /// Adds a report of a key, if the handler reports its mistakes.
    void complain(Reports& reports, CCgLevel level, std::int32_t key,
                  std::initializer_list<CCgParm> parameters) const;

    /// Makes the folder of the file, with those around it.
    void makeDirectory(Reports& reports) const;

    /// Opens the active file, without what belongs to one handler alone. A path that no file call takes whole is
    /// a failure: what is cut is another file.
    CCgResult openFile(unsigned flags);

    /// A text as it stands in the file.
    std::string_view encoded(std::string_view text, std::string& room) const;
};

FileState& fileStateOf(CCgObject const* handler) noexcept;

/// The record as its formatter writes it, in the file's code set.
class EncodedRecord {
public:
    EncodedRecord(CCgObject* handler, CCgEvent* event);
    ~EncodedRecord();
    EncodedRecord(EncodedRecord const&) = delete;
    EncodedRecord& operator=(EncodedRecord const&) = delete;

    bool hasText() const noexcept { return text_ != nullptr; }
    std::string_view bytes() const noexcept { return bytes_; }

private:
    char* text_;
    std::string room_;
    std::string_view bytes_;
};

void* createFileState(CCgObject* handler);
void destroyFileState(void* data);
void configureFileHandler(CCgObject* handler, char const* key);

}  // namespace zk::logging
