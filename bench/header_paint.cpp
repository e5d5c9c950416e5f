// header_paint.cpp - CFlatHeaderCtrl painting 50 columns, double buffered,
// against the platform's own header painting the same columns.
//
// Two headers side by side in one window, the same 50 columns each (text,
// alternating alignments); the flat one shows a sort mark. Each repaint is a
// whole invalidation with erasing, painted at once (RedrawWindow with
// RDW_UPDATENOW). Best of five interleaved runs of 200 repaints each, so
// that a busy machine slows both sides alike.
#include "BenchClock.h"
#include <QMUtil.h>

#include <algorithm>
#include <cstdio>

namespace {

const int kColumns = 50, kColumnWidth = 24, kRepaints = 200, kRuns = 5;

double Now()
{
    return 1e6 * bench::Seconds();
}

HWND MakeHeader(HWND parent, int y)
{
    HWND header = CreateWindowExW(0, WC_HEADERW, nullptr, WS_CHILD | WS_VISIBLE | HDS_BUTTONS | HDS_HORZ, 0, y,
                                  kColumns * kColumnWidth, 24, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    SendMessageW(header, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    for (int i = 0; i < kColumns; ++i)
    {
        wchar_t text[16];
        swprintf(text, 16, L"列%d", i);
        HDITEMW item{};
        item.mask = HDI_TEXT | HDI_WIDTH | HDI_FORMAT;
        item.cxy = kColumnWidth;
        item.fmt = HDF_STRING | (i % 3 == 0 ? HDF_LEFT : i % 3 == 1 ? HDF_CENTER : HDF_RIGHT);
        item.pszText = text;
        SendMessageW(header, HDM_INSERTITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
    return header;
}

// Microseconds per repaint, pending messages worked off first.
double TimeRepaints(HWND header)
{
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&msg);
    const double start = Now();
    for (int i = 0; i < kRepaints; ++i)
        RedrawWindow(header, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    return (Now() - start) / kRepaints;
}

} // namespace

int main()
{
    const INITCOMMONCONTROLSEX classes{sizeof(INITCOMMONCONTROLSEX), ICC_WIN95_CLASSES};
    InitCommonControlsEx(&classes);
    HWND window = CreateWindowExW(0, L"STATIC", L"header_paint", WS_POPUP | WS_VISIBLE, 0, 0,
                                  kColumns * kColumnWidth, 60, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (window == nullptr)
    {
        std::printf("header-paint: no window (is there a display?)\n");
        return 1;
    }
    HWND platform = MakeHeader(window, 0);
    CFlatHeaderCtrl flat;
    flat.SubclassWindow(MakeHeader(window, 30));
    flat.SetSortColumn(4, TRUE);
    double best[2] = {1e30, 1e30};
    for (int run = 0; run < kRuns; ++run)
    {
        best[0] = std::min(best[0], TimeRepaints(flat.GetSafeHwnd()));
        best[1] = std::min(best[1], TimeRepaints(platform));
    }
    std::printf("header-paint: %d columns, flat header %.0f us, platform header %.0f us, ratio %.2f (target <= 2)\n",
                kColumns, best[0], best[1], best[0] / best[1]);
    flat.DestroyWindow();
    DestroyWindow(window);
    return 0;
}
