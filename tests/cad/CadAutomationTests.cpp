// CadAutomationTests.cpp - the host's folder asked of its automation server (played by this process).
#include <QMUtil.h>
#include <gtest/gtest.h>

#include <functional>

#include "support/CadFixture.h"
#include "support/FakeCadServer.h"

using qmtest::Cad;
using qmtest::FakeCadServer;
using qmtest::SettingOverride;

namespace {

const wchar_t kProgId[] = L"AutoCAD.Application.16.1";   // the configured release

// The stored folder lacks the executable (the host was moved), so a lookup asks the
// server, which saves into the user's temporary folder (a fresh one per test).
class CadAutomation : public ::testing::Test
{
protected:
    CadAutomation()
    {
        m_hostDir.WriteFile(L"CAD 主程序\\acad.exe", "MZ");
        m_host.folder = m_hostDir.Path() + L"CAD 主程序";   // no trailing backslash, like the host
    }
    static CString Stored() { return QM::CInitSetting().GetSetting(L"CADPathNameCOM", L"<none>", L"CADCmdLine"); }
    static CString StoredInFile() { return qmtest::Profile(L"CADCmdLine", L"CADPathNameCOM", IniPath()); }
    static CString IniPath() { return QM::CInitSetting().GetFilePath(); }
    std::vector<CString> AllCalls() const
    {
        return {L"get Application.ActiveDocument", L"call Document.SaveAs(\"" + m_userTemp.Path() + L"QmSaved.dwg\")",
                L"get Application.Path"};
    }

    qmtest::TempDir m_hostDir, m_userTemp;
    qmtest::EnvOverride m_tmp{L"TMP", m_userTemp.Path()}, m_temp{L"TEMP", m_userTemp.Path()};   // GetTempPathW's
    SettingOverride m_stored{L"CADPathNameCOM", Cad().Folder(L"AutoCAD 2005 EN"), L"CADCmdLine"};
    qmtest::FakeCadBehaviour m_host;
};

// A first stored folder is a new key: the cache forgets the section's other keys, the file keeps
// them. Once stored, the executable is where the folder says: no second trip.
TEST_F(CadAutomation, ServerFolderIsUsedAndRemembered)
{
    SettingOverride none(L"CADPathNameCOM", nullptr, L"CADCmdLine");
    FakeCadServer server(kProgId, m_host);
    ASSERT_TRUE(server.Registered());
    CString dir, exe;
    ASSERT_TRUE(QM::GetCADPath_I(dir, exe));
    EXPECT_EQ(m_host.folder + L"\\", dir);
    EXPECT_EQ(m_host.folder + L"\\acad.exe", exe);   // name from "%ACADDIR%acad.exe"
    EXPECT_EQ(AllCalls(), server.Calls());
    EXPECT_EQ(m_host.folder, Stored());
    EXPECT_EQ(m_host.folder, StoredInFile());
    EXPECT_EQ(CString(), QM::GetStartupAcadVer());
    EXPECT_EQ(CString(L"16.1"), qmtest::Profile(L"CADCmdLine", L"ACADVer", IniPath()));
    QM::CInitSetting().SetFilePath(IniPath());
    CString again;
    ASSERT_TRUE(QM::GetCADPath_I(again, exe));
    EXPECT_EQ(dir, again);
    EXPECT_EQ(3u, server.Calls().size());
}

// A failed save, a missing SaveAs, or a release in braces naming the server's class id still give
// the folder; no server gives nothing and writes nothing.
TEST_F(CadAutomation, FailedSaveStillGivesTheFolderNoServerGivesNothing)
{
    const struct { HRESULT saveError; bool hasSaveAs, byClassId; const wchar_t* saveCall; } rows[] = {
        {HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED), true, false, nullptr},
        {S_OK, false, false, L"unknown Document.SaveAs"}, {S_OK, true, true, nullptr}};
    for (const auto& row : rows) {
        SettingOverride stored(L"CADPathNameCOM", Cad().Folder(L"AutoCAD 2005 EN"), L"CADCmdLine");
        m_host.saveError = row.saveError;
        m_host.hasSaveAs = row.hasSaveAs;
        FakeCadServer server(row.byClassId ? nullptr : kProgId, m_host);
        SettingOverride release(L"ACADVer", row.byClassId ? server.ClassIdText().GetString() : L"16.1", L"CADCmdLine");
        CString dir, exe;
        EXPECT_TRUE(QM::GetCADPath_I(dir, exe));
        EXPECT_EQ(m_host.folder + L"\\", dir);
        std::vector<CString> calls = AllCalls();
        if (row.saveCall != nullptr)
            calls[1] = row.saveCall;
        EXPECT_EQ(calls, server.Calls());
    }
    SettingOverride release(L"ACADVer", L"99.1", L"CADCmdLine");   // no server registered
    CString dir(L"kept"), exe(L"kept");
    EXPECT_FALSE(QM::GetCADPath_I(dir, exe));
    EXPECT_EQ(CString(L"kept"), dir);
    EXPECT_EQ(CString(L"kept"), exe);
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2005 EN"), StoredInFile());
}

std::function<void(UINT)> g_onAppMessage;

LRESULT CALLBACK CallerWindow(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message < WM_APP)
        return DefWindowProcW(window, message, wParam, lParam);
    g_onAppMessage(message);
    return 0;
}

// Run from a command handler, the lookup dispatches a waiting message and one posted while the
// server works before the server answers (held back five seconds at most).
TEST_F(CadAutomation, CallerKeepsDispatchingItsMessages)
{
    const WNDCLASSW windowClass{0, CallerWindow, 0, 0, nullptr, nullptr, nullptr, nullptr, nullptr, L"QMTestAutomationCaller"};
    RegisterClassW(&windowClass);
    const HWND window = CreateWindowExW(0, windowClass.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                        nullptr, nullptr);
    const UINT kCommand = WM_APP + 1, kWaiting = WM_APP + 2, kFromServer = WM_APP + 3;
    HANDLE handled[2] = {CreateEventW(nullptr, TRUE, FALSE, nullptr), CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    bool waitingBeforeFirstAnswer = false, fromServerBeforeSaved = false;
    m_host.onCall = [&](const CString& call) {
        if (call == L"get Application.ActiveDocument") {
            waitingBeforeFirstAnswer = WaitForSingleObject(handled[0], 5000) == WAIT_OBJECT_0;
        } else if (call.Find(L"call Document.SaveAs") == 0) {
            PostMessageW(window, kFromServer, 0, 0);
            fromServerBeforeSaved = WaitForSingleObject(handled[1], 5000) == WAIT_OBJECT_0;
        }
    };
    FakeCadServer server(kProgId, m_host);
    bool found = false;
    CString dir, exe;
    g_onAppMessage = [&](UINT message) {
        if (message == kCommand)
            found = QM::GetCADPath_I(dir, exe);
        else
            SetEvent(handled[message == kWaiting ? 0 : 1]);
    };
    PostMessageW(window, kCommand, 0, 0);
    PostMessageW(window, kWaiting, 0, 0);
    MSG msg;
    if (GetMessageW(&msg, nullptr, 0, 0) > 0 && msg.message == kCommand)
        DispatchMessageW(&msg);
    DestroyWindow(window);
    for (HANDLE event : handled)
        CloseHandle(event);
    EXPECT_TRUE(found);
    EXPECT_EQ(m_host.folder + L"\\", dir);
    EXPECT_TRUE(waitingBeforeFirstAnswer);
    EXPECT_TRUE(fromServerBeforeSaved);
}

// A quit posted while the lookup runs is left for the caller's own loop.
TEST_F(CadAutomation, QuitDuringTheLookupReachesTheCallersLoop)
{
    FakeCadServer server(kProgId, m_host);
    PostQuitMessage(42);
    CString dir, exe;
    EXPECT_TRUE(QM::GetCADPath_I(dir, exe));
    MSG msg;
    ASSERT_TRUE(PeekMessageW(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(42u, msg.wParam);
}

}  // namespace
