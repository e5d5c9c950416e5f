// ItemHelpers.cpp - item selection, moves and deletion through the
// controls' standard messages.
#include "controls/ItemHelpers.h"

namespace {

// The messages of one control family.
struct Family
{
    UINT count, findPrefix, setSel, selChange;
};
constexpr Family kListBox{LB_GETCOUNT, LB_FINDSTRING, LB_SETCURSEL, LBN_SELCHANGE};
constexpr Family kComboBox{CB_GETCOUNT, CB_FINDSTRING, CB_SETCURSEL, CBN_SELCHANGE};

// The dialog hears of it as if the user had chosen; its own window goes as
// the lParam, as the suite's dialogs have always been told.
bool Select(HWND dialog, unsigned int id, int index, const Family& family)
{
    const HWND control = ::GetDlgItem(dialog, static_cast<int>(id));
    ::SendMessageW(control, family.setSel, static_cast<WPARAM>(index), 0);
    ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, family.selChange), reinterpret_cast<LPARAM>(dialog));
    return true;
}

bool SelectIndex(CWnd* dialog, unsigned int id, int index, const Family& family)
{
    const HWND parent = dialog == nullptr ? nullptr : dialog->GetSafeHwnd();
    const HWND control = parent == nullptr ? nullptr : ::GetDlgItem(parent, static_cast<int>(id));
    if (control == nullptr)
        return false;
    const int count = static_cast<int>(::SendMessageW(control, family.count, 0, 0));
    return index < count && Select(parent, id, index, family);
}

bool SelectText(CWnd* dialog, unsigned int id, const CString& text, const Family& family)
{
    const HWND parent = dialog == nullptr ? nullptr : dialog->GetSafeHwnd();
    const HWND control = parent == nullptr ? nullptr : ::GetDlgItem(parent, static_cast<int>(id));
    if (control == nullptr)
        return false;
    const int index = static_cast<int>(
        ::SendMessageW(control, family.findPrefix, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.GetString())));
    return index >= 0 && Select(parent, id, index, family);
}

// Moves the selected item's text by `step` (-1 up, +1 down).
bool MoveListBoxItem(CListBox& box, int step)
{
    const int from = box.GetCurSel();
    if (from < 0)
        return false;
    const int to = from + step;
    if (to < 0 || to >= box.GetCount())
    {
        QM::ListBoxSelItem(box, from);
        return false;
    }
    CString text;
    box.GetText(from, text);
    box.DeleteString(static_cast<UINT>(from));
    box.InsertString(to, text);
    QM::ListBoxSelItem(box, to);
    return true;
}

void FocusRow(CListCtrl& list, int row)
{
    list.SetItemState(row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    list.SetFocus();
    list.EnsureVisible(row, FALSE);
}

// Swaps the texts of every column of the first selected row with its
// neighbour `step` rows away.
bool MoveListRow(CListCtrl& list, int step)
{
    const int row = list.GetNextItem(-1, LVNI_SELECTED);
    if (row < 0)
        return false;
    const int other = row + step;
    if (other < 0 || other >= list.GetItemCount())
    {
        FocusRow(list, row);
        return false;
    }
    const CHeaderCtrl* header = list.GetHeaderCtrl();
    const int columns = header == nullptr ? 0 : header->GetItemCount();
    for (int column = 0; column < columns; ++column)
    {
        const CString mine = list.GetItemText(row, column);
        list.SetItemText(row, column, list.GetItemText(other, column));
        list.SetItemText(other, column, mine);
    }
    FocusRow(list, other);
    return true;
}

} // namespace

namespace QM {

bool ListBoxSelItem(CWnd* dialog, unsigned int id, int index)
{
    return SelectIndex(dialog, id, index, kListBox);
}

bool ListBoxSelItem(CWnd* dialog, unsigned int id, CString text)
{
    return SelectText(dialog, id, text, kListBox);
}

bool ListBoxSelItem(CListBox& box, int index)
{
    return ListBoxSelItem(box.GetParent(), static_cast<unsigned int>(box.GetDlgCtrlID()), index);
}

bool ListBoxSelItem(CListBox& box, CString text)
{
    return ListBoxSelItem(box.GetParent(), static_cast<unsigned int>(box.GetDlgCtrlID()), text);
}

bool ListBoxUpItem(CListBox& box)
{
    return MoveListBoxItem(box, -1);
}

bool ListBoxDownItem(CListBox& box)
{
    return MoveListBoxItem(box, +1);
}

bool ListBoxDelItem(CListBox& box)
{
    const int index = box.GetCurSel();
    if (index < 0)
        return false;
    box.DeleteString(static_cast<UINT>(index));
    const int count = box.GetCount();
    ListBoxSelItem(box, index < count ? index : count - 1);
    return true;
}

bool ListCtrlUpItem(CListCtrl& list)
{
    return MoveListRow(list, -1);
}

bool ListCtrlDownItem(CListCtrl& list)
{
    return MoveListRow(list, +1);
}

bool ListCtrlDelItem(CListCtrl& list)
{
    const int row = list.GetNextItem(-1, LVNI_SELECTED);
    if (row < 0)
        return false;
    list.DeleteItem(row);
    const int count = list.GetItemCount();
    if (count > 0)
        FocusRow(list, row < count ? row : count - 1);
    else
        list.SetFocus();  // the list keeps the keyboard even when empty
    return true;
}

bool ComboBoxSelItem(CWnd* dialog, unsigned int id, int index)
{
    return SelectIndex(dialog, id, index, kComboBox);
}

bool ComboBoxSelItem(CWnd* dialog, unsigned int id, CString text)
{
    return SelectText(dialog, id, text, kComboBox);
}

}  // namespace QM
