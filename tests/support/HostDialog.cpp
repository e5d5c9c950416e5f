// HostDialog.cpp - the dialog, its script thread and its record.
#include "support/HostDialog.h"

#include <atomic>
#include <initializer_list>
#include <thread>

namespace {

constexpr UINT kEnd = WM_APP + 2;

void PutText(std::vector<WORD>& out, const wchar_t* text)
{
    for (; text != nullptr && *text != L'\0'; ++text)
        out.push_back(static_cast<WORD>(*text));
    out.push_back(0);
}

void PutWords(std::vector<WORD>& out, std::initializer_list<int> words)
{
    for (int word : words)
        out.push_back(static_cast<WORD>(word));
}

} // namespace

HostDialog::HostDialog(std::vector<DialogItem> items, short cx, short cy)
{
    const DWORD style = DS_SETFONT | DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE;
    // Style, extended style, item count, position and size, no menu, the standard class.
    PutWords(m_template, {LOWORD(style), HIWORD(style), 0, 0, int(items.size()), 0, 0, cx, cy, 0, 0});
    PutText(m_template, L"QMUtil host dialog");
    m_template.push_back(9);
    PutText(m_template, L"Tahoma");
    for (const DialogItem& item : items)
    {
        if (m_template.size() % 2 != 0)
            m_template.push_back(0);
        const DWORD itemStyle = item.style | WS_CHILD | WS_VISIBLE;
        PutWords(m_template, {LOWORD(itemStyle), HIWORD(itemStyle), 0, 0, item.x, item.y, item.cx, item.cy, item.id});
        PutText(m_template, item.className);
        PutText(m_template, item.text);
        m_template.push_back(0);  // no creation data
    }
}

bool HostDialog::RunModal(const std::function<void(HostDialog&)>& script)
{
    std::atomic<bool> shown{false};
    std::thread worker([&] {
        for (int i = 0; i < 500 && !shown; ++i)
            ::Sleep(10);
        if (!shown)
            return;
        Settle();
        script(*this);
        m_recording = false;
        ::PostMessageW(m_window, kEnd, 0, 0);
    });
    m_shown = &shown;
    const INT_PTR result = ::DialogBoxIndirectParamW(::GetModuleHandleW(nullptr),
                                                     reinterpret_cast<LPCDLGTEMPLATEW>(m_template.data()), nullptr,
                                                     &HostDialog::Proc, reinterpret_cast<LPARAM>(this));
    shown = true;  // lets the worker go when the dialog never came up
    worker.join();
    m_shown = nullptr;
    return result != -1;
}

INT_PTR CALLBACK HostDialog::Proc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG)
    {
        auto* self = reinterpret_cast<HostDialog*>(lParam);
        ::SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        self->m_window = dialog;
        if (self->onInit)
            self->onInit(dialog);
        ::SetForegroundWindow(dialog);
        *self->m_shown = true;
        return TRUE;
    }
    auto* self = reinterpret_cast<HostDialog*>(::GetWindowLongPtrW(dialog, DWLP_USER));
    if (self != nullptr && message == kRunOnDialogThread)
        (*reinterpret_cast<const std::function<void()>*>(lParam))();
    if (self != nullptr && message == kEnd)
        ::EndDialog(dialog, IDOK);
    if (self == nullptr || message == kRunOnDialogThread || message == kEnd)
        return self != nullptr;
    if (message != WM_COMMAND && message != WM_NOTIFY && (message < WM_USER || message >= WM_APP))
        return FALSE;
    if (self->m_recording)
    {
        std::lock_guard<std::mutex> hold(self->m_lock);
        const UINT code = message == WM_NOTIFY ? reinterpret_cast<NMHDR*>(lParam)->code : 0;
        self->m_received.push_back(ReceivedMsg{message, wParam, message == WM_NOTIFY ? 0 : lParam, code});
    }
    LRESULT result = 0;
    if (!self->onMessage || !self->onMessage(message, wParam, lParam, result))
        return message == WM_COMMAND;
    ::SetWindowLongPtrW(dialog, DWLP_MSGRESULT, result);
    return TRUE;
}

// Queued input is invisible from here: a few rounds of sleep and a sent message.
void HostDialog::Settle() const
{
    for (int i = 0; i < 4; ++i)
    {
        ::Sleep(40);
        DWORD_PTR ignored = 0;
        ::SendMessageTimeoutW(m_window, WM_NULL, 0, 0, SMTO_NORMAL, 2000, &ignored);
    }
}
