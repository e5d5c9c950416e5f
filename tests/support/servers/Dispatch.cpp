// Dispatch.cpp - the dispatch plumbing every stand-in server shares, the
// test process's fake CAD host included.
#include "StandIn.h"

namespace standin {
namespace {

// Asked of an IDispatch to find out whether it is one of ours.
const IID IID_StandInObject = {0x7d9155a8, 0x922d, 0x4277, {0x98, 0x84, 0x07, 0xf8, 0x2b, 0x0f, 0xd1, 0x2c}};

// A value as VariantChangeType gives it as text, quoted when it is text.
std::wstring Show(VARIANT* value)
{
    const Args one{{value}};
    return !one.Given(0) ? L"<missing>" : V_VT(value) == VT_BSTR ? L"\"" + one.Text(0) + L"\"" : one.Text(0);
}

}  // namespace

bool Args::Given(size_t i) const
{
    return i < v.size() && !(V_VT(v[i]) == VT_ERROR && V_ERROR(v[i]) == DISP_E_PARAMNOTFOUND);
}

std::wstring Args::Text(size_t i) const
{
    VARIANT text;
    VariantInit(&text);
    std::wstring result;
    if (Given(i) && SUCCEEDED(VariantChangeType(&text, v[i], 0, VT_BSTR)))
        result.assign(V_BSTR(&text), SysStringLen(V_BSTR(&text)));
    VariantClear(&text);
    return result;
}

long Args::Long(size_t i, long missing) const
{
    VARIANT number;
    VariantInit(&number);
    return Given(i) && SUCCEEDED(VariantChangeType(&number, v[i], 0, VT_I4)) ? V_I4(&number) : missing;
}

HRESULT Raise(Args& a, HRESULT scode, const std::wstring& description)
{
    if (a.exception != nullptr)
        *a.exception = EXCEPINFO{0, 0, SysAllocString(L"StandIn"), SysAllocString(description.c_str()), nullptr, 0,
                                 nullptr, nullptr, scode};
    return DISP_E_EXCEPTION;
}

HRESULT Return(VARIANT* result, IDispatch* object)
{
    if (result == nullptr)
        return object->Release(), S_OK;
    V_VT(result) = VT_DISPATCH;
    V_DISPATCH(result) = object;
    return S_OK;
}

HRESULT Return(VARIANT* result, long value, VARTYPE vt)
{
    if (result != nullptr) {
        V_VT(result) = VT_I4;
        V_I4(result) = value;
        VariantChangeType(result, result, 0, vt);
    }
    return S_OK;
}

HRESULT Return(VARIANT* result, const std::wstring& text)
{
    if (result != nullptr) {
        V_VT(result) = VT_BSTR;
        V_BSTR(result) = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    return S_OK;
}

HRESULT Object::QueryInterface(REFIID iid, void** object)
{
    const bool ours = IsEqualIID(iid, IID_StandInObject);
    if (!ours && !IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IDispatch))
        return *object = nullptr, E_NOINTERFACE;
    *object = ours ? static_cast<void*>(this) : static_cast<IDispatch*>(this);
    return AddRef(), S_OK;
}

Object* Object::From(IDispatch* dispatch)
{
    void* object = nullptr;
    if (dispatch == nullptr || FAILED(dispatch->QueryInterface(IID_StandInObject, &object)))
        return nullptr;
    static_cast<Object*>(object)->Release();   // the caller holds its own reference
    return static_cast<Object*>(object);
}

HRESULT Object::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids)
{
    for (UINT i = 0; i < count; ++i)
        ids[i] = DISPID_UNKNOWN;
    for (size_t m = 0; m < m_members.size(); ++m)
        if (lstrcmpiW(names[0], m_members[m]) == 0)
            return ids[0] = static_cast<DISPID>(m + 1), count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
    return DISP_E_UNKNOWNNAME;
}

HRESULT Object::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception,
                       UINT*)
{
    if (id < 1 || static_cast<size_t>(id) > m_members.size())
        return DISP_E_MEMBERNOTFOUND;
    Args a{{}, exception};
    for (UINT i = params->cArgs; i-- > 0;) {
        VARIANT* arg = &params->rgvarg[i];
        a.v.push_back(V_VT(arg) == (VT_BYREF | VT_VARIANT) ? V_VARIANTREF(arg) : arg);
    }
    if (result != nullptr)
        VariantInit(result);
    return Call(id - 1, flags, a, result);
}

std::wstring Object::CallText(int member, WORD flags, const Args& a) const
{
    const bool put = flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
    const size_t indexes = put ? a.Count() - 1 : a.Count();
    std::wstring text = (put ? L"put " : flags & DISPATCH_METHOD ? L"call " : L"get ") + m_class + L"." + m_members[member];
    for (size_t i = 0; i < indexes; ++i)
        text += (i == 0 ? L"(" : L", ") + Show(a.v[i]);
    text += indexes > 0 ? L")" : flags & DISPATCH_METHOD ? L"()" : L"";
    return put ? text + L" = " + Show(a.v.back()) : text;
}

}  // namespace standin
