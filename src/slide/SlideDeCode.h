// SlideDeCode.h - draws CAD slide files into a device context or a bitmap.
//
//   QM::slideStruct s = {};
//   s.pDC = &dc;
//   s.nRight = 320; s.nBottom = 240;
//   s.lpszFileName = L"C:\\Symbols\\valve.sld";
//   s.nFlags = QM::SLD_SUNKEN;
//   int rc = QM::SldBlt(&s);                  // 0, -1 or -2
//
//   QM::slideExStruct ex = {};                // a framed, captioned preview
//   ex.pBkBrush = &black; ex.nWidth = 320; ex.nHeight = 240;
//   ex.lpszFileName = L"C:\\Symbols\\valve.sld";
//   ex.lpszCaption1 = L"阀门"; ex.nFlags = QM::SLD_FRAME | QM::SLD_CAPTION1;
//   CBitmap* preview = QM::SldBltEx(&ex);     // the caller deletes it
//
// Both records are exported and older applications fill them by position:
// the member order and the unused first member must never change.
#pragma once
#include "QMExport.h"
#include "platform/Gdi.h"

namespace QM {

// Flags of slideStruct (0x01 to 0x400) and slideExStruct (all of them; the
// Ex flags are passed on whole, so 0x08 both draws the frame and shrinks the
// drawing area by one pixel).
enum SLD_Flags : unsigned int {
    SLD_STRETCH = 0x01,         // independent X and Y scales, no centring
    SLD_FILLALL = 0x02,         // background covers the whole target rectangle
    SLD_SUNKEN = 0x04,          // sunken edge round the target rectangle
    SLD_SHRINK = 0x08,          // drawing area one pixel narrower and lower
    SLD_FRAME = 0x08,           // slideExStruct: draw the frame
    SLD_BKCOLOR = 0x10,         // crBackground is valid (else black)
    SLD_LEFT = 0x20,            // nLeft is valid (else 0)
    SLD_TOP = 0x40,             // nTop is valid (else 0)
    SLD_PENWIDTH = 0x80,        // nFramePenWidth is valid (else 3)
    SLD_PENCOLOR = 0x100,       // crFramePen is valid (else red)
    SLD_PENSTYLE = 0x200,       // nFramePenStyle is valid (else PS_SOLID)
    SLD_NOBACK = 0x400,         // no background fill at all
    SLD_CAPTION1 = 0x800,       // lpszCaption1 is valid
    SLD_CAPTION1COLOR = 0x1000, // crCaption1 is valid (else red)
    SLD_CAPTIONGAP = 0x2000,    // nCaptionGap is valid (else 8)
    SLD_CAPTION2 = 0x4000,      // lpszCaption2 is valid
    SLD_CAPTION2COLOR = 0x8000, // crCaption2 is valid (else blue)
    SLD_SWAPCAPTIONCOLORS = 0x10000,  // with SLD_FRAME: swap the caption colours
};

struct slideStruct
{
    DWORD_PTR dwUnused;         // never read; holds the layout
    CDC* pDC;                   // the context to draw into
    int nLeft;                  // with SLD_LEFT: left margin (both sides)
    int nTop;                   // with SLD_TOP: top margin (both sides)
    int nRight;                 // outer width of the target
    int nBottom;                // outer height of the target
    const wchar_t* lpszFileName;
    COLORREF crBackground;      // with SLD_BKCOLOR
    UINT nFlags;
};

struct slideExStruct
{
    DWORD_PTR dwUnused;         // never read; holds the layout
    CBrush* pBkBrush;           // fills the whole bitmap first; null paints nothing
    int nWidth;
    int nHeight;
    const wchar_t* lpszFileName;
    COLORREF crSlideBack;       // the slide's own background (see SLD_BKCOLOR)
    int nLeftMargin;            // with SLD_LEFT, or replaced by the pen width with SLD_FRAME
    int nTopMargin;             // with SLD_TOP, or replaced by the pen width with SLD_FRAME
    int nFramePenStyle;
    int nFramePenWidth;
    COLORREF crFramePen;
    const wchar_t* lpszCaption1;
    COLORREF crCaption1;
    int nCaptionGap;            // caption 2 sits this far below the centre
    const wchar_t* lpszCaption2;
    COLORREF crCaption2;
    UINT nFlags;
};

// Draws the slide file into s->pDC, scaled into the target rectangle and
// Y flipped. Returns 0 once the file was read (also when it holds nothing to
// draw), -2 when it cannot be opened for reading (also for a null record,
// context or file name), -1 when its size cannot be had (a device such as
// "NUL" rather than a disk file). A slide whose high X or Y dot is 0 has no
// scale: its background and edge are drawn, its records are not.
// On return the context holds the stock black pen: the pens made here are
// all freed, and the pen selected before the call is not restored.
QM_API int SldBlt(slideStruct* s);

// A new screen-compatible bitmap of nWidth x nHeight holding the background,
// the optional frame and captions and then the slide drawn by SldBlt (whose
// result is not looked at: a missing file leaves only what was drawn before
// it). The caller deletes the bitmap. Any width and height give an object:
// when the platform cannot make a bitmap of that size the object holds no
// handle (m_hObject null) and nothing is drawn; a zero size gives the
// platform's 1 x 1 bitmap. Null only for a null record or when memory runs
// out.
QM_API CBitmap* SldBltEx(slideExStruct* s);

}  // namespace QM
