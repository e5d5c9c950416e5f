// Exceptions.h - MFC-style exception objects, thrown by pointer.
//
//   try { names.GetAt(99); }
//   catch (CException* e) { e->Delete(); }
//
// Platform containers throw these for index faults; the library never
// throws them for ordinary failure.
#pragma once
#include "platform/CString.h"
#include "platform/Throw.h"

class QM_API CException
{
public:
    CException() = default;
    CException(const CException&) = delete;
    CException& operator=(const CException&) = delete;
    virtual ~CException();

    // Frees an exception caught by pointer, as MFC's Delete() does.
    void Delete();
    // Copies a short description into `buffer` (at most `maxChars` with NUL).
    virtual BOOL GetErrorMessage(LPWSTR buffer, UINT maxChars, PUINT helpContext = nullptr) const;

protected:
    static BOOL CopyMessage(const wchar_t* text, LPWSTR buffer, UINT maxChars);
};

// An argument outside its valid range (array index, string position).
class QM_API CInvalidArgException : public CException
{
public:
    BOOL GetErrorMessage(LPWSTR buffer, UINT maxChars, PUINT helpContext = nullptr) const override;
};

// An allocation failed.
class QM_API CMemoryException : public CException
{
public:
    BOOL GetErrorMessage(LPWSTR buffer, UINT maxChars, PUINT helpContext = nullptr) const override;
};

// A resource (string, bitmap, GDI object) could not be loaded or created.
class QM_API CResourceException : public CException
{
public:
    BOOL GetErrorMessage(LPWSTR buffer, UINT maxChars, PUINT helpContext = nullptr) const override;
};

// A file operation failed; `m_lOsError` holds GetLastError()'s value.
class QM_API CFileException : public CException
{
public:
    enum { none, genericException, fileNotFound, badPath, tooManyOpenFiles,
           accessDenied, invalidFile, removeCurrentDir, directoryFull,
           badSeek, hardIO, sharingViolation, lockViolation, diskFull, endOfFile };

    explicit CFileException(int cause = none, LONG osError = -1, const wchar_t* fileName = nullptr);
    BOOL GetErrorMessage(LPWSTR buffer, UINT maxChars, PUINT helpContext = nullptr) const override;
    // Maps a GetLastError() value onto one of the causes above.
    static int OsErrorToException(LONG osError);

    int m_cause;
    LONG m_lOsError;
    CString m_strFileName;
};

// An automation call failed; carries the server's description and code.
class QM_API COleDispatchException : public CException
{
public:
    COleDispatchException(const wchar_t* description, UINT helpId, WORD code);
    BOOL GetErrorMessage(LPWSTR buffer, UINT maxChars, PUINT helpContext = nullptr) const override;

    WORD m_wCode;
    HRESULT m_scError = 0;
    DWORD m_dwHelpContext;
    CString m_strDescription;
};
