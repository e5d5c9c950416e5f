// FileFind.h - MFC's CFileFind: walking the entries that match a pattern.
//
//   CFileFind finder;
//   BOOL more = finder.FindFile(L"C:\\QM\\Sys\\*.ini");
//   while (more) {
//       more = finder.FindNextFile();
//       if (!finder.IsDots()) names.Add(finder.GetFilePath());
//   }
//
// FindFile only opens the search; each FindNextFile makes the next entry the
// current one and answers whether yet another entry follows, so the loop
// above sees the last entry too. The search handle is closed by Close, by the
// next FindFile and by the destructor, so no path through a caller leaks it.
#pragma once
#include "platform/CString.h"

// windows.h maps FindNextFile onto FindNextFileW, so the member is exported
// under that name too, exactly as in MFC; callers write FindNextFile.
class QM_API CFileFind
{
public:
    CFileFind();
    CFileFind(const CFileFind&) = delete;
    CFileFind& operator=(const CFileFind&) = delete;
    virtual ~CFileFind();

    // Starts a search for `pattern` (null means "*.*"); FALSE when nothing
    // matches or the pattern is longer than the platform's path limit.
    BOOL FindFile(const wchar_t* pattern = nullptr, DWORD unused = 0);
    // Moves to the next entry; FALSE when the entry now current is the last
    // one (or when there is no search at all).
    BOOL FindNextFile();
    void Close();

    // The current entry; empty texts and FALSE before the first FindNextFile.
    CString GetFileName() const;
    CString GetFilePath() const;   // the pattern's folder + the name
    CString GetFileTitle() const;  // the name without its extension
    CString GetRoot() const;       // the pattern's folder, with its separator
    ULONGLONG GetLength() const;

    BOOL IsDots() const;           // "." or ".."
    BOOL IsDirectory() const { return MatchesMask(FILE_ATTRIBUTE_DIRECTORY); }
    BOOL IsReadOnly() const { return MatchesMask(FILE_ATTRIBUTE_READONLY); }
    BOOL IsArchived() const { return MatchesMask(FILE_ATTRIBUTE_ARCHIVE); }
    BOOL IsHidden() const { return MatchesMask(FILE_ATTRIBUTE_HIDDEN); }
    BOOL IsSystem() const { return MatchesMask(FILE_ATTRIBUTE_SYSTEM); }
    // TRUE when the current entry has any of the attribute bits in `mask`.
    BOOL MatchesMask(DWORD mask) const;

private:
    HANDLE m_search = INVALID_HANDLE_VALUE;
    WIN32_FIND_DATAW m_found;   // the current entry
    WIN32_FIND_DATAW m_next;    // the entry the next FindNextFile makes current
    bool m_hasFound = false;
    bool m_hasNext = false;
    CString m_root;
};
