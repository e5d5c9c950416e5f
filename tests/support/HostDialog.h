// HostDialog.h - a dialog made as the suite's applications make one: an
// in-memory template run modally by DialogBoxIndirectParamW (the dialog
// manager's loop, not the library's), the library's objects attached in
// WM_INITDIALOG, and a script on a second thread driving it through the
// real input queue. It records WM_COMMAND, WM_NOTIFY and the WM_USER range
// until the script ends.
//
//   HostDialog host({{L"EDIT", L"12", ES_AUTOHSCROLL | WS_BORDER, 101, 10, 10, 80, 14}});
//   host.onInit = [&](HWND dlg) { edit.SubclassDlgItem(101, CWnd::FromHandle(dlg)); };
//   host.RunModal([&](HostDialog& h) { h.Focus(101); input::Type(L"x"); h.Settle(); });
#pragma once
#include "support/MessageSequence.h"

#include <windows.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

struct DialogItem
{
    const wchar_t* className;
    const wchar_t* text;
    DWORD style;               // WS_CHILD | WS_VISIBLE are added
    WORD id;
    short x, y, cx, cy;        // dialog units
};

class HostDialog
{
public:
    explicit HostDialog(std::vector<DialogItem> items, short cx = 220, short cy = 140);

    // On the dialog's thread: at WM_INITDIALOG, and for WM_COMMAND, WM_NOTIFY
    // and the WM_USER range (true sends `result` back).
    std::function<void(HWND dialog)> onInit;
    std::function<bool(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)> onMessage;

    // Shows the dialog until `script` returns; false when it never showed.
    bool RunModal(const std::function<void(HostDialog&)>& script);

    HWND Window() const { return m_window; }
    HWND Item(int id) const { return ::GetDlgItem(m_window, id); }
    // From the script: focus a control; let the dialog work off queued
    // input; run `action` on the dialog's thread and wait for it.
    void Focus(int id)
    {
        OnDialogThread([&] { ::SetFocus(Item(id)); });
        Settle();
    }
    void Settle() const;
    void OnDialogThread(const std::function<void()>& action)
    {
        ::SendMessageW(m_window, kRunOnDialogThread, 0, reinterpret_cast<LPARAM>(&action));
    }
    std::wstring Text(int id) const
    {
        wchar_t buffer[512] = L"";
        ::GetWindowTextW(Item(id), buffer, 512);
        return buffer;
    }

    std::vector<ReceivedMsg> Received() const
    {
        std::lock_guard<std::mutex> hold(m_lock);
        return m_received;
    }
    void ClearReceived()
    {
        std::lock_guard<std::mutex> hold(m_lock);
        m_received.clear();
    }

private:
    static constexpr UINT kRunOnDialogThread = WM_APP + 1;
    static INT_PTR CALLBACK Proc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

    std::vector<WORD> m_template;
    HWND m_window = nullptr;
    std::atomic<bool>* m_shown = nullptr;
    std::atomic<bool> m_recording{true};
    mutable std::mutex m_lock;
    std::vector<ReceivedMsg> m_received;
};
