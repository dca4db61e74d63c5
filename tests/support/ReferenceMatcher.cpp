#include "tests/support/ReferenceMatcher.h"

ReferenceMatcher::ReferenceMatcher(std::string_view pattern) : pattern_(pattern)
{
    try {
        top_ = parseAlternatives(false);
        if (next_ < pattern_.size())
            throw SyntaxError{"unmatched ()"};
    } catch (SyntaxError const& problem) {
        error_ = problem.message;
    }
}

std::vector<ReferenceMatcher::Nodes> ReferenceMatcher::parseAlternatives(bool inGroup)
{
    std::vector<Nodes> result{parseSequence()};
    while (next_ < pattern_.size() && pattern_[next_] == '|') {
        ++next_;
        result.push_back(parseSequence());
    }
    if (inGroup) {
        if (next_ == pattern_.size())
            throw SyntaxError{"unmatched ()"};
        ++next_;
    }
    return result;
}

ReferenceMatcher::Nodes ReferenceMatcher::parseSequence()
{
    Nodes result;
    while (next_ < pattern_.size() && pattern_[next_] != '|' && pattern_[next_] != ')')
        result.push_back(parsePiece());
    return result;
}

std::shared_ptr<ReferenceMatcher::Node> ReferenceMatcher::parsePiece()
{
    auto const repeatHere = [this] {
        return next_ < pattern_.size() &&
            std::string_view("*+?").find(pattern_[next_]) != std::string_view::npos;
    };
    std::shared_ptr<Node> const atom = parseAtom();
    if (!repeatHere())
        return atom;
    char const repeat = pattern_[next_++];
    if (repeat != '?' && canBeEmpty(*atom))
        throw SyntaxError{"*+ operand could be empty"};
    if (repeatHere())
        throw SyntaxError{"nested *?+"};
    auto const result = std::make_shared<Node>();
    result->kind = repeat == '*' ? Node::star : repeat == '+' ? Node::plus : Node::optional;
    result->choices.push_back({atom});
    return result;
}

// One character, set, group or mark; neighbouring literal characters stay single.
std::shared_ptr<ReferenceMatcher::Node> ReferenceMatcher::parseAtom()
{
    auto const result = std::make_shared<Node>();
    char const c = pattern_[next_];
    switch (c) {
    case '[': return parseSet();
    case '(':
        if (groups_ == 19)
            throw SyntaxError{"too many ()"};
        ++next_;
        result->kind = Node::group;
        result->number = ++groups_;
        result->choices = parseAlternatives(true);
        return result;
    case '*':
    case '+':
    case '?': throw SyntaxError{"?+* follows nothing"};
    case '^': result->kind = Node::start; break;
    case '$': result->kind = Node::end; break;
    case '.': result->kind = Node::any; break;
    case '\\':
        if (next_ + 1 == pattern_.size())
            throw SyntaxError{"trailing \\"};
        ++next_;
        [[fallthrough]];
    default: result->kind = Node::literal; result->text = pattern_[next_];
    }
    ++next_;
    return result;
}

std::shared_ptr<ReferenceMatcher::Node> ReferenceMatcher::parseSet()
{
    auto const result = std::make_shared<Node>();
    ++next_;
    auto const at = [this](std::size_t index) { return index < pattern_.size() ? pattern_[index] : '\0'; };
    result->kind = Node::in;
    if (at(next_) == '^') {
        result->kind = Node::notIn;
        ++next_;
    }
    for (bool first = true; first || at(next_) != ']'; first = false) {
        if (next_ >= pattern_.size())
            throw SyntaxError{"unmatched []"};
        bool const range = !first && at(next_) == '-' && at(next_ + 1) != ']' && at(next_ + 1) != '\0';
        if (!range) {
            result->members.insert(at(next_++));
            continue;
        }
        int const from = static_cast<unsigned char>(at(next_ - 1));
        int const to = static_cast<unsigned char>(at(next_ + 1));
        if (from - to >= 2)
            throw SyntaxError{"invalid [] range"};
        for (int member = from; member <= to; ++member)
            result->members.insert(static_cast<char>(member));
        next_ += 2;
    }
    ++next_;
    return result;
}

bool ReferenceMatcher::canBeEmpty(std::vector<Nodes> const& choices)
{
    for (Nodes const& sequence : choices) {
        bool empty = true;
        for (std::shared_ptr<Node> const& node : sequence)
            empty = empty && canBeEmpty(*node);
        if (empty)
            return true;
    }
    return false;
}

bool ReferenceMatcher::canBeEmpty(Node const& node)
{
    switch (node.kind) {
    case Node::start:
    case Node::end:
    case Node::star:
    case Node::optional: return true;
    case Node::group: return canBeEmpty(node.choices);
    default: return false;
    }
}

std::optional<ReferenceMatcher::Groups> ReferenceMatcher::match(std::string_view subject,
                                                                std::uint64_t stepLimit)
{
    subject_ = subject;
    stepsLeft_ = stepLimit;
    gaveUp_ = false;
    for (std::size_t start = 0; start <= subject.size() && !gaveUp_; ++start) {
        found_.fill({-1, -1});
        bool const matched = matchAny(top_, start, [&](std::size_t end) {
            found_[0] = {static_cast<int>(start), static_cast<int>(end)};
            return true;
        });
        if (matched)
            return found_;
    }
    return std::nullopt;
}

bool ReferenceMatcher::matchAny(std::vector<Nodes> const& choices, std::size_t at, Rest const& rest)
{
    for (Nodes const& sequence : choices) {
        if (matchSequence(sequence, 0, at, rest))
            return true;
    }
    return false;
}

bool ReferenceMatcher::matchSequence(Nodes const& nodes, std::size_t index, std::size_t at, Rest const& rest)
{
    if (index == nodes.size())
        return rest(at);
    return matchNode(*nodes[index], at,
                     [&, index](std::size_t next) { return matchSequence(nodes, index + 1, next, rest); });
}

bool ReferenceMatcher::matchNode(Node const& node, std::size_t at, Rest const& rest)
{
    if (gaveUp_ || stepsLeft_-- == 0) {
        gaveUp_ = true;
        return false;
    }
    bool const more = at < subject_.size();
    switch (node.kind) {
    case Node::literal: return more && subject_[at] == node.text[0] && rest(at + 1);
    case Node::any: return more && rest(at + 1);
    case Node::in: return more && node.members.count(subject_[at]) == 1 && rest(at + 1);
    case Node::notIn: return more && node.members.count(subject_[at]) == 0 && rest(at + 1);
    case Node::start: return at == 0 && rest(at);
    case Node::end: return !more && rest(at);
    case Node::optional: return matchAny(node.choices, at, rest) || rest(at);
    case Node::star: return matchRepeat(node, at, rest);
    case Node::plus:
        return matchAny(node.choices, at, [&](std::size_t next) { return matchRepeat(node, next, rest); });
    case Node::group:
        return matchAny(node.choices, at, [&](std::size_t end) {
            if (!rest(end))
                return false;
            // The innermost call returns first: later rounds of a loop have stored already.
            auto& place = found_[static_cast<std::size_t>(node.number)];
            if (place.first < 0)
                place = {static_cast<int>(at), static_cast<int>(end)};
            return true;
        });
    }
    return false;
}

bool ReferenceMatcher::matchRepeat(Node const& node, std::size_t at, Rest const& rest)
{
    return matchAny(node.choices, at, [&](std::size_t next) { return matchRepeat(node, next, rest); }) ||
        rest(at);
}
