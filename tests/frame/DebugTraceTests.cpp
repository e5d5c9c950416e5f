// Trace packets as a viewer receives them, debug boxes, and the process-only debug switches.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/MsgBoxWatcher.h"
#include "support/TempDir.h"

#include <string>
#include <vector>

using qmtest::MsgBoxWatcher;

namespace {

struct Packet { HWND viewer; ULONG_PTR tag; DWORD bytes; std::string data; };

std::vector<Packet> g_received;

LRESULT CALLBACK ViewerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COPYDATA) {
        auto* cds = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
        g_received.push_back({window, cds->dwData, cds->cbData,
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
        const WNDCLASSW wc{0, ViewerProc, 0, 0, nullptr, nullptr, nullptr, nullptr, nullptr, cls};
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
        g_received.clear();
    }
    void TearDown() override { SetDSCommandLineToEXE(false); }
    static std::vector<std::string> Texts()
    {
        std::vector<std::string> texts;
        for (const Packet& p : g_received)
            texts.push_back(p.data);
        return texts;
    }
};

}  // namespace

// Packets carry a tag and ANSI bytes without the NUL, cut at the shared buffer; the second viewer
// class serves until the first runs, and nothing goes when the switch is off.
TEST_F(TraceTest, PacketsGoToTheFirstViewerClassRunning)
{
    DebugPrintf(L"no viewer");
    Viewer second(L"MfxTraceWindow");
    DebugPrintf(7);
    DebugPrintf(1.5);
    Viewer first(kFirst);
    DebugPrintf(L"层%d\n", 5);
    DebugPrintf(L"%s", CString(L'a', 50000).GetString());
    SetDSCommandLineToEXE(false);
    DebugPrintf(L"switched off");
    ASSERT_EQ(g_received.size(), 4u);
    const std::vector<std::string> texts = Texts();
    EXPECT_EQ(std::vector<std::string>(texts.begin(), texts.begin() + 3),
              (std::vector<std::string>{"7\n", "1.500000\n", "\xB2\xE3" "5\n"}));   // code page 936
    EXPECT_EQ(g_received[1].viewer, second.window);
    EXPECT_EQ(g_received[2].viewer, first.window);
    EXPECT_EQ(g_received[2].tag, 0x6E697774u);
    EXPECT_EQ(g_received[2].bytes, 4u);
    EXPECT_EQ(g_received[3].bytes, 40959u);
}

// The debug box traces its text when DialogToExe is on; the macro form traces before the box too.
TEST_F(TraceTest, DebugBoxesTraceByTheirSwitches)
{
    const struct { bool dialog, macro; void (*show)(); const wchar_t* shown; std::vector<std::string> traced; } rows[] = {
        {true, false, [] { DebugMsgBox(L"值=%d", 42); }, L"值=42", {"\xD6\xB5=42"}},
        {false, false, [] { DebugMsgBox(3.25); }, L"3.250000", {}},
        {true, true, [] { DebugVCMacroPrintf(L"macro %s", L"m1"); }, L"macro m1", {"macro m1", "macro m1"}},
    };
    Viewer viewer(kFirst);
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::Message() << row.shown);
        g_received.clear();
        SetDSDialogToEXE(row.dialog), SetDSMacroToEXE(row.macro);
        MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDOK));
        row.show();
        const qmtest::MsgBoxSeen& seen = watcher.Wait();
        EXPECT_EQ(seen.text, CString(row.shown));
        EXPECT_EQ(seen.caption, CString(L"塔维调试信息"));
        EXPECT_EQ(seen.buttons, std::vector<int>{IDOK});
        EXPECT_EQ(seen.icon, 0u);
        EXPECT_EQ(Texts(), row.traced);
    }
}

// Only the box form shows a box.
TEST(LastError, BoxShowsTheThreadsLastErrorTextSwitchesStayInTheProcessVersionKeepsBlanks)
{
    MsgBoxWatcher none(MsgBoxWatcher::Press(IDOK), nullptr, 500);
    ShowLastErrorMessage(ERROR_ACCESS_DENIED, nullptr);
    EXPECT_FALSE(none.Wait().found);

    wchar_t expected[512] = L"";
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, ERROR_FILE_NOT_FOUND, 0x400,
                   expected, ARRAYSIZE(expected), nullptr);
    MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDOK));
    SetLastError(ERROR_FILE_NOT_FOUND);
    ShowLastErrorMessageBox(-1, nullptr);
    const qmtest::MsgBoxSeen& seen = watcher.Wait();
    EXPECT_EQ(seen.caption, CString(L"调试信息.GetLastError"));
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONINFORMATION));
    CString shown = seen.text;
    EXPECT_EQ(shown.Trim(), CString(expected).Trim());
    // Debug switches set last for the process and never reach the file.
    qmtest::TempDir dir;
    const CString ini = dir.WriteFile(L"INIT.ini", "[Debug]\r\nFormatLspList=0\r\n");
    const CString previous = QM::CInitSetting().GetFilePath();
    ASSERT_TRUE(QM::CInitSetting().SetFilePath(ini));

    GetDSFormatLspList();
    SetDSFormatLspList(true);
    EXPECT_TRUE(GetDSFormatLspList());
    EXPECT_EQ(qmtest::TempDir::ReadFile(ini), "[Debug]\r\nFormatLspList=0\r\n");
    SetDSFormatLspList(false);

    QM::CInitSetting().SetFilePath(previous);
    // The version text keeps the blanks inside its brackets.
    const CString version = QM::GetLibVersionNumber();
    EXPECT_EQ(version.Left(35), CString(L"[ 1.42 ]-[ 2012/09/18 02:56:06 ]-[ "));
    EXPECT_EQ(version.Right(2), CString(L" ]"));
    EXPECT_GT(version.GetLength(), 37) << "an author name between the blanks";
}
