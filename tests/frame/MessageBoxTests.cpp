// Message boxes as the user sees them, and the answer returned.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/MsgBoxWatcher.h"

#include <vector>

using qmtest::MsgBoxSeen;
using qmtest::MsgBoxWatcher;

namespace {

const CString kCaption(L"塔维提示！");
const std::vector<int> kOk{IDOK};
const std::vector<int> kYesNo{IDYES, IDNO};

}  // namespace

// Letters are summed into the icon and buttons of a task-modal box, which disables the test
// thread's ownerless windows (the probe); MsgBox passes the type as given.
TEST(MessageBoxTest, StyleLettersAreSummedAndTheOtherFormsShowWhatTheyAreTold)
{
    const HWND probe = CreateWindowExW(0, L"STATIC", L"probe", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, nullptr,
                                       nullptr, nullptr);
    ASSERT_NE(probe, nullptr) << "message-box tests need a display (xvfb-run)";
    const struct { const wchar_t* style; UINT icon; std::vector<int> buttons; int press; } rows[] = {
        {L"X", MB_ICONERROR, kOk, IDOK}, {L"x", MB_ICONERROR, kOk, IDOK}, {L"!", MB_ICONEXCLAMATION, kOk, IDOK},
        {L"I", MB_ICONINFORMATION, kOk, IDOK}, {L"i", MB_ICONINFORMATION, kOk, IDOK},
        {L"?YN", MB_ICONQUESTION, kYesNo, IDNO},   // Yes/No added once for both letters
        {L"ny", 0, kYesNo, IDYES},
        {L"XX", MB_ICONQUESTION, kOk, IDOK},       // 16 + 16 = 32, the question icon
        {L"", 0, kOk, IDOK}, {L"z#", 0, kOk, IDOK}, {nullptr, 0, kOk, IDOK},
    };
    for (const auto& row : rows) {
        const CString style = row.style != nullptr ? row.style : L"(null)";
        MsgBoxWatcher watcher(MsgBoxWatcher::Press(row.press), probe);
        EXPECT_EQ(QM::ShowMessage(nullptr, L"正文", row.style), row.press) << style;
        const MsgBoxSeen& seen = watcher.Wait();
        ASSERT_TRUE(seen.found) << style;
        EXPECT_EQ(seen.caption, kCaption) << style;
        EXPECT_EQ(seen.text, CString(L"正文")) << style;
        EXPECT_EQ(seen.icon, row.icon) << style;
        EXPECT_EQ(seen.buttons, row.buttons) << style;
        EXPECT_FALSE(seen.probeEnabled) << style << ": task-modal";
        EXPECT_TRUE(IsWindowEnabled(probe)) << style;
    }
    MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDCANCEL), probe);
    EXPECT_EQ(QM::MsgBox(nullptr, L"重试？", MB_RETRYCANCEL | MB_ICONEXCLAMATION), IDCANCEL);
    const MsgBoxSeen& seen = watcher.Wait();
    EXPECT_EQ(seen.caption, kCaption);
    EXPECT_EQ(seen.buttons, (std::vector<int>{IDRETRY, IDCANCEL}));
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONEXCLAMATION));
    EXPECT_TRUE(seen.probeEnabled) << "no task-modal flag was asked for";
    MsgBoxWatcher ok(MsgBoxWatcher::Enter(), probe);
    QM::MsgOk(nullptr, L"好");
    EXPECT_EQ(ok.Wait().buttons, kOk);
    // MsgYesNo preselects what it is told and is true only for Yes.
    const struct { bool defaultYes; MsgBoxWatcher::Answer answer; int defaultButton; bool result; } yesNo[] = {
        {false, MsgBoxWatcher::Enter(), IDNO, false}, {true, MsgBoxWatcher::Enter(), IDYES, true},
        {false, MsgBoxWatcher::Press(IDYES), IDNO, true}, {true, MsgBoxWatcher::Press(IDNO), IDYES, false}};
    for (const auto& row : yesNo) {
        MsgBoxWatcher watcher(row.answer, probe);
        EXPECT_EQ(QM::MsgYesNo(nullptr, L"覆盖？", row.defaultYes), row.result) << row.defaultYes;
        const MsgBoxSeen& seen = watcher.Wait();
        EXPECT_EQ(seen.buttons, kYesNo);
        EXPECT_EQ(seen.defaultButton, row.defaultButton) << row.defaultYes;
    }
    DestroyWindow(probe);
}
