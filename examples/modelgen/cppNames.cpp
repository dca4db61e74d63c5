#include "examples/modelgen/cppNames.h"

#include "examples/modelgen/cppReserved.h"
#include "examples/modelgen/pumlLine.h"

#include <cstdint>
#include <utility>

namespace modelgen {

namespace {

constexpr int longestIdentifier = 120;
constexpr int longestFileStem = 80;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isLetterOrDigit(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// The code point that starts at `at`, which moves behind it. A byte that is not UTF-8 stands for itself.
std::uint32_t nextCodePoint(std::string_view text, std::size_t& at)
{
    auto const byte = [&](std::size_t i) { return std::uint32_t(static_cast<unsigned char>(text[i])); };
    std::uint32_t const first = byte(at++);
    std::size_t const more = first >= 0xF0 && first < 0xF8 ? 3 : first >= 0xE0 ? 2 : 1;
    if (first < 0xC2 || first >= 0xF8 || at + more > text.size())
        return first;
    std::uint32_t point = first & (0x3Fu >> more);
    for (std::size_t i = 0; i < more; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80)
            return first;
        point = point << 6 | (byte(at + i) & 0x3F);
    }
    at += more;
    return point;
}

// The start of a long name with a number made from all of it.
CString shortened(CString const& name, int length)
{
    if (name.GetLength() <= length)
        return name;
    std::uint32_t hash = 2166136261u;
    for (char const c : name.view())
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    CString number;
    number.Format("x%08x", hash);
    CString cut = name.Left(length - number.GetLength() - 1);
    return cut.TrimRight('_') + "_" + number;
}

}  // namespace

CString cppIdentifier(CString const& text)
{
    CString name;
    bool isGap = false;
    std::string_view const all = text.view();
    for (std::size_t at = 0; at < all.size();) {
        char const c = all[at];
        if (static_cast<unsigned char>(c) >= 0x80) {
            CString number;
            number.Format("u%04X", nextCodePoint(all, at));
            if (isGap && !name.IsEmpty())
                name += '_';
            name += number;
            isGap = false;
        } else {
            ++at;
            if (isLetterOrDigit(c)) {
                if (isGap && !name.IsEmpty())
                    name += '_';
                name += c;
                isGap = false;
            } else {
                isGap = true;
            }
        }
    }
    if (name.IsEmpty())
        name = "unnamed";
    if (isDigit(name[0]))
        name = CString("n") + name;
    name = shortened(name, longestIdentifier);
    if (isReservedWord(name.view()))
        name += '_';
    return name;
}

bool UniqueNames::take(CString const& name)
{
    bool& isTaken = taken_[name];
    return !std::exchange(isTaken, true);
}

CString UniqueNames::claim(CString const& wanted)
{
    if (take(wanted))
        return wanted;
    int& number = lastNumber_[wanted];
    number = number == 0 ? 1 : number;
    for (;;) {
        CString next;
        next.Format("%s%d", wanted, ++number);
        if (take(next))
            return next;
    }
}

CString CppNames::choose(CString const& name, UniqueNames& scope, bool isGlobal, Place place,
                         char const* what)
{
    CString identifier = cppIdentifier(name);
    if (isGlobal && isReservedGlobally(identifier.view()))
        identifier += '_';
    identifier = scope.claim(identifier);
    if (identifier != name)
        report_.warning(place, CString(what) + quoted(name) + " is called " + identifier + " in code");
    typeNames_.SetAt(identifier, true);
    return identifier;
}

CString CppNames::chooseFile(CString const& identifier, UniqueNames& folder, Place place)
{
    CString stem = shortened(identifier, longestFileStem);
    CString lower = stem;
    lower.MakeLower();
    if (isDeviceName(lower.view())) {
        stem += '_';
        lower += '_';
    }
    CString const unique = folder.claim(lower);
    stem += unique.Mid(lower.GetLength());
    if (stem != identifier)
        report_.warning(place, CString("the files of ") + quoted(identifier) + " are called " + quoted(stem));
    return stem;
}

CppNames::CppNames(Model const& model, Report& report) : report_(report)
{
    std::vector<UniqueNames> scopes(model.packages().size());
    std::vector<UniqueNames> folders(model.packages().size());
    // A member called so would hide what generated code calls by this name.
    typeNames_.SetAt("std", true);

    // Classes come first: a package that is called like a class beside it gives way.
    std::vector<CString> fileStems;
    for (Classifier const& classifier : model.classifiers()) {
        std::size_t const package = std::size_t(classifier.package->index);
        CppPlace place;
        place.name = choose(classifier.name, scopes[package], package == 0, classifier.place, "class ");
        fileStems.push_back(chooseFile(place.name, folders[package], classifier.place));
        places_.push_back(std::move(place));
    }

    std::vector<CString> paths(1);
    std::vector<CString> tops(1);  // the outermost namespace of each package
    NameSet innerNames;
    namespaces_.emplace_back();
    for (std::size_t i = 1; i < model.packages().size(); ++i) {  // parents stand before their children
        Package const& package = model.packages()[i];
        std::size_t const parent = std::size_t(package.parent->index);
        CString const name = choose(package.name, scopes[parent], parent == 0, package.place, "package ");
        CString const folder = chooseFile(name, folders[parent], package.place);
        namespaces_.push_back(parent == 0 ? name : namespaces_[parent] + "::" + name);
        paths.push_back(paths[parent] + folder + "/");
        tops.push_back(parent == 0 ? name : tops[parent]);
        if (parent != 0)
            innerNames.SetAt(name, true);
    }
    for (CppPlace const& place : places_)
        innerNames.SetAt(place.name, true);
    for (Classifier const& classifier : model.classifiers()) {
        std::size_t const package = std::size_t(classifier.package->index);
        CppPlace& place = places_[std::size_t(classifier.index)];
        place.stem = paths[package] + fileStems[std::size_t(classifier.index)];
        CString const& top = package == 0 ? place.name : tops[package];
        // Where the first part means something else in some scope, only a name from the very top is clear.
        bool const isUnclear = package == 0 || innerNames.PLookup(top) != nullptr;
        place.qualified =
            (isUnclear ? "::" : "") + namespaces_[package] + (package == 0 ? "" : "::") + place.name;
    }
}

}  // namespace modelgen
