// Regular expressions against the engines that people would pick instead.
#include "bench/support/englishText.h"
#include "bench/text/perlTime.h"
#include "text/Regexp.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#if defined(ZK_BENCH_PCRE2)
#    define PCRE2_CODE_UNIT_WIDTH 8
#    include <pcre2.h>
#endif
#if defined(ZK_BENCH_BOOST_REGEX)
#    include <boost/regex.hpp>
#endif

namespace {

// Each engine: made from a pattern; find() gives the end of the first match
// from `text` on, or null, and failed() whether it has given up on one.

class Ours {
public:
    static constexpr char const* name = "ours";

    explicit Ours(char const* pattern) : expression_(regcomp(pattern)) { }
    ~Ours() { std::free(expression_); }
    char const* find(char const* text, char const*)
    {
        return regexec(expression_, text) ? expression_->endp[0] : nullptr;
    }
    bool failed() const { return false; }

private:
    regexp* expression_;
};

#if defined(ZK_BENCH_PCRE2)

template <bool compiled>
class Pcre2 {
public:
    static constexpr char const* name = compiled ? "PCRE2 JIT" : "PCRE2";

    explicit Pcre2(char const* pattern)
    {
        int error;
        PCRE2_SIZE offset;
        code_ = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern), PCRE2_ZERO_TERMINATED,
                              PCRE2_DOTALL | PCRE2_DOLLAR_ENDONLY, &error, &offset, nullptr);
        if (compiled)
            pcre2_jit_compile(code_, PCRE2_JIT_COMPLETE);
        data_ = pcre2_match_data_create_from_pattern(code_, nullptr);
        context_ = pcre2_match_context_create(nullptr);
        pcre2_set_match_limit(context_, 50000000);
        if (compiled) {
            stack_ = pcre2_jit_stack_create(32 << 10, 64 << 20, nullptr);
            pcre2_jit_stack_assign(context_, nullptr, stack_);
        }
    }
    ~Pcre2()
    {
        pcre2_jit_stack_free(stack_);
        pcre2_match_context_free(context_);
        pcre2_match_data_free(data_);
        pcre2_code_free(code_);
    }
    char const* find(char const* text, char const* end)
    {
        PCRE2_SPTR const subject = reinterpret_cast<PCRE2_SPTR>(text);
        std::size_t const length = static_cast<std::size_t>(end - text);
        int const found = compiled
            ? pcre2_jit_match(code_, subject, length, 0, 0, data_, context_)
            : pcre2_match(code_, subject, length, 0, PCRE2_NO_UTF_CHECK, data_, context_);
        failed_ = failed_ || (found < 0 && found != PCRE2_ERROR_NOMATCH);
        return found > 0 ? text + pcre2_get_ovector_pointer(data_)[1] : nullptr;
    }
    bool failed() const { return failed_; }

private:
    pcre2_code* code_;
    pcre2_match_data* data_;
    pcre2_match_context* context_;
    pcre2_jit_stack* stack_ = nullptr;
    bool failed_ = false;
};

#endif

#if defined(ZK_BENCH_BOOST_REGEX)

class Boost {
public:
    static constexpr char const* name = "Boost.Regex";

    explicit Boost(char const* pattern) : expression_(pattern) { }
    char const* find(char const* text, char const* end)
    {
        try {
            return boost::regex_search(text, end, match_, expression_) ? match_[0].second : nullptr;
        } catch (std::runtime_error const&) {  // too complex for it
            failed_ = true;
            return nullptr;
        }
    }
    bool failed() const { return failed_; }

private:
    boost::regex expression_;
    boost::cmatch match_;
    bool failed_ = false;
};

#endif

std::string const& text()
{
    static std::string const result = zk::bench::englishText(8 << 20);
    return result;
}

template <class Engine>
std::size_t countMatches(Engine& engine, std::string const& subject)
{
    std::size_t count = 0;
    char const* const end = subject.data() + subject.size();
    for (char const* at = subject.c_str(); (at = engine.find(at, end)); ++count)
        continue;
    return count;
}

template <class Engine>
void countInText(benchmark::State& state, char const* pattern)
{
    Engine engine(pattern);
    std::size_t count = 0;
    for (auto _ : state)
        count = countMatches(engine, text());
    state.counters["matches"] = static_cast<double>(count);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text().size()));
}

template <class Engine>
void matchLines(benchmark::State& state, char const* pattern, std::vector<std::string> const& lines)
{
    Engine engine(pattern);
    std::size_t count = 0;
    for (auto _ : state) {
        count = 0;
        for (std::string const& line : lines)
            count += engine.find(line.c_str(), line.c_str() + line.size()) != nullptr;
    }
    state.counters["matches"] = static_cast<double>(count);
    state.counters["time/line"] =
        benchmark::Counter(static_cast<double>(lines.size()),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

template <class Engine>
void compile(benchmark::State& state, char const* pattern)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(std::make_unique<Engine>(pattern));
}

// Lines with a number and a name in front: "12:Watson: the rest".
std::vector<std::string> const& fieldLines()
{
    static std::vector<std::string> const result = [] {
        std::vector<std::string> lines = zk::bench::linesOf(zk::bench::englishText(200000));
        for (std::size_t i = 0; i < lines.size(); ++i)
            lines[i].insert(
                0, std::to_string(i * 37) + (i % 3 ? ":Watson, John:" : ":Sherlock Holmes, Baker Street:"));
        return lines;
    }();
    return result;
}

std::vector<std::string> const& linesOfFourLetters()
{
    static std::vector<std::string> const result = [] {
        std::vector<std::string> lines(4);
        unsigned state = 12345;
        for (std::string& line : lines) {
            while (line.size() < 2048)
                line += "abcd"[(state = state * 1103515245u + 12345u) >> 16 & 3];
        }
        return lines;
    }();
    return result;
}

std::vector<std::string> const& assignment()
{
    static std::vector<std::string> const result{"  width = 1024; // pixels"};
    return result;
}

struct Search {
    char const* what;
    char const* pattern;
};

constexpr Search searches[] = {{"find a literal, then a word", "Sherlock [A-Z][a-z]+"},
                               {"find one of four words", "cat|dog|bird|fish"},
                               {"find words in -ing", "[a-z]+ing"},
                               {"find names of two words", "[A-Z][a-z]+ [A-Z][a-z]+"},
                               {"find a rare name in a group", "(Irene|Mary) (Adler|Sutherland)"},
                               {"find the words around a comma", "([a-z]+), ([a-z]+)"},
                               {"find every word", "[A-Za-z]+"}};

struct LineSearch {
    char const* what;
    char const* pattern;
    std::vector<std::string> const& (*lines)();
};

constexpr LineSearch lineSearches[] = {
    {"split lines into fields", "^([^:]*):([^:]*):(.*)$", fieldLines},
    {"loop without its end", "(a|b|c|d)*z", linesOfFourLetters},
    {"loop without its ends", "(a|b|c|d)*[yz]", linesOfFourLetters},
    {"loop with an ambiguous body", "(a|b|ab|c|d)*([a-d]x|[a-d][a-d][^a-d])", linesOfFourLetters},
    {"two groups in 24 characters", "([a-z]+) *= *([0-9]+)", assignment}};

template <class Engine>
void addAll()
{
    auto const add = [](std::string const& what, auto function, auto... arguments) {
        benchmark::RegisterBenchmark((what + "/" + Engine::name).c_str(), function, arguments...);
    };
    for (Search const& search : searches)
        add(search.what, countInText<Engine>, search.pattern);

    for (LineSearch const& search : lineSearches) {
        Engine engine(search.pattern);
        for (std::string const& line : search.lines())
            engine.find(line.c_str(), line.c_str() + line.size());
        // A peer that gives up has no time to compare.
        if (engine.failed())
            std::fprintf(stderr, "%s: %s gives up, left out\n", search.what, Engine::name);
        else
            add(search.what, matchLines<Engine>, search.pattern, std::cref(search.lines()));
    }
    add("compile 50 characters", compile<Engine>, "^([A-Za-z_]+)[ ]*=[ ]*(\"[^\"]*\"|[0-9]+|true|fals)");
}

// Perl gets the same texts, and a single line often enough for its clock.
void addPerl()
{
    for (Search const& search : searches)
        zk::bench::addPerl(search.what,
                           {zk::bench::perlText(text()) + "my $n = 0;",
                            "$n++ while $t =~ /" + std::string(search.pattern) + "/gs;", 1, text().size()});
    for (LineSearch const& search : lineSearches) {
        std::string joined;
        for (std::string const& line : search.lines())
            joined += line + "\n";
        std::size_t const rounds = search.lines().size() == 1 ? 10000 : 1;
        zk::bench::addPerl(
            search.what,
            {zk::bench::perlText(joined) + "my @l = split(/\\n/, $t); my $n = 0;",
             "for (1.." + std::to_string(rounds) + ") { for (@l) { $n++ if /" + search.pattern + "/s } }",
             rounds});
    }
}

[[maybe_unused]] bool const registered = [] {
    addAll<Ours>();
#if defined(ZK_BENCH_PCRE2)
    addAll<Pcre2<false>>();
    addAll<Pcre2<true>>();
#endif
#if defined(ZK_BENCH_BOOST_REGEX)
    addAll<Boost>();
#endif
    addPerl();
    return true;
}();

}  // namespace
