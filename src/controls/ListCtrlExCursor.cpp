// ListCtrlExCursor.cpp - the keys and clicks that move CListCtrlEx's cell
// cursor and start edits, and the messages its editors send it.
#include "controls/ListCtrlEx.h"
#include "controls/InPlaceDateTimeCtrl.h"

void CListCtrlEx::EditSubitem(int nItem, int realCol, CString text)
{
    if (Serial() && realCol == 0)
        return;
    NMLVDISPINFOW info{};
    info.hdr.hwndFrom = m_hWnd;
    info.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    info.hdr.code = LVN_BEGINLABELEDITW;
    info.item.mask = LVIF_TEXT;
    info.item.iItem = nItem;
    info.item.iSubItem = realCol - Serial();
    info.item.pszText = text.GetBuffer();
    info.item.cchTextMax = text.GetLength();
    ::SendMessageW(::GetParent(m_hWnd), WM_NOTIFY, info.hdr.idFrom, reinterpret_cast<LPARAM>(&info));
}

void CListCtrlEx::FocusSubitem(int nItem, int realCol)
{
    MakeColumnVisible(m_wndHeader.OrderToIndex(realCol));
    CRect row;
    if (GetItemRect(nItem, row, LVIR_BOUNDS))
        InvalidateRect(row);
}

// Enter edits the next column, F2 this one; both only while the list
// itself has the focus.
BOOL CListCtrlEx::PreTranslateMessage(MSG* msg)
{
    if (msg->message != WM_KEYDOWN || ::GetFocus() != m_hWnd || m_editor != nullptr)
        return CListCtrl::PreTranslateMessage(msg);
    m_bKeyboardMode = 1;
    if (msg->wParam != VK_RETURN && msg->wParam != VK_F2)
        return CListCtrl::PreTranslateMessage(msg);
    const int row = GetNextItem(-1, LVNI_FOCUSED);
    if (msg->wParam == VK_RETURN && ++m_nCurColumn > GetColumnCount() - 1)
        m_nCurColumn = GetColumnCount() - 1;
    else if (msg->wParam == VK_RETURN)
        FocusSubitem(row, m_nCurColumn);
    if (row != -1 && m_nCurColumn >= 0 && m_nCurColumn < GetColumnCount())
    {
        const int realCol = CurrentRealColumn();
        EditSubitem(row, realCol, GetItemText(row, realCol));
    }
    return msg->wParam == VK_RETURN;
}

// The new (row, column) the key leads to from (row, column), wrapping
// between rows; the cursor stays when nothing changes.
void CListCtrlEx::MoveKeyCursor(UINT nChar, int row, int column)
{
    const int count = GetItemCount(), columns = GetColumnCount();
    const bool ctrl = ::GetKeyState(VK_CONTROL) < 0, shift = ::GetKeyState(VK_SHIFT) < 0;
    const int first = Serial() && m_editor != nullptr ? 1 : 0;
    if (nChar == VK_TAB)
        nChar = shift ? VK_LEFT : VK_RIGHT;
    int newRow = row, newColumn = column;
    switch (nChar)
    {
    case VK_END: newRow = count - 1; newColumn = ctrl ? columns - 1 : column; break;
    case VK_HOME: newRow = 0; newColumn = ctrl ? first : column; break;
    case VK_LEFT:
        newColumn = column - 1 >= first ? column - 1 : columns - 1;
        newRow = column - 1 >= first ? row : (row > 0 ? row - 1 : count - 1);
        break;
    case VK_RIGHT:
        newColumn = column + 1 <= columns - 1 ? column + 1 : first;
        newRow = column + 1 <= columns - 1 ? row : (row + 1 < count ? row + 1 : 0);
        break;
    case VK_UP: newRow = row - 1 > 0 ? row - 1 : 0; break;
    case VK_DOWN: newRow = row + 1 < count ? row + 1 : count - 1; break;
    default: return;
    }
    if ((newRow == row && newColumn == column) || newRow < 0)
        return;
    m_nCurColumn = newColumn;
    if (m_editor == nullptr)
    {
        SetItemState(newRow, LVIS_FOCUSED | LVIS_SELECTED, LVIS_FOCUSED | LVIS_SELECTED);
        FocusSubitem(newRow, newColumn);
        return;
    }
    DestroyInPlaceWnd();
    SetItemState(newRow, LVIS_FOCUSED, LVIS_FOCUSED);
    // The cursor walks display positions; the editor opens on the real
    // column shown there.
    EditSubitem(newRow, CurrentRealColumn(), GetItemText(newRow, newColumn));
}

// A refused edit keeps the editor open and the key does nothing.
void CListCtrlEx::OnKeyDown(UINT nChar, UINT repeat, UINT flags)
{
    if (m_editor != nullptr && !ValideData(0))
        return;
    const int row = GetNextItem(-1, LVNI_FOCUSED);
    const int column = m_nCurColumn;
    CListCtrl::OnKeyDown(nChar, repeat, flags);
    MoveKeyCursor(nChar, row, column);
}

// An open edit is stored (or refused, swallowing the click) before the
// click selects; then the parent is asked to edit the clicked cell.
void CListCtrlEx::OnLButtonDown(UINT flags, CPoint point)
{
    if (m_editor != nullptr && !ValideData(1))
        return;
    LVHITTESTINFO hit{};
    hit.pt = point;
    SubItemHitTest(&hit);
    m_nCurColumn = IndexToOrder(hit.iSubItem);
    MakeColumnVisible(hit.iSubItem);
    if (m_nCurColumn == -1 || hit.iItem == -1)
        return;
    m_bKeyboardMode = 0;
    CListCtrl::OnLButtonDown(flags, point);
    if (Serial() && hit.iSubItem == 0)
        return;
    EditSubitem(hit.iItem, hit.iSubItem, CListCtrl::GetItemText(hit.iItem, hit.iSubItem));
}

// Taking the focus makes an open editor validate or cancel first.
void CListCtrlEx::OnHScroll(UINT code, UINT pos, CScrollBar* bar)
{
    if (::GetFocus() != m_hWnd)
        SetFocus();
    CListCtrl::OnHScroll(code, pos, bar);
}

void CListCtrlEx::OnVScroll(UINT code, UINT pos, CScrollBar* bar)
{
    if (::GetFocus() != m_hWnd)
        SetFocus();
    CListCtrl::OnVScroll(code, pos, bar);
}

// The real column under the cursor, whose display position is m_nCurColumn.
int CListCtrlEx::CurrentRealColumn() const
{
    return m_wndHeader.GetSafeHwnd() != nullptr && m_nCurColumn >= 0 ? m_wndHeader.OrderToIndex(m_nCurColumn)
                                                                     : m_nCurColumn;
}

// The record names the cell being edited: the one the editor was opened
// on, which is the focused row and the current column's real column
// whenever the user opened it. The parent sees the record filled by the
// list; the text it leaves there is what the cell gets.
void CListCtrlEx::FillRecord(INPLACEMSG& record) const
{
    const bool placed = m_editor != nullptr && m_nEditItem >= 0;
    record.iItem = placed ? m_nEditItem : GetNextItem(-1, LVNI_FOCUSED);
    record.iSubItem = placed ? m_nEditColumn : CurrentRealColumn();
    record.pWnd = m_editor.get();
}

int CListCtrlEx::ValideData(int close, INPLACEMSG* record)
{
    INPLACEMSG own;
    if (record == nullptr)
    {
        record = &own;
        FillRecord(own);
        if (auto* date = dynamic_cast<CInPlaceDateTimeCtrl*>(m_editor.get()))
            own.strText = date->GetCellText();
        else if (m_editor != nullptr)
            m_editor->GetWindowText(own.strText);
    }
    const int item = record->iItem, column = record->iSubItem;
    if (::SendMessageW(::GetParent(m_hWnd), WM_INPLACE_CTRL, IPN_VALIDATE, reinterpret_cast<LPARAM>(record)) != 0)
        return 0;
    CListCtrl::SetItemText(item, column, record->strText);
    if (close)
    {
        DestroyInPlaceWnd();
        GetParent()->SetFocus();
    }
    return 1;
}

// What an editor says while the list itself acts on it is not the user's:
// a validation is answered as refused (0: nothing is stored, the editor
// does nothing more), a cancel or a close is already under way.
LRESULT CListCtrlEx::OnInPlaceCtrlMsg(WPARAM code, LPARAM lParam)
{
    if (code == kFreeRetired)
    {
        FreeRetiredEditors();
        return 0;
    }
    INPLACEMSG* record = reinterpret_cast<INPLACEMSG*>(lParam);
    if (record == nullptr)
        return 0;
    FillRecord(*record);
    switch (code)
    {
    case IPN_BUTTON:
        ::SendMessageW(::GetParent(m_hWnd), WM_INPLACE_CTRL, IPN_BUTTON, lParam);
        return 0;
    case IPN_VALIDATE:
        return m_bListActing ? 0 : ValideData(1, record);
    case IPN_CLOSED:
        if (m_bListActing || m_editor == nullptr)
            return 0;
        RetireEditor(false);
        GetParent()->SetFocus();
        return 0;
    case IPN_CANCEL:
        if (m_bListActing)
            return 0;
        DestroyInPlaceWnd();
        GetParent()->SetFocus();
        return 0;
    default:
        return 0;
    }
}

void CListCtrlEx::OnDestroy()
{
    DestroyInPlaceWnd();
    CListCtrl::OnDestroy();
}
