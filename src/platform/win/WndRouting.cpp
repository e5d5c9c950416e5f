// WndRouting.cpp - how messages reach CWnd objects: the handle map, the
// window procedure of attached windows, the per-thread pre-translation
// hook, the reflection through parents, the creation hook and
// the tool tips of EnableToolTips.
#include "platform/win/WndRouting.h"

#include <map>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace {

struct ThreadHook
{
    HHOOK hook = nullptr;
    int users = 0;
};

struct Unowned
{
    void operator()(CWnd* wnd) const
    {
        wnd->m_hWnd = nullptr;
        delete wnd;
    }
};

// Every process-wide table of the window layer, behind one lock: windows of
// several threads may attach and die at the same time.
struct Registry
{
    std::mutex lock;
    std::unordered_map<HWND, CWnd*> permanent;
    std::unordered_map<HWND, std::unique_ptr<CWnd, Unowned>> temporary;
    std::map<DWORD, ThreadHook> hooks;
    // Attached routed children per parent.
    std::unordered_map<HWND, int> reflectors;
    // The procedure below ours, for every window whose procedure is ours.
    std::unordered_map<HWND, WNDPROC> below;
};

Registry& TheRegistry()
{
    static Registry registry;
    return registry;
}

HMODULE ThisModule()
{
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<LPCWSTR>(&ThisModule), &module);
    return module;
}

// The tool tip window EnableToolTips feeds, one per thread, and the tool it
// shows now.
struct ThreadToolTip
{
    HWND tip;
    HWND toolWindow;
    UINT_PTR toolId;
    INT_PTR hit;
};
thread_local ThreadToolTip t_toolTip{nullptr, nullptr, 0, -1};

thread_local CWnd* t_creating = nullptr;

// The objects whose handlers are running on this thread, innermost first: a
// handler may delete its own object (an editor the list closes while the
// editor's focus-loss handler runs), and the frames below must then leave
// the object alone.
struct RouteFrame
{
    CWnd* wnd;
    bool alive;
    RouteFrame* outer;
};
thread_local RouteFrame* t_routes = nullptr;

bool IsMouseMessage(UINT message)
{
    return message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
}

TOOLINFOW ToolInfo(HWND window, UINT_PTR id)
{
    TOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    info.hwnd = window;
    info.uId = id;
    return info;
}

} // namespace

CWnd* CWndRouting::Lookup(HWND hWnd)
{
    Registry& registry = TheRegistry();
    std::lock_guard<std::mutex> hold(registry.lock);
    const auto found = registry.permanent.find(hWnd);
    return found == registry.permanent.end() ? nullptr : found->second;
}

// A temporary wrapper stands for a live window only: a handle the platform
// hands back after its window died (the previous focus of SetFocus when that
// window was an editor just destroyed) gets none, as a dead window has no
// object to be. Wrappers of windows that died since are dropped before a new
// one goes in, and nothing holds a place in the map across that sweep.
CWnd* CWndRouting::Temporary(HWND hWnd)
{
    if (!::IsWindow(hWnd))
        return nullptr;
    Registry& registry = TheRegistry();
    std::lock_guard<std::mutex> hold(registry.lock);
    const auto found = registry.temporary.find(hWnd);
    if (found != registry.temporary.end())
        return found->second.get();
    for (auto it = registry.temporary.begin(); it != registry.temporary.end();)
        it = ::IsWindow(it->first) ? std::next(it) : registry.temporary.erase(it);
    std::unique_ptr<CWnd, Unowned> wrapper(new CWnd);
    wrapper->m_hWnd = hWnd;
    CWnd* const wnd = wrapper.get();
    registry.temporary.emplace(hWnd, std::move(wrapper));
    return wnd;
}

bool CWndRouting::Enter(HWND hWnd, CWnd* wnd)
{
    Registry& registry = TheRegistry();
    std::lock_guard<std::mutex> hold(registry.lock);
    return registry.permanent.emplace(hWnd, wnd).second;
}

// The window's object lets go; our procedure goes too unless the window
// still reflects for attached children.
void CWndRouting::Leave(HWND hWnd)
{
    std::lock_guard<std::mutex> hold(TheRegistry().lock);
    TheRegistry().permanent.erase(hWnd);
    UnwatchLocked(hWnd);
}

// Attached windows, and the parents that reflect for them, get our
// procedure in place of theirs, not a comctl32 subclass: that one looks its
// chain up in a window property on every message, and a property look-up is
// a round trip to the window server under Wine. A list sends its parent two
// notifications for every item it changes, so the round trips made sorting
// ten thousand rows take seconds where the sort itself takes milliseconds.
bool CWndRouting::WatchLocked(HWND hWnd)
{
    Registry& registry = TheRegistry();
    if (registry.below.count(hWnd) != 0)
        return true;
    const auto previous = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ObjectProc)));
    if (previous == nullptr)
        return false;
    registry.below.emplace(hWnd, previous);
    return true;
}

bool CWndRouting::Watch(HWND hWnd)
{
    std::lock_guard<std::mutex> hold(TheRegistry().lock);
    return WatchLocked(hWnd);
}

// Our procedure leaves the chain when nothing needs it any more and it is
// on top. Under another one (the host subclassed the window after us) it
// stays and passes every message down until the window goes, and the
// library is pinned so that no unload can leave that window calling into
// freed code.
void CWndRouting::UnwatchLocked(HWND hWnd)
{
    Registry& registry = TheRegistry();
    const auto found = registry.below.find(hWnd);
    if (found == registry.below.end() || registry.permanent.count(hWnd) != 0 || registry.reflectors.count(hWnd) != 0)
        return;
    if (::GetWindowLongPtrW(hWnd, GWLP_WNDPROC) != reinterpret_cast<LONG_PTR>(&ObjectProc))
    {
        HMODULE pinned = nullptr;
        ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                             reinterpret_cast<LPCWSTR>(&ObjectProc), &pinned);
        return;
    }
    ::SetWindowLongPtrW(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(found->second));
    registry.below.erase(found);
}

LRESULT CWndRouting::CallBelow(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    WNDPROC previous = nullptr;
    {
        Registry& registry = TheRegistry();
        std::lock_guard<std::mutex> hold(registry.lock);
        const auto found = registry.below.find(hWnd);
        if (found != registry.below.end())
            previous = found->second;
    }
    return previous != nullptr ? ::CallWindowProcW(previous, hWnd, message, wParam, lParam)
                               : ::DefWindowProcW(hWnd, message, wParam, lParam);
}

LRESULT CWndRouting::Route(CWnd* wnd, UINT message, WPARAM wParam, LPARAM lParam, bool* alive)
{
    const MSG saved = wnd->m_currentMsg;
    wnd->m_currentMsg = MSG{wnd->m_hWnd, message, wParam, lParam, 0, {0, 0}};
    RouteFrame frame{wnd, true, t_routes};
    t_routes = &frame;
    const LRESULT result = wnd->WindowProc(message, wParam, lParam);
    t_routes = frame.outer;
    if (frame.alive)
        wnd->m_currentMsg = saved;
    *alive = frame.alive;
    return result;
}

void CWndRouting::Forget(CWnd* wnd)
{
    for (RouteFrame* frame = t_routes; frame != nullptr; frame = frame->outer)
        if (frame->wnd == wnd)
            frame->alive = false;
}

bool CWndRouting::Routing(const CWnd* wnd)
{
    for (const RouteFrame* frame = t_routes; frame != nullptr; frame = frame->outer)
        if (frame->wnd == wnd && frame->alive)
            return true;
    return false;
}

LRESULT CALLBACK CWndRouting::ObjectProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    CWnd* wnd = Lookup(hWnd);
    bool alive = true;
    LRESULT result = 0;
    if (wnd != nullptr && wnd->m_routed)
        result = Route(wnd, message, wParam, lParam, &alive);
    else if (!Reflect(hWnd, message, wParam, lParam, &result))
        result = CallBelow(hWnd, message, wParam, lParam);
    if (message != WM_NCDESTROY)
        return result;
    if (wnd != nullptr && alive && wnd->m_hWnd == hWnd)
    {
        Release(wnd);
        wnd->PostNcDestroy();
    }
    Registry& registry = TheRegistry();
    std::lock_guard<std::mutex> hold(registry.lock);
    registry.below.erase(hWnd);
    registry.reflectors.erase(hWnd);
    return result;
}

// Undoes everything attaching did; the window may already be gone.
void CWndRouting::Release(CWnd* wnd)
{
    const HWND hWnd = wnd->m_hWnd;
    Leave(hWnd);
    if (wnd->m_reflectingParent != nullptr)
        ReleaseReflector(wnd->m_reflectingParent);
    ReleaseHook(wnd->m_hookThread);
    wnd->m_reflectingParent = nullptr;
    wnd->m_routed = false;
    wnd->m_toolTips = false;
    wnd->m_hWnd = nullptr;
}

void CWndRouting::AcquireHook(DWORD thread)
{
    Registry& registry = TheRegistry();
    std::lock_guard<std::mutex> hold(registry.lock);
    ThreadHook& state = registry.hooks[thread];
    if (state.users++ == 0)
        state.hook = ::SetWindowsHookExW(WH_GETMESSAGE, &GetMessageHook, ThisModule(), thread);
}

void CWndRouting::ReleaseHook(DWORD thread)
{
    HHOOK unhook = nullptr;
    {
        Registry& registry = TheRegistry();
        std::lock_guard<std::mutex> hold(registry.lock);
        const auto found = registry.hooks.find(thread);
        if (found == registry.hooks.end() || --found->second.users > 0)
            return;
        unhook = found->second.hook;
        registry.hooks.erase(found);
    }
    if (unhook != nullptr)
        ::UnhookWindowsHookEx(unhook);
    if (thread == ::GetCurrentThreadId() && t_toolTip.tip != nullptr)
    {
        ::DestroyWindow(t_toolTip.tip);
        t_toolTip = ThreadToolTip{nullptr, nullptr, 0, -1};
    }
}

LRESULT CALLBACK CWndRouting::GetMessageHook(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HC_ACTION && wParam == PM_REMOVE)
    {
        MSG* msg = reinterpret_cast<MSG*>(lParam);
        if (msg->message != WM_NULL && PreTranslate(msg))
        {
            msg->message = WM_NULL;
            msg->wParam = 0;
            msg->lParam = 0;
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

// From the message's window up through its parents, as far as the top-level
// window; each attached object may consume the message.
bool CWndRouting::PreTranslate(MSG* msg)
{
    for (HWND hWnd = msg->hwnd; hWnd != nullptr;)
    {
        const bool child = (::GetWindowLongW(hWnd, GWL_STYLE) & WS_CHILD) != 0;
        const HWND parent = child ? ::GetParent(hWnd) : nullptr;
        if (CWnd* wnd = Lookup(hWnd))
        {
            if (wnd->m_toolTips && hWnd == msg->hwnd && IsMouseMessage(msg->message))
                FilterToolTip(wnd, msg);
            if (wnd->PreTranslateMessage(msg))
                return true;
            // The window went while it looked at the message (an editor
            // closed by its own Enter key): its parents do not see it.
            if (!::IsWindow(hWnd))
                return false;
        }
        hWnd = parent;
    }
    return false;
}

void CWndRouting::FilterToolTip(CWnd* wnd, MSG* msg)
{
    if (t_toolTip.tip == nullptr)
    {
        const INITCOMMONCONTROLSEX classes{sizeof(INITCOMMONCONTROLSEX), ICC_WIN95_CLASSES};
        ::InitCommonControlsEx(&classes);
        t_toolTip.tip = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                                          CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                                          ::GetAncestor(wnd->m_hWnd, GA_ROOT), nullptr, nullptr, nullptr);
        if (t_toolTip.tip == nullptr)
            return;
    }
    POINT point{static_cast<short>(LOWORD(msg->lParam)), static_cast<short>(HIWORD(msg->lParam))};
    TOOLINFOW info = ToolInfo(nullptr, 0);
    const INT_PTR hit = wnd->OnToolHitTest(point, &info);
    if (hit != t_toolTip.hit || info.hwnd != t_toolTip.toolWindow)
    {
        TOOLINFOW old = ToolInfo(t_toolTip.toolWindow, t_toolTip.toolId);
        ::SendMessageW(t_toolTip.tip, TTM_DELTOOL, 0, reinterpret_cast<LPARAM>(&old));
        t_toolTip.hit = hit;
        t_toolTip.toolWindow = info.hwnd;
        t_toolTip.toolId = info.uId;
        if (hit != -1)
        {
            info.cbSize = TTTOOLINFOW_V2_SIZE;
            ::SendMessageW(t_toolTip.tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
            ::SendMessageW(t_toolTip.tip, TTM_ACTIVATE, TRUE, 0);
        }
    }
    ::SendMessageW(t_toolTip.tip, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(msg));
}

// A parent reflects through our procedure as long as one of its children
// is attached; a routed parent does it in its own WindowProc.
void CWndRouting::AcquireReflector(HWND parent)
{
    std::lock_guard<std::mutex> hold(TheRegistry().lock);
    if (WatchLocked(parent))
        ++TheRegistry().reflectors[parent];
}

void CWndRouting::ReleaseReflector(HWND parent)
{
    Registry& registry = TheRegistry();
    std::lock_guard<std::mutex> hold(registry.lock);
    const auto found = registry.reflectors.find(parent);
    if (found == registry.reflectors.end() || --found->second > 0)
        return;
    registry.reflectors.erase(found);
    UnwatchLocked(parent);
}

// The control a message to its parent came from, or null.
HWND CWndRouting::SenderOf(HWND parent, UINT message, LPARAM lParam)
{
    switch (message)
    {
    case WM_COMMAND:
        return reinterpret_cast<HWND>(lParam);
    case WM_NOTIFY:
        return lParam == 0 ? nullptr : reinterpret_cast<NMHDR*>(lParam)->hwndFrom;
    case WM_DRAWITEM:
    {
        const auto* item = reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
        return item == nullptr || item->CtlType == ODT_MENU ? nullptr : item->hwndItem;
    }
    case WM_MEASUREITEM:
    {
        const auto* item = reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        return item == nullptr || item->CtlType == ODT_MENU ? nullptr : ::GetDlgItem(parent, item->CtlID);
    }
    default:
        return message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC ? reinterpret_cast<HWND>(lParam)
                                                                             : nullptr;
    }
}

bool CWndRouting::Reflect(HWND parent, UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    const HWND sender = SenderOf(parent, message, lParam);
    CWnd* child = sender == nullptr || sender == parent ? nullptr : Lookup(sender);
    return child != nullptr && child->m_routed && child->OnChildNotify(message, wParam, lParam, result);
}

bool CWndRouting::CreateRouted(CWnd* wnd, CREATESTRUCTW& cs)
{
    CWnd* outer = t_creating;
    t_creating = wnd;
    const HHOOK hook = ::SetWindowsHookExW(WH_CBT, &CreationHook, nullptr, ::GetCurrentThreadId());
    const HWND hWnd = ::CreateWindowExW(cs.dwExStyle, cs.lpszClass, cs.lpszName, cs.style, cs.x, cs.y, cs.cx,
                                        cs.cy, cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
    if (hook != nullptr)
        ::UnhookWindowsHookEx(hook);
    t_creating = outer;
    return hWnd != nullptr;
}

// The first window created while an object waits is that object's: it is
// attached before its WM_NCCREATE, so WM_CREATE reaches the table.
LRESULT CALLBACK CWndRouting::CreationHook(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_CREATEWND && t_creating != nullptr)
    {
        CWnd* wnd = t_creating;
        t_creating = nullptr;
        if (wnd->AttachHandle(reinterpret_cast<HWND>(wParam), true))
            wnd->PreSubclassWindow();
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}
