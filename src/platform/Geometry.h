// Geometry.h - MFC's CPoint, CSize and CRect over the Win32 structures.
//
//   CRect rc(0, 0, 100, 50);
//   rc.Width();                 // 100
//   ::FillRect(hdc, rc, brush); // converts to LPRECT / LPCRECT
//
// Header-only value types: they add constructors and the few members the
// library uses to POINT, SIZE and RECT, whose layout they keep.
#pragma once
#include "QMExport.h"

#include <utility>

class QM_API CPoint : public POINT
{
public:
    CPoint() { x = y = 0; }
    CPoint(int initX, int initY) { x = initX; y = initY; }
    CPoint(POINT p) { x = p.x; y = p.y; }
    bool operator==(POINT p) const { return x == p.x && y == p.y; }
    bool operator!=(POINT p) const { return !(*this == p); }
    void Offset(int dx, int dy) { x += dx; y += dy; }
    CPoint operator+(POINT p) const { return CPoint(x + p.x, y + p.y); }
    CPoint operator-(POINT p) const { return CPoint(x - p.x, y - p.y); }
    CPoint& operator+=(POINT p) { Offset(p.x, p.y); return *this; }
    CPoint& operator-=(POINT p) { Offset(-p.x, -p.y); return *this; }
};

class QM_API CSize : public SIZE
{
public:
    CSize() { cx = cy = 0; }
    CSize(int initCX, int initCY) { cx = initCX; cy = initCY; }
    CSize(SIZE s) { cx = s.cx; cy = s.cy; }
    bool operator==(SIZE s) const { return cx == s.cx && cy == s.cy; }
    bool operator!=(SIZE s) const { return !(*this == s); }
};

class QM_API CRect : public RECT
{
public:
    CRect() { left = top = right = bottom = 0; }
    CRect(int l, int t, int r, int b) { SetRect(l, t, r, b); }
    CRect(const RECT& rc) { SetRect(rc.left, rc.top, rc.right, rc.bottom); }

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool IsRectEmpty() const { return right <= left || bottom <= top; }
    void SetRect(int l, int t, int r, int b) { left = l; top = t; right = r; bottom = b; }
    void SetRectEmpty() { SetRect(0, 0, 0, 0); }
    CSize Size() const { return CSize(Width(), Height()); }
    CPoint& TopLeft() { return *reinterpret_cast<CPoint*>(&left); }
    CPoint& BottomRight() { return *reinterpret_cast<CPoint*>(&right); }
    const CPoint& TopLeft() const { return *reinterpret_cast<const CPoint*>(&left); }
    const CPoint& BottomRight() const { return *reinterpret_cast<const CPoint*>(&right); }
    CPoint CenterPoint() const { return CPoint((left + right) / 2, (top + bottom) / 2); }
    bool PtInRect(POINT p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }
    void OffsetRect(int dx, int dy) { left += dx; right += dx; top += dy; bottom += dy; }
    void OffsetRect(POINT p) { OffsetRect(p.x, p.y); }
    void InflateRect(int dx, int dy) { InflateRect(dx, dy, dx, dy); }
    void InflateRect(int l, int t, int r, int b) { left -= l; top -= t; right += r; bottom += b; }
    void DeflateRect(int dx, int dy) { InflateRect(-dx, -dy); }
    void DeflateRect(int l, int t, int r, int b) { InflateRect(-l, -t, -r, -b); }
    void NormalizeRect()
    {
        if (left > right) std::swap(left, right);
        if (top > bottom) std::swap(top, bottom);
    }
    // Both set this rectangle and answer whether the result is non-empty.
    bool IntersectRect(LPCRECT a, LPCRECT b) { return ::IntersectRect(this, a, b) != FALSE; }
    bool UnionRect(LPCRECT a, LPCRECT b) { return ::UnionRect(this, a, b) != FALSE; }

    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }
    bool operator==(const RECT& rc) const
    {
        return left == rc.left && top == rc.top && right == rc.right && bottom == rc.bottom;
    }
    bool operator!=(const RECT& rc) const { return !(*this == rc); }
};
