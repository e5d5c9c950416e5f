// GetDir.cpp - the one-call folder dialogs.
#include "fs/BrowseForFolder.h"

#include <cwchar>

namespace {

enum : unsigned int { kRootComputer = 1, kRootNetwork = 2 };

// What QM::GetDir's callback checks on every selection change.
struct SelectionCheck
{
    unsigned int root;
    bool foldersOnly;
};

// The title stays alive for the whole dialog and is kept between calls.
CString& GetDirTitle()
{
    static CString title;
    return title;
}

// The last confirmed path: a cancelled call hands it back again.
wchar_t* GetDirResult()
{
    static wchar_t buffer[MAX_PATH];
    return buffer;
}

bool HasCheck(const SelectionCheck& check)
{
    return check.root == kRootNetwork || !check.foldersOnly;
}

bool PassesCheck(const SelectionCheck& check, LPCITEMIDLIST item)
{
    wchar_t path[MAX_PATH] = L"";
    if (item == nullptr || !SHGetPathFromIDListW(item, path) || path[0] == L'\0')
        return false;
    if (check.root == kRootNetwork && std::wcsncmp(path, L"\\\\", 2) != 0)
        return false;
    if (check.foldersOnly)
        return true;
    // "Not a folder": an item the file system knows as a file. A path it
    // cannot stat (a share root, an offline drive) counts as a folder.
    const DWORD attributes = GetFileAttributesW(path);
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

int CALLBACK GetDirCallback(HWND dialog, UINT message, LPARAM param, LPARAM data)
{
    const auto* check = reinterpret_cast<const SelectionCheck*>(data);
    if (message != BFFM_SELCHANGED || !HasCheck(*check))
        return 0;
    // Sent for a shell that sets OK by its own rules before telling us of the
    // change, and posted again for one that does so afterwards (Wine's): the
    // check must have the last word either way.
    const BOOL passes = PassesCheck(*check, reinterpret_cast<LPCITEMIDLIST>(param));
    SendMessageW(dialog, BFFM_ENABLEOK, 0, passes);
    PostMessageW(dialog, BFFM_ENABLEOK, 0, passes);
    return 0;
}

// The shell's item for the root; null (the desktop) when it has none.
LPITEMIDLIST RootItem(HWND owner, unsigned int root)
{
    const int folder = root == kRootComputer ? CSIDL_DRIVES : root == kRootNetwork ? CSIDL_NETWORK : CSIDL_DESKTOP;
    LPITEMIDLIST item = nullptr;
    if (FAILED(SHGetSpecialFolderLocation(owner, folder, &item)))
        return nullptr;
    return item;
}

}  // namespace

namespace QM {

CString GetDir(HWND owner, int foldersOnly, unsigned int root, const char* title)
{
    GetDirTitle() = CString(title);
    SelectionCheck check{root, foldersOnly != 0};
    LPITEMIDLIST rootItem = RootItem(owner, root);
    wchar_t displayName[MAX_PATH] = L"";

    BROWSEINFOW bi{};
    bi.hwndOwner = owner;
    bi.pidlRoot = rootItem;
    bi.pszDisplayName = displayName;
    bi.lpszTitle = GetDirTitle();
    bi.ulFlags = foldersOnly != 0 ? BIF_RETURNONLYFSDIRS : BIF_RETURNONLYFSDIRS | BIF_BROWSEINCLUDEFILES;
    bi.lpfn = GetDirCallback;
    bi.lParam = reinterpret_cast<LPARAM>(&check);

    LPITEMIDLIST item = SHBrowseForFolderW(&bi);
    if (item != nullptr) {
        if (!SHGetPathFromIDListW(item, GetDirResult()))
            GetDirResult()[0] = L'\0';
        CoTaskMemFree(item);
    }
    CoTaskMemFree(rootItem);
    return CString(GetDirResult());
}

bool GetDirFormShell(HWND owner, const wchar_t* title, CString& path)
{
    wchar_t displayName[MAX_PATH] = L"";
    BROWSEINFOW bi{};
    bi.hwndOwner = owner;
    bi.pszDisplayName = displayName;
    bi.lpszTitle = title;
    bi.ulFlags = BIF_RETURNONLYFSDIRS | BIF_RETURNFSANCESTORS;

    LPITEMIDLIST item = SHBrowseForFolderW(&bi);
    if (item == nullptr)
        return false;
    wchar_t chosen[MAX_PATH] = L"";
    const bool hasPath = SHGetPathFromIDListW(item, chosen) && chosen[0] != L'\0';
    CoTaskMemFree(item);
    if (!hasPath)
        return false;
    CString folder(chosen);
    folder.TrimRight(L'\\');
    path = folder + L'\\';
    return true;
}

}  // namespace QM
