// ListCtrl.cpp - CListCtrl's members that build item and column records,
// and the date-time picker's.
#include "platform/win/Controls.h"

BOOL CListCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    const INITCOMMONCONTROLSEX classes{sizeof(INITCOMMONCONTROLSEX), ICC_LISTVIEW_CLASSES};
    ::InitCommonControlsEx(&classes);
    return CWnd::Create(WC_LISTVIEWW, nullptr, style, rect, parent, id);
}

CHeaderCtrl* CListCtrl::GetHeaderCtrl() const
{
    return static_cast<CHeaderCtrl*>(FromHandle(reinterpret_cast<HWND>(SendMessage(LVM_GETHEADER))));
}

int CListCtrl::InsertColumn(int column, const LVCOLUMNW* info)
{
    return m_hWnd == nullptr ? -1
                             : static_cast<int>(SendMessage(LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(info)));
}

int CListCtrl::InsertColumn(int column, const wchar_t* heading, int format, int width, int subItem)
{
    LVCOLUMNW info{};
    info.mask = LVCF_FMT | LVCF_TEXT;
    info.fmt = format;
    info.pszText = const_cast<wchar_t*>(heading);
    if (width != -1)
    {
        info.mask |= LVCF_WIDTH;
        info.cx = width;
    }
    if (subItem != -1)
    {
        info.mask |= LVCF_SUBITEM;
        info.iSubItem = subItem;
    }
    return InsertColumn(column, &info);
}

int CListCtrl::InsertItem(int index, const wchar_t* text)
{
    return InsertItem(LVIF_TEXT, index, text, 0, 0, 0, 0);
}

int CListCtrl::InsertItem(int index, const wchar_t* text, int image)
{
    return InsertItem(LVIF_TEXT | LVIF_IMAGE, index, text, 0, 0, image, 0);
}

int CListCtrl::InsertItem(UINT mask, int index, const wchar_t* text, UINT state, UINT stateMask, int image,
                          LPARAM param)
{
    LVITEMW item{};
    item.mask = mask;
    item.iItem = index;
    item.pszText = const_cast<wchar_t*>(text);
    item.state = state;
    item.stateMask = stateMask;
    item.iImage = image;
    item.lParam = param;
    return InsertItem(&item);
}

BOOL CListCtrl::SetItem(int index, int subItem, UINT mask, const wchar_t* text, int image, UINT state,
                        UINT stateMask, LPARAM param)
{
    LVITEMW item{};
    item.mask = mask;
    item.iItem = index;
    item.iSubItem = subItem;
    item.pszText = const_cast<wchar_t*>(text);
    item.iImage = image;
    item.state = state;
    item.stateMask = stateMask;
    item.lParam = param;
    return SetItem(&item);
}

int CListCtrl::GetItemText(int index, int subItem, wchar_t* buffer, int size) const
{
    if (buffer != nullptr && size > 0)
        buffer[0] = L'\0';
    LVITEMW item{};
    item.iSubItem = subItem;
    item.pszText = buffer;
    item.cchTextMax = size;
    return static_cast<int>(SendMessage(LVM_GETITEMTEXTW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)));
}

// The list answers with the length it copied; a full buffer may mean the
// text was cut, so the buffer grows until it is not full.
CString CListCtrl::GetItemText(int index, int subItem) const
{
    CString text;
    for (int size = 256; size <= (1 << 20); size *= 4)
    {
        const int got = GetItemText(index, subItem, text.GetBufferSetLength(size), size + 1);
        text.ReleaseBuffer(got);
        if (got < size)
            break;
    }
    return text;
}

BOOL CListCtrl::SetItemText(int index, int subItem, const wchar_t* text)
{
    LVITEMW item{};
    item.iSubItem = subItem;
    item.pszText = const_cast<wchar_t*>(text);
    return static_cast<BOOL>(SendMessage(LVM_SETITEMTEXTW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)));
}

BOOL CListCtrl::SetItemState(int index, UINT state, UINT mask)
{
    LVITEMW item{};
    item.state = state;
    item.stateMask = mask;
    return SetItemState(index, &item);
}

DWORD_PTR CListCtrl::GetItemData(int index) const
{
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = index;
    return GetItem(&item) ? static_cast<DWORD_PTR>(item.lParam) : 0;
}

BOOL CListCtrl::SetItemData(int index, DWORD_PTR data)
{
    return SetItem(index, 0, LVIF_PARAM, nullptr, 0, 0, 0, static_cast<LPARAM>(data));
}

BOOL CListCtrl::GetItemRect(int index, LPRECT rect, UINT code) const
{
    rect->left = static_cast<LONG>(code);
    return static_cast<BOOL>(SendMessage(LVM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(rect)));
}

BOOL CListCtrl::GetSubItemRect(int index, int subItem, int code, CRect& rect) const
{
    rect.top = subItem;
    rect.left = code;
    return static_cast<BOOL>(SendMessage(LVM_GETSUBITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect)));
}

int CListCtrl::HitTest(CPoint point, UINT* flags) const
{
    LVHITTESTINFO info{};
    info.pt = point;
    const int index = m_hWnd == nullptr ? -1 : static_cast<int>(SendMessage(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&info)));
    if (flags != nullptr)
        *flags = info.flags;
    return index;
}

void CListCtrl::DrawItem(LPDRAWITEMSTRUCT)
{
}

BOOL CListCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message == WM_DRAWITEM)
    {
        DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        if (result != nullptr)
            *result = TRUE;
        return TRUE;
    }
    return CWnd::OnChildNotify(message, wParam, lParam, result);
}

BOOL CDateTimeCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    const INITCOMMONCONTROLSEX classes{sizeof(INITCOMMONCONTROLSEX), ICC_DATE_CLASSES};
    ::InitCommonControlsEx(&classes);
    return CWnd::Create(DATETIMEPICK_CLASSW, nullptr, style, rect, parent, id);
}

DWORD CDateTimeCtrl::GetTime(SYSTEMTIME* time) const
{
    return m_hWnd == nullptr ? static_cast<DWORD>(GDT_ERROR)
                             : static_cast<DWORD>(SendMessage(DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(time)));
}

BOOL CDateTimeCtrl::SetTime(const SYSTEMTIME* time)
{
    return static_cast<BOOL>(SendMessage(DTM_SETSYSTEMTIME, time == nullptr ? GDT_NONE : GDT_VALID, reinterpret_cast<LPARAM>(time)));
}
