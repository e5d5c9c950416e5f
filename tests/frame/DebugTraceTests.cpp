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
class Viewer
{
public:
    explicit Viewer(const wchar_t* cls) : m_class(cls)
    {
        WNDCLASSW wc{};
        wc.lpfnWndProc = ViewerProc;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.lpszClassName = cls;
        RegisterClassW(&wc);
        m_window = CreateWindowW(cls, L"viewer", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr,
                                 GetModuleHandleW(nullptr), nullptr);
    }
    ~Viewer()
    {
        DestroyWindow(m_window);
        UnregisterClassW(m_class, GetModuleHandleW(nullptr));
    }
    HWND m_window;

private:
    const wchar_t* m_class;
};

class TraceTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        // Read each switch once so later sets stick for this process.
        GetDSCommandLineToEXE();
        GetDSDialogToEXE();
        GetDSMacroToEXE();
        SetDSCommandLineToEXE(true);
        SetDSDialogToEXE(false);
        SetDSMacroToEXE(false);
        Received().clear();
    }
    void TearDown() override { SetDSCommandLineToEXE(false); }
};

}  // namespace

TEST_F(TraceTest, PacketCarriesTagAnsiBytesAndCountWithoutNul)
{
    Viewer viewer(L"TraceWin TRACE Window");
    ASSERT_NE(viewer.m_window, nullptr);
    DebugPrintf(L"层%d\n", 5);
    ASSERT_EQ(Received().size(), 1u);
    EXPECT_EQ(Received()[0].tag, 0x6E697774u);
    EXPECT_EQ(Received()[0].bytes, 4u);
    EXPECT_EQ(Received()[0].data, std::string("\xB2\xE3" "5\n"));  // code page 936
}

TEST_F(TraceTest, SecondViewerClassServesUntilTheFirstRuns)
{
    Viewer second(L"MfxTraceWindow");
    DebugPrintf(7);
    DebugPrintf(1.5);
    Viewer first(L"TraceWin TRACE Window");
    DebugPrintf(L"x");
    ASSERT_EQ(Received().size(), 3u);
    EXPECT_EQ(Received()[0].data, "7\n");
    EXPECT_EQ(Received()[1].data, "1.500000\n");
    EXPECT_EQ(Received()[2].data, "x");
    // The first class took the last packet: the second window saw two.
    EXPECT_EQ(Received()[2].viewer, first.m_window);
    EXPECT_EQ(Received()[1].viewer, second.m_window);
}

TEST_F(TraceTest, NothingIsSentWhenTheSwitchIsOffOrNoViewerRuns)
{
    DebugPrintf(L"no viewer");
    Viewer viewer(L"TraceWin TRACE Window");
    SetDSCommandLineToEXE(false);
    DebugPrintf(L"switched off");
    EXPECT_TRUE(Received().empty());
}

TEST_F(TraceTest, LongTextIsCutAtTheSharedBuffer)
{
    Viewer viewer(L"TraceWin TRACE Window");
    const CString text(L'a', 50000);
    DebugPrintf(L"%s", text.GetString());
    ASSERT_EQ(Received().size(), 1u);
    EXPECT_EQ(Received()[0].bytes, 40959u);
}

TEST_F(TraceTest, DebugBoxShowsTheTextThenTracesItWhenDialogToExeIsOn)
{
    Viewer viewer(L"TraceWin TRACE Window");
    SetDSDialogToEXE(true);
    MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDOK));
    DebugMsgBox(L"值=%d", 42);
    const qmtest::MsgBoxSeen& seen = watcher.Wait();
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(seen.caption, CString(L"塔维调试信息"));
    EXPECT_EQ(seen.text, CString(L"值=42"));
    EXPECT_EQ(seen.buttons, std::vector<int>{IDOK});
    EXPECT_EQ(seen.icon, 0u);
    ASSERT_EQ(Received().size(), 1u);
    EXPECT_EQ(Received()[0].data, std::string("\xD6\xB5=42"));
}

TEST_F(TraceTest, DebugBoxWithDialogToExeOffTracesNothing)
{
    Viewer viewer(L"TraceWin TRACE Window");
    MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDOK));
    DebugMsgBox(3.25);
    EXPECT_EQ(watcher.Wait().text, CString(L"3.250000"));
    EXPECT_TRUE(Received().empty());
}

TEST_F(TraceTest, MacroPrintfTracesBeforeTheBoxAndTheBoxTracesAgain)
{
    Viewer viewer(L"TraceWin TRACE Window");
    SetDSMacroToEXE(true);
    SetDSDialogToEXE(true);
    MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDOK));
    DebugVCMacroPrintf(L"macro %s", L"m1");
    EXPECT_EQ(watcher.Wait().text, CString(L"macro m1"));
    ASSERT_EQ(Received().size(), 2u);
    EXPECT_EQ(Received()[0].data, "macro m1");
    EXPECT_EQ(Received()[1].data, "macro m1");
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
