// StringSplit.cpp - field, word and list-element splitting.
#include "text/StringSplit.h"

#include <cstring>
#include <cwchar>

namespace {

// The process-wide work copies the splitting functions have always used:
// callers of the suite run them on one thread only. The texts grow with
// their input, so long texts cannot overflow them.
CString& SplitWork()
{
    static CString work;
    return work;
}

CStringArray& SplitFields()
{
    static CStringArray fields;
    return fields;
}

CString& WordWork()
{
    static CString work;
    return work;
}

bool StartsAndEndsWith(const CString& text, wchar_t ch)
{
    int n = text.GetLength();
    return n >= 2 && text[0] == ch && text[n - 1] == ch;
}

// Word `n` of a text padded with blanks; a word starts at a blank to
// non-blank step and ends at the reverse step. With `nested`, parentheses
// raise and lower a depth and only steps at depth 0 count.
CString NthBlankWord(const CString& s, int n, bool nested)
{
    int depth = 0, count = -1, start = -1;
    for (int i = 1; i < s.GetLength(); ++i) {
        const wchar_t prev = s[i - 1], ch = s[i];
        if (prev == L' ' && ch != L' ' && depth == 0 && ++count == n)
            start = i;
        if (nested && ch == L'(')
            ++depth;
        else if (nested && ch == L')')
            --depth;
        if (prev != L' ' && ch == L' ' && depth == 0 && start >= 0)
            return s.Mid(start, i - start);
    }
    return CString();
}

// The text between the n-th and the (n+1)-th delimiter; empty fields count.
CString NthField(const CString& s, int n, wchar_t delim)
{
    if (n < 0)
        return CString();
    int start = 0;
    for (int k = 0; k < n; ++k) {
        int p = s.Find(delim, start);
        if (p < 0)
            return CString();
        start = p + 1;
    }
    int end = s.Find(delim, start);
    return end < 0 ? CString() : s.Mid(start, end - start);
}

// Cuts the first `length` characters off `text` as the element read.
CString TakeElement(CString& text, int length)
{
    CString element = text.Left(length);
    text = text.Mid(length);
    element.Replace(L"\\\"", L"\"");
    return element;
}

bool IsUnescapedQuote(const CString& text, int i)
{
    return text[i] == L'"' && (i == 0 || text[i - 1] != L'\\');
}

CString ReadNestedList(CString& text)
{
    int depth = 0;
    bool inString = false;
    for (int i = 0; i < text.GetLength(); ++i) {
        if (IsUnescapedQuote(text, i))
            inString = !inString;
        else if (!inString && text[i] == L'(')
            ++depth;
        else if (!inString && text[i] == L')' && --depth == 0)
            return TakeElement(text, i + 1);
    }
    return CString();
}

CString ReadQuoted(CString& text)
{
    for (int i = 1; i < text.GetLength(); ++i)
        if (IsUnescapedQuote(text, i))
            return TakeElement(text, i + 1);
    return CString();
}

CString ReadNumber(CString& text)
{
    int length = 0;
    for (; length < text.GetLength(); ++length) {
        const wchar_t ch = text[length];
        const bool digit = (ch >= L'0' && ch <= L'9') || ch == L'.';
        const bool sign = (ch == L'+' || ch == L'-') && length == 0;
        if (!digit && !sign)
            break;
    }
    CString number = text.Left(length);
    text = text.Mid(length);
    if (number.Left(1) == L"+")
        number.Delete(0);
    if (number.Left(1) == L".")
        number.Insert(0, L'0');
    else if (number.Left(2) == L"-.")
        number.Insert(1, L'0');
    return number;
}

// Reads one element from the front of `text` and removes it from there.
CString ReadElement(CString& text)
{
    text.TrimLeft();
    if (text.IsEmpty())
        return CString();
    const wchar_t first = text[0];
    if (first == L'(')
        return ReadNestedList(text);
    if (first == L'"')
        return ReadQuoted(text);
    if (first == L'N' || first == L'n') {
        if (text.Left(3).CompareNoCase(L"Nil") != 0)
            return CString();
        text.Delete(0, 3);
        return CString(L"Nil");
    }
    if (std::wcschr(L"0123456789.+-", first) != nullptr)
        return ReadNumber(text);
    // Symbols are not supported: they read as an empty string and stay in
    // place, so every later element reads the same way.
    return CString(L"\"\"");
}

}  // namespace

namespace QM {

int SeparateString(const wchar_t* text, wchar_t delim, CStringArray& out, bool quotes)
{
    CString& work = SplitWork();
    work = text;
    work.Trim(delim);
    if (delim == L'(' || delim == L')')
        return 0;

    const wchar_t* s = work;
    const int n = work.GetLength();
    int i = 0;
    while (i < n) {
        if (quotes && s[i] == L'"') {
            int j = i + 1;
            while (j < n && !(s[j] == L'"' && s[j - 1] != L'\\'))
                ++j;
            out.Add(CString(s + i + 1, j - i - 1));
            i = j < n ? j + 1 : n;
        } else {
            // An unescaped quote inside a field ends it and opens the next;
            // after an escaped quote only that ends it, delimiters do not.
            int j = i;
            bool escaped = false;
            for (; j < n; ++j) {
                const bool quote = quotes && s[j] == L'"';
                if (quote && s[j - 1] != L'\\')
                    break;
                escaped = escaped || quote;
                if (!escaped && s[j] == delim)
                    break;
            }
            out.Add(CString(s + i, j - i));
            i = j;
        }
        while (i < n && s[i] == delim)
            ++i;
    }
    return static_cast<int>(out.GetSize());
}

CString SeparateString(const wchar_t* text, wchar_t delim, int index, bool quotes)
{
    CStringArray& fields = SplitFields();
    fields.RemoveAll();
    int count = SeparateString(text, delim, fields, quotes);
    if (count == 0 || count <= index)
        return CString();
    return fields.GetAt(index);  // a negative index throws, as callers expect
}

CString GetWordFromStr(const wchar_t* text, int n, wchar_t delim)
{
    CString& work = WordWork();
    work = text;
    CString word;
    if (delim == L' ') {
        word = NthBlankWord(L" " + work + L"  ", n, false);
    } else if (delim == L'(') {
        work.Trim();
        work = work.Mid(1, work.GetLength() - 2);
        word = NthBlankWord(L" " + work + L"  ", n, true);
    } else {
        work += delim;
        word = NthField(work, n, delim);
    }
    word.Trim();
    if (StartsAndEndsWith(word, L'"'))
        word = word.Mid(1, word.GetLength() - 2);
    return word;
}

CString Nth(CString list, int n, bool stripQuotes)
{
    list.TrimLeft();
    if (list.Left(1) == L"(")
        list = list.Mid(1, list.GetLength() - 2);
    if (n < 0)
        return CString();

    // The text only ever shrinks; a step that leaves it as it was reads the
    // same element at every later step, so the loop ends there.
    CString element;
    for (int i = 0; i <= n; ++i) {
        const int before = list.GetLength();
        element = ReadElement(list);
        if (i == n)
            break;
        list.TrimLeft();
        if (list.Left(1) == L",") {
            list.Delete(0);
            list.TrimLeft();
        }
        if (list.GetLength() == before)
            break;
    }
    if (stripQuotes && StartsAndEndsWith(element, L'"'))
        element.Trim(L'"');
    return element;
}

int Get00Strings(const void* buffer, CStringArray& out)
{
    out.RemoveAll();
    for (auto p = static_cast<const wchar_t*>(buffer); p != nullptr && *p != L'\0'; p += std::wcslen(p) + 1)
        out.Add(p);
    return static_cast<int>(out.GetSize());
}

void* Get00Buffer(CStringArray& items, void* buffer, int size)
{
    size_t needed = 1;
    for (INT_PTR i = 0; i < items.GetSize(); ++i)
        needed += static_cast<size_t>(items[i].GetLength()) + 1;

    wchar_t* list;
    if (buffer == nullptr) {
        list = new wchar_t[needed];
    } else {
        // The caller guarantees the buffer holds the list; `size` only says
        // how much of it to clear first.
        std::memset(buffer, 0, size > 0 ? static_cast<size_t>(size) : 0);
        list = static_cast<wchar_t*>(buffer);
    }
    wchar_t* p = list;
    for (INT_PTR i = 0; i < items.GetSize(); ++i) {
        const size_t chars = static_cast<size_t>(items[i].GetLength()) + 1;
        std::memcpy(p, items[i].GetString(), chars * sizeof(wchar_t));
        p += chars;
    }
    *p = L'\0';
    return list;
}

}  // namespace QM

namespace QMOLD {

int DisCommaString(CString text, CStringArray& out, bool stripQuotes)
{
    out.RemoveAll();
    while (!text.IsEmpty()) {
        const int comma = text.Find(L',');
        CString field = comma < 0 ? text : text.Left(comma);
        if (stripQuotes)
            field.Trim(L'"');
        if (!field.IsEmpty())
            out.Add(field);
        text = comma < 0 ? CString() : text.Mid(comma + 1);
    }
    return static_cast<int>(out.GetSize());
}

CString getnumofStr(CString text, int n)
{
    if (text.IsEmpty())
        return text;
    text.Trim();
    CString field;
    if (n == 1) {
        // No comma gives Left(-1): nothing, and callers rely on that.
        field = text.Left(text.Find(L','));
    } else if (n >= 2) {
        // Past the last comma the text no longer changes: stop there.
        for (int k = 1, comma; k < n && (comma = text.Find(L',')) >= 0; ++k)
            text = text.Mid(comma + 1);
        const int comma = text.Find(L',');
        field = comma < 0 ? text : text.Left(comma);
    }
    field.Trim();
    field.Trim(L'"');
    return field;
}

int DisSpaceString(CString text, CStringArray& out)
{
    text.Trim();
    if (text.IsEmpty())
        return 0;
    for (;;) {
        // A tab separates only when no blank is left: the old callers' rule.
        int sep = text.Find(L' ');
        if (sep < 0)
            sep = text.Find(L'\t');
        if (sep < 0) {
            out.Add(text);
            break;
        }
        out.Add(text.Left(sep));
        text = text.Mid(sep);
        text.TrimLeft();
        if (text.IsEmpty())
            break;
    }
    return static_cast<int>(out.GetSize());
}

}  // namespace QMOLD
