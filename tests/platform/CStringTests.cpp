// CString at its edges: the MFC behaviours callers of the suite rely on.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/Throws.h"

using qmtest::ThrowsInvalidArg;

TEST(CStringPositions, SubstringsClampTheirArgumentsAndSearchesOutsideTheTextFindNothing)
{
    const CString s(L"abcdef"), list(L"a,b,c");
    EXPECT_EQ(s.Left(-2), CString());
    EXPECT_EQ(s.Left(99), s);
    EXPECT_EQ(s.Right(-1), CString());
    EXPECT_EQ(s.Mid(-3, 2), CString(L"ab"));
    EXPECT_EQ(s.Mid(4, 99), CString(L"ef"));
    EXPECT_EQ(s.Mid(7), CString());
    EXPECT_EQ(s.Mid(2, -1), CString());
    EXPECT_EQ(list.Find(L',', 2), 3);
    EXPECT_EQ(list.Find(L',', 5), -1);
    EXPECT_EQ(list.Find(L',', -1), -1);
    EXPECT_EQ(list.Find(L"", 5), 5);
    EXPECT_EQ(list.Find(L"x", 6), -1);
    EXPECT_EQ(list.ReverseFind(L','), 3);
    EXPECT_EQ(list.FindOneOf(L"cb"), 2);
}

TEST(CStringTrim, WithASetStripsEveryCharacterOfTheSet)
{
    CString s(L"xyhelloyxx"), quoted(L"\"\"a\"\""), blank(L" \t a b \r\n");
    EXPECT_EQ(s.TrimRight(L"xy"), CString(L"xyhello"));
    EXPECT_EQ(s.TrimLeft(L"yx"), CString(L"hello"));
    EXPECT_EQ(quoted.Trim(L'"'), CString(L"a"));
    EXPECT_EQ(blank.Trim(), CString(L"a b"));
}

TEST(CStringCase, OnlyAsciiLettersChange)
{
    CString s(L"abcÄé中z");
    EXPECT_EQ(s.MakeUpper(), CString(L"ABCÄé中Z"));
    EXPECT_EQ(s.MakeLower(), CString(L"abcÄé中z"));
    EXPECT_EQ(CString(L"Sys").CompareNoCase(L"SYS"), 0);
    EXPECT_LT(CString(L"a").CompareNoCase(L"B"), 0);
    EXPECT_NE(CString(L"é").CompareNoCase(L"É"), 0);
}

TEST(CStringEdit, ReplaceRemoveInsertDeleteCountAndClamp)
{
    CString s(L"aXbXXc");
    EXPECT_EQ(s.Replace(L"X", L"--"), 3);
    EXPECT_EQ(s, CString(L"a--b----c"));
    EXPECT_EQ(s.Replace(L"", L"y"), 0);
    EXPECT_EQ(s.Remove(L'-'), 6);
    EXPECT_EQ(s.Insert(-5, L'<'), 4);
    EXPECT_EQ(s.Insert(99, L">"), 5);
    EXPECT_EQ(s, CString(L"<abc>"));
    EXPECT_EQ(s.Delete(3, 99), 3);
    EXPECT_EQ(s.Delete(-1), 2);
    EXPECT_EQ(s, CString(L"ab"));
}

TEST(CStringFormat, FollowsTheMicrosoftWideRulesAtAnyLength)
{
    CString s, longText;
    s.Format(L"%s|%d|%5.2f|%X|%%", L"宽", -7, 3.14159, 255);
    EXPECT_EQ(s, CString(L"宽|-7| 3.14|FF|%"));
    longText.Format(L"%s%s", CString(L'x', 5000).GetString(), L"end");
    EXPECT_EQ(longText.GetLength(), 5003);
    s.AppendFormat(L"[%d]", 1);
    EXPECT_EQ(s.Right(3), CString(L"[1]"));
}

TEST(CStringBuffer, ReleaseTakesTheLengthUpToTheFirstNul)
{
    CString s(L"abc");
    wcscpy(s.GetBuffer(10), L"0123456789");
    s.ReleaseBuffer();
    EXPECT_EQ(s.GetLength(), 10);
    s.GetBuffer()[4] = L'\0';
    s.ReleaseBuffer();
    EXPECT_EQ(s, CString(L"0123"));
    s.GetBuffer(8);
    s.ReleaseBuffer(2);
    EXPECT_EQ(s, CString(L"01"));
}

TEST(CStringIndex, TheNulIsReadableAndOtherFaultsThrowInvalidArgument)
{
    CString s(L"ab");
    EXPECT_EQ(s.GetAt(2), L'\0');
    EXPECT_TRUE(ThrowsInvalidArg([&] { s.GetAt(3); }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { s.GetAt(-1); }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { s.SetAt(2, L'c'); }));
    s.SetAt(1, L'z');
    EXPECT_EQ(s, CString(L"az"));
}

TEST(CStringConversion, AnsiTextUsesTheThreadCodePageAndNullIsEmpty)
{
    // Code page 936: "中文" is D6 D0 CE C4.
    ASSERT_EQ(GetACP(), 936u) << "the test prefix runs with LANG=zh_CN.UTF-8";
    EXPECT_EQ(CString("\xD6\xD0\xCE\xC4"), CString(L"中文"));
    EXPECT_EQ(CString(static_cast<const char*>(nullptr)), CString());
    EXPECT_TRUE(CString(static_cast<const wchar_t*>(nullptr)).IsEmpty());
    EXPECT_EQ(L'<' + CString(L"Sys") + L'>', CString(L"<Sys>"));
}
