// The numeric edit box in a host dialog, typed into through the real input queue.
#include <QMUtil.h>

#include "support/HostDialog.h"
#include "support/Input.h"

#include <gtest/gtest.h>

#include <cstring>

#include <string>
#include <utility>

namespace {

enum : WORD { IDC_NUM = 101, IDC_OTHER = 102 };

// The numeric edit and a plain edit to move the focus to.
struct NumHost
{
    HostDialog host{{{L"EDIT", L"", ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, IDC_NUM, 10, 10, 100, 14},
                     {L"EDIT", L"", ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, IDC_OTHER, 10, 40, 100, 14}}};
    CNumEditEx edit;

    NumHost()
    {
        host.onInit = [this](HWND dialog) { ASSERT_TRUE(edit.SubclassDlgItem(IDC_NUM, CWnd::FromHandle(dialog))); };
    }
};

struct TypingRow
{
    const wchar_t *def, *min, *max;
    int integerOnly;
    const wchar_t *start, *typed, *shown, *left;  // the text before (caret at 0), typed, after, once the focus left
};

const TypingRow kTyping[] = {
    {L"50", L"10", L"100", 0, L"", L"500", L"50", L"50"},        // 5 and 50 pass, 500 is over
    {L"50", L"10", L"100", 0, L"", L"5", L"5", L"50"},           // below the minimum while typing only
    {L"12", L"0", L"100", 0, L"12", L"a", L"12", L"12"},         // a letter never gets in
    {L"7", L"-10", L"10", 0, L"", L"-", L"-", L"7"},             // a lone sign waits, then the default
    {L"7", L"0", L"10", 0, L"", L".", L".", L"7"},               // so does a lone point
    {L"7", L"-10", L"10", 0, L"", L"-.5", L"-.5", L"-.5"},
    {L"3", L"0", L"100", 1, L"", L"1.", L"1", L"1"},             // integer only: no point
    {L"3", L"0", L"100", 0, L"", L"1 2", L"12", L"12"},          // blanks are swallowed
    {L"1", L"0", L"1e38", 0, L"", L"9e39", L"9e3", L"9e3"},      // past the float range is out of range
};

TEST(NumEditEx, TypedTextIsFilteredAndCheckedWhenTheFocusLeaves)
{
    NumHost t;
    CNumEditEx& edit = t.edit;
    ASSERT_TRUE(t.host.RunModal([&](HostDialog& h) {
        for (const TypingRow& row : kTyping)
        {
            h.OnDialogThread([&] {
                edit.m_bIntegerOnly = row.integerOnly;
                edit.SetAllValue(row.def, row.min, row.max);
                edit.SetWindowText(row.start);
                edit.SetSel(0, 0);
            });
            h.Focus(IDC_NUM);
            input::Type(row.typed);
            h.Settle();
            SCOPED_TRACE(testing::PrintToString(std::wstring(row.typed)));
            EXPECT_EQ(h.Text(IDC_NUM), row.shown);
            DWORD start = 0, end = 0;
            ::SendMessageW(h.Item(IDC_NUM), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
            EXPECT_TRUE(start == end && end == wcslen(row.shown)) << "caret " << start << "-" << end;
            h.Focus(IDC_OTHER);
            EXPECT_EQ(h.Text(IDC_NUM), row.left);
        }
    }));
}

// Pasted text (Ctrl+V) is checked at once and when the focus leaves: only
// a finite decimal number in range stays, and GetValue reads what is shown.
struct PasteRow
{
    const wchar_t *min, *pasted, *left;
    double value;
};

const PasteRow kPastes[] = {
    {L"10", L"nan", L"50", 50}, {L"10", L"inf", L"50", 50}, {L"10", L"0x20", L"50", 50},
    {L"10", L"0x1p4", L"50", 50}, {L"10", L"1e999", L"50", 50}, {L"10", L"2e1", L"2e1", 20},
    {L"0", L"1.5", L"1.5", 1.5},  // not reset
};

TEST(NumEditEx, PastedTextIsCheckedWhenTheFocusLeaves)
{
    NumHost t;
    ASSERT_TRUE(t.host.RunModal([&](HostDialog& h) {
        for (const PasteRow& row : kPastes)
        {
            SCOPED_TRACE(testing::PrintToString(std::wstring(row.pasted)));
            h.OnDialogThread([&] {
                t.edit.SetAllValue(L"50", row.min, L"100");
                t.edit.SetSel(0, -1);
                ASSERT_TRUE(::OpenClipboard(h.Window()));
                ::EmptyClipboard();
                const size_t bytes = (wcslen(row.pasted) + 1) * sizeof(wchar_t);
                HGLOBAL text = ::GlobalAlloc(GMEM_MOVEABLE, bytes);
                std::memcpy(::GlobalLock(text), row.pasted, bytes);
                ::GlobalUnlock(text);
                ::SetClipboardData(CF_UNICODETEXT, text);
                ::CloseClipboard();
            });
            h.Focus(IDC_NUM);
            input::Chord(VK_CONTROL, 'V');
            h.Settle();
            h.Focus(IDC_OTHER);
            EXPECT_EQ(h.Text(IDC_NUM), row.left);
            double value = 0;
            h.OnDialogThread([&] { value = t.edit.GetValue(); });
            EXPECT_EQ(value, row.value);
        }
    }));
}

// Tool 1 of the edit, as the tool tip of the edit's thread holds it, and whether it shows.
std::pair<std::wstring, bool> FindTip(HWND edit)
{
    const DWORD thread = ::GetWindowThreadProcessId(edit, nullptr);
    for (HWND tip = nullptr; (tip = ::FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) != nullptr;)
    {
        wchar_t buffer[256] = L"";
        TOOLINFOW info{};
        info.cbSize = TTTOOLINFOW_V2_SIZE;
        info.hwnd = edit;
        info.uId = 1;
        info.lpszText = buffer;
        if (::GetWindowThreadProcessId(tip, nullptr) == thread)
            ::SendMessageW(tip, TTM_GETTEXTW, 256, reinterpret_cast<LPARAM>(&info));
        if (buffer[0] != L'\0')
            return {buffer, ::IsWindowVisible(tip) != FALSE};
    }
    return {L"", false};
}

struct TipRow
{
    const wchar_t *def, *min, *max, *tip, *shown;  // tip nullptr: not checked; shown: the default, formatted
};

const TipRow kTips[] = {
    {L"50", L"10", L"100", L"最小值:10\n最大值:100\n默认值:50", L"50"},  // the caller's texts as written
    {L"5", L"1", L"3", L"最小值:1\n最大值:3\n默认值:3", L"3"},          // clamped: the stored numbers
    {L"50.0", L"10", L"1e2", L"最小值:10\n最大值:1e2\n默认值:50.0", L"50"},
    {L"2", L"5", L"1", L"最小值:1\n最大值:1\n默认值:1", L"1"},         // min above max: minimum = max
    {L"2.50", L"0", L"10", L"最小值:0\n最大值:10\n默认值:2.50", L"2.5"},
    {L"x", L"", L"", nullptr, L"0"},  // no range: 0 up
    {L"7", L"5", L"", nullptr, L"7"},
};

TEST(NumEditEx, ToolTipStatesTheRangeAndTheDefault)
{
    NumHost t;
    CNumEditEx& edit = t.edit;
    ASSERT_TRUE(t.host.RunModal([&](HostDialog& h) {
        for (const TipRow& row : kTips)
        {
            h.Focus(IDC_OTHER);
            h.OnDialogThread([&] { edit.SetAllValue(row.def, row.min, row.max); });
            EXPECT_EQ(h.Text(IDC_NUM), row.shown);
            h.Focus(IDC_NUM);
            EXPECT_TRUE(row.tip == nullptr || FindTip(h.Item(IDC_NUM)).first == row.tip) << row.def;
        }
        double values[2] = {};
        h.OnDialogThread([&] {
            edit.SetAllValue(2.5, 0.0, 10.0);
            values[0] = edit.GetValue();
            edit.SetDefaultValue(-4.0);
            values[1] = edit.GetValue();
        });
        EXPECT_EQ(values[0], 2.5);
        EXPECT_EQ(values[1], 0.0);  // clamped to the minimum
        EXPECT_EQ(h.Text(IDC_NUM), L"0");
        input::MoveTo(h.Item(IDC_NUM), 10, 5);
        input::MoveTo(h.Item(IDC_NUM), 12, 6);
        ::Sleep(1200);
        h.Settle();
        EXPECT_TRUE(FindTip(h.Item(IDC_NUM)).second);
    }));
}

} // namespace
