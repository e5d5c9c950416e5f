// The colour picker in a host dialog driven by real mouse input, its
// palette read back from the screen.
#include <QMUtil.h>

#include "support/HostDialog.h"
#include "support/Input.h"
#include "support/Screenshot.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

enum : WORD { IDC_PICKER = 201, IDC_BUDDY = 202, IDC_TARGET = 203, IDC_SECOND = 204 };
constexpr COLORREF kTargetColour = RGB(0x12, 0x34, 0x56);

// The picker, its buddy edit, and a window of known colour to pick from.
struct PickerHost
{
    HostDialog host{{{L"BUTTON", L"", BS_OWNERDRAW, IDC_PICKER, 10, 10, 30, 14},
                     {L"BUTTON", L"", BS_OWNERDRAW, IDC_SECOND, 10, 120, 30, 14},
                     {L"EDIT", L"", ES_AUTOHSCROLL | WS_BORDER, IDC_BUDDY, 50, 10, 50, 14},
                     {L"BUTTON", L"", BS_PUSHBUTTON, IDC_TARGET, 160, 60, 50, 40}},
                    230, 150};
    CColorPickerEx picker, second;
    CColorButtonEx target;

    PickerHost()
    {
        host.onInit = [this](HWND dialog) {
            picker.SubclassDlgItem(IDC_PICKER, CWnd::FromHandle(dialog));
            picker.SetBuddy(::GetDlgItem(dialog, IDC_BUDDY));
            second.SubclassDlgItem(IDC_SECOND, CWnd::FromHandle(dialog));
            target.SubclassDlgItem(IDC_TARGET, CWnd::FromHandle(dialog));
            target.m_borderStyle = 3;
            target.SetBkColor(kTargetColour);
        };
    }
};

HWND Palette()
{
    return ::FindWindowW(L"ColorPalette", L"Palatte");
}

// Opens the palette with a click that does not move: it stays open.
HWND OpenPalette(HostDialog& h)
{
    input::Click(h.Item(IDC_PICKER), 8, 8);
    h.Settle();
    return Palette();
}

// The palette's colours: a grey ramp in column 0, then a 6 x 6 x 6 cube;
// each column holds one (red, green) pair with blue rising downwards, the
// reds 0-102 in the upper six rows and 153-255 in the lower six.
COLORREF CellColour(int column, int row)
{
    static const int greys[12] = {255, 232, 209, 186, 163, 140, 117, 94, 71, 48, 23, 0};
    if (column == 0)
        return RGB(greys[row], greys[row], greys[row]);
    const int pair = (row / 6) * 18 + column - 1;
    return RGB(51 * (pair / 6), 51 * (pair % 6), 51 * (row % 6));
}

// The preview's colour, and the focus rectangle's dots along the top of a cell.
COLORREF Preview(HWND palette, int column, int row, int* dots)
{
    Screenshot shot(palette);
    for (int x = 10 * column; x < 10 * column + 9; ++x)
        *dots += shot.PixelOf(palette, x, 10 * row) != CellColour(column, row);
    return shot.PixelOf(palette, 20, 133);
}

TEST(ColorPicker, PaletteShowsEveryCellAndTheMoreColoursButton)
{
    PickerHost t;
    ASSERT_TRUE(t.host.RunModal([&](HostDialog& h) {
        const HWND palette = OpenPalette(h);
        ASSERT_NE(palette, nullptr);
        RECT outline{};
        ::GetWindowRect(palette, &outline);
        EXPECT_EQ(outline.right - outline.left, 191);
        EXPECT_EQ(outline.bottom - outline.top, 150);
        Screenshot shot(palette);
        for (int row = 0; row < 12; ++row)
            for (int column = 0; column < 19; ++column)
                ASSERT_EQ(shot.PixelOf(palette, 10 * column + 4, 10 * row + 4), CellColour(column, row))
                    << "cell " << column << ", " << row;
        EXPECT_EQ(shot.PixelOf(palette, 20, 133), ::GetSysColor(COLOR_BTNFACE));
        const HWND more = ::GetDlgItem(palette, 100);
        const struct { int x, y; COLORREF colour; } squares[] = {
            {3, 3, RGB(255, 0, 0)}, {8, 5, RGB(0, 255, 0)}, {9, 9, RGB(255, 255, 0)}, {6, 6, RGB(0, 0, 0)}};
        for (const auto& square : squares)
            EXPECT_EQ(shot.PixelOf(more, square.x, square.y), square.colour);
        // The next click, on a cell, takes that cell's colour.
        input::Click(palette, 10 * 3 + 4, 10 * 2 + 4);
        h.Settle();
        EXPECT_EQ(Palette(), nullptr);
    }));
    EXPECT_EQ(t.picker.GetColor(), CellColour(3, 2));
}

enum class Over { Cell, GridLine, Strip, Target };

struct Step
{
    Over over;
    int column, row;  // for Cell and GridLine: the cell, or the one left of the line
};

struct DragRow
{
    const char* name;
    std::vector<Step> path;
    bool takes;  // the release sets the colour of the last preview
};

const DragRow kDrags[] = {
    {"eyedropper over another window", {{Over::Cell, 5, 3}, {Over::Target, 0, 0}}, true},
    {"grid line clears the selection only", {{Over::Cell, 7, 1}, {Over::GridLine, 7, 1}}, true},
    {"lower strip restores the original", {{Over::Cell, 2, 8}, {Over::Strip, 0, 0}}, false},
};

TEST(ColorPicker, DraggingPreviewsAndReleasingTakesTheColour)
{
    for (const DragRow& drag : kDrags)
    {
        SCOPED_TRACE(drag.name);
        PickerHost t;
        const COLORREF original = t.picker.GetColor();
        COLORREF last = original;
        std::wstring buddy;
        ASSERT_TRUE(t.host.RunModal([&](HostDialog& h) {
            input::Press(h.Item(IDC_PICKER), 8, 8);
            h.Settle();
            const HWND palette = Palette();
            ASSERT_NE(palette, nullptr);
            for (const Step& step : drag.path)
            {
                const int x = 10 * step.column + 4, y = 10 * step.row + 4;
                if (step.over == Over::Target)
                    input::MoveTo(h.Item(IDC_TARGET), 20, 20);
                else if (step.over == Over::Strip)
                    input::MoveTo(palette, 60, 135);
                else
                    input::MoveTo(palette, step.over == Over::Cell ? x : x + 5, y);
                h.Settle();
                if (step.over == Over::Cell)
                    last = CellColour(step.column, step.row);
                else if (step.over != Over::GridLine)
                    last = step.over == Over::Target ? kTargetColour : original;
                int dots = 0;
                EXPECT_EQ(Preview(palette, step.column, step.row, &dots), last);
                // The focus rectangle shows on the selected cell only.
                EXPECT_TRUE(step.over != Over::Cell || dots > 0);
                EXPECT_TRUE(step.over != Over::GridLine || dots == 0);
            }
            input::Release();
            h.Settle();
            EXPECT_EQ(Palette(), nullptr);
            buddy = h.Text(IDC_BUDDY);
        }));
        EXPECT_EQ(t.picker.GetColor(), drag.takes ? last : original);
        CString hex;
        t.picker.GetColor(hex);
        EXPECT_EQ(buddy, drag.takes ? std::wstring(hex) : std::wstring());
        // The buddy's text changes at once; the picker's own notice is posted.
        static const ExpectedMsg kNotified[] = {{WM_COMMAND, 0, MAKEWPARAM(IDC_BUDDY, EN_UPDATE), 0},
                                                {WM_COMMAND, 0, MAKEWPARAM(IDC_BUDDY, EN_CHANGE), 0},
                                                {WM_COMMAND, 0, MAKEWPARAM(IDC_PICKER, 0), 0},
                                                {0, 0, 0, 0}};
        static const ExpectedMsg kQuiet[] = {{0, 0, 0, 0}};
        EXPECT_TRUE(SequenceMatches(t.host.Received(), drag.takes ? kNotified : kQuiet, t.host.Window()));
    }
}

TEST(ColorPicker, MoreColoursOpensTheFullColourDialog)
{
    PickerHost t;
    bool fullOpen = false;
    ASSERT_TRUE(t.host.RunModal([&](HostDialog& h) {
        const HWND palette = OpenPalette(h);
        ASSERT_NE(palette, nullptr);
        const HWND more = ::GetDlgItem(palette, 100);
        input::MoveTo(more, 8, 8);
        h.Settle();
        input::Click(more, 8, 8);
        HWND dialog = nullptr;  // a visible dialog on the host's thread other than the host
        const DWORD thread = ::GetWindowThreadProcessId(h.Window(), nullptr);
        for (int i = 0; i < 200 && dialog == nullptr; ++i, ::Sleep(20))
            for (HWND w = nullptr; (w = ::FindWindowExW(nullptr, w, L"#32770", nullptr)) != nullptr;)
                if (w != h.Window() && ::IsWindowVisible(w) && ::GetWindowThreadProcessId(w, nullptr) == thread)
                    dialog = w;
        ASSERT_NE(dialog, nullptr);
        ::Sleep(100);
        EXPECT_EQ(Palette(), nullptr);
        // The custom-colour half shows from the start: its opening button is off.
        fullOpen = !::IsWindowEnabled(::GetDlgItem(dialog, 0x2cf));
        const wchar_t* rgb[3] = {L"18", L"52", L"86"};
        for (int i = 0; i < 3; ++i)
            ::SendMessageW(::GetDlgItem(dialog, 0x2c2 + i), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(rgb[i]));
        ::SendMessageW(dialog, WM_COMMAND, IDOK, 0);
        h.Settle();
        EXPECT_EQ(h.Text(IDC_BUDDY), L"123456");
    }));
    EXPECT_TRUE(fullOpen);
    EXPECT_EQ(t.picker.GetColor(), kTargetColour);  // the buddy shows red, green, blue
}

// A palette that ends other than by a click on a colour: the picker keeps
// its colour, holds no capture, and its next click opens a palette again;
// a click elsewhere is an ordinary click.
struct EndRow
{
    const char* name;
    void (*end)(PickerHost&, HostDialog&, HWND palette);
};

const EndRow kEnds[] = {
    {"WM_CLOSE", [](PickerHost&, HostDialog& h, HWND palette) { ::PostMessageW(palette, WM_CLOSE, 0, 0); h.Settle(); }},
    {"Alt+F4", [](PickerHost&, HostDialog& h, HWND palette) { ::PostMessageW(palette, WM_SYSCOMMAND, SC_CLOSE, 0); h.Settle(); }},
    {"the well clicked after the more-colours button", [](PickerHost&, HostDialog& h, HWND palette) {
         input::MoveTo(::GetDlgItem(palette, 100), 8, 8);
         h.Settle();
         input::Click(h.Item(IDC_PICKER), 8, 8);
         h.Settle(); }},
    {"a second picker opened", [](PickerHost& t, HostDialog& h, HWND) {
         h.OnDialogThread([&] { t.second.SendMessage(WM_LBUTTONDOWN, 0, MAKELPARAM(5, 5)); });
         h.Settle();
         int palettes = 0;
         for (HWND w = nullptr; (w = ::FindWindowExW(nullptr, w, L"ColorPalette", nullptr)) != nullptr;)
             ++palettes;
         EXPECT_EQ(palettes, 1);
         h.OnDialogThread([&] { t.second.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(5, 5)); });
         h.Settle(); }},
};

TEST(ColorPicker, APaletteClosedAnyOtherWayLeavesThePickerAsItWas)
{
    for (const EndRow& row : kEnds)
    {
        SCOPED_TRACE(row.name);
        PickerHost t;
        ASSERT_TRUE(t.host.RunModal([&](HostDialog& h) {
            h.OnDialogThread([&] { t.picker.SetColor(kTargetColour); });
            const HWND palette = OpenPalette(h);
            ASSERT_NE(palette, nullptr);
            row.end(t, h, palette);
            EXPECT_EQ(Palette(), nullptr);
            HWND capture = reinterpret_cast<HWND>(1);
            h.OnDialogThread([&] { capture = ::GetCapture(); });
            EXPECT_EQ(capture, nullptr);
            input::Click(h.Item(IDC_BUDDY), 5, 5);
            h.Settle();
            EXPECT_EQ(Palette(), nullptr);  // that click was the buddy's
            EXPECT_NE(OpenPalette(h), nullptr);
            input::Click(h.Item(IDC_PICKER), 8, 8);  // and closes, taking nothing
            h.Settle();
            EXPECT_EQ(Palette(), nullptr);
            EXPECT_EQ(h.Text(IDC_BUDDY), L"123456");
            EXPECT_EQ(t.picker.GetColor(), kTargetColour);
        }));
    }
}

} // namespace
