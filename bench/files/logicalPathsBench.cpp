// Expanding a path of six components, two of which are logical names that are known already, against
// the same with the standard library's paths.
#include "Foundtn/util/IAppProfileService.h"
#include "files/logicalPaths.h"
#include "platform/os/os.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <unordered_map>

namespace {

constexpr char path[] = "$ZK_BENCH_ROOT/Share/etc/$ZK_BENCH_SITE/models/railway.puml";
constexpr char root[] = "/opt/zentrika/8.4";
constexpr char site[] = "site of the bench";

void expandOurs(benchmark::State& state)
{
    SetEnvironmentVariableA("ZK_BENCH_ROOT", root);
    SetEnvironmentVariableA("ZK_BENCH_SITE", site);
    CString const given(path);
    for (auto _ : state) {
        CString result;
        benchmark::DoNotOptimize(expandLogicalPath(given, result));
        benchmark::DoNotOptimize(result);
    }
}

void translateOurs(benchmark::State& state)
{
    SetEnvironmentVariableA("ZK_BENCH_ROOT", root);
    SetEnvironmentVariableA("ZK_BENCH_SITE", site);
    CString const given(path);
    for (auto _ : state) {
        CString result(given);
        benchmark::DoNotOptimize(translateToFullPath(result));
        benchmark::DoNotOptimize(result);
    }
}

// What one would write by hand.
void expandStandard(benchmark::State& state)
{
    std::unordered_map<std::string, std::string> const names{{"ZK_BENCH_ROOT", root},
                                                             {"ZK_BENCH_SITE", site}};
    std::string const given(path);
    for (auto _ : state) {
        std::filesystem::path result;
        for (std::filesystem::path const& part : std::filesystem::path(given)) {
            std::string const& name = part.native();
            if (name.starts_with('$'))
                result /= names.at(name.substr(1));
            else
                result /= part;
        }
        benchmark::DoNotOptimize(result);
    }
}

BENCHMARK(expandOurs)->Name("expandLogicalPath, 6 components/ours");
BENCHMARK(expandStandard)->Name("expandLogicalPath, 6 components/std::filesystem::path");
BENCHMARK(translateOurs)->Name("translateToFullPath, 6 components/ours");

}  // namespace
