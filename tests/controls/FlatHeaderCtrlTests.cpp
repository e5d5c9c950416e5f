// The flat header on the header of a plain report list in a host's modal
// dialog: dragged, resized and pressed through the real input queue, its
// drawing read back from the screen.
#include <QMUtil.h>

#include "support/HostDialog.h"
#include "support/Input.h"
#include "support/Screenshot.h"
#include "support/Throws.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

namespace {

enum : WORD { IDC_LIST = 101 };
const wchar_t* const kNames[] = {L"Alpha", L"Beta", L"Gamma", L"Delta"};
constexpr COLORREF kRed = RGB(255, 0, 0);

// A list of `widths.size()` columns (the third right-aligned) whose client
// area is `clientWidth` pixels wide, its header subclassed by `header`.
class FlatHeaderTest : public ::testing::Test
{
protected:
    void Run(std::vector<int> widths, const std::function<void(HostDialog&)>& script, int clientWidth = 400)
    {
        host.onInit = [&, widths, clientWidth](HWND dialog) {
            list = ::GetDlgItem(dialog, IDC_LIST);
            ::MoveWindow(list, 10, 30, clientWidth, 120, FALSE);
            ListView_SetExtendedListViewStyle(list, LVS_EX_HEADERDRAGDROP);
            ASSERT_TRUE(header.SubclassWindow(ListView_GetHeader(list)));
            for (int i = 0; i < static_cast<int>(widths.size()); ++i)
            {
                LVCOLUMNW column{};
                column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
                column.fmt = i == 2 ? LVCFMT_RIGHT : LVCFMT_LEFT;
                column.cx = widths[i];
                column.pszText = const_cast<wchar_t*>(kNames[i % 4]);
                ListView_InsertColumn(list, i, &column);
            }
        };
        host.onMessage = [&](UINT message, WPARAM, LPARAM lParam, LRESULT& result) {
            const UINT code = message == WM_NOTIFY ? reinterpret_cast<NMHDR*>(lParam)->code : 0;
            result = code == HDN_BEGINDRAG ? beginDragAnswer.load() : endDragAnswer.load();
            return code == HDN_BEGINDRAG || code == HDN_ENDDRAG;
        };
        ASSERT_TRUE(host.RunModal(script));
    }

    CRect Item(int column) const
    {
        CRect rect;
        Header_GetItemRect(header.m_hWnd, column, &rect);
        return rect;
    }
    std::vector<int> Order() const
    {
        std::vector<int> order(Header_GetItemCount(header.m_hWnd));
        Header_GetOrderArray(header.m_hWnd, static_cast<int>(order.size()), order.data());
        return order;
    }
    std::vector<int> Widths() const
    {
        std::vector<int> widths;
        for (int i = 0; i < Header_GetItemCount(header.m_hWnd); ++i)
            widths.push_back(Item(i).Width());
        return widths;
    }
    // The header notifications the dialog received, in order.
    std::vector<ReceivedMsg> HeaderNotes() const
    {
        std::vector<ReceivedMsg> notes;
        for (const ReceivedMsg& msg : host.Received())
            if (msg.message == WM_NOTIFY && msg.code >= static_cast<UINT>(HDN_LAST) &&
                msg.code <= static_cast<UINT>(HDN_FIRST))
                notes.push_back(msg);
        return notes;
    }
    // Each drag starts a double-click time after the last press.
    void Drag(POINT from, POINT to, const std::function<void()>& midway = {})
    {
        ::Sleep(::GetDoubleClickTime());
        input::Press(header.m_hWnd, from.x, from.y);
        input::MoveTo(header.m_hWnd, from.x + (to.x > from.x ? 10 : -10), from.y);
        input::MoveTo(header.m_hWnd, to.x, to.y);
        host.Settle();
        if (midway)
            midway();
        input::Release(header.m_hWnd, to.x, to.y);
        host.Settle();
    }

    HostDialog host{{{WC_LISTVIEWW, L"", LVS_REPORT | WS_TABSTOP, IDC_LIST, 5, 5, 100, 60}}, 320, 160};
    CFlatHeaderCtrl header;
    HWND list = nullptr;
    std::atomic<LRESULT> beginDragAnswer{0}, endDragAnswer{0};
};

struct DragRow
{
    const char* name;
    int column, target;
    bool rightHalf;           // dropped on the right half of `target`
    LRESULT beginDragAnswer, endDragAnswer;
    std::vector<int> order;   // afterwards
    int marker;               // display position of the marked gap, -1: none
};

const DragRow kDrags[] = {
    {"behind column 2", 0, 2, true, 0, 0, {1, 2, 0, 3}, 3},
    {"to the front", 3, 0, false, 0, 0, {3, 0, 1, 2}, 0},
    {"on its own place", 0, 0, true, 0, 0, {0, 1, 2, 3}, -1},
    {"on the next place", 0, 1, false, 0, 0, {0, 1, 2, 3}, -1},
    {"refused by the parent", 0, 2, true, 0, 1, {0, 1, 2, 3}, 3},
    {"run by the parent", 0, 2, true, 1, 0, {0, 1, 2, 3}, -1},
};

TEST_F(FlatHeaderTest, DraggingAColumnReordersAndMarksTheGap)
{
    static const ExpectedMsg kBeginEnd[] = {
        {WM_NOTIFY, 0, 0, HDN_BEGINDRAG}, {WM_NOTIFY, 0, 0, HDN_ENDDRAG}, {0, 0, 0, 0}};
    Run({80, 80, 80, 80}, [&](HostDialog& h) {
        for (const DragRow& row : kDrags)
        {
            SCOPED_TRACE(row.name);
            std::vector<int> identity{0, 1, 2, 3};
            Header_SetOrderArray(header.m_hWnd, 4, identity.data());
            beginDragAnswer = row.beginDragAnswer;
            endDragAnswer = row.endDragAnswer;
            h.ClearReceived();
            const CRect from = Item(row.column), to = Item(row.target);
            const int y = from.Height() / 2;
            const int x = row.rightHalf ? to.right - to.Width() / 4 : to.left + to.Width() / 4;
            Drag({from.CenterPoint().x, y}, {x, y}, [&] {
                Screenshot shot(h.Window());
                const int gap = row.marker < 0 ? 0 : row.marker < 4 ? Item(row.marker).left : Item(3).right;
                const int top = 0, bottom = from.Height();
                if (row.marker < 0)
                {
                    for (int px = 0; px < 4 * 80; px += 2)
                        ASSERT_NE(shot.PixelOf(header.m_hWnd, px, -5), kRed) << "at " << px;
                    return;
                }
                // Two arrows: narrow shafts far from the header, wide heads
                // near it, tips at the gap.
                EXPECT_EQ(shot.PixelOf(header.m_hWnd, gap, top - 8), kRed);
                EXPECT_NE(shot.PixelOf(header.m_hWnd, gap - 5, top - 8), kRed);
                EXPECT_EQ(shot.PixelOf(header.m_hWnd, gap - 4, top - 4), kRed);
                EXPECT_EQ(shot.PixelOf(header.m_hWnd, gap, bottom + 7), kRed);
                EXPECT_NE(shot.PixelOf(header.m_hWnd, gap - 5, bottom + 7), kRed);
                EXPECT_EQ(shot.PixelOf(header.m_hWnd, gap - 4, bottom + 3), kRed);
            });
            EXPECT_EQ(Order(), row.order);
            EXPECT_TRUE(SequenceMatches(HeaderNotes(), kBeginEnd, h.Window()));
        }
    });
}

TEST_F(FlatHeaderTest, AFixedColumnShowsNoResizeCursorAndKeepsItsWidth)
{
    static const ExpectedMsg kNone[] = {{0, 0, 0, 0}};
    // The first click of a double-click on a divider ends a track of nothing.
    static const ExpectedMsg kFitted[] = {
        {WM_NOTIFY, kOptional, 0, HDN_ENDTRACKW}, {WM_NOTIFY, 0, 0, HDN_DIVIDERDBLCLICKW}, {0, 0, 0, 0}};
    Run({80, 80, 80, 80}, [&](HostDialog& h) {
        h.OnDialogThread([&] {
            HDITEMEX ex;
            header.GetItemEx(1, &ex);
            ex.nStyle |= HDF_EX_FIXEDWIDTH;
            header.SetItemEx(1, &ex);
        });
        for (const bool fixed : {false, true})
        {
            SCOPED_TRACE(fixed ? "fixed" : "resizable");
            const int column = fixed ? 1 : 0;
            const int y = Item(column).Height() / 2;
            input::MoveTo(header.m_hWnd, Item(column).right - 1, y);
            h.Settle();
            HCURSOR cursor = nullptr;
            h.OnDialogThread([&] { cursor = ::GetCursor(); });
            EXPECT_EQ(cursor == ::LoadCursorW(nullptr, IDC_ARROW), fixed);
            const int right = Item(column).right;
            Drag({right - 1, y}, {right + 29, y});
            EXPECT_EQ(Item(column).Width(), fixed ? 80 : 110);
            h.ClearReceived();
            ::Sleep(::GetDoubleClickTime());
            input::Click(header.m_hWnd, Item(column).right - 1, y);
            input::Click(header.m_hWnd, Item(column).right - 1, y);
            h.Settle();
            EXPECT_TRUE(SequenceMatches(HeaderNotes(), fixed ? kNone : kFitted, h.Window()));
        }
    });
}

struct AutoSizeRow
{
    const char* name;
    int clientWidth;
    std::vector<int> widths, minima, maxima;
    int fixedColumn;  // -1: none
    std::vector<int> fitted;
};

const AutoSizeRow kAutoSizes[] = {
    {"one pixel over", 301, {100, 100, 100}, {0, 0, 0}, {0, 0, 0}, -1, {101, 100, 100}},
    {"two pixels over", 302, {100, 100, 100}, {0, 0, 0}, {0, 0, 0}, -1, {101, 101, 100}},
    {"a maximum passes its pixels on", 302, {100, 100, 100}, {0, 0, 0}, {90, 0, 0}, -1, {90, 106, 106}},
    {"a minimum takes from the others", 150, {50, 100, 150}, {40, 0, 0}, {0, 0, 0}, -1, {40, 42, 68}},
    {"minima wider than the client", 200, {100, 100, 100}, {100, 100, 100}, {0, 0, 0}, -1, {100, 100, 100}},
    {"a fixed column keeps its width", 400, {100, 100, 100}, {0, 0, 0}, {0, 0, 0}, 1, {150, 100, 150}},
};

class AutoSizeTest : public FlatHeaderTest
{
protected:
    // Auto-size off, the list `clientWidth` wide, the columns as given, then
    // auto-size on.
    void Prepare(HostDialog& h, int clientWidth, const std::vector<int>& widths, const std::vector<int>& minima,
                 const std::vector<int>& maxima, int fixedColumn)
    {
        h.OnDialogThread([&] {
            header.SetProperty(FH_PROPERTY_AUTOSIZE, 0);
            ::MoveWindow(list, 10, 30, clientWidth, 120, TRUE);
            for (int i = 0; i < static_cast<int>(widths.size()); ++i)
            {
                ListView_SetColumnWidth(list, i, widths[i]);
                HDITEMEX ex;
                ex.nStyle = i == fixedColumn ? HDF_EX_FIXEDWIDTH : 0;
                ex.iMinWidth = minima[i];
                ex.iMaxWidth = maxima[i];
                header.SetItemEx(i, &ex);
            }
            header.SetProperty(FH_PROPERTY_AUTOSIZE, 1);
        });
    }
};

TEST_F(AutoSizeTest, ColumnsFillTheClientWidthWithinTheirLimits)
{
    Run({100, 100, 100}, [&](HostDialog& h) {
        for (const AutoSizeRow& row : kAutoSizes)
        {
            Prepare(h, row.clientWidth, row.widths, row.minima, row.maxima, row.fixedColumn);
            EXPECT_EQ(Widths(), row.fitted) << row.name;
        }
    });
}

struct ResizeRow
{
    const char* name;
    std::vector<int> minima, maxima;
    int draggedTo;      // new right edge of column 0
    int clipWidth;      // of the band the cursor is kept in while resizing
    std::vector<int> fitted;
};

const ResizeRow kResizes[] = {
    {"narrower, a maximum on the last", {0, 0, 0, 0}, {0, 0, 0, 110}, 40, 401, {40, 125, 125, 110}},
    {"wider than the minima after it allow", {0, 90, 90, 90}, {0, 0, 0, 0}, 250, 131, {130, 90, 90, 90}},
};

TEST_F(AutoSizeTest, ResizingAColumnRefitsTheColumnsAfterIt)
{
    Run({100, 100, 100, 100}, [&](HostDialog& h) {
        for (const ResizeRow& row : kResizes)
        {
            SCOPED_TRACE(row.name);
            Prepare(h, 400, {100, 100, 100, 100}, row.minima, row.maxima, -1);
            const int y = Item(0).Height() / 2;
            RECT clip{};
            Drag({Item(0).right - 1, y}, {row.draggedTo - 1, y}, [&] { ::GetClipCursor(&clip); });
            EXPECT_EQ(clip.right - clip.left, row.clipWidth);
            EXPECT_EQ(Widths(), row.fitted);
            ::GetClipCursor(&clip);
            EXPECT_EQ(clip.right - clip.left, ::GetSystemMetrics(SM_CXVIRTUALSCREEN));
        }
    });
}

TEST_F(FlatHeaderTest, DrawsSortMarksEtchedDividersAndThePressedItemInverted)
{
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE), light = ::GetSysColor(COLOR_BTNHIGHLIGHT),
                   shadow = ::GetSysColor(COLOR_BTNSHADOW), inverted = face ^ 0xFFFFFF;
    Run({80, 80, 80, 80}, [&](HostDialog& h) {
        const CRect sorted = Item(2);  // right-aligned: the mark sits at the right, a spacing in
        const int x0 = sorted.right - 6 - 8, y0 = (sorted.Height() - 9) / 2;
        for (const BOOL ascending : {TRUE, FALSE})
        {
            h.OnDialogThread([&] { header.SetSortColumn(2, ascending); });
            h.Settle();
            Screenshot shot(h.Window());
            auto marked = [&](int y) {
                int count = 0;
                for (int x = x0; x < x0 + 8; ++x)
                    count += shot.PixelOf(header.m_hWnd, x, y) != face;
                return count;
            };
            const int wide = ascending ? y0 + 7 : y0, tip = ascending ? y0 : y0 + 7;
            EXPECT_EQ(marked(wide), 8) << (ascending ? "ascending" : "descending");
            EXPECT_LE(marked(tip), 2);
            EXPECT_EQ(shot.PixelOf(header.m_hWnd, x0 + 5, wide), ascending ? light : shadow);
        }
        const int middle = Item(0).Height() / 2, divider = Item(0).right;
        Screenshot shot(h.Window());
        EXPECT_EQ(shot.PixelOf(header.m_hWnd, divider - 1, middle), shadow);
        EXPECT_EQ(shot.PixelOf(header.m_hWnd, divider, middle), light);
        EXPECT_EQ(shot.PixelOf(header.m_hWnd, divider - 1, 1), face);
        EXPECT_EQ(shot.PixelOf(header.m_hWnd, Item(1).left + 3, middle), face);
        input::Press(header.m_hWnd, Item(1).CenterPoint().x, middle);
        h.Settle();
        EXPECT_EQ(Screenshot(h.Window()).PixelOf(header.m_hWnd, Item(1).left + 3, middle), inverted);
        input::Release(header.m_hWnd, Item(1).CenterPoint().x, middle);
        h.Settle();
        EXPECT_EQ(Screenshot(h.Window()).PixelOf(header.m_hWnd, Item(1).left + 3, middle), face);
    });
}

TEST_F(FlatHeaderTest, TheToolTipShowsTheTextOfTheColumnUnderTheMouseWhole)
{
    const std::wstring tips[] = {L"列宽固定", std::wstring(100, L'长')};
    Run({80, 80, 80, 80}, [&](HostDialog& h) {
        h.OnDialogThread([&] {
            header.SetProperty(FH_PROPERTY_ENABLETOOLTIPS, 1);
            for (int column : {0, 1})
            {
                HDITEMEX ex;
                header.GetItemEx(column, &ex);
                ex.strToolTip = tips[column].c_str();
                header.SetItemEx(column, &ex);
            }
        });
        for (int column : {0, 1})
        {
            input::MoveTo(header.m_hWnd, Item(column).CenterPoint().x, 5);
            input::MoveTo(header.m_hWnd, Item(column).CenterPoint().x + 1, 6);
            HWND tip = nullptr;
            for (int i = 0; i < 40 && tip == nullptr; ++i)
            {
                ::Sleep(100);
                const HWND found = ::FindWindowW(TOOLTIPS_CLASSW, nullptr);
                tip = found != nullptr && ::IsWindowVisible(found) ? found : nullptr;
            }
            ASSERT_NE(tip, nullptr) << "column " << column;
            wchar_t text[256] = L"";
            ::SendMessageW(tip, WM_GETTEXT, ARRAYSIZE(text), reinterpret_cast<LPARAM>(text));
            EXPECT_EQ(text, tips[column]);
        }
    });
}

struct RecordRow
{
    UINT style;
    int minimum, maximum;
    int extra;  // expected width: 80 + extra, or with HDF_EX_AUTOWIDTH the text's extent + extra
};

const RecordRow kRecords[] = {
    {0, 120, 0, 40},                     // raised to the minimum
    {0, 0, 50, -30},                     // lowered to the maximum
    {HDF_EX_FIXEDWIDTH, 120, 50, 0},     // a fixed column ignores both
    {HDF_EX_AUTOWIDTH, 0, 0, 12},        // spacing, text, spacing
    {HDF_EX_AUTOWIDTH | HDF_EX_INCLUDESORT, 0, 0, 26},
};

TEST_F(FlatHeaderTest, ExtendedRecordsLimitTheWidthAndFollowTheColumns)
{
    Run({80, 80}, [&](HostDialog& h) {
        h.OnDialogThread([&] {
            CClientDC dc(&header);
            CFont* old = dc.SelectObject(CFont::FromHandle(reinterpret_cast<HFONT>(header.SendMessage(WM_GETFONT))));
            const int extent = dc.GetTextExtent(L"Alpha", 5).cx;
            dc.SelectObject(old);
            for (const RecordRow& row : kRecords)
            {
                ListView_SetColumnWidth(list, 0, 80);
                HDITEMEX ex;
                ex.nStyle = row.style;
                ex.iMinWidth = row.minimum;
                ex.iMaxWidth = row.maximum;
                ASSERT_TRUE(header.SetItemEx(0, &ex));
                const int width = Item(0).Width();
                EXPECT_EQ(width, (row.style & HDF_EX_AUTOWIDTH ? extent : 80) + row.extra) << row.style;
                ASSERT_TRUE(header.GetItemEx(0, &ex));
                EXPECT_TRUE(!(row.style & HDF_EX_FIXEDWIDTH) || (ex.iMinWidth == width && ex.iMaxWidth == width));
            }
            HDITEMEX ex;
            ex.strToolTip = L"第二列";
            ASSERT_TRUE(header.SetItemEx(1, &ex));
            LVCOLUMNW column{};
            column.mask = LVCF_TEXT | LVCF_WIDTH;
            column.cx = 50;
            column.pszText = const_cast<wchar_t*>(L"New");
            ListView_InsertColumn(list, 0, &column);
            ASSERT_TRUE(header.GetItemEx(2, &ex));
            EXPECT_STREQ(ex.strToolTip.GetString(), L"第二列");
            ListView_DeleteColumn(list, 0);
            ASSERT_TRUE(header.GetItemEx(1, &ex));
            EXPECT_STREQ(ex.strToolTip.GetString(), L"第二列");
            EXPECT_FALSE(header.GetItemEx(2, &ex));
            EXPECT_FALSE(header.SetItemEx(2, &ex));
            EXPECT_TRUE(qmtest::ThrowsInvalidArg([&] { header.GetItemEx(-1, &ex); }));
        });
    });
}

TEST_F(FlatHeaderTest, OnlyPropertiesOneToSevenAreTakenAndRepaint)
{
    Run({80, 80}, [&](HostDialog& h) {
        h.OnDialogThread([&] {
            for (int property = 0; property <= 8; ++property)
            {
                header.ValidateRect(nullptr);
                const LPARAM value = property == FH_PROPERTY_SPACING ? 6 : property == FH_PROPERTY_ARROW ? 0x80008 : 0;
                const bool taken = property >= 1 && property <= 7;
                EXPECT_EQ(header.SetProperty(property, value), taken ? TRUE : FALSE) << property;
                EXPECT_EQ(::GetUpdateRect(header.m_hWnd, nullptr, FALSE) != FALSE, taken) << property;
            }
        });
    });
}

} // namespace
