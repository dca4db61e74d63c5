// languageWriter.h: what turns a model into the source files of one programming language.
//
// A writer works in two steps: prepare() finds all that cannot be generated, before the first file is written;
// write() then only hands over files. A further language is a further class derived from LanguageWriter.
#pragma once

#include "examples/modelgen/model.h"
#include "examples/modelgen/report.h"

namespace modelgen {

/// Takes generated files. Their paths are relative, have '/' between folders, and never lead out of the folder.
class FileSink {
public:
    virtual ~FileSink() = default;
    virtual void put(CString const& path, CString const& content) = 0;
};

class LanguageWriter {
public:
    virtual ~LanguageWriter() = default;

    /// Plans the code for `model`, which must outlive this object. What the language cannot express is reported;
    /// if there was an error, nothing may be written.
    virtual void prepare(Model const& model, Report& report) = 0;

    /// Writes what was planned. Leaves with whatever `sink` throws.
    virtual void write(FileSink& sink) const = 0;
};

}  // namespace modelgen
