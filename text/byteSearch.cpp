#include "text/byteSearch.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <string_view>

#if defined(__SSE2__)
#    include <immintrin.h>
#    define ZK_VECTOR_SEARCH 1
// Whole aligned blocks are read, so a search may read bytes next to the text.
// They lie in the same block, hence in the same page, and are masked out.
#    define ZK_BLOCK_READER __attribute__((target("ssse3"), no_sanitize("address"), no_sanitize("thread")))
#endif

namespace zk {

namespace {

// Whether `text` starts with the needle; reads no further than its NUL.
bool startsWith(char const* text, TextNeedle const& needle)
{
    std::size_t same = 0;
    while (same < needle.length && text[same] == needle.text[same])
        ++same;
    return same == needle.length;
}

#if ZK_VECTOR_SEARCH

constexpr std::uintptr_t blockSize = 16;
constexpr std::uintptr_t pageSize = 4096;

// Before this is initialised, searches go byte by byte: slower, with the same result.
bool const haveVectors = __builtin_cpu_supports("ssse3");

char const* blockAround(char const* p)
{
    return p - (reinterpret_cast<std::uintptr_t>(p) & (blockSize - 1));
}

unsigned lowestBit(unsigned mask)
{
    return static_cast<unsigned>(std::countr_zero(mask));
}

ZK_BLOCK_READER inline __m128i loadBlock(char const* p)
{
    return _mm_load_si128(reinterpret_cast<__m128i const*>(p));
}

ZK_BLOCK_READER inline __m128i loadAnywhere(char const* p)
{
    return _mm_loadu_si128(reinterpret_cast<__m128i const*>(p));
}

ZK_BLOCK_READER inline __m128i loadTable(std::uint8_t const* table)
{
    return _mm_loadu_si128(reinterpret_cast<__m128i const*>(table));
}

ZK_BLOCK_READER inline unsigned bitsOf(__m128i lanes)
{
    return static_cast<unsigned>(_mm_movemask_epi8(lanes));
}

// 0xFF in each lane whose byte is not in the set.
ZK_BLOCK_READER inline __m128i outside(__m128i bytes, __m128i lowRows, __m128i highRows)
{
    __m128i const bits = _mm_set1_epi64x(static_cast<long long>(0x8040201008040201ull));
    __m128i const rows = _mm_or_si128(_mm_shuffle_epi8(lowRows, bytes),
                                      _mm_shuffle_epi8(highRows, _mm_xor_si128(bytes, _mm_set1_epi8(-128))));
    __m128i const column = _mm_and_si128(_mm_srli_epi16(bytes, 4), _mm_set1_epi8(15));
    return _mm_cmpeq_epi8(_mm_and_si128(rows, _mm_shuffle_epi8(bits, column)), _mm_setzero_si128());
}

ZK_BLOCK_READER inline unsigned membersIn(__m128i bytes, __m128i lowRows, __m128i highRows)
{
    return ~bitsOf(outside(bytes, lowRows, highRows)) & 0xFFFFu;
}

ZK_BLOCK_READER char const* findInSetBlockwise(char const* text, ByteTable const& set)
{
    __m128i const lowRows = loadTable(set.rows);
    __m128i const highRows = loadTable(set.rows + 16);
    char const* block = blockAround(text);
    unsigned found;
    // The first bytes of the text at once, unless that reads into the next page: most searches end there.
    if ((reinterpret_cast<std::uintptr_t>(text) & (pageSize - 1)) <= pageSize - blockSize) {
        found = membersIn(loadAnywhere(text), lowRows, highRows);
        if (found)
            return text + lowestBit(found);
    } else {
        found = membersIn(loadBlock(block), lowRows, highRows) & (~0u << (text - block));
        if (found)
            return block + lowestBit(found);
    }
    do {
        block += blockSize;
        found = membersIn(loadBlock(block), lowRows, highRows);
    } while (!found);
    return block + lowestBit(found);
}

// Two bytes of a needle, as far apart as they are in it.
struct BytePair {
    __m128i first;
    __m128i second;
    std::size_t apart;
};

// A lane that is 0 where the NUL or the second byte of the pair stands in the
// block, the latter with the first one at its place before it.
ZK_BLOCK_READER inline __m128i missesIn(char const* block, BytePair const& pair)
{
    __m128i const bytes = loadBlock(block);
    __m128i const before = loadAnywhere(block - pair.apart);
    return _mm_min_epu8(bytes,
                        _mm_or_si128(_mm_xor_si128(bytes, pair.second), _mm_xor_si128(before, pair.first)));
}

constexpr std::uintptr_t chunkSize = 4 * blockSize;

// The first chunk from this one on in which the pair or the NUL stands.
ZK_BLOCK_READER inline char const* skipChunks(char const* chunk, BytePair const& pair)
{
    __m128i const zero = _mm_setzero_si128();
    for (;; chunk += chunkSize) {
        __m128i const front = _mm_min_epu8(missesIn(chunk, pair), missesIn(chunk + blockSize, pair));
        __m128i const back =
            _mm_min_epu8(missesIn(chunk + 2 * blockSize, pair), missesIn(chunk + 3 * blockSize, pair));
        if (bitsOf(_mm_cmpeq_epi8(_mm_min_epu8(front, back), zero)))
            return chunk;
    }
}

// Looks for the needle's two rarest bytes, at their distance. The bytes before
// a block are read as well: they belong to the text, or to the block around its start.
ZK_BLOCK_READER char const* findTextBlockwise(char const* text, TextNeedle const& needle)
{
    BytePair const pair{_mm_set1_epi8(needle.text[needle.first]), _mm_set1_epi8(needle.text[needle.second]),
                        needle.second - needle.first};
    __m128i const zero = _mm_setzero_si128();

    char const* block = blockAround(text);
    __m128i bytes = loadBlock(block);
    unsigned const valid = ~0u << (text - block);
    unsigned ends = bitsOf(_mm_cmpeq_epi8(bytes, zero)) & valid;
    unsigned hits = bitsOf(_mm_cmpeq_epi8(bytes, pair.second)) & valid &
        bitsOf(_mm_cmpeq_epi8(bytes, pair.first)) << pair.apart;
    for (;;) {
        if (ends)
            hits &= ends ^ (ends - 1);
        for (; hits; hits &= hits - 1) {
            char const* const place = block + lowestBit(hits);
            if (place - text >= static_cast<std::ptrdiff_t>(needle.second) &&
                startsWith(place - needle.second, needle))
                return place - needle.second;
        }
        if (ends)
            return nullptr;
        block += blockSize;
        if ((reinterpret_cast<std::uintptr_t>(block) & (chunkSize - 1)) == 0)
            block = skipChunks(block, pair);
        bytes = loadBlock(block);
        ends = bitsOf(_mm_cmpeq_epi8(bytes, zero));
        hits = bitsOf(_mm_and_si128(_mm_cmpeq_epi8(bytes, pair.second),
                                    _mm_cmpeq_epi8(loadAnywhere(block - pair.apart), pair.first)));
    }
}

// A block is looked up for the last of three bytes; the others are looked up in
// the same block moved up, with the end of the block before moved in.
ZK_BLOCK_READER char const* findPrefixBlockwise(char const* text, PrefixFilter const& filter)
{
    __m128i const low0 = loadTable(filter.low[0]), high0 = loadTable(filter.high[0]);
    __m128i const low1 = loadTable(filter.low[1]), high1 = loadTable(filter.high[1]);
    __m128i const low2 = loadTable(filter.low[2]), high2 = loadTable(filter.high[2]);
    __m128i const zero = _mm_setzero_si128();
    __m128i const nibble = _mm_set1_epi8(15);

    char const* block = blockAround(text);
    unsigned valid = ~0u << (text - block);
    __m128i previous0 = _mm_set1_epi8(-1);  // bytes before the text: they may be anything
    __m128i previous1 = previous0;
    for (;; block += blockSize, valid = ~0u) {
        __m128i const bytes = loadBlock(block);
        __m128i const low = _mm_and_si128(bytes, nibble);
        __m128i const high = _mm_and_si128(_mm_srli_epi16(bytes, 4), nibble);
        __m128i const at0 = _mm_and_si128(_mm_shuffle_epi8(low0, low), _mm_shuffle_epi8(high0, high));
        __m128i const at1 = _mm_and_si128(_mm_shuffle_epi8(low1, low), _mm_shuffle_epi8(high1, high));
        __m128i const at2 = _mm_and_si128(_mm_shuffle_epi8(low2, low), _mm_shuffle_epi8(high2, high));
        __m128i const all = _mm_and_si128(
            at2, _mm_and_si128(_mm_alignr_epi8(at1, previous1, 15), _mm_alignr_epi8(at0, previous0, 14)));
        previous0 = at0;
        previous1 = at1;
        unsigned candidates = ~bitsOf(_mm_cmpeq_epi8(all, zero)) & 0xFFFFu & valid;
        unsigned const end = bitsOf(_mm_cmpeq_epi8(bytes, zero)) & valid;
        if ((candidates | end) == 0)
            continue;
        if (end)
            candidates &= end ^ (end - 1);
        for (; candidates; candidates &= candidates - 1) {
            char const* const start = block + lowestBit(candidates) - 2;
            if (start >= text)
                return start;
        }
        if (end) {
            char const* const terminator = block + lowestBit(end);
            return terminator - text > 2 ? terminator - 2 : text;
        }
    }
}

#endif

}  // namespace

unsigned ByteSet::size() const
{
    unsigned result = 0;
    for (std::uint64_t const word : words)
        result += static_cast<unsigned>(std::popcount(word));
    return result;
}

void ByteTable::assign(ByteSet const& bytes)
{
    *this = ByteTable();
    for (unsigned byte = 0; byte < 256; ++byte) {
        if (bytes.has(static_cast<char>(byte)))
            add(static_cast<char>(byte));
    }
}

char const* findInSet(char const* text, ByteTable const& set)
{
#if ZK_VECTOR_SEARCH
    if (haveVectors)
        return findInSetBlockwise(text, set);
#endif
    return bytewise::findInSet(text, set);
}

TextNeedle makeNeedle(char const* text, std::size_t length)
{
    auto const rarest = [text](std::size_t from, std::size_t to, std::size_t except) {
        std::size_t result = from;
        unsigned least = UINT_MAX;
        for (std::size_t i = from; i < to; ++i) {
            unsigned const frequency = frequencyOf(text[i]);
            if (i != except && frequency < least) {
                least = frequency;
                result = i;
            }
        }
        return result;
    };
    if (length == 1)
        return {text, length, 0, 0};
    std::size_t const one = rarest(0, length, length);
    std::size_t const other =
        rarest(one - std::min(one, TextNeedle::reach), std::min(one + TextNeedle::reach + 1, length), one);
    return {text, length, std::min(one, other), std::max(one, other)};
}

char const* findText(char const* text, TextNeedle const& needle)
{
    if (needle.length == 1)
        return std::strchr(text, *needle.text);
#if ZK_VECTOR_SEARCH
    if (haveVectors)
        return findTextBlockwise(text, needle);
#endif
    return bytewise::findText(text, needle);
}

void PrefixFilter::allow(int position, int bucket, ByteSet const& bytes)
{
    std::uint8_t const bit = static_cast<std::uint8_t>(1u << bucket);
    unsigned lowNibbles = 0;
    for (unsigned upper = 0; upper < 16; ++upper) {
        unsigned const row = static_cast<unsigned>(bytes.words[upper / 4] >> (upper % 4 * 16)) & 0xFFFFu;
        lowNibbles |= row;
        if (row)
            high[position][upper] |= bit;
    }
    for (; lowNibbles; lowNibbles &= lowNibbles - 1)
        low[position][std::countr_zero(lowNibbles)] |= bit;
}

void PrefixFilter::allowAll(int position, int bucket)
{
    for (int nibble = 0; nibble < 16; ++nibble) {
        low[position][nibble] |= static_cast<std::uint8_t>(1u << bucket);
        high[position][nibble] |= static_cast<std::uint8_t>(1u << bucket);
    }
}

char const* findPrefix(char const* text, PrefixFilter const& filter)
{
#if ZK_VECTOR_SEARCH
    if (haveVectors)
        return findPrefixBlockwise(text, filter);
#endif
    return bytewise::findPrefix(text, filter);
}

namespace bytewise {

char const* findInSet(char const* text, ByteTable const& set)
{
    while (!set.has(*text))
        ++text;
    return text;
}

char const* findText(char const* text, TextNeedle const& needle)
{
    while ((text = std::strchr(text, *needle.text))) {
        if (std::strncmp(text, needle.text, needle.length) == 0)
            return text;
        ++text;
    }
    return nullptr;
}

char const* findPrefix(char const* text, PrefixFilter const& filter)
{
    auto const at = [&](int position, char c) {
        unsigned char const byte = static_cast<unsigned char>(c);
        return filter.low[position][byte & 15] & filter.high[position][byte >> 4];
    };
    while (text[0] != '\0' && text[1] != '\0' && text[2] != '\0') {
        if (at(0, text[0]) & at(1, text[1]) & at(2, text[2]))
            return text;
        ++text;
    }
    return text;
}

}  // namespace bytewise

unsigned frequencyOf(char c)
{
    static constexpr auto table = [] {
        struct Table {
            std::uint16_t of[256] = {};
        } result;
        auto const set = [&](std::string_view bytes, std::uint16_t frequency) {
            for (char const byte : bytes)
                result.of[static_cast<unsigned char>(byte)] = frequency;
        };
        for (std::uint16_t& frequency : result.of)
            frequency = 20;
        set("0123456789", 150);
        set("ABCDEFGHIJKLMNOPQRSTUVWXYZ", 60);
        set("IHSTWM", 150);
        set("\n,.", 650);
        set("\"'-_:;()/=", 120);
        set("jqxz", 80);
        set("kv", 450);
        set("pybgfw", 1000);
        set("mcu", 1400);
        set("ld", 2300);
        set("hrsin", 3400);
        set("ao", 4200);
        set("t", 4800);
        set("e", 6500);
        set(" ", 11500);
        return result;
    }();
    return table.of[static_cast<unsigned char>(c)];
}

unsigned frequencyOf(ByteSet const& set)
{
    if (set.size() > 128) {
        ByteSet others = set;
        others.invert();
        return std::max(65536 - frequencyOf(others), 1u);
    }
    unsigned result = 1;
    for (unsigned index = 0; index < 4; ++index) {
        for (std::uint64_t word = set.words[index]; word; word &= word - 1)
            result +=
                frequencyOf(static_cast<char>(index * 64 + static_cast<unsigned>(std::countr_zero(word))));
    }
    return result;
}

}  // namespace zk
