// FlatHeaderPaint.cpp - the flat face: items in display order, etched
// dividers, the pressed item inverted, a 3-D frame, and each item's image,
// text, sort mark and bitmap laid out by its alignment.
#include "controls/FlatHeaderCtrl.h"

#include "platform/win/DeviceContexts.h"

#include <algorithm>

void CFlatHeaderCtrl::OnPaint()
{
    CPaintDC dc(this);
    if (!m_bDoubleBuffer)
    {
        DrawCtrl(&dc);
        return;
    }
    CMemDC memDC(&dc);
    DrawCtrl(&memDC);
}

void CFlatHeaderCtrl::DrawCtrl(CDC* dc)
{
    CRect clip, client;
    dc->GetClipBox(clip);
    GetClientRect(client);
    dc->FillSolidRect(clip, m_cr3DFace);
    CFont* oldFont = dc->SelectObject(&m_font);
    dc->SetBkColor(m_cr3DFace);
    dc->SetTextColor(m_crText);
    const int count = GetItemCount();
    int covered = 0;
    for (int at = 0; at < count; ++at)
    {
        const int index = OrderToIndex(at);
        wchar_t text[160] = L"";
        HDITEMW hdi{};
        hdi.mask = HDI_WIDTH | HDI_TEXT | HDI_FORMAT | HDI_BITMAP | HDI_IMAGE | HDI_ORDER | HDI_LPARAM;
        hdi.pszText = text;
        hdi.cchTextMax = ARRAYSIZE(text);
        CRect item;
        if (!GetItem(index, &hdi) || !GetItemRect(index, item))
            continue;
        covered = std::max(covered, static_cast<int>(item.right));
        if (item.right < clip.left || item.left > clip.right)
            continue;
        CRect inner = item;
        inner.DeflateRect(m_iSpacing, 0);
        DrawItem(dc, inner, &hdi, index == m_iSortColumn, m_bSortAscending);
        if (m_bButtonDown && !m_bResizing && index == m_iHotIndex && (m_nHitTest & HHT_ONHEADER))
            dc->InvertRect(item);
        if (at < count - 1)
        {
            dc->FillSolidRect(item.right - 1, item.top + 2, 1, item.Height() - 4, m_cr3DShadow);
            dc->FillSolidRect(item.right, item.top + 2, 1, item.Height() - 4, m_cr3DHighLight);
        }
    }
    if (covered > 0)
        dc->Draw3dRect(CRect(0, 0, covered, client.bottom), m_cr3DHighLight, m_cr3DShadow);
    dc->SelectObject(oldFont);
}

// Left alignment: image, text, sort mark, bitmap from the left. Right and
// centre: the bitmap at the left (or at the right with
// HDF_BITMAP_ON_RIGHT), the sort mark at the right, image and text between.
void CFlatHeaderCtrl::DrawItem(CDC* dc, CRect rect, LPHDITEMW item, BOOL sortColumn, BOOL ascending)
{
    const HIMAGELIST images = GetImageList();
    if (rect.Width() <= 0 || ((item->fmt & HDF_IMAGE) && (images == nullptr || item->iImage < 0 ||
                                                           item->iImage >= ImageList_GetImageCount(images))))
        return;
    const bool image = (item->fmt & HDF_IMAGE) != 0;
    const bool bitmap = (item->fmt & HDF_BITMAP) && item->hbm != nullptr;
    const bool hasText = (item->fmt & HDF_STRING) && item->pszText != nullptr && item->pszText[0] != L'\0';
    const int spacing = m_iSpacing;
    if ((item->fmt & HDF_JUSTIFYMASK) == HDF_LEFT)
    {
        if (image)
            rect.left += DrawImage(dc, rect, item, FALSE) + spacing;
        CRect text = rect;
        if (sortColumn)
            text.right -= m_sizeArrow.cx + spacing;
        BITMAP size{};
        if (bitmap && ::GetObjectW(item->hbm, sizeof(size), &size) == sizeof(size))
            text.right -= size.bmWidth + spacing;
        text.right = std::min(text.right, text.left + (hasText ? TextExtent(item) : 0));
        if (text.Width() > 0)
        {
            DrawText(dc, text, item);
            rect.left = text.right + spacing;
        }
        if (sortColumn)
            rect.left += DrawArrow(dc, rect, ascending, FALSE) + spacing;
        if (bitmap)
            DrawBitmap(dc, rect, item, FALSE);
        return;
    }
    if (bitmap && (item->fmt & HDF_BITMAP_ON_RIGHT))
        rect.right -= DrawBitmap(dc, rect, item, TRUE) + spacing;
    else if (bitmap)
        rect.left += DrawBitmap(dc, rect, item, FALSE) + spacing;
    if (sortColumn)
        rect.right -= DrawArrow(dc, rect, ascending, TRUE) + spacing;
    const int textWidth = hasText ? TextExtent(item) : 0;
    const int imageWidth = image ? m_sizeImage.cx + (textWidth > 0 ? spacing : 0) : 0;
    const int used = std::min(static_cast<int>(rect.Width()), imageWidth + textWidth);
    if ((item->fmt & HDF_JUSTIFYMASK) == HDF_RIGHT)
        rect.left = rect.right - used;
    else
        rect.left += (rect.Width() - used) / 2;
    if (image)
        rect.left += DrawImage(dc, rect, item, FALSE) + spacing;
    if (rect.Width() > 0)
        DrawText(dc, rect, item);
}

int CFlatHeaderCtrl::DrawImage(CDC* dc, CRect rect, LPHDITEMW item, BOOL right)
{
    const int width = std::min(static_cast<int>(m_sizeImage.cx), static_cast<int>(rect.Width()));
    if (width <= 0)
        return 0;
    const int x = right ? rect.right - width : rect.left;
    ImageList_DrawEx(GetImageList(), item->iImage, dc->GetSafeHdc(), x, rect.top + (rect.Height() - m_sizeImage.cy) / 2,
                     width, m_sizeImage.cy, CLR_DEFAULT, CLR_DEFAULT, ILD_TRANSPARENT);
    return width;
}

int CFlatHeaderCtrl::DrawBitmap(CDC* dc, CRect rect, LPHDITEMW item, BOOL right)
{
    BITMAP size{};
    if (::GetObjectW(item->hbm, sizeof(size), &size) != sizeof(size))
        return 0;
    const int width = std::min(static_cast<int>(size.bmWidth), static_cast<int>(rect.Width()));
    if (width <= 0)
        return 0;
    CDC source;
    if (!source.CreateCompatibleDC(dc))
        return 0;
    const HGDIOBJ old = source.SelectObject(item->hbm);
    const int height = std::min(static_cast<int>(size.bmHeight), static_cast<int>(rect.Height()));
    const int x = right ? rect.right - width : rect.left;
    dc->BitBlt(x, rect.top + (rect.Height() - height) / 2, width, height, &source, 0, 0, SRCCOPY);
    source.SelectObject(old);
    return width;
}

void CFlatHeaderCtrl::DrawText(CDC* dc, CRect rect, LPHDITEMW item)
{
    if ((item->fmt & HDF_STRING) && item->pszText != nullptr)
        dc->DrawText(item->pszText, -1, rect, DT_LEFT | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

// An etched triangle: shadow on the sides facing up and left, highlight on
// the others; up for ascending. Nothing when the space is too narrow.
int CFlatHeaderCtrl::DrawArrow(CDC* dc, CRect rect, BOOL ascending, BOOL right)
{
    const int width = m_sizeArrow.cx, height = m_sizeArrow.cy;
    if (rect.Width() < width || width <= 0 || height <= 0)
        return 0;
    const int x = right ? rect.right - width : rect.left;
    const int y = rect.top + (rect.Height() - height - 1) / 2;
    const int apex = x + width / 2, bottom = y + height - 1;
    CPen light(PS_SOLID, 1, m_cr3DHighLight), shadow(PS_SOLID, 1, m_cr3DShadow);
    CPen* old = dc->SelectObject(&shadow);
    if (ascending)
    {
        dc->MoveTo(apex, y);
        dc->LineTo(x, bottom);
        dc->SelectObject(&light);
        dc->LineTo(x + width - 1, bottom);
        dc->LineTo(apex, y);
    }
    else
    {
        dc->MoveTo(x + width - 1, y);
        dc->LineTo(x, y);
        dc->LineTo(apex, bottom);
        dc->SelectObject(&light);
        dc->LineTo(x + width - 1, y);
    }
    dc->SelectObject(old);
    return width;
}
