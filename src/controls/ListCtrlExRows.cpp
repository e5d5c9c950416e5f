// ListCtrlExRows.cpp - rows and cells of CListCtrlEx: user columns shifted
// past the serial column, the serial numbers kept 1...n, and rows deleted
// or moved with their selection.
#include "controls/ListCtrlEx.h"

void CListCtrlEx::Renumber(int from)
{
    if (!Serial() || from >= GetItemCount())
        return;
    const DrawingHeld held(*this);
    CString number;
    for (int row = from < 0 ? 0 : from, count = GetItemCount(); row < count; ++row)
    {
        number.Format(L"%d", row + 1);
        CListCtrl::SetItemText(row, 0, number);
    }
}

// The row's own fields (data, state, image) go in with its number, so that
// none of them depends on how the list treats them on a sub-item.
int CListCtrlEx::InsertItem(const LVITEMW* item)
{
    if (!Serial() || item == nullptr)
        return CListCtrl::InsertItem(item);
    CString number;
    number.Format(L"%d", item->iItem + 1);
    LVITEMW row = *item;
    row.mask = LVIF_TEXT | (item->mask & (LVIF_PARAM | LVIF_STATE | LVIF_IMAGE | LVIF_INDENT));
    row.iSubItem = 0;
    row.pszText = const_cast<wchar_t*>(static_cast<const wchar_t*>(number));
    const int at = CListCtrl::InsertItem(&row);
    if (at < 0)
        return at;
    if (at != item->iItem)
    {
        number.Format(L"%d", at + 1);
        CListCtrl::SetItemText(at, 0, number);
    }
    LVITEMW* record = const_cast<LVITEMW*>(item);
    record->iItem = at;
    record->iSubItem += 1;
    CListCtrl::SetItem(record);
    Renumber(at + 1);
    return at;
}

int CListCtrlEx::InsertItem(int nItem, LPCWSTR text)
{
    return InsertItem(LVIF_TEXT, nItem, text, 0, 0, 0, 0);
}

int CListCtrlEx::InsertItem(int nItem, LPCWSTR text, int nImage)
{
    return InsertItem(LVIF_TEXT | LVIF_IMAGE, nItem, text, 0, 0, nImage, 0);
}

int CListCtrlEx::InsertItem(UINT mask, int nItem, LPCWSTR text, UINT state, UINT stateMask, int nImage,
                            LPARAM lParam)
{
    LVITEMW item{};
    item.mask = mask;
    item.iItem = nItem;
    item.pszText = const_cast<wchar_t*>(text);
    item.state = state;
    item.stateMask = stateMask;
    item.iImage = nImage;
    item.lParam = lParam;
    return InsertItem(&item);
}

int CListCtrlEx::SetItem(const LVITEMW* item)
{
    if (item == nullptr)
        return FALSE;
    const_cast<LVITEMW*>(item)->iSubItem += Serial();
    return CListCtrl::SetItem(item);
}

int CListCtrlEx::SetItem(int nItem, int nSubItem, UINT mask, LPCWSTR text, int nImage, UINT state,
                         UINT stateMask, LPARAM lParam)
{
    return CListCtrl::SetItem(nItem, nSubItem + Serial(), mask, text, nImage, state, stateMask, lParam);
}

int CListCtrlEx::SetItemText(int nItem, int nSubItem, LPCWSTR text)
{
    return CListCtrl::SetItemText(nItem, nSubItem + Serial(), text);
}

int CListCtrlEx::GetItemText(int nItem, int nSubItem, LPWSTR buffer, int size) const
{
    return CListCtrl::GetItemText(nItem, nSubItem + Serial(), buffer, size);
}

CString CListCtrlEx::GetItemText(int nItem, int nSubItem) const
{
    return CListCtrl::GetItemText(nItem, nSubItem + Serial());
}

int CListCtrlEx::DeleteItem(int nItem)
{
    const int result = CListCtrl::DeleteItem(nItem);
    if (result)
        Renumber(nItem);
    return result;
}

// Resolves -1 to the first selected row and notes the row's focus and
// selection; false when there is no such row.
int CListCtrlEx::PrepareRow(int& nItem, UINT& state) const
{
    if (nItem == -1)
        nItem = GetNextItem(-1, LVNI_SELECTED);
    if (nItem < 0 || nItem >= GetItemCount())
        return FALSE;
    state = GetItemState(nItem, LVIS_FOCUSED | LVIS_SELECTED);
    return TRUE;
}

int CListCtrlEx::DelItem(int nItem)
{
    UINT state = 0;
    if (!PrepareRow(nItem, state))
        return -1;
    const int result = DeleteItem(nItem);
    if (nItem >= GetItemCount())
        --nItem;
    if (nItem < 0 || nItem >= GetItemCount())
        return result;
    SetFocus();
    EnsureVisible(nItem, FALSE);
    SetItemState(nItem, state, LVIS_FOCUSED | LVIS_SELECTED);
    return result;
}

// Only the texts move: item data, images and serial numbers stay where
// they are.
void CListCtrlEx::SwapRows(int a, int b)
{
    for (int column = 0, count = GetColumnCount(); column < count; ++column)
    {
        const CString first = GetItemText(a, column);
        SetItemText(a, column, GetItemText(b, column));
        SetItemText(b, column, first);
    }
}

int CListCtrlEx::UpItem(int nItem)
{
    UINT state = 0;
    if (!PrepareRow(nItem, state))
        return -1;
    const int target = nItem > 0 ? nItem - 1 : 0;
    if (target != nItem)
        SwapRows(target, nItem);
    EnsureVisible(target, FALSE);
    SetItemState(target, state, LVIS_FOCUSED | LVIS_SELECTED);
    SetFocus();
    return nItem;
}

int CListCtrlEx::DownItem(int nItem)
{
    UINT state = 0;
    if (!PrepareRow(nItem, state))
        return -1;
    const int target = nItem + 1 < GetItemCount() ? nItem + 1 : nItem;
    if (target != nItem)
        SwapRows(nItem, target);
    EnsureVisible(target, FALSE);
    SetItemState(target, state, LVIS_FOCUSED | LVIS_SELECTED);
    SetFocus();
    return nItem;
}
