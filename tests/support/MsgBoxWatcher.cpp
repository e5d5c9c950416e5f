// MsgBoxWatcher.cpp - reading and answering message boxes from a thread.
#include "support/MsgBoxWatcher.h"

#include <algorithm>
#include <utility>

namespace qmtest {

namespace {

BOOL CALLBACK FindDialogProc(HWND window, LPARAM param)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t cls[32] = L"";
    GetClassNameW(window, cls, 32);
    if (process == GetCurrentProcessId() && IsWindowVisible(window) && lstrcmpW(cls, L"#32770") == 0) {
        *reinterpret_cast<HWND*>(param) = window;
        return FALSE;
    }
    return TRUE;
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

struct ChildScan
{
    MsgBoxSeen* seen;
    std::vector<std::pair<LONG, int>> buttons;  // left edge, id
};

BOOL CALLBACK ScanChildProc(HWND child, LPARAM param)
{
    auto* scan = reinterpret_cast<ChildScan*>(param);
    wchar_t cls[32] = L"";
    GetClassNameW(child, cls, 32);
    if (!IsWindowVisible(child))
        return TRUE;
    if (lstrcmpiW(cls, L"Button") == 0) {
        RECT rect;
        GetWindowRect(child, &rect);
        scan->buttons.emplace_back(rect.left, GetDlgCtrlID(child));
        // Enter presses the button drawn as the default one.
        if ((GetWindowLongW(child, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON)
            scan->seen->defaultButton = GetDlgCtrlID(child);
    } else if (lstrcmpiW(cls, L"Static") == 0 && (GetWindowLongW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) {
        scan->seen->icon = IconKind(reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0)));
    }
    return TRUE;
}

}  // namespace

HWND FindProcessDialog()
{
    HWND found = nullptr;
    EnumWindows(FindDialogProc, reinterpret_cast<LPARAM>(&found));
    return found;
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
    ChildScan scan{&m_seen, {}};
    EnumChildWindows(box, ScanChildProc, reinterpret_cast<LPARAM>(&scan));
    std::sort(scan.buttons.begin(), scan.buttons.end());
    for (const auto& button : scan.buttons)
        m_seen.buttons.push_back(button.second);

    if (answer.button == 0)
        PostMessageW(box, WM_KEYDOWN, VK_RETURN, 0);
    else
        PostMessageW(box, WM_COMMAND, MAKEWPARAM(answer.button, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(box, answer.button)));
}

}  // namespace qmtest
