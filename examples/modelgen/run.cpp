#include "examples/modelgen/run.h"

#include "examples/modelgen/cppWriter.h"
#include "examples/modelgen/outputFolder.h"
#include "examples/modelgen/pumlReader.h"
#include "examples/modelgen/settings.h"
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

// Whoever names a profile wants no other: the search would go on without a word.
bool profileExists(Options const& options, std::ostream& err)
{
    if (options.profile.IsEmpty() || GetFileAttributesA(options.profile) != INVALID_FILE_ATTRIBUTES)
        return true;
    DWORD const error = GetLastError();
    err << "modelgen: cannot read " << options.profile << ": " << reasonFor(error) << '\n';
    return false;
}

int generate(Options const& options, Settings const& settings, std::ostream& out, std::ostream& err)
{
    Model model;
    Report report(err, settings.toldErrors);
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
    if (settings.warningsAreErrors && report.warnings() > 0) {
        err << "modelgen: nothing is written: by the setting WarningsAreErrors a warning is an error\n";
        return badInput;
    }

    CString const& name = options.folder.IsEmpty() ? settings.folder : options.folder;
    OutputFolder folder(name);
    try {
        writer->write(folder);
    } catch (OutputFailure const& failure) {
        err << "modelgen: " << failure.what() << '\n';
        return fileFailure;
    }
    out << model.classifiers().size() << " classes in " << model.packages().size() - 1
        << " packages: " << folder.written() << " files written to " << name << ", " << folder.unchanged()
        << " unchanged, " << report.warnings() << " warnings\n";
    return done;
}

}  // namespace

int run(Options const& options, std::ostream& out, std::ostream& err)
{
    if (!options.mistake.IsEmpty()) {
        err << "modelgen: " << options.mistake << '\n' << usage();
        return badInput;
    }
    if (options.isHelp || options.isVersion) {
        out << (options.isHelp ? usage() : versionLine() + "\n");
        return done;
    }
    if (!profileExists(options, err))
        return fileFailure;
    Settings const settings = readSettings();
    if (!settings.mistake.IsEmpty()) {
        err << "modelgen: " << settings.mistake << '\n';
        return badInput;
    }
    return generate(options, settings, out, err);
}

}  // namespace modelgen
