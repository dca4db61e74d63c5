// CCgCodesetNames.cpp: how code sets are found by name, declared in CCgCodeset.h.
#include "logging/CCgCodesetText.h"
#include "logging/CCgMisc.h"
#include "logging/util/CxChars.h"
#include "logging/util/CxFile.h"
#include "logging/util/CxSystem.h"
#include "platform/os/codeSets.h"
#include "platform/os/os.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace zk::logging {

namespace {

constexpr char const* folderVariable = "QISDIR";
constexpr char const* codesetVariable = "QIS_CODESET";
constexpr char const* programsVariable = "BINDIR";

constexpr std::size_t leastConverterSize = 1760;
constexpr std::size_t converterMarkAt = 8;
constexpr std::string_view converterMark("ucv");
constexpr int mostAliases = 5;

CCgCodeset fixedUtf8{nullptr, CCG_CODESET_UTF8, "UTF8", 0};
CCgCodeset fixedBytes{nullptr, CCG_CODESET_BYTES, "OS", 0};

CCgCodeset* currentDefault = &fixedBytes;
CCgCodeset* currentSystem = &fixedBytes;
CCgCodeset* currentConsole = nullptr;
bool isStarted = false;

bool isFixed(CCgCodeset const* codeset) noexcept
{
    return codeset == &fixedUtf8 || codeset == &fixedBytes;
}

bool isSeparator(char c) noexcept
{
    return c == '/' || c == '\\';
}

std::string upper(std::string_view name)
{
    std::string result(name);
    for (char& c : result)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return result;
}

// The number of the user's code page for consoles or for texts; none for a locale that has none. Where
// the process's own code page is UTF-8, both are that.
std::string systemCodePage(LCTYPE fact)
{
    if (GetACP() == CP_UTF8)
        return std::to_string(CP_UTF8);
    char number[16] = "";
    GetLocaleInfoA(GetUserDefaultLCID(), fact, number, sizeof number);
    return std::strcmp(number, "0") == 0 ? std::string() : std::string(number);
}

// "ABC-850" and "ABC850": the letters tell who made it. Those of standards belong to the name, and a single digit
// is no code page's number.
std::string_view withoutMaker(std::string_view name) noexcept
{
    constexpr std::size_t length = 3;
    std::string_view const prefix = name.substr(0, length);
    bool const isPrefix = name.size() > length && std::all_of(prefix.begin(), prefix.end(), CxIsLetter) &&
        prefix != "ISO" && prefix != "UTF" && prefix != "UCS";
    std::string_view rest = name.substr(isPrefix ? length : 0);
    bool const isNumbered = std::none_of(rest.begin(), rest.end(), CxIsLetter) &&
        std::count_if(rest.begin(), rest.end(), CxIsDigit) > 1;
    return isPrefix && isNumbered ? rest : name;
}

std::uint16_t kindOf(os::CodeSet const& converter, std::string_view name)
{
    if (converter.isStateful())
        return CCG_CODESET_STATEFUL;
    if (os::codePageOf(name) == os::codePageOf("GB18030"))
        return CCG_CODESET_GB18030;
    if (converter.longestCharacter() > 2)
        return CCG_CODESET_MULTIBYTE;
    if (converter.longestCharacter() == 2)
        return CCG_CODESET_DOUBLE_BYTE;
    return converter.hasAscii() ? CCG_CODESET_SINGLE_BYTE : CCG_CODESET_EBCDIC;
}

CCgCodeset* newCodeset(std::string_view name, std::unique_ptr<os::CodeSet> converter)
{
    auto made = std::make_unique<CCgCodeset>();
    if (converter)
        made->kind = kindOf(*converter, name);
    name.copy(made->name, sizeof made->name - 1);
    made->converter = converter.release();
    return made.release();
}

// What is there without a file; null for another name.
CCgCodeset* builtIn(std::string_view name)
{
    if (os::codePageOf(name) == os::utf8CodePage)
        return &fixedUtf8;
    return name == "INTERNAL37" ? newCodeset(name, nullptr) : nullptr;
}

// By the normalised name, else as it was given: some names of the system need their "-".
CCgCodeset* ofSystem(std::string_view normalized, std::string_view given)
{
    if (CCgCodeset* const known = builtIn(normalized))
        return known;
    auto converter = os::CodeSet::open(normalized);
    if (!converter)
        converter = os::CodeSet::open(upper(given));
    return converter ? newCodeset(normalized, std::move(converter)) : nullptr;
}

struct CodesetFile {
    bool isConverter = false;
    std::string alias;  // of one that is none
};

// A converter or alias file; nothing if there is none.
std::optional<CodesetFile> readFile(std::string const& path)
{
    std::int32_t file;
    if (!CxFileOpen(file, path.c_str(), CX_FILE_READ).ok())
        return std::nullopt;
    // What is longer is a converter, or no name.
    char bytes[leastConverterSize];
    std::size_t length = 0;
    std::size_t done = 0;
    CCgResult result;
    do {
        result = CxFileRead(file, bytes + length, sizeof bytes - length, done);
        length += done;
    } while (result.ok() && done > 0 && length < sizeof bytes);
    CxFileClose(file);
    if (!result.ok())
        return std::nullopt;
    std::string_view const content(bytes, length);
    CodesetFile found;
    found.isConverter = length == leastConverterSize &&
        content.substr(converterMarkAt, converterMark.size()) == converterMark;
    for (char const c : content)
        if (static_cast<unsigned char>(c) > ' ' && c != '\x7F')
            found.alias += c;
    return found;
}

// Follows the file of a name in a folder, which ends in a separator or is none. Nothing if there is no such file;
// a null code set if it leads nowhere.
std::optional<CCgCodeset*> openInFolder(std::string const& folder, std::string name)
{
    std::optional<CodesetFile> file = readFile(folder + name);
    if (!file)
        return std::nullopt;
    for (int aliases = 0; file && !file->isConverter; ++aliases) {
        if (aliases == mostAliases)
            return nullptr;
        name = file->alias;
        if (CCgCodeset* const known = builtIn(name))
            return known;
        file = name.empty() ? std::nullopt : readFile(folder + name);
    }
    return ofSystem(ccg_normalizeCodesetName(name.c_str()), name);
}

std::string joined(std::initializer_list<std::string_view> parts)
{
    std::string path;
    for (std::string_view const part : parts) {
        path += part;
        path += os::nativeSeparator();
    }
    return path;
}

std::optional<CCgCodeset*> openByFile(std::string const& name)
{
    if (auto const slash = std::find_if(name.rbegin(), name.rend(), isSeparator); slash != name.rend()) {
        auto const nameAt = static_cast<std::size_t>(name.rend() - slash);
        auto const found = openInFolder(name.substr(0, nameAt), name.substr(nameAt));
        return found.value_or(nullptr);
    }
    std::string folders[4];  // the last is the current one
    if (auto const own = ccg_getQisDir()) {
        folders[0] = joined({*own, "codeset"});
        folders[1] = joined({*own});
    }
    if (auto const programs = CxGetEnvironment(programsVariable))
        folders[2] = joined({*programs, "..", "generic", "codeset"});
    for (std::string const& folder : folders) {
        bool const isCurrent = &folder == std::end(folders) - 1;
        if (folder.empty() && !isCurrent)
            continue;
        if (auto const found = openInFolder(folder, name))
            return found;
    }
    return std::nullopt;
}

CCgCodeset* openFirst(std::initializer_list<char const*> names)
{
    for (char const* const name : names)
        if (CCgCodeset* const codeset = ccg_openCodeset(name))
            return codeset;
    return &fixedBytes;
}

}  // namespace

void startCodesets()
{
    stopCodesets();
    auto const wanted = CxGetEnvironment(codesetVariable);
    currentDefault = openFirst({wanted ? wanted->c_str() : "OS", "DEFAULT"});
    currentSystem = openFirst({"OS", "OSDEFAULT"});
    currentConsole = ccg_openCodeset("DOS");
    isStarted = true;
}

void stopCodesets() noexcept
{
    isStarted = false;
    ccg_closeCodeset(std::exchange(currentDefault, &fixedBytes));
    ccg_closeCodeset(std::exchange(currentSystem, &fixedBytes));
    ccg_closeCodeset(std::exchange(currentConsole, nullptr));
}

CCgCodeset* consoleCodeset() noexcept
{
    return currentConsole;
}

CCgCodeset* startedDefaultCodeset() noexcept
{
    return isStarted ? currentDefault : nullptr;
}

}  // namespace zk::logging

using namespace zk::logging;

CCgCodeset* ccg_openCodeset(char const* name)
{
    if (!name)
        return nullptr;
    std::string const normalized = ccg_normalizeCodesetName(name);
    if (normalized.empty())
        return nullptr;
    if (CCgCodeset* const known = builtIn(normalized))
        return known;
    if (auto const found = openByFile(normalized))
        return *found;
    return ofSystem(normalized, name);
}

void ccg_closeCodeset(CCgCodeset* codeset)
{
    if (!codeset || isFixed(codeset))
        return;
    delete codeset->converter;
    delete codeset;
}

std::string ccg_normalizeCodesetName(char const* name)
{
    std::string_view const given(name ? name : "");
    if (std::any_of(given.begin(), given.end(), isSeparator))
        return std::string(given);
    std::string const large = upper(given);
    if (large == "DOS")
        return systemCodePage(LOCALE_IDEFAULTCODEPAGE);
    if (large == "WIN" || large == "OS")
        return systemCodePage(LOCALE_IDEFAULTANSICODEPAGE);
    std::string normalized;
    for (char const c : withoutMaker(large))
        if (CxIsDigit(c) || CxIsLetter(c))
            normalized += c;
    return normalized;
}

CCgCodeset* ccg_defaultCodeset() noexcept
{
    return currentDefault;
}

CCgCodeset* ccg_systemCodeset() noexcept
{
    return currentSystem;
}

bool ccg_setQisDir(char const* folder)
{
    return CxSetEnvironment(folderVariable, folder).ok();
}

std::optional<std::string> ccg_getQisDir()
{
    return CxGetEnvironment(folderVariable);
}
