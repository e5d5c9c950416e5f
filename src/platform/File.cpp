// File.cpp - CFile and CStdioFile on CreateFileW, ReadFile and WriteFile.
#include "platform/File.h"

#include <algorithm>
#include <cwchar>

namespace {

DWORD DesiredAccess(UINT flags)
{
    switch (flags & 3) {
    case CFile::modeWrite: return GENERIC_WRITE;
    case CFile::modeReadWrite: return GENERIC_READ | GENERIC_WRITE;
    default: return GENERIC_READ;
    }
}

// Compatibility mode has no meaning on Win32; MFC treats it as exclusive.
DWORD ShareMode(UINT flags)
{
    switch (flags & 0x70) {
    case CFile::shareDenyWrite: return FILE_SHARE_READ;
    case CFile::shareDenyRead: return FILE_SHARE_WRITE;
    case CFile::shareDenyNone: return FILE_SHARE_READ | FILE_SHARE_WRITE;
    default: return 0;
    }
}

DWORD Disposition(UINT flags)
{
    if (flags & CFile::modeCreate)
        return (flags & CFile::modeNoTruncate) ? OPEN_ALWAYS : CREATE_ALWAYS;
    return OPEN_EXISTING;
}

[[noreturn]] void ThrowLastError(const CString& fileName)
{
    const LONG error = static_cast<LONG>(GetLastError());
    AfxThrowFileException(CFileException::OsErrorToException(error), error, fileName);
}

bool UsableName(const wchar_t* name)
{
    return name != nullptr && *name != L'\0' && std::wcslen(name) < MAX_PATH;
}

}  // namespace

CFile::~CFile()
{
    CFile::Abort();
}

BOOL CFile::Open(const wchar_t* fileName, UINT openFlags, CFileException* error)
{
    Abort();
    if (fileName == nullptr || *fileName == L'\0') {
        if (error != nullptr) {
            error->m_cause = CFileException::badPath;
            error->m_lOsError = ERROR_INVALID_NAME;
            error->m_strFileName = fileName;
        }
        return FALSE;
    }
    SECURITY_ATTRIBUTES security = {sizeof(SECURITY_ATTRIBUTES), nullptr, (openFlags & modeNoInherit) ? FALSE : TRUE};
    HANDLE file = CreateFileW(fileName, DesiredAccess(openFlags), ShareMode(openFlags), &security,
                              Disposition(openFlags), FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        if (error != nullptr) {
            error->m_lOsError = static_cast<LONG>(GetLastError());
            error->m_cause = CFileException::OsErrorToException(error->m_lOsError);
            error->m_strFileName = fileName;
        }
        return FALSE;
    }
    m_hFile = file;
    m_strFileName = fileName;
    return TRUE;
}

void CFile::Close()
{
    if (m_hFile == INVALID_HANDLE_VALUE)
        return;
    HANDLE file = m_hFile;
    m_hFile = INVALID_HANDLE_VALUE;
    if (!CloseHandle(file))
        ThrowLastError(m_strFileName);
}

void CFile::Abort()
{
    if (m_hFile != INVALID_HANDLE_VALUE)
        CloseHandle(m_hFile);
    m_hFile = INVALID_HANDLE_VALUE;
}

UINT CFile::Read(void* buffer, UINT count)
{
    if (count == 0)
        return 0;
    if (buffer == nullptr)
        AfxThrowInvalidArgException();
    DWORD read = 0;
    if (!ReadFile(m_hFile, buffer, count, &read, nullptr))
        ThrowLastError(m_strFileName);
    return read;
}

void CFile::Write(const void* buffer, UINT count)
{
    if (count == 0)
        return;
    if (buffer == nullptr)
        AfxThrowInvalidArgException();
    DWORD written = 0;
    if (!WriteFile(m_hFile, buffer, count, &written, nullptr))
        ThrowLastError(m_strFileName);
    if (written != count)
        AfxThrowFileException(CFileException::diskFull, ERROR_DISK_FULL, m_strFileName);
}

ULONGLONG CFile::GetLength() const
{
    LARGE_INTEGER size;
    if (!GetFileSizeEx(m_hFile, &size))
        ThrowLastError(m_strFileName);
    return static_cast<ULONGLONG>(size.QuadPart);
}

BOOL CFile::GetStatus(const wchar_t* fileName, CFileStatus& status)
{
    if (!UsableName(fileName))
        return FALSE;
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(fileName, GetFileExInfoStandard, &data))
        return FALSE;
    wchar_t fullName[MAX_PATH];
    const DWORD length = GetFullPathNameW(fileName, MAX_PATH, fullName, nullptr);
    if (length == 0 || length >= MAX_PATH)
        return FALSE;
    const bool folder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    status.m_size = folder ? 0 : (static_cast<ULONGLONG>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    status.m_attribute = static_cast<BYTE>(data.dwFileAttributes & 0xFF);
    std::wcscpy(status.m_szFullName, fullName);
    return TRUE;
}

void CFile::Remove(const wchar_t* fileName)
{
    if (fileName == nullptr)
        AfxThrowFileException(CFileException::badPath, ERROR_INVALID_NAME);
    if (!DeleteFileW(fileName))
        ThrowLastError(fileName);
}

BOOL CStdioFile::Open(const wchar_t* fileName, UINT openFlags, CFileException* error)
{
    m_buffer.clear();
    m_next = 0;
    m_bText = (openFlags & typeText) != 0;
    return CFile::Open(fileName, openFlags, error);
}

void CStdioFile::Close()
{
    m_buffer.clear();
    m_next = 0;
    CFile::Close();
}

void CStdioFile::Abort()
{
    m_buffer.clear();
    m_next = 0;
    CFile::Abort();
}

UINT CStdioFile::Read(void* buffer, UINT count)
{
    const size_t buffered = m_buffer.size() - m_next;
    if (buffered == 0)
        return CFile::Read(buffer, count);
    if (buffer == nullptr && count > 0)
        AfxThrowInvalidArgException();
    const UINT taken = static_cast<UINT>(std::min<size_t>(buffered, count));
    m_buffer.copy(static_cast<char*>(buffer), taken, m_next);
    m_next += taken;
    return taken;
}

// Refills the read-ahead, keeping the last byte taken in front of the new
// ones so that ReadLine can always give one byte back.
bool CStdioFile::FillBuffer()
{
    const size_t kChunk = 65536;
    const char last = m_buffer.empty() ? '\0' : m_buffer.back();
    m_buffer.resize(kChunk + 1);
    m_buffer[0] = last;
    const UINT read = CFile::Read(&m_buffer[1], static_cast<UINT>(kChunk));
    m_buffer.resize(1 + read);
    m_next = 1;
    return read > 0;
}

bool CStdioFile::TakeByte(char& byte)
{
    if (m_next >= m_buffer.size() && !FillBuffer())
        return false;
    byte = m_buffer[m_next++];
    return true;
}

CStdioFile::LineResult CStdioFile::ReadLine(char* buffer, UINT size)
{
    if (buffer == nullptr || size < 2)
        AfxThrowInvalidArgException();
    UINT count = 0;
    bool took = false, trailNext = false;
    char byte;
    while (TakeByte(byte)) {
        took = true;
        if (byte == '\n') {
            if (count > 0 && buffer[count - 1] == '\r')
                --count;
            buffer[count] = '\0';
            return lineRead;
        }
        const bool lead = !trailNext && IsDBCSLeadByteEx(CP_THREAD_ACP, static_cast<BYTE>(byte));
        const bool full = count == size - 1;
        // A double-byte character that would not fit whole waits for the next call.
        if (full || (lead && count == size - 2 && count > 0)) {
            char after;
            if (full && byte == '\r' && TakeByte(after)) {
                if (after == '\n') {
                    buffer[count] = '\0';
                    return lineRead;
                }
                // Both go back. After a refill the CR is the byte kept in
                // front, so the slot before `after` holds it either way.
                m_next -= 2;
            } else {
                --m_next;
            }
            buffer[count] = '\0';
            return lineTooLong;
        }
        trailNext = lead;
        buffer[count++] = byte;
    }
    buffer[count] = '\0';
    return took ? lineRead : endOfFile;
}

void CStdioFile::WriteString(const wchar_t* text)
{
    if (text == nullptr)
        AfxThrowInvalidArgException();
    const int length = static_cast<int>(std::wcslen(text));
    if (length == 0)
        return;
    const int bytes = WideCharToMultiByte(CP_THREAD_ACP, 0, text, length, nullptr, 0, nullptr, nullptr);
    std::string ansi(static_cast<size_t>(bytes > 0 ? bytes : 0), '\0');
    if (bytes > 0)
        WideCharToMultiByte(CP_THREAD_ACP, 0, text, length, &ansi[0], bytes, nullptr, nullptr);
    if (m_bText) {
        std::string translated;
        translated.reserve(ansi.size() + ansi.size() / 8);
        for (char c : ansi) {
            if (c == '\n')
                translated += '\r';
            translated += c;
        }
        ansi.swap(translated);
    }
    Write(ansi.data(), static_cast<UINT>(ansi.size()));
}
