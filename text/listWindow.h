// listWindow.h: the memory of a list, an array that can slide and grow in place.
//
// A list counts its slots (`allocated`) and places its elements among them by
// fixed rules: it grows by small steps and centres itself often. Were each rule
// an array of its own, a list of n elements would cost n * n moves. So the array
// is a window on a larger block of raw memory:
//
//    block: | head | raw | slot slot slot ... slot | raw |
//                        ^ window, `allocated` slots, all constructed
//
// To centre the elements the window slides instead of them; to grow, it takes
// in raw memory at its ends. Only when the block is used up do elements move,
// into a block that is larger by half. Where the block starts and how many
// slots fit is written right in front of the window, in the head or in raw
// memory; the list itself holds no more than a pointer to slot 0.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace zk {

/// Where a window lies and which of its slots hold elements.
struct ListExtent {
    std::ptrdiff_t allocated;  ///< slots in the window
    std::ptrdiff_t first;      ///< the slot of element 0
    std::ptrdiff_t count;      ///< elements
};

/// Whether an object may be moved by copying its bytes and forgetting the original. A class that may
/// says so by a member type `zkRelocatable`.
template <class T, class = void>
struct IsRelocatable : std::is_trivially_copyable<T> {
};
template <class T>
struct IsRelocatable<T, std::void_t<typename T::zkRelocatable>> : std::true_type {
};

template <class T>
class ListWindow {
public:
    /// A window of `allocated` default elements, in a block that holds no more; null for none.
    static T* make(std::ptrdiff_t allocated)
    {
        if (allocated == 0)
            return nullptr;
        Fresh fresh(allocated, 0);
        fresh.construct(0, allocated);
        return fresh.release();
    }

    /// A copy of all slots of a window.
    static T* copy(T const* window, std::ptrdiff_t allocated)
    {
        if (allocated == 0)
            return nullptr;
        Fresh fresh(allocated, 0);
        std::uninitialized_copy(window, window + allocated, fresh.slots());
        return fresh.release();
    }

    static void release(T* window, std::ptrdiff_t allocated) noexcept
    {
        if (!window)
            return;
        Head const head = headOf(window);
        std::destroy(window, window + allocated);
        ::operator delete(head.block);
    }

    /// The window after its slots were counted and placed anew: the elements of `from` at their place
    /// in `to`, which holds as many, and default values all around. Where the memory cannot be had the
    /// old window stays as it is.
    static T* arrange(T* window, ListExtent const& from, ListExtent const& to)
    {
        if constexpr (movesInPlace) {
            if (window) {
                Head const head = headOf(window);
                std::ptrdiff_t const place = window - slotsOf(head) + from.first - to.first;
                if (place >= 0 && place + to.allocated <= head.slots)
                    return slide(window, from, to, head);
                if (to.allocated <= smallList ? to.allocated <= head.slots
                                              : to.allocated <= head.slots / 3 * 2)
                    return shift(window, from, to, head, placeIn(head.slots, from, to));
            }
        }
        return move(window, from, to);
    }

private:
    struct Head {
        char* block;
        std::ptrdiff_t slots;
    };

    static constexpr std::ptrdiff_t smallList = 64;
    static constexpr std::size_t headSize = (sizeof(Head) + alignof(std::max_align_t) - 1) /
        alignof(std::max_align_t) * alignof(std::max_align_t);
    static constexpr bool movesInPlace =
        std::is_nothrow_move_constructible_v<T> && std::is_nothrow_default_constructible_v<T>;
    static_assert(alignof(T) <= alignof(std::max_align_t));

    // The head need not be aligned as a Head, only as a T.
    static Head headOf(T const* window) noexcept
    {
        Head head;
        std::memcpy(&head, reinterpret_cast<char const*>(window) - sizeof head, sizeof head);
        return head;
    }

    static void setHead(T* window, Head const& head) noexcept
    {
        std::memcpy(reinterpret_cast<char*>(window) - sizeof head, &head, sizeof head);
    }

    static T* slotsOf(Head const& head) noexcept { return reinterpret_cast<T*>(head.block + headSize); }

    // Leaves most of the free slots on the side towards which the list grows.
    static std::ptrdiff_t placeIn(std::ptrdiff_t slots, ListExtent const& from, ListExtent const& to) noexcept
    {
        std::ptrdiff_t const free = slots - to.allocated;
        bool const growsAtItsFront = from.first == 0 && from.count < from.allocated;
        return growsAtItsFront ? free - free / 4 : free / 4;
    }

    // A block under construction; what was made is undone unless it is released.
    class Fresh {
    public:
        // A list counts its slots in an int, and no block has more than twice as many: the size fits.
        Fresh(std::ptrdiff_t slots, std::ptrdiff_t place)
        {
            head_ = {static_cast<char*>(::operator new(headSize + slots * sizeof(T))), slots};
            window_ = slotsOf(head_) + place;
        }
        Fresh(Fresh const&) = delete;
        Fresh& operator=(Fresh const&) = delete;

        ~Fresh()
        {
            if (!window_)
                return;
            std::destroy(window_, window_ + made_);
            ::operator delete(head_.block);
        }

        T* slots() const noexcept { return window_; }

        // Default values in the slots from `from` to before `to`, to be called from left to right.
        void construct(std::ptrdiff_t from, std::ptrdiff_t to)
        {
            std::uninitialized_value_construct(window_ + from, window_ + to);
            made_ = to;
        }

        void take(T* elements, std::ptrdiff_t from, std::ptrdiff_t count)
        {
            for (std::ptrdiff_t i = 0; i < count; ++i, ++made_)
                ::new (static_cast<void*>(window_ + from + i)) T(std::move_if_noexcept(elements[i]));
        }

        T* release() noexcept
        {
            setHead(window_, head_);
            return std::exchange(window_, nullptr);
        }

    private:
        Head head_;
        T* window_;
        std::ptrdiff_t made_ = 0;
    };

    static void destroyFreeSlots(T* window, ListExtent const& extent) noexcept
    {
        std::destroy(window, window + extent.first);
        std::destroy(window + extent.first + extent.count, window + extent.allocated);
    }

    static void makeFreeSlots(T* window, ListExtent const& extent) noexcept
    {
        std::uninitialized_value_construct(window, window + extent.first);
        std::uninitialized_value_construct(window + extent.first + extent.count, window + extent.allocated);
    }

    // The elements stay where they are, the window moves.
    static T* slide(T* window, ListExtent const& from, ListExtent const& to, Head const& head) noexcept
    {
        destroyFreeSlots(window, from);
        T* const moved = window + (from.first - to.first);
        setHead(moved, head);
        makeFreeSlots(moved, to);
        return moved;
    }

    // The elements move within their block.
    static T* shift(T* window, ListExtent const& from, ListExtent const& to, Head const& head,
                    std::ptrdiff_t place) noexcept
    {
        destroyFreeSlots(window, from);
        T* const moved = slotsOf(head) + place;
        relocate(window + from.first, moved + to.first, from.count);
        setHead(moved, head);
        makeFreeSlots(moved, to);
        return moved;
    }

    // Moves elements to slots that hold none; the two may overlap.
    static void relocate(T* source, T* target, std::ptrdiff_t count) noexcept
    {
        if constexpr (IsRelocatable<T>::value) {
            if (count > 0)
                std::memmove(static_cast<void*>(target), static_cast<void const*>(source),
                             static_cast<std::size_t>(count) * sizeof(T));
        } else if (std::less<T*>()(target, source)) {
            for (std::ptrdiff_t i = 0; i < count; ++i)
                relocate(source + i, target + i);
        } else if (target != source) {
            for (std::ptrdiff_t i = count; i-- > 0;)
                relocate(source + i, target + i);
        }
    }

    static void relocate(T* source, T* target) noexcept
    {
        ::new (static_cast<void*>(target)) T(std::move(*source));
        source->~T();
    }

    // The elements move to a block of their own.
    static T* move(T* window, ListExtent const& from, ListExtent const& to)
    {
        std::ptrdiff_t const slots = to.allocated <= smallList ? to.allocated : to.allocated * 2;
        Fresh fresh(slots, placeIn(slots, from, to));
        if constexpr (movesInPlace) {
            T* const elements = window + from.first;
            makeFreeSlots(fresh.slots(), to);
            relocate(elements, fresh.slots() + to.first, from.count);
            T* const moved = fresh.release();
            if (window) {
                destroyFreeSlots(window, from);
                ::operator delete(headOf(window).block);
            }
            return moved;
        } else {
            fresh.construct(0, to.first);
            fresh.take(window + from.first, to.first, from.count);
            fresh.construct(to.first + from.count, to.allocated);
            release(window, from.allocated);
            return fresh.release();
        }
    }
};

}  // namespace zk
