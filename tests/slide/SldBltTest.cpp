// QM::SldBlt: return codes, placement, colours and fills, read as pixels.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "SlideCanvas.h"
#include "support/SlideWriter.h"
#include "support/TempDir.h"


namespace {

using namespace qmtest;

class SldBlt : public ::testing::Test
{
protected:
    // Draws into the whole canvas, with margins of 10 and 20 that only count
    // under SLD_LEFT and SLD_TOP.
    int Draw(SlideCanvas& canvas, const wchar_t* path, UINT flags = 0)
    {
        QM::slideStruct s{0, &canvas.dc, 10, 20, canvas.width, canvas.height, path, kBlue, flags};
        return QM::SldBlt(&s);
    }

    TempDir dir;
};

TEST_F(SldBlt, FailureCodesDrawNothing)
{
    SlideCanvas canvas(20, 20);
    EXPECT_EQ(Draw(canvas, (dir.Path() + L"none.sld").GetString()), -2);
    EXPECT_EQ(Draw(canvas, nullptr), -2);
    EXPECT_EQ(QM::SldBlt(nullptr), -2);
    EXPECT_EQ(Draw(canvas, L"NUL"), -1);  // a device has no size
    EXPECT_EQ(canvas.Count(kUntouched, CRect(0, 0, 20, 20)), 400);
}

TEST_F(SldBlt, PixelsFollowPlacementFlagsColoursAndFills)
{
    const CRect all(0, 0, 100, 100);
    // A white line at y = 10 from x = 10 to 90 and a colour-1 one at y = 50
    // across: 180 pixels lit at 1:1.
    const std::string lines = SlideWriter(100, 100).Vector(10, 10, 90, 10).Colour(1).Vector(0, 50, 100, 50).End().Bytes();
    const std::string margins = SlideWriter(100, 100).Vector(0, 0, 50, 0).Vector(0, 100, 100, 100).End().Bytes();
    SlideWriter square(100, 100), twoFills(100, 100);
    square.Colour(3).FillMarker().Fill(20, 20).Fill(80, 20).Fill(80, 80).Fill(20, 80).FillMarker().End();
    twoFills.Fill(10, 10).Fill(40, 10).Fill(40, 40).Fill(10, 40).Fill(0, 0x1000);
    twoFills.Colour(1).Fill(60, 60).Fill(90, 60).Fill(90, 90).Fill(60, 90).Fill(0, 0x2000).End();
    const std::string zeroHighX = SlideWriter(0, 100).Vector(0, 50, 100, 50).End().Bytes();
    const std::string zeroHighY = SlideWriter(100, 0).Vector(0, 50, 100, 50).End().Bytes();
    const struct { const char* what; std::string slide; int w, h; UINT flags; std::vector<Probe> probes; } rows[] = {
        {"a short file draws the background only", "AutoCAD Slide", 100, 100, 0, {Exactly(100 * 100, kBlack, all)}},
        {"zero high X draws the background only", zeroHighX, 100, 100, 0, {Exactly(100 * 100, kBlack, all)}},
        {"zero high Y draws the background only", zeroHighY, 100, 100, 0, {Exactly(100 * 100, kBlack, all)}},
        {"colours come from the index, Y is flipped, the end point stays unlit", lines, 100, 100, 0,
         {Pixel(50, 90, kWhite), Pixel(10, 90, kWhite), Pixel(90, 90, kBlack), Pixel(50, 10, kBlack),
          Exactly(100, kRed, CRect(0, 50, 100, 51)), Exactly(100 * 100 - 180, kBlack, all)}},
        {"scales with the target", lines, 200, 200, 0,
         {Exactly(160, kWhite, CRect(0, 180, 200, 181)), Exactly(200, kRed, CRect(0, 100, 200, 101))}},
        // The background runs from -cx/2 to W - cx/2: the right quarter of
        // the target keeps what was there.
        {"wide target centres horizontally with a shifted background", lines, 300, 100, 0,
         {Exactly(100, kRed, CRect(0, 50, 300, 51)), Pixel(100, 50, kRed), Pixel(99, 50, kBlack),
          Exactly(50 * 100, kUntouched, CRect(250, 0, 300, 100)), Pixel(249, 20, kBlack), Pixel(0, 20, kBlack)}},
        {"tall target centres vertically with a shifted background", lines, 100, 300, 0,
         {Exactly(100, kRed, CRect(0, 150, 100, 151)), Pixel(50, 190, kWhite), Pixel(50, 60, kBlack),
          Exactly(100 * 50, kUntouched, CRect(0, 0, 100, 50)), Exactly(100 * 50, kUntouched, CRect(0, 250, 100, 300))}},
        {"stretch scales each axis alone", lines, 300, 100, QM::SLD_STRETCH,
         {Exactly(300, kRed, CRect(0, 50, 300, 51)), Exactly(240, kWhite, CRect(0, 90, 300, 91))}},
        {"shrink takes one pixel off width and height", lines, 101, 101, QM::SLD_SHRINK,
         {Pixel(50, 90, kWhite)}},
        {"unshrunk", lines, 101, 101, 0, {Pixel(50, 91, kWhite), Pixel(50, 90, kBlack)}},
        {"the sunken edge lifts the drawing four pixels", lines, 100, 100, QM::SLD_SUNKEN,
         {Pixel(50, 86, kWhite), Pixel(50, 90, kBlack), Pixel(50, 46, kRed), Pixel(0, 50, kBlack, 0),
          Pixel(0, 50, kUntouched, 0)}},
        {"the background colour needs its flag", lines, 100, 100, QM::SLD_BKCOLOR,
         {Exactly(100 * 100 - 180, kBlue, all)}},
        {"fill-all covers the whole target", lines, 300, 100, QM::SLD_FILLALL,
         {Exactly(300 * 100 - 180, kBlack, CRect(0, 0, 300, 100))}},
        {"no-back leaves the context alone", lines, 100, 100, QM::SLD_NOBACK,
         {Exactly(100 * 100 - 180, kUntouched, all)}},
        {"margins inset both sides", margins, 120, 140, QM::SLD_LEFT | QM::SLD_TOP,
         {Exactly(50, kWhite, CRect(0, 120, 120, 121)), Pixel(10, 120, kWhite), Pixel(5, 50, kUntouched),
          Exactly(100, kWhite, CRect(0, 20, 120, 21)), Exactly(100 * 100 - 100, kBlack, CRect(0, 0, 120, 140)),
          Pixel(115, 50, kUntouched)}},
        {"a fill paints with the current colour", square.Bytes(), 100, 100, 0,
         {Pixel(50, 50, kGreen), Pixel(25, 75, kGreen), Pixel(10, 10, kBlack), MoreThan(55 * 55, kGreen, all)}},
        // The fill brush starts white; the colour record between the polygons
        // turns the second one red.
        {"any high-Y marker closes a polygon", twoFills.Bytes(), 100, 100, 0,
         {Pixel(25, 75, kWhite), Pixel(75, 25, kRed), Pixel(50, 50, kBlack)}},
    };
    for (const auto& row : rows) {
        SlideCanvas canvas(row.w, row.h);
        ASSERT_EQ(Draw(canvas, dir.WriteFile(L"t.sld", row.slide), row.flags), 0) << row.what;
        canvas.Expect(row.probes, row.what);
        EXPECT_EQ(::GetCurrentObject(canvas.dc, OBJ_PEN), ::GetStockObject(BLACK_PEN)) << row.what;
    }
}

}  // namespace
