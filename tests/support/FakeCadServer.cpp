// FakeCadServer.cpp - the host's application and drawing objects for tests.
#include "support/FakeCadServer.h"

#include <oleauto.h>

#include <mutex>
#include <string>
#include <utility>

namespace qmtest {

struct FakeCadServer::State
{
    FakeCadBehaviour behaviour;
    mutable std::mutex lock;
    std::vector<CString> calls;
};

namespace {

using State = FakeCadServer::State;

// "call" for a method, "get" for a property read, both when the caller
// left it to the object (as late-bound Basic does).
CString KindText(WORD flags)
{
    CString kind;
    if (flags & DISPATCH_METHOD)
        kind = L"call";
    if (flags & DISPATCH_PROPERTYGET)
        kind += kind.IsEmpty() ? L"get" : L"|get";
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF))
        kind += kind.IsEmpty() ? L"put" : L"|put";
    return kind;
}

// An argument as the record shows it: texts quoted, anything else by its
// text conversion after its variant type.
CString ArgumentText(const VARIANT& arg)
{
    VARIANT text;
    VariantInit(&text);
    CString shown;
    if (SUCCEEDED(VariantChangeType(&text, const_cast<VARIANT*>(&arg), 0, VT_BSTR)))
        shown = text.bstrVal != nullptr ? text.bstrVal : L"";
    VariantClear(&text);
    if (V_VT(&arg) == VT_BSTR || V_VT(&arg) == (VT_BSTR | VT_BYREF))
        return L"\"" + shown + L"\"";
    CString typed;
    typed.Format(L"<vt %u>%s", static_cast<unsigned>(V_VT(&arg)), shown.GetString());
    return typed;
}

HRESULT Raise(EXCEPINFO* info, HRESULT code, const wchar_t* description)
{
    if (info != nullptr) {
        ZeroMemory(info, sizeof(*info));
        info->bstrSource = SysAllocString(L"AutoCAD");
        info->bstrDescription = SysAllocString(description);
        info->scode = code;
    }
    return DISP_E_EXCEPTION;
}

// IDispatch over a fixed member list: dispatch id = position + 1.
class DispatchObject : public IDispatch
{
public:
    DispatchObject(std::shared_ptr<State> state, const wchar_t* name, std::vector<const wchar_t*> members)
        : m_state(std::move(state)), m_name(name), m_members(std::move(members))
    {
    }
    virtual ~DispatchObject() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        if (object == nullptr)
            return E_POINTER;
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch)) {
            *object = static_cast<IDispatch*>(this);
            AddRef();
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return InterlockedIncrement(&m_refs); }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const LONG left = InterlockedDecrement(&m_refs);
        if (left == 0)
            delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        if (count == nullptr)
            return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override
    {
        if (info != nullptr)
            *info = nullptr;
        return DISP_E_BADINDEX;
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override
    {
        if (names == nullptr || ids == nullptr || count == 0)
            return E_INVALIDARG;
        for (UINT i = 0; i < count; ++i)
            ids[i] = DISPID_UNKNOWN;
        for (size_t i = 0; i < m_members.size(); ++i) {
            if (lstrcmpiW(names[0], m_members[i]) == 0) {
                ids[0] = static_cast<DISPID>(i + 1);
                // Named arguments are not part of the played object model.
                return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
            }
        }
        Record(L"unknown " + m_name + L"." + names[0]);
        return DISP_E_UNKNOWNNAME;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                     EXCEPINFO* exception, UINT*) override
    {
        if (id < 1 || static_cast<size_t>(id) > m_members.size())
            return DISP_E_MEMBERNOTFOUND;
        const UINT argCount = params != nullptr ? params->cArgs : 0;
        CString call = KindText(flags) + L" " + m_name + L"." + m_members[id - 1];
        if ((flags & DISPATCH_METHOD) || argCount > 0) {
            call += L"(";
            for (UINT i = argCount; i-- > 0;)   // the caller's order is the reverse of rgvarg's
                call += ArgumentText(params->rgvarg[i]) + (i > 0 ? L", " : L"");
            call += L")";
        }
        Record(call);
        if (m_state->behaviour.onCall)
            m_state->behaviour.onCall(call);
        if (result != nullptr)
            VariantInit(result);
        return Answer(m_members[id - 1], flags, argCount, params, result, exception);
    }

protected:
    virtual HRESULT Answer(const CString& member, WORD flags, UINT argCount, DISPPARAMS* params, VARIANT* result,
                           EXCEPINFO* exception) = 0;

    const FakeCadBehaviour& Behaviour() const { return m_state->behaviour; }
    const std::shared_ptr<State>& SharedState() const { return m_state; }

private:
    void Record(const CString& call)
    {
        std::lock_guard<std::mutex> hold(m_state->lock);
        m_state->calls.push_back(call);
    }

    LONG m_refs = 1;
    std::shared_ptr<State> m_state;
    CString m_name;
    std::vector<const wchar_t*> m_members;
};

class Document : public DispatchObject
{
public:
    explicit Document(std::shared_ptr<State> state) : DispatchObject(std::move(state), L"Document", {L"SaveAs"}) {}

protected:
    HRESULT Answer(const CString&, WORD flags, UINT argCount, DISPPARAMS* params, VARIANT*,
                   EXCEPINFO* exception) override
    {
        if (!(flags & DISPATCH_METHOD))
            return DISP_E_MEMBERNOTFOUND;
        // SaveAs(FileName, [FileType], [SecurityParams])
        if (argCount < 1 || argCount > 3)
            return DISP_E_BADPARAMCOUNT;
        VARIANT name;
        VariantInit(&name);
        if (FAILED(VariantChangeType(&name, &params->rgvarg[argCount - 1], 0, VT_BSTR)))
            return DISP_E_TYPEMISMATCH;
        HRESULT answer = S_OK;
        if (Behaviour().saveError != S_OK) {
            answer = Raise(exception, Behaviour().saveError, L"Error saving the document");
        } else {
            // A real save fails where the folder is missing or read-only;
            // so does this one.
            HANDLE file = CreateFileW(name.bstrVal, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                                      nullptr);
            if (file == INVALID_HANDLE_VALUE) {
                answer = Raise(exception, HRESULT_FROM_WIN32(GetLastError()), L"Error saving the document");
            } else {
                static const char drawing[] = "AC1018\0\0\0\0\0";
                DWORD written = 0;
                WriteFile(file, drawing, sizeof(drawing) - 1, &written, nullptr);
                CloseHandle(file);
            }
        }
        VariantClear(&name);
        return answer;
    }
};

class Application : public DispatchObject
{
public:
    explicit Application(std::shared_ptr<State> state)
        : DispatchObject(std::move(state), L"Application", {L"ActiveDocument", L"Path"})
    {
    }

protected:
    HRESULT Answer(const CString& member, WORD flags, UINT argCount, DISPPARAMS*, VARIANT* result,
                   EXCEPINFO*) override
    {
        if (!(flags & DISPATCH_PROPERTYGET))
            return DISP_E_MEMBERNOTFOUND;
        if (argCount != 0)
            return DISP_E_BADPARAMCOUNT;
        if (result == nullptr)
            return S_OK;
        if (member == L"Path") {
            V_VT(result) = VT_BSTR;
            V_BSTR(result) = SysAllocString(Behaviour().folder);
        } else {
            V_VT(result) = VT_DISPATCH;
            V_DISPATCH(result) = new Document(SharedState());
        }
        return S_OK;
    }
};

class Factory : public IClassFactory
{
public:
    explicit Factory(std::shared_ptr<State> state) : m_state(std::move(state)) {}
    virtual ~Factory() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        if (object == nullptr)
            return E_POINTER;
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory)) {
            *object = static_cast<IClassFactory*>(this);
            AddRef();
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
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
        if (object == nullptr)
            return E_POINTER;
        *object = nullptr;
        if (outer != nullptr)
            return CLASS_E_NOAGGREGATION;
        Application* app = new Application(m_state);
        const HRESULT found = app->QueryInterface(iid, object);
        app->Release();
        return found;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    LONG m_refs = 1;
    std::shared_ptr<State> m_state;
};

}  // namespace

FakeCadServer::FakeCadServer(const wchar_t* progId, FakeCadBehaviour behaviour)
    : m_state(std::make_shared<State>())
{
    m_state->behaviour = std::move(behaviour);
    CoCreateGuid(&m_classId);
    wchar_t text[40] = {};
    StringFromGUID2(m_classId, text, ARRAYSIZE(text));
    m_classIdText = text;

    // The running class object is found by its class id alone; only the
    // programmatic identifier needs a key (no CLSID\{...} entry: nothing
    // is ever started from the registry).
    if (progId != nullptr) {
        m_progIdKey = std::make_unique<RegGuard>(HKEY_CLASSES_ROOT, progId);
        SetRegValue(HKEY_CLASSES_ROOT, progId, L"", L"QM test CAD host");
        SetRegValue(HKEY_CLASSES_ROOT, CString(progId) + L"\\CLSID", L"", m_classIdText);
    }

    m_ready = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    m_stop = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    m_thread = std::thread([this] { Serve(); });
    if (WaitForSingleObject(m_ready, 10000) != WAIT_OBJECT_0)
        m_registered = RPC_E_TIMEOUT;
}

FakeCadServer::~FakeCadServer()
{
    SetEvent(m_stop);
    m_thread.join();
    CloseHandle(m_ready);
    CloseHandle(m_stop);
    m_progIdKey.reset();
}

void FakeCadServer::Serve()
{
    HRESULT result = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    const bool initialised = SUCCEEDED(result);
    Factory* factory = nullptr;
    DWORD cookie = 0;
    if (initialised) {
        factory = new Factory(m_state);
        result = CoRegisterClassObject(m_classId, factory, CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &cookie);
    }
    m_registered = result;
    SetEvent(m_ready);
    WaitForSingleObject(m_stop, INFINITE);
    if (SUCCEEDED(result))
        CoRevokeClassObject(cookie);
    if (factory != nullptr)
        factory->Release();
    if (initialised)
        CoUninitialize();
}

std::vector<CString> FakeCadServer::Calls() const
{
    std::lock_guard<std::mutex> hold(m_state->lock);
    return m_state->calls;
}

}  // namespace qmtest
