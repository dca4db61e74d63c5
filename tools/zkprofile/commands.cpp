#include "tools/zkprofile/commands.h"

#include "Foundtn/util/IAppProfileInterface.h"
#include "Foundtn/util/getEnv.h"
#include "Foundtn/util/profileOrigin.h"
#include "files/fileQueries.h"
#include "tools/zkprofile/keeping.h"
#include "tools/zkprofile/messages.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace zkprofile {

namespace {

IAppProfileInterface& reader()
{
    return *IAppProfileInterface::Instance();
}

// A profile that isn't there is a normal state: nothing is set in it.
void expectReadable(Profile const& profile)
{
    char name[4];
    SetLastError(ERROR_SUCCESS);
    GetPrivateProfileStringA(nullptr, nullptr, "", name, sizeof name, profile.name);
    switch (DWORD const error = GetLastError()) {
    case ERROR_SUCCESS:
    case ERROR_MORE_DATA:
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND: return;
    default: throw Failure(failed, "cannot read " + quoted(profile.file) + ": " + reasonFor(error));
    }
}

void write(CString const& section, char const* key, char const* value, Profile const& profile)
{
    // Not every system refuses to write to a read-only file.
    bool const isReadOnly = isThere(profile.file) && !omFileHasWritePermission(profile.file);
    if (isReadOnly || !WritePrivateProfileStringA(section, key, value, profile.name)) {
        DWORD const error = isReadOnly ? ERROR_ACCESS_DENIED : GetLastError();
        throw Failure(failed, "cannot write " + quoted(profile.file) + ": " + reasonFor(error));
    }
}

// The sections, or the keys of one. Of names that differ in case alone the first stays: no reader gets
// to the others.
std::vector<CString> names(char const* section, Profile const& profile)
{
    std::string list(4096, '\0');
    for (;; list.resize(list.size() * 4)) {
        DWORD const room = static_cast<DWORD>(list.size());
        DWORD const length = GetPrivateProfileStringA(section, nullptr, "", list.data(), room, profile.name);
        if (length < room - 2) {
            list.resize(length);
            break;
        }
    }
    std::vector<CString> found;
    std::unordered_set<std::string> known;
    for (std::size_t start = 0; start < list.size();) {
        std::size_t const end = std::min(list.find('\0', start), list.size());
        CString const name(std::string_view(list).substr(start, end - start));
        if (known.emplace(CString(name).MakeLower().view()).second)
            found.push_back(name);
        start = end + 1;
    }
    return found;
}

bool contains(std::vector<CString> const& list, CString const& name)
{
    return std::any_of(list.begin(), list.end(),
                       [&](CString const& item) { return item.CompareNoCase(name) == 0; });
}

ExitCode get(Arguments const& arguments, Profile const& profile, std::string& out)
{
    expectReadable(profile);
    CString value;
    bool const isSet = arguments.isProfileOnly
        ? reader().GetProfileValue(arguments.section, arguments.key, value, nullptr)
        : omGetEnvVar(arguments.section, arguments.key, value) != 0;
    if (!isSet || value.IsEmpty())
        return absent;
    out.append(value.view()).push_back('\n');
    return done;
}

ExitCode set(Arguments const& arguments, Profile const& profile)
{
    std::string const mistake = whyNotKept(arguments.section, arguments.key, arguments.value);
    if (!mistake.empty())
        throw Failure(wrongArguments, mistake);
    write(arguments.section, arguments.key, asWritten(arguments.value), profile);
    return done;
}

// Of sections, or keys, with one name the first counts: each removal brings the next one up.
ExitCode remove(Arguments const& arguments, Profile const& profile)
{
    expectReadable(profile);
    char const* const section = arguments.hasKey ? arguments.section.GetString() : nullptr;
    char const* const key = arguments.hasKey ? arguments.key.GetString() : nullptr;
    CString const& name = arguments.hasKey ? arguments.key : arguments.section;
    ExitCode code = absent;
    for (; contains(names(section, profile), name); code = done)
        write(arguments.section, key, nullptr, profile);
    return code;
}

ExitCode list(Arguments const& arguments, Profile const& profile, std::string& out)
{
    expectReadable(profile);
    std::vector<CString> const sections = names(nullptr, profile);
    if (!arguments.hasSection) {
        for (CString const& section : sections)
            out.append(section.view()).push_back('\n');
        return done;
    }
    if (!contains(sections, arguments.section))
        return absent;
    for (CString const& key : names(arguments.section, profile)) {
        out.append(key.view()).push_back('=');
        out.append(reader().GetProfileStringA(arguments.section, key, nullptr).view()).push_back('\n');
    }
    return done;
}

ExitCode tellFile(Profile const& profile, std::string& out)
{
    out.append(profile.file.view()).push_back('\n');
    return isThere(profile.file) ? done : absent;
}

ExitCode origin(Arguments const& arguments, Profile const& profile, std::string& out)
{
    if (!arguments.hasSection)
        return tellFile(profile, out);
    expectReadable(profile);
    zk::ProfileOrigin const found = zk::profileOrigin(arguments.section, arguments.key);
    switch (found.source) {
    case zk::ProfileOrigin::profile:
        out.append("profile ").append(found.file.view());
        if (found.line != 0)
            out.append(":").append(std::to_string(found.line));
        break;
    case zk::ProfileOrigin::environment: out.append("environment ").append(arguments.key.view()); break;
    default: return absent;
    }
    out.push_back('\n');
    return done;
}

}  // namespace

bool isThere(CString const& file)
{
    return GetFileAttributesA(file) != INVALID_FILE_ATTRIBUTES;
}

ExitCode carryOut(Arguments const& arguments, Profile const& profile, std::string& out)
{
    switch (arguments.command) {
    case Arguments::get: return get(arguments, profile, out);
    case Arguments::set: return set(arguments, profile);
    case Arguments::remove: return remove(arguments, profile);
    case Arguments::list: return list(arguments, profile, out);
    default: return origin(arguments, profile, out);
    }
}

}  // namespace zkprofile
