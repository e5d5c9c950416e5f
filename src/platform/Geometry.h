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

class QM_API CPoint : public POINT
{
public:
    CPoint() { x = y = 0; }
    CPoint(int initX, int initY) { x = initX; y = initY; }
    CPoint(POINT p) { x = p.x; y = p.y; }
    bool operator==(POINT p) const { return x == p.x && y == p.y; }
    bool operator!=(POINT p) const { return !(*this == p); }
};

class QM_API CSize : public SIZE
{
public:
    CSize() { cx = cy = 0; }
    CSize(int initCX, int initCY) { cx = initCX; cy = initCY; }
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

    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }
    bool operator==(const RECT& rc) const
    {
        return left == rc.left && top == rc.top && right == rc.right && bottom == rc.bottom;
    }
    bool operator!=(const RECT& rc) const { return !(*this == rc); }
};
