// FlatHeaderAutoSize.cpp - auto-size mode: the columns share the parent's
// client width in proportion to their widths, each within its limits.
#include "controls/FlatHeaderCtrl.h"

#include <algorithm>
#include <memory>

namespace {

constexpr int kNoMaximum = 16384;

int WidthOf(const CHeaderCtrl& header, int item)
{
    HDITEMW hdi{};
    hdi.mask = HDI_WIDTH;
    header.GetItem(item, &hdi);
    return hdi.cxy;
}

void WriteWidth(CHeaderCtrl& header, int item, int width)
{
    HDITEMW hdi{};
    hdi.mask = HDI_WIDTH;
    hdi.cxy = width;
    header.SetItem(item, &hdi);
}

} // namespace

// With `resizedItem` (-1: none) the columns after it in display order share
// what it leaves; when it is the last, all of them are fitted again.
void CFlatHeaderCtrl::AutoSize(int resizedItem)
{
    const int count = GetItemCount();
    const HWND parent = ::GetParent(m_hWnd);
    CRect client;
    if (count <= 0 || parent == nullptr || m_bAutoSizing || !::GetClientRect(parent, &client) || client.Width() < 1)
        return;
    std::unique_ptr<int[]> order(NewOrderArray(count));
    GetOrderArray(order.get(), count);
    int resizedOrder = -1;
    for (int at = 0; at < count - 1; ++at)
    {
        if (order[at] == resizedItem)
            resizedOrder = at;
    }
    m_bAutoSizing = TRUE;
    CollectAutoSize(resizedOrder + 1, order.get(), count);
    int minima = 0;
    for (INT_PTR at = 0; at < m_arrayAutoSize.GetSize(); ++at)
        minima += m_arrayAutoSize[at].iMinWidth;
    const int available = resizedOrder < 0 ? client.Width()
                                           : FitResizedColumn(resizedOrder, order.get(), client.Width(), minima);
    SpreadAutoSize(std::max(available, minima));
    m_bAutoSizing = FALSE;
}

void CFlatHeaderCtrl::CollectAutoSize(int first, const int* order, int count)
{
    m_arrayAutoSize.RemoveAll();
    for (int at = first; at < count; ++at)
    {
        HDITEMEX ex;
        GetItemEx(order[at], &ex);
        const int maximum = ex.iMaxWidth < 1 ? kNoMaximum : ex.iMaxWidth;
        m_arrayAutoSize.Add(structFHAutoSize{order[at], WidthOf(*this, order[at]), ex.iMinWidth, maximum});
    }
}

// The resized column keeps its new width within its limits and leaves the
// following columns at least their minima; the answer is the width they
// share.
int CFlatHeaderCtrl::FitResizedColumn(int resizedOrder, const int* order, int clientWidth, int minimaRight)
{
    int left = 0;
    for (int at = 0; at < resizedOrder; ++at)
        left += WidthOf(*this, order[at]);
    const int item = order[resizedOrder];
    HDITEMEX ex;
    GetItemEx(item, &ex);
    const int old = WidthOf(*this, item);
    int width = std::min({old, ex.iMaxWidth < 1 ? kNoMaximum : ex.iMaxWidth, clientWidth - left - minimaRight});
    width = std::max(width, ex.iMinWidth);
    if (width != old)
        WriteWidth(*this, item, width);
    return clientWidth - left - width;
}

// Proportional shares first; then the rounding error goes one pixel at a
// time to each column in turn, as long as some column can still take it.
void CFlatHeaderCtrl::SpreadAutoSize(int available)
{
    long long total = 0;
    for (INT_PTR at = 0; at < m_arrayAutoSize.GetSize(); ++at)
        total += m_arrayAutoSize[at].iWidth;
    total = std::max(total, 1LL);
    int sum = 0;
    for (INT_PTR at = 0; at < m_arrayAutoSize.GetSize(); ++at)
    {
        structFHAutoSize& column = m_arrayAutoSize[at];
        const int share = static_cast<int>(column.iWidth * static_cast<long long>(available) / total);
        column.iWidth = std::min(std::max(share, column.iMinWidth), column.iMaxWidth);
        sum += column.iWidth;
    }
    for (bool changed = true; sum != available && changed;)
    {
        changed = false;
        for (INT_PTR at = 0; at < m_arrayAutoSize.GetSize() && sum != available; ++at)
        {
            structFHAutoSize& column = m_arrayAutoSize[at];
            const int step = sum < available ? (column.iWidth < column.iMaxWidth ? 1 : 0)
                                             : (column.iWidth > column.iMinWidth ? -1 : 0);
            column.iWidth += step;
            sum += step;
            changed = changed || step != 0;
        }
    }
    for (INT_PTR at = 0; at < m_arrayAutoSize.GetSize(); ++at)
    {
        const structFHAutoSize& column = m_arrayAutoSize[at];
        if (WidthOf(*this, column.iItem) != column.iWidth)
            WriteWidth(*this, column.iItem, column.iWidth);
    }
}
