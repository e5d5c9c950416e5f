// NumbersTest.cpp - formatting, cut positions, truncation, tolerances with
// their defaults, angles and the numeric-text tests, in this process (whose
// start-up settings are unbound, so every setting has its default).
#include <QMUtil.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

TEST(NumberTextTest, IntToStrDecimalAndUpperCaseHex)
{
    EXPECT_EQ(QM::IntToStr(255, 1), CString(L"FF"));
    EXPECT_EQ(QM::IntToStr(-1, 1), CString(L"FFFFFFFF"));
    EXPECT_EQ(QM::IntToStr(-42, 0), CString(L"-42"));
}

TEST(NumberTextTest, FloatToStrRoundsToTheDigitsGiven)
{
    EXPECT_EQ(QM::FloatToStr(3.14159, 2), CString(L"3.14"));
    EXPECT_EQ(QM::FloatToStr(2.71828, 3), CString(L"2.718"));
    EXPECT_EQ(QM::FloatToStr(0.0001, 10), CString(L"0.0001000000"));
    EXPECT_EQ(QM::FloatToStr(-7.6, 0), CString(L"-8"));
    EXPECT_EQ(QM::FloatToStr(3.7, -2), CString(L"4"));   // negative digits count as none
}

TEST(NumberTextTest, FixLenStrPadsButNeverCuts)
{
    EXPECT_EQ(QM::FixLenStr(L"ab", 4, true), CString(L"  ab"));
    EXPECT_EQ(QM::FixLenStr(L"ab", 4, false), CString(L"ab  "));
    EXPECT_EQ(QM::FixLenStr(L"abcdef", 4, true), CString(L"abcdef"));
    EXPECT_EQ(QM::FixLenStr(L"图层", 3, true), CString(L" 图层"));
    EXPECT_EQ(QM::FixLenStr(nullptr, 2, false), CString(L"  "));
    EXPECT_EQ(QM::FixLenStr(L"ab", -4, true), CString(L"ab"));
}

class AdjustStringTest : public ::testing::Test
{
protected:
    // a, U+2000B as a surrogate pair, b, 中
    const wchar_t text[6] = {L'a', 0xD840, 0xDC0B, L'b', 0x4E2D, 0};
};

TEST_F(AdjustStringTest, APositionOnACharacterStartStays)
{
    for (int pos : {0, 1, 3, 4}) {
        EXPECT_EQ(QM::AdjustString(text, pos, false), pos);
        EXPECT_EQ(QM::AdjustString(text, pos, true), pos);
    }
}

TEST_F(AdjustStringTest, ACutInsideASurrogatePairMovesBeforeOrAfterIt)
{
    EXPECT_EQ(QM::AdjustString(text, 2, true), 1);
    EXPECT_EQ(QM::AdjustString(text, 2, false), 3);
}

TEST_F(AdjustStringTest, PositionsOutsideTheTextAreReturnedUnchanged)
{
    EXPECT_EQ(QM::AdjustString(text, -1, false), -1);
    EXPECT_EQ(QM::AdjustString(text, 5, false), 5);
    EXPECT_EQ(QM::AdjustString(nullptr, 2, true), 2);
    // A lone low surrogate is no pair to keep together.
    const wchar_t lone[] = {0xDC0B, L'x', 0};
    EXPECT_EQ(QM::AdjustString(lone, 0, false), 0);
}

TEST(SetDblPrecTest, TruncatesTheValueBeforeScaling)
{
    EXPECT_EQ(QM::SetDblPrec(2.789, 2), 2.0);
    EXPECT_EQ(QM::SetDblPrec(-3.99, 1), -3.0);
    EXPECT_EQ(QM::SetDblPrec(7.9, 0), 7.0);
    EXPECT_EQ(QM::SetDblPrec(123456.7, 4), 123456.0);   // 1234560000 still fits 32 bits
}

TEST(SetDblPrecTest, NegativeDigitsGiveNaN)
{
    EXPECT_TRUE(std::isnan(QM::SetDblPrec(1.5, -1)));
    EXPECT_TRUE(std::isnan(QM::SetDblPrec(100.0, -3)));
}

TEST(SetDblPrecTest, OverflowWrapsInsteadOfFailing)
{
    // 3e9 truncates to -2147483648; times 100 wraps to 0.
    EXPECT_EQ(QM::SetDblPrec(3e9, 2), 0.0);
    // The product 123456 * 100000 wraps to -539301888.
    EXPECT_EQ(QM::SetDblPrec(123456.7, 5), -539301888.0 / 100000.0);
    EXPECT_FALSE(std::isnan(QM::SetDblPrec(std::numeric_limits<double>::quiet_NaN(), 2)));
    EXPECT_FALSE(std::isnan(QM::SetDblPrec(2.5, 12)));
}

TEST(ToleranceTest, DefaultsWithoutStartupSettings)
{
    EXPECT_DOUBLE_EQ(QM::ZERO(), 0.000001);
    EXPECT_DOUBLE_EQ(QM::GetDoubleEQ(), 0.000001);
    EXPECT_DOUBLE_EQ(QM::GetTextWidthFactor(), 0.7);
}

TEST(ToleranceTest, IsZeroIsInclusiveWhileIsDoubleEqIsStrict)
{
    const double t = QM::ZERO();
    EXPECT_TRUE(QM::ISZERO(t));
    EXPECT_TRUE(QM::ISZERO(-t));
    EXPECT_FALSE(QM::ISZERO(std::nextafter(t, 1.0)));
    EXPECT_FALSE(QM::IsDoubleEQ(t, 0.0, t));
    EXPECT_TRUE(QM::IsDoubleEQ(std::nextafter(t, 0.0), 0.0, t));
}

TEST(ToleranceTest, IsDoubleEqWithAGivenTolerance)
{
    EXPECT_TRUE(QM::IsDoubleEQ(1.0, 1.25, 0.5));
    EXPECT_FALSE(QM::IsDoubleEQ(1.0, 1.5, 0.5));
    EXPECT_TRUE(QM::IsDoubleEQ(1.0, 1.0000005));      // the default 0.000001
    EXPECT_FALSE(QM::IsDoubleEQ(1.0, 1.000002, -3));  // any negative means the default
}

TEST(ToleranceTest, NaNIsNeverZeroOrEqual)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(QM::ISZERO(nan));
    EXPECT_FALSE(QM::IsDoubleEQ(nan, nan, 1.0));
    EXPECT_FALSE(QM::IsDoubleEQ(1.0, 1.0, nan));
    EXPECT_FALSE(QM::IsAnglEqual(nan, 0.0, 1.0));
}

TEST(AngleTest, IsAnglEqualAcrossAFullTurn)
{
    const double twoPi = 6.283185307179586;
    EXPECT_TRUE(QM::IsAnglEqual(0.0, twoPi - 1e-9, 1e-6));
    EXPECT_TRUE(QM::IsAnglEqual(twoPi * 3 + 0.5, 0.5, 1e-6));
    EXPECT_TRUE(QM::IsAnglEqual(-0.5, 0.5 - twoPi * 2 - 1.0, 1e-6));
    EXPECT_FALSE(QM::IsAnglEqual(0.0, 0.1, 1e-6));
    EXPECT_FALSE(QM::IsAnglEqual(0.0, 1e-6, 1e-6));   // strict at the tolerance
}

TEST(AngleTest, IsDirectAnglesWithinAQuarterTurnOfPerpendicular)
{
    const double halfPi = 1.5707963267948966, pi = 3.141592653589793;
    EXPECT_TRUE(QM::IsDirectAngles(0.0, halfPi));
    EXPECT_TRUE(QM::IsDirectAngles(0.0, 0.1));
    EXPECT_TRUE(QM::IsDirectAngles(1.0, 1.0 + halfPi + 2 * pi));
    EXPECT_FALSE(QM::IsDirectAngles(0.0, pi));     // d = pi/2: not less than pi/2
    EXPECT_FALSE(QM::IsDirectAngles(0.0, 0.0));    // d = pi/2 again
    EXPECT_FALSE(QM::IsDirectAngles(0.0, -halfPi));
}

struct NumCase
{
    const wchar_t* text;
    bool num, zero, plusNum, isInt, plusInt;
};

std::ostream& operator<<(std::ostream& out, const NumCase& c)
{
    char utf8[64] = "";
    WideCharToMultiByte(CP_UTF8, 0, c.text, -1, utf8, sizeof utf8, nullptr, nullptr);
    return out << "\"" << utf8 << "\"";
}

class NumericTextTest : public ::testing::TestWithParam<NumCase>
{
};

TEST_P(NumericTextTest, EachTestAnswersAsClassified)
{
    const NumCase& c = GetParam();
    EXPECT_EQ(QM::IsNum(c.text), c.num);
    EXPECT_EQ(QM::IsZero(c.text), c.zero);
    EXPECT_EQ(QM::IsPlusNum(c.text), c.plusNum);
    EXPECT_EQ(QM::IsInt(c.text), c.isInt);
    EXPECT_EQ(QM::IsPlusInt(c.text), c.plusInt);
}

//                                text        num    zero   plusNum isInt  plusInt
INSTANTIATE_TEST_SUITE_P(Numbers, NumericTextTest, ::testing::Values(
    NumCase{L" 12.5 ",    true,  false, true,  false, false},
    NumCase{L"",          false, false, false, false, false},
    NumCase{L"  ",        true,  true,  false, true,  false},
    NumCase{L"1-2",       false, false, false, false, false},
    NumCase{L"--1",       false, false, false, false, false},
    NumCase{L"1.2.3",     false, false, false, false, false},
    NumCase{L"1e5",       false, false, false, false, false},
    NumCase{L"-.5",       true,  false, false, false, false},
    NumCase{L"-5.",       true,  false, false, false, false},
    NumCase{L"+3",        true,  false, true,  true,  true},
    NumCase{L"3.0",       true,  false, true,  false, false},
    NumCase{L"-7",        true,  false, false, true,  false},
    NumCase{L"0.000",     true,  true,  false, false, false},
    NumCase{L"0",         true,  true,  false, true,  false},
    NumCase{L"-0",        true,  false, false, true,  false},
    NumCase{L"+0.0",      true,  false, true,  false, false},
    NumCase{L"+-1",       false, false, false, false, false},
    NumCase{L"++1",       false, false, false, false, false},
    NumCase{L"1+",        false, false, false, false, false},
    NumCase{L"\t42\r\n",  true,  false, true,  true,  true},
    NumCase{L"4 2",       false, false, false, false, false},
    NumCase{L"１２",      false, false, false, false, false},
    NumCase{L"007",       true,  false, true,  true,  true},
    NumCase{L".",         true,  true,  false, false, false}));

}  // namespace
