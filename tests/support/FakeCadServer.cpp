// FakeCadServer.cpp - the host's application and drawing objects on the stand-in dispatch plumbing.
#include "support/FakeCadServer.h"

#include "support/servers/StandIn.h"

#include <mutex>
#include <utility>

namespace qmtest {

struct FakeCadServer::State
{
    FakeCadBehaviour behaviour;
    std::mutex lock;
    std::vector<CString> calls;

    void Record(const CString& call)
    {
        std::lock_guard<std::mutex> hold(lock);
        calls.push_back(call);
    }
};

namespace {

using State = FakeCadServer::State;
using standin::Args;

// Application (ActiveDocument, Path) and Document (SaveAs unless the host lacks it).
class CadObject : public standin::Object
{
public:
    CadObject(std::shared_ptr<State> state, bool document)
        : Object(document ? L"Document" : L"Application",
                 document ? (state->behaviour.hasSaveAs ? std::vector<const wchar_t*>{L"SaveAs"}
                                                        : std::vector<const wchar_t*>{})
                          : std::vector<const wchar_t*>{L"ActiveDocument", L"Path"}),
          m_state(std::move(state)), m_document(document) {}

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID lcid, DISPID* ids) override
    {
        const HRESULT hr = Object::GetIDsOfNames(iid, names, count, lcid, ids);
        if (ids[0] == DISPID_UNKNOWN)
            m_state->Record(CString(L"unknown ") + m_class.c_str() + L"." + names[0]);
        return hr;
    }

    HRESULT Call(int member, WORD flags, Args& a, VARIANT* result) override
    {
        const CString call = CallText(member, flags, a).c_str();
        m_state->Record(call);
        if (m_state->behaviour.onCall)
            m_state->behaviour.onCall(call);
        if (m_document)
            return SaveAs(flags, a);
        if (!(flags & DISPATCH_PROPERTYGET) || a.Count() != 0)
            return DISP_E_MEMBERNOTFOUND;
        return member == 1 ? standin::Return(result, m_state->behaviour.folder.GetString())
                           : standin::Return(result, new CadObject(m_state, true));
    }

private:
    // SaveAs(FileName, [FileType], [SecurityParams]): like a real save, it
    // fails where the folder is missing or read-only.
    HRESULT SaveAs(WORD flags, Args& a)
    {
        if (!(flags & DISPATCH_METHOD) || a.Count() < 1 || a.Count() > 3)
            return DISP_E_BADPARAMCOUNT;
        HRESULT error = m_state->behaviour.saveError;
        if (error == S_OK) {
            HANDLE file = CreateFileW(a.Text(0).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
            error = file != INVALID_HANDLE_VALUE ? (CloseHandle(file), S_OK) : HRESULT_FROM_WIN32(GetLastError());
        }
        return error == S_OK ? S_OK : standin::Raise(a, error, L"The drawing could not be saved.");
    }

    std::shared_ptr<State> m_state;
    const bool m_document;
};

}  // namespace

FakeCadServer::FakeCadServer(const wchar_t* progId, FakeCadBehaviour behaviour) : m_state(std::make_shared<State>())
{
    m_state->behaviour = std::move(behaviour);
    CoCreateGuid(&m_classId);
    wchar_t text[40] = {};
    StringFromGUID2(m_classId, text, ARRAYSIZE(text));
    m_classIdText = text;
    // A running class object is found by its class id alone: nothing is
    // started from the registry.
    if (progId != nullptr) {
        m_progIdKey = std::make_unique<RegGuard>(HKEY_CLASSES_ROOT, progId);
        SetRegValue(HKEY_CLASSES_ROOT, CString(progId) + L"\\CLSID", L"", m_classIdText);
    }
    // In the multithreaded apartment COM's threads answer the calls: the
    // test thread need not pump for the server.
    m_initialised = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    const std::shared_ptr<State> state = m_state;
    m_factory = std::make_unique<standin::Factory>([state] { return new CadObject(state, false); });
    m_registered = FAILED(m_initialised) ? m_initialised
                                         : CoRegisterClassObject(m_classId, m_factory.get(), CLSCTX_LOCAL_SERVER,
                                                                 REGCLS_MULTIPLEUSE, &m_cookie);
}

FakeCadServer::~FakeCadServer()
{
    if (Registered())
        CoRevokeClassObject(m_cookie);
    if (SUCCEEDED(m_initialised))
        CoUninitialize();
}

std::vector<CString> FakeCadServer::Calls() const
{
    std::lock_guard<std::mutex> hold(m_state->lock);
    return m_state->calls;
}

}  // namespace qmtest
