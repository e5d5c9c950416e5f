// WndRouting.h - the machinery behind CWnd (not exported): how messages
// reach the objects, kept apart from the members programmers call.
//
//   CWnd* wnd = CWndRouting::Lookup(hWnd);   // the attached object or null
#pragma once
#include "platform/win/Wnd.h"

class CWndRouting
{
public:
    static CWnd* Lookup(HWND hWnd);
    // A wrapper owned by the map for a live window without an object; null
    // for a window that no longer exists.
    static CWnd* Temporary(HWND hWnd);
    static bool Enter(HWND hWnd, CWnd* wnd);
    static void Leave(HWND hWnd);
    // Puts our procedure on the window (once); false if it cannot be.
    static bool Watch(HWND hWnd);
    // The window's processing below our procedure.
    static LRESULT CallBelow(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    static void Release(CWnd* wnd);
    static void AcquireHook(DWORD thread);
    static void ReleaseHook(DWORD thread);
    static void AcquireReflector(HWND parent);
    static void ReleaseReflector(HWND parent);
    static bool Reflect(HWND parent, UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    static bool CreateRouted(CWnd* wnd, CREATESTRUCTW& cs);
    // The object is being deleted: handlers of it still running must not
    // touch it once they return.
    static void Forget(CWnd* wnd);
    // Whether a handler of the object is running on this thread (its
    // deletion would pull the object from under it).
    static bool Routing(const CWnd* wnd);

private:
    // With the registry's lock held.
    static bool WatchLocked(HWND hWnd);
    static void UnwatchLocked(HWND hWnd);
    static LRESULT Route(CWnd* wnd, UINT message, WPARAM wParam, LPARAM lParam, bool* alive);
    static bool PreTranslate(MSG* msg);
    static void FilterToolTip(CWnd* wnd, MSG* msg);
    static HWND SenderOf(HWND parent, UINT message, LPARAM lParam);
    static LRESULT CALLBACK ObjectProc(HWND, UINT, WPARAM, LPARAM);
    static LRESULT CALLBACK GetMessageHook(int code, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK CreationHook(int code, WPARAM wParam, LPARAM lParam);
};
