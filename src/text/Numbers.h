// Numbers.h - numbers to text, the two tolerances, angle tests, and the
// tests that tell whether a text is a number.
//
//   QM::FloatToStr(2.345, 2);                       // "2.35" (rounded)
//   QM::SetDblPrec(2.789, 2);                       // 2.0: truncates, see below
//   if (QM::IsDoubleEQ(a, b)) ...                   // within "DoubleEQ" of the start-up settings
//   if (QM::IsPlusInt(L"12")) ...
//
// The tolerances and the text width factor come from the start-up settings
// (QM::CInitSetting()): "ZERO" and "DoubleEQ" in section "Precision",
// "TextWidthFactor" in section "Software". Angles are in radians. The cached
// values are process-wide and unlocked: use them from one thread.
#pragma once
#include "platform/CString.h"

namespace QM {

// `value` as "%X" (upper-case hexadecimal, no prefix) when `hex` is
// non-zero, else as "%d".
QM_API CString IntToStr(int value, int hex = 0);

// `value` in fixed notation with `digits` decimals, rounded by the
// formatter. Digits below 0 count as 0, above 100 as 100.
QM_API CString FloatToStr(double value, int digits);

// `text` padded with blanks to `width` characters, on the left when `right`
// (right-aligned), else on the right. A longer text is returned whole; a
// null text counts as empty. A negative width pads on the right either way:
// FixLenStr(L"ab", -4, true) is "ab  ".
QM_API CString FixLenStr(const wchar_t* text, int width, bool right);

// A cut position in `text` that does not split a character: `pos` itself
// when a character starts there; when `pos` falls on the second half of a
// surrogate pair, the pair's start if `back`, else the position after the
// pair. pos -1 gives 0 with `back`, else 2 (the platform's answer for the
// text's start). `pos` is returned unchanged when `text` is null or `pos`
// lies outside -1..length-1.
QM_API int AdjustString(const wchar_t* text, int pos, bool back);

// Deliberately truncates: the value is cut to a 32-bit integer toward zero
// before any scaling, so SetDblPrec(2.789, 2) is 2.0 and SetDblPrec(-3.99, 1)
// is -3.0; callers rely on it as an integer truncation. Negative `digits`
// give NaN (0/0); 10 digits or more overflow the 32-bit scale as the
// processor does (its out-of-range result, then a wrapping product). A value
// outside the 32-bit range or NaN truncates to -2147483648 likewise.
QM_API double SetDblPrec(double value, int digits);

// The zero tolerance, "ZERO" (default "0.000001"), read once per process on
// first use: changing it needs a new process.
QM_API double ZERO();
// True when |v| <= ZERO(): inclusive, a value equal to the tolerance is zero.
// False for NaN.
QM_API bool ISZERO(double v);

// Keeps `tol` as the equality tolerance and writes it, with 10 decimals, to
// "DoubleEQ" of the start-up settings and their file.
QM_API void SetDoubleEQ(double tol);
// The equality tolerance, "DoubleEQ" (default "0.000001"), looked up in the
// start-up settings at every call, so it follows SetDoubleEQ and re-binds.
QM_API double GetDoubleEQ();
// True when |a - b| < tol: strict, a difference equal to the tolerance is
// not equal (unlike ISZERO, on purpose). A negative `tol` means
// GetDoubleEQ(). False when anything is NaN.
QM_API bool IsDoubleEQ(double a, double b, double tol = -1.0);

// True when a and b name the same direction within `tol`: with
// d = |fmod(a - b, 2*pi)|, tol > d or d > 2*pi - tol.
QM_API bool IsAnglEqual(double a, double b, double tol);
// True when b lies within a quarter turn of a + pi/2 (strictly): with
// d = |fmod(b - (a + pi/2), 2*pi)|, d < pi/2 or d > 3*pi/2.
QM_API bool IsDirectAngles(double a, double b);

// The text width factor, "TextWidthFactor" (default "0.7"), read once per
// process. A factor that is not above ZERO() (zero, negative or tiny) gives
// 0.7 instead, and is replaced by 0.7 from then on.
QM_API double GetTextWidthFactor();

// Numeric-text tests. The text is trimmed of white space; a valid number is
// digits with at most one '.', and at most one sign, which must come first
// ("1e5", "1-2", "--1" and "1.2.3" are not numbers; "-.5", "5." and "-"
// are). A blank text that is not empty counts as the number zero. A signed
// zero ("-0", "+0.0") deliberately counts as non-zero.
QM_API bool IsNum(CString text);      // a valid number
QM_API bool IsZero(CString text);     // a valid number equal to zero
QM_API bool IsPlusNum(CString text);  // valid, non-zero, not negative
QM_API bool IsInt(CString text);      // valid, without a decimal point
QM_API bool IsPlusInt(CString text);  // valid, non-zero, not negative, without a point

}  // namespace QM
