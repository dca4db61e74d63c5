// Lists of strings: splitting, joining and sorting, against what people would pick instead.
#include "bench/text/perlTime.h"
#include "text/SPStringList.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#if defined(ZK_BENCH_GLIB)
#    include <glib.h>
#endif
#if defined(ZK_BENCH_ABSL)
#    include <absl/strings/str_join.h>
#endif

namespace {

constexpr int fields = 1000000;

std::string const& csv()
{
    static std::string const result = [] {
        std::string text;
        for (int i = 0; i < fields; ++i)
            text.append(i ? ",f" : "f").append(std::to_string(i * 7 % 10007));
        return text;
    }();
    return result;
}

void addSplitting()
{
    benchmark::RegisterBenchmark("split 1,000,000 fields/ours", [](benchmark::State& state) {
        SPString const text(csv().c_str());
        for (auto _ : state)
            benchmark::DoNotOptimize(text.split(",").count());
    });
#if defined(ZK_BENCH_GLIB)
    benchmark::RegisterBenchmark("split 1,000,000 fields/g_strsplit", [](benchmark::State& state) {
        for (auto _ : state) {
            char** const list = g_strsplit(csv().c_str(), ",", -1);
            benchmark::DoNotOptimize(list);
            g_strfreev(list);
        }
    });
#endif
    zk::bench::addPerl("split 1,000,000 fields", {zk::bench::perlText(csv()), "{ my @f = split(/,/, $t); }"});
}

void addJoining()
{
    benchmark::RegisterBenchmark("join 1,000,000 fields/ours", [](benchmark::State& state) {
        SPStringList const list = SPString(csv().c_str()).split(",");
        for (auto _ : state)
            benchmark::DoNotOptimize(list.join(", ").length());
    });
#if defined(ZK_BENCH_ABSL)
    benchmark::RegisterBenchmark("join 1,000,000 fields/absl::StrJoin", [](benchmark::State& state) {
        std::vector<std::string> list;
        SPStringList const source = SPString(csv().c_str()).split(",");
        for (int i = 0; i < source.count(); ++i)
            list.emplace_back(source[i]);
        for (auto _ : state)
            benchmark::DoNotOptimize(absl::StrJoin(list, ", "));
    });
#endif
    zk::bench::addPerl("join 1,000,000 fields",
                       {zk::bench::perlText(csv()) + " my @f = split(/,/, $t);", "my $j = join(q(, ), @f);"});
}

std::vector<std::string> const& shortStrings()
{
    static std::vector<std::string> const result = [] {
        std::mt19937 chance(1);
        std::vector<std::string> list(100000);
        for (std::string& text : list)
            for (unsigned length = 4 + chance() % 8; text.size() < length;)
                text += static_cast<char>('a' + chance() % 26);
        return list;
    }();
    return result;
}

void addSorting()
{
    benchmark::RegisterBenchmark("sort 100,000 strings/ours", [](benchmark::State& state) {
        SPStringList list;
        for (std::string const& text : shortStrings())
            list.push(text.c_str());
        for (auto _ : state)
            benchmark::DoNotOptimize(list.sort().count());
    });
    benchmark::RegisterBenchmark("sort 100,000 strings/std::stable_sort", [](benchmark::State& state) {
        for (auto _ : state) {
            std::vector<std::string> list = shortStrings();
            std::stable_sort(list.begin(), list.end());
            benchmark::DoNotOptimize(list.data());
        }
    });
    std::string lines;
    for (std::string const& text : shortStrings())
        lines += text + "\n";
    zk::bench::addPerl("sort 100,000 strings",
                       {zk::bench::perlText(lines) + " my @l = split(/\\n/, $t);", "{ my @s = sort @l; }"});
}

void addGrowing()
{
    benchmark::RegisterBenchmark("push 1,000,000 strings/ours", [](benchmark::State& state) {
        for (auto _ : state) {
            SPStringList list;
            for (int i = 0; i < fields; ++i)
                list.push("text");
            benchmark::DoNotOptimize(list.count());
        }
    });
    benchmark::RegisterBenchmark("push 1,000,000 strings/std::vector", [](benchmark::State& state) {
        for (auto _ : state) {
            std::vector<std::string> list;
            for (int i = 0; i < fields; ++i)
                list.push_back("text");
            benchmark::DoNotOptimize(list.data());
        }
    });
}

[[maybe_unused]] bool const registered = [] {
    addSplitting();
    addJoining();
    addSorting();
    addGrowing();
    return true;
}();

}  // namespace
