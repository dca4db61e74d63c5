// perlTime.h: how much of the processor's time Perl takes for the same work.
//
//   zk::bench::addPerl("split 2,000 fields", {"my $t = q(a,b,) x 1000;", "my @f = split(/,/, $t);"});
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <list>
#include <memory>
#include <random>
#include <string>

namespace zk::bench {

/// The seconds that `work` takes in a child process, after `preparation`; below 0 if Perl is absent.
/// Neither may hold a single quote.
inline double perlSeconds(std::string const& preparation, std::string const& work)
{
    std::string const command = "perl -MTime::HiRes=clock_gettime,CLOCK_PROCESS_CPUTIME_ID -e '" +
        preparation + " my $zkStart = clock_gettime(CLOCK_PROCESS_CPUTIME_ID); " + work +
        " ; printf(\"%.9f\\n\", clock_gettime(CLOCK_PROCESS_CPUTIME_ID) - $zkStart);' 2>/dev/null";
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const child(popen(command.c_str(), "r"), pclose);
    char line[64] = "";
    if (!child || !std::fgets(line, sizeof line, child.get()))
        return -1;
    return std::atof(line);
}

/// Perl's statement that sets $t to `text`, through a file that lives as long as the program.
inline std::string perlText(std::string const& text)
{
    struct File {
        std::filesystem::path path;
        ~File() { std::filesystem::remove(path); }
    };
    static std::list<File> files;

    std::random_device chance;
    files.push_back({std::filesystem::temp_directory_path() / ("zk-bench-" + std::to_string(chance()))});
    std::string const path = files.back().path.string();
    std::ofstream(path, std::ios::binary) << text;
    return "my $t = do { local $/; open(my $f, q(<), q(" + path + ")); <$f> };";
}

/// What Perl is to do.
struct PerlWork {
    std::string preparation;
    std::string work;
    std::size_t rounds = 1;  ///< how often `work` does what the others do once
    std::size_t bytes = 0;   ///< of the text, for a row that counts bytes
};

/// Adds a row for Perl; none if it is absent or gives up.
inline void addPerl(std::string const& what, PerlWork const& perl)
{
    if (perlSeconds(perl.preparation, "") < 0)
        return;
    benchmark::RegisterBenchmark(
        (what + "/Perl").c_str(),
        [perl](benchmark::State& state) {
            for (auto _ : state)
                state.SetIterationTime(perlSeconds(perl.preparation, perl.work) / double(perl.rounds));
            if (perl.bytes > 0)
                state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(perl.bytes));
        })
        ->UseManualTime()
        ->Iterations(1);
}

}  // namespace zk::bench
