// HostDialog.cpp - an in-memory dialog template run modally, a script
// thread beside it, and the record of what the dialog received.
#include "support/HostDialog.h"

#include <atomic>
#include <thread>

namespace {

constexpr UINT kRunOnDialogThread = WM_APP + 1;
constexpr UINT kEnd = WM_APP + 2;

void PutText(std::vector<WORD>& out, const wchar_t* text)
{
    for (; text != nullptr && *text != L'\0'; ++text)
        out.push_back(static_cast<WORD>(*text));
    out.push_back(0);
}

void PutDword(std::vector<WORD>& out, DWORD value)
{
    out.push_back(LOWORD(value));
    out.push_back(HIWORD(value));
}

void AlignToDword(std::vector<WORD>& out)
{
    if (out.size() % 2 != 0)
        out.push_back(0);
}

} // namespace

HostDialog::HostDialog(std::vector<DialogItem> items, short cx, short cy)
{
    PutDword(m_template, DS_SETFONT | DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE);
    PutDword(m_template, 0);
    m_template.push_back(static_cast<WORD>(items.size()));
    for (short value : {short(0), short(0), cx, cy})
        m_template.push_back(static_cast<WORD>(value));
    m_template.push_back(0);  // no menu
    m_template.push_back(0);  // the standard dialog class
    PutText(m_template, L"QMUtil host dialog");
    m_template.push_back(9);
    PutText(m_template, L"Tahoma");
    for (const DialogItem& item : items)
    {
        AlignToDword(m_template);
        PutDword(m_template, item.style | WS_CHILD | WS_VISIBLE);
        PutDword(m_template, 0);
        for (short value : {item.x, item.y, item.cx, item.cy})
            m_template.push_back(static_cast<WORD>(value));
        m_template.push_back(item.id);
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
    if (self == nullptr)
        return FALSE;
    switch (message)
    {
    case kRunOnDialogThread:
        (*reinterpret_cast<const std::function<void()>*>(lParam))();
        return TRUE;
    case kEnd:
        ::EndDialog(dialog, IDOK);
        return TRUE;
    case WM_COMMAND:
        self->Record(message, wParam, lParam);
        if (self->onCommand)
            self->onCommand(wParam, lParam);
        return TRUE;
    default:
        if (message != WM_NOTIFY && (message < WM_USER || message >= WM_APP))
            return FALSE;
        self->Record(message, wParam, lParam);
        LRESULT result = 0;
        if (!self->onMessage || !self->onMessage(message, wParam, lParam, result))
            return FALSE;
        ::SetWindowLongPtrW(dialog, DWLP_MSGRESULT, result);
        return TRUE;
    }
}

void HostDialog::Record(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_recording)
        return;
    std::lock_guard<std::mutex> hold(m_lock);
    const UINT code = message == WM_NOTIFY ? reinterpret_cast<NMHDR*>(lParam)->code : 0;
    const LPARAM kept = message == WM_NOTIFY ? 0 : lParam;
    m_received.push_back(ReceivedMsg{message, wParam, kept, code});
}

// Input waits in the queue behind nothing we can see from here; a few rounds
// of sleeping and a sent message give the dialog's thread time for it.
void HostDialog::Settle() const
{
    for (int i = 0; i < 4; ++i)
    {
        ::Sleep(40);
        DWORD_PTR ignored = 0;
        ::SendMessageTimeoutW(m_window, WM_NULL, 0, 0, SMTO_NORMAL, 2000, &ignored);
    }
}

void HostDialog::Focus(int id)
{
    OnDialogThread([&] { ::SetFocus(Item(id)); });
    Settle();
}

void HostDialog::OnDialogThread(const std::function<void()>& action)
{
    ::SendMessageW(m_window, kRunOnDialogThread, 0, reinterpret_cast<LPARAM>(&action));
}

std::wstring HostDialog::Text(int id) const
{
    wchar_t buffer[512] = L"";
    ::SendMessageW(Item(id), WM_GETTEXT, 512, reinterpret_cast<LPARAM>(buffer));
    return buffer;
}

std::vector<ReceivedMsg> HostDialog::Received() const
{
    std::lock_guard<std::mutex> hold(m_lock);
    return m_received;
}

void HostDialog::ClearReceived()
{
    std::lock_guard<std::mutex> hold(m_lock);
    m_received.clear();
}
