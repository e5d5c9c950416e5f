// CString.cpp - the wide string of the foundation, with MFC's edge rules.
#include "platform/CString.h"
#include "platform/Module.h"
#include "platform/Throw.h"

#include <algorithm>
#include <cwchar>
#include <cwctype>

namespace {

bool InSet(const wchar_t* set, wchar_t ch)
{
    return set != nullptr && ch != L'\0' && std::wcschr(set, ch) != nullptr;
}

wchar_t AsciiUpper(wchar_t ch) { return (ch >= L'a' && ch <= L'z') ? wchar_t(ch - 32) : ch; }
wchar_t AsciiLower(wchar_t ch) { return (ch >= L'A' && ch <= L'Z') ? wchar_t(ch + 32) : ch; }

// Clamps an insertion or deletion position into 0..length, as MFC does.
int ClampIndex(int index, int length) { return std::min(std::max(index, 0), length); }

}  // namespace

CString::CString(const wchar_t* text)
{
    if (text != nullptr)
        Adopt(std::wstring(text));
}

CString::CString(const wchar_t* text, int length)
{
    if (text != nullptr && length > 0)
        Adopt(std::wstring(text, static_cast<size_t>(length)));
}

CString::CString(wchar_t ch, int repeat)
{
    if (repeat > 0)
        Adopt(std::wstring(static_cast<size_t>(repeat), ch));
}

CString::CString(const char* ansi)
{
    if (ansi == nullptr || *ansi == '\0')
        return;
    int needed = MultiByteToWideChar(CP_THREAD_ACP, 0, ansi, -1, nullptr, 0);
    if (needed <= 1)
        return;
    std::wstring text(static_cast<size_t>(needed), L'\0');
    MultiByteToWideChar(CP_THREAD_ACP, 0, ansi, -1, &text[0], needed);
    text.resize(static_cast<size_t>(needed - 1));
    Adopt(std::move(text));
}

CString& CString::operator=(const wchar_t* text)
{
    // A new text, built before the old one is let go: `text` may point into it.
    Adopt(text != nullptr ? std::wstring(text) : std::wstring());
    return *this;
}

CString& CString::operator=(wchar_t ch)
{
    Adopt(std::wstring(1, ch));
    return *this;
}

void CString::Adopt(std::wstring&& text)
{
    if (text.empty())
        m_rep.reset();
    else
        m_rep = std::make_shared<std::wstring>(std::move(text));
}

std::wstring& CString::Mut()
{
    if (!m_rep)
        m_rep = std::make_shared<std::wstring>();
    else if (m_rep.use_count() > 1)
        m_rep = std::make_shared<std::wstring>(*m_rep);
    return *m_rep;
}

wchar_t CString::GetAt(int index) const
{
    if (index < 0 || index > GetLength())
        AfxThrowInvalidArgException();
    return Str().c_str()[index];
}

void CString::SetAt(int index, wchar_t ch)
{
    if (index < 0 || index >= GetLength())
        AfxThrowInvalidArgException();
    Mut()[static_cast<size_t>(index)] = ch;
}

CString CString::Left(int count) const
{
    count = std::max(count, 0);
    return count >= GetLength() ? *this : CString(Str().c_str(), count);
}

CString CString::Right(int count) const
{
    count = std::max(count, 0);
    return count >= GetLength() ? *this : CString(Str().c_str() + GetLength() - count, count);
}

CString CString::Mid(int first) const
{
    return Mid(first, GetLength() - first);
}

CString CString::Mid(int first, int count) const
{
    first = std::max(first, 0);
    count = std::max(count, 0);
    if (first > GetLength())
        return CString();
    count = std::min(count, GetLength() - first);
    return CString(Str().c_str() + first, count);
}

CString CString::SpanIncluding(const wchar_t* set) const
{
    int n = 0;
    while (n < GetLength() && InSet(set, Str()[n]))
        ++n;
    return Left(n);
}

CString CString::SpanExcluding(const wchar_t* set) const
{
    int n = 0;
    while (n < GetLength() && !InSet(set, Str()[n]))
        ++n;
    return Left(n);
}

int CString::Find(wchar_t ch, int start) const
{
    if (start < 0 || start >= GetLength())
        return -1;
    size_t pos = Str().find(ch, static_cast<size_t>(start));
    return pos == std::wstring::npos ? -1 : static_cast<int>(pos);
}

int CString::Find(const wchar_t* sub, int start) const
{
    if (sub == nullptr || start < 0 || start > GetLength())
        return -1;
    size_t pos = Str().find(sub, static_cast<size_t>(start));
    return pos == std::wstring::npos ? -1 : static_cast<int>(pos);
}

int CString::FindOneOf(const wchar_t* set) const
{
    for (int i = 0; i < GetLength(); ++i)
        if (InSet(set, Str()[i]))
            return i;
    return -1;
}

int CString::ReverseFind(wchar_t ch) const
{
    size_t pos = Str().rfind(ch);
    return pos == std::wstring::npos ? -1 : static_cast<int>(pos);
}

int CString::Replace(wchar_t oldCh, wchar_t newCh)
{
    int count = 0;
    if (oldCh == newCh || Str().find(oldCh) == std::wstring::npos)
        return 0;
    for (wchar_t& ch : Mut())
        if (ch == oldCh) {
            ch = newCh;
            ++count;
        }
    return count;
}

int CString::Replace(const wchar_t* oldText, const wchar_t* newText)
{
    std::wstring& str = Mut();
    if (oldText == nullptr || *oldText == L'\0')
        return 0;
    const std::wstring from(oldText);
    const std::wstring to(newText != nullptr ? newText : L"");
    std::wstring result;
    int count = 0;
    size_t pos = 0;
    for (size_t hit; (hit = str.find(from, pos)) != std::wstring::npos; pos = hit + from.size()) {
        result.append(str, pos, hit - pos).append(to);
        ++count;
    }
    if (count > 0) {
        result.append(str, pos, std::wstring::npos);
        str.swap(result);
    }
    return count;
}

int CString::Remove(wchar_t ch)
{
    std::wstring& str = Mut();
    size_t before = str.size();
    str.erase(std::remove(str.begin(), str.end(), ch), str.end());
    return static_cast<int>(before - str.size());
}

int CString::Insert(int index, wchar_t ch)
{
    Mut().insert(static_cast<size_t>(ClampIndex(index, GetLength())), 1, ch);
    return GetLength();
}

int CString::Insert(int index, const wchar_t* text)
{
    if (text != nullptr)
        Mut().insert(static_cast<size_t>(ClampIndex(index, GetLength())), std::wstring(text));
    return GetLength();
}

int CString::Delete(int index, int count)
{
    index = ClampIndex(index, GetLength());
    if (count > 0)
        Mut().erase(static_cast<size_t>(index), static_cast<size_t>(count));
    return GetLength();
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }
CString& CString::Trim(wchar_t ch) { return TrimRight(ch).TrimLeft(ch); }
CString& CString::Trim(const wchar_t* set) { return TrimRight(set).TrimLeft(set); }

// The trims look before they change anything, so a text shared with other
// copies is only copied when there is something to strip.
CString& CString::TrimLeft()
{
    size_t n = 0;
    while (n < Str().size() && std::iswspace(Str()[n]))
        ++n;
    if (n > 0)
        Mut().erase(0, n);
    return *this;
}

CString& CString::TrimLeft(wchar_t ch)
{
    const wchar_t set[2] = {ch, L'\0'};
    return TrimLeft(set);
}

CString& CString::TrimLeft(const wchar_t* set)
{
    size_t n = 0;
    while (n < Str().size() && InSet(set, Str()[n]))
        ++n;
    if (n > 0)
        Mut().erase(0, n);
    return *this;
}

CString& CString::TrimRight()
{
    size_t n = Str().size();
    while (n > 0 && std::iswspace(Str()[n - 1]))
        --n;
    if (n < Str().size())
        Mut().resize(n);
    return *this;
}

CString& CString::TrimRight(wchar_t ch)
{
    const wchar_t set[2] = {ch, L'\0'};
    return TrimRight(set);
}

CString& CString::TrimRight(const wchar_t* set)
{
    size_t n = Str().size();
    while (n > 0 && InSet(set, Str()[n - 1]))
        --n;
    if (n < Str().size())
        Mut().resize(n);
    return *this;
}

CString& CString::MakeUpper()
{
    std::wstring& str = Mut();
    std::transform(str.begin(), str.end(), str.begin(), AsciiUpper);
    return *this;
}

CString& CString::MakeLower()
{
    std::wstring& str = Mut();
    std::transform(str.begin(), str.end(), str.begin(), AsciiLower);
    return *this;
}

CString& CString::MakeReverse()
{
    std::wstring& str = Mut();
    std::reverse(str.begin(), str.end());
    return *this;
}

int CString::Compare(const wchar_t* other) const
{
    return std::wcscmp(Str().c_str(), other != nullptr ? other : L"");
}

int CString::CompareNoCase(const wchar_t* other) const
{
    const wchar_t* a = Str().c_str();
    const wchar_t* b = other != nullptr ? other : L"";
    for (;; ++a, ++b) {
        wchar_t ca = AsciiLower(*a), cb = AsciiLower(*b);
        if (ca != cb)
            return ca < cb ? -1 : 1;
        if (ca == L'\0')
            return 0;
    }
}

void CString::FormatV(const wchar_t* format, va_list args)
{
    if (format == nullptr) {
        m_rep.reset();
        return;
    }
    va_list counting;
    va_copy(counting, args);
    int length = _vscwprintf(format, counting);
    va_end(counting);
    if (length < 0)
        AfxThrowInvalidArgException();
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    _vsnwprintf(&text[0], text.size(), format, args);
    text.resize(static_cast<size_t>(length));
    Adopt(std::move(text));
}

void CString::Format(const wchar_t* format, ...)
{
    va_list args;
    va_start(args, format);
    FormatV(format, args);
    va_end(args);
}

void CString::AppendFormat(const wchar_t* format, ...)
{
    CString tail;
    va_list args;
    va_start(args, format);
    tail.FormatV(format, args);
    va_end(args);
    *this += tail;
}

wchar_t* CString::GetBuffer()
{
    return &Mut()[0];
}

wchar_t* CString::GetBuffer(int minLength)
{
    std::wstring& str = Mut();
    if (minLength < 0)
        AfxThrowInvalidArgException();
    if (static_cast<size_t>(minLength) > str.size())
        str.resize(static_cast<size_t>(minLength));
    return &str[0];
}

wchar_t* CString::GetBufferSetLength(int length)
{
    std::wstring& str = Mut();
    if (length < 0)
        AfxThrowInvalidArgException();
    str.resize(static_cast<size_t>(length));
    return &str[0];
}

void CString::ReleaseBuffer(int newLength)
{
    std::wstring& str = Mut();
    if (newLength < 0)
        newLength = static_cast<int>(std::wcslen(str.c_str()));
    str.resize(std::min(static_cast<size_t>(newLength), str.size()));
}

BOOL CString::LoadString(UINT id)
{
    // Length 0 asks for a pointer into the resource itself, so strings of
    // any length load without a fixed buffer.
    const wchar_t* resource = nullptr;
    int length = ::LoadStringW(AfxFindStringResourceHandle(id), id, reinterpret_cast<LPWSTR>(&resource), 0);
    if (length <= 0 || resource == nullptr)
        return FALSE;
    Mut().assign(resource, static_cast<size_t>(length));
    return TRUE;
}

CString& CString::operator+=(const CString& text)
{
    Mut() += text.Str();
    return *this;
}

CString& CString::operator+=(const wchar_t* text)
{
    if (text != nullptr)
        Mut() += text;
    return *this;
}

CString& CString::operator+=(wchar_t ch)
{
    Mut() += ch;
    return *this;
}

CString operator+(const CString& a, const CString& b) { CString r(a); r += b; return r; }
CString operator+(const CString& a, const wchar_t* b) { CString r(a); r += b; return r; }
CString operator+(const wchar_t* a, const CString& b) { CString r(a); r += b; return r; }
CString operator+(const CString& a, wchar_t b) { CString r(a); r += b; return r; }
CString operator+(wchar_t a, const CString& b) { CString r(a); r += b; return r; }
