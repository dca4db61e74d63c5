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

// A path of 1 MB and one of ten times less, of the pieces that make a search from the start slow.
CString longPath(std::string const& piece, std::size_t length)
{
    std::string path;
    while (path.size() < length)
        path += piece;
    return CString(std::string_view(path));
}

void cleanLong(benchmark::State& state, std::string const& piece, std::size_t length)
{
    CString const path = longPath(piece, length);
    for (auto _ : state) {
        CString copy(path);
        omCleanPath(copy, '/', true, true, false);
        benchmark::DoNotOptimize(copy);
    }
    state.SetBytesProcessed(std::int64_t(state.iterations()) * path.GetLength());
}

void cutLong(benchmark::State& state, std::string const& piece, std::size_t length)
{
    CString const path = longPath(piece, length);
    for (auto _ : state) {
        CString copy(path);
        omCutMidDDot(copy, '/');
        benchmark::DoNotOptimize(copy);
    }
    state.SetBytesProcessed(std::int64_t(state.iterations()) * path.GetLength());
}

void relateLong(benchmark::State& state, std::size_t length)
{
    CString const target = longPath("a/", length);
    CString const base = longPath("a/", length / 2) + longPath("b/", length / 2);
    for (auto _ : state) {
        CString way;
        omGetRelativePath(target, base, way, '/');
        benchmark::DoNotOptimize(way);
    }
    state.SetBytesProcessed(std::int64_t(state.iterations()) * target.GetLength());
}

constexpr std::size_t megabyte = 1000000;

BENCHMARK_CAPTURE(cleanLong, cancelling, "a/../", megabyte)
    ->Name("omCleanPath, 1 MB of cancelling pairs/ours");
BENCHMARK_CAPTURE(cleanLong, cancellingShort, "a/../", megabyte / 10)
    ->Name("omCleanPath, 100 KB of cancelling pairs/ours");
BENCHMARK_CAPTURE(cleanLong, climbing, "../", megabyte)->Name("omCleanPath, 1 MB of climbs/ours");
BENCHMARK_CAPTURE(cleanLong, staying, "./", megabyte)->Name("omCleanPath, 1 MB of dots/ours");
BENCHMARK_CAPTURE(cleanLong, doubled, "//", megabyte)->Name("omCleanPath, 1 MB of slashes/ours");
BENCHMARK_CAPTURE(cutLong, cancelling, "a/../", megabyte)
    ->Name("omCutMidDDot, 1 MB of cancelling pairs/ours");
BENCHMARK_CAPTURE(cutLong, cancellingShort, "a/../", megabyte / 10)
    ->Name("omCutMidDDot, 100 KB of cancelling pairs/ours");
BENCHMARK_CAPTURE(cutLong, climbing, "../", megabyte)->Name("omCutMidDDot, 1 MB of climbs/ours");
BENCHMARK_CAPTURE(relateLong, whole, megabyte)->Name("omGetRelativePath, 1 MB/ours");
BENCHMARK_CAPTURE(relateLong, tenth, megabyte / 10)->Name("omGetRelativePath, 100 KB/ours");

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
