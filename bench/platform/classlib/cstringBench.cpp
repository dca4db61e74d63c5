// CString against std::string on the same work, and Format against snprintf.
#include "platform/classlib/CString.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

namespace {

constexpr char shortText[] = "model.cpp";
std::string const longText = [] {
    std::string text;
    for (int i = 0; i < 40; ++i)
        text += "src/platform/component" + std::to_string(i) + "/model.cpp;";
    return text;
}();

void define(char const* name, void (*run)(benchmark::State&))
{
    benchmark::RegisterBenchmark(name, run);
}

template <class String>
void copy(benchmark::State& state, char const* text)
{
    String const original(text);
    for (auto _ : state) {
        String copied(original);
        benchmark::DoNotOptimize(copied);
    }
}

template <class String>
void make(benchmark::State& state, char const* text)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(text);
        String made(text);
        benchmark::DoNotOptimize(made);
    }
}

template <class String>
void assign(benchmark::State& state, char const* text)
{
    String const original(text);
    String target;
    for (auto _ : state) {
        target = original;
        benchmark::DoNotOptimize(target);
    }
}

template <class String>
void move(benchmark::State& state, char const* text)
{
    String a(text);
    String b;
    for (auto _ : state) {
        b = std::move(a);
        benchmark::DoNotOptimize(b);
        a = std::move(b);
        benchmark::DoNotOptimize(a);
    }
}

template <class String>
void concatenate(benchmark::State& state, char const* text)
{
    String const folder(text);
    String const file(shortText);
    for (auto _ : state) {
        String path = folder + "/" + file;
        benchmark::DoNotOptimize(path);
    }
}

template <class String>
void appendCharacters(benchmark::State& state)
{
    for (auto _ : state) {
        String text;
        for (int i = 0; i < 1000; ++i) {
            text += static_cast<char>('a' + i % 26);
            benchmark::DoNotOptimize(text);
        }
    }
}

template <class String>
void appendTexts(benchmark::State& state)
{
    String const part(shortText);
    for (auto _ : state) {
        String text;
        for (int i = 0; i < 100; ++i) {
            text += part;
            text += ", ";
        }
        benchmark::DoNotOptimize(text);
    }
}

int find(CString const& text, char const* wanted)
{
    return text.Find(wanted);
}

std::size_t find(std::string const& text, char const* wanted)
{
    return text.find(wanted);
}

int find(CString const& text, char wanted)
{
    return text.Find(wanted);
}

std::size_t find(std::string const& text, char wanted)
{
    return text.find(wanted);
}

int findLast(CString const& text, char wanted)
{
    return text.ReverseFind(wanted);
}

std::size_t findLast(std::string const& text, char wanted)
{
    return text.rfind(wanted);
}

int findOneOf(CString const& text, char const* wanted)
{
    return text.FindOneOf(wanted);
}

std::size_t findOneOf(std::string const& text, char const* wanted)
{
    return text.find_first_of(wanted);
}

template <class String, class Wanted>
void findIn(benchmark::State& state, char const* text, Wanted wanted)
{
    String const searched(text);
    for (auto _ : state) {
        benchmark::DoNotOptimize(wanted);
        benchmark::DoNotOptimize(find(searched, wanted));
    }
}

template <class String>
void findLastIn(benchmark::State& state, char const* text, char wanted)
{
    String const searched(text);
    for (auto _ : state) {
        benchmark::DoNotOptimize(wanted);
        benchmark::DoNotOptimize(findLast(searched, wanted));
    }
}

template <class String>
void findOneOfIn(benchmark::State& state, char const* text)
{
    String const searched(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(findOneOf(searched, "#?"));
}

// What users of std::string write: replace at each place found.
void replaceAll(std::string& text, char const* from, char const* to)
{
    std::size_t const fromLength = std::strlen(from);
    std::size_t const toLength = std::strlen(to);
    for (std::size_t at = 0; (at = text.find(from, at, fromLength)) != std::string::npos; at += toLength)
        text.replace(at, fromLength, to, toLength);
}

void replaceAll(CString& text, char const* from, char const* to)
{
    text.Replace(from, to);
}

template <class String>
void replaceIn(benchmark::State& state, char const* text, char const* from, char const* to)
{
    String const original(text);
    for (auto _ : state) {
        String changed(original);
        replaceAll(changed, from, to);
        benchmark::DoNotOptimize(changed);
    }
}

template <class String>
void compare(benchmark::State& state, char const* text)
{
    String const a(text);
    String const b(text);
    for (auto _ : state) {
        benchmark::DoNotOptimize(a == b);
        benchmark::DoNotOptimize(a < b);
    }
}

template <class... Arguments>
void formatOurs(benchmark::State& state, char const* format, Arguments... arguments)
{
    CString text;
    for (auto _ : state) {
        text.Format(format, arguments...);
        benchmark::DoNotOptimize(text);
    }
}

template <class... Arguments>
void formatPeer(benchmark::State& state, char const* format, Arguments... arguments)
{
    char buffer[512];
    for (auto _ : state) {
        std::snprintf(buffer, sizeof buffer, format, arguments...);
        benchmark::DoNotOptimize(buffer);
    }
}

template <class... Arguments>
void defineFormat(std::string const& name, char const* format, Arguments... arguments)
{
    benchmark::RegisterBenchmark((name + "/ours").c_str(),
                                 [=](benchmark::State& state) { formatOurs(state, format, arguments...); });
    benchmark::RegisterBenchmark((name + "/snprintf").c_str(),
                                 [=](benchmark::State& state) { formatPeer(state, format, arguments...); });
}

#define DEFINE(name, function, ...)                                                                          \
    define(name "/ours", [](benchmark::State& state) { function<CString>(__VA_ARGS__); });                   \
    define(name "/std::string", [](benchmark::State& state) { function<std::string>(__VA_ARGS__); })

bool const defined = [] {
    DEFINE("make, short", make, state, shortText);
    DEFINE("make, long", make, state, longText.c_str());
    DEFINE("copy, short", copy, state, shortText);
    DEFINE("copy, long", copy, state, longText.c_str());
    DEFINE("assign, short", assign, state, shortText);
    DEFINE("assign, long", assign, state, longText.c_str());
    DEFINE("move there and back, short", move, state, shortText);
    DEFINE("move there and back, long", move, state, longText.c_str());
    DEFINE("concatenate, short", concatenate, state, "src");
    DEFINE("concatenate, medium", concatenate, state, "src/platform/classlib");
    DEFINE("concatenate, long", concatenate, state, longText.c_str());
    DEFINE("append 1000 characters", appendCharacters, state);
    DEFINE("append 200 texts", appendTexts, state);
    DEFINE("find a character, short", findIn, state, shortText, '.');
    DEFINE("find a character, long", findIn, state, longText.c_str(), '#');
    DEFINE("find a text, short", findIn, state, shortText, "cpp");
    DEFINE("find a text, long", findIn, state, longText.c_str(), "component39/model");
    DEFINE("find the last character, long", findLastIn, state, longText.c_str(), '#');
    DEFINE("find one of a set, long", findOneOfIn, state, longText.c_str());
    DEFINE("replace, short", replaceIn, state, shortText, ".cpp", ".h");
    DEFINE("replace, long, same length", replaceIn, state, longText.c_str(), "/", "\\");
    DEFINE("replace, long, growing", replaceIn, state, longText.c_str(), "model", "diagram");
    DEFINE("replace, long, shrinking", replaceIn, state, longText.c_str(), "component", "c");
    DEFINE("replace, long, nothing found", replaceIn, state, longText.c_str(), "#", "c");
    DEFINE("compare, short", compare, state, shortText);
    DEFINE("compare, long", compare, state, longText.c_str());

    defineFormat("format \"%d\"", "%d", 1234567);
    defineFormat("format \"%s\"", "%s", "model.cpp");
    defineFormat("format \"%s(%d): %s\"", "%s(%d): %s", "src/model.cpp", 1234, "a class has no name");
    defineFormat("format \"(%d,%d,%d,%d)\"", "(%d,%d,%d,%d)", 10, 20, 1110, 2220);
    defineFormat("format \"%08x %-10s|\"", "%08x %-10s|", 0xABCDEF, "model");
    defineFormat("format \"%s,%.3f,%d\"", "%s,%.3f,%d", "model", 12.345, 7);
    return true;
}();

}  // namespace
