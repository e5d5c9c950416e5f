// BrowseForFolder.h - the shell's folder-browse dialog: a reusable class with
// two hooks, a variant that starts at a given folder and shows the current
// path as status text, and two one-call functions.
//
//   CSBDestination dlg(hwnd, IDS_PICK_TARGET);
//   dlg.SetFlags(BIF_RETURNONLYFSDIRS | BIF_STATUSTEXT);
//   dlg.SetInitialSelection(L"C:\\QM\\Prj");
//   if (dlg.SelectFolder()) use(dlg.GetSelectedFolder());
//
//   CString dir;
//   if (QM::GetDirFormShell(hwnd, L"选择工程目录", dir)) ...   // "D:\Prj\"
//
// Item lists the dialog returns and the roots taken from the shell are freed
// with the shell allocator (CoTaskMemFree); roots the caller passes in stay
// the caller's.
#pragma once
#include "platform/CString.h"

#include <shlobj.h>

// One folder-browse dialog's settings. Setters are ignored while the dialog
// is open; the message senders act only while it is open. A derived class
// reacts to the dialog through OnInit and OnSelChanged, which run on the
// dialog's own thread while SelectFolder waits.
class QM_API CBrowseForFolder
{
public:
    // The title from string `titleId` (searched like CString::LoadString;
    // no title when it is below 1 or missing).
    CBrowseForFolder(HWND owner = nullptr, LPCITEMIDLIST root = nullptr, int titleId = 0);
    CBrowseForFolder(HWND owner, LPCITEMIDLIST root, const CString& title);
    // A copy has the same settings and its own buffers; the dialog's hooks
    // then reach the copy. Assigning to an object whose dialog is open does
    // nothing.
    CBrowseForFolder(const CBrowseForFolder& other);
    CBrowseForFolder& operator=(const CBrowseForFolder& other);
    virtual ~CBrowseForFolder();

    void SetOwner(HWND owner);
    // `root` is not copied: it must live as long as this object uses it.
    void SetRoot(LPCITEMIDLIST root);
    void SetFlags(unsigned int flags);   // BIF_ values
    void SetTitle(const CString& title);
    // False when `id` is below 1, the string cannot be loaded or the dialog
    // is open (the title is then unchanged); true when the title was set.
    bool SetTitle(int id);

    unsigned int GetFlags() const { return m_bi.ulFlags; }
    int GetImage() const { return m_bi.iImage; }
    CString GetTitle() const { return CString(m_pchTitle); }
    // The display-name buffer: after SelectFolder the chosen path, or the
    // item's display name when the item has no file-system path.
    CString GetSelectedFolder() const { return CString(m_szDisplayName); }

    // Runs the dialog; false when the user cancelled. True for any confirmed
    // item, whether or not it has a file-system path: callers look at
    // GetSelectedFolder, not at this answer, to tell the two apart.
    bool SelectFolder();

protected:
    // Called when the dialog has been initialised / the selection changed.
    virtual void OnInit() const;
    virtual void OnSelChanged(LPCITEMIDLIST item) const;

    void EnableOK(bool enable) const;
    void SetSelection(LPCITEMIDLIST item) const;
    void SetSelection(const CString& path) const;
    void SetStatusText(const CString& text) const;

private:
    static int CALLBACK BrowseCallbackProc(HWND dialog, UINT message, LPARAM param, LPARAM data);
    void Assign(const CBrowseForFolder& other);
    void Bind();

    wchar_t* m_pchTitle = nullptr;          // owned copy of the title text
    BROWSEINFOW m_bi;
    wchar_t m_szDisplayName[MAX_PATH];
    CString m_strSelected;                   // result of the last SelectFolder
    HWND m_hwnd = nullptr;                   // non-null only while open
};

// A folder dialog with no root that opens at a chosen folder and shows the
// current item's path as status text (the dialog shows status text only
// with BIF_STATUSTEXT among the flags).
class QM_API CSBDestination : public CBrowseForFolder
{
public:
    explicit CSBDestination(HWND owner = nullptr, int titleId = 0);
    // The folder selected when the dialog opens; a path the dialog cannot
    // find leaves its own start.
    void SetInitialSelection(const CString& path);

protected:
    void OnInit() const override;
    // Shows the item's path; empty for an item without a file-system path.
    void OnSelChanged(LPCITEMIDLIST item) const override;

private:
    CString m_strInitialSelection;
};

namespace QM {

// Lets the user pick a folder (`foldersOnly` non-zero) or a file-system
// item, files included (`foldersOnly` 0), below `root`: 1 the computer,
// 2 the network, anything else the desktop. `title` is ANSI text.
// Under a check OK follows the check on every selection change (enabled when
// it passes, disabled when it fails); an item without a file-system path
// fails any check:
//   root 2, folders only:  paths beginning with "\\";
//   root 2, files too:     such paths that are not folders;
//   other roots, files too: items that are not folders;
//   other roots, folders only: no check.
// Returns the chosen path (empty when it has no file-system path). On cancel
// the previous call's result is returned again: callers compare it with
// what they had.
QM_API CString GetDir(HWND owner, int foldersOnly, unsigned int root, const char* title);

// Lets the user pick a file-system folder; true and `path` set to it with
// exactly one trailing backslash ("C:\" for a drive). False, `path`
// unchanged, on cancel or for an item without a file-system path.
QM_API bool GetDirFormShell(HWND owner, const wchar_t* title, CString& path);

}  // namespace QM
