// perlTime.h: how long Perl takes for the same work.
//
//   benchmark::RegisterBenchmark("split/Perl", zk::bench::runPerl, "my $t = 'a,b' x 1000;", "split(/,/, $t);");
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace zk::bench {

/// The seconds that `work` takes in a child process, after `preparation`; below 0 if Perl is absent.
/// Neither may hold a single quote.
inline double perlSeconds(std::string const& preparation, std::string const& work)
{
    std::string const command = "perl -MTime::HiRes=time -e '" + preparation + " my $zkStart = time; " +
        work + " ; printf(\"%.9f\\n\", time - $zkStart);' 2>/dev/null";
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const child(popen(command.c_str(), "r"), pclose);
    char line[64] = "";
    if (!child || !std::fgets(line, sizeof line, child.get()))
        return -1;
    return std::atof(line);
}

inline void runPerl(benchmark::State& state, std::string const& preparation, std::string const& work)
{
    for (auto _ : state)
        state.SetIterationTime(perlSeconds(preparation, work));
}

inline void addPerl(std::string const& what, std::string const& preparation, std::string const& work)
{
    if (perlSeconds("", "") < 0)
        return;
    benchmark::RegisterBenchmark((what + "/Perl").c_str(), [=](benchmark::State& state) {
        runPerl(state, preparation, work);
    })->UseManualTime();
}

}  // namespace zk::bench
