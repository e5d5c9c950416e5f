// FolderDialogWatcher.cpp - finding and driving the folder-browse dialog.
#include "support/FolderDialogWatcher.h"
#include "support/MsgBoxWatcher.h"

#include <commctrl.h>
#include <shlobj.h>

#include <functional>
#include <utility>

namespace qmtest {

namespace {

// The browse dialog's own control ids (the same on Windows and in Wine).
enum { kTreeId = 0x3741, kTitleId = 0x3742, kStatusId = 0x3743 };

// The text of the tree item the dialog has selected, or empty.
CString SelectedItem(HWND dialog)
{
    HWND tree = GetDlgItem(dialog, kTreeId);
    auto item = reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_GETNEXTITEM, TVGN_CARET, 0));
    wchar_t text[MAX_PATH] = L"";
    TVITEMW tvi = {TVIF_TEXT, item, 0, 0, text, MAX_PATH, 0, 0, 0, 0};
    if (item != nullptr)
        SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&tvi));
    return text;
}

// Selects `path` until the tree shows it; Wine now and then ignores a move from a file to a
// folder beside it, so the retry goes by way of the parent folder.
void Select(HWND dialog, const CString& path)
{
    const CString title = QM::GetFileTitle(CString(path).TrimRight(L'\\'));
    const CString parent = QM::GetFilePath(CString(path).TrimRight(L'\\'));
    for (int attempt = 0; attempt < 5; ++attempt) {
        SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(path.GetString()));
        Sleep(300);  // the dialog may still have posted work of its own
        if (title.IsEmpty() || SelectedItem(dialog).Find(title) == 0)
            return;
        SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(parent.GetString()));
        Sleep(300);
    }
}

FolderDialogState State(HWND dialog)
{
    return {IsWindowEnabled(GetDlgItem(dialog, IDOK)) != FALSE, WindowText(GetDlgItem(dialog, kStatusId))};
}

void Drive(FolderDialogSeen& seen, const std::vector<CString>& selections, int button)
{
    HWND dialog = nullptr;
    for (int waited = 0; waited < 10000 && dialog == nullptr; waited += 20) {
        Sleep(20);
        dialog = FindProcessDialog();
        if (dialog != nullptr && GetDlgItem(dialog, kTreeId) == nullptr)
            dialog = nullptr;
    }
    if (dialog == nullptr)
        return;
    Sleep(100);  // let the dialog finish filling its tree
    seen = {true, WindowText(GetDlgItem(dialog, kTitleId)), IsWindowVisible(GetDlgItem(dialog, kStatusId)) != FALSE,
            State(dialog), {}};
    for (const CString& path : selections) {
        Select(dialog, path);
        seen.steps.push_back(State(dialog));
    }
    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
}

}  // namespace

FolderDialogWatcher::FolderDialogWatcher(std::vector<CString> selections, int button)
    : m_thread(Drive, std::ref(m_seen), std::move(selections), button)
{
}

const FolderDialogSeen& FolderDialogWatcher::Wait()
{
    if (m_thread.joinable())
        m_thread.join();
    return m_seen;
}

}  // namespace qmtest
