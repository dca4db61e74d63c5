// Cleaning paths of 60 characters, against the standard library and Qt.
#include "files/paths.h"

#include <benchmark/benchmark.h>

#ifdef ZK_BENCH_QT
#    include <QDir>
#    include <QString>
#endif

#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::size_t pathCount = 10000;

// Paths of about 60 characters; a fifth of the components are "." or "..".
std::vector<std::string> makePaths()
{
    std::mt19937 random(1);
    char const* const components[] = {"src",      "model",    "generated", "include", "a",
                                      "diagrams", "Zentrika", "..",        "."};
    std::vector<std::string> paths(pathCount);
    for (std::string& path : paths) {
        path = "/home";
        while (path.size() < 55) {
            path += '/';
            path += components[random() % std::size(components)];
        }
        path += "/f.cpp";
    }
    return paths;
}

std::vector<std::string> const& paths()
{
    static std::vector<std::string> const made = makePaths();
    return made;
}

// Measures `clean` over all paths; each call gets one path.
template <class Path, class Clean>
void cleanEach(benchmark::State& state, Clean clean)
{
    std::vector<Path> const given(paths().begin(), paths().end());
    std::size_t next = 0;
    for (auto _ : state) {
        auto result = clean(given[next]);
        benchmark::DoNotOptimize(result);
        next = next + 1 == given.size() ? 0 : next + 1;
    }
}

struct OwnPath : CString {
    OwnPath(std::string const& path) : CString(path.c_str()) { }
};

void cleanPath(benchmark::State& state)
{
    cleanEach<OwnPath>(state, [](CString const& path) {
        CString copy(path);
        omCleanPath(copy, '/', true, true, false);
        return copy;
    });
}

void cutMidDDot(benchmark::State& state)
{
    cleanEach<OwnPath>(state, [](CString const& path) {
        CString copy(path);
        omCutMidDDot(copy, '/');
        return copy;
    });
}

void lexicallyNormal(benchmark::State& state)
{
    cleanEach<std::filesystem::path>(
        state, [](std::filesystem::path const& path) { return path.lexically_normal(); });
}

BENCHMARK(cleanPath)->Name("omCleanPath, 60 characters/ours");
BENCHMARK(lexicallyNormal)->Name("omCleanPath, 60 characters/path::lexically_normal");
BENCHMARK(cutMidDDot)->Name("omCutMidDDot, 60 characters/ours");
BENCHMARK(lexicallyNormal)->Name("omCutMidDDot, 60 characters/path::lexically_normal");

#ifdef ZK_BENCH_QT

struct QtPath : QString {
    QtPath(std::string const& path) : QString(QString::fromStdString(path)) { }
};

void qtCleanPath(benchmark::State& state)
{
    cleanEach<QtPath>(state, [](QString const& path) { return QDir::cleanPath(path); });
}

BENCHMARK(qtCleanPath)->Name("omCleanPath, 60 characters/QDir::cleanPath");
BENCHMARK(qtCleanPath)->Name("omCutMidDDot, 60 characters/QDir::cleanPath");

#endif

}  // namespace
