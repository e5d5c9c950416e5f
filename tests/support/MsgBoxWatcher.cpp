// MsgBoxWatcher.cpp - reading and answering message boxes from a thread.
#include "support/MsgBoxWatcher.h"

#include <algorithm>
#include <utility>

namespace qmtest {

namespace {

CString ClassName(HWND window)
{
    wchar_t cls[32] = L"";
    GetClassNameW(window, cls, 32);
    return cls;
}

UINT IconKind(HICON icon)
{
    const std::pair<LPCWSTR, UINT> kinds[] = {
        {IDI_HAND, MB_ICONERROR}, {IDI_QUESTION, MB_ICONQUESTION},
        {IDI_EXCLAMATION, MB_ICONEXCLAMATION}, {IDI_ASTERISK, MB_ICONINFORMATION}};
    for (const auto& kind : kinds)
        if (icon != nullptr && icon == LoadIconW(nullptr, kind.first))
            return kind.second;
    return 0;
}

// The box's buttons left to right, its default button (Enter presses it) and its icon.
void ScanChildren(HWND box, MsgBoxSeen& seen)
{
    std::vector<std::pair<LONG, int>> buttons;  // left edge, id
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        const LONG style = GetWindowLongW(child, GWL_STYLE);
        if (!IsWindowVisible(child))
            continue;
        if (ClassName(child).CompareNoCase(L"Button") == 0) {
            RECT rect;
            GetWindowRect(child, &rect);
            buttons.emplace_back(rect.left, GetDlgCtrlID(child));
            if ((style & BS_TYPEMASK) == BS_DEFPUSHBUTTON)
                seen.defaultButton = GetDlgCtrlID(child);
        } else if (ClassName(child).CompareNoCase(L"Static") == 0 && (style & SS_TYPEMASK) == SS_ICON) {
            seen.icon = IconKind(reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0)));
        }
    }
    std::sort(buttons.begin(), buttons.end());
    for (const auto& button : buttons)
        seen.buttons.push_back(button.second);
}

}  // namespace

HWND FindProcessDialog()
{
    for (HWND window = GetTopWindow(nullptr); window != nullptr; window = GetWindow(window, GW_HWNDNEXT)) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == GetCurrentProcessId() && IsWindowVisible(window) && ClassName(window) == L"#32770")
            return window;
    }
    return nullptr;
}

CString WindowText(HWND window)
{
    CString text;
    const int length = GetWindowTextLengthW(window);
    GetWindowTextW(window, text.GetBuffer(length + 1), length + 1);
    text.ReleaseBuffer();
    return text;
}

MsgBoxWatcher::MsgBoxWatcher(Answer answer, HWND probe, DWORD timeoutMs)
    : m_thread(&MsgBoxWatcher::Run, this, answer, probe, timeoutMs)
{
}

const MsgBoxSeen& MsgBoxWatcher::Wait()
{
    if (m_thread.joinable())
        m_thread.join();
    return m_seen;
}

void MsgBoxWatcher::Run(Answer answer, HWND probe, DWORD timeoutMs)
{
    HWND box = nullptr;
    for (DWORD waited = 0; box == nullptr && waited < timeoutMs; waited += 20) {
        Sleep(20);
        box = FindProcessDialog();
    }
    if (box == nullptr)
        return;
    Sleep(50);  // let the box finish its initialisation

    m_seen.found = true;
    m_seen.caption = WindowText(box);
    m_seen.text = WindowText(GetDlgItem(box, 0xFFFF));
    if (probe != nullptr)
        m_seen.probeEnabled = IsWindowEnabled(probe) != FALSE;
    ScanChildren(box, m_seen);

    if (answer.button == 0)
        PostMessageW(box, WM_KEYDOWN, VK_RETURN, 0);
    else
        PostMessageW(box, WM_COMMAND, MAKEWPARAM(answer.button, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(box, answer.button)));
}

}  // namespace qmtest
