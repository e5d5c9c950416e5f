// FolderDialogWatcher.cpp - finding and driving the folder-browse dialog.
#include "support/FolderDialogWatcher.h"
#include "support/MsgBoxWatcher.h"

#include <shlobj.h>

#include <utility>

namespace qmtest {

namespace {

// The browse dialog's own control ids (the same on Windows and in Wine).
constexpr int kTitleId = 0x3742;
constexpr int kStatusId = 0x3743;
constexpr int kTreeId = 0x3741;

CString Text(HWND window)
{
    CString text;
    const int length = GetWindowTextLengthW(window);
    GetWindowTextW(window, text.GetBuffer(length + 1), length + 1);
    text.ReleaseBuffer();
    return text;
}

FolderDialogState State(HWND dialog)
{
    FolderDialogState state;
    state.okEnabled = IsWindowEnabled(GetDlgItem(dialog, IDOK)) != FALSE;
    state.status = Text(GetDlgItem(dialog, kStatusId));
    return state;
}

HWND FindBrowseDialog(DWORD timeoutMs)
{
    for (DWORD waited = 0; waited < timeoutMs; waited += 20) {
        HWND dialog = FindProcessDialog();
        if (dialog != nullptr && GetDlgItem(dialog, kTreeId) != nullptr)
            return dialog;
        Sleep(20);
    }
    return nullptr;
}

}  // namespace

FolderDialogWatcher::FolderDialogWatcher(std::vector<CString> selections, int button, DWORD timeoutMs)
    : m_thread(&FolderDialogWatcher::Run, this, std::move(selections), button, timeoutMs)
{
}

FolderDialogWatcher::~FolderDialogWatcher()
{
    if (m_thread.joinable())
        m_thread.join();
}

const FolderDialogSeen& FolderDialogWatcher::Wait()
{
    if (m_thread.joinable())
        m_thread.join();
    return m_seen;
}

void FolderDialogWatcher::Run(std::vector<CString> selections, int button, DWORD timeoutMs)
{
    HWND dialog = FindBrowseDialog(timeoutMs);
    if (dialog == nullptr)
        return;
    Sleep(100);  // let the dialog finish filling its tree
    m_seen.found = true;
    m_seen.title = Text(GetDlgItem(dialog, kTitleId));
    m_seen.statusVisible = IsWindowVisible(GetDlgItem(dialog, kStatusId)) != FALSE;
    m_seen.initial = State(dialog);
    for (const CString& path : selections) {
        SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(path.GetString()));
        Sleep(300);  // the dialog may still have posted work of its own
        m_seen.steps.push_back(State(dialog));
    }
    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
}

}  // namespace qmtest
