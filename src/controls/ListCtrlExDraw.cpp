// ListCtrlExDraw.cpp - the sunken current cell CListCtrlEx draws while the
// keyboard moves its cell cursor.
#include "controls/ListCtrlEx.h"

// Unused in practice (the list is not owner-drawn); it only prepares the
// colours an owner-drawn row would use.
void CListCtrlEx::DrawItem(LPDRAWITEMSTRUCT item)
{
    if (item == nullptr)
        return;
    ::SetTextColor(item->hDC, ::GetSysColor(COLOR_HIGHLIGHTTEXT));
    ::SetBkColor(item->hDC, RGB(255, 255, 255));
}

// Only keyboard use shows the cell cursor; the mouse leaves the platform's
// drawing alone.
void CListCtrlEx::OnCustomDraw(NMHDR* header, LRESULT* result)
{
    NMLVCUSTOMDRAW* draw = reinterpret_cast<NMLVCUSTOMDRAW*>(header);
    *result = CDRF_DODEFAULT;
    if (!m_bKeyboardMode)
        return;
    const int row = static_cast<int>(draw->nmcd.dwItemSpec);
    switch (draw->nmcd.dwDrawStage)
    {
    case CDDS_PREPAINT:
        *result = CDRF_NOTIFYITEMDRAW;
        return;
    case CDDS_SUBITEM | CDDS_ITEMPREPAINT:
        *result = CDRF_NOTIFYSUBITEMDRAW | CDRF_NOTIFYPOSTPAINT;
        return;
    case CDDS_SUBITEM | CDDS_ITEMPOSTPAINT:
        if ((GetItemState(row, LVIS_FOCUSED) & LVIS_FOCUSED) != 0 &&
            draw->iSubItem == m_wndHeader.OrderToIndex(m_nCurColumn))
        {
            DrawCurrentCell(draw);
            *result = CDRF_SKIPDEFAULT;
        }
        return;
    default:
        *result = (GetItemState(row, LVIS_FOCUSED) & LVIS_FOCUSED) != 0 ? CDRF_NOTIFYSUBITEMDRAW : 0;
        return;
    }
}

// The cell's rectangle is asked of the list (column 0: its label part), in
// the client coordinates the list draws in; top and bottom are the row's.
void CListCtrlEx::DrawCurrentCell(NMLVCUSTOMDRAW* draw)
{
    const int row = static_cast<int>(draw->nmcd.dwItemSpec);
    CRect bounds, cell;
    GetItemRect(row, bounds, LVIR_BOUNDS);
    if (draw->iSubItem == 0)
        GetItemRect(row, cell, LVIR_LABEL);
    else
        GetSubItemRect(row, draw->iSubItem, LVIR_BOUNDS, cell);
    cell.top = bounds.top;
    cell.bottom = bounds.bottom;
    CDC dc;
    dc.Attach(draw->nmcd.hdc);
    const int saved = dc.SaveDC();
    const int blank = dc.GetTextExtent(L" ", 1).cx;
    dc.FillSolidRect(cell, ::GetSysColor(COLOR_BTNFACE));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(::GetSysColor(COLOR_BTNTEXT));
    CRect text = cell;
    text.DeflateRect(2 * blank, 0);
    dc.DrawText(CListCtrl::GetItemText(row, draw->iSubItem), text,
                DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
    dc.Draw3dRect(cell, ::GetSysColor(COLOR_BTNSHADOW), ::GetSysColor(COLOR_BTNFACE));
    cell.DeflateRect(1, 1);
    dc.Draw3dRect(cell, ::GetSysColor(COLOR_3DDKSHADOW), ::GetSysColor(COLOR_BTNHIGHLIGHT));
    dc.RestoreDC(saved);
    dc.Detach();
}
