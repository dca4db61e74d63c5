#include "logging/CCgFileState.h"

#include "logging/CCgCodesetText.h"
#include "logging/CCgHandler.h"
#include "logging/CCgMisc.h"
#include "logging/CCgObject.h"
#include "logging/CCgProps.h"
#include "logging/util/CxFilePath.h"

#include <cerrno>
#include <cstdlib>
#include <optional>

namespace zk::logging {

namespace {

constexpr char const* firstFileName = "default.log";

// What "%4o" reads: at most four characters, after blanks, a sign among them.
std::optional<std::int32_t> scanPermission(std::string_view text)
{
    constexpr std::string_view blanks(" \t\n\v\f\r");
    std::size_t const start = text.find_first_not_of(blanks);
    text = start == std::string_view::npos ? std::string_view() : text.substr(start, 4);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    std::int32_t value = 0;
    std::size_t length = 0;
    for (; length < text.size() && text[length] >= '0' && text[length] <= '7'; ++length)
        value = value * 8 + (text[length] - '0');
    return length > 0 ? std::optional(value) : std::nullopt;
}

void setFileName(FileState& state, std::string const& value, Reports& reports)
{
    switch (parseFileName(markedFileName(value), state.name)) {
    case FileNameFault::none: break;
    case FileNameFault::missing: state.complain(reports, CCG_ERROR, 30, {CCgParm::ofText("fileName")}); break;
    case FileNameFault::tooLong:
        state.complain(reports, CCG_ERROR, 31,
                       {CCgParm::ofText("fileName"), CCgParm::ofInt32(longestFileName)});
        break;
    case FileNameFault::invalid:
        state.complain(reports, CCG_ERROR, 32, {CCgParm::ofText("fileName"), CCgParm::ofText(value.c_str())});
        break;
    }
    bool const isNamed = !state.name.directory.empty() || !state.name.baseName.empty();
    state.path = isNamed ? state.name.path(state.name.number) : "";
}

void setPermission(CCgObject const* handler, FileState const& state, std::int32_t& permission,
                   std::string const& value, Reports& reports)
{
    if (auto const scanned = scanPermission(value))
        permission = *scanned;
    else
        state.complain(reports, CCG_WARN, 74,
                       {CCgParm::ofText(value.c_str()), CCgParm::ofText(handler->name.c_str())});
}

void setEncoding(FileState& state, std::string const& value, Reports& reports)
{
    state.codeset.reset(ccg_openCodeset(value.c_str()));
    if (!state.codeset)
        state.complain(reports, CCG_WARN, 36, {CCgParm::ofText(value.c_str())});
}

// False for a key that isn't a file handler's.
bool setOwnProperty(CCgObject* handler, FileState& state, std::string_view key, std::string const& value,
                    Reports& reports)
{
    if (key == "maxFileSize" || key == "maxFileBytes")
        state.maxFileSize = static_cast<std::uint32_t>(scanInt32(value).value_or(1024));
    else if (key == "maxFiles")
        state.maxFiles = scanInt32(value).value_or(3);
    else if (key == "fileName")
        setFileName(state, value, reports);
    else if (key == "appending")
        state.appending = scanBoolean(value).value_or(true);
    else if (key == "filePermission")
        setPermission(handler, state, state.filePermission, value, reports);
    else if (key == "dirPermission")
        setPermission(handler, state, state.dirPermission, value, reports);
    else if (key == "fileEncoding")
        setEncoding(state, value, reports);
    else if (key == "MPFileSemKey")
        state.semaphoreKey = scanInt32(value).value_or(0);
    else
        return false;
    return true;
}

}  // namespace

FileState::FileState()
{
    parseFileName(firstFileName, name);
    path = name.path(name.number);
}

void FileState::complain(Reports& reports, CCgLevel level, std::int32_t key,
                         std::initializer_list<CCgParm> parameters) const
{
    if (logInternalErrs)
        reports.add(level, key, parameters);
}

void FileState::makeDirectory(Reports& reports) const
{
    if (name.directory.empty())
        return;
    CxFilePath directory;
    CCgResult result = CxFilePathMake(directory, name.directory.c_str());
    if (result.ok())
        result = CxFilePathMakeDirectories(directory, dirPermission);
    if (!result.ok())
        complain(reports, CCG_ERROR, 32,
                 {CCgParm::ofText("fileName"), CCgParm::ofText(name.directory.c_str())});
}

CCgResult FileState::openFile(unsigned flags)
{
    if (path.size() > CX_LONGEST_PATH)
        return libraryError(ENAMETOOLONG);
    return file.open(path, flags, filePermission);
}

std::string_view FileState::encoded(std::string_view text, std::string& room) const
{
    if (!codeset)
        return text;
    room = codesetOfUtf8(*codeset, text);
    return room;
}

FileState& fileStateOf(CCgObject const* handler) noexcept
{
    return *static_cast<FileState*>(handler->data);
}

EncodedRecord::EncodedRecord(CCgObject* handler, CCgEvent* event) : text_(ccg_formatRecord(handler, event))
{
    if (text_)
        bytes_ = fileStateOf(handler).encoded(text_, room_);
}

EncodedRecord::~EncodedRecord()
{
    std::free(text_);
}

void* createFileState(CCgObject*)
{
    return new FileState;
}

void destroyFileState(void* data)
{
    delete static_cast<FileState*>(data);
}

void configureFileHandler(CCgObject* handler, char const* key)
{
    std::string const* const own = handler->properties.find(key);
    if (!own)
        return;
    FileState& state = fileStateOf(handler);
    if (std::string_view(key) == "logInternalErrs") {
        bool found = false;
        bool const appending = CCgPropsGetBoolean(handler->properties, "appending", found);
        state.logInternalErrs = !found || appending;
        return;
    }
    handler->objClass->handler.close(handler);
    std::string const value = *own;  // what is reported on the way may change it
    Reports reports;
    if (!setOwnProperty(handler, state, key, value, reports))
        configureHandler(handler, key);
    reports.send();
}

}  // namespace zk::logging
