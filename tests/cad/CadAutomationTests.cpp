// CadAutomationTests.cpp - the host's folder through its automation server,
// against a server played by this test process.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "support/CadFixture.h"
#include "support/ChildProcess.h"
#include "support/FakeCadServer.h"

using qmtest::Cad;
using qmtest::FakeCadBehaviour;
using qmtest::FakeCadServer;
using qmtest::SettingOverride;

namespace {

// The fixture's configured release.
const wchar_t kProgId[] = L"AutoCAD.Application.16.1";

// Points the user's temporary folder at `folder` for a scope: GetTempPathW
// reads TMP, then TEMP.
class UserTempFolder
{
public:
    explicit UserTempFolder(const wchar_t* folder)
    {
        for (int i = 0; i < 2; ++i) {
            wchar_t old[MAX_PATH + 1] = {};
            m_existed[i] = GetEnvironmentVariableW(kNames[i], old, ARRAYSIZE(old)) > 0;
            m_old[i] = old;
            SetEnvironmentVariableW(kNames[i], folder);
        }
    }
    ~UserTempFolder()
    {
        for (int i = 0; i < 2; ++i)
            SetEnvironmentVariableW(kNames[i], m_existed[i] ? m_old[i].GetString() : nullptr);
    }
    UserTempFolder(const UserTempFolder&) = delete;
    UserTempFolder& operator=(const UserTempFolder&) = delete;

private:
    static constexpr const wchar_t* kNames[2] = {L"TMP", L"TEMP"};
    CString m_old[2];
    bool m_existed[2] = {};
};

// A message-only window of the test thread; every application message it
// receives goes to `onMessage`.
class MessageWindow
{
public:
    MessageWindow()
    {
        static const ATOM windowClass = [] {
            WNDCLASSW wc = {};
            wc.lpfnWndProc = Procedure;
            wc.hInstance = GetModuleHandleW(nullptr);
            wc.lpszClassName = L"QMTestAutomationCaller";
            return RegisterClassW(&wc);
        }();
        m_window = CreateWindowExW(0, MAKEINTATOM(windowClass), L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                   GetModuleHandleW(nullptr), nullptr);
        SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    ~MessageWindow() { DestroyWindow(m_window); }
    MessageWindow(const MessageWindow&) = delete;
    MessageWindow& operator=(const MessageWindow&) = delete;

    HWND Handle() const { return m_window; }
    std::function<void(UINT)> onMessage;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        auto* self = reinterpret_cast<MessageWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message >= WM_APP && self != nullptr && self->onMessage) {
            self->onMessage(message);
            return 0;
        }
        return DefWindowProcW(window, message, wParam, lParam);
    }

    HWND m_window = nullptr;
};

// The stored folder names a product folder without the executable (the
// host was moved), so every lookup starts at the server unless it stores a
// better one.
class CadAutomation : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (qmtest::IsChildProcess())
            GTEST_SKIP();
        m_hostFolder = m_hostDir.Path() + L"CAD 主程序";
        m_hostDir.WriteFile(L"CAD 主程序\\acad.exe", "MZ");
        m_temp = std::make_unique<UserTempFolder>(m_userTemp.Path());
        m_stored = std::make_unique<SettingOverride>(L"CADPathNameCOM", Cad().Folder(L"AutoCAD 2005 EN"),
                                                     L"CADCmdLine");
    }

    FakeCadBehaviour Host() const
    {
        FakeCadBehaviour host;
        host.folder = m_hostFolder;
        return host;
    }
    // The stored folder, as the settings cache and as the file hold it.
    static CString Stored() { return QM::CInitSetting().GetSetting(L"CADPathNameCOM", L"<none>", L"CADCmdLine"); }
    static CString StoredInFile()
    {
        wchar_t text[1024] = {};
        GetPrivateProfileStringW(L"CADCmdLine", L"CADPathNameCOM", L"<none>", text, ARRAYSIZE(text),
                                 QM::CInitSetting().GetFilePath());
        return text;
    }
    std::vector<CString> ExpectedCalls() const
    {
        return {L"get Application.ActiveDocument", L"call Document.SaveAs(\"" + m_userTemp.Path() + L"QmSaved.dwg\")",
                L"get Application.Path"};
    }

    qmtest::TempDir m_hostDir, m_userTemp;
    CString m_hostFolder;   // no trailing backslash, as the host answers
    std::unique_ptr<UserTempFolder> m_temp;
    std::unique_ptr<SettingOverride> m_stored;
};

TEST_F(CadAutomation, ServerFolderIsUsedAndRemembered)
{
    FakeCadServer server(kProgId, Host());
    ASSERT_TRUE(server.Registered());
    CString dir, exe;
    ASSERT_TRUE(QM::GetCADPath_I(dir, exe));
    EXPECT_EQ(m_hostFolder + L"\\", dir);
    EXPECT_EQ(m_hostFolder + L"\\acad.exe", exe);   // name from "%ACADDIR%acad.exe"
    EXPECT_EQ(ExpectedCalls(), server.Calls());
    EXPECT_EQ(m_hostFolder, Stored());
    EXPECT_EQ(m_hostFolder, StoredInFile());

    // The executable is where the server said: no second trip to it.
    CString dir2, exe2;
    ASSERT_TRUE(QM::GetCADPath_I(dir2, exe2));
    EXPECT_EQ(dir, dir2);
    EXPECT_EQ(exe, exe2);
    EXPECT_EQ(3u, server.Calls().size());
}

// A first lookup on a machine that never stored a folder: the release and
// the executable's name stay configured for the rest of the process.
TEST_F(CadAutomation, FirstStoredFolderKeepsTheOtherSettings)
{
    SettingOverride none(L"CADPathNameCOM", nullptr, L"CADCmdLine");
    FakeCadServer server(kProgId, Host());
    ASSERT_TRUE(server.Registered());
    CString dir, exe;
    ASSERT_TRUE(QM::GetCADPath_I(dir, exe));
    EXPECT_EQ(m_hostFolder, Stored());
    EXPECT_EQ(CString(L"16.1"), QM::GetStartupAcadVer());
    EXPECT_EQ(CString(L"%ACADDIR%acad.exe"),
              QM::CInitSetting().GetSetting(L"ACADExePath", L"<none>", L"CADCmdLine"));
}

TEST_F(CadAutomation, ServerThatCannotAnswerGivesNothing)
{
    FakeCadBehaviour host = Host();
    host.saveError = HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);
    FakeCadServer server(kProgId, host);
    ASSERT_TRUE(server.Registered());
    CString dir(L"kept"), exe(L"kept");
    EXPECT_FALSE(QM::GetCADPath_I(dir, exe));
    EXPECT_EQ(CString(L"kept"), dir);
    EXPECT_EQ(CString(L"kept"), exe);
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2005 EN"), StoredInFile());
    // A host that cannot save is not asked for its folder.
    std::vector<CString> untilSave = ExpectedCalls();
    untilSave.pop_back();
    EXPECT_EQ(untilSave, server.Calls());

    // A release with no registered server.
    SettingOverride release(L"ACADVer", L"99.1", L"CADCmdLine");
    EXPECT_FALSE(QM::GetCADPath_I(dir, exe));
    EXPECT_EQ(CString(L"kept"), dir);
    EXPECT_EQ(CString(L"kept"), exe);
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2005 EN"), Stored());
    EXPECT_EQ(2u, server.Calls().size());
}

TEST_F(CadAutomation, ReleaseInBracesIsTheServersClassId)
{
    FakeCadServer server(nullptr, Host());
    ASSERT_TRUE(server.Registered());
    SettingOverride release(L"ACADVer", server.ClassIdText(), L"CADCmdLine");
    CString dir, exe;
    ASSERT_TRUE(QM::GetCADPath_I(dir, exe));
    EXPECT_EQ(m_hostFolder + L"\\", dir);
    EXPECT_EQ(ExpectedCalls(), server.Calls());
}

// The lookup runs from a command handler while other messages wait: they,
// and those arriving while the server works, are dispatched before the
// server answers.
TEST_F(CadAutomation, CallerKeepsDispatchingItsMessages)
{
    const UINT kCommand = WM_APP + 1, kWaiting = WM_APP + 2, kFromServer = WM_APP + 3;
    MessageWindow window;
    ASSERT_NE(nullptr, window.Handle());
    HANDLE waitingHandled = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    HANDLE fromServerHandled = CreateEventW(nullptr, TRUE, FALSE, nullptr);

    // The server holds each answer until the message it waits for was
    // handled, for five seconds at most.
    bool waitingBeforeFirstAnswer = false, fromServerBeforeSaved = false;
    FakeCadBehaviour host = Host();
    host.onCall = [&](const CString& call) {
        if (call == L"get Application.ActiveDocument") {
            waitingBeforeFirstAnswer = WaitForSingleObject(waitingHandled, 5000) == WAIT_OBJECT_0;
        } else if (call.Find(L"call Document.SaveAs") == 0) {
            PostMessageW(window.Handle(), kFromServer, 0, 0);
            fromServerBeforeSaved = WaitForSingleObject(fromServerHandled, 5000) == WAIT_OBJECT_0;
        }
    };
    FakeCadServer server(kProgId, host);
    ASSERT_TRUE(server.Registered());

    bool found = false;
    CString dir, exe;
    window.onMessage = [&](UINT message) {
        if (message == kCommand) {
            found = QM::GetCADPath_I(dir, exe);
        } else {
            SetEvent(message == kWaiting ? waitingHandled : fromServerHandled);
        }
    };
    PostMessageW(window.Handle(), kCommand, 0, 0);
    PostMessageW(window.Handle(), kWaiting, 0, 0);
    MSG msg;
    ASSERT_GT(GetMessageW(&msg, nullptr, 0, 0), 0);
    ASSERT_EQ(kCommand, msg.message);
    DispatchMessageW(&msg);

    EXPECT_TRUE(found);
    EXPECT_EQ(m_hostFolder + L"\\", dir);
    EXPECT_TRUE(waitingBeforeFirstAnswer);
    EXPECT_TRUE(fromServerBeforeSaved);
    CloseHandle(waitingHandled);
    CloseHandle(fromServerHandled);
}

// The user closes the main window while the lookup runs: the quit is left
// for the caller's own loop, with its code.
TEST_F(CadAutomation, QuitDuringTheLookupReachesTheCallersLoop)
{
    FakeCadServer server(kProgId, Host());
    ASSERT_TRUE(server.Registered());
    PostQuitMessage(42);
    CString dir, exe;
    EXPECT_TRUE(QM::GetCADPath_I(dir, exe));
    MSG msg;
    ASSERT_TRUE(PeekMessageW(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(42u, msg.wParam);
}

}  // namespace
