// Field, word and list-element splitting, with each function's own rules.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/Throws.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <vector>

namespace {

using Fields = std::vector<CString>;

Fields ToVector(const CStringArray& a)
{
    return Fields(a.GetData(), a.GetData() + a.GetSize());
}

CStringArray Holding(const wchar_t* item)
{
    CStringArray out;
    out.Add(item);
    return out;
}

}  // namespace

TEST(SeparateString, DropsEmptyFieldsKeepsBlanksAndHonoursQuotesOnlyWhenAsked)
{
    const struct { const wchar_t* text; wchar_t delim; bool quotes; Fields expected; } rows[] = {
        {L",,a,,b,,", L',', false, {L"a", L"b"}}, {L"  a  b ", L' ', false, {L"a", L"b"}}, {L",,,", L',', false, {}},
        {L" a , b ", L',', false, {L" a ", L" b "}}, {L"\"a,b\",c", L',', true, {L"a,b", L"c"}},
        {L"\"a,b\",c", L',', false, {L"\"a", L"b\"", L"c"}},
        {L"ab\"c d\" e", L' ', true, {L"ab", L"c d", L"e"}},   // a quote inside a field starts the next
        {L"\"say \\\"hi\\\"\",x", L',', true, {L"say \\\"hi\\\"", L"x"}},   // escaped quotes stay, backslashes too
        {L"a\\\"b,c\"d,e", L',', true, {L"a\\\"b,c", L"d,e"}},   // after an escaped quote a delimiter does not end it
        {L"x,\"open, never closed", L',', true, {L"x", L"open, never closed"}},
    };
    for (const auto& row : rows) {
        CStringArray out;
        QM::SeparateString(row.text, row.delim, out, row.quotes);
        EXPECT_EQ(ToVector(out), row.expected) << row.text;
    }
}

TEST(SeparateString, AppendsWithoutClearingAndReturnsTheNewSizeButZeroForAParenthesis)
{
    CStringArray out = Holding(L"old");
    EXPECT_EQ(QM::SeparateString(L"x,y", L',', out, false), 3);
    EXPECT_EQ(QM::SeparateString(L",,", L',', out, false), 3);
    EXPECT_EQ(QM::SeparateString(L"(a b)", L'(', out, false), 0);
    EXPECT_EQ(QM::SeparateString(L"(a b)", L')', out, false), 0);
    EXPECT_EQ(ToVector(out), (Fields{L"old", L"x", L"y"}));
}

TEST(SeparateString, TextsLongerThanTheOldWorkBufferSplitWhole)
{
    CString text;
    for (int i = 0; i < 3000; ++i)
        text.AppendFormat(L"f%d,", i);
    ASSERT_GT(text.GetLength(), 4096 * 3);
    CStringArray out;
    EXPECT_EQ(QM::SeparateString(text, L',', out, false), 3000);
    EXPECT_EQ(out[2999], CString(L"f2999"));
}

TEST(SeparateString, TheIndexFormPicksOneFieldOrNothingAndThrowsForANegativeIndex)
{
    EXPECT_EQ(QM::SeparateString(L"a,b,c", L',', 1, false), CString(L"b"));
    EXPECT_EQ(QM::SeparateString(L"a,b,c", L',', 5, false), CString());
    EXPECT_EQ(QM::SeparateString(L"", L',', 0, false), CString());
    EXPECT_EQ(QM::SeparateString(L"", L',', -1, false), CString());
    EXPECT_TRUE(qmtest::ThrowsInvalidArg([] { QM::SeparateString(L"a,b", L',', -1, false); }));
}

TEST(OldSplitters, DisCommaStringClearsDropsEmptyFieldsAndCanStripEveryOuterQuote)
{
    const struct { const wchar_t* text; bool strip; Fields expected; } rows[] = {
        {L"a,,b", false, {L"a", L"b"}}, {L" a ,", false, {L" a "}},
        {L"\"x\",\"\"\"y\",\"\"", true, {L"x", L"y"}}, {L"\"x\"", false, {L"\"x\""}},
    };
    for (const auto& row : rows) {
        CStringArray out = Holding(L"stale");
        EXPECT_EQ(QMOLD::DisCommaString(row.text, out, row.strip), static_cast<int>(row.expected.size())) << row.text;
        EXPECT_EQ(ToVector(out), row.expected) << row.text;
    }
}

TEST(OldSplitters, GetNumOfStrNeedsACommaForTheFirstFieldAndGivesTheLastPastTheEnd)
{
    const struct { const wchar_t* text; int n; const wchar_t* expected; } rows[] = {
        {L"abc", 1, L""},   {L" a , b ", 1, L"a"},      {L"abc", 2, L"abc"}, {L"a,b,c", 2, L"b"},
        {L"a,b,c", 7, L"c"}, {L"a, \"b\" ,c", 2, L"b"}, {L"", 1, L""},       {L"a,b", 0, L""},
        {L"a,b", -3, L""},  {L"a,b,c", INT_MAX, L"c"}};
    for (const auto& row : rows)
        EXPECT_EQ(QMOLD::getnumofStr(row.text, row.n), CString(row.expected)) << row.text << " #" << row.n;
}

TEST(OldSplitters, DisSpaceStringAppendsAndSplitsAtTabsOnlyWhenNoBlankIsLeft)
{
    const struct { const wchar_t* text; int result; Fields expected; } rows[] = {
        {L"a\tb c", 3, {L"old", L"a\tb", L"c"}}, {L"x\ty", 3, {L"old", L"x", L"y"}},
        {L"  p   q  ", 3, {L"old", L"p", L"q"}}, {L"   ", 0, {L"old"}}};
    for (const auto& row : rows) {
        CStringArray out = Holding(L"old");
        EXPECT_EQ(QMOLD::DisSpaceString(row.text, out), row.result) << row.text;
        EXPECT_EQ(ToVector(out), row.expected) << row.text;
    }
}

TEST(GetWordFromStr, BlanksSkipRunsListsCountDepthZeroAndOtherDelimitersCountEmptyFields)
{
    const struct { const wchar_t* text; int n; wchar_t delim; const wchar_t* expected; } rows[] = {
        {L"x  y", 0, L' ', L"x"}, {L"x  y", 1, L' ', L"y"}, {L"x  y", 2, L' ', L""}, {L"a \"b\" c", 1, L' ', L"b"},
        {L"(a (b c) d)", 1, L'(', L"(b c)"}, {L"  (a (b c) d)  ", 2, L'(', L"d"},
        {L"(a (b (c e)) d)", 1, L'(', L"(b (c e))"}, {L"(a b)", 3, L'(', L""}, {L"a,,b", 1, L',', L""},
        {L"a,,b", 2, L',', L"b"}, {L"a,,b", 3, L',', L""}, {L"a; \"q r\" ;b", 1, L';', L"q r"}};
    for (const auto& row : rows)
        EXPECT_EQ(QM::GetWordFromStr(row.text, row.n, row.delim), CString(row.expected)) << row.text << " #" << row.n;
}

TEST(Nth, ReadsNumbersStringsListsAndNilAndStopsAtASymbol)
{
    const wchar_t* list = L"(1 \"a b\" (2 3) nil)";
    const struct { const wchar_t* list; int n; bool strip; const wchar_t* expected; } rows[] = {
        {list, 0, false, L"1"},  {list, 1, false, L"\"a b\""},  {list, 1, true, L"a b"},  {list, 2, false, L"(2 3)"},
        {list, 3, false, L"Nil"},  {list, 4, false, L""},  {list, -1, false, L""},
        {L"(NIL 1)", 0, false, L"Nil"},  {L"(NIL 1)", 1, false, L"1"},  {L"(nope)", 0, false, L""},
        // Numbers are normalised; commas between elements are skipped.
        {L"(.5)", 0, false, L"0.5"},  {L"(-.5 +3 1.2.3)", 0, false, L"-0.5"},  {L"(-.5 +3 1-2)", 1, false, L"3"},
        {L"(+.25)", 0, false, L"0.25"},  {L"(1 , 2,3)", 2, false, L"3"},  {L"1 2 3", 1, false, L"2"},
        {L"(\"a\\\"b\" x)", 0, false, L"\"a\"b\""},
        {L"((\"p)\" 1) 2)", 0, false, L"(\"p)\" 1)"},  {L"((\"p)\" 1) 2)", 1, false, L"2"},
        // A symbol reads as an empty string, and nothing after it is read.
        {L"(1 abc 2)", 1, false, L"\"\""},  {L"(1 abc 2)", 2, false, L"\"\""},  {L"(1 abc 2)", 1, true, L""},
        {L"(\"open 1)", 0, false, L""},  {L"((1 2 3)", 0, false, L""},
        // Reading stops once the answer can no longer change.
        {L"(1 2)", INT_MAX, false, L""},  {L"(1 abc)", INT_MAX, false, L"\"\""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(QM::Nth(row.list, row.n, row.strip), CString(row.expected)) << row.list << " #" << row.n;
}

TEST(DoubleNulLists, SplitAndBuildRoundTripAndEmptyListsClearTheOutput)
{
    const wchar_t list[] = L"alpha\0beta\0\0";
    CStringArray items = Holding(L"stale");
    EXPECT_EQ(QM::Get00Strings(list, items), 2);
    EXPECT_EQ(ToVector(items), (Fields{L"alpha", L"beta"}));
    std::unique_ptr<wchar_t[]> built(static_cast<wchar_t*>(QM::Get00Buffer(items, nullptr, 0)));
    EXPECT_EQ(0, std::memcmp(built.get(), list, sizeof list - sizeof(wchar_t)));
    EXPECT_EQ(QM::Get00Strings(L"\0\0", items), 0);
    EXPECT_EQ(items.GetSize(), 0);
    EXPECT_EQ(QM::Get00Strings(nullptr, items), 0);
    built.reset(static_cast<wchar_t*>(QM::Get00Buffer(items, nullptr, 0)));
    EXPECT_EQ(built[0], L'\0');
}

// `size` says how much to clear; the list is copied whatever it says.
TEST(DoubleNulLists, ACallerBufferIsZeroedOverSizeBytesThenFilled)
{
    CStringArray items = Holding(L"ab");
    items.Add(L"c");
    for (int size : {32, 2}) {
        wchar_t buffer[16];
        std::fill(buffer, buffer + 16, L'#');
        EXPECT_EQ(QM::Get00Buffer(items, buffer, size), buffer);
        const wchar_t expected[] = {L'a', L'b', 0, L'c', 0, 0};
        EXPECT_EQ(0, std::memcmp(buffer, expected, sizeof expected));
        EXPECT_EQ(buffer[6], size == 2 ? L'#' : L'\0');
    }
}
