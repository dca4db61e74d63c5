#include "tools/zkprofile/arguments.h"

#include <CLI/CLI.hpp>

#include <utility>
#include <vector>

namespace zkprofile {

namespace {

constexpr char description[] = "Reads and changes the settings of Zentrika.";

constexpr char footer[] = "Words behind the section are taken as they stand: set General Depth -1\n"
                          "\n"
                          "Exit codes: 0 done; 1 the setting is not there; 2 wrong arguments, and\n"
                          "nothing was touched; 3 a profile that cannot be read or written, or\n"
                          "an output that cannot be written.";

// The program's grammar, and what one command line said in it.
class Grammar {
public:
    Grammar() : program_(description, "zkprofile")
    {
        program_.set_help_flag("--help", "print this text");
        program_.set_version_flag("--version", "zkprofile " ZK_TOOL_VERSION, "print the version");
        program_.add_option("--file", file_, "the profile, instead of the one that the application finds")
            ->type_name("FILE");
        program_.require_subcommand(1);
        program_.allow_windows_style_options(false);  // there too a path is a path
        program_.footer(footer);
        program_.get_formatter()->label("SUBCOMMAND", "COMMAND");

        CLI::App& get =
            add(Arguments::get, "get", "print a value, of the profile or else of the environment");
        needSetting(get);
        get.add_flag("--profile-only", isProfileOnly_, "leave the environment out");

        CLI::App& set = add(Arguments::set, "set", "give a setting a value in the profile");
        needSetting(set);
        addWord(set, "VALUE", value_, "the value")->required();

        CLI::App& remove = add(Arguments::remove, "delete", "take a setting out of the profile");
        addSection(remove)->required();
        addWord(remove, "KEY", key_, "the setting's name; without it the whole section goes");

        addSection(
            add(Arguments::list, "list", "print the sections of the profile, or a section's settings"));

        CLI::App& origin = add(Arguments::origin, "origin", "tell where a value comes from");
        CLI::Option* const section = addSection(origin);
        section->needs(addWord(origin, "KEY", key_, "the setting's name"))
            ->description("the section; without it the profile's file is told");
    }

    Arguments read(int count, char const* const* words)
    {
        Arguments arguments;
        try {
            program_.parse(count, words);
            take(arguments);
        } catch (CLI::CallForHelp const&) {
            arguments.answer = program_.help();
        } catch (CLI::CallForVersion const&) {
            arguments.answer = program_.version() + '\n';
        } catch (CLI::RequiredError const& mistake) {
            arguments.mistake = program_.get_subcommands().empty() ? missingCommand() : mistake.what();
        } catch (CLI::ParseError const& mistake) {
            arguments.mistake = mistake.what();
        }
        return arguments;
    }

private:
    std::string missingCommand() const
    {
        std::vector<std::string> const rest = program_.remaining();
        return rest.empty() ? "a command is missing" : "unknown command '" + rest.front() + "'";
    }

    CLI::App& add(Arguments::Command command, char const* name, char const* text)
    {
        CLI::App* const added = program_.add_subcommand(name, text);
        added->positionals_at_end();
        added->fallthrough();  // --file may stand behind the command too
        added->group("Commands");
        commands_.emplace_back(added, command);
        return *added;
    }

    static CLI::Option* addWord(CLI::App& command, char const* name, std::string& word, char const* text)
    {
        return command.add_option(name, word, text)->type_name("");
    }

    CLI::Option* addSection(CLI::App& command)
    {
        return addWord(command, "SECTION", section_, "the section");
    }

    void needSetting(CLI::App& command)
    {
        addSection(command)->required();
        addWord(command, "KEY", key_, "the setting's name")->required();
    }

    void take(Arguments& arguments) const
    {
        for (auto const& [app, command] : commands_) {
            if (!app->parsed())
                continue;
            arguments.command = command;
            arguments.hasSection = app->count("SECTION") > 0;
            arguments.hasKey = command != Arguments::list && app->count("KEY") > 0;
        }
        arguments.hasFile = program_.count("--file") > 0;
        arguments.isProfileOnly = isProfileOnly_;
        arguments.file = CString(file_);
        arguments.section = CString(section_).Trim();
        arguments.key = CString(key_).Trim();
        arguments.value = CString(value_);
        // A script's variable that is not set makes such words.
        if (arguments.hasSection && arguments.section.IsEmpty())
            arguments.mistake = "the section's name is empty";
        else if (arguments.hasKey && arguments.key.IsEmpty())
            arguments.mistake = "the setting's name is empty";
        else if (arguments.hasFile && arguments.file.IsEmpty())
            arguments.mistake = "the file's name is empty";
    }

    CLI::App program_;
    std::vector<std::pair<CLI::App*, Arguments::Command>> commands_;
    std::string file_, section_, key_, value_;
    bool isProfileOnly_ = false;
};

}  // namespace

Arguments readArguments(int count, char const* const* words)
{
    return Grammar().read(count, words);
}

}  // namespace zkprofile
