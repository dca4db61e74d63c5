#include "examples/modelgen/outputFolder.h"

#include "examples/modelgen/textFile.h"
#include "files/paths.h"

#include <string>

namespace modelgen {

namespace {

bool isFolder(CString const& name)
{
    DWORD const attributes = GetFileAttributesA(name);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool isLink(CString const& name)
{
    DWORD const attributes = GetFileAttributesA(name);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT);
}

void makeFolder(CString const& name)
{
    bool const isMade = CreateDirectoryA(name, nullptr);
    DWORD const error = GetLastError();
    if (!isMade && !isFolder(name))
        throw OutputFailure(name,
                            error == ERROR_ALREADY_EXISTS ? CString("it is not a folder") : reasonFor(error));
}

// Makes a folder and, before it, those around it.
void makeFolders(CString const& name)
{
    if (isFolder(name))
        return;
    CString around, last;
    omParseToDirAndFileName(name, around, last);
    if (!around.IsEmpty())
        makeFolders(around);
    if (!last.IsEmpty())
        makeFolder(name);
}

bool hasContent(CString const& name, CString const& content)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExA(name, GetFileExInfoStandard, &data))
        return false;
    if (data.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT))
        return false;
    if (data.nFileSizeHigh != 0 || data.nFileSizeLow != DWORD(content.GetLength()))
        return false;
    CString old, reason;
    return readFile(name, old, reason) && old == content;
}

}  // namespace

OutputFailure::OutputFailure(CString const& name, CString const& reason)
    : std::runtime_error(std::string("cannot write ") + name.GetString() + ": " + reason.GetString())
{
}

OutputFolder::OutputFolder(CString const& folder) : folder_(folder)
{
    normalizeBackSlashes(folder_);
}

void OutputFolder::put(CString const& path, CString const& content)
{
    CString inside(path);
    normalizeBackSlashes(inside);
    CString const name = omConcatDirAndFile(folder_, inside);
    CString folder, file;
    omParseToDirAndFileName(name, folder, file);
    makeSubFolders(folder);

    if (hasContent(name, content)) {
        ++unchanged_;
        return;
    }
    CString reason;
    if (!replaceFile(name, content, reason))
        throw OutputFailure(name, reason);
    ++written_;
}

// A sub-folder may stand there already, but not as a link.
void OutputFolder::makeSubFolders(CString const& folder)
{
    bool& isMade = made_[folder];
    if (isMade)
        return;
    isMade = true;
    if (folder.GetLength() <= folder_.GetLength()) {
        makeFolders(folder_);
        return;
    }
    CString around, last;
    omParseToDirAndFileName(folder, around, last);
    makeSubFolders(around);
    if (isLink(folder))
        throw OutputFailure(folder, "it is a link out of the folder");
    makeFolder(folder);
}

}  // namespace modelgen
