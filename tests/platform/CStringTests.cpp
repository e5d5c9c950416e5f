// CString at its edges: the MFC behaviours callers of the suite rely on.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/Throws.h"

using qmtest::ThrowsInvalidArg;

TEST(CStringSubstrings, ClampTheirArguments)
{
    const CString s(L"abcdef");
    EXPECT_EQ(s.Left(-2), CString());
    EXPECT_EQ(s.Left(99), s);
    EXPECT_EQ(s.Right(2), CString(L"ef"));
    EXPECT_EQ(s.Right(-1), CString());
    EXPECT_EQ(s.Mid(-3, 2), CString(L"ab"));
    EXPECT_EQ(s.Mid(4, 99), CString(L"ef"));
    EXPECT_EQ(s.Mid(7), CString());
    EXPECT_EQ(s.Mid(2, -1), CString());
    EXPECT_EQ(s.Mid(6), CString());
}

TEST(CStringSearch, PositionsOutsideTheTextFindNothing)
{
    const CString s(L"a,b,c");
    EXPECT_EQ(s.Find(L','), 1);
    EXPECT_EQ(s.Find(L',', 2), 3);
    EXPECT_EQ(s.Find(L',', 5), -1);
    EXPECT_EQ(s.Find(L',', -1), -1);
    EXPECT_EQ(s.Find(L"b,c"), 2);
    EXPECT_EQ(s.Find(L"", 5), 5);
    EXPECT_EQ(s.Find(L"x", 6), -1);
    EXPECT_EQ(s.ReverseFind(L','), 3);
    EXPECT_EQ(s.FindOneOf(L"cb"), 2);
}

TEST(CStringTrim, WithASetStripsEveryCharacterOfTheSet)
{
    CString s(L"xyhelloyxx");
    s.TrimRight(L"xy");
    EXPECT_EQ(s, CString(L"xyhello"));
    s.TrimLeft(L"yx");
    EXPECT_EQ(s, CString(L"hello"));
    CString quoted(L"\"\"a\"\"");
    EXPECT_EQ(quoted.Trim(L'"'), CString(L"a"));
    CString blank(L" \t a b \r\n");
    EXPECT_EQ(blank.Trim(), CString(L"a b"));
}

TEST(CStringCase, OnlyAsciiLettersChange)
{
    CString s(L"abcÄé中z");
    s.MakeUpper();
    EXPECT_EQ(s, CString(L"ABCÄé中Z"));
    s.MakeLower();
    EXPECT_EQ(s, CString(L"abcÄé中z"));
    EXPECT_EQ(CString(L"Sys").CompareNoCase(L"SYS"), 0);
    EXPECT_LT(CString(L"a").CompareNoCase(L"B"), 0);
    EXPECT_NE(CString(L"é").CompareNoCase(L"É"), 0);
}

TEST(CStringEdit, ReplaceRemoveInsertDelete)
{
    CString s(L"aXbXXc");
    EXPECT_EQ(s.Replace(L"X", L"--"), 3);
    EXPECT_EQ(s, CString(L"a--b----c"));
    EXPECT_EQ(s.Replace(L"", L"y"), 0);
    EXPECT_EQ(s.Remove(L'-'), 6);
    EXPECT_EQ(s, CString(L"abc"));
    EXPECT_EQ(s.Insert(-5, L'<'), 4);
    EXPECT_EQ(s.Insert(99, L">"), 5);
    EXPECT_EQ(s, CString(L"<abc>"));
    EXPECT_EQ(s.Delete(3, 99), 3);
    EXPECT_EQ(s, CString(L"<ab"));
    EXPECT_EQ(s.Delete(-1), 2);
    EXPECT_EQ(s, CString(L"ab"));
}

TEST(CStringFormat, FollowsTheMicrosoftWideRules)
{
    CString s;
    s.Format(L"%s|%d|%5.2f|%X|%%", L"宽", -7, 3.14159, 255);
    EXPECT_EQ(s, CString(L"宽|-7| 3.14|FF|%"));
    CString long_;
    long_.Format(L"%s%s", CString(L'x', 5000).GetString(), L"end");
    EXPECT_EQ(long_.GetLength(), 5003);
    s.AppendFormat(L"[%d]", 1);
    EXPECT_EQ(s.Right(3), CString(L"[1]"));
}

TEST(CStringBuffer, ReleaseTakesTheLengthUpToTheFirstNul)
{
    CString s(L"abc");
    wchar_t* p = s.GetBuffer(10);
    wcscpy(p, L"0123456789");
    s.ReleaseBuffer();
    EXPECT_EQ(s.GetLength(), 10);
    p = s.GetBuffer();
    p[4] = L'\0';
    s.ReleaseBuffer();
    EXPECT_EQ(s, CString(L"0123"));
    s.GetBuffer(8);
    s.ReleaseBuffer(2);
    EXPECT_EQ(s, CString(L"01"));
}

TEST(CStringIndex, FaultsThrowInvalidArgument)
{
    CString s(L"ab");
    EXPECT_EQ(s.GetAt(2), L'\0');
    EXPECT_TRUE(ThrowsInvalidArg([&] { s.GetAt(3); }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { s.GetAt(-1); }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { s.SetAt(2, L'c'); }));
    s.SetAt(1, L'z');
    EXPECT_EQ(s, CString(L"az"));
}

TEST(CStringConversion, AnsiTextUsesTheThreadCodePage)
{
    // Code page 936: "中文" is D6 D0 CE C4.
    ASSERT_EQ(GetACP(), 936u) << "the test prefix runs with LANG=zh_CN.UTF-8";
    EXPECT_EQ(CString("\xD6\xD0\xCE\xC4"), CString(L"中文"));
    EXPECT_EQ(CString(static_cast<const char*>(nullptr)), CString());
}

TEST(CStringOperators, ConcatenateAndCompare)
{
    CString a(L"Sys");
    EXPECT_EQ(a + L"\\" + CString(L"INIT.ini"), CString(L"Sys\\INIT.ini"));
    EXPECT_EQ(L'<' + a + L'>', CString(L"<Sys>"));
    EXPECT_TRUE(a == L"Sys");
    EXPECT_TRUE(L"Sys" == a);
    EXPECT_TRUE(a < CString(L"Sz"));
    EXPECT_TRUE(CString(static_cast<const wchar_t*>(nullptr)).IsEmpty());
    const wchar_t* raw = a;
    EXPECT_STREQ(raw, L"Sys");
}
