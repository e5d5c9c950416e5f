// BenchDispatch.h - the bare automation calls the benchmarks measure the
// library against: IDispatch::Invoke with plain VARIANTs, nothing else.
//
//   IDispatch* app = bench::Create(L"Excel.Application");
//   VARIANT books = bench::Call(app, L"Workbooks", DISPATCH_PROPERTYGET, {});
#pragma once
#include "BenchClock.h"

#include <QMUtil.h>

#include <vector>

namespace bench {

inline IDispatch* Create(const wchar_t* progId)
{
    CLSID clsid;
    IDispatch* object = nullptr;
    if (SUCCEEDED(CLSIDFromProgID(progId, &clsid)))
        CoCreateInstance(clsid, nullptr, CLSCTX_SERVER, IID_IDispatch, reinterpret_cast<void**>(&object));
    return object;
}

inline DISPID Id(IDispatch* object, const wchar_t* name)
{
    DISPID id = DISPID_UNKNOWN;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    return id;
}

// `args` in the caller's order; a property put's value last.
inline VARIANT Invoke(IDispatch* object, DISPID id, WORD flags, std::vector<VARIANT> args)
{
    std::vector<VARIANT> reversed(args.rbegin(), args.rend());
    DISPID put = DISPID_PROPERTYPUT;
    const bool isPut = flags == DISPATCH_PROPERTYPUT;
    DISPPARAMS params = {reversed.data(), isPut ? &put : nullptr, static_cast<UINT>(reversed.size()), isPut ? 1u : 0u};
    VARIANT result;
    VariantInit(&result);
    object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, &result, nullptr, nullptr);
    return result;
}

inline VARIANT Call(IDispatch* object, const wchar_t* name, WORD flags, std::vector<VARIANT> args)
{
    return Invoke(object, Id(object, name), flags, std::move(args));
}

inline VARIANT Long(long value)
{
    VARIANT v;
    V_VT(&v) = VT_I4;
    V_I4(&v) = value;
    return v;
}

inline VARIANT Missing()
{
    VARIANT v;
    V_VT(&v) = VT_ERROR;
    V_ERROR(&v) = DISP_E_PARAMNOTFOUND;
    return v;
}

}  // namespace bench
