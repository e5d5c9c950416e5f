// CString at its edges: the MFC behaviours callers of the suite rely on.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/Throws.h"

#include <vector>

using qmtest::ThrowsInvalidArg;

namespace {

struct Case { CString got; const wchar_t* expected; };
void ExpectAll(std::initializer_list<Case> rows)
{
    int i = 0;
    for (const Case& row : rows)
        EXPECT_EQ(row.got, CString(row.expected)) << "row " << i++;
}

}  // namespace

TEST(CStringPositions, SubstringsClampTheirArgumentsAndSearchesOutsideTheTextFindNothing)
{
    const CString s(L"abcdef"), list(L"a,b,c");
    ExpectAll({{s.Left(-2), L""}, {s.Left(99), L"abcdef"}, {s.Right(-1), L""}, {s.Mid(-3, 2), L"ab"},
               {s.Mid(4, 99), L"ef"}, {s.Mid(7), L""}, {s.Mid(2, -1), L""}});
    const int found[] = {list.Find(L',', 2), list.Find(L',', 5), list.Find(L',', -1), list.Find(L"", 5),
                         list.Find(L"x", 6), list.ReverseFind(L','), list.FindOneOf(L"cb")};
    EXPECT_EQ(std::vector<int>(found, found + 7), (std::vector<int>{3, -1, -1, 5, -1, 3, 2}));
}

TEST(CStringTrim, WithASetStripsEveryCharacterOfTheSet)
{
    CString s(L"xyhelloyxx"), quoted(L"\"\"a\"\""), blank(L" \t a b \r\n");
    ExpectAll({{s.TrimRight(L"xy"), L"xyhello"}, {s.TrimLeft(L"yx"), L"hello"}, {quoted.Trim(L'"'), L"a"},
               {blank.Trim(), L"a b"}});
}

TEST(CStringCase, OnlyAsciiLettersChange)
{
    CString s(L"abcÄé中z");
    ExpectAll({{s.MakeUpper(), L"ABCÄé中Z"}, {s.MakeLower(), L"abcÄé中z"}});
    EXPECT_EQ(CString(L"Sys").CompareNoCase(L"SYS"), 0);
    EXPECT_LT(CString(L"a").CompareNoCase(L"B"), 0);
    EXPECT_NE(CString(L"é").CompareNoCase(L"É"), 0);
}

TEST(CStringEdit, ReplaceRemoveInsertDeleteCountAndClamp)
{
    CString s(L"aXbXXc");
    EXPECT_EQ(s.Replace(L"X", L"--"), 3);
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
    EXPECT_EQ(longText.Right(5), CString(L"xxend"));
    EXPECT_EQ(longText.GetLength(), 5003);
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
}

// Code page 936 (the test prefix runs with LANG=zh_CN.UTF-8): "中文" is D6 D0 CE C4.
TEST(CStringConversion, AnsiTextUsesTheThreadCodePageAndNullIsEmpty)
{
    ExpectAll({{CString("\xD6\xD0\xCE\xC4"), L"中文"}, {CString(static_cast<const char*>(nullptr)), L""},
               {CString(static_cast<const wchar_t*>(nullptr)), L""}, {L'<' + CString(L"Sys") + L'>', L"<Sys>"}});
}
