// Throw.h - the functions that raise the platform's exceptions.
//
//   if (index < 0 || index >= GetSize()) AfxThrowInvalidArgException();
//
// Each throws a new exception object by pointer (see Exceptions.h); the
// catcher releases it with Delete().
#pragma once
#include "QMExport.h"

QM_API [[noreturn]] void AfxThrowInvalidArgException();
QM_API [[noreturn]] void AfxThrowMemoryException();
QM_API [[noreturn]] void AfxThrowResourceException();
QM_API [[noreturn]] void AfxThrowFileException(int cause, LONG osError = -1, const wchar_t* fileName = nullptr);
QM_API [[noreturn]] void AfxThrowOleDispatchException(WORD code, const wchar_t* description, HRESULT error = 0);
