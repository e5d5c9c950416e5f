// Numbers.cpp - number formatting, tolerances, angles and numeric-text tests.
#include "text/Numbers.h"
#include "config/INISetting.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

const double kHalfPi = 1.5707963267948966;
const double kThreeHalfPi = 4.71238898038469;
const double kTwoPi = 6.283185307179586;

// Truncation toward zero as the processor's conversion does it: NaN and
// values outside the 32-bit range give the "integer indefinite" value,
// where a plain cast would be undefined.
int32_t TruncToInt32(double value)
{
    if (!(value > -2147483649.0 && value < 2147483648.0))
        return INT32_MIN;
    return static_cast<int32_t>(value);
}

struct CachedValue
{
    bool read = false;
    double value = 0.0;
};

CachedValue& ZeroTolerance()
{
    static CachedValue zero;
    return zero;
}

CachedValue& TextWidthFactor()
{
    static CachedValue factor;
    return factor;
}

double& LastDoubleEQ()
{
    static double tolerance = 0.000001;
    return tolerance;
}

// The class bits of a text, shared by the numeric-text tests.
enum NumBits {
    kNotEmpty = 1,     // non-empty before trimming
    kValid = 2,        // only digits, '.', '-', '+', in a valid arrangement
    kNonZero = 4,      // tested for unsigned texts only
    kNotNegative = 8,
    kPointOrBad = 16,  // has a decimal point, or is malformed
};

// Settles the sign and point bits from the counts of '-', '+' and '.'.
// A signed text keeps kNonZero whatever its value: "-0" is non-zero.
int SignAndPointBits(const CString& text, int minus, int plus, int points)
{
    int bits = kValid | kNonZero | kNotNegative | kPointOrBad;
    const int signs = minus + plus;
    if (minus > 0)
        bits &= ~kNotNegative;
    if (signs > 1 || (minus == 1 && text.Find(L'-') != 0) || (plus == 1 && text.Find(L'+') != 0))
        return bits & ~kValid;
    if (points > 1)
        return bits & ~kValid;
    if (points == 0)
        bits &= ~kPointOrBad;
    if (signs == 0 && (points == 1 ? _wtof(text) == 0.0 : _wtoi(text) == 0))
        bits &= ~kNonZero;
    return bits;
}

int NumClass(CString text)
{
    const int notEmpty = text.IsEmpty() ? 0 : kNotEmpty;
    text.Trim();
    int minus = 0, plus = 0, points = 0;
    bool charsValid = true;
    for (int i = 0; i < text.GetLength(); ++i) {
        const wchar_t c = text[i];
        if (!(c >= L'0' && c <= L'9') && c != L'.' && c != L'-' && c != L'+') {
            charsValid = false;
            break;
        }
        minus += c == L'-';
        plus += c == L'+';
        points += c == L'.';
    }
    int bits = notEmpty | SignAndPointBits(text, minus, plus, points);
    if (!charsValid)
        bits &= ~kValid;
    return bits;
}

bool NumTest(const CString& text, int mask, int expected)
{
    return (NumClass(text) & mask) == expected;
}

double StartupNumber(const wchar_t* key, const wchar_t* defaultText, const wchar_t* section)
{
    return _wtof(QM::CInitSetting().GetSetting(key, defaultText, section));
}

}  // namespace

namespace QM {

CString IntToStr(int value, int hex)
{
    CString text;
    text.Format(hex != 0 ? L"%X" : L"%d", value);
    return text;
}

CString FloatToStr(double value, int digits)
{
    CString format, text;
    format.Format(L"%%.%df", std::min(std::max(digits, 0), 100));
    text.Format(format, value);
    return text;
}

CString FixLenStr(const wchar_t* text, int width, bool right)
{
    CString format, padded;
    // A negative width makes "%-4s" of the right-aligned format: the text
    // then goes left, as callers passing -n expect.
    format.Format(right ? L"%%%ds" : L"%%-%ds", width);
    padded.Format(format, text != nullptr ? text : L"");
    return padded;
}

int AdjustString(const wchar_t* text, int pos, bool back)
{
    // pos -1 asks CharPrevW about the text's start, which it answers with the
    // start itself: 0 with `back`, else 2, as callers have always had it.
    if (text == nullptr || pos < -1 || pos >= static_cast<int>(wcslen(text)))
        return pos;
    const wchar_t* start = CharPrevW(text, text + pos + 1);
    // Not every CharPrevW steps over surrogate pairs (Wine's does not); a
    // low surrogate after a high one is never a character start.
    if (start > text && IS_LOW_SURROGATE(*start) && IS_HIGH_SURROGATE(start[-1]))
        --start;
    const int index = static_cast<int>(start - text);
    return (index == pos || back) ? index : index + 2;
}

double SetDblPrec(double value, int digits)
{
    double power = 10.0, scale = 1.0;
    for (unsigned bits = digits < 0 ? 0u - static_cast<unsigned>(digits) : static_cast<unsigned>(digits); bits != 0;
         bits >>= 1) {
        if (bits & 1u)
            scale *= power;
        power *= power;
    }
    if (digits < 0)
        scale = 1.0 / scale;
    const int32_t s = TruncToInt32(scale);
    const int32_t t = TruncToInt32(value);
    const int32_t product = static_cast<int32_t>(static_cast<uint32_t>(t) * static_cast<uint32_t>(s));
    return static_cast<double>(product) / static_cast<double>(s);
}

double ZERO()
{
    CachedValue& zero = ZeroTolerance();
    if (!zero.read) {
        zero.value = StartupNumber(L"ZERO", L"0.000001", L"Precision");
        zero.read = true;
    }
    return zero.value;
}

bool ISZERO(double v)
{
    return ZERO() >= std::fabs(v);
}

void SetDoubleEQ(double tol)
{
    LastDoubleEQ() = tol;
    CInitSetting().SetSetting(L"DoubleEQ", FloatToStr(tol, 10), L"Precision");
}

double GetDoubleEQ()
{
    LastDoubleEQ() = StartupNumber(L"DoubleEQ", L"0.000001", L"Precision");
    return LastDoubleEQ();
}

bool IsDoubleEQ(double a, double b, double tol)
{
    if (tol < 0)
        tol = GetDoubleEQ();
    return tol > std::fabs(a - b);
}

bool IsAnglEqual(double a, double b, double tol)
{
    const double d = std::fabs(std::fmod(a - b, kTwoPi));
    return tol > d || d > kTwoPi - tol;
}

bool IsDirectAngles(double a, double b)
{
    const double d = std::fabs(std::fmod(b - (a + kHalfPi), kTwoPi));
    return kHalfPi > d || d > kThreeHalfPi;
}

double GetTextWidthFactor()
{
    CachedValue& factor = TextWidthFactor();
    if (!factor.read) {
        factor.value = StartupNumber(L"TextWidthFactor", L"0.7", L"Software");
        factor.read = true;
    }
    if (ZERO() >= factor.value)
        factor.value = 0.7;
    return factor.value;
}

bool IsNum(CString text) { return NumTest(text, kNotEmpty | kValid, kNotEmpty | kValid); }

bool IsZero(CString text) { return NumTest(text, kNotEmpty | kValid | kNonZero, kNotEmpty | kValid); }

bool IsPlusNum(CString text)
{
    const int wanted = kNotEmpty | kValid | kNonZero | kNotNegative;
    return NumTest(text, wanted, wanted);
}

bool IsInt(CString text) { return NumTest(text, kNotEmpty | kValid | kPointOrBad, kNotEmpty | kValid); }

bool IsPlusInt(CString text)
{
    const int wanted = kNotEmpty | kValid | kNonZero | kNotNegative;
    return NumTest(text, wanted | kPointOrBad, wanted);
}

}  // namespace QM
