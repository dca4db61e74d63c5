// SPString::tr: replaces characters by characters.
#include "text/SPString.h"
#include "text/options.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

unsigned char byteOf(char c)
{
    return static_cast<unsigned char>(c);
}

// The characters that are looked for, each with its number, from 1 on in the order of `from`.
class SearchList {
public:
    explicit SearchList(char const* from)
    {
        int last = 0;
        for (char const* at = from; *at != '\0'; ++at) {
            if (*at != '-' || at == from) {
                last = byteOf(*at);
                numbers_[last] = ++count_;
            } else {
                int const upper = byteOf(at[1]);
                for (int c = last + 1; c <= upper; ++c)
                    numbers_[c] = ++count_;
                last = 0;
                if (upper == 0)
                    break;
                ++at;
            }
        }
    }

    // 0 for a character that is not looked for.
    int number(int c) const { return numbers_[c]; }
    int count() const { return count_; }

private:
    int numbers_[256] = {};
    int count_ = 0;
};

// The characters that come in their place. The lower bound of a range is found by its place in the
// source, not at the end of what was expanded so far.
std::string replacementList(char const* to)
{
    std::string list;
    for (std::size_t i = 0; to[i] != '\0'; ++i) {
        if (to[i] != '-' || i == 0) {
            list += to[i];
            continue;
        }
        int const upper = byteOf(to[i + 1]);
        if (i - 1 < list.size())
            for (int c = byteOf(list[i - 1]) + 1; c <= upper; ++c)
                list += static_cast<char>(c);
        if (upper == 0)
            break;
        ++i;
    }
    return list;
}

// What becomes of each character: one table entry says all.
class Translation {
public:
    Translation(char const* from, char const* to, char const* opts)
    {
        bool const complement = zk::hasOption(opts, 'c');
        bool const deletes = zk::hasOption(opts, 'd');
        squeezes_ = zk::hasOption(opts, 's');
        SearchList const wanted(from);
        std::string list = replacementList(to);
        if (!deletes && !list.empty() && list.size() < static_cast<std::size_t>(wanted.count()))
            list.resize(static_cast<std::size_t>(wanted.count()), list.back());

        for (int c = 1; c < 256; ++c) {
            int const number = wanted.number(c);
            if ((number != 0) == complement) {
                table_[c] = static_cast<Entry>(c);
                continue;
            }
            std::size_t const place = complement ? list.size() - 1 : static_cast<std::size_t>(number - 1);
            bool const hasCounterpart = !list.empty() && place < list.size() && !(complement && deletes);
            if (hasCounterpart)
                table_[c] = static_cast<Entry>(found | byteOf(list[place]));
            else if (list.empty() && !deletes)
                table_[c] = static_cast<Entry>(found | c);
            else
                table_[c] = found | dropped;
            drops_ = drops_ || (table_[c] & dropped);
        }
    }

    // Translates `length` characters in place. Sets `length` to how many there are then, and gives how
    // many were found.
    std::size_t apply(char* text, std::size_t& length) const
    {
        if (drops_ || squeezes_)
            return squeezes_ ? compress<true>(text, length) : compress<false>(text, length);
        std::vector<Run> const runs = changingRuns();
        std::size_t const blocks = length / blockSize * blockSize;
        std::size_t counted = 0;
        std::size_t done = blocks;
        switch (runs.size()) {
        case 0: break;
        case 1: counted = replaceBlocks<1>(text, blocks, runs); break;
        case 2: counted = replaceBlocks<2>(text, blocks, runs); break;
        case 3: counted = replaceBlocks<3>(text, blocks, runs); break;
        case 4: counted = replaceBlocks<4>(text, blocks, runs); break;
        default: done = 0;
        }
        return counted + replace(text + done, length - done);
    }

private:
    using Entry = unsigned short;
    static constexpr Entry character = 0xFF;
    static constexpr Entry found = 0x100;
    static constexpr Entry dropped = 0x200;

    // Neighbouring characters that are found, or not, and moved by the same distance.
    struct Run {
        unsigned char first;
        unsigned char span;  // from the first to the last one
        unsigned char distance;
        bool isFound;
    };

    // 16 characters side by side.
    static constexpr std::size_t blockSize = 16;
    typedef unsigned char Block __attribute__((vector_size(blockSize)));

    Run runAt(int c) const
    {
        return {byteOf(static_cast<char>(c)), 0, static_cast<unsigned char>(table_[c] - c),
                (table_[c] & found) != 0};
    }

    // The runs in which something happens.
    std::vector<Run> changingRuns() const
    {
        std::vector<Run> runs;
        for (int c = 1; c < 256;) {
            Run run = runAt(c);
            while (++c < 256 && runAt(c).distance == run.distance && runAt(c).isFound == run.isFound)
                ++run.span;
            if (run.distance != 0 || run.isFound)
                runs.push_back(run);
        }
        return runs;
    }

    template <std::size_t runCount>
    static std::size_t replaceBlocks(char* text, std::size_t length, std::vector<Run> const& runs)
    {
        constexpr std::size_t roundLimit = 255;  // what a count in a byte holds
        constexpr Block zeros = {};
        Block firsts[runCount];
        Block spans[runCount];
        Block distances[runCount];
        Block founds[runCount];
        for (std::size_t k = 0; k < runCount; ++k) {
            firsts[k] = zeros + runs[k].first;
            spans[k] = zeros + runs[k].span;
            distances[k] = zeros + runs[k].distance;
            founds[k] = zeros + static_cast<unsigned char>(runs[k].isFound);
        }
        std::size_t count = 0;
        for (std::size_t i = 0; i < length;) {
            std::size_t const end = std::min(length, i + roundLimit * blockSize);
            Block counts = zeros;
            for (; i < end; i += blockSize) {
                Block block;
                std::memcpy(&block, text + i, blockSize);
                Block moved = block;
                for (std::size_t k = 0; k < runCount; ++k) {
                    Block const inRun = (Block)((Block)(block - firsts[k]) <= spans[k]);
                    moved += inRun & distances[k];
                    counts += inRun & founds[k];
                }
                std::memcpy(text + i, &moved, blockSize);
            }
            for (std::size_t k = 0; k < blockSize; ++k)
                count += counts[k];
        }
        return count;
    }

    std::size_t replace(char* text, std::size_t length) const
    {
        std::size_t count = 0;
        for (std::size_t i = 0; i < length; ++i) {
            unsigned const entry = table_[byteOf(text[i])];
            text[i] = static_cast<char>(entry & character);
            count += entry >> 8;
        }
        return count;
    }

    // Leaves characters out. Each step is the same whatever becomes of the character: what is left
    // out is overwritten by the next one.
    template <bool squeezes>
    std::size_t compress(char* text, std::size_t& length) const
    {
        std::size_t count = 0;
        std::size_t out = 0;
        int last = -1;
        for (std::size_t i = 0; i < length; ++i) {
            unsigned const entry = table_[byteOf(text[i])];
            int const c = static_cast<int>(entry & character);
            unsigned const isFound = entry >> 8 & 1;
            unsigned const isDropped = entry >> 9;
            unsigned const isLeftOut = isDropped | (squeezes ? isFound & unsigned(c == last) : 0);
            count += isFound;
            text[out] = static_cast<char>(c);
            out += 1 - isLeftOut;
            last = isDropped ? last : c;  // what is squeezed out is the last one anyway
        }
        length = out;
        return count;
    }

    Entry table_[256] = {};
    bool squeezes_;
    bool drops_ = false;
};

}  // namespace

int SPString::tr(char const* from, char const* to, char const* opts)
{
    if (length() == 0 || !from || *from == '\0')
        return 0;
    // The arguments are read before the text changes: they may be a part of it.
    Translation const translation(from, to ? to : "", opts);
    std::size_t const oldLength = length();
    auto const translate = [&translation](VarString& text) {
        std::size_t const count = translation.apply(text.text_, text.length_);
        text.text_[text.length_] = '\0';
        return static_cast<int>(count);
    };
    if (text_.allocated_ > oldLength + 1)
        return translate(text_);
    // A full buffer gives way to one that grew in steps of 32 with the result, unless that is shorter.
    constexpr std::size_t step = VarString::defaultSize;
    VarString grown(oldLength / step * step + step);
    grown.step_ = step;
    std::memcpy(grown.text_, text_.text_, oldLength + 1);
    grown.length_ = oldLength;
    grown.irregular_ = text_.irregular_;
    int const count = translate(grown);
    if (grown.length_ == oldLength) {
        text_.swap(grown);
    } else {
        std::memcpy(text_.text_, grown.text_, grown.length_ + 1);
        text_.length_ = grown.length_;
    }
    return count;
}
