// OleVariant.cpp - the VARIANT and SAFEARRAY owners.
#include "platform/ole/OleVariant.h"

void AfxCheckOleError(HRESULT hr)
{
    if (SUCCEEDED(hr))
        return;
    wchar_t* text = nullptr;
    FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                   nullptr, static_cast<DWORD>(hr), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    CString description = text;
    LocalFree(text);
    if (description.IsEmpty())
        description.Format(L"OLE error 0x%08lX", static_cast<unsigned long>(hr));
    AfxThrowOleDispatchException(0, description.TrimRight(), hr);
}

COleVariant::COleVariant()
{
    VariantInit(this);
}

COleVariant::~COleVariant()
{
    VariantClear(this);
}

void COleVariant::Clear()
{
    VariantClear(this);
}

COleVariant::COleVariant(const VARIANT& src)
{
    VariantInit(this);
    AfxCheckOleError(VariantCopy(this, const_cast<VARIANT*>(&src)));
}

COleVariant::COleVariant(const COleVariant& src) : COleVariant(static_cast<const VARIANT&>(src))
{
}

COleVariant::COleVariant(const wchar_t* text)
{
    VariantInit(this);
    if (text == nullptr)
        return;
    bstrVal = SysAllocString(text);
    if (bstrVal == nullptr)
        AfxThrowMemoryException();
    vt = VT_BSTR;
}

COleVariant::COleVariant(long value, VARTYPE type)
{
    VariantInit(this);
    vt = type;
    if (type == VT_BOOL)
        boolVal = value != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    else if (type == VT_ERROR)
        scode = value;
    else
        vt = VT_I4, lVal = value;
}

COleVariant::COleVariant(short value, VARTYPE type)
{
    VariantInit(this);
    vt = type == VT_BOOL ? VT_BOOL : VT_I2;
    if (type == VT_BOOL)
        boolVal = value != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    else
        iVal = value;
}

COleVariant::COleVariant(double value)
{
    VariantInit(this);
    vt = VT_R8;
    dblVal = value;
}

COleVariant& COleVariant::operator=(const VARIANT& src)
{
    if (&src != this)
        AfxCheckOleError(VariantCopy(this, const_cast<VARIANT*>(&src)));
    return *this;
}

COleVariant& COleVariant::operator=(const COleVariant& src)
{
    return *this = static_cast<const VARIANT&>(src);
}

void COleVariant::ChangeType(VARTYPE type, LPVARIANT src)
{
    AfxCheckOleError(VariantChangeType(this, src != nullptr ? src : this, 0, type));
}

void COleVariant::Attach(VARIANT& src)
{
    VariantClear(this);
    *static_cast<VARIANT*>(this) = src;
    V_VT(&src) = VT_EMPTY;
}

COleSafeArray::COleSafeArray()
{
    VariantInit(this);
}

COleSafeArray::~COleSafeArray()
{
    VariantClear(this);
}

void COleSafeArray::Clear()
{
    VariantClear(this);
}

void COleSafeArray::Attach(VARIANT& src)
{
    if (!(V_VT(&src) & VT_ARRAY) || (V_VT(&src) & VT_BYREF) || V_ARRAY(&src) == nullptr)
        AfxCheckOleError(DISP_E_TYPEMISMATCH);
    VariantClear(this);
    *static_cast<VARIANT*>(this) = src;
    V_VT(&src) = VT_EMPTY;
}

DWORD COleSafeArray::GetDim() const
{
    return vt & VT_ARRAY ? SafeArrayGetDim(parray) : 0;
}

void COleSafeArray::GetLBound(DWORD dim, long* bound) const
{
    AfxCheckOleError(vt & VT_ARRAY ? SafeArrayGetLBound(parray, dim, bound) : E_UNEXPECTED);
}

void COleSafeArray::GetUBound(DWORD dim, long* bound) const
{
    AfxCheckOleError(vt & VT_ARRAY ? SafeArrayGetUBound(parray, dim, bound) : E_UNEXPECTED);
}

void COleSafeArray::AccessData(void** data)
{
    AfxCheckOleError(vt & VT_ARRAY ? SafeArrayAccessData(parray, data) : E_UNEXPECTED);
}

void COleSafeArray::UnaccessData()
{
    AfxCheckOleError(vt & VT_ARRAY ? SafeArrayUnaccessData(parray) : E_UNEXPECTED);
}
