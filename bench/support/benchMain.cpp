// Runs the benchmarks of a program and prints a table of ratios.
//
// Benchmarks are compared by name: "find in 1 MB/ours" against each
// "find in 1 MB/<peer>". Repetitions are interleaved, and the fastest one of
// each counts: noise on a shared machine only ever adds time. What counts is
// the processor's time, or the clock's for a benchmark that says
// UseRealTime(), as one that waits for others must.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Row {
    std::string subject;
    std::map<std::string, double> nanoseconds;  // by contender
    std::map<std::string, double> bytesPerSecond;
    std::vector<std::string> peers;  // in the order of their first run
};

class RatioReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(Context const&) override { return true; }

    void ReportRuns(std::vector<Run> const& runs) override
    {
        for (Run const& run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            std::string const name = run.run_name.function_name;
            if (run.error_occurred) {
                std::fprintf(stderr, "%s: %s\n", name.c_str(), run.error_message.c_str());
                failed_ = true;
                continue;
            }
            auto const slash = name.rfind('/');
            std::string const contender = slash == std::string::npos ? "ours" : name.substr(slash + 1);
            Row& row = rowOf(name.substr(0, slash));
            bool const byProcessor = run.run_name.time_type.empty();
            double const time = (byProcessor ? run.GetAdjustedCPUTime() : run.GetAdjustedRealTime()) *
                nanosecondsPerUnit(run.time_unit);
            auto const [entry, isNew] = row.nanoseconds.try_emplace(contender, time);
            if (isNew && contender != "ours")
                row.peers.push_back(contender);
            bool const isFastest = isNew || time < entry->second;
            entry->second = std::min(entry->second, time);
            if (auto const rate = run.counters.find("bytes_per_second");
                rate != run.counters.end() && isFastest)
                row.bytesPerSecond[contender] = rate->second;
        }
    }

    void Finalize() override
    {
        std::size_t width = 20;
        for (Row const& row : rows_)
            width = std::max(width, row.subject.size());
        std::printf("%-*s  %12s  %12s  %7s  %s\n", int(width), "work", "ours", "peer", "ratio",
                    "peer's name");
        for (Row const& row : rows_) {
            auto const ours = row.nanoseconds.find("ours");
            std::string const own = ours == row.nanoseconds.end() ? "-" : figure(row, "ours");
            if (row.peers.empty())
                std::printf("%-*s  %12s\n", int(width), row.subject.c_str(), own.c_str());
            for (std::string const& peer : row.peers) {
                std::printf("%-*s  %12s  %12s  ", int(width), row.subject.c_str(), own.c_str(),
                            figure(row, peer).c_str());
                if (ours == row.nanoseconds.end())
                    std::printf("%7s", "-");
                else
                    std::printf("%7.2f", ours->second / row.nanoseconds.at(peer));
                std::printf("  %s\n", peer.c_str());
            }
        }
        std::fflush(stdout);
    }

    bool failed() const { return failed_; }

private:
    static double nanosecondsPerUnit(benchmark::TimeUnit unit)
    {
        return 1e9 / benchmark::GetTimeUnitMultiplier(unit);
    }

    Row& rowOf(std::string const& subject)
    {
        auto const found =
            std::find_if(rows_.begin(), rows_.end(), [&](Row const& r) { return r.subject == subject; });
        if (found != rows_.end())
            return *found;
        rows_.push_back({subject, {}, {}, {}});
        return rows_.back();
    }

    // "12.3 ns", or "1.21 GB/s" where the benchmark counts bytes.
    static std::string figure(Row const& row, std::string const& contender)
    {
        char text[32];
        if (auto const rate = row.bytesPerSecond.find(contender); rate != row.bytesPerSecond.end())
            std::snprintf(text, sizeof text, rate->second >= 1e9 ? "%.2f GB/s" : "%.1f MB/s",
                          rate->second / (rate->second >= 1e9 ? 1e9 : 1e6));
        else if (double const time = row.nanoseconds.at(contender); time < 1e3)
            std::snprintf(text, sizeof text, "%.1f ns", time);
        else if (time < 1e6)
            std::snprintf(text, sizeof text, "%.2f us", time / 1e3);
        else
            std::snprintf(text, sizeof text, "%.2f ms", time / 1e6);
        return text;
    }

    std::vector<Row> rows_;
    bool failed_ = false;
};

// The settings of a measured run; what stands on the command line comes later and wins.
char repetitions[] = "--benchmark_repetitions=5";
char interleaving[] = "--benchmark_enable_random_interleaving=true";
char minimumTime[] = "--benchmark_min_time=0.1";

}  // namespace

int main(int argc, char** argv)
{
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, {repetitions, interleaving, minimumTime});
    int count = int(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.failed() ? 1 : 0;
}
