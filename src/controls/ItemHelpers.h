// ItemHelpers.h - select, move and delete the items of list boxes, combo
// boxes and report lists in dialogs, telling the dialog about a changed
// selection as if the user had made it.
//
//   QM::ListBoxSelItem(this, IDC_LAYERS, L"墙");     // first item beginning so
//   QM::ListBoxUpItem(m_layers);                     // one place up, reselected
//   QM::ListCtrlDelItem(m_rows);                     // first selected row
//
// A selection sends the dialog WM_COMMAND with MAKEWPARAM(id, 1) (LBN_ /
// CBN_SELCHANGE) and, as the lParam, the dialog's own window rather than
// the control's: handlers must not rely on that argument. A null dialog or
// a missing control gives false. Selecting by index does not reject a
// negative index: it clears the selection and counts as success. Moves
// carry only the texts: item data (and a list row's image and states) stay
// where they were.
#pragma once
#include "platform/win/Controls.h"

namespace QM {

QM_API bool ListBoxSelItem(CWnd* dialog, unsigned int id, int index);
// The first item beginning with `text`, ignoring case.
QM_API bool ListBoxSelItem(CWnd* dialog, unsigned int id, CString text);
QM_API bool ListBoxSelItem(CListBox& box, int index);
QM_API bool ListBoxSelItem(CListBox& box, CString text);
// False with no selection; at the top (bottom) the item is selected again
// and false returned.
QM_API bool ListBoxUpItem(CListBox& box);
QM_API bool ListBoxDownItem(CListBox& box);
// Selects the same index afterwards, or the one above when the last item
// went; true also when the box is left empty.
QM_API bool ListBoxDelItem(CListBox& box);

// The first selected row; false with none. Row 0 (the last row) is only
// focused, selected and shown again, and false returned.
QM_API bool ListCtrlUpItem(CListCtrl& list);
QM_API bool ListCtrlDownItem(CListCtrl& list);
QM_API bool ListCtrlDelItem(CListCtrl& list);

QM_API bool ComboBoxSelItem(CWnd* dialog, unsigned int id, int index);
QM_API bool ComboBoxSelItem(CWnd* dialog, unsigned int id, CString text);

}  // namespace QM
