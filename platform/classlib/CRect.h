// CRect.h: a rectangle in pixels.
//
//   CRect area(10, 10, 110, 60);          // left, top, right, bottom
//   area.Width();                         // 100
//   area.InflateRect(5, 5);               // (5, 5, 115, 65)
//   area & CRect(0, 0, 50, 50);           // what they share: (5, 5, 50, 50)
//
// It is the system's RECT with operations. The right and bottom edges do not
// belong to it: it is empty if it has no width or no height, or a negative one,
// which NormalizeRect turns round. Sums beyond the range of a LONG wrap around.
#pragma once

#include "platform/os/os.h"

#include "platform/classlib/CPoint.h"

#include <algorithm>
#include <cstdint>
#include <utility>

class CRect : public RECT {
public:
    CRect() noexcept : RECT{0, 0, 0, 0} { }
    CRect(LONG l, LONG t, LONG r, LONG b) noexcept : RECT{l, t, r, b} { }
    CRect(RECT const& other) noexcept : RECT(other) { }
    /// A null pointer gives (0, 0, 0, 0).
    explicit CRect(RECT const* other) noexcept : CRect(other ? CRect(*other) : CRect()) { }
    CRect(POINT corner, SIZE size) noexcept : CRect(corner, CPoint(corner) + size) { }
    CRect(POINT topLeft, POINT bottomRight) noexcept
        : RECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y}
    {
    }

    operator LPRECT() noexcept { return this; }
    operator RECT const*() const noexcept { return this; }

    LONG Width() const noexcept { return zk::wrappingDifference(right, left); }
    LONG Height() const noexcept { return zk::wrappingDifference(bottom, top); }
    CSize Size() const noexcept { return {Width(), Height()}; }
    CPoint TopLeft() const noexcept { return {left, top}; }
    CPoint BottomRight() const noexcept { return {right, bottom}; }
    /// The middle, cut towards zero.
    CPoint CenterPoint() const noexcept { return {middle(left, right), middle(top, bottom)}; }

    BOOL IsRectEmpty() const noexcept { return left >= right || top >= bottom; }
    /// Whether all four numbers are 0.
    BOOL IsRectNull() const noexcept { return *this == CRect(); }
    /// Whether the point is inside; the left and top edges are, the others are not.
    BOOL PtInRect(POINT point) const noexcept
    {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }

    void SetRect(LONG l, LONG t, LONG r, LONG b) noexcept { *this = CRect(l, t, r, b); }
    void SetRectEmpty() noexcept { *this = CRect(); }
    void CopyRect(RECT const* other) noexcept { *this = CRect(other); }
    BOOL EqualRect(RECT const* other) const noexcept { return other && *this == CRect(*other); }

    /// Move each edge outwards, or inwards.
    void InflateRect(LONG x, LONG y) noexcept { InflateRect(x, y, x, y); }
    void InflateRect(SIZE by) noexcept { InflateRect(by.cx, by.cy); }
    void InflateRect(RECT const* by) noexcept { InflateRect(by->left, by->top, by->right, by->bottom); }
    void InflateRect(LONG l, LONG t, LONG r, LONG b) noexcept
    {
        left = zk::wrappingDifference(left, l);
        top = zk::wrappingDifference(top, t);
        right = zk::wrappingSum(right, r);
        bottom = zk::wrappingSum(bottom, b);
    }
    void DeflateRect(LONG x, LONG y) noexcept { DeflateRect(x, y, x, y); }
    void DeflateRect(SIZE by) noexcept { DeflateRect(by.cx, by.cy); }
    void DeflateRect(RECT const* by) noexcept { DeflateRect(by->left, by->top, by->right, by->bottom); }
    void DeflateRect(LONG l, LONG t, LONG r, LONG b) noexcept
    {
        left = zk::wrappingSum(left, l);
        top = zk::wrappingSum(top, t);
        right = zk::wrappingDifference(right, r);
        bottom = zk::wrappingDifference(bottom, b);
    }

    void OffsetRect(LONG x, LONG y) noexcept
    {
        left = zk::wrappingSum(left, x);
        top = zk::wrappingSum(top, y);
        right = zk::wrappingSum(right, x);
        bottom = zk::wrappingSum(bottom, y);
    }
    void OffsetRect(POINT by) noexcept { OffsetRect(by.x, by.y); }
    void OffsetRect(SIZE by) noexcept { OffsetRect(by.cx, by.cy); }
    void MoveToX(LONG x) noexcept { OffsetRect(zk::wrappingDifference(x, left), 0); }
    void MoveToY(LONG y) noexcept { OffsetRect(0, zk::wrappingDifference(y, top)); }
    void MoveToXY(LONG x, LONG y) noexcept
    {
        MoveToX(x);
        MoveToY(y);
    }
    void MoveToXY(POINT to) noexcept { MoveToXY(to.x, to.y); }

    /// Turns round a negative width or height.
    void NormalizeRect() noexcept
    {
        if (left > right)
            std::swap(left, right);
        if (top > bottom)
            std::swap(top, bottom);
    }

    /// Becomes what both rectangles share. FALSE, and (0, 0, 0, 0), if that is nothing.
    BOOL IntersectRect(RECT const* first, RECT const* second) noexcept
    {
        CRect const shared(std::max(first->left, second->left), std::max(first->top, second->top),
                           std::min(first->right, second->right), std::min(first->bottom, second->bottom));
        bool const isEmpty =
            CRect(first).IsRectEmpty() || CRect(second).IsRectEmpty() || shared.IsRectEmpty();
        *this = isEmpty ? CRect() : shared;
        return !isEmpty;
    }
    /// Becomes the smallest rectangle around both; an empty one does not count.
    /// FALSE, and (0, 0, 0, 0), if both are empty.
    BOOL UnionRect(RECT const* first, RECT const* second) noexcept
    {
        CRect const one(first);
        CRect const other(second);
        if (one.IsRectEmpty())
            *this = other.IsRectEmpty() ? CRect() : other;
        else if (other.IsRectEmpty())
            *this = one;
        else
            *this = CRect(std::min(one.left, other.left), std::min(one.top, other.top),
                          std::max(one.right, other.right), std::max(one.bottom, other.bottom));
        return !IsRectEmpty();
    }

    friend bool operator==(CRect const& left, CRect const& right) noexcept
    {
        return left.left == right.left && left.top == right.top && left.right == right.right &&
            left.bottom == right.bottom;
    }
    friend bool operator!=(CRect const& left, CRect const& right) noexcept { return !(left == right); }

    // A point or a size moves the rectangle; a rectangle moves its edges, outwards with a plus.
    void operator+=(POINT by) noexcept { OffsetRect(by); }
    void operator+=(SIZE by) noexcept { OffsetRect(by); }
    void operator+=(RECT const* by) noexcept { InflateRect(by); }
    void operator-=(POINT by) noexcept { OffsetRect(-CPoint(by)); }
    void operator-=(SIZE by) noexcept { OffsetRect(-CSize(by)); }
    void operator-=(RECT const* by) noexcept { DeflateRect(by); }
    void operator&=(RECT const& other) noexcept { IntersectRect(this, &other); }
    void operator|=(RECT const& other) noexcept { UnionRect(this, &other); }

    template <class By>
    CRect operator+(By const& by) const noexcept
    {
        CRect result(*this);
        result += by;
        return result;
    }
    template <class By>
    CRect operator-(By const& by) const noexcept
    {
        CRect result(*this);
        result -= by;
        return result;
    }
    CRect operator&(RECT const& other) const noexcept
    {
        CRect result(*this);
        result &= other;
        return result;
    }
    CRect operator|(RECT const& other) const noexcept
    {
        CRect result(*this);
        result |= other;
        return result;
    }

private:
    static LONG middle(LONG low, LONG high) noexcept
    {
        return static_cast<LONG>((std::int64_t(low) + high) / 2);
    }
};
