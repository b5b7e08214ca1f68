// Points, sizes and rectangles in pixels, y downwards.
#pragma once

#include "host_winuser.h"

// A width and a height. No arithmetic: dialogs here only compare and hand on.
class CSize : public SIZE {
public:
    CSize() : SIZE{0, 0} {}  // nothing
    CSize(int initCX, int initCY) : SIZE{initCX, initCY} {}
    CSize(SIZE size) : SIZE(size) {}  // from the plain record
    BOOL operator==(SIZE size) const { return cx == size.cx && cy == size.cy; }
    BOOL operator!=(SIZE size) const { return !(*this == size); }
};

// A place; x to the right, y down.
class CPoint : public POINT {
public:
    CPoint() : POINT{0, 0} {}  // the corner of its parent
    CPoint(int initX, int initY) : POINT{initX, initY} {}
    CPoint(POINT point) : POINT(point) {}    // from the plain record
    void Offset(int xOffset, int yOffset) {  // moves it
        x += xOffset;
        y += yOffset;
    }
    BOOL operator==(POINT point) const { return x == point.x && y == point.y; }
    BOOL operator!=(POINT point) const { return !(*this == point); }
};

// Right and bottom lie outside.
class CRect : public RECT {  // left, top, right, bottom
public:
    CRect() : RECT{0, 0, 0, 0} {}  // empty
    CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
    CRect(const RECT& rect) : RECT(rect) {}
    // The rectangle of that size below and to the right of a point.
    CRect(POINT point, SIZE size) : RECT{point.x, point.y, point.x + size.cx, point.y + size.cy} {}

    // For functions that take the plain record.
    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }
    int Width() const { return right - left; }  // below 0 when the sides stand crosswise
    int Height() const { return bottom - top; }
    CSize Size() const { return CSize(Width(), Height()); }
    CPoint TopLeft() const { return CPoint(left, top); }
    CPoint CenterPoint() const { return CPoint((left + right) / 2, (top + bottom) / 2); }
    BOOL IsRectEmpty() const { return right <= left || bottom <= top; }  // no pixel lies inside
    // Left and top belong to it.
    BOOL PtInRect(POINT point) const {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }
    // left, top, right, bottom
    void SetRect(int l, int t, int r, int b) { *this = CRect(l, t, r, b); }
    void OffsetRect(int x, int y) {  // moves it, its size stays
        left += x;
        right += x;
        top += y;
        bottom += y;
    }
    // Moves the sides outwards, DeflateRect inwards.
    void InflateRect(int x, int y) {
        left -= x;
        right += x;
        top -= y;
        bottom += y;
    }
    void DeflateRect(int x, int y) { InflateRect(-x, -y); }  // inwards on all sides
    BOOL operator==(const RECT& rect) const {                // all four sides
        return left == rect.left && top == rect.top && right == rect.right && bottom == rect.bottom;
    }
    BOOL operator!=(const RECT& rect) const { return !(*this == rect); }
};
