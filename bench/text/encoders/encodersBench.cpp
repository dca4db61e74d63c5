// base64 of 16 MB in lines of 72 characters, and escape forms of 10 MB of text.
#include "text/base64.h"
#include "text/escapes.h"

#include <benchmark/benchmark.h>

#ifdef ZK_BENCH_GLIB
#    include <glib.h>
#endif
#ifdef ZK_BENCH_OPENSSL
#    include <openssl/evp.h>
#endif

#include <cstring>
#include <random>
#include <string>

namespace {

constexpr std::size_t plainLength = 16u << 20;

std::string const& plain()
{
    static std::string const bytes = [] {
        std::string text(plainLength, '\0');
        std::mt19937_64 random(1);
        for (std::size_t i = 0; i + 8 <= text.size(); i += 8) {
            auto const word = random();
            std::memcpy(&text[i], &word, 8);
        }
        return text;
    }();
    return bytes;
}

std::string encodedPlain()
{
    std::string code(plainLength / 3 * 4 + plainLength / 54 + 16, '\0');
    base64::encoder encoder;
    long length = encoder.encode(plain().data(), long(plainLength), code.data());
    length += encoder.encode_end(code.data() + length);
    code.resize(std::size_t(length));
    return code;
}

void countBytes(benchmark::State& state, std::size_t length)
{
    state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(length));
}

void encode(benchmark::State& state)
{
    std::string out(plainLength / 3 * 4 + plainLength / 54 + 16, '\0');
    for (auto _ : state) {
        base64::encoder encoder;
        long const length = encoder.encode(plain().data(), long(plainLength), out.data());
        benchmark::DoNotOptimize(encoder.encode_end(out.data() + length));
    }
    countBytes(state, plainLength);
}

void decode(benchmark::State& state)
{
    std::string const code = encodedPlain();
    std::string out(plainLength + 4, '\0');
    for (auto _ : state) {
        base64::decoder decoder;
        benchmark::DoNotOptimize(decoder.decode(code.data(), long(code.size()), out.data()));
    }
    countBytes(state, code.size());
}

void copy(benchmark::State& state)
{
    std::string const code = encodedPlain();
    std::string out(code.size(), '\0');
    for (auto _ : state) {
        std::memcpy(out.data(), code.data(), code.size());
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    countBytes(state, code.size());
}

BENCHMARK(encode)->Name("base64 encode, 16 MB/ours");
BENCHMARK(copy)->Name("base64 encode, 16 MB/memcpy");
BENCHMARK(decode)->Name("base64 decode, 16 MB/ours");
BENCHMARK(copy)->Name("base64 decode, 16 MB/memcpy");

#ifdef ZK_BENCH_GLIB

void glibEncode(benchmark::State& state)
{
    std::string out((plainLength / 3 + 1) * 4 + 4 + plainLength / 54 + 1, '\0');
    for (auto _ : state) {
        gint step = 0;
        gint save = 0;
        gsize length = g_base64_encode_step(reinterpret_cast<guchar const*>(plain().data()), plainLength,
                                            TRUE, out.data(), &step, &save);
        length += g_base64_encode_close(TRUE, out.data() + length, &step, &save);
        benchmark::DoNotOptimize(length);
    }
    countBytes(state, plainLength);
}

void glibDecode(benchmark::State& state)
{
    std::string const code = encodedPlain();
    std::string out(plainLength + 4, '\0');
    for (auto _ : state) {
        gint step = 0;
        guint save = 0;
        benchmark::DoNotOptimize(g_base64_decode_step(code.data(), code.size(),
                                                      reinterpret_cast<guchar*>(out.data()), &step, &save));
    }
    countBytes(state, code.size());
}

BENCHMARK(glibEncode)->Name("base64 encode, 16 MB/GLib");
BENCHMARK(glibDecode)->Name("base64 decode, 16 MB/GLib");

#endif
#ifdef ZK_BENCH_OPENSSL

void opensslEncode(benchmark::State& state)
{
    std::string out(plainLength / 3 * 4 + plainLength / 48 + 128, '\0');
    EVP_ENCODE_CTX* const context = EVP_ENCODE_CTX_new();
    for (auto _ : state) {
        int length = 0;
        int rest = 0;
        auto* const to = reinterpret_cast<unsigned char*>(out.data());
        EVP_EncodeInit(context);
        EVP_EncodeUpdate(context, to, &length, reinterpret_cast<unsigned char const*>(plain().data()),
                         int(plainLength));
        EVP_EncodeFinal(context, to + length, &rest);
        benchmark::DoNotOptimize(length + rest);
    }
    EVP_ENCODE_CTX_free(context);
    countBytes(state, plainLength);
}

void opensslDecode(benchmark::State& state)
{
    std::string const code = encodedPlain();
    std::string out(plainLength + 128, '\0');
    EVP_ENCODE_CTX* const context = EVP_ENCODE_CTX_new();
    for (auto _ : state) {
        int length = 0;
        int rest = 0;
        auto* const to = reinterpret_cast<unsigned char*>(out.data());
        EVP_DecodeInit(context);
        EVP_DecodeUpdate(context, to, &length, reinterpret_cast<unsigned char const*>(code.data()),
                         int(code.size()));
        EVP_DecodeFinal(context, to + length, &rest);
        benchmark::DoNotOptimize(length + rest);
    }
    EVP_ENCODE_CTX_free(context);
    countBytes(state, code.size());
}

BENCHMARK(opensslEncode)->Name("base64 encode, 16 MB/OpenSSL EVP");
BENCHMARK(opensslDecode)->Name("base64 decode, 16 MB/OpenSSL EVP");

#endif

// 10 MB of words, a mark to escape after each `distance` characters; 0 for none.
std::string textWithMarks(std::size_t distance, char mark)
{
    std::string text(10u << 20, 'x');
    for (std::size_t i = 0; distance && i < text.size(); i += distance)
        text[i] = mark;
    return text;
}

void xmlEncode(benchmark::State& state, std::size_t distance)
{
    std::string const text = textWithMarks(distance, '<');
    for (auto _ : state)
        benchmark::DoNotOptimize(omString2XMLEncodedValue(text.c_str()));
    countBytes(state, text.size());
}

void xmlDecode(benchmark::State& state, std::size_t distance)
{
    CString const text = omString2XMLEncodedValue(textWithMarks(distance, '<').c_str());
    for (auto _ : state)
        benchmark::DoNotOptimize(omXMLEncodedValue2String(text));
    countBytes(state, std::size_t(text.GetLength()));
}

void urlEncode(benchmark::State& state, std::size_t distance)
{
    CString const text(textWithMarks(distance, '/').c_str());
    for (auto _ : state) {
        CString copy(text);
        omEncodeUrl(copy);
        benchmark::DoNotOptimize(copy);
    }
    countBytes(state, std::size_t(text.GetLength()));
}

void urlDecode(benchmark::State& state, std::size_t distance)
{
    CString text(textWithMarks(distance, '/').c_str());
    omEncodeUrl(text);
    for (auto _ : state) {
        CString copy(text);
        omDecodeUrl(copy);
        benchmark::DoNotOptimize(copy);
    }
    countBytes(state, std::size_t(text.GetLength()));
}

BENCHMARK_CAPTURE(xmlEncode, none, 0)->Name("XML escape, 10 MB without marks/ours");
BENCHMARK_CAPTURE(xmlEncode, some, 40)->Name("XML escape, a mark per 40 characters/ours");
BENCHMARK_CAPTURE(xmlDecode, none, 0)->Name("XML unescape, 10 MB without marks/ours");
BENCHMARK_CAPTURE(xmlDecode, some, 40)->Name("XML unescape, a mark per 40 characters/ours");
BENCHMARK_CAPTURE(urlEncode, none, 0)->Name("URL escape, 10 MB without marks/ours");
BENCHMARK_CAPTURE(urlEncode, some, 40)->Name("URL escape, a mark per 40 characters/ours");
BENCHMARK_CAPTURE(urlDecode, none, 0)->Name("URL unescape, 10 MB without marks/ours");
BENCHMARK_CAPTURE(urlDecode, some, 40)->Name("URL unescape, a mark per 40 characters/ours");
BENCHMARK_CAPTURE(xmlEncode, all, 1)->Name("XML escape, nothing but marks/ours");
BENCHMARK_CAPTURE(xmlDecode, all, 1)->Name("XML unescape, nothing but marks/ours");
BENCHMARK_CAPTURE(urlEncode, all, 1)->Name("URL escape, nothing but marks/ours");
BENCHMARK_CAPTURE(urlDecode, all, 1)->Name("URL unescape, nothing but marks/ours");

}  // namespace
