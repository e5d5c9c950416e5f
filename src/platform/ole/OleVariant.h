// OleVariant.h - VARIANT and SAFEARRAY owners, as MFC programmers know them.
//
//   COleVariant text(L"007");                          // VT_BSTR, freed with the object
//   COleVariant missing(long(DISP_E_PARAMNOTFOUND), VT_ERROR);   // an omitted argument
//   COleSafeArray rows;
//   rows.Attach(result);                               // takes the array out of `result`
//   long fields = 0; rows.GetUBound(1, &fields);
//
// The members live in the library, so applications need not link oleaut32
// themselves. Conversions that fail throw COleDispatchException* with the system's code;
// a text that cannot be allocated throws CMemoryException*.
#pragma once
#include "platform/Exceptions.h"

#include <ole2.h>
#include <oleauto.h>

class QM_API COleVariant : public tagVARIANT
{
public:
    COleVariant();
    COleVariant(const VARIANT& src);
    COleVariant(const COleVariant& src);
    COleVariant(const wchar_t* text);                 // VT_BSTR; null gives VT_EMPTY
    COleVariant(long value, VARTYPE vt = VT_I4);      // VT_I4, VT_ERROR or VT_BOOL
    COleVariant(short value, VARTYPE vt = VT_I2);     // VT_I2 or VT_BOOL
    COleVariant(double value);
    ~COleVariant();

    COleVariant& operator=(const VARIANT& src);
    COleVariant& operator=(const COleVariant& src);
    operator LPVARIANT() { return this; }
    operator const VARIANT*() const { return this; }

    void Clear();
    // Converts `src` (this object when null) to `vt` in place of this value.
    void ChangeType(VARTYPE vt, LPVARIANT src = nullptr);
    // Takes `src`'s value over; `src` is left VT_EMPTY.
    void Attach(VARIANT& src);
};

class QM_API COleSafeArray : public tagVARIANT
{
public:
    COleSafeArray();
    ~COleSafeArray();
    COleSafeArray(const COleSafeArray&) = delete;
    COleSafeArray& operator=(const COleSafeArray&) = delete;

    // Takes `src`'s array over (`src` is left VT_EMPTY); throws
    // COleDispatchException* with DISP_E_TYPEMISMATCH when it holds none.
    void Attach(VARIANT& src);
    void Clear();
    DWORD GetDim() const;
    // Bounds of dimension `dim`, counted from 1 as SafeArrayGetUBound does.
    void GetLBound(DWORD dim, long* bound) const;
    void GetUBound(DWORD dim, long* bound) const;
    // Locks the elements in memory, first index varying fastest.
    void AccessData(void** data);
    void UnaccessData();
};

// Throws COleDispatchException* for a failed `hr`, the system's text for it
// as the description.
QM_API void AfxCheckOleError(HRESULT hr);
