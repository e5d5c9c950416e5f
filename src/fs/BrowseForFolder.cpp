// BrowseForFolder.cpp - CBrowseForFolder and CSBDestination on
// SHBrowseForFolderW and its callback.
#include "fs/BrowseForFolder.h"

#include <cwchar>

CBrowseForFolder::CBrowseForFolder(HWND owner, LPCITEMIDLIST root, int titleId)
{
    ZeroMemory(&m_bi, sizeof m_bi);
    m_szDisplayName[0] = L'\0';
    m_bi.hwndOwner = owner;
    m_bi.pidlRoot = root;
    SetTitle(CString());
    SetTitle(titleId);
    Bind();
}

CBrowseForFolder::CBrowseForFolder(HWND owner, LPCITEMIDLIST root, const CString& title)
{
    ZeroMemory(&m_bi, sizeof m_bi);
    m_szDisplayName[0] = L'\0';
    m_bi.hwndOwner = owner;
    m_bi.pidlRoot = root;
    SetTitle(title);
    Bind();
}

CBrowseForFolder::CBrowseForFolder(const CBrowseForFolder& other)
{
    ZeroMemory(&m_bi, sizeof m_bi);
    Assign(other);
}

CBrowseForFolder& CBrowseForFolder::operator=(const CBrowseForFolder& other)
{
    if (this != &other && m_hwnd == nullptr)
        Assign(other);
    return *this;
}

CBrowseForFolder::~CBrowseForFolder()
{
    delete[] m_pchTitle;
}

void CBrowseForFolder::Assign(const CBrowseForFolder& other)
{
    m_bi = other.m_bi;
    std::wmemcpy(m_szDisplayName, other.m_szDisplayName, MAX_PATH);
    m_strSelected = other.m_strSelected;
    m_hwnd = nullptr;
    SetTitle(other.GetTitle());
    Bind();
}

// Points the browse record at this object's own buffers and at this object
// itself: the callback finds its object through the full address in lParam.
void CBrowseForFolder::Bind()
{
    m_bi.pszDisplayName = m_szDisplayName;
    m_bi.lpszTitle = m_pchTitle;
    m_bi.lpfn = BrowseCallbackProc;
    m_bi.lParam = reinterpret_cast<LPARAM>(this);
}

void CBrowseForFolder::SetOwner(HWND owner)
{
    if (m_hwnd == nullptr)
        m_bi.hwndOwner = owner;
}

void CBrowseForFolder::SetRoot(LPCITEMIDLIST root)
{
    if (m_hwnd == nullptr)
        m_bi.pidlRoot = root;
}

void CBrowseForFolder::SetFlags(unsigned int flags)
{
    if (m_hwnd == nullptr)
        m_bi.ulFlags = flags;
}

void CBrowseForFolder::SetTitle(const CString& title)
{
    if (m_hwnd != nullptr)
        return;
    wchar_t* copy = new wchar_t[static_cast<size_t>(title.GetLength()) + 1];
    std::wmemcpy(copy, title.GetString(), static_cast<size_t>(title.GetLength()) + 1);
    delete[] m_pchTitle;
    m_pchTitle = copy;
    m_bi.lpszTitle = m_pchTitle;
}

bool CBrowseForFolder::SetTitle(int id)
{
    CString title;
    if (id < 1 || m_hwnd != nullptr || !title.LoadString(static_cast<UINT>(id)))
        return false;
    SetTitle(title);
    return true;
}

bool CBrowseForFolder::SelectFolder()
{
    LPITEMIDLIST item = SHBrowseForFolderW(&m_bi);
    m_hwnd = nullptr;
    if (item == nullptr)
        return false;
    m_strSelected.Empty();
    // The dialog left the item's display name in the buffer; an item without
    // a file-system path keeps it, and the answer stays true.
    const CString displayName(m_szDisplayName);
    if (!SHGetPathFromIDListW(item, m_szDisplayName))
        lstrcpynW(m_szDisplayName, displayName, MAX_PATH);
    m_strSelected = m_szDisplayName;
    CoTaskMemFree(item);
    return true;
}

void CBrowseForFolder::OnInit() const
{
}

void CBrowseForFolder::OnSelChanged(LPCITEMIDLIST) const
{
}

void CBrowseForFolder::EnableOK(bool enable) const
{
    if (m_hwnd != nullptr)
        SendMessageW(m_hwnd, BFFM_ENABLEOK, 0, enable ? TRUE : FALSE);
}

void CBrowseForFolder::SetSelection(LPCITEMIDLIST item) const
{
    if (m_hwnd != nullptr)
        SendMessageW(m_hwnd, BFFM_SETSELECTIONW, FALSE, reinterpret_cast<LPARAM>(item));
}

void CBrowseForFolder::SetSelection(const CString& path) const
{
    if (m_hwnd != nullptr)
        SendMessageW(m_hwnd, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(path.GetString()));
}

void CBrowseForFolder::SetStatusText(const CString& text) const
{
    if (m_hwnd != nullptr)
        SendMessageW(m_hwnd, BFFM_SETSTATUSTEXTW, 0, reinterpret_cast<LPARAM>(text.GetString()));
}

int CALLBACK CBrowseForFolder::BrowseCallbackProc(HWND dialog, UINT message, LPARAM param, LPARAM data)
{
    auto* self = reinterpret_cast<CBrowseForFolder*>(data);
    self->m_hwnd = dialog;
    if (message == BFFM_INITIALIZED)
        self->OnInit();
    else if (message == BFFM_SELCHANGED)
        self->OnSelChanged(reinterpret_cast<LPCITEMIDLIST>(param));
    return 0;
}

CSBDestination::CSBDestination(HWND owner, int titleId) : CBrowseForFolder(owner, nullptr, titleId)
{
}

void CSBDestination::SetInitialSelection(const CString& path)
{
    m_strInitialSelection = path;
}

void CSBDestination::OnInit() const
{
    SetSelection(m_strInitialSelection);
    SetStatusText(m_strInitialSelection);
}

void CSBDestination::OnSelChanged(LPCITEMIDLIST item) const
{
    wchar_t path[MAX_PATH] = L"";
    if (item == nullptr || !SHGetPathFromIDListW(item, path))
        path[0] = L'\0';
    SetStatusText(path);
}
