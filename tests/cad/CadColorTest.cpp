// The colour index: the table against the palette's own construction rule,
// and the nearest and exact searches with their tie-breaks.
#include <QMUtil.h>
#include <gtest/gtest.h>

namespace {

// Rebuilds entry `index` (10 to 249) from the palette's rule: 24 hues 15
// degrees apart, each at five brightness levels, full and half saturated.
unsigned long HueEntry(int index)
{
    static const int kLevels[5] = {255, 204, 153, 127, 76};
    const int group = (index - 10) / 10, within = (index - 10) % 10;
    const int v = kLevels[within / 2];
    const int lo = (within % 2) ? v / 2 : 0;
    const int hue = group * 15, sector = hue / 60;
    const double f = (hue % 60) / 60.0;
    const int up = static_cast<int>(lo + (v - lo) * f), down = static_cast<int>(lo + (v - lo) * (1 - f));
    const int rgb[6][3] = {{v, up, lo}, {down, v, lo}, {lo, v, up}, {lo, down, v}, {up, lo, v}, {v, lo, down}};
    return RGB(rgb[sector][0], rgb[sector][1], rgb[sector][2]);
}

class CadColorTable : public ::testing::Test {};

TEST_F(CadColorTable, NamedColoursAndGreys)
{
    const unsigned long named[10] = {0x000000, 0x0000FF, 0x00FFFF, 0x00FF00, 0xFFFF00,
                                     0xFF0000, 0xFF00FF, 0xFFFFFF, 0x808080, 0xC0C0C0};
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(QM::CADColorIndexToRGB(i), named[i]) << i;
    const unsigned long greys[6] = {0x333333, 0x5B5B5B, 0x848484, 0xADADAD, 0xD6D6D6, 0xFFFFFF};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(QM::CADColorIndexToRGB(250 + i), greys[i]) << 250 + i;
}

TEST_F(CadColorTable, HueGroupsFollowThePaletteRule)
{
    for (int index = 10; index < 250; ++index)
        EXPECT_EQ(QM::CADColorIndexToRGB(index), HueEntry(index)) << index;
}

TEST_F(CadColorTable, OutOfRangeIndexGivesAllOnes)
{
    EXPECT_EQ(QM::CADColorIndexToRGB(256), 0xFFFFFFFFul);
    EXPECT_EQ(QM::CADColorIndexToRGB(-1), 0xFFFFFFFFul);
    EXPECT_EQ(QM::CADColorIndexToRGB(INT_MIN), 0xFFFFFFFFul);
}

class CadColorNearest : public ::testing::Test {};

TEST_F(CadColorNearest, TiesKeepTheLowerIndex)
{
    EXPECT_EQ(QM::GetCADColorIndexNearest(255, 0, 0), 1);
    EXPECT_EQ(QM::GetCADColorIndexNearest(255, 255, 255), 7);
    EXPECT_EQ(QM::GetCADColorIndexNearest(255, 255, 0), 2);
    EXPECT_EQ(QM::GetCADColorIndexNearest(128, 128, 128), 8);
}

TEST_F(CadColorNearest, BlackNeverGivesIndexZero)
{
    EXPECT_EQ(QM::GetCADColorIndexNearest(0, 0, 0), 18);
    EXPECT_EQ(QM::GetCADColorIndexNearest(0x000000ul), 18);
}

TEST_F(CadColorNearest, EveryEntryFindsAnIndexOfItsOwnColour)
{
    for (int index = 1; index < 256; ++index) {
        const unsigned long colour = QM::CADColorIndexToRGB(index);
        const int found = QM::GetCADColorIndexNearest(colour);
        EXPECT_LE(found, index);
        EXPECT_EQ(QM::CADColorIndexToRGB(found), colour) << index;
    }
}

TEST_F(CadColorNearest, PackedFormKeepsTheTopByteInBlue)
{
    EXPECT_EQ(QM::GetCADColorIndexNearest(0x01000000ul), 5);
    EXPECT_EQ(QM::GetCADColorIndexNearest(0x000000FFul), 1);
    EXPECT_EQ(QM::GetCADColorIndexNearest(RGB(10, 200, 30)), QM::GetCADColorIndexNearest(10, 200, 30));
}

TEST_F(CadColorNearest, UnclampedComponentsStillFindAnIndex)
{
    EXPECT_EQ(QM::GetCADColorIndexNearest(1000, -50, -50), 1);
    const int wild = QM::GetCADColorIndexNearest(LONG_MIN, LONG_MAX, 0);
    EXPECT_GE(wild, 1);
    EXPECT_LE(wild, 255);
}

class CadColorExact : public ::testing::Test {};

TEST_F(CadColorExact, FirstEqualIndexOrMinusOne)
{
    EXPECT_EQ(QM::IsStandardCADColor(0x000000ul), 0);
    EXPECT_EQ(QM::IsStandardCADColor(0x0000FFul), 1);
    EXPECT_EQ(QM::IsStandardCADColor(0xFFFFFFul), 7);
    EXPECT_EQ(QM::IsStandardCADColor(0x333333ul), 250);
    EXPECT_EQ(QM::IsStandardCADColor(0x123456ul), -1);
    EXPECT_EQ(QM::IsStandardCADColor(0x01FFFFFFul), -1);
}

}  // namespace
