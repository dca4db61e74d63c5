// SPList.h: lists by value with the operations of a scripting language.
//
//   SPList<int> list;
//   list.push(1);
//   list.push(2);
//   list.unshift(0);                       // 0, 1, 2
//   list.shift();                          // 0
//   SPList<int> cut = list.splice(0, 1);   // cut: 1; list: 2
//   SPList<int> part = list("0,5");        // seen through a slice, see SubList.h
#pragma once

#include "text/SPListBase.h"
#include "text/Slice.h"
#include "text/SubList.h"
#include "text/sortStably.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

/// A list whose index extends it. An argument may be the list itself or one of its elements.
template <class T>
class SPList : public SPListBase<T> {
    using Base = SPListBase<T>;

public:
    explicit SPList(int size = 20) : Base(size) { }

    SPList(SPList const&) = default;
    SPList(SPList&&) noexcept = default;
    SPList& operator=(SPList const&) = default;
    SPList& operator=(SPList&&) noexcept = default;
    ~SPList() override = default;

    /// The elements that `part` shows, range by range. A range past the end lengthens the list it is taken from.
    SPList(SubList<T> const& part);

    using Base::operator[];

    /// The number of elements.
    int scalar() const noexcept { return this->cnt_; }

    /// The object itself, or null if the list is empty.
    operator void*() const noexcept { return this->cnt_ ? const_cast<SPList*>(this) : nullptr; }

    bool isempty() const noexcept { return this->cnt_ == 0; }

    /// As erase().
    void reset() noexcept { this->erase(); }

    /// Appends.
    void push(T const& element) { this->add(element); }
    void push(T&& element) { this->add(std::move(element)); }
    void push(SPList const& other);

    /// Removes the last element and gives it; a default value if the list is empty.
    T pop();

    /// Removes the first element and gives it. If the list is empty, the value in the slot of the first
    /// element is given, and that slot is passed all the same.
    T shift();

    /// Puts an element in front and gives the number of elements then.
    int unshift(T const& element);

    /// Puts another list in front, in its order, and gives the number of elements then.
    int unshift(SPList const& other);

    /// The elements in reverse order, in a list of their own.
    SPList reverse() const;

    /// The elements in ascending order, equal ones in the order they have here, in a list of their own.
    SPList sort() const;

    /// Cuts the elements from `offset` to the end out of the list and gives them. An offset below 0 counts as 0.
    SPList splice(int offset);

    /// Cuts `length` elements from `offset` on out of the list and gives them; none if the list ends
    /// before `offset`. Where the list has fewer it is extended first, so that `length` are given.
    SPList splice(int offset, int length);

    /// Cuts as above and puts `elements` in the place of what was cut, or at the end if that comes first.
    SPList splice(int offset, int length, SPList const& elements);

    /// A view of some elements; see SubList.h. The slice is copied, the list is not. A range past the
    /// end lengthens the list when the elements are taken: beware of a `text` from outside.
    SubList<T> operator()(Slice const& slice) { return SubList<T>(*this, slice); }
    SubList<T> operator()(Range const& range) { return SubList<T>(*this, Slice(range)); }
    SubList<T> operator()(int offset, int length);
    SubList<T> operator()(int index) { return SubList<T>(*this, Slice(index)); }
    SubList<T> operator()(char const* text) { return SubList<T>(*this, Slice(text)); }

private:
    // A list of the size and place of `other`, with default values.
    static SPList sizedAs(SPList const& other);

    // As if one by one with add(i, element), but the elements behind `i` move once.
    void insert(int i, SPList const& elements);

    // Takes a cut of `elements` at `i` back, which left their slots behind.
    void undoCut(int i, SPList& elements);
};

template <class T>
SPList<T>::SPList(SubList<T> const& part) : Base(20)
{
    for (int r = 0; r < part.slice().count(); ++r) {
        Range const range = part.slice()[r];
        for (std::int64_t i = range.start(); i <= range.end(); ++i)
            this->add(part.list()[static_cast<int>(i)]);
    }
}

template <class T>
void SPList<T>::push(SPList const& other)
{
    int const count = other.cnt_;
    for (int i = 0; i < count; ++i)
        this->add(other[i]);
}

template <class T>
T SPList<T>::pop()
{
    if (this->cnt_ == 0)
        return T();
    T last((*this)[this->cnt_ - 1]);
    this->compact(this->cnt_ - 1);
    return last;
}

template <class T>
T SPList<T>::shift()
{
    T first((*this)[0]);
    ++this->first_;
    --this->cnt_;
    return first;
}

template <class T>
int SPList<T>::unshift(T const& element)
{
    T copy(element);
    this->makeRoomAtFront();
    --this->first_;
    this->a_[this->first_] = std::move(copy);
    return ++this->cnt_;
}

template <class T>
int SPList<T>::unshift(SPList const& other)
{
    if (this == &other)
        return unshift(SPList(other));
    for (int i = other.cnt_; i-- > 0;)
        unshift(other[i]);
    return this->cnt_;
}

template <class T>
SPList<T> SPList<T>::reverse() const
{
    SPList result;
    for (int i = this->cnt_; i-- > 0;)
        result.add((*this)[i]);
    return result;
}

template <class T>
SPList<T> SPList<T>::sort() const
{
    if (this->cnt_ < 2)
        return *this;
    T const* const elements = this->a_ + this->first_;
    std::vector<T const*> order(static_cast<std::size_t>(this->cnt_));
    for (int i = 0; i < this->cnt_; ++i)
        order[i] = elements + i;
    zk::sortStably(order.data(), order.size());
    SPList result = sizedAs(*this);
    for (int i = 0; i < this->cnt_; ++i)
        result.a_[result.first_ + i] = *order[i];
    return result;
}

template <class T>
SPList<T> SPList<T>::splice(int offset)
{
    offset = std::max(offset, 0);
    return offset < this->cnt_ ? splice(offset, this->cnt_ - offset) : SPList();
}

template <class T>
SPList<T> SPList<T>::splice(int offset, int length)
{
    SPList cut;
    offset = std::max(offset, 0);
    if (offset >= this->cnt_ || length <= 0)
        return cut;
    if (length > INT_MAX - offset)
        throw std::bad_alloc();
    int const count = this->cnt_;
    this->extendStepwiseTo(offset + length - 1);
    this->cnt_ = count;  // until all is copied
    for (int i = 0; i < length; ++i)
        cut.add(std::as_const(*this)[offset + i]);
    this->cnt_ = std::max(count, offset + length);
    this->removeAt(offset, length);
    return cut;
}

template <class T>
SPList<T> SPList<T>::splice(int offset, int length, SPList const& elements)
{
    if (this == &elements)
        return splice(offset, length, SPList(elements));
    int const count = this->cnt_;
    SPList cut = splice(offset, length);
    int const place = std::min(std::max(offset, 0), this->cnt_);
    try {
        insert(place, elements);
    } catch (...) {
        undoCut(place, cut);
        this->cnt_ = count;
        throw;
    }
    return cut;
}

template <class T>
SubList<T> SPList<T>::operator()(int offset, int length)
{
    // Where the end lies beyond all numbers it wraps around, and the range is empty.
    std::uint32_t const end = static_cast<std::uint32_t>(offset) + static_cast<std::uint32_t>(length) - 1;
    return SubList<T>(*this, Slice(Range(offset, static_cast<std::int32_t>(end))));
}

template <class T>
SPList<T> SPList<T>::sizedAs(SPList const& other)
{
    SPList result(0);
    result.a_ = zk::ListWindow<T>::make(other.allocated_);
    result.allocated_ = other.allocated_;
    result.allocinc_ = other.allocinc_;
    result.cnt_ = other.cnt_;
    result.first_ = other.first_;
    return result;
}

template <class T>
void SPList<T>::insert(int i, SPList const& elements)
{
    int k = 0;
    if (i == 0 && elements.cnt_ > 0)
        this->add(0, elements[k++]);
    int const from = this->cnt_;
    int const place = i + k;
    try {
        for (; k < elements.cnt_; ++k) {
            if (std::int64_t(this->first_) + this->cnt_ + 1 >= this->allocated_)
                this->grow();
            this->add(elements[k]);
        }
    } catch (...) {
        this->cnt_ = from;
        this->removeAt(0, place - i);
        throw;
    }
    T* const first = this->a_ + this->first_;
    std::rotate(first + place, first + from, first + this->cnt_);
}

template <class T>
void SPList<T>::undoCut(int i, SPList& elements)
{
    int const n = elements.cnt_;
    int const begin = std::min(this->first_, this->allocated_ - this->cnt_ - n);
    T* const first = this->a_ + begin;
    if (begin < this->first_)
        std::move(this->a_ + this->first_, this->a_ + this->first_ + this->cnt_, first);
    std::move_backward(first + i, first + this->cnt_, first + this->cnt_ + n);
    for (int k = 0; k < n; ++k)
        first[i + k] = std::move(elements[k]);
    this->first_ = begin;
    this->cnt_ += n;
}
