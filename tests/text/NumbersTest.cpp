// NumbersTest.cpp - formatting, cut positions, truncation, tolerances with
// their defaults, angles and the numeric-text tests, in this process (whose
// start-up settings are unbound, so every setting has its default).
#include <QMUtil.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(NumberText, FormatsAsPrintfDoesAndPadsWithoutCutting)
{
    const struct { CString got; const wchar_t* expected; } rows[] = {
        {QM::IntToStr(255, 1), L"FF"}, {QM::IntToStr(-1, 1), L"FFFFFFFF"}, {QM::IntToStr(-42, 0), L"-42"},
        {QM::FloatToStr(2.71828, 3), L"2.718"}, {QM::FloatToStr(0.0001, 10), L"0.0001000000"},
        {QM::FloatToStr(-7.6, 0), L"-8"}, {QM::FloatToStr(3.7, -2), L"4"},   // negative digits count as none
        {QM::FixLenStr(L"ab", 4, true), L"  ab"}, {QM::FixLenStr(L"ab", 4, false), L"ab  "},
        {QM::FixLenStr(L"abcdef", 4, true), L"abcdef"}, {QM::FixLenStr(L"图层", 3, true), L" 图层"},
        {QM::FixLenStr(nullptr, 2, false), L"  "}, {QM::FixLenStr(L"ab", -4, true), L"ab  "},   // "%-4s"
        {QM::FixLenStr(L"ab", -4, false), L"ab  "}};
    for (const auto& row : rows)
        EXPECT_EQ(row.got, CString(row.expected));
}

TEST(NumberText, AdjustStringMovesACutOutOfASurrogatePairOnly)
{
    const wchar_t text[] = {L'a', 0xD840, 0xDC0B, L'b', 0x4E2D, 0};   // a, U+2000B, b, 中
    const wchar_t lone[] = {0xDC0B, L'x', 0};   // a low surrogate without its pair
    const struct { const wchar_t* text; int pos; bool back; int expected; } rows[] = {
        {text, 0, true, 0},  {text, 1, true, 1},  {text, 3, true, 3},  {text, 4, true, 4},  {text, 0, false, 0},
        {text, 1, false, 1}, {text, 3, false, 3}, {text, 4, false, 4}, {text, 2, true, 1},  {text, 2, false, 3},
        {text, -1, false, 2}, {text, -1, true, 0}, {text, -2, true, -2}, {text, 5, false, 5}, {nullptr, 2, true, 2}, {lone, 0, false, 0}};
    for (const auto& row : rows)
        EXPECT_EQ(QM::AdjustString(row.text, row.pos, row.back), row.expected) << row.pos << (row.back ? " back" : "");
}

TEST(NumberText, SetDblPrecTruncatesToA32BitIntegerBeforeScalingAndWrapsOnOverflow)
{
    const struct { double value; int digits; double expected; } rows[] = {
        {2.789, 2, 2.0}, {-3.99, 1, -3.0}, {7.9, 0, 7.0},
        {123456.7, 4, 123456.0},                     // 1234560000 still fits 32 bits
        {123456.7, 5, -539301888.0 / 100000.0},      // 12345600000 wraps
        {3e9, 2, 0.0},                               // -2147483648 * 100 wraps to 0
        {kNaN, 2, 0.0}, {2.5, 12, 0.0},              // no NaN out of a bad value or scale
        {1.5, -1, kNaN}, {100.0, -3, kNaN}};         // 0/0
    for (const auto& row : rows) {
        const double result = QM::SetDblPrec(row.value, row.digits);
        EXPECT_TRUE(std::isnan(row.expected) ? std::isnan(result) : result == row.expected)
            << row.value << ", " << row.digits << " gave " << result;
    }
}

TEST(Tolerance, IsZeroIsInclusiveWhileIsDoubleEqIsStrictAndNaNMatchesNothing)
{
    const double t = QM::ZERO();
    EXPECT_DOUBLE_EQ(t, 0.000001);   // the defaults, without start-up settings
    EXPECT_DOUBLE_EQ(QM::GetDoubleEQ(), 0.000001);
    EXPECT_DOUBLE_EQ(QM::GetTextWidthFactor(), 0.7);
    EXPECT_TRUE(QM::ISZERO(t));
    EXPECT_TRUE(QM::ISZERO(-t));
    EXPECT_FALSE(QM::ISZERO(std::nextafter(t, 1.0)));
    EXPECT_FALSE(QM::IsDoubleEQ(t, 0.0, t));
    EXPECT_TRUE(QM::IsDoubleEQ(std::nextafter(t, 0.0), 0.0, t));
    EXPECT_TRUE(QM::IsDoubleEQ(1.0, 1.25, 0.5));
    EXPECT_TRUE(QM::IsDoubleEQ(1.0, 1.0000005));      // the default 0.000001
    EXPECT_FALSE(QM::IsDoubleEQ(1.0, 1.000002, -3));  // any negative means the default
    EXPECT_FALSE(QM::ISZERO(kNaN));
    EXPECT_FALSE(QM::IsDoubleEQ(kNaN, kNaN, 1.0));
    EXPECT_FALSE(QM::IsDoubleEQ(1.0, 1.0, kNaN));
    EXPECT_FALSE(QM::IsAnglEqual(kNaN, 0.0, 1.0));
}

TEST(Angle, ComparisonsWorkAcrossFullTurnsAndAreStrictAtTheirLimits)
{
    const double halfPi = 1.5707963267948966, pi = 3.141592653589793, twoPi = 2 * pi;
    EXPECT_TRUE(QM::IsAnglEqual(0.0, twoPi - 1e-9, 1e-6));
    EXPECT_TRUE(QM::IsAnglEqual(twoPi * 3 + 0.5, 0.5, 1e-6));
    EXPECT_TRUE(QM::IsAnglEqual(-0.5, 0.5 - twoPi * 2 - 1.0, 1e-6));
    EXPECT_FALSE(QM::IsAnglEqual(0.0, 0.1, 1e-6));
    EXPECT_FALSE(QM::IsAnglEqual(0.0, 1e-6, 1e-6));
    EXPECT_TRUE(QM::IsDirectAngles(0.0, halfPi));
    EXPECT_TRUE(QM::IsDirectAngles(0.0, 0.1));
    EXPECT_TRUE(QM::IsDirectAngles(1.0, 1.0 + halfPi + 2 * pi));
    EXPECT_FALSE(QM::IsDirectAngles(0.0, pi));       // a quarter turn off: not within
    EXPECT_FALSE(QM::IsDirectAngles(0.0, 0.0));
    EXPECT_FALSE(QM::IsDirectAngles(0.0, -halfPi));
}

TEST(NumberText, EachNumericTextTestAnswersAsClassified)
{
    const struct { const wchar_t* text; bool num, zero, plusNum, isInt, plusInt; } rows[] = {
        // text, then what IsNum, IsZero, IsPlusNum, IsInt and IsPlusInt answer
        {L" 12.5 ",   true,  false, true,  false, false}, {L"",        false, false, false, false, false},
        {L"  ",       true,  true,  false, true,  false}, {L"1-2",     false, false, false, false, false},
        {L"--1",      false, false, false, false, false}, {L"1.2.3",   false, false, false, false, false},
        {L"1e5",      false, false, false, false, false}, {L"-.5",     true,  false, false, false, false},
        {L"-5.",      true,  false, false, false, false}, {L"+3",      true,  false, true,  true,  true},
        {L"3.0",      true,  false, true,  false, false}, {L"-7",      true,  false, false, true,  false},
        {L"0.000",    true,  true,  false, false, false}, {L"0",       true,  true,  false, true,  false},
        {L"-0",       true,  false, false, true,  false}, {L"+0.0",    true,  false, true,  false, false},
        {L"+-1",      false, false, false, false, false}, {L"++1",     false, false, false, false, false},
        {L"1+",       false, false, false, false, false}, {L"\t42\r\n", true, false, true,  true,  true},
        {L"4 2",      false, false, false, false, false}, {L"１２",    false, false, false, false, false},
        {L"007",      true,  false, true,  true,  true},  {L".",       true,  true,  false, false, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.text)));
        EXPECT_EQ(QM::IsNum(row.text), row.num);
        EXPECT_EQ(QM::IsZero(row.text), row.zero);
        EXPECT_EQ(QM::IsPlusNum(row.text), row.plusNum);
        EXPECT_EQ(QM::IsInt(row.text), row.isInt);
        EXPECT_EQ(QM::IsPlusInt(row.text), row.plusInt);
    }
}

}  // namespace
