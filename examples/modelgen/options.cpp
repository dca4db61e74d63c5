#include "examples/modelgen/options.h"

namespace modelgen {

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
            if (i + 1 == count)
                options.mistake = "--out needs a folder";
            else
                options.folder = arguments[++i];
        } else if (argument.Left(6) == "--out=") {
            options.folder = argument.Mid(6);
        } else {
            options.mistake = "unknown option " + argument;
        }
    }
    if (!options.mistake.IsEmpty())
        return;
    if (options.folder.IsEmpty())
        options.mistake = "--out needs a folder";
    else if (options.files.IsEmpty() && !options.isHelp && !options.isVersion)
        options.mistake = "no diagram is named";
}

CString usage()
{
    return "usage: modelgen [--out DIR] [--help] [--version] FILE...\n"
           "Generates C++ from the class diagrams in the named PlantUML files.\n"
           "\n"
           "  --out DIR   the folder to write to; the current one if none is named\n"
           "  --help      print this text\n"
           "  --version   print the version\n"
           "\n"
           "Exit codes: 0 all is written; 1 a file cannot be read or written;\n"
           "2 the arguments or a diagram are wrong, and nothing is written.\n";
}

CString versionLine()
{
    return "modelgen " MODELGEN_VERSION;
}

}  // namespace modelgen
