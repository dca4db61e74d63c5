// outputFolder.h: the folder that generated files go to, and nothing outside it.
//
//   OutputFolder folder("generated");
//   folder.put("lending/Book.h", "class Book;\n");    // makes generated/lending too
//
// A file that has its content already is left alone, so that a build system sees no change. A sub-folder that is a
// link is not followed, since it leads elsewhere.
//
// Here the path functions are at work, and the operations on folders.
#pragma once

#include "examples/modelgen/languageWriter.h"

#include <stdexcept>

namespace modelgen {

/// A file or folder could not be written: what() names it and tells why.
class OutputFailure : public std::runtime_error {
public:
    OutputFailure(CString const& name, CString const& reason);
};

class OutputFolder : public FileSink {
public:
    /// The folder is made with the first file.
    explicit OutputFolder(CString const& folder);

    /// Throws OutputFailure. The file then has its old content.
    void put(CString const& path, CString const& content) override;

    int written() const { return written_; }
    int unchanged() const { return unchanged_; }

private:
    void makeSubFolders(CString const& folder);

    CString folder_;
    NameSet made_;
    int written_ = 0;
    int unchanged_ = 0;
};

}  // namespace modelgen
