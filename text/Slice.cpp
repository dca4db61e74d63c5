#include "text/Slice.h"

#include "platform/classlib/CString.h"
#include "text/SPStringList.h"

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdlib>
#include <iostream>
#include <utility>

namespace {

// The numbers of the texts about a slice that is not well formed.
constexpr unsigned rangeWithoutEndText = 48155;
constexpr unsigned commaExpectedText = 48156;
constexpr unsigned unknownSeparatorText = 48157;

template <class... Arguments>
void report(unsigned number, Arguments const&... arguments)
{
    CString message;
    message.Format(number, static_cast<char const*>(arguments)...);
    std::cerr << static_cast<char const*>(message) << std::endl;
}

int numberIn(char const* text)
{
    long long const number = std::strtoll(text, nullptr, 10);
    return static_cast<int>(std::min<long long>(number, INT_MAX));  // a '-' is never a part of it
}

}  // namespace

struct Slice::Store {
    Store() = default;
    explicit Store(SPList<Range> const& other) : ranges(other) { }

    SPList<Range> ranges;
    std::atomic<int> owners{1};
};

Slice::Slice() : store_(new Store)
{
}

Slice::Slice(int n, std::initializer_list<int> more) : Slice()
{
    add(n);
    for (int const next : more) {
        if (next < 0)
            break;
        add(next);
    }
}

Slice::Slice(char const* text) : Slice()
{
    if (parse(text ? text : ""))
        std::cout << *this << std::endl;
}

Slice::Slice(Range const& range) : Slice()
{
    append(range);
}

Slice::Slice(Slice const& other) : store_(new Store(other.store().ranges))
{
}

Slice::Slice(Slice&& other) noexcept : store_(std::exchange(other.store_, nullptr))
{
}

Slice& Slice::operator=(Slice const& other)
{
    Store& shared = other.store();
    ++shared.owners;
    release(std::exchange(store_, &shared));
    return *this;
}

Slice::~Slice()
{
    release(store_);
}

void Slice::add(int i)
{
    SPList<Range>& ranges = store().ranges;
    int const last = ranges.count() - 1;
    if (last >= 0 && ranges[last].end() == std::int64_t(i) - 1)
        ranges[last]++;
    else
        append(Range(i, i));
}

int Slice::count() const
{
    return store_ ? store_->ranges.count() : 0;
}

Range const& Slice::operator[](int i) const
{
    return store().ranges[i];
}

// Whether the text was read to its end.
bool Slice::parse(char const* text)
{
    SPStringList tokens;
    tokens.split(text, "([-,]|\\.\\.)", -1);
    for (int i = 0; i < tokens.count();) {
        int const number = numberIn(tokens[i++]);
        if (i == tokens.count()) {
            add(number);
            break;
        }
        SPString const& separator = tokens[i++];
        if (separator == "-" || separator == "..") {
            if (i == tokens.count()) {
                report(rangeWithoutEndText, text);
                return false;
            }
            append(Range(number, numberIn(tokens[i++])));
            if (i < tokens.count()) {
                SPString const& next = tokens[i++];
                if (next != ",")
                    report(commaExpectedText, text, next);
            }
        } else if (separator == ",") {
            add(number);
        } else {
            report(unknownSeparatorText, text, separator);
            return false;
        }
    }
    return true;
}

void Slice::append(Range const& range)
{
    store().ranges.push(range);
}

// The ranges; an object that was moved from gets new ones.
Slice::Store& Slice::store() const
{
    if (!store_)
        store_ = new Store;
    return *store_;
}

void Slice::release(Store* store) noexcept
{
    if (store && --store->owners == 0)
        delete store;
}

std::ostream& operator<<(std::ostream& stream, Slice const& slice)
{
    for (int i = 0; i < slice.count(); ++i)
        stream << slice[i] << std::endl;
    return stream;
}
