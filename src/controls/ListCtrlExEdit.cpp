// ListCtrlExEdit.cpp - the cell cursor and cell editing of CListCtrlEx:
// opening editors over cells, the keys and clicks that move between cells,
// and the protocol the editors speak with the list and its parent.
#include "controls/ListCtrlEx.h"

#include "platform/win/WndRouting.h"

#include <algorithm>
#include <vector>

namespace {

const UINT kEditId = 10001;
const UINT kComboId = 10002;
const UINT kButtonId = 10003;
const UINT kDateId = 10004;

// Sets a flag for a scope and puts back what it was, however the scope
// ends.
class FlagHeld
{
public:
    explicit FlagHeld(bool& flag) : m_flag(flag), m_was(flag) { flag = true; }
    ~FlagHeld() { m_flag = m_was; }
    FlagHeld(const FlagHeld&) = delete;
    FlagHeld& operator=(const FlagHeld&) = delete;

private:
    bool& m_flag;
    const bool m_was;
};

} // namespace

int CListCtrlEx::DestroyInPlaceWnd()
{
    RetireEditor(true);
    return 1;
}

void CListCtrlEx::RetireEditor(bool destroyWindow)
{
    std::unique_ptr<CWnd> editor = std::move(m_editor);
    m_nEditItem = m_nEditColumn = -1;
    if (editor == nullptr)
        return;
    if (destroyWindow)
    {
        FlagHeld acting(m_bListActing);
        editor->DestroyWindow();
    }
    m_retired.push_back(std::move(editor));
    if (m_hWnd != nullptr)
        ::PostMessageW(m_hWnd, WM_INPLACE_CTRL, kFreeRetired, 0);
}

// An editor whose handler still runs (a modal box in a nested loop, say)
// waits for the next round.
void CListCtrlEx::FreeRetiredEditors()
{
    std::vector<std::unique_ptr<CWnd>> busy;
    std::vector<std::unique_ptr<CWnd>> retired = std::move(m_retired);
    m_retired.clear();
    for (std::unique_ptr<CWnd>& editor : retired)
        if (CWndRouting::Routing(editor.get()))
            busy.push_back(std::move(editor));
    retired.clear();
    for (std::unique_ptr<CWnd>& editor : busy)
        m_retired.push_back(std::move(editor));
    if (!m_retired.empty() && m_hWnd != nullptr)
        ::PostMessageW(m_hWnd, WM_INPLACE_CTRL, kFreeRetired, 0);
}

// An editor is placed with the list's own focus moves held off: hiding a
// focused editor gives the list the focus, and that focus loss is not the
// user leaving the cell.
int CListCtrlEx::ShowInPlaceCtrl(int nItem, int realCol, CWnd* editor)
{
    if (m_editor.get() != editor)
    {
        RetireEditor(true);
        m_editor.reset(editor);
    }
    m_nEditItem = nItem;
    m_nEditColumn = realCol;
    if (editor != nullptr && !PositionControl(editor, nItem, realCol))
    {
        FlagHeld acting(m_bListActing);
        editor->ShowWindow(SW_HIDE);
    }
    return 1;
}

// The old editor goes before the new one takes the focus, so its focus
// loss is not taken for the user leaving it.
template <class Editor>
Editor* CListCtrlEx::CreateEditor(DWORD style, UINT id)
{
    RetireEditor(true);
    FlagHeld acting(m_bListActing);
    auto editor = std::make_unique<Editor>();
    if (!editor->Create(style, CRect(0, 0, 1, 1), this, id))
        return nullptr;
    return editor.release();
}

CInPlaceEdit* CListCtrlEx::ShowInPlaceEdit(int nItem, int nSubItem)
{
    const int realCol = nSubItem + Serial();
    CInPlaceEdit* edit = CreateEditor<CInPlaceEdit>(0x508000C4, kEditId);
    if (edit == nullptr)
        return nullptr;
    ShowInPlaceCtrl(nItem, realCol, edit);
    edit->FitToText();
    edit->SetWindowText(CListCtrl::GetItemText(nItem, realCol));
    edit->SetSel(0, -1);
    edit->SendMessage(EM_SCROLLCARET);
    return edit;
}

CInPlaceEdit* CListCtrlEx::ShowInPlaceEditEx(int nItem, int nSubItem)
{
    const int realCol = nSubItem + Serial();
    CInPlaceEdit* edit = CreateEditor<CInPlaceEdit>(0x50800080, kEditId);
    if (edit == nullptr)
        return nullptr;
    CInPlaceButton* button = new CInPlaceButton(nItem, realCol);
    if (!button->Create(L"...", 0x50000000, CRect(0, 0, 1, 1), this, kButtonId))
    {
        delete button;
        button = nullptr;
    }
    edit->LinkButton(button);
    ShowInPlaceCtrl(nItem, realCol, edit);
    if (button != nullptr && !edit->IsWindowVisible())
        button->ShowWindow(SW_HIDE);
    edit->FitToText();
    edit->SetWindowText(CListCtrl::GetItemText(nItem, realCol));
    edit->SetSel(0, -1);
    edit->SendMessage(EM_SCROLLCARET);
    if (button != nullptr)
    {
        CRect rect;
        edit->GetWindowRect(rect);
        ScreenToClient(rect);
        button->MoveWindow(rect.right, rect.top, rect.Height(), rect.Height());
    }
    return edit;
}

// The combo's window height is the room its drop list gets.
CInPlaceComboBox* CListCtrlEx::ShowInPlaceComboBox(int nItem, int nSubItem)
{
    const int realCol = nSubItem + Serial();
    CInPlaceComboBox* combo = CreateEditor<CInPlaceComboBox>(0x50200803, kComboId);
    if (combo == nullptr)
        return nullptr;
    ShowInPlaceCtrl(nItem, realCol, combo);
    CRect rect, row;
    combo->GetWindowRect(rect);
    ScreenToClient(rect);
    GetItemRect(nItem, row, LVIR_BOUNDS);
    combo->MoveWindow(rect.left, rect.top, rect.Width(), 96 * row.Height());
    return combo;
}

CInPlaceDateTimeCtrl* CListCtrlEx::ShowInPlaceDateTimeCtrl(int nItem, int nSubItem)
{
    const int realCol = nSubItem + Serial();
    CInPlaceDateTimeCtrl* date = CreateEditor<CInPlaceDateTimeCtrl>(0x50010024, kDateId);
    if (date == nullptr)
        return nullptr;
    ShowInPlaceCtrl(nItem, realCol, date);
    CRect rect, row;
    date->GetWindowRect(rect);
    ScreenToClient(rect);
    GetItemRect(nItem, row, LVIR_BOUNDS);
    date->MoveWindow(rect.left, rect.top, rect.Width(), row.Height() * 3 / 2);
    if (date->IsWindowVisible())  // a hidden picker would take keys unseen
        date->SetFocus();
    return date;
}

// Sum of the widths of the columns shown left of `realCol`.
int CListCtrlEx::WidthBefore(int realCol) const
{
    const int count = GetColumnCount();
    std::vector<int> order(static_cast<size_t>(count > 0 ? count : 0));
    if (count <= 0 || !m_wndHeader.GetOrderArray(order.data(), count))
        return 0;
    int sum = 0;
    for (int position = 0; position < count && order[static_cast<size_t>(position)] != realCol; ++position)
        sum += GetColumnWidth(order[static_cast<size_t>(position)]);
    return sum;
}

int CListCtrlEx::IndexToOrder(int realCol)
{
    const int count = GetColumnCount();
    std::vector<int> order(static_cast<size_t>(count > 0 ? count : 0));
    if (count <= 0 || !m_wndHeader.GetOrderArray(order.data(), count))
        return -1;
    const auto found = std::find(order.begin(), order.end(), realCol);
    return found == order.end() ? -1 : static_cast<int>(found - order.begin());
}

void CListCtrlEx::MakeColumnVisible(int realCol)
{
    if (realCol < 0)
        return;
    CRect bounds, client;
    GetItemRect(0, bounds, LVIR_BOUNDS);
    GetClientRect(client);
    const int left = bounds.left + WidthBefore(realCol);
    if (left >= 0 && left + GetColumnWidth(realCol) <= client.right)
        return;
    Scroll(CSize(left, 0));
}

// A column scrolled out of sight is brought to the left edge first.
int CListCtrlEx::PositionControl(CWnd* editor, int nItem, int realCol)
{
    if (!EnsureVisible(nItem, TRUE))
        return 0;
    if (editor == nullptr || realCol >= GetColumnCount() || GetColumnWidth(m_wndHeader.OrderToIndex(realCol)) < 5)
        return 0;
    const int offset = WidthBefore(realCol);
    const int width = GetColumnWidth(realCol);
    CRect bounds, client;
    GetItemRect(nItem, bounds, LVIR_BOUNDS);
    GetClientRect(client);
    int left = bounds.left + offset;
    if (left < 0 || left + width > client.right)
    {
        Scroll(CSize(left, 0));
        left = 0;
    }
    editor->MoveWindow(left, bounds.top, std::min<int>(client.right, left + width) - left, bounds.Height());
    return 1;
}
