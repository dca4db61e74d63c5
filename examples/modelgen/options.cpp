#include "examples/modelgen/options.h"

namespace modelgen {

namespace {

// Takes a value that belongs to an option, and must not be empty.
void takeValue(CString const& value, CString& target, Options& options, char const* mistake)
{
    target = value;
    if (value.IsEmpty())
        options.mistake = mistake;
}

}  // namespace

void readOptions(int count, char const* const* arguments, Options& options)
{
    bool isBehindDashes = false;
    for (int i = 0; i < count && options.mistake.IsEmpty(); ++i) {
        CString const argument(arguments[i]);
        if (isBehindDashes || argument.Left(1) != "-") {
            options.files.AddTail(argument);
        } else if (argument == "--") {
            isBehindDashes = true;
        } else if (argument == "--help") {
            options.isHelp = true;
        } else if (argument == "--version") {
            options.isVersion = true;
        } else if (argument == "--out") {
            takeValue(++i < count ? arguments[i] : "", options.folder, options, "--out needs a folder");
        } else if (argument.Left(6) == "--out=") {
            takeValue(argument.Mid(6), options.folder, options, "--out needs a folder");
        } else if (argument.Left(9) == "-iniFile=") {
            takeValue(argument.Mid(9), options.profile, options, "-iniFile= needs a file");
        } else {
            options.mistake = "unknown option " + argument;
        }
    }
    bool const isForFiles = !options.isHelp && !options.isVersion;
    if (options.mistake.IsEmpty() && options.files.IsEmpty() && isForFiles)
        options.mistake = "no diagram is named";
}

CString usage()
{
    return "usage: modelgen [--out DIR] [-iniFile=INI] [--help] [--version] FILE...\n"
           "Generates C++ from the class diagrams in the named PlantUML files.\n"
           "\n"
           "  --out DIR      the folder to write to, instead of the one that is set\n"
           "  -iniFile=INI   the profile to take settings from, instead of the one that is found\n"
           "  --help         print this text\n"
           "  --version      print the version\n"
           "\n"
           "Exit codes: 0 all is written; 1 a file cannot be read or written;\n"
           "2 the arguments or a diagram are wrong, and nothing is written.\n";
}

CString versionLine()
{
    return "modelgen " MODELGEN_VERSION;
}

}  // namespace modelgen
