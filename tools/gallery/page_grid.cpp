// page_grid.cpp - an editable grid: serial numbers, a text column, a
// numeric column, a material chosen in a combo box, a date and a drawing
// file picked with the browse button. The page answers the list as an
// application does: it opens an editor per column and checks the numbers.
#include "Gallery.h"

#include <commdlg.h>

namespace {

enum : WORD { IDC_GRID = 1401, IDC_GRID_STATUS };
enum UserColumn { NAME, COUNT, MATERIAL, DATE, DRAWING };

CListCtrlEx& Grid()
{
    static CListCtrlEx list;
    return list;
}

void Fill(HWND dialog)
{
    CListCtrlEx& grid = Grid();
    grid.SubclassDlgItem(IDC_GRID, CWnd::FromHandle(dialog));
    grid.ModifyStyleEx(LVEX_SERIALNO, 0);
    const wchar_t* headings[] = {L"构件", L"数量", L"材料", L"日期", L"图纸"};
    const int widths[] = {60, 45, 50, 110, 120};
    for (int column = NAME; column <= DRAWING; ++column)
        grid.InsertColumn(column, headings[column], LVCFMT_LEFT, widths[column]);
    const wchar_t* rows[][5] = {{L"柱", L"12", L"钢", L"2024年03月05日", L"D:\\图纸\\柱.dwg"},
                                {L"梁", L"30", L"混凝土", L"2024年03月06日", L"D:\\图纸\\梁.dwg"},
                                {L"板", L"8", L"混凝土", L"2024年03月08日", L""}};
    for (int row = 0; row < 3; ++row)
    {
        grid.InsertItem(row, rows[row][NAME]);
        for (int column = COUNT; column <= DRAWING; ++column)
            grid.SetItemText(row, column, rows[row][column]);
    }
    grid.SetSort(1 + NAME, SORT_STRING);
    grid.SetSort(1 + COUNT, SORT_NUMBER);
}

void OpenEditor(int row, int column)
{
    CListCtrlEx& grid = Grid();
    if (column == MATERIAL)
    {
        CInPlaceComboBox* combo = grid.ShowInPlaceComboBox(row, column);
        for (const wchar_t* material : {L"钢", L"混凝土", L"木"})
            combo->AddString(material);
        combo->SelectString(-1, grid.GetItemText(row, column));
        return;
    }
    if (column == DATE)
    {
        grid.ShowInPlaceDateTimeCtrl(row, column);
        return;
    }
    CInPlaceEdit* edit = column == DRAWING ? grid.ShowInPlaceEditEx(row, column) : grid.ShowInPlaceEdit(row, column);
    if (column == COUNT)
        edit->SetNumeric(1);
}

bool PickDrawing(HWND dialog, INPLACEMSG& record)
{
    wchar_t path[MAX_PATH] = L"";
    OPENFILENAMEW ofn{};
    ofn.lStructSize = sizeof(ofn);
    ofn.hwndOwner = dialog;
    ofn.lpstrFilter = L"图纸 (*.dwg)\0*.dwg\0所有文件\0*.*\0";
    ofn.lpstrFile = path;
    ofn.nMaxFile = MAX_PATH;
    ofn.Flags = OFN_FILEMUSTEXIST;
    if (::GetOpenFileNameW(&ofn))
        record.strText = path;
    return true;
}

// A count must be a whole number of pieces; anything else stays open.
bool Validate(HWND dialog, const INPLACEMSG& record, LRESULT& result)
{
    const bool countColumn = record.iSubItem == 1 + COUNT;
    wchar_t* end = nullptr;
    const long value = std::wcstol(record.strText, &end, 10);
    result = countColumn && (end == nullptr || *end != L'\0' || value < 0 || record.strText.IsEmpty()) ? 1 : 0;
    ::SetDlgItemTextW(dialog, IDC_GRID_STATUS, result != 0 ? L"数量须为整数" : L"");
    return true;
}

bool Message(HWND dialog, UINT message, WPARAM code, LPARAM lParam, LRESULT& result)
{
    if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lParam)->code == LVN_BEGINLABELEDITW &&
        reinterpret_cast<NMHDR*>(lParam)->idFrom == IDC_GRID)
    {
        const LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(lParam)->item;
        OpenEditor(item.iItem, item.iSubItem);
        return true;
    }
    if (message != WM_INPLACE_CTRL)
        return false;
    INPLACEMSG& record = *reinterpret_cast<INPLACEMSG*>(lParam);
    result = 0;
    if (code == IPN_BUTTON)
        return PickDrawing(dialog, record);
    return code == IPN_VALIDATE ? Validate(dialog, record, result) : true;
}

// The picture shows the drawing column being edited, browse button and all.
void Pose(HWND)
{
    Grid().SetItemState(2, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    if (CInPlaceEdit* edit = Grid().ShowInPlaceEditEx(2, DRAWING))
        edit->SetWindowText(L"D:\\图纸\\板.dwg");
}

const bool registered = gallery::AddPage({
    L"可编辑列表 (CListCtrlEx)",
    276,
    100,
    {{WC_LISTVIEWW, L"", LVS_REPORT | LVS_SHOWSELALWAYS | WS_BORDER | WS_TABSTOP, IDC_GRID, 8, 2, 260, 70},
     {L"STATIC", L"单击单元格编辑；Tab、方向键移动；单击表头排序", SS_LEFT, IDC_GRID_STATUS, 8, 76, 260, 10}},
    Fill,
    nullptr,
    0,
    Message,
    Pose});

} // namespace
