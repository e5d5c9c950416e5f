// FakeCadServer.cpp - the host's application and drawing objects for tests.
#include "support/FakeCadServer.h"

#include <oleauto.h>

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

// Dispatch id = position + 1; the last member is the drawing's, the others the application's.
const wchar_t* const kMembers[] = {L"ActiveDocument", L"Path", L"SaveAs"};

// "call|get" when the caller leaves the kind to the object (as late-bound
// Basic does); arguments in the caller's order, the reverse of rgvarg's.
CString CallText(const CString& member, WORD flags, const DISPPARAMS& params)
{
    const bool method = flags & DISPATCH_METHOD, get = flags & DISPATCH_PROPERTYGET;
    CString call = (method ? (get ? L"call|get " : L"call ") : get ? L"get " : L"put ") + member;
    for (UINT i = params.cArgs; i-- > 0;) {
        VARIANT text;
        VariantInit(&text);
        const bool quoted = (V_VT(&params.rgvarg[i]) & VT_TYPEMASK) == VT_BSTR;
        const CString shown = SUCCEEDED(VariantChangeType(&text, &params.rgvarg[i], 0, VT_BSTR)) ? text.bstrVal : L"?";
        VariantClear(&text);
        call += (i + 1 == params.cArgs ? L"(" : L", ") + (quoted ? L"\"" + shown + L"\"" : shown);
    }
    return call + (params.cArgs > 0 ? L")" : method ? L"()" : L"");
}

// Application and Document; the class object is an Application too, so
// IUnknown is written once.
class FakeObject : public IDispatch, public IClassFactory
{
public:
    FakeObject(std::shared_ptr<State> state, const wchar_t* name) : m_state(std::move(state)), m_name(name) {}
    virtual ~FakeObject() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch))
            *object = static_cast<IDispatch*>(this);
        else if (IsEqualIID(iid, IID_IClassFactory))
            *object = static_cast<IClassFactory*>(this);
        else
            return *object = nullptr, E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return InterlockedIncrement(&m_refs); }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const LONG left = InterlockedDecrement(&m_refs);
        if (left == 0)
            delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override
    {
        *object = nullptr;
        if (outer != nullptr)
            return CLASS_E_NOAGGREGATION;
        FakeObject* app = new FakeObject(m_state, L"Application");
        const HRESULT found = app->QueryInterface(iid, object);
        app->Release();
        return found;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override
    {
        for (UINT i = 0; i < count; ++i)
            ids[i] = DISPID_UNKNOWN;
        for (DISPID id = 1; id <= 3; ++id) {
            if (Has(id) && lstrcmpiW(names[0], kMembers[id - 1]) == 0) {
                ids[0] = id;
                return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;   // no named arguments
            }
        }
        m_state->Record(L"unknown " + m_name + L"." + names[0]);
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                     EXCEPINFO* exception, UINT*) override
    {
        if (!Has(id))
            return DISP_E_MEMBERNOTFOUND;
        const CString call = CallText(m_name + L"." + kMembers[id - 1], flags, *params);
        m_state->Record(call);
        if (m_state->behaviour.onCall)
            m_state->behaviour.onCall(call);
        if (id == 3)
            return SaveAs(flags, *params, exception);
        if (!(flags & DISPATCH_PROPERTYGET) || params->cArgs != 0 || result == nullptr)
            return DISP_E_MEMBERNOTFOUND;
        if (id == 2) {
            V_VT(result) = VT_BSTR;
            V_BSTR(result) = SysAllocString(m_state->behaviour.folder);
        } else {
            V_VT(result) = VT_DISPATCH;
            V_DISPATCH(result) = new FakeObject(m_state, L"Document");
        }
        return S_OK;
    }

private:
    bool Has(DISPID id) const
    {
        return id >= 1 && id <= 3 && (id == 3) == (m_name == L"Document") && (id != 3 || m_state->behaviour.hasSaveAs);
    }

    // SaveAs(FileName, [FileType], [SecurityParams]): like a real save, it
    // fails where the folder is missing or read-only.
    HRESULT SaveAs(WORD flags, const DISPPARAMS& params, EXCEPINFO* exception)
    {
        if (!(flags & DISPATCH_METHOD) || params.cArgs < 1 || params.cArgs > 3)
            return DISP_E_BADPARAMCOUNT;
        VARIANT name;
        VariantInit(&name);
        if (FAILED(VariantChangeType(&name, &params.rgvarg[params.cArgs - 1], 0, VT_BSTR)))
            return DISP_E_TYPEMISMATCH;
        HRESULT error = m_state->behaviour.saveError;
        if (error == S_OK) {
            HANDLE file = CreateFileW(name.bstrVal, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
            error = file != INVALID_HANDLE_VALUE ? (CloseHandle(file), S_OK) : HRESULT_FROM_WIN32(GetLastError());
        }
        VariantClear(&name);
        if (error != S_OK && exception != nullptr)
            *exception = {0, 0, nullptr, nullptr, nullptr, 0, nullptr, nullptr, error};
        return error == S_OK ? S_OK : DISP_E_EXCEPTION;
    }

    LONG m_refs = 1;
    std::shared_ptr<State> m_state;
    const CString m_name;
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
    FakeObject* factory = new FakeObject(m_state, L"Application");
    m_registered = FAILED(m_initialised) ? m_initialised
                                         : CoRegisterClassObject(m_classId, static_cast<IClassFactory*>(factory),
                                                                 CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &m_cookie);
    factory->Release();   // COM holds it while registered
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
