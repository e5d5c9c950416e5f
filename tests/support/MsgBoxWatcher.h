// MsgBoxWatcher.h - finds, reads and answers the message box this process shows.
//   qmtest::MsgBoxWatcher watcher(qmtest::MsgBoxWatcher::Press(IDYES));   // before the box shows
//   QM::MsgYesNo(nullptr, L"text", true);  EXPECT_EQ(watcher.Wait().text, CString(L"text"));
#pragma once
#include <QMUtil.h>

#include <thread>
#include <vector>

namespace qmtest {

// What the watcher read off the box before it answered.
struct MsgBoxSeen
{
    bool found = false;
    CString caption;
    CString text;
    UINT icon = 0;                 // MB_ICONERROR, MB_ICONQUESTION, ... or 0
    std::vector<int> buttons;      // ids of the visible buttons, left to right
    int defaultButton = 0;         // the button drawn as default (Enter presses it)
    bool probeEnabled = true;      // IsWindowEnabled(probe) while the box was up
};

class MsgBoxWatcher
{
public:
    struct Answer
    {
        int button;   // a button id to click, or 0 to press Enter
    };
    static Answer Press(int button) { return Answer{button}; }
    static Answer Enter() { return Answer{0}; }

    // Starts watching at once; records `probe`'s enabled state while the box is up.
    explicit MsgBoxWatcher(Answer answer, HWND probe = nullptr, DWORD timeoutMs = 10000);
    ~MsgBoxWatcher() { Wait(); }
    MsgBoxWatcher(const MsgBoxWatcher&) = delete;
    MsgBoxWatcher& operator=(const MsgBoxWatcher&) = delete;

    const MsgBoxSeen& Wait();

private:
    void Run(Answer answer, HWND probe, DWORD timeoutMs);

    MsgBoxSeen m_seen;
    std::thread m_thread;
};

// The first visible top-level dialog (class "#32770") of this process.
HWND FindProcessDialog();
CString WindowText(HWND window);

}  // namespace qmtest
