#include "bench/support/englishText.h"

#include <cctype>
#include <cstdint>
#include <iterator>

namespace zk::bench {

namespace {

// The commonest words first: a word's place says how often it comes.
constexpr char const* words[] = {
    "the",       "of",       "and",       "to",      "a",         "in",       "that",     "was",
    "it",        "he",       "his",       "is",      "with",      "as",       "had",      "for",
    "you",       "not",      "be",        "at",      "on",        "her",      "my",       "have",
    "which",     "but",      "this",      "from",    "they",      "all",      "by",       "said",
    "were",      "she",      "we",        "one",     "there",     "so",       "no",       "when",
    "an",        "been",     "would",     "what",    "their",     "who",      "if",       "upon",
    "out",       "him",      "up",        "man",     "into",      "then",     "could",    "little",
    "very",      "some",     "about",     "more",    "time",      "them",     "down",     "over",
    "night",     "house",    "before",    "should",  "door",      "hand",     "great",    "again",
    "might",     "never",    "think",     "nothing", "come",      "good",     "through",  "looking",
    "room",      "matter",   "morning",   "evening", "something", "being",    "found",    "street",
    "window",    "standing", "letter",    "thought", "question",  "having",   "between",  "country",
    "sitting",   "cat",      "going",     "already", "certainly", "singular", "business", "horse",
    "turning",   "dog",      "evidently", "silence", "garden",    "carriage", "bird",     "strange",
    "companion", "walking",  "perfectly", "opening", "fish",      "colour",   "sentence", "remarkable"};

constexpr char const* names[] = {"Sherlock Holmes",    "John Watson",       "Irene Adler", "Baker Street",
                                 "Inspector Lestrade", "Mycroft Holmes",    "London",      "Mary Sutherland",
                                 "Sherlock Holmes",    "Professor Moriarty"};

class Chance {
public:
    explicit Chance(unsigned seed) : state_(seed * 2654435761u + 88172645463325252ull) { }
    std::size_t below(std::size_t limit)
    {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return static_cast<std::size_t>(state_ >> 11) % limit;
    }

private:
    std::uint64_t state_;
};

}  // namespace

std::string englishText(std::size_t size, unsigned seed)
{
    Chance chance(seed);
    std::string text;
    text.reserve(size + 100);
    std::size_t lineStart = 0;
    bool sentenceStarts = true;
    while (text.size() < size) {
        std::size_t const before = text.size();
        if (chance.below(150) == 0) {
            text += names[chance.below(std::size(names))];
        } else {
            // The smaller of two numbers: common words come more often.
            std::size_t const first = chance.below(std::size(words));
            std::size_t const second = chance.below(std::size(words));
            text += words[first < second ? first : second];
        }
        if (sentenceStarts)
            text[before] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[before])));
        sentenceStarts = chance.below(14) == 0;
        if (sentenceStarts)
            text += '.';
        else if (chance.below(16) == 0)
            text += chance.below(8) == 0 ? ':' : ',';
        bool const lineEnds = text.size() - lineStart >= 76;
        text += lineEnds ? '\n' : ' ';
        if (lineEnds)
            lineStart = text.size();
    }
    return text;
}

std::vector<std::string> linesOf(std::string const& text)
{
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        std::size_t const end = text.find('\n', start);
        lines.push_back(text.substr(start, end - start));
        start = end == std::string::npos ? text.size() : end + 1;
    }
    return lines;
}

}  // namespace zk::bench
