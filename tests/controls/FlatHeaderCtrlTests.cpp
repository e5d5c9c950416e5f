// The flat header on a plain report list in a host dialog, dragged,
// resized and pressed through the real input queue, read back from screen.
#include <QMUtil.h>

#include "support/HostDialog.h"
#include "support/Input.h"
#include "support/Screenshot.h"
#include "support/Throws.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <numeric>
#include <string>
#include <vector>

namespace {

enum : WORD { IDC_LIST = 101 };
const wchar_t* const kNames[] = {L"Alpha", L"Beta", L"Gamma", L"Delta"};
constexpr COLORREF kRed = RGB(255, 0, 0);

// `count` columns `width` wide (the third right-aligned) in a list 400
// pixels wide, its header subclassed by `header`.
class FlatHeaderTest : public ::testing::Test
{
protected:
    void Run(int count, int width, const std::function<void(HostDialog&)>& script)
    {
        host.onInit = [&, count, width](HWND dialog) {
            list = ::GetDlgItem(dialog, IDC_LIST);
            ::MoveWindow(list, 10, 30, 400, 120, FALSE);
            ListView_SetExtendedListViewStyle(list, LVS_EX_HEADERDRAGDROP);
            ASSERT_TRUE(header.SubclassWindow(ListView_GetHeader(list)));
            for (int i = 0; i < count; ++i)
            {
                LVCOLUMNW column{LVCF_TEXT | LVCF_WIDTH | LVCF_FMT, i == 2 ? LVCFMT_RIGHT : LVCFMT_LEFT, width,
                                 const_cast<wchar_t*>(kNames[i]), 0, 0, 0, 0, 0, 0, 0};
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
    std::vector<ReceivedMsg> HeaderNotes() const
    {
        std::vector<ReceivedMsg> notes = host.Received();
        notes.erase(std::remove_if(notes.begin(), notes.end(), [](const ReceivedMsg& msg) {
            return msg.message != WM_NOTIFY || msg.code < UINT(HDN_LAST) || msg.code > UINT(HDN_FIRST); }), notes.end());
        return notes;
    }
    COLORREF Pixel(int x, int y) const { return Screenshot(host.Window()).PixelOf(header.m_hWnd, x, y); }
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
        input::Release();
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
    bool rightHalf;  // dropped on the right half of `target`
    LRESULT beginDragAnswer, endDragAnswer;
    std::vector<int> order;  // afterwards, and the display position of the marked gap (-1: none)
    int marker;
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
    static const ExpectedMsg kBeginEnd[] = {{WM_NOTIFY, 0, 0, HDN_BEGINDRAG}, {WM_NOTIFY, 0, 0, HDN_ENDDRAG}, {}};
    // Two arrows at the gap: narrow shafts far from the header, wide heads near it.
    const struct { int dx, dy; bool red; } kArrows[] = {{0, -8, true}, {-5, -8, false}, {-4, -4, true},
                                                        {0, 7, true},  {-5, 7, false},  {-4, 3, true}};
    Run(4, 80, [&](HostDialog& h) {
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
                for (int px = 0; row.marker < 0 && px < 4 * 80; px += 2)
                    ASSERT_NE(shot.PixelOf(header.m_hWnd, px, -5), kRed) << "at " << px;
                for (const auto& a : kArrows)
                    EXPECT_TRUE(row.marker < 0 || (shot.PixelOf(header.m_hWnd, gap + a.dx,
                                                                a.dy < 0 ? a.dy : from.Height() + a.dy) == kRed) == a.red)
                        << a.dx << "," << a.dy;
            });
            EXPECT_EQ(Order(), row.order);
            EXPECT_TRUE(SequenceMatches(HeaderNotes(), kBeginEnd, h.Window()));
        }
    });
}

TEST_F(FlatHeaderTest, AFixedColumnShowsNoResizeCursorAndKeepsItsWidth)
{
    static const ExpectedMsg kNone[] = {{}};
    // The first click of a double-click on a divider ends a track of nothing.
    static const ExpectedMsg kFitted[] = {
        {WM_NOTIFY, kOptional, 0, HDN_ENDTRACKW}, {WM_NOTIFY, 0, 0, HDN_DIVIDERDBLCLICKW}, {}};
    Run(4, 80, [&](HostDialog& h) {
        h.OnDialogThread([&] {
            HDITEMEX ex{HDF_EX_FIXEDWIDTH, 0, 0, {}};
            header.SetItemEx(1, &ex);
        });
        for (const int column : {0, 1})
        {
            const bool fixed = column == 1;
            SCOPED_TRACE(fixed ? "fixed" : "resizable");
            const int y = Item(column).Height() / 2, right = Item(column).right;
            input::MoveTo(header.m_hWnd, right - 1, y);
            h.Settle();
            HCURSOR cursor = nullptr;
            h.OnDialogThread([&] { cursor = ::GetCursor(); });
            EXPECT_EQ(cursor == ::LoadCursorW(nullptr, IDC_ARROW), fixed);
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
    // Resizing: the new right edge of column 0, and the width of the band the cursor is kept in meanwhile.
    int draggedTo, clipWidth;
};

const AutoSizeRow kAutoSizes[] = {
    {"one pixel over", 301, {100, 100, 100}, {0, 0, 0}, {0, 0, 0}, -1, {101, 100, 100}, 0, 0},
    {"two pixels over", 302, {100, 100, 100}, {0, 0, 0}, {0, 0, 0}, -1, {101, 101, 100}, 0, 0},
    {"a maximum passes its pixels on", 302, {100, 100, 100}, {0, 0, 0}, {90, 0, 0}, -1, {90, 106, 106}, 0, 0},
    {"a minimum takes from the others", 150, {50, 100, 150}, {40, 0, 0}, {0, 0, 0}, -1, {40, 42, 68}, 0, 0},
    {"minima wider than the client", 200, {100, 100, 100}, {100, 100, 100}, {0, 0, 0}, -1, {100, 100, 100}, 0, 0},
    {"a fixed column keeps its width", 400, {100, 100, 100}, {0, 0, 0}, {0, 0, 0}, 1, {150, 100, 150}, 0, 0},
};

const AutoSizeRow kResizes[] = {
    {"narrower, a maximum on the last", 400, {100, 100, 100, 100}, {0, 0, 0, 0}, {0, 0, 0, 110}, -1,
     {40, 125, 125, 110}, 40, 401},
    {"wider than the minima after it allow", 400, {100, 100, 100, 100}, {0, 90, 90, 90}, {0, 0, 0, 0}, -1,
     {130, 90, 90, 90}, 250, 131},
};

class AutoSizeTest : public FlatHeaderTest
{
protected:
    // Auto-size off, the list and the columns as the row has them, auto-size on.
    void Prepare(HostDialog& h, const AutoSizeRow& row)
    {
        h.OnDialogThread([&] {
            header.SetProperty(FH_PROPERTY_AUTOSIZE, 0);
            ::MoveWindow(list, 10, 30, row.clientWidth, 120, TRUE);
            for (int i = 0; i < static_cast<int>(row.widths.size()); ++i)
            {
                ListView_SetColumnWidth(list, i, row.widths[i]);
                HDITEMEX ex{i == row.fixedColumn ? HDF_EX_FIXEDWIDTH : 0, row.minima[i], row.maxima[i], {}};
                header.SetItemEx(i, &ex);
            }
            header.SetProperty(FH_PROPERTY_AUTOSIZE, 1);
        });
    }
};

TEST_F(AutoSizeTest, ColumnsFillTheClientWidthWithinTheirLimits)
{
    Run(3, 100, [&](HostDialog& h) {
        for (const AutoSizeRow& row : kAutoSizes)
        {
            Prepare(h, row);
            EXPECT_EQ(Widths(), row.fitted) << row.name;
        }
    });
}

TEST_F(AutoSizeTest, ResizingAColumnRefitsTheColumnsAfterIt)
{
    Run(4, 100, [&](HostDialog& h) {
        for (const AutoSizeRow& row : kResizes)
        {
            SCOPED_TRACE(row.name);
            Prepare(h, row);
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

// A gesture ended by the system (cancel-mode) or by another window taking
// the mouse: the button is then let go below the header and the mouse comes
// back with no button held.
struct CutRow
{
    const char* name;
    bool onDivider;
    int moveBy;
    bool captureTaken;
};

const CutRow kCuts[] = {
    {"a resize, cancel-mode", true, 30, false},
    {"a resize, the capture taken", true, 30, true},
    {"a drag, the capture taken", false, 130, true},
    {"a drag, cancel-mode", false, 130, false},
    {"a press short of a drag, cancel-mode", false, 1, false},
};

TEST_F(AutoSizeTest, AGestureCutShortLeavesNothingBehind)
{
    Run(4, 100, [&](HostDialog& h) {
        for (const CutRow& row : kCuts)
        {
            SCOPED_TRACE(row.name);
            Prepare(h, kResizes[0]);
            const int y = Item(0).Height() / 2, from = row.onDivider ? Item(0).right - 1 : Item(0).CenterPoint().x;
            ::Sleep(::GetDoubleClickTime());
            input::Press(header.m_hWnd, from, y);
            input::MoveTo(header.m_hWnd, from + row.moveBy, y);
            h.Settle();
            h.ClearReceived();
            h.OnDialogThread([&] {
                if (row.captureTaken)
                    ::SetCapture(list);
                else
                    ::SendMessageW(header.m_hWnd, WM_CANCELMODE, 0, 0);
            });
            h.Settle();
            RECT clip{};
            ::GetClipCursor(&clip);
            EXPECT_EQ(clip.right - clip.left, ::GetSystemMetrics(SM_CXVIRTUALSCREEN));
            EXPECT_NE(Pixel(Item(2).left, -5), kRed);  // no drop marker
            HWND capture = nullptr;
            h.OnDialogThread([&] { capture = ::GetCapture(); });
            EXPECT_NE(capture, header.m_hWnd);
            input::MoveTo(header.m_hWnd, from + row.moveBy, y + 60);
            input::Release();
            h.OnDialogThread([&] { ::ReleaseCapture(); });
            input::MoveTo(header.m_hWnd, 20, y);
            input::MoveTo(header.m_hWnd, 60, y);
            h.Settle();
            const std::vector<ReceivedMsg> notes = HeaderNotes();
            EXPECT_EQ(std::count_if(notes.begin(), notes.end(), [](const ReceivedMsg& m) { return m.code == UINT(HDN_BEGINDRAG); }), 0);
            h.OnDialogThread([&] { ::MoveWindow(list, 10, 30, 450, 120, TRUE); });
            CRect client;
            ::GetClientRect(header.m_hWnd, &client);
            const std::vector<int> widths = Widths();
            EXPECT_EQ(std::accumulate(widths.begin(), widths.end(), 0), client.Width());
            h.OnDialogThread([&] { ::SendMessageW(header.m_hWnd, WM_CANCELMODE, 0, 0); });
        }
        h.OnDialogThread([&] {  // the gap after the last column and one past it are both markable
            EXPECT_EQ(::SendMessageW(header.m_hWnd, HDM_SETHOTDIVIDER, FALSE, 5), 5);
            EXPECT_EQ(::SendMessageW(header.m_hWnd, HDM_SETHOTDIVIDER, FALSE, 6), -1);
        });
    });
}

TEST_F(FlatHeaderTest, DrawsSortMarksEtchedDividersAndThePressedItemInverted)
{
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE), light = ::GetSysColor(COLOR_BTNHIGHLIGHT),
                   shadow = ::GetSysColor(COLOR_BTNSHADOW);
    Run(4, 80, [&](HostDialog& h) {
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
        const int middle = Item(0).Height() / 2, divider = Item(0).right, inside = Item(1).left + 3;
        EXPECT_EQ(Pixel(divider - 1, middle), shadow);
        EXPECT_EQ(Pixel(divider, middle), light);
        EXPECT_EQ(Pixel(divider - 1, 1), face);
        EXPECT_EQ(Pixel(inside, middle), face);
        input::Press(header.m_hWnd, Item(1).CenterPoint().x, middle);
        h.Settle();
        EXPECT_EQ(Pixel(inside, middle), face ^ 0xFFFFFF);
        input::Release();
        h.Settle();
        EXPECT_EQ(Pixel(inside, middle), face);
    });
}

TEST_F(FlatHeaderTest, TheToolTipShowsTheTextOfTheColumnUnderTheMouseWhole)
{
    const std::wstring tips[] = {L"列宽固定", std::wstring(100, L'长')};
    Run(4, 80, [&](HostDialog& h) {
        h.OnDialogThread([&] {
            header.SetProperty(FH_PROPERTY_ENABLETOOLTIPS, 1);
            for (int column : {0, 1})
            {
                HDITEMEX ex{0, 0, 0, tips[column].c_str()};
                header.SetItemEx(column, &ex);
            }
        });
        for (int column : {0, 1})
        {
            input::MoveTo(header.m_hWnd, Item(column).CenterPoint().x, 5);
            input::MoveTo(header.m_hWnd, Item(column).CenterPoint().x + 1, 6);
            HWND tip = nullptr;
            for (int i = 0; i < 40 && (tip == nullptr || !::IsWindowVisible(tip)); ++i, ::Sleep(100))
                tip = ::FindWindowW(TOOLTIPS_CLASSW, nullptr);
            ASSERT_TRUE(tip != nullptr && ::IsWindowVisible(tip)) << "column " << column;
            wchar_t text[256] = L"";
            ::GetWindowTextW(tip, text, ARRAYSIZE(text));
            EXPECT_EQ(text, tips[column]);
        }
    });
}

struct RecordRow
{
    UINT style;
    int minimum, maximum, extra;  // expected width: 80 + extra, or with HDF_EX_AUTOWIDTH the text's extent + extra
};

const RecordRow kRecords[] = {
    {0, 120, 0, 40},                     // raised to the minimum
    {0, 0, 50, -30},                     // lowered to the maximum
    {HDF_EX_FIXEDWIDTH, 120, 50, 0},     // a fixed column ignores both
    {HDF_EX_AUTOWIDTH, 0, 0, 12},        // spacing, text, spacing
    {HDF_EX_AUTOWIDTH | HDF_EX_INCLUDESORT, 0, 0, 26},
};

TEST_F(FlatHeaderTest, ExtendedRecordsLimitTheWidthAndFollowTheColumnsAndPropertiesAreChecked)
{
    Run(2, 80, [&](HostDialog& h) {
        h.OnDialogThread([&] {
            CClientDC dc(&header);
            CFont* old = dc.SelectObject(CFont::FromHandle(reinterpret_cast<HFONT>(header.SendMessage(WM_GETFONT))));
            const int extent = dc.GetTextExtent(L"Alpha", 5).cx;
            dc.SelectObject(old);
            for (const RecordRow& row : kRecords)
            {
                ListView_SetColumnWidth(list, 0, 80);
                HDITEMEX ex{row.style, row.minimum, row.maximum, {}};
                ASSERT_TRUE(header.SetItemEx(0, &ex));
                const int width = Item(0).Width();
                EXPECT_EQ(width, (row.style & HDF_EX_AUTOWIDTH ? extent : 80) + row.extra) << row.style;
                ASSERT_TRUE(header.GetItemEx(0, &ex));
                EXPECT_TRUE(!(row.style & HDF_EX_FIXEDWIDTH) || (ex.iMinWidth == width && ex.iMaxWidth == width));
            }
            HDITEMEX ex{0, 0, 0, L"第二列"};
            ASSERT_TRUE(header.SetItemEx(1, &ex));
            LVCOLUMNW column{LVCF_TEXT | LVCF_WIDTH, 0, 50, const_cast<wchar_t*>(L"New"), 0, 0, 0, 0, 0, 0, 0};
            ListView_InsertColumn(list, 0, &column);
            ASSERT_TRUE(header.GetItemEx(2, &ex));
            EXPECT_STREQ(ex.strToolTip.GetString(), L"第二列");
            ListView_DeleteColumn(list, 0);
            ASSERT_TRUE(header.GetItemEx(1, &ex));
            EXPECT_STREQ(ex.strToolTip.GetString(), L"第二列");
            EXPECT_FALSE(header.GetItemEx(2, &ex));
            EXPECT_FALSE(header.SetItemEx(2, &ex));
            EXPECT_TRUE(qmtest::ThrowsInvalidArg([&] { header.GetItemEx(-1, &ex); }));
            // Only properties 1 to 7 are taken, and each repaints.
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
