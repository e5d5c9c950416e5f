// ListCtrlExSort.cpp - sorting CListCtrlEx by a column's rule.
//
// The compare functions read texts by row index, but the platform list
// reorders its rows while it sorts, so reading then could see a half-sorted
// list. The rows are therefore ranked first, with a stable merge sort that
// calls the compare function on the list as it stands, and the list then
// sorts by those ranks.
#include "controls/ListCtrlEx.h"

#include <cstdlib>
#include <new>
#include <numeric>
#include <vector>

namespace {

struct RowSort
{
    PFNLVCOMPARE compare;
    LPARAM info;
    std::vector<int> buffer;

    void Sort(std::vector<int>& rows, size_t from, size_t to)
    {
        if (to - from < 2)
            return;
        const size_t middle = from + (to - from) / 2;
        Sort(rows, from, middle);
        Sort(rows, middle, to);
        size_t left = from, right = middle, out = 0;
        while (left < middle && right < to)
            buffer[out++] = compare(rows[left], rows[right], info) > 0 ? rows[right++] : rows[left++];
        while (left < middle)
            buffer[out++] = rows[left++];
        while (right < to)
            buffer[out++] = rows[right++];
        std::copy(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(out),
                  rows.begin() + static_cast<std::ptrdiff_t>(from));
    }
};

int CALLBACK ByRank(LPARAM row1, LPARAM row2, LPARAM ranks)
{
    const int* rank = reinterpret_cast<const int*>(ranks);
    return rank[row1] - rank[row2];
}

// Item data holds each row's index from before the sort (see SortColumn).
BOOL SortRows(CListCtrlEx& list, PFNLVCOMPARE compare, const SORTINFO& info)
{
    const int count = list.GetItemCount();
    try
    {
        std::vector<int> rows(static_cast<size_t>(count));
        std::iota(rows.begin(), rows.end(), 0);
        RowSort sorter{compare, reinterpret_cast<LPARAM>(&info), std::vector<int>(rows.size())};
        sorter.Sort(rows, 0, rows.size());
        std::vector<int> rank(rows.size());
        for (int position = 0; position < count; ++position)
            rank[static_cast<size_t>(rows[static_cast<size_t>(position)])] = position;
        return list.SortItems(&ByRank, reinterpret_cast<DWORD_PTR>(rank.data()));
    }
    catch (const std::bad_alloc&)
    {
        AfxThrowMemoryException();
    }
}

} // namespace

int CListCtrlEx::SetSort(int realCol, SORT_MODE mode)
{
    if (realCol >= m_aSortItems.GetSize())
        return 0;
    m_aSortItems.ElementAt(realCol).nSortMode = mode;
    return 1;
}

int CListCtrlEx::SetSort(int realCol, PFNLVCOMPARE compare)
{
    if (realCol >= m_aSortItems.GetSize())
        return 0;
    if (compare == nullptr)
        return 1;
    SORTITEM& item = m_aSortItems.ElementAt(realCol);
    item.nSortMode = SORT_CALLBACK;
    item.pfnCompare = compare;
    return 1;
}

int CListCtrlEx::SortColumn(int realCol, BOOL ascending)
{
    if (realCol >= m_aSortItems.GetSize())
        return 0;
    const SORTITEM& item = m_aSortItems.GetAt(realCol);
    if (item.nSortMode == SORT_CALLBACK)
        SortColumn(realCol, item.pfnCompare, ascending);
    else if (item.nSortMode != SORT_NONE)
        SortColumn(realCol, item.nSortMode, ascending);
    return 0;
}

// Each row's item data is lent to the sort as the row's index and given
// back by position afterwards: callers do not rely on item data across a
// sort.
namespace {

std::vector<DWORD_PTR> LendItemData(CListCtrl& list)
{
    std::vector<DWORD_PTR> saved;
    try
    {
        saved.resize(static_cast<size_t>(list.GetItemCount()));
    }
    catch (const std::bad_alloc&)
    {
        AfxThrowMemoryException();
    }
    for (size_t row = 0; row < saved.size(); ++row)
    {
        saved[row] = list.GetItemData(static_cast<int>(row));
        list.SetItemData(static_cast<int>(row), row);
    }
    return saved;
}

void ReturnItemData(CListCtrl& list, const std::vector<DWORD_PTR>& saved)
{
    for (size_t row = 0; row < saved.size(); ++row)
        list.SetItemData(static_cast<int>(row), saved[row]);
}

} // namespace

int CListCtrlEx::SortColumn(int realCol, PFNLVCOMPARE compare, BOOL ascending)
{
    if (compare == nullptr)
        return 0;
    const DrawingHeld held(*this);
    const std::vector<DWORD_PTR> saved = LendItemData(*this);
    const SORTINFO info{this, realCol, ascending};
    const BOOL result = SortRows(*this, compare, info);
    ReturnItemData(*this, saved);
    return result;
}

int CListCtrlEx::SortColumn(int realCol, SORT_MODE mode, BOOL ascending)
{
    const PFNLVCOMPARE compare = mode == SORT_STRING ? &CListCtrlEx::CompareStringW
                                 : mode == SORT_NUMBER ? &CListCtrlEx::CompareNumber
                                                       : nullptr;
    const DrawingHeld held(*this);
    const std::vector<DWORD_PTR> saved = LendItemData(*this);
    std::vector<CString> texts;
    try
    {
        texts.resize(compare != nullptr ? saved.size() : 0);
    }
    catch (const std::bad_alloc&)
    {
        AfxThrowMemoryException();
    }
    for (size_t row = 0; row < texts.size(); ++row)
        texts[row] = CListCtrl::GetItemText(static_cast<int>(row), realCol);
    const SORTINFO info{this, realCol, ascending};
    m_pSortTexts = texts.empty() ? nullptr : texts.data();
    m_nSortTextsColumn = realCol;
    try
    {
        if (compare != nullptr)
            SortRows(*this, compare, info);
    }
    catch (...)
    {
        m_pSortTexts = nullptr;
        ReturnItemData(*this, saved);
        throw;
    }
    m_pSortTexts = nullptr;
    CString number;
    for (int row = 0, count = GetItemCount(); Serial() && row < count; ++row)
    {
        if (GetItemData(row) == static_cast<DWORD_PTR>(row))
            continue;
        number.Format(L"%d", row + 1);
        CListCtrl::SetItemText(row, 0, number);
    }
    ReturnItemData(*this, saved);
    return 0;
}

CString CListCtrlEx::SortText(const SORTINFO* sort, LPARAM row)
{
    const CListCtrlEx* list = sort->pList;
    return list->m_pSortTexts != nullptr && list->m_nSortTextsColumn == sort->nColumn
               ? list->m_pSortTexts[row]
               : sort->pList->CListCtrl::GetItemText(static_cast<int>(row), sort->nColumn);
}

int CALLBACK CListCtrlEx::CompareStringW(LPARAM row1, LPARAM row2, LPARAM info)
{
    const SORTINFO* sort = reinterpret_cast<const SORTINFO*>(info);
    const CString first = SortText(sort, row1), second = SortText(sort, row2);
    return sort->bAscending ? first.CompareNoCase(second) : second.CompareNoCase(first);
}

// Equal values answer -1 whichever comes first.
int CALLBACK CListCtrlEx::CompareNumber(LPARAM row1, LPARAM row2, LPARAM info)
{
    const SORTINFO* sort = reinterpret_cast<const SORTINFO*>(info);
    const double first = _wtof(SortText(sort, row1)), second = _wtof(SortText(sort, row2));
    return (sort->bAscending ? first > second : second > first) ? 1 : -1;
}

// The first click on a column sorts it ascending, the next descending.
void CListCtrlEx::OnHeaderClicked(NMHDR* header, LRESULT* result)
{
    const NMHEADERW* click = reinterpret_cast<const NMHEADERW*>(header);
    *result = 0;
    m_wndHeader.SetFocus();
    const int column = click->iItem;
    if (click->iButton != 0 || (Serial() && column == 0) || column >= m_aSortItems.GetSize())
        return;
    SORTITEM& item = m_aSortItems.ElementAt(column);
    if (item.nSortMode == SORT_NONE)
        return;
    m_wndHeader.SetSortColumn(column, item.bAscending);
    SortColumn(column, item.bAscending);
    item.bAscending = !item.bAscending;
}
