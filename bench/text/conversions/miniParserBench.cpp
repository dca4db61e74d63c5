// The mini parser on 10 MB of code, and on ten times less: time grows with the text and no faster.
#include "text/miniParser.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

constexpr std::size_t whole = 10u << 20;

CString repeated(std::string const& piece, std::size_t length)
{
    std::string text;
    while (text.size() < length)
        text += piece;
    return CString(std::string_view(text));
}

void countBytes(benchmark::State& state, CString const& text)
{
    state.SetBytesProcessed(std::int64_t(state.iterations()) * text.GetLength());
}

constexpr char arguments[] = "std::map<int, char> const& names, f(b, \"c,d\"), /* one, two */ x[3], a->b,\n";
constexpr char comments[] = "  // no label here, only a remark\n/* nor here */ \"nor in a text\" \n";

void splitFields(benchmark::State& state, std::size_t length, char const* piece)
{
    CString const text = repeated(piece, length);
    miniParser parser;
    for (auto _ : state) {
        CStringList fields;
        parser.splitBySeperators(text, fields);
        benchmark::DoNotOptimize(fields.GetCount());
    }
    countBytes(state, text);
}

void splitNested(benchmark::State& state, std::size_t length)
{
    CString const text = repeated("(", length / 2) + repeated(")", length / 2);
    miniParser parser;
    for (auto _ : state) {
        CStringList fields;
        parser.splitBySeperators(text, fields);
        benchmark::DoNotOptimize(fields.GetCount());
    }
    countBytes(state, text);
}

// One string of backslashes and nothing else: the quote at its end stands behind all of them.
void splitBackslashes(benchmark::State& state, std::size_t length)
{
    CString const text = "\"" + repeated("\\", length) + "\"";
    miniParser parser;
    for (auto _ : state) {
        CStringList fields;
        parser.splitBySeperators(text, fields);
        benchmark::DoNotOptimize(fields.GetCount());
    }
    countBytes(state, text);
}

void firstLabel(benchmark::State& state, std::size_t length)
{
    CString const text = repeated(comments, length) + "name(a, b)";
    miniParser parser;
    CString parameters;
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.getFirstLabel(text, parameters));
    countBytes(state, text);
}

void labelWithParameters(benchmark::State& state, std::size_t length)
{
    CString const text = "name(" + repeated(arguments, length) + ")";
    miniParser parser;
    CString parameters;
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.getFirstLabel(text, parameters));
    countBytes(state, text);
}

BENCHMARK_CAPTURE(splitFields, whole, whole, arguments)->Name("miniParser fields of 10 MB/ours");
BENCHMARK_CAPTURE(splitFields, tenth, whole / 10, arguments)->Name("miniParser fields of 1 MB/ours");
BENCHMARK_CAPTURE(splitFields, quotes, whole, "\"a\",")->Name("miniParser 10 MB of short strings/ours");
BENCHMARK_CAPTURE(splitNested, whole, whole)->Name("miniParser 10 MB of brackets/ours");
BENCHMARK_CAPTURE(splitBackslashes, whole, whole)->Name("miniParser 10 MB of backslashes/ours");
BENCHMARK_CAPTURE(firstLabel, whole, whole)->Name("miniParser first label behind 10 MB/ours");
BENCHMARK_CAPTURE(firstLabel, tenth, whole / 10)->Name("miniParser first label behind 1 MB/ours");
BENCHMARK_CAPTURE(labelWithParameters, whole, whole)->Name("miniParser parameters of 10 MB/ours");

}  // namespace
