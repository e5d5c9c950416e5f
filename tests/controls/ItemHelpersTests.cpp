// The item helpers behind a host dialog's buttons, clicked through the real
// input queue.
#include <QMUtil.h>

#include "support/HostDialog.h"
#include "support/Input.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

enum : WORD { IDC_LIST = 101, IDC_COMBO, IDC_REPORT, IDC_UP, IDC_DOWN, IDC_DEL, IDC_ROW_UP, IDC_ROW_DOWN, IDC_ROW_DEL };

// The three kinds of control and a button per helper, calling it as an
// application's handler would.
std::vector<DialogItem> Controls()
{
    std::vector<DialogItem> items{{L"LISTBOX", L"", WS_BORDER | WS_VSCROLL, IDC_LIST, 5, 5, 80, 60},
                                  {L"COMBOBOX", L"", CBS_DROPDOWNLIST | WS_VSCROLL, IDC_COMBO, 5, 70, 80, 60},
                                  {WC_LISTVIEWW, L"", LVS_REPORT | LVS_SHOWSELALWAYS | WS_BORDER, IDC_REPORT, 90, 5, 120, 60}};
    for (WORD id = IDC_UP; id <= IDC_ROW_DEL; ++id)
        items.push_back({L"BUTTON", L"B", BS_PUSHBUTTON, id, short(5 + 27 * (id - IDC_UP)), 90, 25, 14});
    return items;
}

struct Fixture
{
    Fixture()
    {
        host.onInit = [this](HWND dialog) {
            box.SubclassDlgItem(IDC_LIST, CWnd::FromHandle(dialog));
            report.SubclassDlgItem(IDC_REPORT, CWnd::FromHandle(dialog));
            report.InsertColumn(0, L"名称", LVCFMT_LEFT, 60);
            report.InsertColumn(1, L"值", LVCFMT_LEFT, 50);
        };
        host.onMessage = [this](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
            using Helper = bool (*)(Fixture&);
            static const Helper helpers[] = {
                [](Fixture& f) { return QM::ListBoxUpItem(f.box); },     [](Fixture& f) { return QM::ListBoxDownItem(f.box); },
                [](Fixture& f) { return QM::ListBoxDelItem(f.box); },    [](Fixture& f) { return QM::ListCtrlUpItem(f.report); },
                [](Fixture& f) { return QM::ListCtrlDownItem(f.report); }, [](Fixture& f) { return QM::ListCtrlDelItem(f.report); }};
            if (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED && LOWORD(wParam) >= IDC_UP &&
                LOWORD(wParam) <= IDC_ROW_DEL)
                results.push_back(helpers[LOWORD(wParam) - IDC_UP](*this));
            return false;
        };
    }

    std::wstring Items() const
    {
        std::wstring all;
        for (int i = 0; i < box.GetCount(); ++i)
        {
            CString text;
            box.GetText(i, text);
            all += (i ? L"," : L"") + std::wstring(text.GetString());
        }
        return all;
    }

    HostDialog host{Controls()};
    CListBox box;
    CListCtrl report;
    std::vector<bool> results;
};

struct BoxRow
{
    const wchar_t* items;  // before, comma-separated
    int selected;
    WORD button;
    bool result;
    const wchar_t* after;
    int selectedAfter;
};

const BoxRow kBoxRows[] = {
    {L"a,b,c", 1, IDC_UP, true, L"b,a,c", 0},
    {L"a,b,c", 0, IDC_UP, false, L"a,b,c", 0},       // the top stays selected
    {L"a,b,c", 1, IDC_DOWN, true, L"a,c,b", 2},
    {L"a,b,c", 2, IDC_DOWN, false, L"a,b,c", 2},
    {L"a,b,c", 2, IDC_DEL, true, L"a,b", 1},         // the last went: the one above
    {L"a,b,c", 0, IDC_DEL, true, L"b,c", 0},
    {L"a", 0, IDC_DEL, true, L"", -1},               // empty, nothing selected
};

TEST(ItemHelpers, ListBoxButtonsMoveAndDeleteTheSelectionAndTellTheDialog)
{
    Fixture f;
    ASSERT_TRUE(f.host.RunModal([&](HostDialog& h) {
        for (const BoxRow& row : kBoxRows)
        {
            h.OnDialogThread([&] {
                f.box.ResetContent();
                std::wstring items = row.items;
                for (size_t at = 0; at < items.size(); at += 2)
                    f.box.AddString(items.substr(at, 1).c_str());
                f.box.SetCurSel(row.selected);
            });
            h.ClearReceived();
            f.results.clear();
            input::Click(h.Item(row.button));
            h.Settle();
            SCOPED_TRACE(testing::Message() << row.items << " button " << row.button);
            EXPECT_EQ(f.results, std::vector<bool>{row.result});
            EXPECT_EQ(f.Items(), row.after);
            EXPECT_EQ(f.box.GetCurSel(), row.selectedAfter);
            // The helper reports its selection change from the dialog, even -1 after the last went.
            const ExpectedMsg expected[] = {{WM_COMMAND, kOptional, MAKEWPARAM(IDC_LIST, LBN_KILLFOCUS), 0},
                                            {WM_COMMAND, 0, MAKEWPARAM(row.button, BN_CLICKED), 0},
                                            {WM_COMMAND, kLParamIsHost, MAKEWPARAM(IDC_LIST, LBN_SELCHANGE), 0},
                                            {0, 0, 0, 0}};
            EXPECT_TRUE(SequenceMatches(h.Received(), expected, h.Window()));
        }
    }));
}

TEST(ItemHelpers, ListCtrlButtonsSwapTextsOfTheFirstSelectedRow)
{
    Fixture f;
    std::vector<std::wstring> states;
    std::vector<bool> focused;  // the list has the keyboard afterwards
    auto snapshot = [&] {
        focused.push_back(::GetFocus() == f.report.GetSafeHwnd());
        std::wstring all;
        for (int r = 0; r < f.report.GetItemCount(); ++r)
        {
            all += std::wstring(f.report.GetItemText(r, 0).GetString()) + f.report.GetItemText(r, 1).GetString();
            all += f.report.GetItemState(r, LVIS_SELECTED) ? L"* " : L" ";
        }
        states.push_back(all);
    };
    ASSERT_TRUE(f.host.RunModal([&](HostDialog& h) {
        h.OnDialogThread([&] {
            const wchar_t* names[] = {L"甲", L"乙", L"丙"};
            for (int r = 0; r < 3; ++r)
            {
                f.report.InsertItem(r, names[r]);
                f.report.SetItemText(r, 1, std::to_wstring(r + 1).c_str());
            }
            f.report.SetItemState(1, LVIS_SELECTED, LVIS_SELECTED);
            f.report.SetItemState(2, LVIS_SELECTED, LVIS_SELECTED);
        });
        for (WORD button : {IDC_ROW_UP, IDC_ROW_UP, IDC_ROW_DOWN, IDC_ROW_DEL, IDC_ROW_DEL, IDC_ROW_DEL, IDC_ROW_DEL})
        {
            input::Click(h.Item(button));
            h.Settle();
            h.OnDialogThread(snapshot);
        }
    }));
    EXPECT_EQ(f.results, (std::vector<bool>{true, false, true, true, true, true, false}));
    // The upper row is selected and the old one still is; row 0 cannot go up.
    EXPECT_EQ(states, (std::vector<std::wstring>{L"乙2* 甲1* 丙3* ", L"乙2* 甲1* 丙3* ", L"甲1* 乙2* 丙3* ",
                                                 L"乙2* 丙3* ", L"丙3* ", L"", L""}));
    EXPECT_EQ(focused, (std::vector<bool>{true, true, true, true, true, true, false}));  // the last row deleted too
}

TEST(ItemHelpers, SelectingByIndexOrTextReportsToTheDialog)
{
    Fixture f;
    std::vector<bool> got;
    ASSERT_TRUE(f.host.RunModal([&](HostDialog& h) {
        h.OnDialogThread([&] {
            for (const wchar_t* text : {L"Wall", L"墙体", L"Window"})
            {
                f.box.AddString(text);
                ::SendMessageW(h.Item(IDC_COMBO), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
            }
        });
        h.ClearReceived();
        h.OnDialogThread([&] {
            CWnd* dialog = CWnd::FromHandle(h.Window());
            got = {QM::ListBoxSelItem(dialog, IDC_LIST, CString(L"win")),
                   QM::ListBoxSelItem(f.box, CString(L"墙")),
                   QM::ListBoxSelItem(f.box, -1),
                   QM::ListBoxSelItem(f.box, 3),
                   QM::ListBoxSelItem(f.box, CString(L"door")),
                   QM::ComboBoxSelItem(dialog, IDC_COMBO, CString(L"WALL")),
                   QM::ComboBoxSelItem(dialog, IDC_COMBO, 2),
                   QM::ComboBoxSelItem(dialog, 999, 0),
                   QM::ListBoxSelItem(nullptr, IDC_LIST, 0)};
        });
    }));
    EXPECT_EQ(got, (std::vector<bool>{true, true, true, false, false, true, true, false, false}));
    const ExpectedMsg list = {WM_COMMAND, kLParamIsHost, MAKEWPARAM(IDC_LIST, LBN_SELCHANGE), 0},
                      combo = {WM_COMMAND, kLParamIsHost, MAKEWPARAM(IDC_COMBO, CBN_SELCHANGE), 0};
    const ExpectedMsg kSelections[] = {list, list, list, combo, combo, {}};
    EXPECT_TRUE(SequenceMatches(f.host.Received(), kSelections, f.host.Window()));
}

} // namespace
