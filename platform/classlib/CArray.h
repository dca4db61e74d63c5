// CArray.h: an array that grows.
//
//   CArray<int> numbers;
//   numbers.Add(1);                    // 0, its index
//   numbers.SetAtGrow(3, 7);           // 1 0 0 7
//   numbers[1] = 5;                    // 1 5 0 7
//
// New elements without a value are value-initialised. An index outside the
// array is met with std::out_of_range. An argument may be an element of the
// array itself. Growing moves the elements; references to them end there.
#pragma once

#include "platform/classlib/CObject.h"
#include "platform/classlib/collections.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

template <class TYPE, class ARG_TYPE = TYPE const&>
class CArray : public CObject {
public:
    CArray() noexcept = default;
    ~CArray() override { RemoveAll(); }

    INT_PTR GetSize() const noexcept { return size_; }
    INT_PTR GetCount() const noexcept { return size_; }
    BOOL IsEmpty() const noexcept { return size_ == 0; }
    /// The index of the last element; -1 for an empty array.
    INT_PTR GetUpperBound() const noexcept { return size_ - 1; }

    /// Changes the number of elements, at the end. `growBy`, if not negative, is
    /// the least number of elements for which memory is added when more is
    /// needed. Size 0 gives the memory back; a negative one is std::out_of_range.
    void SetSize(INT_PTR size, INT_PTR growBy = -1)
    {
        if (growBy >= 0)
            growBy_ = growBy;
        check(size >= 0);
        if (size == 0) {
            release();
        } else if (size < size_) {
            std::destroy(data_ + size, data_ + size_);
            size_ = size;
        } else {
            reserve(size);
            std::uninitialized_value_construct(data_ + size_, data_ + size);
            size_ = size;
        }
    }
    void RemoveAll() noexcept { release(); }
    /// Gives back the memory beyond the last element.
    void FreeExtra()
    {
        if (size_ == 0)
            release();
        else if (size_ < capacity_)
            reallocate(size_);
    }

    // -- Elements ------------------------------------------------------------------

    TYPE& GetAt(INT_PTR index) { return data_[checked(index)]; }
    TYPE const& GetAt(INT_PTR index) const { return data_[checked(index)]; }
    TYPE& ElementAt(INT_PTR index) { return data_[checked(index)]; }
    TYPE const& ElementAt(INT_PTR index) const { return data_[checked(index)]; }
    TYPE& operator[](INT_PTR index) { return data_[checked(index)]; }
    TYPE const& operator[](INT_PTR index) const { return data_[checked(index)]; }
    void SetAt(INT_PTR index, ARG_TYPE element) { data_[checked(index)] = element; }
    /// All elements in a row; null for an empty array.
    TYPE* GetData() noexcept { return data_; }
    TYPE const* GetData() const noexcept { return data_; }

    TYPE* begin() noexcept { return data_; }
    TYPE const* begin() const noexcept { return data_; }
    TYPE* end() noexcept { return data_ + size_; }
    TYPE const* end() const noexcept { return data_ + size_; }

    // -- Growing ---------------------------------------------------------------------

    /// Sets an element, behind the end too: the array then reaches up to it.
    void SetAtGrow(INT_PTR index, ARG_TYPE element)
    {
        check(index >= 0);
        if (index < size_) {
            data_[index] = element;
            return;
        }
        TYPE value(element);
        Restore undo = {this, size_};
        SetSize(sum(index, 1));
        data_[index] = std::move(value);
        undo.array = nullptr;
    }
    /// Adds an element at the end and gives its index. In constant time on average.
    INT_PTR Add(ARG_TYPE element) { return add(element); }
    /// Adds copies of all elements of `other`, which may be this array, and gives the index of the first.
    INT_PTR Append(CArray const& other)
    {
        INT_PTR const first = size_;
        INT_PTR const more = other.size_;
        reserve(sum(first, more));
        std::uninitialized_copy_n(other.data_, more, data_ + first);
        size_ += more;
        return first;
    }
    /// Becomes a copy of `other`.
    void Copy(CArray const& other)
    {
        if (this == &other)
            return;
        CArray copy;
        copy.Append(other);
        swap(copy);
    }

    /// Inserts `count` times `element` before `index`; behind the end the gap is
    /// filled as by SetSize. Without memory the array keeps its elements and their number.
    void InsertAt(INT_PTR index, ARG_TYPE element, INT_PTR count = 1)
    {
        check(index >= 0 && count >= 0);
        if (count == 0)
            return;
        TYPE const value(element);
        Restore undo = {this, size_};
        if (index > size_)
            SetSize(index);
        reserve(sum(size_, count));
        for (INT_PTR i = 0; i < count; ++i)
            add(value);
        undo.array = nullptr;
        std::rotate(data_ + index, data_ + (size_ - count), data_ + size_);
    }
    /// Inserts copies of all elements of another array before `index`.
    void InsertAt(INT_PTR index, CArray const* other)
    {
        check(index >= 0);
        if (other->size_ == 0)
            return;
        INT_PTR const more = other->size_;
        Restore undo = {this, size_};
        if (index > size_)
            SetSize(index);
        reserve(sum(size_, more));
        std::uninitialized_copy_n(other->data_, more, data_ + size_);
        size_ += more;
        undo.array = nullptr;
        std::rotate(data_ + index, data_ + (size_ - more), data_ + size_);
    }
    /// Removes `count` elements from `index` on; std::out_of_range if there are not so many.
    void RemoveAt(INT_PTR index, INT_PTR count = 1)
    {
        check(index >= 0 && count >= 0 && index <= size_ && count <= size_ - index);
        std::move(data_ + index + count, data_ + size_, data_ + index);
        std::destroy(data_ + (size_ - count), data_ + size_);
        size_ -= count;
    }

protected:
    template <class Value>
    INT_PTR add(Value&& value)
    {
        if (size_ < capacity_) {
            ::new (static_cast<void*>(data_ + size_)) TYPE(std::forward<Value>(value));
        } else {
            TYPE kept(std::forward<Value>(value));  // it may be an element that growing moves
            reserve(sum(size_, 1));
            ::new (static_cast<void*>(data_ + size_)) TYPE(std::move(kept));
        }
        return size_++;
    }

private:
    // Cuts the array back to its size before a call that failed.
    struct Restore {
        CArray* array;
        INT_PTR size;
        ~Restore()
        {
            if (array) {
                std::destroy(array->data_ + size, array->data_ + array->size_);
                array->size_ = size;
            }
        }
    };

    static void check(bool good)
    {
        if (!good)
            throw std::out_of_range("an array has no element there");
    }
    INT_PTR checked(INT_PTR index) const
    {
        check(static_cast<std::size_t>(index) < static_cast<std::size_t>(size_));
        return index;
    }

    static INT_PTR sum(INT_PTR size, INT_PTR more)
    {
        if (more > std::numeric_limits<INT_PTR>::max() - size)
            throw std::bad_alloc();
        return size + more;
    }

    void reserve(INT_PTR size)
    {
        if (size <= capacity_)
            return;
        INT_PTR const more = std::max(growBy_, size_ / 2);
        INT_PTR const wanted =
            size_ > std::numeric_limits<INT_PTR>::max() - more ? size : std::max(size, size_ + more);
        reallocate(wanted);
    }

    void reallocate(INT_PTR capacity)
    {
        if (static_cast<std::size_t>(capacity) > std::numeric_limits<std::size_t>::max() / 2 / sizeof(TYPE))
            throw std::bad_alloc();
        Memory memory = {std::allocator<TYPE>().allocate(static_cast<std::size_t>(capacity)), capacity};
        if constexpr (std::is_nothrow_move_constructible_v<TYPE> || !std::is_copy_constructible_v<TYPE>)
            std::uninitialized_move_n(data_, size_, memory.data);
        else
            std::uninitialized_copy_n(data_, size_, memory.data);
        std::destroy(data_, data_ + size_);
        std::swap(data_, memory.data);
        std::swap(capacity_, memory.capacity);
    }

    struct Memory {
        TYPE* data;
        INT_PTR capacity;
        ~Memory()
        {
            if (data)
                std::allocator<TYPE>().deallocate(data, static_cast<std::size_t>(capacity));
        }
    };

    void release() noexcept
    {
        std::destroy(data_, data_ + size_);
        Memory const memory = {data_, capacity_};
        data_ = nullptr;
        size_ = capacity_ = 0;
    }

    void swap(CArray& other) noexcept
    {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
    }

    TYPE* data_ = nullptr;
    INT_PTR size_ = 0;
    INT_PTR capacity_ = 0;
    INT_PTR growBy_ = 0;
};
