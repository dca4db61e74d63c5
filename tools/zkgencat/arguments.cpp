#include "tools/zkgencat/arguments.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace zkgencat {

namespace {

constexpr char description[] = "Makes message catalogs of message sources, lists and compares them.\n"
                               "\n"
                               "  zkgencat [--new] [--from CODESET] CATALOG SOURCE...\n"
                               "  zkgencat --dump CATALOG\n"
                               "  zkgencat --check CATALOG OTHER...\n";

constexpr char footer[] = "Exit codes: 0 done; 1 the sources have mistakes or the catalogs differ, and\n"
                          "nothing was written; 2 wrong arguments; 3 a file that cannot be read or\n"
                          "written, or that is no catalog.";

}  // namespace

Arguments readArguments(int count, char const* const* words)
{
    Arguments arguments;
    bool dumps = false;
    bool checks = false;
    CLI::App program(description, "zkgencat");
    program.footer(footer);
    program.allow_windows_style_options(false);  // there too a path is a path
    program.set_help_flag("--help", "print this text");
    program.set_version_flag("--version", "zkgencat " ZK_TOOL_VERSION, "print the version");
    program.add_flag("--new", arguments.isNew, "forget what the catalog holds so far");
    program.add_option("--from", arguments.codeset, "the code set of the sources, if it is not UTF-8")
        ->type_name("CODESET");
    program.add_flag("--dump", dumps, "list a catalog as a source");
    program.add_flag("--check", checks,
                     "tell where values in the texts of others differ from those of the first");
    program
        .add_option("FILE", arguments.files,
                    "the catalog, then sources (\"-\" is the standard input) or other catalogs")
        ->type_name("");
    try {
        program.parse(count, words);
    } catch (CLI::CallForHelp const&) {
        arguments.answer = program.help();
        return arguments;
    } catch (CLI::CallForVersion const&) {
        arguments.answer = program.version() + '\n';
        return arguments;
    } catch (CLI::ParseError const& mistake) {
        arguments.mistake = mistake.what();
        return arguments;
    }

    arguments.command = dumps ? Arguments::dump : checks ? Arguments::check : Arguments::compile;
    std::size_t const files = arguments.files.size();
    bool const hasCodeset = program.count("--from") > 0;
    if (dumps && checks)
        arguments.mistake = "--dump and --check exclude each other";
    else if ((dumps || checks) && (arguments.isNew || hasCodeset))
        arguments.mistake = "--new and --from are for the making of a catalog";
    else if (files == 0)
        arguments.mistake = "a catalog is missing";
    else if (dumps && files > 1)
        arguments.mistake = "--dump takes one catalog";
    else if (checks && files == 1)
        arguments.mistake = "a catalog to compare with is missing";
    else if (files == 1 && !dumps)
        arguments.mistake = "a source is missing";
    else if (hasCodeset && arguments.codeset.empty())
        arguments.mistake = "the code set's name is empty";
    else if (std::any_of(arguments.files.begin(), arguments.files.end(),
                         [](auto const& f) { return f.empty(); }))
        arguments.mistake = "a file's name is empty";
    return arguments;
}

}  // namespace zkgencat
