// page_lists.cpp - a list box, a combo box and a report list, moved and
// trimmed by the item helpers behind their Up, Down and Delete buttons.
#include "Gallery.h"

namespace {

enum : WORD
{
    IDC_LAYERS = 1201, IDC_LAYER_UP, IDC_LAYER_DOWN, IDC_LAYER_DEL, IDC_STYLE,
    IDC_ROWS, IDC_ROW_UP, IDC_ROW_DOWN, IDC_ROW_DEL, IDC_STATUS
};

CListBox& Layers()
{
    static CListBox box;
    return box;
}

CListCtrl& Rows()
{
    static CListCtrl list;
    return list;
}

void Fill(HWND dialog)
{
    CWnd* parent = CWnd::FromHandle(dialog);
    Layers().SubclassDlgItem(IDC_LAYERS, parent);
    for (const wchar_t* layer : {L"墙体", L"门窗", L"楼梯", L"标注", L"轴线"})
        Layers().AddString(layer);
    for (const wchar_t* style : {L"实线", L"虚线", L"点划线"})
        ::SendDlgItemMessageW(dialog, IDC_STYLE, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(style));
    Rows().SubclassDlgItem(IDC_ROWS, parent);
    Rows().SetExtendedStyle(LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    Rows().InsertColumn(0, L"构件", LVCFMT_LEFT, 70);
    Rows().InsertColumn(1, L"数量", LVCFMT_RIGHT, 50);
    const wchar_t* parts[][2] = {{L"柱", L"12"}, {L"梁", L"30"}, {L"板", L"8"}, {L"基础", L"4"}};
    for (int r = 0; r < 4; ++r)
    {
        Rows().InsertItem(r, parts[r][0]);
        Rows().SetItemText(r, 1, parts[r][1]);
    }
    QM::ListBoxSelItem(parent, IDC_LAYERS, CString(L"门"));
    QM::ComboBoxSelItem(parent, IDC_STYLE, CString(L"虚"));
    Rows().SetItemState(1, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

void Report(HWND dialog, bool moved)
{
    ::SetDlgItemTextW(dialog, IDC_STATUS, moved ? L"已完成" : L"不能再移动");
}

bool Command(HWND dialog, WORD id, WORD code)
{
    if (code == LBN_SELCHANGE && id == IDC_LAYERS)
    {
        CString layer;
        Layers().GetText(Layers().GetCurSel(), layer);
        ::SetDlgItemTextW(dialog, IDC_STATUS, L"当前图层: " + layer);
        return true;
    }
    if (code != BN_CLICKED)
        return false;
    switch (id)
    {
    case IDC_LAYER_UP: Report(dialog, QM::ListBoxUpItem(Layers())); return true;
    case IDC_LAYER_DOWN: Report(dialog, QM::ListBoxDownItem(Layers())); return true;
    case IDC_LAYER_DEL: Report(dialog, QM::ListBoxDelItem(Layers())); return true;
    case IDC_ROW_UP: Report(dialog, QM::ListCtrlUpItem(Rows())); return true;
    case IDC_ROW_DOWN: Report(dialog, QM::ListCtrlDownItem(Rows())); return true;
    case IDC_ROW_DEL: Report(dialog, QM::ListCtrlDelItem(Rows())); return true;
    default: return false;
    }
}

const bool registered = gallery::AddPage({
    L"列表框、组合框与列表控件",
    276,
    118,
    {{L"LISTBOX", L"", LBS_NOTIFY | WS_BORDER | WS_VSCROLL | WS_TABSTOP, IDC_LAYERS, 8, 2, 70, 62},
     {L"BUTTON", L"上移", BS_PUSHBUTTON | WS_TABSTOP, IDC_LAYER_UP, 8, 68, 22, 14},
     {L"BUTTON", L"下移", BS_PUSHBUTTON | WS_TABSTOP, IDC_LAYER_DOWN, 32, 68, 22, 14},
     {L"BUTTON", L"删除", BS_PUSHBUTTON | WS_TABSTOP, IDC_LAYER_DEL, 56, 68, 22, 14},
     {L"COMBOBOX", L"", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP, IDC_STYLE, 8, 86, 70, 60},
     {WC_LISTVIEWW, L"", LVS_REPORT | LVS_SHOWSELALWAYS | WS_BORDER | WS_TABSTOP, IDC_ROWS, 90, 2, 176, 62},
     {L"BUTTON", L"上移", BS_PUSHBUTTON | WS_TABSTOP, IDC_ROW_UP, 90, 68, 22, 14},
     {L"BUTTON", L"下移", BS_PUSHBUTTON | WS_TABSTOP, IDC_ROW_DOWN, 114, 68, 22, 14},
     {L"BUTTON", L"删除", BS_PUSHBUTTON | WS_TABSTOP, IDC_ROW_DEL, 138, 68, 22, 14},
     {L"STATIC", L"", SS_LEFT, IDC_STATUS, 90, 88, 176, 10}},
    Fill,
    Command});

} // namespace
