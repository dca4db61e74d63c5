#include "examples/modelgen/run.h"

#include "examples/modelgen/cppWriter.h"
#include "examples/modelgen/options.h"
#include "examples/modelgen/outputFolder.h"
#include "examples/modelgen/pumlReader.h"
#include "examples/modelgen/textFile.h"

#include <memory>
#include <ostream>

namespace modelgen {

namespace {

constexpr int done = 0;
constexpr int fileFailure = 1;
constexpr int badInput = 2;

bool readDiagrams(Options const& options, PumlReader& reader, std::ostream& err)
{
    bool isAllRead = true;
    for (POSITION position = options.files.GetHeadPosition(); position;) {
        CString const name = options.files.GetNext(position);
        CString text;
        CString reason;
        if (readFile(name, text, reason)) {
            reader.read(name, text);
        } else {
            err << "modelgen: cannot read " << name << ": " << reason << '\n';
            isAllRead = false;
        }
    }
    return isAllRead;
}

int generate(Options const& options, std::ostream& out, std::ostream& err)
{
    Model model;
    Report report(err);
    PumlReader reader(model, report);
    if (!readDiagrams(options, reader, err))
        return fileFailure;
    reader.finish();

    std::unique_ptr<LanguageWriter> const writer = std::make_unique<CppWriter>();
    if (!report.hasErrors())
        writer->prepare(model, report);
    report.close();
    if (report.hasErrors())
        return badInput;

    OutputFolder folder(options.folder);
    try {
        writer->write(folder);
    } catch (OutputFailure const& failure) {
        err << "modelgen: " << failure.what() << '\n';
        return fileFailure;
    }
    out << model.classifiers().size() << " classes in " << model.packages().size() - 1
        << " packages: " << folder.written() << " files written to " << options.folder << ", "
        << folder.unchanged() << " unchanged, " << report.warnings() << " warnings\n";
    return done;
}

}  // namespace

int run(int count, char const* const* arguments, std::ostream& out, std::ostream& err)
{
    Options options;
    readOptions(count, arguments, options);
    if (!options.mistake.IsEmpty()) {
        err << "modelgen: " << options.mistake << '\n' << usage();
        return badInput;
    }
    if (options.isHelp)
        out << usage();
    else if (options.isVersion)
        out << versionLine() << '\n';
    else
        return generate(options, out, err);
    return done;
}

}  // namespace modelgen
