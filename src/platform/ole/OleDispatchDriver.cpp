// OleDispatchDriver.cpp - the dispatch driver and the per-thread start of
// the component library.
#include "platform/ole/OleDispatchDriver.h"

#include <cstring>
#include <vector>

namespace {

int& ThreadStarts()
{
    thread_local int starts = 0;
    return starts;
}

// The arguments of one call, last first as IDispatch::Invoke wants them.
// Texts are allocated here and freed with the list; VARIANTs are the
// caller's and only borrowed.
class ArgList
{
public:
    ArgList(const BYTE* paramInfo, va_list args);
    ~ArgList() { Clear(); }
    ArgList(const ArgList&) = delete;
    ArgList& operator=(const ArgList&) = delete;
    VARIANTARG* Data() { return m_args.empty() ? nullptr : m_args.data(); }
    UINT Count() const { return static_cast<UINT>(m_args.size()); }

private:
    void Read(const BYTE* paramInfo, va_list args);
    void Clear()
    {
        for (size_t i = 0; i < m_args.size(); ++i)
            if (m_owned[i])
                VariantClear(&m_args[i]);
    }

    std::vector<VARIANTARG> m_args;
    std::vector<bool> m_owned;
};

ArgList::ArgList(const BYTE* paramInfo, va_list args)
{
    const size_t count = paramInfo != nullptr ? strlen(reinterpret_cast<const char*>(paramInfo)) : 0;
    m_args.resize(count);   // all VT_EMPTY
    m_owned.assign(count, true);
    try {
        Read(paramInfo, args);
    } catch (...) {
        Clear();
        throw;
    }
}

void ArgList::Read(const BYTE* paramInfo, va_list args)
{
    const size_t count = m_args.size();
    for (size_t i = 0; i < count; ++i) {
        VARIANTARG& arg = m_args[count - 1 - i];
        VariantInit(&arg);
        switch (paramInfo[i]) {
        case VT_I2: V_VT(&arg) = VT_I2, V_I2(&arg) = static_cast<short>(va_arg(args, int)); break;
        case VT_I4: V_VT(&arg) = VT_I4, V_I4(&arg) = va_arg(args, long); break;
        case VT_R8: V_VT(&arg) = VT_R8, V_R8(&arg) = va_arg(args, double); break;
        case VT_BOOL: V_VT(&arg) = VT_BOOL, V_BOOL(&arg) = va_arg(args, BOOL) ? VARIANT_TRUE : VARIANT_FALSE; break;
        case VT_DISPATCH: V_VT(&arg) = VT_DISPATCH, V_DISPATCH(&arg) = va_arg(args, LPDISPATCH), m_owned[count - 1 - i] = false; break;
        case VT_VARIANT: arg = *va_arg(args, const VARIANT*), m_owned[count - 1 - i] = false; break;
        case VT_BSTR: {
            const wchar_t* text = va_arg(args, const wchar_t*);
            V_VT(&arg) = VT_BSTR;
            V_BSTR(&arg) = SysAllocString(text);
            if (text != nullptr && V_BSTR(&arg) == nullptr)
                AfxThrowMemoryException();
            break;
        }
        default: AfxThrowInvalidArgException();
        }
    }
}

[[noreturn]] void ThrowFromException(EXCEPINFO& info)
{
    if (info.pfnDeferredFillIn != nullptr)
        info.pfnDeferredFillIn(&info);
    const CString description = info.bstrDescription;
    SysFreeString(info.bstrDescription);
    SysFreeString(info.bstrSource);
    SysFreeString(info.bstrHelpFile);
    auto* e = new COleDispatchException(description, info.dwHelpContext, info.wCode);
    e->m_scError = info.scode;
    throw e;
}

// Hands the call's result to the caller in the type asked for.
void StoreResult(VARIANT& result, VARTYPE vtRet, void* ret)
{
    if (vtRet == VT_VARIANT) {
        *static_cast<VARIANT*>(ret) = result;
        return;
    }
    COleVariant value;
    value.Attach(result);
    if (value.vt != vtRet)
        value.ChangeType(vtRet);
    switch (vtRet) {
    case VT_I2: *static_cast<short*>(ret) = value.iVal; break;
    case VT_I4: *static_cast<long*>(ret) = value.lVal; break;
    case VT_R8: *static_cast<double*>(ret) = value.dblVal; break;
    case VT_BOOL: *static_cast<BOOL*>(ret) = value.boolVal != VARIANT_FALSE; break;
    case VT_BSTR: *static_cast<CString*>(ret) = value.bstrVal; break;
    case VT_DISPATCH: *static_cast<LPDISPATCH*>(ret) = value.pdispVal, value.vt = VT_EMPTY; break;
    default: AfxThrowInvalidArgException();
    }
}

}  // namespace

HRESULT AfxOleInitThread()
{
    const HRESULT hr = CoInitialize(nullptr);
    if (SUCCEEDED(hr))
        ++ThreadStarts();
    return hr;
}

void AfxOleTermThread()
{
    if (ThreadStarts() == 0)
        return;
    --ThreadStarts();
    CoUninitialize();
}

COleDispatchDriver::COleDispatchDriver(LPDISPATCH dispatch, BOOL autoRelease)
    : m_lpDispatch(dispatch), m_bAutoRelease(autoRelease)
{
}

BOOL COleDispatchDriver::CreateDispatch(const wchar_t* progId)
{
    CLSID clsid;
    if (progId == nullptr ||
        FAILED(progId[0] == L'{' ? CLSIDFromString(progId, &clsid) : CLSIDFromProgID(progId, &clsid)))
        return FALSE;
    IUnknown* unknown = nullptr;
    if (FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_SERVER, IID_IUnknown, reinterpret_cast<void**>(&unknown))))
        return FALSE;
    LPDISPATCH dispatch = nullptr;
    // A local server may hand out its object before it has finished starting.
    const bool ok = SUCCEEDED(OleRun(unknown)) &&
                    SUCCEEDED(unknown->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch)));
    unknown->Release();
    if (!ok)
        return FALSE;
    AttachDispatch(dispatch, TRUE);
    return TRUE;
}

void COleDispatchDriver::AttachDispatch(LPDISPATCH dispatch, BOOL autoRelease)
{
    ReleaseDispatch();
    m_lpDispatch = dispatch;
    m_bAutoRelease = autoRelease;
}

LPDISPATCH COleDispatchDriver::DetachDispatch()
{
    LPDISPATCH dispatch = m_lpDispatch;
    m_lpDispatch = nullptr;
    return dispatch;
}

void COleDispatchDriver::ReleaseDispatch()
{
    if (m_lpDispatch != nullptr && m_bAutoRelease)
        m_lpDispatch->Release();
    m_lpDispatch = nullptr;
}

DISPID COleDispatchDriver::GetIDOfName(const wchar_t* name) const
{
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    AfxCheckOleError(m_lpDispatch == nullptr ? E_POINTER
                                             : m_lpDispatch->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id));
    return id;
}

void COleDispatchDriver::InvokeHelperV(DISPID id, WORD flags, VARTYPE vtRet, void* ret, const BYTE* paramInfo,
                                       va_list args) const
{
    if (m_lpDispatch == nullptr)
        AfxCheckOleError(E_POINTER);
    ArgList list(paramInfo, args);
    DISPID putId = DISPID_PROPERTYPUT;
    const bool put = flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
    DISPPARAMS params = {list.Data(), put ? &putId : nullptr, list.Count(), put ? 1u : 0u};
    VARIANT result;
    VariantInit(&result);
    EXCEPINFO info = {};
    UINT badArg = 0;
    const HRESULT hr = m_lpDispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params,
                                            vtRet == VT_EMPTY ? nullptr : &result, &info, &badArg);
    if (hr == DISP_E_EXCEPTION)
        ThrowFromException(info);
    AfxCheckOleError(hr);
    if (vtRet != VT_EMPTY)
        StoreResult(result, vtRet, ret);
}

void COleDispatchDriver::InvokeHelper(DISPID id, WORD flags, VARTYPE vtRet, void* ret, const BYTE* paramInfo, ...) const
{
    va_list args;
    va_start(args, paramInfo);
    try {
        InvokeHelperV(id, flags, vtRet, ret, paramInfo, args);
    } catch (...) {
        va_end(args);
        throw;
    }
    va_end(args);
}

void COleDispatchDriver::GetProperty(DISPID id, VARTYPE vtProp, void* value) const
{
    InvokeHelper(id, DISPATCH_PROPERTYGET, vtProp, value, nullptr);
}

void COleDispatchDriver::SetProperty(DISPID id, VARTYPE vtProp, ...) const
{
    const BYTE paramInfo[2] = {static_cast<BYTE>(vtProp), 0};
    va_list args;
    va_start(args, vtProp);
    try {
        InvokeHelperV(id, vtProp == VT_DISPATCH ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT, VT_EMPTY, nullptr,
                      paramInfo, args);
    } catch (...) {
        va_end(args);
        throw;
    }
    va_end(args);
}
