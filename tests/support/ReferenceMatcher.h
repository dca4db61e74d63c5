// ReferenceMatcher.h: a second, obvious engine for regular expressions, to compare with.
//
//   ReferenceMatcher reference("(a|b)*c");
//   reference.error();                        // "" : it compiles
//   reference.match("xabc")->at(1);           // {2, 3}: group 1 took the last "b"
//
// It builds a tree and searches it by recursion, with all that is still to be
// matched in a closure. It shares no code and no idea with the library's engine,
// and it is only fit for short patterns and subjects.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class ReferenceMatcher {
public:
    /// Start and end (one past the last) of each group; {-1, -1} if it took no part.
    using Groups = std::array<std::pair<int, int>, 20>;

    explicit ReferenceMatcher(std::string_view pattern);

    /// Why the pattern is not accepted, as the engine words it, or empty.
    std::string const& error() const { return error_; }

    /// The groups of the leftmost match, if there is one.
    std::optional<Groups> match(std::string_view subject, std::uint64_t stepLimit = UINT64_MAX);

    /// Whether the last match was given up because of the limit.
    bool gaveUp() const { return gaveUp_; }

private:
    struct Node;
    using Nodes = std::vector<std::shared_ptr<Node>>;
    struct Node {
        enum Kind { literal, any, in, notIn, start, end, group, star, plus, optional } kind;
        std::string text;            // of a literal
        std::set<char> members;      // of a set
        int number = 0;              // of a group
        std::vector<Nodes> choices;  // of a group: its alternatives; of a repeat: what is repeated
    };
    using Rest = std::function<bool(std::size_t)>;
    struct SyntaxError {
        std::string message;
    };

    std::vector<Nodes> parseAlternatives(bool inGroup);
    Nodes parseSequence();
    std::shared_ptr<Node> parsePiece();
    std::shared_ptr<Node> parseAtom();
    std::shared_ptr<Node> parseSet();
    static bool canBeEmpty(Node const& node);
    static bool canBeEmpty(std::vector<Nodes> const& choices);

    bool matchAny(std::vector<Nodes> const& choices, std::size_t at, Rest const& rest);
    bool matchSequence(Nodes const& nodes, std::size_t index, std::size_t at, Rest const& rest);
    bool matchNode(Node const& node, std::size_t at, Rest const& rest);
    bool matchRepeat(Node const& node, std::size_t at, Rest const& rest);

    std::string pattern_;
    std::size_t next_ = 0;
    int groups_ = 0;
    std::string error_;
    std::vector<Nodes> top_;

    std::string_view subject_;
    Groups found_;
    std::uint64_t stepsLeft_ = 0;
    bool gaveUp_ = false;
};
