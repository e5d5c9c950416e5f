// The colour index against the palette's construction rule, and its searches with their tie-breaks.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include <climits>

namespace {

// Entry `index` (10 to 249): 24 hues 15 degrees apart, five brightness levels, full and half saturated.
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

TEST(CadColor, TableAndSearchesWithTheirTieBreaks)
{
    const unsigned long named[10] = {0x000000, 0x0000FF, 0x00FFFF, 0x00FF00, 0xFFFF00,
                                     0xFF0000, 0xFF00FF, 0xFFFFFF, 0x808080, 0xC0C0C0};
    const unsigned long greys[6] = {0x333333, 0x5B5B5B, 0x848484, 0xADADAD, 0xD6D6D6, 0xFFFFFF};
    for (int i = 0; i < 256; ++i)
        EXPECT_EQ(QM::CADColorIndexToRGB(i), i < 10 ? named[i] : i < 250 ? HueEntry(i) : greys[i - 250]) << i;
    for (int outside : {256, -1, INT_MIN})
        EXPECT_EQ(QM::CADColorIndexToRGB(outside), 0xFFFFFFFFul) << outside;
    const struct { long r, g, b; int expected; } rows[] = {
        {255, 0, 0, 1}, {255, 255, 255, 7}, {255, 255, 0, 2}, {128, 128, 128, 8},
        {0, 0, 0, 18}, {1000, -50, -50, 1}};   // black is index 0, which the search skips; no clamping
    for (const auto& row : rows)
        EXPECT_EQ(QM::GetCADColorIndexNearest(row.r, row.g, row.b), row.expected) << row.r << " " << row.g << " " << row.b;
    const int wild = QM::GetCADColorIndexNearest(LONG_MIN, LONG_MAX, 0);
    EXPECT_TRUE(wild >= 1 && wild <= 255) << wild;
    // Every entry finds an index of its own colour, never a later one.
    for (int index = 1; index < 256; ++index) {
        const unsigned long colour = QM::CADColorIndexToRGB(index);
        const int found = QM::GetCADColorIndexNearest(colour);
        EXPECT_LE(found, index);
        EXPECT_EQ(QM::CADColorIndexToRGB(found), colour) << index;
    }
    // The packed form keeps the top byte in blue.
    EXPECT_EQ(QM::GetCADColorIndexNearest(0x01000000ul), 5);
    EXPECT_EQ(QM::GetCADColorIndexNearest(0x000000FFul), 1);
    EXPECT_EQ(QM::GetCADColorIndexNearest(RGB(10, 200, 30)), QM::GetCADColorIndexNearest(10, 200, 30));
    // The exact search gives the first equal index or -1.
    const struct { unsigned long colour; int expected; } exact[] = {
        {0x000000, 0}, {0x0000FF, 1}, {0xFFFFFF, 7}, {0x333333, 250}, {0x123456, -1}, {0x01FFFFFF, -1}};
    for (const auto& row : exact)
        EXPECT_EQ(QM::IsStandardCADColor(row.colour), row.expected) << std::hex << row.colour;
}

}  // namespace
