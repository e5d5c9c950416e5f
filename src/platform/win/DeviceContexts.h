// DeviceContexts.h - the device contexts of a window, and an off-screen
// double buffer, each giving its context back when it goes out of scope.
//
//   void CMyCtrl::OnPaint()
//   {
//       CPaintDC dc(this);            // BeginPaint ... EndPaint
//       CMemDC mem(&dc);              // draw off screen, copied back at the end
//       mem.FillSolidRect(CRect(0, 0, 10, 10), RGB(255, 0, 0));
//   }
//
// A window that does not exist gives an empty context (GetSafeHdc() null);
// drawing into it does nothing.
#pragma once
#include "platform/Gdi.h"
#include "platform/win/Wnd.h"

class QM_API CClientDC : public CDC
{
public:
    explicit CClientDC(CWnd* wnd);
    ~CClientDC() override;

protected:
    HWND m_hWnd;
};

class QM_API CWindowDC : public CDC
{
public:
    explicit CWindowDC(CWnd* wnd);
    ~CWindowDC() override;

protected:
    HWND m_hWnd;
};

class QM_API CPaintDC : public CDC
{
public:
    explicit CPaintDC(CWnd* wnd);
    ~CPaintDC() override;

    PAINTSTRUCT m_ps{};

protected:
    HWND m_hWnd;
};

// Draws into a bitmap the size of `rect` (the clip box of `dc` when null)
// and copies it onto `dc` when destroyed; the memory context's origin is
// moved so that the caller draws in `dc`'s coordinates. When the bitmap
// cannot be made the object draws straight onto `dc`.
class QM_API CMemDC : public CDC
{
public:
    explicit CMemDC(CDC* dc, const CRect* rect = nullptr);
    ~CMemDC() override;
    CMemDC* operator->() { return this; }
    operator CMemDC*() { return this; }
    CDC& GetDC() { return *this; }

private:
    CDC* m_target;
    CBitmap m_bitmap;
    HGDIOBJ m_oldBitmap = nullptr;
    CRect m_rect;
    bool m_offScreen = false;
};
