// Exceptions.cpp - exception objects and the functions that throw them.
#include "platform/Exceptions.h"

#include <cwchar>

CException::~CException() = default;

void CException::Delete()
{
    delete this;
}

BOOL CException::CopyMessage(const wchar_t* text, LPWSTR buffer, UINT maxChars)
{
    if (buffer == nullptr || maxChars == 0)
        return FALSE;
    lstrcpynW(buffer, text, static_cast<int>(maxChars));
    return TRUE;
}

BOOL CException::GetErrorMessage(LPWSTR buffer, UINT maxChars, PUINT helpContext) const
{
    if (helpContext != nullptr)
        *helpContext = 0;
    if (buffer != nullptr && maxChars > 0)
        *buffer = L'\0';
    return FALSE;
}

BOOL CInvalidArgException::GetErrorMessage(LPWSTR buffer, UINT maxChars, PUINT helpContext) const
{
    if (helpContext != nullptr)
        *helpContext = 0;
    return CopyMessage(L"Invalid argument.", buffer, maxChars);
}

BOOL CMemoryException::GetErrorMessage(LPWSTR buffer, UINT maxChars, PUINT helpContext) const
{
    if (helpContext != nullptr)
        *helpContext = 0;
    return CopyMessage(L"Out of memory.", buffer, maxChars);
}

BOOL CResourceException::GetErrorMessage(LPWSTR buffer, UINT maxChars, PUINT helpContext) const
{
    if (helpContext != nullptr)
        *helpContext = 0;
    return CopyMessage(L"A required resource was unavailable.", buffer, maxChars);
}

CFileException::CFileException(int cause, LONG osError, const wchar_t* fileName)
    : m_cause(cause), m_lOsError(osError), m_strFileName(fileName)
{
}

int CFileException::OsErrorToException(LONG osError)
{
    switch (osError) {
    case NO_ERROR: return none;
    case ERROR_FILE_NOT_FOUND: return fileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_INVALID_DRIVE: return badPath;
    case ERROR_TOO_MANY_OPEN_FILES: return tooManyOpenFiles;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT: return accessDenied;
    case ERROR_INVALID_HANDLE: return invalidFile;
    case ERROR_CURRENT_DIRECTORY: return removeCurrentDir;
    case ERROR_NEGATIVE_SEEK:
    case ERROR_SEEK_ON_DEVICE: return badSeek;
    case ERROR_SHARING_VIOLATION: return sharingViolation;
    case ERROR_LOCK_VIOLATION: return lockViolation;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL: return diskFull;
    case ERROR_HANDLE_EOF: return endOfFile;
    default: return genericException;
    }
}

BOOL CFileException::GetErrorMessage(LPWSTR buffer, UINT maxChars, PUINT helpContext) const
{
    if (helpContext != nullptr)
        *helpContext = 0;
    CString text;
    text.Format(L"File error %d (system error %ld): %s", m_cause, static_cast<long>(m_lOsError),
                m_strFileName.GetString());
    return CopyMessage(text, buffer, maxChars);
}

COleDispatchException::COleDispatchException(const wchar_t* description, UINT helpId, WORD code)
    : m_wCode(code), m_dwHelpContext(helpId), m_strDescription(description)
{
}

BOOL COleDispatchException::GetErrorMessage(LPWSTR buffer, UINT maxChars, PUINT helpContext) const
{
    if (helpContext != nullptr)
        *helpContext = m_dwHelpContext;
    return CopyMessage(m_strDescription, buffer, maxChars);
}

void AfxThrowInvalidArgException() { throw new CInvalidArgException; }
void AfxThrowMemoryException() { throw new CMemoryException; }
void AfxThrowResourceException() { throw new CResourceException; }

void AfxThrowFileException(int cause, LONG osError, const wchar_t* fileName)
{
    throw new CFileException(cause, osError, fileName);
}

void AfxThrowOleDispatchException(WORD code, const wchar_t* description, HRESULT error)
{
    auto* e = new COleDispatchException(description, 0, code);
    e->m_scError = error;
    throw e;
}
