// CString.h - the wide string every QMUtil interface takes and returns.
//
//   CString path(L"C:\\QM\\Sys\\");
//   path += L"INIT.ini";
//   CString name = path.Mid(path.ReverseFind(L'\\') + 1);   // "INIT.ini"
//
// Value semantics over a shared, reference-counted buffer that is copied
// before the first change (copies are cheap: settings look-ups return them
// by the million). MFC's behaviour at the edges: Left/Right/Mid clamp their
// arguments, Trim with a set strips every character of the set, MakeUpper and
// MakeLower touch ASCII letters only, Format follows the Microsoft wide printf
// rules (%s takes a const wchar_t*). Index faults throw CInvalidArgException*.
#pragma once
#include "QMExport.h"
#include <cstdarg>
#include <memory>
#include <string>

class QM_API CString
{
public:
    CString() = default;
    CString(const CString&) = default;
    CString(CString&&) noexcept = default;
    CString(const wchar_t* text);                   // NULL gives an empty text
    CString(const wchar_t* text, int length);       // the first `length` characters
    CString(wchar_t ch, int repeat = 1);
    // ANSI text in the thread's code page (CP_THREAD_ACP), as CStringW does.
    explicit CString(const char* ansi);
    ~CString() = default;

    CString& operator=(const CString&) = default;
    CString& operator=(CString&&) noexcept = default;
    CString& operator=(const wchar_t* text);
    CString& operator=(wchar_t ch);

    operator const wchar_t*() const { return Str().c_str(); }
    const wchar_t* GetString() const { return Str().c_str(); }

    int GetLength() const { return static_cast<int>(Str().size()); }
    bool IsEmpty() const { return Str().empty(); }
    void Empty() { m_rep.reset(); }

    // GetAt accepts 0..GetLength() (the terminating NUL); SetAt 0..GetLength()-1.
    wchar_t GetAt(int index) const;
    void SetAt(int index, wchar_t ch);
    wchar_t operator[](int index) const { return GetAt(index); }

    CString Left(int count) const;
    CString Right(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    // The longest prefix made of characters in `set` / not in `set`.
    CString SpanIncluding(const wchar_t* set) const;
    CString SpanExcluding(const wchar_t* set) const;

    // -1 when not found or when `start` lies outside the text.
    int Find(wchar_t ch, int start = 0) const;
    int Find(const wchar_t* sub, int start = 0) const;
    int FindOneOf(const wchar_t* set) const;
    int ReverseFind(wchar_t ch) const;

    // Return the number of replacements / removals.
    int Replace(wchar_t oldCh, wchar_t newCh);
    int Replace(const wchar_t* oldText, const wchar_t* newText);
    int Remove(wchar_t ch);
    // Return the new length; positions are clamped to the text.
    int Insert(int index, wchar_t ch);
    int Insert(int index, const wchar_t* text);
    int Delete(int index, int count = 1);

    CString& Trim();
    CString& Trim(wchar_t ch);
    CString& Trim(const wchar_t* set);
    CString& TrimLeft();
    CString& TrimLeft(wchar_t ch);
    CString& TrimLeft(const wchar_t* set);
    CString& TrimRight();
    CString& TrimRight(wchar_t ch);
    CString& TrimRight(const wchar_t* set);

    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();

    int Compare(const wchar_t* other) const;
    int CompareNoCase(const wchar_t* other) const;

    void Format(const wchar_t* format, ...);
    void FormatV(const wchar_t* format, va_list args);
    void AppendFormat(const wchar_t* format, ...);

    // A writable buffer of at least `minLength` characters plus the NUL;
    // ReleaseBuffer(-1) takes the length up to the first NUL.
    wchar_t* GetBuffer();
    wchar_t* GetBuffer(int minLength);
    wchar_t* GetBufferSetLength(int length);
    void ReleaseBuffer(int newLength = -1);

    // Loads string `id`: the resource handle first, then the extension chain.
    BOOL LoadString(UINT id);

    CString& operator+=(const CString& text);
    CString& operator+=(const wchar_t* text);
    CString& operator+=(wchar_t ch);

    friend QM_API CString operator+(const CString& a, const CString& b);
    friend QM_API CString operator+(const CString& a, const wchar_t* b);
    friend QM_API CString operator+(const wchar_t* a, const CString& b);
    friend QM_API CString operator+(const CString& a, wchar_t b);
    friend QM_API CString operator+(wchar_t a, const CString& b);

private:
    const std::wstring& Str() const { return m_rep ? *m_rep : EmptyText(); }
    static const std::wstring& EmptyText()
    {
        static const std::wstring empty;
        return empty;
    }
    // The text, made this object's own before it is changed.
    std::wstring& Mut();
    // Takes `text` as the new value; an empty text holds no buffer.
    void Adopt(std::wstring&& text);

    std::shared_ptr<std::wstring> m_rep;
};

inline bool operator==(const CString& a, const CString& b) { return a.Compare(b) == 0; }
inline bool operator==(const CString& a, const wchar_t* b) { return a.Compare(b) == 0; }
inline bool operator==(const wchar_t* a, const CString& b) { return b.Compare(a) == 0; }
inline bool operator!=(const CString& a, const CString& b) { return !(a == b); }
inline bool operator!=(const CString& a, const wchar_t* b) { return !(a == b); }
inline bool operator!=(const wchar_t* a, const CString& b) { return !(a == b); }
inline bool operator<(const CString& a, const CString& b) { return a.Compare(b) < 0; }
inline bool operator<(const CString& a, const wchar_t* b) { return a.Compare(b) < 0; }
inline bool operator>(const CString& a, const CString& b) { return a.Compare(b) > 0; }
inline bool operator>(const CString& a, const wchar_t* b) { return a.Compare(b) > 0; }
inline bool operator<=(const CString& a, const CString& b) { return a.Compare(b) <= 0; }
inline bool operator<=(const CString& a, const wchar_t* b) { return a.Compare(b) <= 0; }
inline bool operator>=(const CString& a, const CString& b) { return a.Compare(b) >= 0; }
inline bool operator>=(const CString& a, const wchar_t* b) { return a.Compare(b) >= 0; }
