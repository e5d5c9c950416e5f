// page_header.cpp - a report list whose flat header fills the list's width
// (auto-size mode), keeps its first column fixed, shows an image on the
// second and a sort mark on the third; columns move by dragging.
#include "Gallery.h"

namespace {

enum : WORD { IDC_FLATLIST = 1601 };

CListCtrl& List()
{
    static CListCtrl list;
    return list;
}

CFlatHeaderCtrl& Header()
{
    static CFlatHeaderCtrl header;
    return header;
}

void SetStyle(int column, UINT style, int minimum, const wchar_t* tip)
{
    HDITEMEX ex;
    Header().GetItemEx(column, &ex);
    ex.nStyle = style;
    ex.iMinWidth = minimum;
    ex.strToolTip = tip;
    Header().SetItemEx(column, &ex);
}

void ShowImage(int column)
{
    static const HIMAGELIST images = [] {
        HIMAGELIST list = ImageList_Create(16, 16, ILC_COLOR32 | ILC_MASK, 1, 0);
        ImageList_AddIcon(list, ::LoadIconW(nullptr, IDI_INFORMATION));
        return list;
    }();
    Header().SetImageList(images);
    HDITEMW item{};
    item.mask = HDI_FORMAT | HDI_IMAGE;
    Header().GetItem(column, &item);
    item.fmt |= HDF_IMAGE;
    item.iImage = 0;
    Header().SetItem(column, &item);
}

void Fill(HWND dialog)
{
    List().SubclassDlgItem(IDC_FLATLIST, CWnd::FromHandle(dialog));
    List().SetExtendedStyle(LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES | LVS_EX_HEADERDRAGDROP);
    Header().SubclassWindow(List().GetHeaderCtrl()->GetSafeHwnd());
    List().InsertColumn(0, L"序号", LVCFMT_LEFT, 40);
    List().InsertColumn(1, L"构件", LVCFMT_LEFT, 90);
    List().InsertColumn(2, L"数量", LVCFMT_RIGHT, 60);
    List().InsertColumn(3, L"备注", LVCFMT_CENTER, 90);
    const wchar_t* rows[][4] = {{L"1", L"基础", L"30", L"C30"}, {L"2", L"柱", L"12", L""},
                                {L"3", L"梁", L"8", L"预制"}, {L"4", L"板", L"4", L""}};
    for (int r = 0; r < 4; ++r)
    {
        List().InsertItem(r, rows[r][0]);
        for (int c = 1; c < 4; ++c)
            List().SetItemText(r, c, rows[r][c]);
    }
    SetStyle(0, HDF_EX_FIXEDWIDTH, 0, L"序号列宽度固定");
    SetStyle(1, 0, 60, L"构件名称");
    SetStyle(2, HDF_EX_INCLUDESORT, 50, L"按数量降序");
    SetStyle(3, 0, 40, L"备注");
    ShowImage(1);
    Header().SetSortColumn(2, FALSE);
    Header().SetProperty(FH_PROPERTY_ENABLETOOLTIPS, 1);
    Header().SetProperty(FH_PROPERTY_AUTOSIZE, 1);
}

const bool registered = gallery::AddPage({
    L"平面表头：固定列、图标、排序标记、自动填满",
    276,
    96,
    {{WC_LISTVIEWW, L"", LVS_REPORT | LVS_SHOWSELALWAYS | WS_BORDER | WS_TABSTOP, IDC_FLATLIST, 8, 2, 260, 76}},
    Fill,
    nullptr});

} // namespace
