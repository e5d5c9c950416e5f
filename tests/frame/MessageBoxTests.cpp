// Message boxes as the user sees them: caption, text, icon, buttons,
// default button, task-modality, and the answer returned.
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

// A plain top-level window of the test thread: task-modal boxes without an
// owner disable it while they are up.
class MessageBoxTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_probe = CreateWindowExW(0, L"STATIC", L"probe", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, nullptr,
                                  nullptr, nullptr);
        ASSERT_NE(m_probe, nullptr) << "message-box tests need a display (xvfb-run)";
    }
    void TearDown() override { DestroyWindow(m_probe); }

    // Shows a box through ShowMessage with `style`, answers it with `answer`.
    MsgBoxSeen Show(const wchar_t* style, MsgBoxWatcher::Answer answer, int* result = nullptr)
    {
        MsgBoxWatcher watcher(answer, m_probe);
        int code = QM::ShowMessage(nullptr, L"正文", style);
        if (result != nullptr)
            *result = code;
        return watcher.Wait();
    }

    HWND m_probe = nullptr;
};

}  // namespace

TEST_F(MessageBoxTest, ErrorStyleShowsTheErrorIconAndOkTaskModally)
{
    int result = 0;
    MsgBoxSeen seen = Show(L"X", MsgBoxWatcher::Press(IDOK), &result);
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(seen.caption, kCaption);
    EXPECT_EQ(seen.text, CString(L"正文"));
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONERROR));
    EXPECT_EQ(seen.buttons, kOk);
    EXPECT_FALSE(seen.probeEnabled);
    EXPECT_EQ(result, IDOK);
    EXPECT_TRUE(IsWindowEnabled(m_probe));
}

TEST_F(MessageBoxTest, QuestionWithYesAndNoAddsTheButtonsOnce)
{
    int result = 0;
    MsgBoxSeen seen = Show(L"?YN", MsgBoxWatcher::Press(IDNO), &result);
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONQUESTION));
    EXPECT_EQ(seen.buttons, kYesNo);
    EXPECT_EQ(result, IDNO);
}

TEST_F(MessageBoxTest, EachIconLetter)
{
    const struct { const wchar_t* style; UINT icon; } cases[] = {
        {L"!", MB_ICONEXCLAMATION}, {L"I", MB_ICONINFORMATION}, {L"i", MB_ICONINFORMATION},
        {L"x", MB_ICONERROR},       {L"?", MB_ICONQUESTION},    {L"", 0},
        {L"z#", 0},
    };
    for (const auto& c : cases) {
        MsgBoxSeen seen = Show(c.style, MsgBoxWatcher::Press(IDOK));
        ASSERT_TRUE(seen.found) << c.style;
        EXPECT_EQ(seen.icon, c.icon) << c.style;
        EXPECT_EQ(seen.buttons, kOk) << c.style;
        EXPECT_FALSE(seen.probeEnabled) << c.style;
    }
}

TEST_F(MessageBoxTest, LettersAreSummedSoARepeatedIconBecomesAnother)
{
    // Two error letters sum to the question icon's value (16 + 16 = 32).
    MsgBoxSeen seen = Show(L"XX", MsgBoxWatcher::Press(IDOK));
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONQUESTION));
}

TEST_F(MessageBoxTest, NullStyleIsAPlainTaskModalOkBox)
{
    MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDOK), m_probe);
    EXPECT_EQ(QM::ShowMessage(nullptr, L"t", nullptr), IDOK);
    const MsgBoxSeen& seen = watcher.Wait();
    EXPECT_EQ(seen.icon, 0u);
    EXPECT_FALSE(seen.probeEnabled);
}

TEST_F(MessageBoxTest, MsgBoxPassesTheTypeAsGiven)
{
    MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDCANCEL), m_probe);
    EXPECT_EQ(QM::MsgBox(nullptr, L"重试？", MB_RETRYCANCEL | MB_ICONEXCLAMATION), IDCANCEL);
    const MsgBoxSeen& seen = watcher.Wait();
    EXPECT_EQ(seen.caption, kCaption);
    EXPECT_EQ(seen.buttons, (std::vector<int>{IDRETRY, IDCANCEL}));
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONEXCLAMATION));
    EXPECT_TRUE(seen.probeEnabled) << "no task-modal flag was asked for";
}

TEST_F(MessageBoxTest, MsgOkShowsOneButton)
{
    MsgBoxWatcher watcher(MsgBoxWatcher::Enter(), m_probe);
    QM::MsgOk(nullptr, L"好");
    const MsgBoxSeen& seen = watcher.Wait();
    EXPECT_EQ(seen.text, CString(L"好"));
    EXPECT_EQ(seen.buttons, kOk);
}

TEST_F(MessageBoxTest, MsgYesNoWithoutDefaultYesPreselectsNo)
{
    MsgBoxWatcher watcher(MsgBoxWatcher::Enter(), m_probe);
    EXPECT_FALSE(QM::MsgYesNo(nullptr, L"覆盖？", false));
    const MsgBoxSeen& seen = watcher.Wait();
    EXPECT_EQ(seen.buttons, kYesNo);
    EXPECT_EQ(seen.defaultButton, IDNO);
}

TEST_F(MessageBoxTest, MsgYesNoWithDefaultYesAnswersYesOnEnter)
{
    MsgBoxWatcher watcher(MsgBoxWatcher::Enter(), m_probe);
    EXPECT_TRUE(QM::MsgYesNo(nullptr, L"覆盖？", true));
    EXPECT_EQ(watcher.Wait().defaultButton, IDYES);
}

TEST_F(MessageBoxTest, MsgYesNoIsTrueOnlyForYes)
{
    {
        MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDYES), m_probe);
        EXPECT_TRUE(QM::MsgYesNo(nullptr, L"q", false));
    }
    MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDNO), m_probe);
    EXPECT_FALSE(QM::MsgYesNo(nullptr, L"q", true));
}
