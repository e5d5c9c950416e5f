// Wnd.cpp - CWnd's members: attaching, creating, routing through the
// message tables, and the everyday wrappers of the window functions.
#include "platform/win/Wnd.h"

#include "platform/win/WndRouting.h"

#include <vector>

CWnd::~CWnd()
{
    CWndRouting::Forget(this);
    if (m_hWnd != nullptr)
        ::DestroyWindow(Detach());
}

CWnd* CWnd::FromHandle(HWND hWnd)
{
    if (hWnd == nullptr)
        return nullptr;
    CWnd* wnd = CWndRouting::Lookup(hWnd);
    return wnd != nullptr ? wnd : CWndRouting::Temporary(hWnd);
}

CWnd* CWnd::FromHandlePermanent(HWND hWnd)
{
    return hWnd == nullptr ? nullptr : CWndRouting::Lookup(hWnd);
}

// Every attached window is watched for its WM_NCDESTROY; routed ones also
// have their messages go through WindowProc and their parent reflect.
bool CWnd::AttachHandle(HWND hWnd, bool route)
{
    if (m_hWnd != nullptr || !::IsWindow(hWnd) || !CWndRouting::Enter(hWnd, this))
        return false;
    m_hWnd = hWnd;
    m_routed = route;
    if (!CWndRouting::Watch(hWnd))
    {
        CWndRouting::Leave(hWnd);
        m_hWnd = nullptr;
        return false;
    }
    m_hookThread = ::GetWindowThreadProcessId(hWnd, nullptr);
    CWndRouting::AcquireHook(m_hookThread);
    const HWND parent = ::GetParent(hWnd);
    if (route && parent != nullptr && (::GetWindowLongW(hWnd, GWL_STYLE) & WS_CHILD) != 0)
    {
        m_reflectingParent = parent;
        CWndRouting::AcquireReflector(parent);
    }
    return true;
}

BOOL CWnd::Attach(HWND hWnd)
{
    return AttachHandle(hWnd, false);
}

HWND CWnd::Detach()
{
    const HWND hWnd = m_hWnd;
    if (hWnd != nullptr)
        CWndRouting::Release(this);
    return hWnd;
}

BOOL CWnd::SubclassWindow(HWND hWnd)
{
    if (!AttachHandle(hWnd, true))
        return FALSE;
    PreSubclassWindow();
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent)
{
    const HWND control = parent == nullptr ? nullptr : ::GetDlgItem(parent->m_hWnd, static_cast<int>(id));
    return control != nullptr && SubclassWindow(control);
}

HWND CWnd::UnsubclassWindow()
{
    return Detach();
}

BOOL CWnd::Create(const wchar_t* className, const wchar_t* windowName, DWORD style, const RECT& rect,
                  CWnd* parent, UINT id, void*)
{
    return CreateEx(0, className, windowName, style | WS_CHILD, rect, parent, id, nullptr);
}

BOOL CWnd::CreateEx(DWORD exStyle, const wchar_t* className, const wchar_t* windowName, DWORD style,
                    const RECT& rect, CWnd* parent, UINT id, void* param)
{
    return CreateEx(exStyle, className, windowName, style, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, parent == nullptr ? nullptr : parent->m_hWnd,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), param);
}

BOOL CWnd::CreateEx(DWORD exStyle, const wchar_t* className, const wchar_t* windowName, DWORD style, int x,
                    int y, int width, int height, HWND parent, HMENU idOrMenu, void* param)
{
    if (m_hWnd != nullptr)
        return FALSE;
    CREATESTRUCTW cs{};
    cs.dwExStyle = exStyle;
    cs.lpszClass = className;
    cs.lpszName = windowName;
    cs.style = style;
    cs.x = x;
    cs.y = y;
    cs.cx = width;
    cs.cy = height;
    cs.hwndParent = parent;
    cs.hMenu = idOrMenu;
    cs.hInstance = ::GetModuleHandleW(nullptr);
    cs.lpCreateParams = param;
    if (!PreCreateWindow(cs))
    {
        PostNcDestroy();
        return FALSE;
    }
    return CWndRouting::CreateRouted(this, cs) && m_hWnd != nullptr;
}

BOOL CWnd::DestroyWindow()
{
    return m_hWnd != nullptr && ::DestroyWindow(m_hWnd);
}

const CRuntimeClass CWnd::classCWnd = {"CWnd", static_cast<int>(sizeof(CWnd)), nullptr};

const CRuntimeClass* CWnd::GetRuntimeClass() const
{
    return &classCWnd;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCTW&)
{
    return TRUE;
}

void CWnd::PreSubclassWindow()
{
}

void CWnd::PostNcDestroy()
{
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    if (!OnWndMsg(message, wParam, lParam, &result))
        result = DefWindowProc(message, wParam, lParam);
    return result;
}

// The processing below our window procedure: the window's own, and any
// subclass put in before the window was attached.
LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_hWnd == nullptr)
        return 0;
    return m_routed ? CWndRouting::CallBelow(m_hWnd, message, wParam, lParam)
                    : ::DefWindowProcW(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default()
{
    return DefWindowProc(m_currentMsg.message, m_currentMsg.wParam, m_currentMsg.lParam);
}

BOOL CWnd::PreTranslateMessage(MSG*)
{
    return FALSE;
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return ReflectChildNotify(message, wParam, lParam, result);
}

BOOL CWnd::ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    LRESULT ignored = 0;
    if (result == nullptr)
        result = &ignored;
    *result = 0;
    if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC)
        return OnWndMsg(WM_REFLECT_BASE + WM_CTLCOLOR, wParam, message - WM_CTLCOLORMSGBOX, result);
    switch (message)
    {
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_DRAWITEM:
    case WM_MEASUREITEM:
        return OnWndMsg(WM_REFLECT_BASE + message, wParam, lParam, result);
    default:
        return FALSE;
    }
}

BOOL CWnd::UpdateData(BOOL)
{
    return TRUE;
}

INT_PTR CWnd::OnToolHitTest(CPoint, TOOLINFOW*) const
{
    return -1;
}

BOOL CWnd::EnableToolTips(BOOL enable)
{
    const bool was = m_toolTips;
    m_toolTips = m_hWnd != nullptr && enable;
    return was;
}

namespace {

// Does `entry` stand for this message (and, for commands and
// notifications, this code and control id)?
bool Matches(const AFX_MSGMAP_ENTRY& entry, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (entry.nMessage != message)
        return false;
    const UINT base = message >= WM_REFLECT_BASE ? message - WM_REFLECT_BASE : message;
    UINT code = 0, id = 0;
    if (base == WM_COMMAND)
    {
        code = HIWORD(wParam);
        id = LOWORD(wParam);
    }
    else if (base == WM_NOTIFY && lParam != 0)
    {
        code = reinterpret_cast<NMHDR*>(lParam)->code;
        id = static_cast<UINT>(reinterpret_cast<NMHDR*>(lParam)->idFrom);
    }
    else
        return true;
    return entry.nCode == code && id >= entry.nID && id <= entry.nLastID;
}

} // namespace

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (CWndRouting::Reflect(m_hWnd, message, wParam, lParam, result))
        return TRUE;
    for (const AFX_MSGMAP* map = GetMessageMap(); map != nullptr;
         map = map->pfnGetBaseMap == nullptr ? nullptr : map->pfnGetBaseMap())
    {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->pfn != nullptr; ++entry)
        {
            if (Matches(*entry, message, wParam, lParam))
            {
                *result = 0;
                if (entry->pfn(this, wParam, lParam, result))
                    return TRUE;
            }
        }
    }
    return FALSE;
}

const AFX_MSGMAP* CWnd::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr}};
    static const AFX_MSGMAP map = {nullptr, &entries[0]};
    return &map;
}

const AFX_MSGMAP* CWnd::GetMessageMap() const
{
    return GetThisMessageMap();
}
