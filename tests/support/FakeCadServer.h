// FakeCadServer.h - the CAD host's automation server played by the test process
// (in the multithreaded apartment): Application.ActiveDocument, Application.Path
// and Document.SaveAs, every call recorded, other names as "unknown <Object>.<name>".
//   qmtest::FakeCadServer server(L"AutoCAD.Application.16.1", host);   // host.folder = L"C:\\CAD"
#pragma once
#include <QMUtil.h>

#include <ole2.h>

#include <functional>
#include <memory>
#include <vector>

#include "support/RegGuard.h"

namespace standin {
class Factory;
}

namespace qmtest {

struct FakeCadBehaviour
{
    CString folder;            // what Application.Path answers
    HRESULT saveError = S_OK;  // raised by SaveAs instead of saving (a read-only drawing, a full disk)
    bool hasSaveAs = true;     // false: the drawing knows no SaveAs at all
    // Runs on a server thread before each answer: a test may hold the caller up.
    std::function<void(const CString& call)> onCall;
};

class FakeCadServer
{
public:
    // A fresh class id, mapped from HKEY_CLASSES_ROOT\<progId>\CLSID unless `progId` is null.
    FakeCadServer(const wchar_t* progId, FakeCadBehaviour behaviour);
    ~FakeCadServer();
    FakeCadServer(const FakeCadServer&) = delete;
    FakeCadServer& operator=(const FakeCadServer&) = delete;

    bool Registered() const { return SUCCEEDED(m_registered); }
    const CString& ClassIdText() const { return m_classIdText; }   // "{xxxxxxxx-...}"
    // Every call so far: "get Application.Path", "call Document.SaveAs(\"C:\\t\\a.dwg\")", ...
    std::vector<CString> Calls() const;

    struct State;

private:
    std::shared_ptr<State> m_state;
    CLSID m_classId = {};
    CString m_classIdText;
    HRESULT m_initialised = E_FAIL, m_registered = E_FAIL;
    DWORD m_cookie = 0;
    std::unique_ptr<standin::Factory> m_factory;
    std::unique_ptr<RegGuard> m_progIdKey;
};

}  // namespace qmtest
