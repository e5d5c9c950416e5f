// FakeCadServer.h - the CAD host's automation server, played by the test
// process: an application object that code under test reaches through the
// host's programmatic identifier, registered in the test prefix only.
//
//   qmtest::FakeCadBehaviour host;
//   host.folder = L"C:\\Program Files\\AutoCAD 2005";
//   qmtest::FakeCadServer server(L"AutoCAD.Application.16.1", host);
//   ... the code under test creates the object on a thread of its own ...
//   EXPECT_EQ(expected, server.Calls());   // "get Application.Path", ...
//
// The part of the host's object model played:
//   Application.ActiveDocument   property: the open drawing
//   Application.Path             property: the host's folder
//   Document.SaveAs(fileName)    method: writes a small drawing file there
// Any other name is refused with DISP_E_UNKNOWNNAME and recorded as
// "unknown <Object>.<name>", so a test sees everything the caller asked.
//
// The class object is registered as a local server from a thread of its
// own in the multithreaded apartment, so callers in any other apartment of
// the process reach it through COM's local-server channel and get standard
// proxies; IDispatch's proxy comes with oleaut32, no type library needed.
#pragma once
#include <QMUtil.h>

#include <ole2.h>

#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "support/RegGuard.h"

namespace qmtest {

struct FakeCadBehaviour
{
    // What Application.Path answers.
    CString folder;
    // When not S_OK, SaveAs raises an automation error with this code
    // instead of saving (a read-only drawing, a full disk).
    HRESULT saveError = S_OK;
    // Runs on the server's thread with the call's record before the server
    // answers it; lets a test hold the caller up or act in the middle.
    std::function<void(const CString& call)> onCall;
};

class FakeCadServer
{
public:
    // Registers the class object under a fresh class id; `progId` (null for
    // none) is mapped to it under HKEY_CLASSES_ROOT\<progId>\CLSID.
    FakeCadServer(const wchar_t* progId, FakeCadBehaviour behaviour);
    // Revokes the class object and removes every key it created.
    ~FakeCadServer();
    FakeCadServer(const FakeCadServer&) = delete;
    FakeCadServer& operator=(const FakeCadServer&) = delete;

    // False when the class object could not be registered.
    bool Registered() const { return SUCCEEDED(m_registered); }
    // "{xxxxxxxx-xxxx-...}"
    const CString& ClassIdText() const { return m_classIdText; }
    // Every call so far, in order, as "get Application.Path",
    // "call Document.SaveAs(\"C:\\t\\a.dwg\")" or "unknown Application.Foo".
    std::vector<CString> Calls() const;

    struct State;

private:
    void Serve();

    std::shared_ptr<State> m_state;
    CLSID m_classId = {};
    CString m_classIdText;
    HRESULT m_registered = E_PENDING;
    HANDLE m_ready = nullptr;
    HANDLE m_stop = nullptr;
    std::thread m_thread;
    std::unique_ptr<RegGuard> m_progIdKey;
};

}  // namespace qmtest
