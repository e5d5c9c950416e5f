// QM::SldBltEx: the bitmap, its background, frame and captions, and how the
// slide's own background covers the captions.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "SlideCanvas.h"
#include "support/SlideWriter.h"
#include "support/TempDir.h"

#include <memory>

namespace {

using qmtest::BitmapReader;
using qmtest::kBlack;
using qmtest::SlideWriter;

const COLORREF kRed = RGB(255, 0, 0);
const COLORREF kBlue = RGB(0, 0, 255);
const COLORREF kGrey = RGB(128, 128, 128);

class SldBltExTest : public ::testing::Test
{
protected:
    SldBltExTest() : brush(kGrey)
    {
        s.pBkBrush = &brush;
        s.nWidth = 160;
        s.nHeight = 120;
        path = dir.WriteFile(L"a.sld", SlideWriter(100, 100).Vector(0, 50, 100, 50).End().Bytes());
        s.lpszFileName = path;
    }
    std::unique_ptr<CBitmap> Make() { return std::unique_ptr<CBitmap>(QM::SldBltEx(&s)); }

    qmtest::TempDir dir;
    CString path;
    CBrush brush;
    QM::slideExStruct s{};
};

class SldBltExBitmap : public SldBltExTest {};

TEST_F(SldBltExBitmap, HasTheAskedSizeAndHoldsTheSlide)
{
    std::unique_ptr<CBitmap> bitmap = Make();
    ASSERT_TRUE(bitmap);
    BITMAP info{};
    ASSERT_NE(bitmap->GetBitmap(&info), 0);
    EXPECT_EQ(info.bmWidth, 160);
    EXPECT_EQ(info.bmHeight, 120);
    BitmapReader reader(*bitmap);
    // 120 tall, 160 wide: the 120 x 120 slide is centred, 20 px each side.
    EXPECT_EQ(reader.At(80, 60), qmtest::kWhite);
    EXPECT_EQ(reader.At(10, 60), kBlack);  // the shifted background reaches -10..150
    EXPECT_EQ(reader.At(155, 60), kGrey);  // beyond it the bitmap's brush shows
}

TEST_F(SldBltExBitmap, MissingFileLeavesTheBrushOnly)
{
    s.lpszFileName = L"C:\\no\\such.sld";
    std::unique_ptr<CBitmap> bitmap = Make();
    ASSERT_TRUE(bitmap);
    BitmapReader reader(*bitmap);
    EXPECT_EQ(reader.Count(kGrey, CRect(0, 0, 160, 120)), 160 * 120);
}

TEST_F(SldBltExBitmap, BadInputGivesNoBitmap)
{
    EXPECT_EQ(QM::SldBltEx(nullptr), nullptr);
    s.nWidth = 0;
    EXPECT_EQ(QM::SldBltEx(&s), nullptr);
}

class SldBltExFrame : public SldBltExTest {};

TEST_F(SldBltExFrame, DefaultRedPenAndSunkenRectangle)
{
    s.lpszFileName = L"C:\\no\\such.sld";
    s.nFlags = QM::SLD_FRAME;
    std::unique_ptr<CBitmap> bitmap = Make();
    ASSERT_TRUE(bitmap);
    BitmapReader reader(*bitmap);
    EXPECT_EQ(reader.At(1, 60), kRed);
    EXPECT_EQ(reader.At(158, 60), kRed);
    EXPECT_EQ(reader.At(80, 1), kRed);
    EXPECT_EQ(reader.At(3, 60), ::GetSysColor(COLOR_3DDKSHADOW));
    EXPECT_EQ(reader.At(156, 60), ::GetSysColor(COLOR_BTNHIGHLIGHT));
    EXPECT_EQ(reader.At(80, 60), kGrey);
}

TEST_F(SldBltExFrame, PenMembersApplyWithTheirFlags)
{
    s.lpszFileName = L"C:\\no\\such.sld";
    s.nFramePenWidth = 5;
    s.crFramePen = kBlue;
    s.nFlags = QM::SLD_FRAME | QM::SLD_PENWIDTH | QM::SLD_PENCOLOR;
    std::unique_ptr<CBitmap> bitmap = Make();
    BitmapReader reader(*bitmap);
    EXPECT_EQ(reader.At(1, 60), kBlue);
    EXPECT_EQ(reader.At(5, 60), ::GetSysColor(COLOR_3DDKSHADOW));
    EXPECT_EQ(reader.At(7, 60), kGrey);
}

TEST_F(SldBltExFrame, MarginsBecomeThePenWidth)
{
    s.nFlags = QM::SLD_FRAME;
    s.nLeftMargin = 40;
    s.nTopMargin = 40;
    std::unique_ptr<CBitmap> bitmap = Make();
    BitmapReader reader(*bitmap);
    // left = top = 3 with one pixel shrink: the slide line lands on row 60.
    EXPECT_EQ(reader.At(80, 60), qmtest::kWhite);
}

class SldBltExCaption : public SldBltExTest
{
protected:
    SldBltExCaption()
    {
        s.lpszCaption1 = L"阀门 Valve";
        s.lpszCaption2 = L"第二行";
    }
};

TEST_F(SldBltExCaption, SlideBackgroundPaintsOverTheCaptions)
{
    s.nFlags = QM::SLD_CAPTION1 | QM::SLD_CAPTION2 | QM::SLD_FILLALL;
    std::unique_ptr<CBitmap> bitmap = Make();
    BitmapReader reader(*bitmap);
    EXPECT_EQ(reader.Count(kRed, CRect(0, 0, 160, 120)), 0);
    EXPECT_EQ(reader.Count(kBlue, CRect(0, 0, 160, 120)), 0);
}

TEST_F(SldBltExCaption, WithoutBackgroundCaptionsShowAboveAndBelowTheCentre)
{
    s.nFlags = QM::SLD_CAPTION1 | QM::SLD_CAPTION2 | QM::SLD_NOBACK;
    std::unique_ptr<CBitmap> bitmap = Make();
    BitmapReader reader(*bitmap);
    EXPECT_GT(reader.Count(kRed, CRect(0, 0, 160, 60)), 10);
    EXPECT_EQ(reader.Count(kRed, CRect(0, 61, 160, 120)), 0);
    EXPECT_GT(reader.Count(kBlue, CRect(0, 68, 160, 120)), 10);
    EXPECT_EQ(reader.Count(kBlue, CRect(0, 0, 160, 68)), 0);
}

TEST_F(SldBltExCaption, FrameCanSwapTheCaptionColours)
{
    s.nFlags = QM::SLD_CAPTION1 | QM::SLD_NOBACK | QM::SLD_FRAME | QM::SLD_SWAPCAPTIONCOLORS;
    std::unique_ptr<CBitmap> bitmap = Make();
    BitmapReader reader(*bitmap);
    EXPECT_GT(reader.Count(kBlue, CRect(4, 4, 156, 59)), 10);
    EXPECT_EQ(reader.Count(kRed, CRect(4, 4, 156, 59)), 0);
}

TEST_F(SldBltExCaption, CaptionsNeedTheirFlags)
{
    s.nFlags = QM::SLD_NOBACK;
    std::unique_ptr<CBitmap> bitmap = Make();
    BitmapReader reader(*bitmap);
    EXPECT_EQ(reader.Count(kRed, CRect(0, 0, 160, 120)), 0);
}

}  // namespace
