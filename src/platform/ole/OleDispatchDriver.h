// OleDispatchDriver.h - late-bound automation: an owned IDispatch, members
// looked up by name, calls in MFC's InvokeHelper shape.
//
//   AfxOleInitThread();
//   COleDispatchDriver app;
//   if (app.CreateDispatch(L"Excel.Application")) {
//       app.SetProperty(app.GetIDOfName(L"Visible"), VT_BOOL, TRUE);
//       LPDISPATCH books = nullptr;
//       app.GetProperty(app.GetIDOfName(L"Workbooks"), VT_DISPATCH, &books);
//       COleDispatchDriver workbooks(books);       // released with the driver
//       static const BYTE parms[] = VTS_VARIANT;  // Workbooks.Add(template left out)
//       COleVariant missing(long(DISP_E_PARAMNOTFOUND), VT_ERROR);
//       LPDISPATCH book = nullptr;
//       workbooks.InvokeHelper(workbooks.GetIDOfName(L"Add"), DISPATCH_METHOD, VT_DISPATCH, &book, parms, &missing);
//   }
//   AfxOleTermThread();
//
// A failed call throws COleDispatchException*: the server's description and
// codes for DISP_E_EXCEPTION, the system's text and the HRESULT otherwise.
#pragma once
#include "platform/ole/OleVariant.h"

#include <cstdarg>

// Parameter type strings: one byte per argument, concatenated.
#define VTS_NONE ""
#define VTS_I2 "\x02"
#define VTS_I4 "\x03"
#define VTS_R8 "\x05"
#define VTS_BSTR "\x08"      // const wchar_t*
#define VTS_DISPATCH "\x09"
#define VTS_BOOL "\x0B"
#define VTS_VARIANT "\x0C"   // const VARIANT*

class QM_API COleDispatchDriver
{
public:
    COleDispatchDriver() = default;
    explicit COleDispatchDriver(LPDISPATCH dispatch, BOOL autoRelease = TRUE);
    ~COleDispatchDriver() { ReleaseDispatch(); }
    COleDispatchDriver(const COleDispatchDriver&) = delete;
    COleDispatchDriver& operator=(const COleDispatchDriver&) = delete;

    // Creates the object named by a programmatic identifier or a "{CLSID}"
    // text and keeps its IDispatch; FALSE when it cannot be created.
    BOOL CreateDispatch(const wchar_t* progId);
    void AttachDispatch(LPDISPATCH dispatch, BOOL autoRelease = TRUE);
    LPDISPATCH DetachDispatch();
    void ReleaseDispatch();

    // The member's dispatch id; throws when the object has no such name.
    DISPID GetIDOfName(const wchar_t* name) const;

    // Calls member `id`; arguments follow `paramInfo` (VTS_ codes) in the
    // caller's order. `ret` receives a value of type `vtRet`: short*, long*,
    // double*, BOOL*, CString*, LPDISPATCH* (the caller owns the reference)
    // or VARIANT*; VT_EMPTY when no result is wanted.
    void InvokeHelper(DISPID id, WORD flags, VARTYPE vtRet, void* ret, const BYTE* paramInfo, ...) const;
    void InvokeHelperV(DISPID id, WORD flags, VARTYPE vtRet, void* ret, const BYTE* paramInfo, va_list args) const;
    void GetProperty(DISPID id, VARTYPE vtProp, void* value) const;
    // The value follows as one argument of type `vtProp`.
    void SetProperty(DISPID id, VARTYPE vtProp, ...) const;

    LPDISPATCH m_lpDispatch = nullptr;
    BOOL m_bAutoRelease = TRUE;
};

// Starts the component library (apartment-threaded) for the calling thread;
// CoInitialize's result. Each start that succeeded (S_OK or S_FALSE) is
// ended by one AfxOleTermThread on the same thread.
QM_API HRESULT AfxOleInitThread();
// Ends one start this thread made with AfxOleInitThread; nothing when it
// made none, so a thread that was already in another apartment is left so.
QM_API void AfxOleTermThread();
