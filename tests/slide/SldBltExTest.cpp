// QM::SldBltEx: the bitmap, its background, frame and captions, and how the
// slide's own background covers the captions.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "SlideCanvas.h"
#include "support/ChildProcess.h"
#include "support/SlideWriter.h"
#include "support/TempDir.h"

#include <memory>

namespace {

using namespace qmtest;

// Any size gives an object the caller can delete; only a null record gives none.
TEST(SldBltEx, AnySizeGivesABitmapObject)
{
    EXPECT_EQ(QM::SldBltEx(nullptr), nullptr);
    for (const POINT size : {POINT{0, 120}, POINT{160, 0}, POINT{-5, -5}}) {
        QM::slideExStruct s{};
        s.nWidth = size.x;
        s.nHeight = size.y;
        EXPECT_NE(std::unique_ptr<CBitmap>(QM::SldBltEx(&s)), nullptr) << size.x << " x " << size.y;
    }
}

// qmtool refuses what is not a slide file, saying why, and writes no picture.
TEST(SldBltEx, QmtoolRendersOnlySlideFiles)
{
    TempDir dir;
    const std::string slide = SlideWriter(100, 100).End().Bytes();
    CreateDirectoryW(dir.Path() + L"folder.sld", nullptr);
    const struct { const wchar_t* name; std::string bytes; const wchar_t* says; } rows[] = {
        {L"empty.sld", "", L"is empty"},
        {L"short.sld", slide.substr(0, 30), L"is shorter than a slide header"},
        {L"text.sld", "x" + slide.substr(1), L"is not a slide (no \"AutoCAD Slide\" identification)"},
        {L"folder.sld", "", L"is a folder"},
    };
    for (const auto& row : rows) {
        const CString file = QM::IsExist(dir.Path() + row.name) ? dir.Path() + row.name : dir.WriteFile(row.name, row.bytes);
        CString output;
        EXPECT_EQ(1, RunQmtool(L"slide render \"" + file + L"\" \"" + dir.Path() + L"out.png\"", output));
        EXPECT_GE(output.Find(row.says), 0) << output.GetString();
        EXPECT_FALSE(QM::IsExist(dir.Path() + L"out.png")) << output.GetString();
    }
}

TEST(SldBltEx, DrawsTheBitmapWithItsFlags)
{
    TempDir dir;
    const CString slide = dir.WriteFile(L"a.sld", SlideWriter(100, 100).Vector(0, 50, 100, 50).End().Bytes());
    const wchar_t* missing = L"C:\\no\\such.sld";
    const COLORREF dark = ::GetSysColor(COLOR_3DDKSHADOW), light = ::GetSysColor(COLOR_BTNHIGHLIGHT);
    const CRect all(0, 0, 160, 120);
    const UINT captions = QM::SLD_CAPTION1 | QM::SLD_CAPTION2;
    const struct { const char* what; const wchar_t* file; UINT flags; std::vector<Probe> probes; } rows[] = {
        // 120 tall, 160 wide: the 120 x 120 slide is centred, 20 px each
        // side; the shifted background reaches -10..150, the brush beyond.
        {"the slide centred on the brush", slide, 0,
         {Pixel(80, 60, kWhite), Pixel(10, 60, kBlack), Pixel(155, 60, kGrey)}},
        {"a missing file leaves the brush only", missing, 0, {Exactly(160 * 120, kGrey, all)}},
        {"the default frame: red pen of 3 and a sunken rectangle", missing, QM::SLD_FRAME,
         {Pixel(1, 60, kRed), Pixel(158, 60, kRed), Pixel(80, 1, kRed), Pixel(3, 60, dark), Pixel(156, 60, light),
          Pixel(80, 60, kGrey)}},
        {"pen members with their flags", missing, QM::SLD_FRAME | QM::SLD_PENWIDTH | QM::SLD_PENCOLOR,
         {Pixel(1, 60, kBlue), Pixel(5, 60, dark), Pixel(7, 60, kGrey)}},
        // left = top = 3 with one pixel shrink: the slide line lands on row 60.
        {"the frame's pen width becomes the margins", slide, QM::SLD_FRAME, {Pixel(80, 60, kWhite)}},
        {"the slide background paints over the captions", slide, captions | QM::SLD_FILLALL,
         {Exactly(0, kRed, all), Exactly(0, kBlue, all)}},
        {"captions show above and below the centre", slide, captions | QM::SLD_NOBACK,
         {MoreThan(10, kRed, CRect(0, 0, 160, 60)), Exactly(0, kRed, CRect(0, 61, 160, 120)),
          MoreThan(10, kBlue, CRect(0, 68, 160, 120)), Exactly(0, kBlue, CRect(0, 0, 160, 68))}},
        {"a frame can swap the caption colours", slide,
         QM::SLD_CAPTION1 | QM::SLD_NOBACK | QM::SLD_FRAME | QM::SLD_SWAPCAPTIONCOLORS,
         {MoreThan(10, kBlue, CRect(4, 4, 156, 59)), Exactly(0, kRed, CRect(4, 4, 156, 59))}},
        {"captions need their flags", slide, QM::SLD_NOBACK, {Exactly(0, kRed, all), Exactly(0, kBlue, all)}},
    };
    for (const auto& row : rows) {
        // Every optional member is set and must only count with its flag; the
        // margins never have theirs and count only as the frame's pen width.
        CBrush brush(kGrey);
        QM::slideExStruct s{0, &brush, 160, 120, row.file, 0, 40, 40, PS_SOLID, 5, kBlue,
                            L"阀门 Valve", kGreen, 8, L"第二行", kGreen, row.flags};
        const std::unique_ptr<CBitmap> bitmap(QM::SldBltEx(&s));
        ASSERT_TRUE(bitmap) << row.what;
        const SlideCanvas canvas(*bitmap);
        EXPECT_TRUE(canvas.width == 160 && canvas.height == 120) << row.what;
        canvas.Expect(row.probes, row.what);
    }
}

}  // namespace
