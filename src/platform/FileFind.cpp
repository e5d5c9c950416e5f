// FileFind.cpp - CFileFind on FindFirstFileW / FindNextFileW.
#include "platform/FileFind.h"

#include <algorithm>
#include <cwchar>

CFileFind::CFileFind()
{
    ZeroMemory(&m_found, sizeof m_found);
    ZeroMemory(&m_next, sizeof m_next);
}

CFileFind::~CFileFind()
{
    Close();
}

BOOL CFileFind::FindFile(const wchar_t* pattern, DWORD)
{
    Close();
    const CString wanted = (pattern == nullptr || *pattern == L'\0') ? CString(L"*.*") : CString(pattern);
    if (wanted.GetLength() >= MAX_PATH)
        return FALSE;
    m_search = ::FindFirstFileW(wanted, &m_next);
    if (m_search == INVALID_HANDLE_VALUE)
        return FALSE;
    m_hasNext = true;

    // The root is the pattern's own folder text, so GetFilePath answers in
    // the caller's terms (relative stays relative, "/" stays "/").
    const int cut = std::max(wanted.ReverseFind(L'\\'), wanted.ReverseFind(L'/'));
    if (cut >= 0)
        m_root = wanted.Left(cut + 1);
    else if (wanted.GetLength() >= 2 && wanted[1] == L':')
        m_root = wanted.Left(2);
    return TRUE;
}

BOOL CFileFind::FindNextFile()
{
    if (!m_hasNext)
        return FALSE;
    m_found = m_next;
    m_hasFound = true;
    m_hasNext = ::FindNextFileW(m_search, &m_next) != FALSE;
    return m_hasNext ? TRUE : FALSE;
}

void CFileFind::Close()
{
    if (m_search != INVALID_HANDLE_VALUE)
        FindClose(m_search);
    m_search = INVALID_HANDLE_VALUE;
    m_hasFound = m_hasNext = false;
    m_root.Empty();
}

CString CFileFind::GetFileName() const
{
    return m_hasFound ? CString(m_found.cFileName) : CString();
}

CString CFileFind::GetFilePath() const
{
    return m_hasFound ? m_root + m_found.cFileName : CString();
}

CString CFileFind::GetFileTitle() const
{
    const CString name = GetFileName();
    const int dot = name.ReverseFind(L'.');
    return dot > 0 ? name.Left(dot) : name;
}

CString CFileFind::GetRoot() const
{
    return m_hasFound ? m_root : CString();
}

ULONGLONG CFileFind::GetLength() const
{
    if (!m_hasFound)
        return 0;
    return (static_cast<ULONGLONG>(m_found.nFileSizeHigh) << 32) | m_found.nFileSizeLow;
}

BOOL CFileFind::IsDots() const
{
    return m_hasFound && (std::wcscmp(m_found.cFileName, L".") == 0 || std::wcscmp(m_found.cFileName, L"..") == 0);
}

BOOL CFileFind::MatchesMask(DWORD mask) const
{
    return m_hasFound && (m_found.dwFileAttributes & mask) != 0;
}
