// The colour button in a host dialog, driven by real mouse input and read
// back from the screen.
#include <QMUtil.h>

#include "support/HostDialog.h"
#include "support/Input.h"
#include "support/Screenshot.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

constexpr COLORREF kBack = RGB(0, 128, 128);
constexpr COLORREF kRed = RGB(255, 0, 0);

// Buttons 101, 102... in a row.
std::vector<DialogItem> Buttons(int count, const wchar_t* text = L"")
{
    std::vector<DialogItem> items;
    for (short i = 0; i < count; ++i)
        items.push_back({L"BUTTON", text, BS_DEFPUSHBUTTON | WS_TABSTOP, WORD(101 + i), short(10 + 50 * i), 40, 40, 24});
    return items;
}

RECT Client(HWND window)
{
    RECT rc{};
    ::GetClientRect(window, &rc);
    return rc;
}

// A bitmap of `width` x 8, its left half `left` and right half `right`.
HBITMAP TwoColourBitmap(int width, COLORREF left, COLORREF right)
{
    std::vector<DWORD> bits(width * 8);
    for (size_t i = 0; i < bits.size(); ++i)
    {
        const COLORREF c = int(i) % width < width / 2 ? left : right;
        bits[i] = RGB(GetBValue(c), GetGValue(c), GetRValue(c));  // rows of 0x00RRGGBB
    }
    return ::CreateBitmap(width, 8, 1, 32, bits.data());
}

// Top-left corner of the red image inside `button` as the screen shows it.
POINT RedCorner(const Screenshot& shot, HWND button)
{
    const RECT rc = Client(button);
    for (int y = 0; y < rc.bottom; ++y)
        for (int x = 0; x < rc.right; ++x)
            if (shot.PixelOf(button, x, y) == kRed)
                return POINT{x, y};
    return POINT{-1, -1};
}

enum class State { Normal, Hot, Pressed };
enum Edge { B, H, D, L, S };  // background, highlight, dark shadow, light, shadow

COLORREF EdgeColour(Edge edge)
{
    const int system[] = {0, COLOR_BTNHIGHLIGHT, COLOR_3DDKSHADOW, COLOR_3DLIGHT, COLOR_BTNSHADOW};
    return edge == B ? kBack : ::GetSysColor(system[edge]);
}

struct FrameRow
{
    int style;
    State state;
    Edge outerTopLeft, outerBottomRight, innerTopLeft, innerBottomRight;
    int shift;  // content offset against the normal state
};

const FrameRow kFrames[] = {
    {0, State::Normal, H, D, L, S, 0},  {1, State::Normal, B, B, B, B, 0},  {2, State::Normal, H, D, B, B, 0},
    {3, State::Normal, B, B, B, B, 0},  {0, State::Hot, H, D, L, S, 0},     {1, State::Hot, H, D, B, B, 0},
    {2, State::Hot, H, D, L, S, 0},     {3, State::Hot, B, B, B, B, 0},     {0, State::Pressed, D, H, S, L, 2},
    {1, State::Pressed, D, H, B, B, 2}, {2, State::Pressed, D, H, S, L, 2}, {3, State::Pressed, B, B, B, B, 0},
};

TEST(ColorButton, EachBorderStyleShowsItsFrameWhenNormalHotAndPressed)
{
    HostDialog host(Buttons(4));
    CColorButtonEx buttons[4];
    const HBITMAP image = TwoColourBitmap(8, kRed, kRed);
    host.onInit = [&](HWND dialog) {
        for (int i = 0; i < 4; ++i)
        {
            buttons[i].SubclassDlgItem(101 + i, CWnd::FromHandle(dialog));
            buttons[i].m_borderStyle = i;
            buttons[i].m_displayMode = 0;
            buttons[i].SetImage(image, 0, nullptr);
            buttons[i].SetBkColor(kBack);
        }
    };
    ASSERT_TRUE(host.RunModal([&](HostDialog& h) {
        ::CoInitialize(nullptr);
        POINT normalCorner[4] = {};
        for (const FrameRow& row : kFrames)
        {
            const HWND button = h.Item(101 + row.style);
            const RECT rc = Client(button);
            input::MoveTo(h.Window(), 2, 2);
            if (row.state != State::Normal)
                input::MoveTo(button, rc.right / 2, rc.bottom / 2 - 1);
            if (row.state != State::Normal)
                (row.state == State::Hot ? input::MoveTo : input::Press)(button, rc.right / 2, rc.bottom / 2);
            h.Settle();
            Screenshot shot(h.Window());
            if (row.state == State::Pressed)
                input::Release();
            SCOPED_TRACE("style " + std::to_string(row.style) + " state " + std::to_string(int(row.state)));
            EXPECT_EQ(shot.PixelOf(button, 0, 0), EdgeColour(row.outerTopLeft));
            EXPECT_EQ(shot.PixelOf(button, rc.right - 1, rc.bottom - 1), EdgeColour(row.outerBottomRight));
            EXPECT_EQ(shot.PixelOf(button, 1, 1), EdgeColour(row.innerTopLeft));
            EXPECT_EQ(shot.PixelOf(button, rc.right - 2, rc.bottom - 2), EdgeColour(row.innerBottomRight));
            const POINT corner = RedCorner(shot, button);
            if (row.state == State::Normal)
                normalCorner[row.style] = corner;
            EXPECT_EQ(corner.x, normalCorner[row.style].x + row.shift);
            EXPECT_EQ(corner.y, normalCorner[row.style].y + row.shift);
            h.Settle();
        }
    }));
    ::DeleteObject(image);
    static const ExpectedMsg clicks[] = {
        {WM_COMMAND, 0, MAKEWPARAM(101, BN_CLICKED), 0}, {WM_COMMAND, 0, MAKEWPARAM(102, BN_CLICKED), 0},
        {WM_COMMAND, 0, MAKEWPARAM(103, BN_CLICKED), 0}, {WM_COMMAND, 0, MAKEWPARAM(104, BN_CLICKED), 0}, {}};
    EXPECT_TRUE(SequenceMatches(host.Received(), clicks, host.Window()));
}

// Face-coloured pixels of a bitmap become white in the disabled image, which
// the disabled effect leaves out: the button's background shows there, while
// dark pixels are drawn in the shadow colour.
TEST(ColorButton, DisabledBitmapLetsTheBackgroundShowWhereTheFaceWas)
{
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
    HostDialog host(Buttons(1));
    CColorButtonEx button;
    host.onInit = [&](HWND dialog) {
        button.SubclassDlgItem(101, CWnd::FromHandle(dialog));
        button.m_borderStyle = 3;
        button.SetImage(TwoColourBitmap(16, face, RGB(0, 0, 0)), 1, nullptr);
        button.SetBkColor(kBack);
    };
    ASSERT_TRUE(host.RunModal([&](HostDialog& h) {
        ::CoInitialize(nullptr);
        input::MoveTo(h.Window(), 2, 2);
        for (const bool enabled : {true, false})
        {
            h.OnDialogThread([&] { enabled ? button.Enable() : button.Disable(); });
            h.Settle();
            Screenshot shot(h.Window());
            const RECT rc = Client(h.Item(101));
            const int cx = rc.right / 2, cy = rc.bottom / 2;
            SCOPED_TRACE(enabled ? "enabled" : "disabled");
            EXPECT_EQ(shot.PixelOf(h.Item(101), cx - 5, cy - 1), enabled ? face : kBack);
            EXPECT_EQ(shot.PixelOf(h.Item(101), cx + 4, cy - 1), enabled ? RGB(0, 0, 0) : ::GetSysColor(COLOR_BTNSHADOW));
        }
    }));
}

// SetBkColor and SetTxtColor show at once; SetTextColor waits for the next
// repaint; the hot text colour shows while the mouse is over the button.
TEST(ColorButton, ColourSettersRepaintAsDocumented)
{
    using Setter = void (CColorButtonEx::*)(DWORD);
    const std::pair<Setter, bool> rows[] = {{&CColorButtonEx::SetBkColor, true}, {&CColorButtonEx::SetTxtColor, true},
                                            {&CColorButtonEx::SetTextColor, false}, {&CColorButtonEx::SetTextHotColor, false}};
    HostDialog host(Buttons(4, L"MMMM"));
    CColorButtonEx buttons[4];
    host.onInit = [&](HWND dialog) {
        for (int i = 0; i < 4; ++i)
            buttons[i].SubclassDlgItem(101 + i, CWnd::FromHandle(dialog));
    };
    auto redPixels = [](HWND button) {
        Screenshot shot(button);
        int count = 0;
        for (int y = 0; y < shot.Height(); ++y)
            for (int x = 0; x < shot.Width(); ++x)
                count += shot.Pixel(x, y) == kRed;
        return count;
    };
    ASSERT_TRUE(host.RunModal([&](HostDialog& h) {
        input::MoveTo(h.Window(), 2, 2);
        h.Settle();
        for (int i = 0; i < 4; ++i)
        {
            SCOPED_TRACE(i);
            h.OnDialogThread([&] { (buttons[i].*rows[i].first)(kRed); });
            EXPECT_EQ(redPixels(h.Item(101 + i)) > 0, rows[i].second);
            h.OnDialogThread([&] { buttons[i].RedrawWindow(); });
            EXPECT_EQ(redPixels(h.Item(101 + i)) > 0, i != 3);
        }
        input::MoveTo(h.Item(104), 5, 5);
        input::MoveTo(h.Item(104), 6, 6);
        h.Settle();
        EXPECT_GT(redPixels(h.Item(104)), 0);
    }));
}

// A click handler that deletes the button (a modeless dialog closing
// itself) and gives the mouse to another window: the deleted button is not
// read again, so that window keeps the capture.
TEST(ColorButton, AButtonDeletedByItsOwnClickIsNotTouchedAgain)
{
    HostDialog host(Buttons(2, L"删除"));
    CColorButtonEx* button = new CColorButtonEx;
    host.onInit = [&](HWND dialog) { button->SubclassDlgItem(101, CWnd::FromHandle(dialog)); };
    host.onMessage = [&](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
        if (message != WM_COMMAND || wParam != MAKEWPARAM(101, BN_CLICKED) || button == nullptr)
            return false;
        delete button;
        button = nullptr;
        ::SetCapture(host.Item(102));
        return true;
    };
    HWND capture = nullptr;
    ASSERT_TRUE(host.RunModal([&](HostDialog& h) {
        input::Click(h.Item(101), 10, 10);
        h.Settle();
        h.OnDialogThread([&] {
            capture = ::GetCapture();
            ::ReleaseCapture();
        });
        EXPECT_EQ(capture, h.Item(102));
    }));
    EXPECT_EQ(button, nullptr);
}

TEST(ColorButton, SizeToContentToolTipStylesAndRuntimeClass)
{
    struct Row
    {
        int mode;
        const wchar_t* text;
        int noResize;
    };
    const Row rows[] = {{0, L"", 1}, {0, L"", 0}, {1, L"颜色", 0}, {2, L"颜色", 1}, {2, L"", 0}};
    HostDialog host(Buttons(1));
    CColorButtonEx button, created;
    CString first, second;
    HWND tipBefore = reinterpret_cast<HWND>(1);
    host.onInit = [&](HWND dialog) {
        button.SubclassDlgItem(101, CWnd::FromHandle(dialog));
        button.SetImage(TwoColourBitmap(16, kRed, kRed), 1, nullptr);
        created.Create(L"x", WS_CHILD | BS_PUSHBUTTON, CRect(0, 0, 20, 20), CWnd::FromHandle(dialog), 102);
        button.SetTooltip(nullptr);
        tipBefore = button.GetToolTipCtrl().GetSafeHwnd();
        button.SetTooltip(L"选择颜色");
        button.GetToolTipCtrl().GetText(first, &button);
        button.SetTooltip(L"second");
        button.GetToolTipCtrl().GetText(second, &button);
    };
    ASSERT_TRUE(host.RunModal([&](HostDialog& h) {
        EXPECT_EQ(::GetWindowLongW(h.Item(101), GWL_STYLE) & BS_TYPEMASK, BS_OWNERDRAW);
        EXPECT_EQ(::GetWindowLongW(h.Item(102), GWL_STYLE) & BS_TYPEMASK, BS_OWNERDRAW);
        for (const Row& row : rows)
        {
            SCOPED_TRACE(row.mode);
            CSize got, after, text;
            h.OnDialogThread([&] {
                button.MoveWindow(0, 0, 77, 33);
                button.SetWindowText(row.text);
                button.m_displayMode = row.mode;
                CClientDC dc(&button);
                CFont* old = dc.SelectObject(CFont::FromHandle(reinterpret_cast<HFONT>(button.SendMessage(WM_GETFONT))));
                text = dc.GetTextExtent(row.text, lstrlenW(row.text));
                dc.SelectObject(old);
                got = button.SizeToContent(row.noResize);
                after = CRect(Client(button)).Size();
            });
            const CSize want = row.mode == 0   ? CSize(26, 18)
                               : row.mode == 1 ? CSize(text.cx + 10, text.cy + 10)
                                               : CSize(26 + (*row.text ? text.cx + 10 : 0), std::max<int>(text.cy, 8) + 10);
            EXPECT_EQ(got, want);
            EXPECT_EQ(after, row.noResize ? CSize(77, 33) : want);
        }
    }));
    EXPECT_EQ(tipBefore, nullptr);
    EXPECT_EQ(first, CString(L"选择颜色"));
    EXPECT_EQ(second, CString(L"second"));
    EXPECT_TRUE(button.IsKindOf(RUNTIME_CLASS(CButton)));
    EXPECT_STREQ(button.GetRuntimeClass()->m_lpszClassName, "CColorButtonEx");
}

} // namespace
