// Trace packets as a trace viewer receives them, debug boxes as the user
// sees them, and the process-only debug switches.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/MsgBoxWatcher.h"
#include "support/TempDir.h"

#include <string>
#include <vector>

using qmtest::MsgBoxWatcher;

namespace {

struct Packet
{
    HWND viewer;
    ULONG_PTR tag;
    DWORD bytes;
    std::string data;
};

std::vector<Packet>& Received()
{
    static std::vector<Packet> packets;
    return packets;
}

LRESULT CALLBACK ViewerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COPYDATA) {
        auto* cds = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
        Received().push_back({window, cds->dwData, cds->cbData,
                              std::string(static_cast<const char*>(cds->lpData), cds->cbData)});
        return TRUE;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

// A stand-in trace viewer: a top-level window of the viewer's class.
struct Viewer
{
    explicit Viewer(const wchar_t* cls) : name(cls)
    {
        WNDCLASSW wc{};
        wc.lpfnWndProc = ViewerProc;
        wc.lpszClassName = cls;
        RegisterClassW(&wc);
        window = CreateWindowW(cls, L"viewer", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    }
    ~Viewer() { DestroyWindow(window), UnregisterClassW(name, nullptr); }
    const wchar_t* name;
    HWND window;
};

const wchar_t kFirst[] = L"TraceWin TRACE Window";

class TraceTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        // Read each switch once so later sets stick for this process.
        GetDSCommandLineToEXE(), GetDSDialogToEXE(), GetDSMacroToEXE();
        SetDSCommandLineToEXE(true), SetDSDialogToEXE(false), SetDSMacroToEXE(false);
        Received().clear();
    }
    void TearDown() override { SetDSCommandLineToEXE(false); }
    std::vector<std::string> Texts() const
    {
        std::vector<std::string> texts;
        for (const Packet& p : Received())
            texts.push_back(p.data);
        return texts;
    }
};

}  // namespace

TEST_F(TraceTest, PacketCarriesTagAnsiBytesAndCountWithoutNulCutAtTheSharedBuffer)
{
    Viewer viewer(kFirst);
    ASSERT_NE(viewer.window, nullptr);
    DebugPrintf(L"层%d\n", 5);
    DebugPrintf(L"%s", CString(L'a', 50000).GetString());
    ASSERT_EQ(Received().size(), 2u);
    EXPECT_EQ(Received()[0].tag, 0x6E697774u);
    EXPECT_EQ(Received()[0].bytes, 4u);
    EXPECT_EQ(Received()[0].data, std::string("\xB2\xE3" "5\n"));  // code page 936
    EXPECT_EQ(Received()[1].bytes, 40959u);
}

TEST_F(TraceTest, SecondViewerClassServesUntilTheFirstRunsAndNothingGoesWhenSwitchedOff)
{
    DebugPrintf(L"no viewer");
    Viewer second(L"MfxTraceWindow");
    DebugPrintf(7);
    DebugPrintf(1.5);
    Viewer first(kFirst);
    DebugPrintf(L"x");
    SetDSCommandLineToEXE(false);
    DebugPrintf(L"switched off");
    EXPECT_EQ(Texts(), (std::vector<std::string>{"7\n", "1.500000\n", "x"}));
    ASSERT_EQ(Received().size(), 3u);
    EXPECT_EQ(Received()[1].viewer, second.window);
    EXPECT_EQ(Received()[2].viewer, first.window);
}

// The debug box shows its text and traces it when DialogToExe is on; the
// macro form traces before the box as well.
TEST_F(TraceTest, DebugBoxesTraceByTheirSwitches)
{
    const struct { bool dialog, macro; const wchar_t* shown; std::vector<std::string> traced; } rows[] = {
        {true, false, L"值=42", {"\xD6\xB5=42"}},
        {false, false, L"3.250000", {}},
        {true, true, L"macro m1", {"macro m1", "macro m1"}},
    };
    Viewer viewer(kFirst);
    for (size_t i = 0; i < ARRAYSIZE(rows); ++i) {
        Received().clear();
        SetDSDialogToEXE(rows[i].dialog), SetDSMacroToEXE(rows[i].macro);
        MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDOK));
        if (i == 0)
            DebugMsgBox(L"值=%d", 42);
        else if (i == 1)
            DebugMsgBox(3.25);
        else
            DebugVCMacroPrintf(L"macro %s", L"m1");
        const qmtest::MsgBoxSeen& seen = watcher.Wait();
        EXPECT_EQ(seen.text, CString(rows[i].shown)) << "row " << i;
        EXPECT_EQ(seen.caption, CString(L"塔维调试信息")) << "row " << i;
        EXPECT_EQ(seen.buttons, std::vector<int>{IDOK}) << "row " << i;
        EXPECT_EQ(seen.icon, 0u) << "row " << i;
        EXPECT_EQ(Texts(), rows[i].traced) << "row " << i;
    }
}

TEST(LastError, BoxShowsTheThreadsLastErrorText)
{
    wchar_t* expected = nullptr;
    FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                   nullptr, ERROR_FILE_NOT_FOUND, 0x400, reinterpret_cast<LPWSTR>(&expected), 0, nullptr);
    ASSERT_NE(expected, nullptr);

    MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDOK));
    SetLastError(ERROR_FILE_NOT_FOUND);
    ShowLastErrorMessageBox(-1, nullptr);
    const qmtest::MsgBoxSeen& seen = watcher.Wait();
    EXPECT_EQ(seen.caption, CString(L"调试信息.GetLastError"));
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONINFORMATION));
    CString shown = seen.text, wanted = expected;
    EXPECT_EQ(shown.Trim(), wanted.Trim());
    LocalFree(expected);
}

TEST(LastError, PlainFormShowsNothing)
{
    MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDOK), nullptr, 500);
    ShowLastErrorMessage(ERROR_ACCESS_DENIED, nullptr);
    EXPECT_FALSE(watcher.Wait().found);
}

TEST(DebugSwitches, SetsLastForTheProcessAndNeverReachTheFile)
{
    qmtest::TempDir dir;
    const CString ini = dir.WriteFile(L"INIT.ini", "[Debug]\r\nFormatLspList=0\r\n");
    const CString previous = QM::CInitSetting().GetFilePath();
    ASSERT_TRUE(QM::CInitSetting().SetFilePath(ini));

    GetDSFormatLspList();
    SetDSFormatLspList(true);
    EXPECT_TRUE(GetDSFormatLspList());
    EXPECT_EQ(qmtest::TempDir::ReadFile(ini), "[Debug]\r\nFormatLspList=0\r\n");
    SetDSFormatLspList(false);
    EXPECT_FALSE(GetDSFormatLspList());

    QM::CInitSetting().SetFilePath(previous);
}

TEST(Version, TextKeepsTheBlanksInsideTheBrackets)
{
    const CString version = QM::GetLibVersionNumber();
    EXPECT_EQ(version.Left(35), CString(L"[ 1.42 ]-[ 2012/09/18 02:56:06 ]-[ "));
    EXPECT_EQ(version.Right(2), CString(L" ]"));
    EXPECT_GT(version.GetLength(), 37) << "an author name between the blanks";
    EXPECT_STREQ(QM::GetLibVersionNumber(), version.GetString());
}
