// Wnd.h - CWnd: a C++ object attached to a window, as MFC programmers know it.
//
//   class CMyEdit : public CEdit { ... DECLARE_MESSAGE_MAP() };
//   CMyEdit edit;
//   edit.SubclassDlgItem(IDC_VALUE, CWnd::FromHandle(hDlg)); // the host's dialog
//   edit.SetWindowText(L"12");
//
// Attaching: SubclassWindow/SubclassDlgItem route the window's messages
// through WindowProc and the message tables (MessageMap.h) and call
// PreSubclassWindow; Create/CreateEx make a window that is routed from its
// very first message (PreCreateWindow, then PreSubclassWindow, then
// WM_NCCREATE and WM_CREATE reach the object); Attach only enters the
// handle in the map (FromHandlePermanent finds it, PreTranslateMessage runs)
// without routing messages. Every attached window is watched for its
// WM_NCDESTROY: a window destroyed behind the library's back (the host
// closes its dialog) leaves the map, loses its hooks, and the object's
// PostNcDestroy runs; m_hWnd is null from then on.
//
// Pre-translation: while a thread has attached windows a WH_GETMESSAGE hook
// sees every message its loops take from the queue (the host's modal
// dialogs included) and offers it to PreTranslateMessage of each attached
// object from the message's window up through its parents; a message one of
// them consumes (returns TRUE) becomes WM_NULL.
//
// Reflection: WM_COMMAND, WM_NOTIFY, WM_DRAWITEM, WM_MEASUREITEM and the
// WM_CTLCOLOR... messages that an attached control sends its parent are
// offered to the control first (OnChildNotify, which dispatches them as
// WM_REFLECT_BASE + message through its table). A parent that is itself an
// attached CWnd does this in its WindowProc; any other parent (an ordinary
// dialog of the host) gets the library's window procedure, once, for as long
// as it has attached children. A procedure the host put on above ours keeps
// its place: ours then stays below it, passing messages on, until the
// window goes.
//
// An object may be deleted by one of its own handlers, or by code they call
// (a list closing the editor whose focus-loss handler asked it to): the
// routing then touches the object no more.
//
// Null windows give false, zero or null results throughout, never a crash.
#pragma once
#include "QMExport.h"
#include "platform/CString.h"
#include "platform/Gdi.h"
#include "platform/Geometry.h"
#include "platform/RuntimeClass.h"
#include "platform/win/MessageMap.h"

#include <commctrl.h>

class CScrollBar;

class QM_API CWnd
{
public:
    CWnd() = default;
    // Destroys a window the object still holds, as MFC does; the window is
    // detached first, so none of the derived class's handlers run.
    virtual ~CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    // The run-time class record of the object's most derived class that has
    // one (DECLARE_DYNAMIC); CWnd is the root.
    static const CRuntimeClass classCWnd;
    virtual const CRuntimeClass* GetRuntimeClass() const;
    BOOL IsKindOf(const CRuntimeClass* cls) const { return GetRuntimeClass()->IsDerivedFrom(cls); }

    HWND m_hWnd = nullptr;
    HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return GetSafeHwnd(); }

    // The attached object of `hWnd`, or else a wrapper that routes nothing and
    // lives until a later look-up finds its window gone; null for null.
    static CWnd* FromHandle(HWND hWnd);
    // The attached object of `hWnd` only, else null.
    static CWnd* FromHandlePermanent(HWND hWnd);

    BOOL Attach(HWND hWnd);
    // Lets go of the window (unrouted, out of the map); returns it.
    HWND Detach();
    BOOL SubclassWindow(HWND hWnd);
    // The child `id` of `parent`; false when either does not exist.
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    HWND UnsubclassWindow();

    virtual BOOL Create(const wchar_t* className, const wchar_t* windowName, DWORD style, const RECT& rect,
                        CWnd* parent, UINT id, void* context = nullptr);
    virtual BOOL CreateEx(DWORD exStyle, const wchar_t* className, const wchar_t* windowName, DWORD style,
                          int x, int y, int width, int height, HWND parent, HMENU idOrMenu, void* param = nullptr);
    BOOL CreateEx(DWORD exStyle, const wchar_t* className, const wchar_t* windowName, DWORD style,
                  const RECT& rect, CWnd* parent, UINT id, void* param = nullptr);
    virtual BOOL DestroyWindow();

    // The window procedure of an attached, routed window: the message table,
    // else DefWindowProc.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // The processing the window had before it was attached.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL PreTranslateMessage(MSG* msg);
    // A message this control sent its parent; TRUE when the control handled it.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    // MFC's dialog data exchange hook; windows without data answer TRUE.
    virtual BOOL UpdateData(BOOL saveAndValidate = TRUE);
    // MFC's hit test for tool tips (see EnableToolTips): -1 when `point` is
    // over no tool, else the tool's id with `info` filled (hwnd, uId, rect,
    // lpszText, usually LPSTR_TEXTCALLBACK).
    virtual INT_PTR OnToolHitTest(CPoint point, TOOLINFOW* info) const;
    // Tool tips for the tools OnToolHitTest finds: the library keeps one tool
    // tip window per thread and feeds it the mouse messages of this window.
    BOOL EnableToolTips(BOOL enable = TRUE);

    // The message now being handled, and its default processing.
    const MSG* GetCurrentMessage() const { return &m_currentMsg; }
    LRESULT Default();

    // Family.
    CWnd* GetParent() const;
    CWnd* GetOwner() const;
    CWnd* GetTopLevelParent() const;
    CWnd* GetDlgItem(int id) const;
    int GetDlgCtrlID() const;
    CWnd* GetWindow(UINT command) const;
    CWnd* ChildWindowFromPoint(POINT point) const;
    static CWnd* WindowFromPoint(POINT point);
    static CWnd* GetFocus();
    CWnd* SetFocus();
    static CWnd* GetCapture();
    CWnd* SetCapture();
    static CWnd* GetActiveWindow();
    BOOL SetForegroundWindow();

    // Text.
    void SetWindowText(const wchar_t* text);
    int GetWindowText(wchar_t* buffer, int size) const;
    void GetWindowText(CString& text) const;
    int GetWindowTextLength() const;
    void SetDlgItemText(int id, const wchar_t* text);
    int GetDlgItemText(int id, CString& text) const;
    UINT GetDlgItemInt(int id, BOOL* translated = nullptr, BOOL isSigned = TRUE) const;
    void SetDlgItemInt(int id, UINT value, BOOL isSigned = TRUE);

    // Style.
    DWORD GetStyle() const;
    DWORD GetExStyle() const;
    BOOL ModifyStyle(DWORD remove, DWORD add, UINT swpFlags = 0);
    BOOL ModifyStyleEx(DWORD remove, DWORD add, UINT swpFlags = 0);

    // Geometry.
    void GetClientRect(LPRECT rect) const;
    void GetWindowRect(LPRECT rect) const;
    void ClientToScreen(LPPOINT point) const;
    void ClientToScreen(LPRECT rect) const;
    void ScreenToClient(LPPOINT point) const;
    void ScreenToClient(LPRECT rect) const;
    void MapWindowPoints(CWnd* to, LPRECT rect) const;
    void MapWindowPoints(CWnd* to, LPPOINT points, UINT count) const;
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE);
    void MoveWindow(LPCRECT rect, BOOL repaint = TRUE);
    BOOL SetWindowPos(const CWnd* insertAfter, int x, int y, int cx, int cy, UINT flags);
    int SetWindowRgn(HRGN region, BOOL redraw);

    // Painting and visibility.
    void Invalidate(BOOL erase = TRUE);
    void InvalidateRect(LPCRECT rect, BOOL erase = TRUE);
    void ValidateRect(LPCRECT rect);
    void UpdateWindow();
    // Holds off (FALSE) or resumes (TRUE) drawing during a run of changes:
    //   list.SetRedraw(FALSE); ... list.SetRedraw(TRUE); list.Invalidate();
    void SetRedraw(BOOL redraw = TRUE);
    BOOL RedrawWindow(LPCRECT rect = nullptr, HRGN region = nullptr,
                      UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE);
    BOOL ShowWindow(int command);
    BOOL IsWindowVisible() const;
    BOOL EnableWindow(BOOL enable = TRUE);
    BOOL IsWindowEnabled() const;
    BOOL ShowScrollBar(UINT bar, BOOL show = TRUE);

    // Messages.
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    LRESULT SendDlgItemMessage(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    UINT_PTR SetTimer(UINT_PTR id, UINT elapse, TIMERPROC proc = nullptr);
    BOOL KillTimer(UINT_PTR id);

    // Fonts and device contexts (release a context with ReleaseDC, or use
    // CClientDC and CWindowDC, which do).
    void SetFont(CFont* font, BOOL redraw = TRUE);
    CFont* GetFont() const;
    HDC GetDC();
    HDC GetWindowDC();
    int ReleaseDC(HDC dc);

    // Default handlers: each does the window's default processing.
    int OnCreate(LPCREATESTRUCTW) { return static_cast<int>(Default()); }
    void OnDestroy() { Default(); }
    void OnNcDestroy() { Default(); }
    void OnClose() { Default(); }
    void OnPaint() { Default(); }
    void OnSysColorChange() { Default(); }
    void OnCancelMode() { Default(); }
    void OnMouseLeave() { Default(); }
    void OnEnable(BOOL) { Default(); }
    void OnTimer(UINT_PTR) { Default(); }
    void OnSize(UINT, int, int) { Default(); }
    void OnSetFocus(CWnd*) { Default(); }
    void OnKillFocus(CWnd*) { Default(); }
    void OnCaptureChanged(CWnd*) { Default(); }
    BOOL OnEraseBkgnd(CDC*) { return static_cast<BOOL>(Default()); }
    BOOL OnSetCursor(CWnd*, UINT, UINT) { return static_cast<BOOL>(Default()); }
    LRESULT OnNcHitTest(CPoint) { return Default(); }
    UINT OnGetDlgCode() { return static_cast<UINT>(Default()); }
    void OnMouseMove(UINT, CPoint) { Default(); }
    void OnLButtonDown(UINT, CPoint) { Default(); }
    void OnLButtonUp(UINT, CPoint) { Default(); }
    void OnLButtonDblClk(UINT, CPoint) { Default(); }
    void OnRButtonDown(UINT, CPoint) { Default(); }
    void OnRButtonUp(UINT, CPoint) { Default(); }
    void OnKeyDown(UINT, UINT, UINT) { Default(); }
    void OnKeyUp(UINT, UINT, UINT) { Default(); }
    void OnChar(UINT, UINT, UINT) { Default(); }
    void OnHScroll(UINT, UINT, CScrollBar*) { Default(); }
    void OnVScroll(UINT, UINT, CScrollBar*) { Default(); }

protected:
    // Called before the window is created; FALSE cancels the creation.
    virtual BOOL PreCreateWindow(CREATESTRUCTW& cs);
    // Called when a window is attached and routed (subclassed or created).
    virtual void PreSubclassWindow();
    // Called after the window's last message; the object may delete itself.
    virtual void PostNcDestroy();
    // Offers the message through the table: TRUE when an entry handled it.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    // Dispatches a reflected message through the table (WM_REFLECT_BASE + m).
    BOOL ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);

    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;

private:
    friend class CWndRouting;
    bool AttachHandle(HWND hWnd, bool route);
    MSG m_currentMsg{};
    bool m_routed = false;
    bool m_toolTips = false;
    HWND m_reflectingParent = nullptr;
    DWORD m_hookThread = 0;
};

// The scroll bar a WM_HSCROLL / WM_VSCROLL came from (null for a window's
// own scroll bars).
class QM_API CScrollBar : public CWnd
{
public:
    int GetScrollPos() const { return static_cast<int>(SendMessage(SBM_GETPOS)); }
};
