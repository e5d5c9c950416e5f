// MessageMap.h - message tables in MFC's shape.
//
//   // in the class:            DECLARE_MESSAGE_MAP()
//   BEGIN_MESSAGE_MAP(CNumEditEx, CEdit)
//       ON_WM_CHAR()
//       ON_WM_KILLFOCUS()
//       ON_CONTROL_REFLECT(EN_SETFOCUS, &CNumEditEx::OnSetfocus)
//       ON_MESSAGE(WM_SETFONT, &CFlatHeaderCtrl::OnSetFont)
//       ON_NOTIFY_REFLECT(NM_CUSTOMDRAW, &CListCtrlEx::OnCustomDraw)
//   END_MESSAGE_MAP()
//
// CWnd::WindowProc looks a message up in the object's table, then in its
// bases' tables; the first entry that matches handles it. Handlers keep
// MFC's names and signatures (OnLButtonDown(UINT, CPoint), OnChar(UINT,
// UINT, UINT), OnKillFocus(CWnd*)...); CWnd declares every one of them,
// doing the default processing, so a handler passes a message on by calling
// its base class's handler (CEdit::OnChar(...)).
//
// Each entry carries a small function, written by the ON_ macro, that
// unpacks wParam and lParam and calls the handler; it answers FALSE only for
// the _EX forms whose handler declined, and the search then goes on.
// Notifications a control sends its parent come back to the control itself
// as "reflected" messages (WM_REFLECT_BASE + the message): ON_NOTIFY_REFLECT,
// ON_CONTROL_REFLECT and ON_WM_CTLCOLOR_REFLECT handle those.
#pragma once
#include "QMExport.h"

class CWnd;

#ifndef WM_CTLCOLOR
#define WM_CTLCOLOR 0x0019
#endif

// Reflected messages are numbered from here, as in MFC.
constexpr UINT WM_REFLECT_BASE = 0xBC00;

using AFX_MSGTHUNK = BOOL (*)(CWnd* wnd, WPARAM wParam, LPARAM lParam, LRESULT* result);

struct AFX_MSGMAP_ENTRY
{
    UINT nMessage;   // the message, or WM_REFLECT_BASE + the message
    UINT nCode;      // notification code for WM_COMMAND and WM_NOTIFY
    UINT nID;        // control id range for WM_COMMAND and WM_NOTIFY
    UINT nLastID;
    AFX_MSGTHUNK pfn; // null ends the table
};

struct AFX_MSGMAP
{
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

#define DECLARE_MESSAGE_MAP()                          \
protected:                                             \
    static const AFX_MSGMAP* GetThisMessageMap();      \
    const AFX_MSGMAP* GetMessageMap() const override;  \
private:

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                  \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); } \
    const AFX_MSGMAP* theClass::GetThisMessageMap()                             \
    {                                                                           \
        typedef theClass ThisClass;                                             \
        typedef baseClass TheBaseClass;                                         \
        static const AFX_MSGMAP_ENTRY entries[] = {

#define END_MESSAGE_MAP()                                                       \
            {0, 0, 0, 0, nullptr}                                               \
        };                                                                      \
        static const AFX_MSGMAP map = {&TheBaseClass::GetThisMessageMap, &entries[0]}; \
        return &map;                                                            \
    }

// The body of an entry's function: `self` is the object, typed as the class
// whose table holds the entry; the expression's value is the result.
#define QM_MSG_ENTRY(message, code, id, lastId, body)                           \
    {message, static_cast<UINT>(code), static_cast<UINT>(id), static_cast<UINT>(lastId), \
     [](CWnd* wnd, WPARAM wParam, LPARAM lParam, LRESULT* result) -> BOOL {     \
         ThisClass* self = static_cast<ThisClass*>(wnd);                        \
         (void)self; (void)wParam; (void)lParam; (void)result;                  \
         body;                                                                  \
         return TRUE;                                                           \
     }},

#define QM_PT(lParam) CPoint(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)))
#define QM_VOID_ENTRY(message, call) QM_MSG_ENTRY(message, 0, 0, 0, (self->call, *result = 0))
#define QM_MOUSE_ENTRY(message, handler) \
    QM_MSG_ENTRY(message, 0, 0, 0, (self->handler(static_cast<UINT>(wParam), QM_PT(lParam)), *result = 0))
#define QM_KEY_ENTRY(message, handler)                                                          \
    QM_MSG_ENTRY(message, 0, 0, 0,                                                              \
                 (self->handler(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam)), *result = 0))

// Window messages, each to the handler of MFC's name.
#define ON_WM_CREATE() \
    QM_MSG_ENTRY(WM_CREATE, 0, 0, 0, *result = self->OnCreate(reinterpret_cast<LPCREATESTRUCTW>(lParam)))
#define ON_WM_DESTROY() QM_VOID_ENTRY(WM_DESTROY, OnDestroy())
#define ON_WM_NCDESTROY() QM_VOID_ENTRY(WM_NCDESTROY, OnNcDestroy())
#define ON_WM_CLOSE() QM_VOID_ENTRY(WM_CLOSE, OnClose())
#define ON_WM_PAINT() QM_VOID_ENTRY(WM_PAINT, OnPaint())
#define ON_WM_SYSCOLORCHANGE() QM_VOID_ENTRY(WM_SYSCOLORCHANGE, OnSysColorChange())
#define ON_WM_CANCELMODE() QM_VOID_ENTRY(WM_CANCELMODE, OnCancelMode())
#define ON_WM_MOUSELEAVE() QM_VOID_ENTRY(WM_MOUSELEAVE, OnMouseLeave())
#define ON_WM_ENABLE() QM_VOID_ENTRY(WM_ENABLE, OnEnable(static_cast<BOOL>(wParam)))
#define ON_WM_TIMER() QM_VOID_ENTRY(WM_TIMER, OnTimer(static_cast<UINT_PTR>(wParam)))
#define ON_WM_SIZE() \
    QM_VOID_ENTRY(WM_SIZE, OnSize(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam)))
#define ON_WM_SETFOCUS() QM_VOID_ENTRY(WM_SETFOCUS, OnSetFocus(CWnd::FromHandle(reinterpret_cast<HWND>(wParam))))
#define ON_WM_KILLFOCUS() \
    QM_VOID_ENTRY(WM_KILLFOCUS, OnKillFocus(CWnd::FromHandle(reinterpret_cast<HWND>(wParam))))
#define ON_WM_CAPTURECHANGED() \
    QM_VOID_ENTRY(WM_CAPTURECHANGED, OnCaptureChanged(CWnd::FromHandle(reinterpret_cast<HWND>(lParam))))
#define ON_WM_ERASEBKGND()                                                     \
    QM_MSG_ENTRY(WM_ERASEBKGND, 0, 0, 0,                                       \
                 CDC dc; dc.Attach(reinterpret_cast<HDC>(wParam));             \
                 *result = self->OnEraseBkgnd(&dc); dc.Detach())
#define ON_WM_SETCURSOR()                                                                              \
    QM_MSG_ENTRY(WM_SETCURSOR, 0, 0, 0,                                                                \
                 *result = self->OnSetCursor(CWnd::FromHandle(reinterpret_cast<HWND>(wParam)),         \
                                             LOWORD(lParam), HIWORD(lParam)))
#define ON_WM_NCHITTEST() QM_MSG_ENTRY(WM_NCHITTEST, 0, 0, 0, *result = self->OnNcHitTest(QM_PT(lParam)))
#define ON_WM_GETDLGCODE() QM_MSG_ENTRY(WM_GETDLGCODE, 0, 0, 0, *result = self->OnGetDlgCode())
#define ON_WM_MOUSEMOVE() QM_MOUSE_ENTRY(WM_MOUSEMOVE, OnMouseMove)
#define ON_WM_LBUTTONDOWN() QM_MOUSE_ENTRY(WM_LBUTTONDOWN, OnLButtonDown)
#define ON_WM_LBUTTONUP() QM_MOUSE_ENTRY(WM_LBUTTONUP, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() QM_MOUSE_ENTRY(WM_LBUTTONDBLCLK, OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() QM_MOUSE_ENTRY(WM_RBUTTONDOWN, OnRButtonDown)
#define ON_WM_RBUTTONUP() QM_MOUSE_ENTRY(WM_RBUTTONUP, OnRButtonUp)
#define ON_WM_KEYDOWN() QM_KEY_ENTRY(WM_KEYDOWN, OnKeyDown)
#define ON_WM_KEYUP() QM_KEY_ENTRY(WM_KEYUP, OnKeyUp)
#define ON_WM_CHAR() QM_KEY_ENTRY(WM_CHAR, OnChar)
#define QM_SCROLL_ENTRY(message, handler)                                                           \
    QM_MSG_ENTRY(message, 0, 0, 0,                                                                  \
                 (self->handler(LOWORD(wParam), HIWORD(wParam),                                     \
                                static_cast<CScrollBar*>(CWnd::FromHandle(reinterpret_cast<HWND>(lParam)))), \
                  *result = 0))
#define ON_WM_HSCROLL() QM_SCROLL_ENTRY(WM_HSCROLL, OnHScroll)
#define ON_WM_VSCROLL() QM_SCROLL_ENTRY(WM_VSCROLL, OnVScroll)

// Any message to `LRESULT (Class::*)(WPARAM, LPARAM)`.
#define ON_MESSAGE(message, memberFxn) \
    QM_MSG_ENTRY(message, 0, 0, 0, *result = (self->*(memberFxn))(wParam, lParam))

// WM_COMMAND from a menu, an accelerator or a button (`void (Class::*)()`).
#define ON_COMMAND(id, memberFxn) QM_MSG_ENTRY(WM_COMMAND, 0, id, id, ((self->*(memberFxn))(), *result = 0))
#define ON_CONTROL(code, id, memberFxn) \
    QM_MSG_ENTRY(WM_COMMAND, code, id, id, ((self->*(memberFxn))(), *result = 0))
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_LBN_SELCHANGE(id, memberFxn) ON_CONTROL(LBN_SELCHANGE, id, memberFxn)
#define ON_CBN_SELCHANGE(id, memberFxn) ON_CONTROL(CBN_SELCHANGE, id, memberFxn)

// WM_NOTIFY from child `id` to `void (Class::*)(NMHDR*, LRESULT*)`; the _EX
// and _RANGE forms take `BOOL (Class::*)(UINT id, NMHDR*, LRESULT*)` and
// `void (Class::*)(UINT id, NMHDR*, LRESULT*)`.
#define ON_NOTIFY(code, id, memberFxn) \
    QM_MSG_ENTRY(WM_NOTIFY, code, id, id, (self->*(memberFxn))(reinterpret_cast<NMHDR*>(lParam), result))
#define ON_NOTIFY_RANGE(code, id, lastId, memberFxn)                                                      \
    QM_MSG_ENTRY(WM_NOTIFY, code, id, lastId,                                                             \
                 (self->*(memberFxn))(static_cast<UINT>(reinterpret_cast<NMHDR*>(lParam)->idFrom),        \
                                      reinterpret_cast<NMHDR*>(lParam), result))
#define ON_NOTIFY_EX_RANGE(code, id, lastId, memberFxn)                                                   \
    QM_MSG_ENTRY(WM_NOTIFY, code, id, lastId,                                                             \
                 return (self->*(memberFxn))(static_cast<UINT>(reinterpret_cast<NMHDR*>(lParam)->idFrom), \
                                             reinterpret_cast<NMHDR*>(lParam), result))
#define ON_NOTIFY_EX(code, id, memberFxn) ON_NOTIFY_EX_RANGE(code, id, id, memberFxn)

// Notifications this control sent its parent, coming back to the control.
#define ON_NOTIFY_REFLECT(code, memberFxn)                            \
    QM_MSG_ENTRY(WM_REFLECT_BASE + WM_NOTIFY, code, 0, 0xFFFFFFFFu,   \
                 (self->*(memberFxn))(reinterpret_cast<NMHDR*>(lParam), result))
#define ON_NOTIFY_REFLECT_EX(code, memberFxn)                         \
    QM_MSG_ENTRY(WM_REFLECT_BASE + WM_NOTIFY, code, 0, 0xFFFFFFFFu,   \
                 return (self->*(memberFxn))(reinterpret_cast<NMHDR*>(lParam), result))
#define ON_CONTROL_REFLECT(code, memberFxn) \
    QM_MSG_ENTRY(WM_REFLECT_BASE + WM_COMMAND, code, 0, 0xFFFFFFFFu, ((self->*(memberFxn))(), *result = 0))
#define ON_CONTROL_REFLECT_EX(code, memberFxn) \
    QM_MSG_ENTRY(WM_REFLECT_BASE + WM_COMMAND, code, 0, 0xFFFFFFFFu, return (self->*(memberFxn))())
// `HBRUSH CtlColor(CDC*, UINT ctlType)`; a null brush lets the parent choose.
#define ON_WM_CTLCOLOR_REFLECT()                                                             \
    QM_MSG_ENTRY(WM_REFLECT_BASE + WM_CTLCOLOR, 0, 0, 0,                                     \
                 CDC dc; dc.Attach(reinterpret_cast<HDC>(wParam));                           \
                 HBRUSH brush = self->CtlColor(&dc, static_cast<UINT>(lParam)); dc.Detach(); \
                 *result = reinterpret_cast<LRESULT>(brush); return brush != nullptr)
