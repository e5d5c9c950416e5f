// QM::SldBlt: return codes, placement, colours and fills, read as pixels.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "SlideCanvas.h"
#include "support/SlideWriter.h"
#include "support/TempDir.h"

#include <cstddef>

namespace {

using qmtest::kBlack;
using qmtest::kUntouched;
using qmtest::kWhite;
using qmtest::SlideCanvas;
using qmtest::SlideWriter;

const COLORREF kRed = RGB(255, 0, 0);
const COLORREF kGreen = RGB(0, 255, 0);

class SldBltTest : public ::testing::Test
{
protected:
    // Draws `slide` into `canvas` with the target size and flags given.
    int Draw(SlideCanvas& canvas, const SlideWriter& slide, int right, int bottom, UINT flags = 0)
    {
        const CString path = dir.WriteFile(L"t.sld", slide.Bytes());
        return Draw(canvas, path, right, bottom, flags);
    }
    int Draw(SlideCanvas& canvas, const wchar_t* path, int right, int bottom, UINT flags)
    {
        s = QM::slideStruct{};
        s.pDC = &canvas.dc;
        s.nLeft = left;
        s.nTop = top;
        s.nRight = right;
        s.nBottom = bottom;
        s.lpszFileName = path;
        s.crBackground = background;
        s.nFlags = flags;
        return QM::SldBlt(&s);
    }
    // A white horizontal slide line at y = 10 and a colour-1 one at y = 50.
    static SlideWriter Lines()
    {
        SlideWriter slide(100, 100);
        slide.Vector(10, 10, 90, 10).Colour(1).Vector(0, 50, 100, 50).End();
        return slide;
    }

    qmtest::TempDir dir;
    QM::slideStruct s{};
    int left = 0, top = 0;
    COLORREF background = RGB(0, 0, 255);
};

class SldBltResult : public SldBltTest {};

TEST_F(SldBltResult, MissingFileIsMinusTwoAndDrawsNothing)
{
    SlideCanvas canvas(20, 20);
    EXPECT_EQ(Draw(canvas, (dir.Path() + L"none.sld").GetString(), 20, 20, 0), -2);
    EXPECT_EQ(Draw(canvas, nullptr, 20, 20, 0), -2);
    EXPECT_EQ(QM::SldBlt(nullptr), -2);
    EXPECT_EQ(canvas.Count(kUntouched), 400);
}

TEST_F(SldBltResult, DeviceWithoutSizeIsMinusOne)
{
    SlideCanvas canvas(20, 20);
    EXPECT_EQ(Draw(canvas, L"NUL", 20, 20, 0), -1);
    EXPECT_EQ(canvas.Count(kUntouched), 400);
}

TEST_F(SldBltResult, ShortFileDrawsBackgroundOnly)
{
    SlideCanvas canvas(20, 20);
    const CString path = dir.WriteFile(L"short.sld", "AutoCAD Slide");
    EXPECT_EQ(Draw(canvas, path, 20, 20, 0), 0);
    EXPECT_EQ(canvas.Count(kBlack), 400);
}

TEST_F(SldBltResult, ZeroHighDotDrawsBackgroundButNoVectors)
{
    SlideCanvas canvas(100, 100);
    SlideWriter slide(0, 100);
    slide.Vector(0, 50, 100, 50).End();
    EXPECT_EQ(Draw(canvas, slide, 100, 100), 0);
    EXPECT_EQ(canvas.Count(kBlack), 100 * 100);
}

TEST_F(SldBltResult, LeavesTheStockPenSelected)
{
    SlideCanvas canvas(100, 100);
    ASSERT_EQ(Draw(canvas, Lines(), 100, 100), 0);
    EXPECT_EQ(::GetCurrentObject(canvas.dc, OBJ_PEN), ::GetStockObject(BLACK_PEN));
}

class SldBltPlacement : public SldBltTest {};

TEST_F(SldBltPlacement, ColoursComeFromTheIndexAndYIsFlipped)
{
    SlideCanvas canvas(100, 100);
    ASSERT_EQ(Draw(canvas, Lines(), 100, 100), 0);
    EXPECT_EQ(canvas.At(50, 90), kWhite);
    EXPECT_EQ(canvas.At(10, 90), kWhite);
    EXPECT_EQ(canvas.At(90, 90), kBlack);  // the end point stays unlit
    EXPECT_EQ(canvas.At(50, 10), kBlack);
    EXPECT_EQ(canvas.Count(kRed, CRect(0, 50, 100, 51)), 100);
}

TEST_F(SldBltPlacement, ScalesWithTheTarget)
{
    SlideCanvas canvas(200, 200);
    ASSERT_EQ(Draw(canvas, Lines(), 200, 200), 0);
    EXPECT_EQ(canvas.Count(kWhite, CRect(0, 180, 200, 181)), 160);
    EXPECT_EQ(canvas.Count(kRed, CRect(0, 100, 200, 101)), 200);
}

TEST_F(SldBltPlacement, WideTargetCentresHorizontallyWithShiftedBackground)
{
    SlideCanvas canvas(300, 100);
    ASSERT_EQ(Draw(canvas, Lines(), 300, 100), 0);
    EXPECT_EQ(canvas.Count(kRed, CRect(0, 50, 300, 51)), 100);
    EXPECT_EQ(canvas.At(100, 50), kRed);
    EXPECT_EQ(canvas.At(99, 50), kBlack);
    // The background runs from -cx/2 to W - cx/2: the right quarter of the
    // target keeps what was there.
    EXPECT_EQ(canvas.Count(kUntouched, CRect(250, 0, 300, 100)), 50 * 100);
    EXPECT_EQ(canvas.At(249, 20), kBlack);
    EXPECT_EQ(canvas.At(0, 20), kBlack);
}

TEST_F(SldBltPlacement, TallTargetCentresVerticallyWithShiftedBackground)
{
    SlideCanvas canvas(100, 300);
    ASSERT_EQ(Draw(canvas, Lines(), 100, 300), 0);
    EXPECT_EQ(canvas.Count(kRed, CRect(0, 150, 100, 151)), 100);
    EXPECT_EQ(canvas.At(50, 190), kWhite);
    EXPECT_EQ(canvas.Count(kUntouched, CRect(0, 0, 100, 50)), 100 * 50);
    EXPECT_EQ(canvas.Count(kUntouched, CRect(0, 250, 100, 300)), 100 * 50);
    EXPECT_EQ(canvas.At(50, 60), kBlack);
}

TEST_F(SldBltPlacement, StretchScalesEachAxisAlone)
{
    SlideCanvas canvas(300, 100);
    ASSERT_EQ(Draw(canvas, Lines(), 300, 100, QM::SLD_STRETCH), 0);
    EXPECT_EQ(canvas.Count(kRed, CRect(0, 50, 300, 51)), 300);
    EXPECT_EQ(canvas.Count(kWhite, CRect(0, 90, 300, 91)), 240);
}

TEST_F(SldBltPlacement, MarginsInsetBothSides)
{
    left = 10;
    top = 20;
    SlideCanvas canvas(130, 150);
    SlideWriter slide(100, 100);
    slide.Vector(0, 0, 50, 0).Vector(0, 100, 100, 100).End();
    ASSERT_EQ(Draw(canvas, slide, 120, 140, QM::SLD_LEFT | QM::SLD_TOP), 0);
    EXPECT_EQ(canvas.Count(kWhite, CRect(0, 120, 130, 121)), 50);
    EXPECT_EQ(canvas.At(10, 120), kWhite);
    EXPECT_EQ(canvas.Count(kWhite, CRect(0, 20, 130, 21)), 100);
    EXPECT_EQ(canvas.Count(kBlack, CRect(0, 0, 130, 150)), 100 * 100 - 100);
    EXPECT_EQ(canvas.At(5, 50), kUntouched);
    EXPECT_EQ(canvas.At(115, 50), kUntouched);
}

TEST_F(SldBltPlacement, MarginsIgnoredWithoutTheirFlags)
{
    left = 10;
    top = 20;
    SlideCanvas canvas(100, 100);
    ASSERT_EQ(Draw(canvas, Lines(), 100, 100), 0);
    EXPECT_EQ(canvas.Count(kRed, CRect(0, 50, 100, 51)), 100);
}

TEST_F(SldBltPlacement, ShrinkTakesOnePixelOffWidthAndHeight)
{
    SlideCanvas canvas(101, 101);
    ASSERT_EQ(Draw(canvas, Lines(), 101, 101, QM::SLD_SHRINK), 0);
    EXPECT_EQ(canvas.At(50, 90), kWhite);
    SlideCanvas unshrunk(101, 101);
    ASSERT_EQ(Draw(unshrunk, Lines(), 101, 101), 0);
    EXPECT_EQ(unshrunk.At(50, 91), kWhite);
    EXPECT_EQ(unshrunk.At(50, 90), kBlack);
}

TEST_F(SldBltPlacement, SunkenEdgeLiftsTheDrawingFourPixels)
{
    SlideCanvas canvas(100, 100);
    ASSERT_EQ(Draw(canvas, Lines(), 100, 100, QM::SLD_SUNKEN), 0);
    EXPECT_EQ(canvas.At(50, 86), kWhite);
    EXPECT_EQ(canvas.At(50, 90), kBlack);
    EXPECT_EQ(canvas.At(50, 46), kRed);
    EXPECT_NE(canvas.At(0, 50), kBlack);
    EXPECT_NE(canvas.At(0, 50), kUntouched);
}

class SldBltBackground : public SldBltTest {};

TEST_F(SldBltBackground, ColourOnlyWithItsFlag)
{
    SlideCanvas plain(20, 20), coloured(20, 20);
    ASSERT_EQ(Draw(plain, SlideWriter(10, 10), 20, 20), 0);
    ASSERT_EQ(Draw(coloured, SlideWriter(10, 10), 20, 20, QM::SLD_BKCOLOR), 0);
    EXPECT_EQ(plain.Count(kBlack), 400);
    EXPECT_EQ(coloured.Count(background), 400);
}

TEST_F(SldBltBackground, FillAllCoversTheWholeTarget)
{
    SlideCanvas canvas(300, 100);
    ASSERT_EQ(Draw(canvas, SlideWriter(100, 100), 300, 100, QM::SLD_FILLALL), 0);
    EXPECT_EQ(canvas.Count(kBlack), 300 * 100);
}

TEST_F(SldBltBackground, NoBackLeavesTheContextAlone)
{
    SlideCanvas canvas(100, 100);
    ASSERT_EQ(Draw(canvas, Lines(), 100, 100, QM::SLD_NOBACK), 0);
    EXPECT_EQ(canvas.Count(kUntouched), 100 * 100 - 100 - 80);
}

class SldBltFill : public SldBltTest {};

TEST_F(SldBltFill, PolygonPaintsWithTheCurrentColour)
{
    SlideCanvas canvas(100, 100);
    SlideWriter slide(100, 100);
    slide.Colour(3).FillMarker().Fill(20, 20).Fill(80, 20).Fill(80, 80).Fill(20, 80).FillMarker().End();
    ASSERT_EQ(Draw(canvas, slide, 100, 100), 0);
    EXPECT_EQ(canvas.At(50, 50), kGreen);
    EXPECT_EQ(canvas.At(25, 75), kGreen);
    EXPECT_EQ(canvas.At(10, 10), kBlack);
    EXPECT_GT(canvas.Count(kGreen), 55 * 55);
}

TEST_F(SldBltFill, HighYMarkerClosesEachPolygon)
{
    SlideCanvas canvas(100, 100);
    SlideWriter slide(100, 100);
    slide.Fill(10, 10).Fill(40, 10).Fill(40, 40).Fill(10, 40).Fill(0, 0x1000);
    slide.Colour(1).Fill(60, 60).Fill(90, 60).Fill(90, 90).Fill(60, 90).Fill(0, 0x2000).End();
    ASSERT_EQ(Draw(canvas, slide, 100, 100), 0);
    EXPECT_EQ(canvas.At(25, 75), kWhite);  // the fill brush starts white
    EXPECT_EQ(canvas.At(75, 25), kRed);    // the colour record came between
    EXPECT_EQ(canvas.At(50, 50), kBlack);
}

TEST(SlideStructLayout, MembersSitWhereOldCallersPutThem)
{
    const bool wide = sizeof(void*) == 8;
    EXPECT_EQ(offsetof(QM::slideStruct, pDC), wide ? 8u : 4u);
    EXPECT_EQ(offsetof(QM::slideStruct, nLeft), wide ? 16u : 8u);
    EXPECT_EQ(offsetof(QM::slideStruct, lpszFileName), wide ? 32u : 24u);
    EXPECT_EQ(offsetof(QM::slideStruct, nFlags), wide ? 44u : 32u);
    EXPECT_EQ(sizeof(QM::slideStruct), wide ? 48u : 36u);
    EXPECT_EQ(offsetof(QM::slideExStruct, pBkBrush), wide ? 8u : 4u);
    EXPECT_EQ(offsetof(QM::slideExStruct, lpszFileName), wide ? 24u : 16u);
    EXPECT_EQ(offsetof(QM::slideExStruct, lpszCaption1), wide ? 56u : 44u);
    EXPECT_EQ(offsetof(QM::slideExStruct, lpszCaption2), wide ? 72u : 56u);
    EXPECT_EQ(offsetof(QM::slideExStruct, nFlags), wide ? 84u : 64u);
    EXPECT_EQ(sizeof(QM::slideExStruct), wide ? 88u : 68u);
}

}  // namespace
