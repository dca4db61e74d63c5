#include "examples/modelgen/outputFolder.h"

#include "examples/modelgen/textFile.h"

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace modelgen {

OutputFailure::OutputFailure(CString const& name, CString const& reason)
    : std::runtime_error(std::string("cannot write ") + name.GetString() + ": " + reason.GetString())
{
}

void OutputFolder::put(CString const& path, CString const& content)
{
    makeFolder({});
    for (int slash = path.Find('/'); slash >= 0; slash = path.Find('/', slash + 1))
        makeFolder(path.Left(slash));

    CString const name = folder_ + "/" + path;
    CString reason;
    std::string old;
    std::error_code ignored;
    bool const isFile = fs::is_regular_file(fs::symlink_status(name.GetString(), ignored));
    if (isFile && readFile(name, old, reason) && content == std::string_view(old)) {
        ++unchanged_;
        return;
    }
    if (!replaceFile(name, content, reason))
        throw OutputFailure(name, reason);
    ++written_;
}

void OutputFolder::makeFolder(CString const& path)
{
    if (!made_.insert(path).second)
        return;
    CString const name = path.IsEmpty() ? folder_ : folder_ + "/" + path;
    std::error_code error;
    if (path.IsEmpty()) {
        fs::create_directories(name.GetString(), error);
    } else {
        if (fs::is_symlink(fs::symlink_status(name.GetString(), error)))
            throw OutputFailure(name, "it is a link out of the folder");
        fs::create_directory(name.GetString(), error);
    }
    std::error_code ignored;
    bool const isThere = fs::is_directory(name.GetString(), ignored);
    if (!isThere)
        throw OutputFailure(name, error ? CString(error.message().c_str()) : CString("it is not a folder"));
}

}  // namespace modelgen
