// SPListBase.h: the store of the lists, an array with free room at both ends.
//
//   SPListBase<SPString> list;             // 20 slots, element 0 in the middle
//   list.add("a");
//   list[3] = "d";                         // "a", "", "", "d": an index extends the list
//   list.add(0, "first");                  // inserted in front
//
// Use SPList or SPStringList, which have the operations of a scripting
// language's lists on top of this store.
#pragma once

#include "text/Range.h"
#include "text/listWindow.h"
#include "zk_export.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <functional>
#include <utility>

template <class T>
class SPList;

namespace zk {

/// The numbers of a list, and the rules by which they grow.
struct ListGrowth {
    std::int64_t allocated;
    std::int64_t first;
    std::int64_t count;
    std::int64_t step;

    /// With an amount below 1 the elements are centred among the slots if that leaves room on both
    /// sides; else slots are added, and the elements centred as if they were `newCount`.
    void grow(std::int64_t amount = 0, std::int64_t newCount = -1)
    {
        if (amount < 1) {
            std::int64_t const ideal = (allocated >> 1) - (count >> 1);
            if (ideal > 0 && count + ideal + 1 < allocated) {
                first = ideal;
                return;
            }
            amount = step > 0 ? step : 1;
        }
        allocated += amount;
        first = (allocated >> 1) - ((newCount < 0 ? count : newCount) >> 1);
    }
};

}  // namespace zk

/// An array of elements by value.
///
/// Elements that were removed or erased stay in their slots until these are
/// used again: an index past the end may find them. A slot that was never used
/// holds a default value, and so does every free slot once the list was centred
/// or has grown. Adding at either end takes constant time on average.
///
/// References to elements hold until the list is changed. Where memory cannot
/// be had, std::bad_alloc is thrown and the elements are as before; of another
/// list that is added those stay that were added already.
template <class T>
class SPListBase {
public:
    /// An empty list of `size` slots that grows by `size`; a size below 1 grows by 1.
    explicit SPListBase(int size = 20);

    /// The same slots with the same elements in them.
    SPListBase(SPListBase const& other);

    /// Takes the slots over; `other` is left without any.
    SPListBase(SPListBase&& other) noexcept
        : a_(std::exchange(other.a_, nullptr)), cnt_(std::exchange(other.cnt_, 0)),
          first_(std::exchange(other.first_, 0)), allocated_(std::exchange(other.allocated_, 0)),
          allocinc_(other.allocinc_)
    {
    }

    SPListBase& operator=(SPListBase const& other);

    SPListBase& operator=(SPListBase&& other) noexcept
    {
        SPListBase taken(std::move(other));
        swap(taken);
        return *this;
    }

    virtual ~SPListBase() { zk::ListWindow<T>::release(a_, allocated_); }

    /// The number of elements.
    int count() const noexcept { return cnt_; }

    /// Makes the list empty. The elements stay in their slots.
    void erase() noexcept
    {
        cnt_ = 0;
        first_ = allocated_ >> 1;
    }

    /// Element `i`. Where the list is shorter it is extended to `i + 1` elements: default ones, or
    /// those that stayed in the slots. An index before the first slot counts as that of the first slot.
    T& operator[](int i)
    {
        if (i >= cnt_)
            extendTo(i);
        std::int64_t const slot = std::int64_t(first_) + i;
        if (slot < 0) {
            extendToFirstSlot();
            return a_[0];
        }
        return a_[slot];
    }

    /// Element `i` of a list that is not to be extended; a default value outside its slots.
    T const& operator[](int i) const
    {
        std::int64_t const slot = std::int64_t(first_) + i;
        if (slot < 0 || slot >= allocated_) {
            static T const none = T();
            return none;
        }
        return a_[slot];
    }

    /// Appends `element`, which may be one of this list.
    void add(T const& element);

    void add(T&& element);

    /// Inserts `element` before element `i`; an `i` below 0 counts as 0.
    ///
    /// With an `i` past the end the list gets one element longer, as always, and `element` lies behind
    /// it, out of the list until an index reaches it.
    void add(int i, T const& element);

protected:
    /// Removes element `i`. Its value, or that of the last element, stays in the slot that gets free.
    void compact(int i) { removeAt(i, 1); }

private:
    friend class SPList<T>;
    friend class SPStringList;

    bool holds(T const* element) const noexcept
    {
        std::less<T const*> const before;
        return a_ && !before(element, a_) && before(element, a_ + allocated_);
    }

    void swap(SPListBase& other) noexcept
    {
        std::swap(a_, other.a_);
        std::swap(cnt_, other.cnt_);
        std::swap(first_, other.first_);
        std::swap(allocated_, other.allocated_);
        std::swap(allocinc_, other.allocinc_);
    }

    // Centres the elements or adds slots; see ListGrowth.
    void grow(std::int64_t amount = 0, std::int64_t newcnt = -1);

    void arrange(int allocated, int first);
    void arrange(zk::ListGrowth const& growth);

    // Makes room for `n` more elements at the end, as if they were added one by one.
    void makeRoomAtEnd(std::int64_t n);

    // A list that grows by 1 may be out of balance after a growth: once more then.
    void makeRoomAtEnd();

    void makeRoomAtFront();

    void extendTo(int i);

    // As extendTo(i), but as if each index up to it was used in turn.
    void extendStepwiseTo(int i);

    void extendToFirstSlot();

    // Removes `n` elements from `i` on, as if one by one at `i`: at the front the slots stay as they
    // are, else those that get free hold the last element.
    void removeAt(int i, int n);

    // The fields, in this order and these widths, are part of what other modules may rely on.
    T* a_;
    std::int32_t cnt_ = 0;
    std::int32_t first_;
    std::int32_t allocated_;
    std::int32_t allocinc_;
};

template <class T>
SPListBase<T>::SPListBase(int size)
    : a_(zk::ListWindow<T>::make(size > 0 ? size : 0)), first_(size > 0 ? size >> 1 : 0),
      allocated_(size > 0 ? size : 0), allocinc_(size > 0 ? size : 0)
{
}

template <class T>
SPListBase<T>::SPListBase(SPListBase const& other)
    : a_(zk::ListWindow<T>::copy(other.a_, other.allocated_)), cnt_(other.cnt_), first_(other.first_),
      allocated_(other.allocated_), allocinc_(other.allocinc_)
{
}

template <class T>
SPListBase<T>& SPListBase<T>::operator=(SPListBase const& other)
{
    if (this != &other) {
        SPListBase copy(other);
        swap(copy);
    }
    return *this;
}

template <class T>
void SPListBase<T>::add(T const& element)
{
    if (first_ + cnt_ >= allocated_) {
        if (holds(&element)) {
            add(T(element));
            return;
        }
        makeRoomAtEnd();
    }
    T& slot = a_[first_ + cnt_];
    if (&slot != &element)
        slot = element;
    ++cnt_;
}

template <class T>
void SPListBase<T>::add(T&& element)
{
    if (first_ + cnt_ >= allocated_) {
        T taken(std::move(element));
        makeRoomAtEnd();
        a_[first_ + cnt_] = std::move(taken);
    } else if (T& slot = a_[first_ + cnt_]; &slot != &element) {
        slot = std::move(element);
    }
    ++cnt_;
}

template <class T>
void SPListBase<T>::add(int i, T const& element)
{
    T copy(element);
    if (i <= 0) {
        makeRoomAtFront();
        --first_;
        a_[first_] = std::move(copy);
    } else {
        if (std::int64_t(first_) + cnt_ + 1 >= allocated_)
            grow();
        while (std::int64_t(first_) + cnt_ >= allocated_)
            grow();
        while (std::int64_t(first_) + i >= allocated_)
            grow(std::int64_t(first_) + i - allocated_ + 1, std::int64_t(i) + 1);
        for (int k = cnt_; k > i; --k)
            a_[first_ + k] = std::move(a_[first_ + k - 1]);
        a_[first_ + i] = std::move(copy);
    }
    ++cnt_;
}

template <class T>
void SPListBase<T>::grow(std::int64_t amount, std::int64_t newcnt)
{
    zk::ListGrowth growth{allocated_, first_, cnt_, allocinc_};
    growth.grow(amount, newcnt);
    if (growth.allocated > INT_MAX)
        throw std::bad_alloc();
    if (growth.allocated == allocated_ && cnt_ == 0)
        first_ = static_cast<std::int32_t>(growth.first);
    else
        arrange(static_cast<int>(growth.allocated), static_cast<int>(growth.first));
}

template <class T>
void SPListBase<T>::arrange(int allocated, int first)
{
    a_ = zk::ListWindow<T>::arrange(a_, {allocated_, first_, cnt_}, {allocated, first, cnt_});
    allocated_ = allocated;
    first_ = first;
}

template <class T>
void SPListBase<T>::makeRoomAtEnd(std::int64_t n)
{
    if (n > INT_MAX - cnt_)
        throw std::bad_alloc();
    zk::ListGrowth growth{allocated_, first_, cnt_, allocinc_};
    for (std::int64_t const count = cnt_ + n; growth.count < count; ++growth.count)
        while (growth.first + growth.count >= growth.allocated)
            growth.grow();
    arrange(growth);
}

template <class T>
void SPListBase<T>::extendStepwiseTo(int i)
{
    zk::ListGrowth growth{allocated_, first_, cnt_, allocinc_};
    for (; growth.count <= i; ++growth.count)
        while (growth.first + growth.count >= growth.allocated)
            growth.grow(growth.step - growth.allocated + growth.first + growth.count, growth.count + 1);
    arrange(growth);
    cnt_ = std::max(cnt_, i + 1);
}

template <class T>
void SPListBase<T>::arrange(zk::ListGrowth const& growth)
{
    if (growth.allocated > INT_MAX)
        throw std::bad_alloc();
    if (growth.allocated != allocated_ || growth.first != first_)
        arrange(static_cast<int>(growth.allocated), static_cast<int>(growth.first));
}

template <class T>
void SPListBase<T>::makeRoomAtEnd()
{
    while (first_ + cnt_ >= allocated_)
        grow();
}

template <class T>
void SPListBase<T>::makeRoomAtFront()
{
    while (first_ < 1)
        grow();
}

template <class T>
void SPListBase<T>::extendTo(int i)
{
    while (std::int64_t(first_) + i >= allocated_)
        grow(std::int64_t(allocinc_) - allocated_ + first_ + i, std::int64_t(i) + 1);
    cnt_ = i + 1;
}

template <class T>
void SPListBase<T>::extendToFirstSlot()
{
    if (allocated_ == 0)
        grow();
}

template <class T>
void SPListBase<T>::removeAt(int i, int n)
{
    T* const elements = a_ + first_;
    if (i == 0) {
        first_ += n;
    } else if (n > 0) {
        int const rest = cnt_ - n;
        for (int k = i; k < rest; ++k)
            std::swap(elements[k], elements[k + n]);
        T const& last = elements[i < rest ? rest - 1 : cnt_ - 1];
        try {
            for (int k = rest; k < cnt_; ++k)
                if (&elements[k] != &last)
                    elements[k] = last;
        } catch (...) {
            // Without memory for what stays in a free slot, it is another old element that stays there.
        }
    }
    cnt_ -= n;
}
