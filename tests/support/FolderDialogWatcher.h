// FolderDialogWatcher.h - from a thread, selects each path in the folder-browse
// dialog in turn, records what it shows and presses `button`.
//   qmtest::FolderDialogWatcher watcher({dir + L"a"}, IDOK);  QM::GetDir(nullptr, 1, 0, "Pick");
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
    FolderDialogWatcher(std::vector<CString> selections, int button);
    ~FolderDialogWatcher() { Wait(); }
    const FolderDialogSeen& Wait();

private:
    FolderDialogSeen m_seen;
    std::thread m_thread;
};

}  // namespace qmtest
