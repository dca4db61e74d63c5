#include "tools/zkgencat/run.h"

#include "logging/CCgCodesetText.h"
#include "logging/util/CxFile.h"
#include "tools/zkgencat/Comparison.h"
#include "tools/zkgencat/Messages.h"
#include "tools/zkgencat/Source.h"
#include "tools/zkgencat/arguments.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <istream>
#include <iterator>
#include <memory>
#include <ostream>
#include <system_error>

namespace zkgencat {

namespace {

using Codeset = std::unique_ptr<CCgCodeset, decltype(&ccg_closeCodeset)>;

constexpr char const* standardInput = "-";

std::string readAll(std::istream& in, std::string const& name)
{
    std::string content{std::istreambuf_iterator<char>(in), {}};
    if (in.bad())
        throw Failure(failed, "cannot read " + quoted(name));
    return content;
}

std::string readFile(std::string const& name, std::istream& in)
{
    if (name == standardInput)
        return readAll(in, "standard input");
    std::error_code error;
    if (std::filesystem::is_directory(name, error))
        throw Failure(failed, "cannot read " + quoted(name) + ": it is a folder");
    errno = 0;
    std::ifstream file(name, std::ios::binary);
    if (!file)
        throw Failure(failed, "cannot read " + quoted(name) + ": " + std::generic_category().message(errno));
    return readAll(file, name);
}

Codeset openCodeset(std::string const& name)
{
    Codeset codeset(name.empty() ? nullptr : ccg_openCodeset(name.c_str()), ccg_closeCodeset);
    if (!name.empty() && !codeset)
        throw Failure(failed, "there is no code set " + quoted(name));
    return codeset;
}

// The text of a source in UTF-8.
std::string sourceText(std::string content, std::string const& name, Codeset const& codeset,
                       std::string const& codesetName)
{
    if (!codeset || codeset->kind == CCG_CODESET_UTF8)
        return content;
    codeset->lostCharacters = 0;
    std::string text = zk::logging::utf8OfCodeset(*codeset, content);
    if (codeset->lostCharacters > 0)
        throw Failure(mistaken, quoted(name) + " is not in the code set " + quoted(codesetName));
    return text;
}

bool isThere(std::string const& file)
{
    CxFileStatus status;
    return CxFileStat(file.c_str(), status).ok();
}

ExitCode compile(Arguments const& arguments, std::istream& in, std::ostream& err)
{
    Codeset const codeset = openCodeset(arguments.codeset);
    std::string const& catalog = arguments.files.front();
    Messages messages;
    if (!arguments.isNew && isThere(catalog))
        messages = readMessages(catalog);
    bool isMistaken = false;
    for (std::size_t i = 1; i < arguments.files.size(); ++i) {
        std::string const& name = arguments.files[i];
        std::string const text = sourceText(readFile(name, in), name, codeset, arguments.codeset);
        for (Mistake const& mistake : readSource(text, messages)) {
            err << name << ':' << mistake.line << ": " << mistake.text << '\n';
            isMistaken = true;
        }
    }
    if (isMistaken)
        return mistaken;
    writeMessages(catalog, messages);
    return done;
}

ExitCode check(Arguments const& arguments, std::ostream& err)
{
    Messages const reference = readMessages(arguments.files.front());
    bool isMistaken = false;
    for (std::size_t i = 1; i < arguments.files.size(); ++i)
        for (std::string const& mistake : compare(reference, readMessages(arguments.files[i]))) {
            err << arguments.files[i] << ": " << mistake << '\n';
            isMistaken = true;
        }
    return isMistaken ? mistaken : done;
}

ExitCode work(Arguments const& arguments, std::istream& in, std::ostream& out, std::ostream& err)
{
    switch (arguments.command) {
    case Arguments::compile: return compile(arguments, in, err);
    case Arguments::check: return check(arguments, err);
    case Arguments::dump: out << sourceOf(readMessages(arguments.files.front())); break;
    case Arguments::none: out << arguments.answer; break;
    }
    out.flush();
    if (!out)
        throw Failure(failed, "cannot write the output");
    return done;
}

}  // namespace

ExitCode run(int count, char const* const* words, std::istream& in, std::ostream& out, std::ostream& err)
{
    Arguments const arguments = readArguments(count, words);
    if (!arguments.mistake.empty()) {
        err << "zkgencat: " << arguments.mistake << "\nTry 'zkgencat --help'.\n";
        return wrongArguments;
    }
    try {
        return work(arguments, in, out, err);
    } catch (Failure const& failure) {
        err << "zkgencat: " << failure.what() << '\n';
        return failure.code;
    }
}

}  // namespace zkgencat
