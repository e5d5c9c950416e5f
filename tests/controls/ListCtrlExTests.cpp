// The editable list in a host dialog that answers as the suite's
// applications do: an editor per column on LVN_BEGINLABELEDITW, "bad"
// refused on IPN_VALIDATE, a drawing's path filled in on IPN_BUTTON.
#include <QMUtil.h>

#include "support/HostDialog.h"
#include "support/Input.h"
#include "support/Screenshot.h"
#include "support/Throws.h"

#include <gtest/gtest.h>

#include <string>

namespace {

enum : WORD { IDC_GRID = 101, IDC_OK = 102 };
enum UserColumn { NAME, COUNT, MATERIAL, DATE, DRAWING, NOTE };  // real column = user + 1
const wchar_t* const kPath = L"D:\\图纸\\梁.dwg";
const SYSTEMTIME kDay{2024, 3, 0, 5, 0, 0, 0, 0};

struct Grid
{
    HostDialog host{{{WC_LISTVIEWW, L"", LVS_REPORT | WS_BORDER | WS_TABSTOP, IDC_GRID, 5, 5, 330, 110},
                     {L"BUTTON", L"OK", BS_PUSHBUTTON | WS_TABSTOP, IDC_OK, 5, 120, 40, 14}},
                    340, 140};
    CListCtrlEx list;
    std::wstring begins;  // "row,column " of every LVN_BEGINLABELEDITW

    Grid()
    {
        host.onInit = [this](HWND dialog) { Fill(dialog); };
        host.onMessage = [this](UINT message, WPARAM code, LPARAM lParam, LRESULT& result) {
            if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lParam)->code == LVN_BEGINLABELEDITW)
            {
                const LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(lParam)->item;
                begins += std::to_wstring(item.iItem) + L"," + std::to_wstring(item.iSubItem) + L" ";
                OpenEditor(item.iItem, item.iSubItem);
            }
            if (message != WM_INPLACE_CTRL)
                return false;
            INPLACEMSG* record = reinterpret_cast<INPLACEMSG*>(lParam);
            if (code == IPN_BUTTON)
                record->strText = kPath;
            result = code == IPN_VALIDATE && record->strText == L"bad" ? 1 : 0;
            return true;
        };
    }

    void Fill(HWND dialog)
    {
        list.SubclassDlgItem(IDC_GRID, CWnd::FromHandle(dialog));
        list.ModifyStyleEx(LVEX_SERIALNO, 0);
        const wchar_t* headings[] = {L"名称", L"数量", L"材料", L"日期", L"图纸", L"备注"};
        for (int column = 0; column < 6; ++column)
            list.InsertColumn(column, headings[column], LVCFMT_LEFT, 70);
        const wchar_t* rows[][3] = {{L"梁", L"12", L"钢"}, {L"柱", L"3", L"铝"}, {L"板", L"100", L"铜"}, {L"墙", L"3", L"钢"}};
        for (int row = 0; row < 4; ++row)
        {
            list.InsertItem(row, rows[row][0]);
            list.SetItemText(row, COUNT, rows[row][1]);
            list.SetItemText(row, MATERIAL, rows[row][2]);
        }
        list.SetSort(1 + NAME, SORT_STRING);
        list.SetSort(1 + COUNT, SORT_NUMBER);
    }

    void OpenEditor(int row, int column)
    {
        if (column == NAME || column == NOTE)
            list.ShowInPlaceEdit(row, column);
        else if (column == COUNT)
        {
            CInPlaceEdit* edit = list.ShowInPlaceEdit(row, column);
            edit->SetNumeric(1);
            edit->SetRange(0.0f, 10.0f);
        }
        else if (column == DRAWING)
            list.ShowInPlaceEditEx(row, column);
        else if (column == MATERIAL)
        {
            CInPlaceComboBox* combo = list.ShowInPlaceComboBox(row, column);
            for (const wchar_t* material : {L"钢", L"铝", L"铜"})
                combo->AddString(material);
            combo->SelectString(-1, list.GetItemText(row, column));
        }
        else if (column == DATE)
            list.ShowInPlaceDateTimeCtrl(row, column)->SetTime(&kDay);
    }

    HWND List() const { return list.GetSafeHwnd(); }
    HWND Editor(UINT id = 10001) const { return ::GetDlgItem(List(), static_cast<int>(id)); }

    // Runs `act` on the dialog's thread and lets the queue empty.
    template <class Act>
    void Then(Act act)
    {
        host.OnDialogThread(act);
        host.Settle();
    }

    // Clicks the middle of a cell given by user column.
    void ClickCell(int row, int column)
    {
        CRect cell;
        host.OnDialogThread([&] {
            if (column < 0)
                list.GetItemRect(row, cell, LVIR_LABEL);
            else
                list.GetSubItemRect(row, column + 1, LVIR_BOUNDS, cell);
        });
        input::Click(List(), cell.CenterPoint().x, cell.CenterPoint().y);
        host.Settle();
    }

    void ClickHeader(int realColumn)
    {
        const HWND header = ListView_GetHeader(List());
        CRect item;
        Header_GetItemRect(header, realColumn, &item);
        input::Click(header, item.CenterPoint().x, item.CenterPoint().y);
        host.Settle();
        ::Sleep(::GetDoubleClickTime());  // the next click is no double-click
    }

    // One user column of every row, joined by blanks.
    std::wstring Column(int column)
    {
        std::wstring texts;
        host.OnDialogThread([&] {
            for (int row = 0; row < list.GetItemCount(); ++row)
                texts += std::wstring(list.GetItemText(row, column)) + L" ";
        });
        return texts;
    }

    std::wstring Serials() { return Column(-1); }
};

// The editing talk the dialog got (IPN_CLOSED and IPN_CANCEL stay with the
// list) and the OK button's clicks.
std::vector<ReceivedMsg> EditingTalk(const HostDialog& host)
{
    std::vector<ReceivedMsg> talk;
    for (const ReceivedMsg& msg : host.Received())
        if (msg.message == WM_INPLACE_CTRL || (msg.message == WM_NOTIFY && msg.code == LVN_BEGINLABELEDITW) ||
            (msg.message == WM_COMMAND && msg.wParam == MAKEWPARAM(IDC_OK, BN_CLICKED)))
            talk.push_back({msg.message, msg.wParam, 0, msg.code});
    return talk;
}

// Runs `check` on each row in a grid of its own.
template <class Row, size_t N, class Check>
void EachInFreshGrid(const Row (&rows)[N], Check check)
{
    for (const Row& row : rows)
    {
        Grid grid;
        ASSERT_TRUE(grid.host.RunModal([&](HostDialog& h) { check(grid, h, row); }));
    }
}

const ExpectedMsg B = {WM_NOTIFY, 0, IDC_GRID, static_cast<UINT>(LVN_BEGINLABELEDITW)};
const ExpectedMsg V = {WM_INPLACE_CTRL, 0, IPN_VALIDATE, 0};
const ExpectedMsg K = {WM_INPLACE_CTRL, 0, IPN_BUTTON, 0};
const ExpectedMsg O = {WM_COMMAND, 0, MAKEWPARAM(IDC_OK, BN_CLICKED), 0};
const ExpectedMsg E = {0, 0, 0, 0};

struct EditCase
{
    const char* name;
    void (*act)(Grid&);
    ExpectedMsg talk[8];
    const wchar_t *begins, *names;  // cells the parent was asked to edit; user column NAME afterwards
    int column;                     // and this user column
    const wchar_t* texts;
    bool open;                      // an editor is still open
};

const EditCase kEdits[] = {
    {"Enter accepts", [](Grid& g) { g.ClickCell(0, NAME); input::Type(L"C30"); input::Key(VK_RETURN); },
     {B, V, E}, L"0,0 ", L"C30 柱 板 墙 ", COUNT, L"12 3 100 3 ", false},
    {"Enter in the list edits the next column", [](Grid& g) { g.ClickCell(1, -1); input::Key(VK_RETURN); input::Type(L"E"); input::Key(VK_RETURN); },
     {B, V, E}, L"1,0 ", L"梁 E 板 墙 ", COUNT, L"12 3 100 3 ", false},
    {"a refused text stays open", [](Grid& g) { g.ClickCell(1, NAME); input::Type(L"bad"); input::Key(VK_RETURN); },
     {B, V, E}, L"1,0 ", L"梁 柱 板 墙 ", COUNT, L"12 3 100 3 ", true},
    {"Escape cancels", [](Grid& g) { g.ClickCell(0, COUNT); input::Type(L"77"); input::Key(VK_ESCAPE); },
     {B, E}, L"0,1 ", L"梁 柱 板 墙 ", COUNT, L"12 3 100 3 ", false},
    {"Tab moves on", [](Grid& g) { g.ClickCell(2, NAME); input::Type(L"P1"); input::Key(VK_TAB); input::Type(L"9"); input::Key(VK_RETURN); },
     {B, V, B, V, E}, L"2,0 2,1 ", L"梁 柱 P1 墙 ", COUNT, L"12 3 9 3 ", false},
    {"Tab wraps to the next row", [](Grid& g) { g.ClickCell(0, NOTE); input::Type(L"n"); input::Key(VK_TAB); input::Key(VK_ESCAPE); },
     {B, V, B, E}, L"0,5 1,0 ", L"梁 柱 板 墙 ", NOTE, L"n    ", false},
    {"a click on another row stores first", [](Grid& g) { g.ClickCell(0, NAME); input::Type(L"Q2"); g.ClickCell(3, COUNT); input::Key(VK_ESCAPE); },
     {B, V, B, E}, L"0,0 3,1 ", L"Q2 柱 板 墙 ", COUNT, L"12 3 100 3 ", false},
    {"a click elsewhere stores, and still clicks", [](Grid& g) { g.ClickCell(0, NAME); input::Type(L"Z"); input::Click(g.host.Item(IDC_OK), 5, 5); },
     {B, V, O, E}, L"0,0 ", L"Z 柱 板 墙 ", COUNT, L"12 3 100 3 ", false},
    {"a combo choice", [](Grid& g) { g.ClickCell(1, MATERIAL); input::Key(VK_F4); input::Key(VK_DOWN); input::Key(VK_RETURN); },
     {B, V, E}, L"1,2 ", L"梁 柱 板 墙 ", MATERIAL, L"钢 铜 铜 钢 ", false},
    {"a date", [](Grid& g) { g.ClickCell(3, DATE); input::Key(VK_RETURN); },
     {B, V, E}, L"3,3 ", L"梁 柱 板 墙 ", DATE, L"   2024年03月05日 ", false},
    {"a date left by Up stores the cell's format", [](Grid& g) { g.ClickCell(3, DATE); input::Key(VK_UP); input::Key(VK_ESCAPE); },
     {B, V, B, E}, L"3,3 2,3 ", L"梁 柱 板 墙 ", DATE, L"   2024年03月05日 ", false},
    {"after a column drag the edited cell takes the text", [](Grid& g) {
         g.host.OnDialogThread([&] {
             int order[] = {0, 1, 3, 2, 4, 5, 6};   // 材料 (real 3) shown before 数量 (real 2)
             ListView_SetColumnOrderArray(g.List(), 7, order);
         });
         g.ClickCell(0, NAME); input::Key(VK_TAB); input::Key(VK_ESCAPE); g.ClickCell(0, COUNT); input::Type(L"7");
         input::Key(VK_RETURN); },
     {B, V, B, B, V, E}, L"0,0 0,2 0,1 ", L"梁 柱 板 墙 ", COUNT, L"7 3 100 3 ", false},
    {"a combo left by Tab stores once", [](Grid& g) { g.ClickCell(1, MATERIAL); input::Key(VK_TAB); input::Key(VK_ESCAPE); },
     {B, V, B, E}, L"1,2 1,3 ", L"梁 柱 板 墙 ", DATE, L"    ", false},
    {"a combo left by Up stores once", [](Grid& g) { g.ClickCell(1, MATERIAL); input::Key(VK_UP); input::Key(VK_ESCAPE); },
     {B, V, B, E}, L"1,2 0,2 ", L"梁 柱 板 墙 ", MATERIAL, L"钢 铝 铜 钢 ", false},
    {"a date left by Tab stores once", [](Grid& g) { g.ClickCell(3, DATE); input::Key(VK_TAB); input::Key(VK_ESCAPE); },
     {B, V, B, E}, L"3,3 3,4 ", L"梁 柱 板 墙 ", DRAWING, L"    ", false},
    {"a refusal, then a corrected text", [](Grid& g) {
         g.ClickCell(1, NAME); input::Type(L"bad"); input::Key(VK_RETURN); g.host.Settle();
         input::Click(g.Editor(), 2, 5); input::Type(L"ok"); input::Key(VK_RETURN); },
     {B, V, V, E}, L"1,0 ", L"梁 okbad 板 墙 ", COUNT, L"12 3 100 3 ", false},
    {"a refusal, then Escape", [](Grid& g) {
         g.ClickCell(1, NAME); input::Type(L"bad"); input::Key(VK_RETURN); g.host.Settle();
         input::Click(g.Editor(), 2, 5); input::Key(VK_ESCAPE); },
     {B, V, E}, L"1,0 ", L"梁 柱 板 墙 ", COUNT, L"12 3 100 3 ", false},
    {"WM_CLOSE on an edit stores it", [](Grid& g) {
         g.ClickCell(0, NAME); input::Type(L"W"); g.host.Settle(); ::PostMessageW(g.Editor(), WM_CLOSE, 0, 0); },
     {B, V, E}, L"0,0 ", L"W 柱 板 墙 ", COUNT, L"12 3 100 3 ", false},
    {"WM_CLOSE after a refusal: the list forgets the edit", [](Grid& g) {
         g.ClickCell(0, NAME); input::Type(L"bad"); input::Key(VK_RETURN); g.host.Settle();
         ::PostMessageW(g.Editor(), WM_CLOSE, 0, 0); g.host.Settle(); g.ClickCell(2, COUNT); input::Key(VK_ESCAPE); },
     {B, V, B, E}, L"0,0 2,1 ", L"梁 柱 板 墙 ", COUNT, L"12 3 100 3 ", false},
    {"an edit destroyed by another party after a refusal is forgotten", [](Grid& g) {
         g.ClickCell(0, NAME); input::Type(L"bad"); input::Key(VK_RETURN); g.host.Settle();
         g.Then([&] { ::DestroyWindow(g.Editor()); }); g.ClickCell(2, NAME); input::Key(VK_ESCAPE); },
     {B, V, B, E}, L"0,0 2,0 ", L"梁 柱 板 墙 ", COUNT, L"12 3 100 3 ", false},
    {"a date destroyed by another party stores its focus loss", [](Grid& g) {
         g.ClickCell(0, DATE); g.Then([&] { ::DestroyWindow(g.Editor(10004)); }); g.ClickCell(2, NAME); input::Key(VK_ESCAPE); },
     {B, V, B, E}, L"0,3 2,0 ", L"梁 柱 板 墙 ", DATE, L"2024年03月05日    ", false},
    {"Tab into a zero-width column keeps both cells", [](Grid& g) {
         g.Then([&] { g.list.SetColumnWidth(1 + MATERIAL, 0); });
         g.ClickCell(0, COUNT); input::Type(L"5"); input::Key(VK_TAB); },
     {B, V, B, E}, L"0,1 0,2 ", L"梁 柱 板 墙 ", MATERIAL, L"钢 铝 铜 钢 ", true},
    {"an editor out of range changes no cell", [](Grid& g) {
         g.ClickCell(0, NAME); input::Key(VK_ESCAPE);
         g.Then([&] { g.list.ShowInPlaceEdit(99, NAME)->SetRange(0.0f, 1.0f); }); },
     {B, E}, L"0,0 ", L"梁 柱 板 墙 ", COUNT, L"12 3 100 3 ", true},
    {"the browse button", [](Grid& g) {
         g.ClickCell(2, DRAWING);
         input::Click(::GetDlgItem(g.List(), 10003));
         g.host.Settle();
         input::Key(VK_RETURN); },
     {B, K, V, E}, L"2,4 ", L"梁 柱 板 墙 ", DRAWING, L"  D:\\图纸\\梁.dwg  ", false},
};

TEST(ListCtrlEx, EditsEndAsTheParentAnswers)
{
    EachInFreshGrid(kEdits, [](Grid& grid, HostDialog& h, const EditCase& c) {
        SCOPED_TRACE(c.name);
        c.act(grid);
        h.Settle();
        EXPECT_TRUE(SequenceMatches(EditingTalk(h), c.talk, h.Window()));
        EXPECT_EQ(grid.begins, c.begins);
        EXPECT_EQ(grid.Column(NAME), c.names);
        EXPECT_EQ(grid.Column(c.column), c.texts);
        EXPECT_EQ(grid.Serials(), L"1 2 3 4 ");
        bool open = false;
        h.OnDialogThread([&] { open = grid.list.GetIpPlaceWnd() != nullptr; });
        EXPECT_EQ(open, c.open);
    });
}

struct TypingCase
{
    int column;
    const wchar_t *typed, *keys, *shown, *begins;  // keys: virtual keys after typing; shown: the editor's text
};

const TypingCase kTyping[] = {
    {NAME, L"a b", L"", L"ab", L"1,0 "},            // no blanks
    {NAME, L"a#(", L"", L"a", L"1,0 "},             // these share the keys' codes
    {COUNT, L"12", L"", L"1", L"1,1 "},             // numeric 0...10: 12 is undone
    {COUNT, L"-", L"", L"-", L"1,1 "},              // a lone sign or point waits
    {COUNT, L".", L"", L".", L"1,1 "},
    {NAME, L"xy", L"\x25", L"xy", L"1,0 "},         // Left inside the text moves the caret
    {NAME, L"x", L"\x25\x25", L"", L"1,0 0,5 "},    // at its start the cell cursor, wrapping
    {NAME, L"x", L"\x24", L"梁", L"1,0 0,0 "},       // Home: first row
};

TEST(ListCtrlEx, TypingIntoAnEdit)
{
    EachInFreshGrid(kTyping, [](Grid& grid, HostDialog& h, const TypingCase& c) {
        grid.ClickCell(1, c.column);
        input::Type(c.typed);
        for (const wchar_t* key = c.keys; *key != L'\0'; ++key)
            input::Key(*key);
        h.Settle();
        CString shown;
        h.OnDialogThread([&] { grid.list.GetIpPlaceWnd()->GetWindowText(shown); });
        EXPECT_EQ(std::wstring(shown), c.shown) << c.column << " " << testing::PrintToString(std::wstring(c.typed));
        EXPECT_EQ(grid.begins, c.begins);
    });
}

// The cell cursor's keys while an editor is open; VK_SHIFT and VK_CONTROL
// are held for the key after them.
struct CursorCase
{
    int row, column;
    WORD keys[3];
    const wchar_t* begins;
};

const CursorCase kCursor[] = {
    {1, COUNT, {VK_SHIFT, VK_TAB}, L"1,1 1,0 "},
    {1, NAME, {VK_SHIFT, VK_TAB}, L"1,0 0,5 "},    // wraps to the row above
    {1, COUNT, {VK_UP}, L"1,1 0,1 "},
    {3, COUNT, {VK_DOWN}, L"3,1 "},                // the last row stays
    {1, COUNT, {VK_END}, L"1,1 3,1 "},
    {2, COUNT, {VK_CONTROL, VK_HOME}, L"2,1 0,0 "},  // the serial column opens nothing
    {1, COUNT, {VK_CONTROL, VK_END}, L"1,1 3,5 "},
    {1, -1, {VK_RIGHT, VK_F2}, L"1,0 "},           // from the list: F2 edits the current cell
};

TEST(ListCtrlEx, CursorKeysMoveTheEditor)
{
    EachInFreshGrid(kCursor, [](Grid& grid, HostDialog& h, const CursorCase& c) {
        grid.ClickCell(c.row, c.column);
        for (const WORD* key = c.keys; key != std::end(c.keys) && *key != 0; ++key)
        {
            if (*key == VK_SHIFT || *key == VK_CONTROL)
                input::Chord(key[0], key[1]), ++key;
            else
                input::Key(*key);
        }
        h.Settle();
        EXPECT_EQ(grid.begins, c.begins);
        EXPECT_EQ(grid.Column(NAME), L"梁 柱 板 墙 ");
    });
}

struct SortCase
{
    int realColumn, clicks;
    const wchar_t* names;
};

const SortCase kSorts[] = {
    {1 + NAME, 1, L"墙 板 柱 梁 "},  // by code unit
    {1 + NAME, 2, L"梁 柱 板 墙 "},
    {1 + NAME, 3, L"墙 板 柱 梁 "},
    {1 + COUNT, 1, L"柱 墙 梁 板 "},  // 3 = 3 keeps the rows' order
    {1 + COUNT, 2, L"板 梁 柱 墙 "},
    {1 + MATERIAL, 1, L"梁 柱 板 墙 "},  // no sort rule
    {0, 1, L"梁 柱 板 墙 "},             // the serial column never sorts
};

TEST(ListCtrlEx, HeaderClicksSortByTheColumnsRuleAndKeepTheNumbers)
{
    EachInFreshGrid(kSorts, [](Grid& grid, HostDialog&, const SortCase& c) {
        for (int click = 0; click < c.clicks; ++click)
            grid.ClickHeader(c.realColumn);
        EXPECT_EQ(grid.Column(NAME), c.names) << c.realColumn << " x" << c.clicks;
        EXPECT_EQ(grid.Serials(), L"1 2 3 4 ");
    });
}

// A caller's own rule: the texts by code unit, equal ones by the rows'
// indexes from before the sort.
int CALLBACK ByTextThenRow(LPARAM a, LPARAM b, LPARAM info)
{
    const SORTINFO* sort = reinterpret_cast<const SORTINFO*>(info);
    const int order = sort->pList->CListCtrl::GetItemText(static_cast<int>(a), sort->nColumn)
                          .Compare(sort->pList->CListCtrl::GetItemText(static_cast<int>(b), sort->nColumn));
    return order != 0 ? order : static_cast<int>(a - b);
}

struct RowCase
{
    const char* name;
    int (*act)(CListCtrlEx&);
    int result;
    const wchar_t *names, *serials;
};

const RowCase kRows[] = {
    {"insert in the middle", [](CListCtrlEx& l) { return l.InsertItem(1, L"新"); }, 1, L"梁 新 柱 板 墙 ", L"1 2 3 4 5 "},
    {"delete", [](CListCtrlEx& l) { return l.DeleteItem(1); }, 1, L"梁 板 墙 ", L"1 2 3 "},
    {"DelItem of the selection", [](CListCtrlEx& l) { l.SetItemState(2, LVIS_SELECTED, LVIS_SELECTED); return l.DelItem(-1); }, 1, L"梁 柱 墙 ", L"1 2 3 "},
    {"DelItem without a selection", [](CListCtrlEx& l) { return l.DelItem(-1); }, -1, L"梁 柱 板 墙 ", L"1 2 3 4 "},
    {"UpItem", [](CListCtrlEx& l) { return l.UpItem(2); }, 2, L"梁 板 柱 墙 ", L"1 2 3 4 "},
    {"UpItem at the top", [](CListCtrlEx& l) { return l.UpItem(0); }, 0, L"梁 柱 板 墙 ", L"1 2 3 4 "},
    {"DownItem", [](CListCtrlEx& l) { return l.DownItem(0); }, 0, L"柱 梁 板 墙 ", L"1 2 3 4 "},
    {"DownItem at the bottom", [](CListCtrlEx& l) { return l.DownItem(3); }, 3, L"梁 柱 板 墙 ", L"1 2 3 4 "},
    {"rows outside", [](CListCtrlEx& l) { return l.UpItem(4) + l.DownItem(-2) + l.DelItem(9); }, -3, L"梁 柱 板 墙 ", L"1 2 3 4 "},
    {"sort descending by number", [](CListCtrlEx& l) { return l.SortColumn(2, SORT_NUMBER, FALSE); }, 0, L"板 梁 柱 墙 ", L"1 2 3 4 "},
    {"columns outside the table", [](CListCtrlEx& l) { return l.SetSort(99, SORT_STRING) + l.SortColumn(99, TRUE); }, 0, L"梁 柱 板 墙 ", L"1 2 3 4 "},
    {"a callback sort gets the rows from before it", [](CListCtrlEx& l) {
         return l.SortColumn(1 + MATERIAL, &ByTextThenRow, TRUE); }, 1, L"梁 墙 板 柱 ", L"1 4 3 2 "},  // numbers move with the rows here
    {"a null compare function changes nothing", [](CListCtrlEx& l) { return l.SetSort(1, nullptr) + l.SortColumn(1, TRUE); }, 1, L"墙 板 柱 梁 ", L"1 2 3 4 "},
};

TEST(ListCtrlEx, RowsMoveTheirTextsAndTheNumbersStay)
{
    EachInFreshGrid(kRows, [](Grid& grid, HostDialog& h, const RowCase& c) {
        int result = 0;
        h.OnDialogThread([&] { result = c.act(grid.list); });
        EXPECT_EQ(result, c.result) << c.name;
        EXPECT_EQ(grid.Column(NAME), c.names) << c.name;
        EXPECT_EQ(grid.Serials(), c.serials) << c.name;
    });
}

TEST(ListCtrlEx, EditorsColumnsBadArgumentsTheTieRuleAndDestruction)
{
    Grid grid;
    ASSERT_TRUE(grid.host.RunModal([&](HostDialog& h) {
        h.OnDialogThread([&] {
            CListCtrlEx& list = grid.list;
            EXPECT_TRUE(qmtest::ThrowsInvalidArg([&] { list.SetSort(-1, SORT_STRING); }));
            EXPECT_TRUE(qmtest::ThrowsInvalidArg([&] { list.SortColumn(-1, TRUE); }));
            list.SetItemText(0, NOTE, L"x");
            // A caller's own record of the three fields; what lies after them is not the list's.
            const CString after[4] = {L"9", L"9", L"9", L"9"};
            const auto compare = [&](int a, int b, int column) {
                struct { CListCtrlEx* list; int column, ascending; const CString* after; } record{&list, column, TRUE,
                                                                                                  after};
                return CListCtrlEx::CompareNumber(a, b, reinterpret_cast<LPARAM>(&record));
            };
            EXPECT_EQ(compare(1, 3, 2) + compare(3, 1, 2), -2);   // 3 and 3
            EXPECT_EQ(compare(0, 1, 1 + NOTE), -1);               // "x" counts as 0
            EXPECT_EQ(compare(2, 1, 2), 1);
            CInPlaceEdit* edit = list.ShowInPlaceEdit(0, COUNT);
            edit->SetRange(0.0f, 10.0f);
            const std::pair<const wchar_t*, int> checks[] = {{L"+", 3}, {L"abc", 2}, {L"12", 1}, {L"5", 0}, {L"", 2}};
            for (const auto& check : checks)
                EXPECT_EQ(edit->CheckText(check.first), check.second) << testing::PrintToString(std::wstring(check.first));
            edit->SetWindowText(L"-.");
            EXPECT_EQ(edit->CheckValue(), 4);
            edit->SetValue(2.5f);
            edit->SetValue(3.0f);
            CString text;
            edit->GetWindowText(text);
            EXPECT_EQ(text, L"3.0");  // decimals never shrink
            EXPECT_EQ(list.ShowInPlaceEdit(0, NAME)->GetDlgCtrlID(), 10001);
            EXPECT_EQ(list.ShowInPlaceEditEx(0, DRAWING)->GetDlgCtrlID(), 10001);
            EXPECT_NE(list.GetDlgItem(10003), nullptr);  // its browse button
            EXPECT_EQ(list.ShowInPlaceComboBox(0, MATERIAL)->GetDlgCtrlID(), 10002);
            EXPECT_EQ(list.ShowInPlaceDateTimeCtrl(0, DATE)->GetDlgCtrlID(), 10004);
            CFlatHeaderCtrl* header = static_cast<CFlatHeaderCtrl*>(CWnd::FromHandlePermanent(ListView_GetHeader(grid.List())));
            HDITEMEX serial, name;
            ASSERT_TRUE(header != nullptr && header->GetItemEx(0, &serial) && header->GetItemEx(1, &name));
            EXPECT_EQ(serial.nStyle & 5u, 5u);  // fitted and fixed
            EXPECT_EQ(serial.strToolTip, L"序号");
            EXPECT_EQ(name.strToolTip, L"名称");
            list.SetColumnWidth(1 + NOTE, 3);
            EXPECT_FALSE(list.ShowInPlaceEdit(0, NOTE)->IsWindowVisible());  // too narrow
            EXPECT_NE(list.GetIpPlaceWnd(), nullptr);
            // Destroying the list with an editor open leaves nothing behind.
            ASSERT_NE(list.ShowInPlaceComboBox(0, MATERIAL), nullptr);
            ::DestroyWindow(grid.List());
            EXPECT_EQ(list.GetIpPlaceWnd(), nullptr);
        });
    }));
}

// Keyboard use shows the cell cursor as a sunken button-face cell; the
// mouse does not. The serial column opens no editor.
TEST(ListCtrlEx, TheCurrentCellIsSunkenOnlyInKeyboardMode)
{
    Grid grid;
    ASSERT_TRUE(grid.host.RunModal([&](HostDialog& h) {
        grid.ClickCell(1, -1);
        CRect cell, bounds;
        h.OnDialogThread([&] {
            grid.list.GetItemRect(2, cell, LVIR_LABEL);
            grid.list.GetItemRect(2, bounds, LVIR_BOUNDS);
        });
        cell.top = bounds.top;
        cell.bottom = bounds.bottom;
        const auto at = [&](int dx, int dy) { return Screenshot(h.Window()).PixelOf(grid.List(), cell.left + dx, cell.top + dy); };
        const int middleX = cell.Width() / 2, middleY = cell.Height() / 2;
        EXPECT_NE(at(0, 0), ::GetSysColor(COLOR_BTNSHADOW));
        input::Key(VK_DOWN);
        h.Settle();
        EXPECT_EQ(at(0, 0), ::GetSysColor(COLOR_BTNSHADOW));
        EXPECT_EQ(at(1, 1), ::GetSysColor(COLOR_3DDKSHADOW));
        EXPECT_EQ(at(cell.Width() - 1, cell.Height() - 1), ::GetSysColor(COLOR_BTNFACE));
        EXPECT_EQ(at(cell.Width() - 2, cell.Height() - 2), ::GetSysColor(COLOR_BTNHIGHLIGHT));
        EXPECT_EQ(at(middleX, middleY), ::GetSysColor(COLOR_BTNFACE));
        EXPECT_NE(at(middleX, middleY - cell.Height()), ::GetSysColor(COLOR_BTNFACE));
    }));
}

} // namespace
