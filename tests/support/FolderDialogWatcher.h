// FolderDialogWatcher.h - drives the shell's folder-browse dialog from a
// thread: reads its title and status text, selects items by path, records
// the OK button's state after each selection and closes it.
//
//   qmtest::FolderDialogWatcher watcher({dir + L"a"}, IDOK);
//   CString chosen = QM::GetDir(nullptr, 1, 0, "Pick");   // blocks until closed
//   const qmtest::FolderDialogSeen& seen = watcher.Wait();
//   EXPECT_TRUE(seen.steps[0].okEnabled);
#pragma once
#include <QMUtil.h>

#include <thread>
#include <vector>

namespace qmtest {

struct FolderDialogState
{
    bool okEnabled = false;
    CString status;   // the status line's text
};

struct FolderDialogSeen
{
    bool found = false;
    CString title;                         // the text above the tree
    bool statusVisible = false;
    FolderDialogState initial;             // as the dialog opened
    std::vector<FolderDialogState> steps;  // after each selection, in order
};

class FolderDialogWatcher
{
public:
    // Selects each path in turn (BFFM_SETSELECTION by path text), then
    // presses `button` (IDOK or IDCANCEL).
    FolderDialogWatcher(std::vector<CString> selections, int button, DWORD timeoutMs = 10000);
    ~FolderDialogWatcher();
    FolderDialogWatcher(const FolderDialogWatcher&) = delete;
    FolderDialogWatcher& operator=(const FolderDialogWatcher&) = delete;

    const FolderDialogSeen& Wait();

private:
    void Run(std::vector<CString> selections, int button, DWORD timeoutMs);

    FolderDialogSeen m_seen;
    std::thread m_thread;
};

}  // namespace qmtest
