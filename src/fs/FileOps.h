// FileOps.h - copying files and folder trees through the shell's file
// operation, and deleting files, wildcards and trees.
//
//   CStringArray names;  names.Add(L"a.dwg");  names.Add(L"b.dwg");
//   CStringArray renamed; renamed.Add(L"a-old.dwg");
//   QM::CopyFilesStruct copy{L"C:\\QM\\Sym\\", &names, L"D:\\Bak", &renamed, true, false};
//   QM::CopyFiles(copy);     // D:\Bak\Sym\a-old.dwg and D:\Bak\Sym\b.dwg
//   QM::CopyTree(L"C:\\QM\\Prj\\P1", L"D:\\Bak", true);   // D:\Bak\P1\...
//   QM::DelTree(L"D:\\Bak\\P1\\");
//
// Copies run silent, without error display, one shell operation per item;
// without overwrite the shell itself asks the user before it replaces an
// existing file or merges into an existing folder. Nothing here shows a
// message of its own.
#pragma once
#include "platform/Collections.h"

namespace QM {

// What QM::CopyFiles copies; passed by value. The member order is part of
// the interface: applications fill it with brace initialisers.
struct CopyFilesStruct
{
    CString strSource;                        // folder to copy from
    CStringArray* pFiles = nullptr;           // names (wildcards allowed) below strSource; null: the whole folder
    CString strTarget;                        // folder to copy into
    CStringArray* pTargetNames = nullptr;     // for pFiles entry i < its size: the name to give it below the target
    bool bOverwrite = false;                  // replace existing files without asking
    bool bRecursive = false;                  // also copy sub-folders
};

// Copies into target\L, where L is the last component of the source (a
// source of C:\a\b\ and a target of D:\t fill D:\t\b):
//   - a file list, not recursive: each listed entry, renamed when pTargetNames
//     has a name for it;
//   - no list, not recursive: every file directly in the source;
//   - a file list, recursive: every sub-folder whole, then the listed entries;
//   - no list, recursive: the whole source folder.
// Missing target folders are created. An empty source or target copies
// nothing and answers true. Returns false when any shell copy failed (the
// other items are still copied).
QM_API bool CopyFiles(CopyFilesStruct copy);

// CopyFiles with no lists and bRecursive set: the folder `from` with all it
// holds ends up as to\<last component of from>.
QM_API bool CopyTree(CString from, CString to, bool overwrite);

// True when `path` names a whole drive or network share, in any spelling:
// "Q:", "Q:/", "Q:\.", "Q:\x\..", "\\?\Q:\", "\\server\share\", or such a root
// followed by a wildcard that matches everything ("Q:\*", "Q:\*.*"). A path
// the platform cannot resolve counts as a root, so the deletes refuse it.
//   QM::IsDriveOrShareRoot(L"D:/tmp/..");   // true
QM_API bool IsDriveOrShareRoot(const wchar_t* path);

// Deletes `path` (a file, a folder with its contents, or a wildcard pattern)
// without asking; with `allowUndo` into the recycle bin. True when the shell
// answered 0 and aborted nothing. A drive or share root (IsDriveOrShareRoot)
// is refused: false, nothing deleted. A null or empty path, or one of 259
// characters or more (the work buffer holds MAX_PATH characters with both
// terminating NULs), is refused: false, nothing deleted. Not reentrant: the
// path goes through one process-wide buffer.
QM_API bool DeleteFiles(const wchar_t* path, bool allowUndo);

// Deletes a file or a folder tree: true when it is absent or was deleted.
// Trailing backslashes are ignored. A drive or share root in any spelling
// (IsDriveOrShareRoot) answers false and nothing is deleted.
QM_API bool DeleteTree(const wchar_t* path, bool allowUndo);

// DeleteTree(path, false).
QM_API bool DelTree(const wchar_t* path);

}  // namespace QM
