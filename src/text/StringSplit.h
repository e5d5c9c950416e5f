// StringSplit.h - taking apart command lines, comma lists, CAD lists and
// the profile functions' double-NUL lists.
//
//   CStringArray fields;
//   QM::SeparateString(L",,a,,b,,", L',', fields, false);   // a, b
//   QM::Nth(L"(1 \"a b\" (2 3) nil)", 2, false);            // (2 3)
//
// Each function has its own rules for empty fields, blanks and quotes;
// callers depend on every one of them, odd ones included.
#pragma once
#include "platform/Collections.h"

namespace QM {

// Appends the `delim`-separated fields of `text` to `out` (not cleared) and
// returns `out`'s size. Leading and trailing delimiters are dropped, runs of
// delimiters count as one, blanks are kept. With `quotes`, a field that opens
// with '"' runs to the next '"' not preceded by a backslash (the quotes are
// dropped); an unescaped '"' inside a field ends it and starts the next, and
// after an escaped '\"' delimiters no longer end the field, only that quote:
// a\"b,c"d,e gives a\"b,c and d,e.
// A delimiter of '(' or ')' returns 0 at once: such text is left to
// GetWordFromStr.
QM_API int SeparateString(const wchar_t* text, wchar_t delim, CStringArray& out, bool quotes);

// Field `index` (from 0) of the split above, or an empty text. A negative
// index on a text with fields throws CInvalidArgException*.
QM_API CString SeparateString(const wchar_t* text, wchar_t delim, int index, bool quotes);

// Word `n` (from 0) of `text`. `delim` ' ': blank-separated words. '(': the
// depth-0 words of a parenthesised list (a nested list is one word). Any other
// character: the n-th field, empty fields counted. The result is trimmed and
// one enclosing pair of '"' is removed.
QM_API CString GetWordFromStr(const wchar_t* text, int n, wchar_t delim);

// Element `n` (from 0) of a CAD list such as (1 "a b" (2 3) nil): numbers
// (".5" reads as "0.5"), strings with their quotes, nested lists, "Nil".
// A symbol reads as "\"\"" and stops the reading there.
QM_API CString Nth(CString list, int n, bool stripQuotes);

// Splits a double-NUL-terminated list into `out` (cleared); returns the count.
QM_API int Get00Strings(const void* buffer, CStringArray& out);

// Writes `items` as a double-NUL list. With `buffer` null a new wchar_t[]
// is allocated that the caller frees with delete[]; otherwise `buffer` is
// zeroed over `size` bytes and the list is copied into it unchecked: the
// caller guarantees it is large enough. Returns the buffer.
QM_API void* Get00Buffer(CStringArray& items, void* buffer, int size);

}  // namespace QM

namespace QMOLD {

// Clears `out` and fills it with the non-empty comma fields of `text`; with
// `stripQuotes` every leading and trailing '"' of a field is removed first.
QM_API int DisCommaString(CString text, CStringArray& out, bool stripQuotes);

// Field `n` (from 1) of a comma list, trimmed and unquoted. With n = 1 and no
// comma the result is empty; a number past the last field gives the last.
QM_API CString getnumofStr(CString text, int n);

// Appends the blank-separated words of `text` to `out`; a tab separates only
// where no blank is left. Returns `out`'s size, or 0 for a blank text.
QM_API int DisSpaceString(CString text, CStringArray& out);

}  // namespace QMOLD
