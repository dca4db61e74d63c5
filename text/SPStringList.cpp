#include "text/SPStringList.h"

#include "text/Regexp.h"
#include "text/options.h"

#include <cstring>
#include <iostream>
#include <string>

template class SPListBase<SPString>;
template class SPList<SPString>;
template class SubList<SPString>;
template class SPListBase<Range>;
template class SPList<Range>;

namespace {

constexpr char const* wordsPattern = "' '";
constexpr char const* blanks = " \t\n";

}  // namespace

SPStringList::SPStringList(int size) : SPList<SPString>(size)
{
}

SPStringList::SPStringList(char const* pattern, char const* target, char const* opts) : SPStringList(20)
{
    if (m(pattern, target, opts) > 0)
        shift();
}

SPStringList::SPStringList(SPStringList const& other)
    : SPStringList(static_cast<SPList<SPString> const&>(other))
{
}

SPStringList::SPStringList(SPList<SPString> const& other) : SPStringList(20)
{
    SPList<SPString>::push(other);
}

SPStringList::SPStringList(SPStringList&& other) noexcept = default;

SPStringList& SPStringList::operator=(SPList<SPString> const& other)
{
    if (this != &other) {
        reset();
        SPList<SPString>::push(other);
    }
    return *this;
}

SPStringList& SPStringList::operator=(SPStringList const& other)
{
    return *this = static_cast<SPList<SPString> const&>(other);
}

SPStringList& SPStringList::operator=(SPStringList&& other) noexcept = default;

SPStringList::~SPStringList() = default;

int SPStringList::split(char const* text, char const* pattern, int limit)
{
    std::string const copy(text ? text : "");  // `text` may be an element of this list
    Regexp expression(pattern);
    if (!pattern || *pattern == '\0') {
        for (char const& c : copy)
            push(&c, 1);
    } else if (std::strcmp(pattern, wordsPattern) == 0) {
        for (char const* word = copy.c_str(); *(word += std::strspn(word, blanks));) {
            std::size_t const length = std::strcspn(word, blanks);
            push(word, length);
            word += length;
        }
    } else {
        splitByExpression(copy.c_str(), expression, limit);
    }
    if (limit < 0)
        dropEmptyEnd();
    return count();
}

void SPStringList::splitByExpression(char const* text, Regexp& expression, int limit)
{
    std::size_t rest = std::strlen(text);
    for (int field = 1; expression.match(text); ++field) {
        if (limit >= 0 && field >= limit)
            break;
        Range const match = expression.getgroup(0);
        std::size_t const end = static_cast<std::size_t>(match.end() + 1);
        if (end == 0 && limit < 0)
            break;
        push(text, static_cast<std::size_t>(match.start()));
        int const groups = expression.groups();
        for (int group = 1; group < groups; ++group) {
            Range const range = expression.getgroup(group);
            push(text + range.start(), static_cast<std::size_t>(range.length()));
        }
        text += end;
        rest -= end;
    }
    if (rest > 0)
        push(text, rest);
}

void SPStringList::dropEmptyEnd()
{
    int last = count();
    while (last > 0 && (*this)[last - 1].length() == 0)
        --last;
    splice(last);
}

SPString SPStringList::join(char const* separator) const
{
    std::size_t const separatorLength = separator ? std::strlen(separator) : 0;
    SPString joined;
    for (int i = 0; i < count(); ++i) {
        joined += (*this)[i];
        if (separatorLength > 0 && i + 1 < count())
            joined += separator;
    }
    return joined;
}

int SPStringList::m(char const* pattern, char const* target, char const* opts)
{
    Regexp expression(pattern, zk::hasOption(opts, 'i'));
    std::string const copy(target ? target : "");  // `target` may be an element of this list
    return expression.match(copy.c_str()) ? pushGroups(expression, copy.c_str()) : 0;
}

SPStringList SPStringList::grep(char const* pattern, char const* opts) const
{
    Regexp expression(pattern, zk::hasOption(opts, 'i'));
    SPStringList found;
    for (int i = 0; i < count(); ++i)
        if (expression.match((*this)[i]))
            found.push((*this)[i]);
    return found;
}

// Appends the first `length` characters of `text`, which is no part of this list.
void SPStringList::push(char const* text, std::size_t length)
{
    addSlot().take(text, length);
}

int SPStringList::pushGroups(Regexp const& expression, char const* text)
{
    int const groups = expression.groups();
    for (int group = 0; group < groups; ++group) {
        Range const range = expression.getgroup(group);
        push(text + range.start(), static_cast<std::size_t>(range.length()));
    }
    return groups;
}

std::ostream& operator<<(std::ostream& stream, SPStringList const& list)
{
    for (int i = 0; i < list.count(); ++i)
        stream << list[i] << std::endl;
    return stream;
}

std::istream& operator>>(std::istream& stream, SPStringList& list)
{
    list.reset();
    for (SPString line; stream >> line;)
        list.push(line);
    return stream;
}
