// CPoint.h: a point and a size in pixels.
//
//   CPoint(3, 4) + CSize(1, 1);           // CPoint(4, 5)
//   CPoint(3, 4) - CPoint(1, 1);          // CSize(2, 3)
//
// Both are the system's POINT and SIZE with operations. Sums beyond the range
// of a LONG wrap around.
#pragma once

#include "platform/os/os.h"

namespace zk {

inline LONG wrappingSum(LONG left, LONG right) noexcept
{
    return static_cast<LONG>(static_cast<ULONG>(left) + static_cast<ULONG>(right));
}

inline LONG wrappingDifference(LONG left, LONG right) noexcept
{
    return static_cast<LONG>(static_cast<ULONG>(left) - static_cast<ULONG>(right));
}

}  // namespace zk

/// A width (cx) and a height (cy).
class CSize : public SIZE {
public:
    CSize() noexcept : SIZE{0, 0} { }
    CSize(LONG width, LONG height) noexcept : SIZE{width, height} { }
    CSize(SIZE size) noexcept : SIZE(size) { }
    explicit CSize(POINT point) noexcept : SIZE{point.x, point.y} { }

    void SetSize(LONG width, LONG height) noexcept { *this = CSize(width, height); }

    CSize& operator+=(SIZE other) noexcept { return *this = *this + other; }
    CSize& operator-=(SIZE other) noexcept { return *this = *this - other; }
    CSize operator-() const noexcept
    {
        return {zk::wrappingDifference(0, cx), zk::wrappingDifference(0, cy)};
    }
    CSize operator+(SIZE other) const noexcept
    {
        return {zk::wrappingSum(cx, other.cx), zk::wrappingSum(cy, other.cy)};
    }
    CSize operator-(SIZE other) const noexcept
    {
        return {zk::wrappingDifference(cx, other.cx), zk::wrappingDifference(cy, other.cy)};
    }
    friend bool operator==(CSize left, CSize right) noexcept
    {
        return left.cx == right.cx && left.cy == right.cy;
    }
    friend bool operator!=(CSize left, CSize right) noexcept { return !(left == right); }
};

/// A place: x to the right, y downwards.
class CPoint : public POINT {
public:
    CPoint() noexcept : POINT{0, 0} { }
    CPoint(LONG x, LONG y) noexcept : POINT{x, y} { }
    CPoint(POINT point) noexcept : POINT(point) { }
    explicit CPoint(SIZE size) noexcept : POINT{size.cx, size.cy} { }

    void SetPoint(LONG newX, LONG newY) noexcept { *this = CPoint(newX, newY); }
    void Offset(LONG dx, LONG dy) noexcept { *this += CSize(dx, dy); }
    void Offset(POINT by) noexcept { *this += by; }
    void Offset(SIZE by) noexcept { *this += by; }

    CPoint& operator+=(SIZE by) noexcept { return *this = *this + by; }
    CPoint& operator-=(SIZE by) noexcept { return *this = *this - by; }
    CPoint& operator+=(POINT by) noexcept { return *this = *this + by; }
    CPoint& operator-=(POINT by) noexcept { return *this -= CSize(by); }
    CPoint operator-() const noexcept { return CPoint(-CSize(*this)); }
    CPoint operator+(SIZE by) const noexcept { return CPoint(CSize(*this) + by); }
    CPoint operator-(SIZE by) const noexcept { return CPoint(CSize(*this) - by); }
    CPoint operator+(POINT by) const noexcept { return *this + CSize(by); }
    CSize operator-(POINT from) const noexcept { return CSize(*this) - CSize(from); }
    friend bool operator==(CPoint left, CPoint right) noexcept
    {
        return left.x == right.x && left.y == right.y;
    }
    friend bool operator!=(CPoint left, CPoint right) noexcept { return !(left == right); }
};
