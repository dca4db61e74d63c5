// Strings: substitution, translation and appending, against what people would pick instead.
#include "bench/support/englishText.h"
#include "bench/text/perlTime.h"
#include "text/SPString.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#if defined(ZK_BENCH_PCRE2)
#    define PCRE2_CODE_UNIT_WIDTH 8
#    include <pcre2.h>
#endif

namespace {

constexpr int matches = 500000;

// A word, a number of one to three digits, a blank.
std::string const& numbered()
{
    static std::string const result = [] {
        std::string text;
        for (int i = 0; i < matches; ++i)
            text += "word" + std::to_string(i % 1000) + " ";
        return text;
    }();
    return result;
}

#if defined(ZK_BENCH_PCRE2)
void substituteByPcre2(benchmark::State& state, bool compiled)
{
    std::vector<PCRE2_UCHAR> out(numbered().size() * 2);
    for (auto _ : state) {
        int error;
        PCRE2_SIZE offset;
        pcre2_code* const code = pcre2_compile(reinterpret_cast<PCRE2_SPTR>("([0-9]+)"),
                                               PCRE2_ZERO_TERMINATED, 0, &error, &offset, nullptr);
        if (compiled)
            pcre2_jit_compile(code, PCRE2_JIT_COMPLETE);
        PCRE2_SIZE length = out.size();
        benchmark::DoNotOptimize(pcre2_substitute(code, reinterpret_cast<PCRE2_SPTR>(numbered().data()),
                                                  numbered().size(), 0, PCRE2_SUBSTITUTE_GLOBAL, nullptr,
                                                  nullptr, reinterpret_cast<PCRE2_SPTR>("<$1>"),
                                                  PCRE2_ZERO_TERMINATED, out.data(), &length));
        pcre2_code_free(code);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(numbered().size()));
}
#endif

void addSubstitutions()
{
    benchmark::RegisterBenchmark("s, 500,000 numbers by <$1>/ours", [](benchmark::State& state) {
        for (auto _ : state) {
            state.PauseTiming();
            SPString text(numbered().c_str());
            state.ResumeTiming();
            benchmark::DoNotOptimize(text.s("([0-9]+)", "<$1>", "g"));
        }
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(numbered().size()));
    });
#if defined(ZK_BENCH_PCRE2)
    for (bool const compiled : {false, true})
        benchmark::RegisterBenchmark(
            compiled ? "s, 500,000 numbers by <$1>/PCRE2 JIT" : "s, 500,000 numbers by <$1>/PCRE2",
            [compiled](benchmark::State& state) { substituteByPcre2(state, compiled); });
#endif
    zk::bench::addPerl("s, 500,000 numbers by <$1>",
                       {zk::bench::perlText(numbered()), "$t =~ s/([0-9]+)/<$1>/g;", 1, numbered().size()});
}

std::string const& english()
{
    static std::string const result = zk::bench::englishText(4 << 20);
    return result;
}

void addTranslations()
{
    benchmark::RegisterBenchmark("tr a-z to A-Z in 4 MB/ours", [](benchmark::State& state) {
        SPString text(english().c_str());
        for (auto _ : state)
            benchmark::DoNotOptimize(text.tr("a-zA-Z", "A-Za-z"));
    });
    benchmark::RegisterBenchmark("tr a-z to A-Z in 4 MB/table loop", [](benchmark::State& state) {
        std::string text = english();
        unsigned char table[256];
        for (int c = 0; c < 256; ++c)
            table[c] = static_cast<unsigned char>(c >= 'a' && c <= 'z'       ? c - 32
                                                      : c >= 'A' && c <= 'Z' ? c + 32
                                                                             : c);
        benchmark::DoNotOptimize(table);
        for (auto _ : state) {
            for (char& c : text)
                c = static_cast<char>(table[static_cast<unsigned char>(c)]);
            benchmark::ClobberMemory();
        }
    });
    zk::bench::addPerl("tr a-z to A-Z in 4 MB", {zk::bench::perlText(english()), "$t =~ tr/a-zA-Z/A-Za-z/;"});

    benchmark::RegisterBenchmark("tr, delete and squeeze in 4 MB/ours", [](benchmark::State& state) {
        for (auto _ : state) {
            state.PauseTiming();
            SPString text(english().c_str());
            state.ResumeTiming();
            benchmark::DoNotOptimize(text.tr("a-zA-Z", "A-Z", "ds"));
        }
    });
    zk::bench::addPerl("tr, delete and squeeze in 4 MB",
                       {zk::bench::perlText(english()), "$t =~ tr/a-zA-Z/A-Z/ds;"});
}

constexpr int appended = 1000000;

void addAppending()
{
    benchmark::RegisterBenchmark("append 1,000,000 characters/ours", [](benchmark::State& state) {
        for (auto _ : state) {
            SPString text;
            for (int i = 0; i < appended; ++i)
                text += static_cast<char>('a' + i % 26);
            benchmark::DoNotOptimize(text.length());
        }
    });
    benchmark::RegisterBenchmark("append 1,000,000 characters/std::string", [](benchmark::State& state) {
        for (auto _ : state) {
            std::string text;
            for (int i = 0; i < appended; ++i)
                text += static_cast<char>('a' + i % 26);
            benchmark::DoNotOptimize(text.size());
        }
    });

    benchmark::RegisterBenchmark("append 1,000,000 words/ours", [](benchmark::State& state) {
        for (auto _ : state) {
            SPString text;
            for (int i = 0; i < appended; ++i)
                text += "word ";
            benchmark::DoNotOptimize(text.length());
        }
    });
    benchmark::RegisterBenchmark("append 1,000,000 words/std::string", [](benchmark::State& state) {
        for (auto _ : state) {
            std::string text;
            for (int i = 0; i < appended; ++i)
                text += "word ";
            benchmark::DoNotOptimize(text.size());
        }
    });

    benchmark::RegisterBenchmark("find the last word of 4 MB/ours", [](benchmark::State& state) {
        SPString const text((english() + "xylophone").c_str());
        SPString const part("xylophone");
        for (auto _ : state)
            benchmark::DoNotOptimize(text.index(part));
    });
    benchmark::RegisterBenchmark("find the last word of 4 MB/std::string", [](benchmark::State& state) {
        std::string const text = english() + "xylophone";
        std::string const part("xylophone");
        for (auto _ : state)
            benchmark::DoNotOptimize(text.find(part));
    });
    benchmark::RegisterBenchmark("find the first word of 4 MB backward/ours", [](benchmark::State& state) {
        SPString const text(("xylophone" + english()).c_str());
        SPString const part("xylophone");
        for (auto _ : state)
            benchmark::DoNotOptimize(text.rindex(part));
    });
    benchmark::RegisterBenchmark("find the first word of 4 MB backward/std::string",
                                 [](benchmark::State& state) {
                                     std::string const text = "xylophone" + english();
                                     std::string const part("xylophone");
                                     for (auto _ : state)
                                         benchmark::DoNotOptimize(text.rfind(part));
                                 });
}

[[maybe_unused]] bool const registered = [] {
    addSubstitutions();
    addTranslations();
    addAppending();
    return true;
}();

}  // namespace
