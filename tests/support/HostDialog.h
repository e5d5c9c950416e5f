// HostDialog.h - a dialog made the way an application of the suite makes
// one: a dialog template (here in memory), its controls created by the
// dialog manager, the library's objects attached to them afterwards. It runs
// modally through DialogBoxIndirectParamW, so the message loop is the
// dialog manager's, not the library's; the test's script meanwhile runs on a
// second thread and drives the dialog through the real input queue.
//
//   HostDialog host({{L"EDIT", L"12", ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, 101, 10, 10, 80, 14}});
//   CNumEditEx edit;
//   host.onInit = [&](HWND dlg) { edit.SubclassDlgItem(101, CWnd::FromHandle(dlg)); };
//   host.RunModal([&](HostDialog& h) { h.Focus(101); input::Type(L"x"); h.Settle(); });
//   EXPECT_EQ(host.Received().size(), 0u);
//
// The dialog records what it receives (MessageSequence.h): WM_COMMAND,
// WM_NOTIFY and messages of the WM_USER range, until the script ends (what
// closing the dialog sends is left out).
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
    const wchar_t* className;  // "EDIT", "BUTTON", "LISTBOX", "COMBOBOX", WC_LISTVIEWW...
    const wchar_t* text;
    DWORD style;               // WS_CHILD | WS_VISIBLE are added
    WORD id;
    short x, y, cx, cy;        // dialog units
};

class HostDialog
{
public:
    explicit HostDialog(std::vector<DialogItem> items, short cx = 220, short cy = 140);

    // Runs in WM_INITDIALOG, on the dialog's thread: attach objects here.
    std::function<void(HWND dialog)> onInit;
    // Runs on the dialog's thread for every WM_COMMAND, after recording it.
    std::function<void(WPARAM wParam, LPARAM lParam)> onCommand;
    // Runs on the dialog's thread for WM_NOTIFY and the WM_USER range, after
    // recording; a true answer sends `result` back to the sender.
    std::function<bool(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)> onMessage;

    // Shows the dialog modally until `script` (on a second thread) returns.
    // Returns false when the dialog could not be shown.
    bool RunModal(const std::function<void(HostDialog&)>& script);

    HWND Window() const { return m_window; }
    HWND Item(int id) const { return ::GetDlgItem(m_window, id); }
    // From the script: gives the control the focus and waits for it.
    void Focus(int id);
    // From the script: lets the dialog's thread work off queued input.
    void Settle() const;
    // Runs `action` on the dialog's thread and waits for it.
    void OnDialogThread(const std::function<void()>& action);
    std::wstring Text(int id) const;

    std::vector<ReceivedMsg> Received() const;
    void ClearReceived();

private:
    static INT_PTR CALLBACK Proc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    void Record(UINT message, WPARAM wParam, LPARAM lParam);

    std::vector<WORD> m_template;
    HWND m_window = nullptr;
    std::atomic<bool>* m_shown = nullptr;
    std::atomic<bool> m_recording{true};
    mutable std::mutex m_lock;
    std::vector<ReceivedMsg> m_received;
};
