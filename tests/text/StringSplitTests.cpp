// Field, word and list-element splitting, with each function's own rules.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/Throws.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

std::vector<CString> ToVector(const CStringArray& a)
{
    return std::vector<CString>(a.GetData(), a.GetData() + a.GetSize());
}

std::vector<CString> Split(const wchar_t* text, wchar_t delim, bool quotes)
{
    CStringArray out;
    QM::SeparateString(text, delim, out, quotes);
    return ToVector(out);
}

using Fields = std::vector<CString>;

}  // namespace

TEST(SeparateString, RunsOfDelimitersNeverMakeEmptyFields)
{
    EXPECT_EQ(Split(L",,a,,b,,", L',', false), (Fields{L"a", L"b"}));
    EXPECT_EQ(Split(L"  a  b ", L' ', false), (Fields{L"a", L"b"}));
    EXPECT_EQ(Split(L",,,", L',', false), Fields{});
}

TEST(SeparateString, BlanksInsideFieldsAreKept)
{
    EXPECT_EQ(Split(L" a , b ", L',', false), (Fields{L" a ", L" b "}));
}

TEST(SeparateString, AppendsWithoutClearingAndReturnsTheNewSize)
{
    CStringArray out;
    out.Add(L"old");
    EXPECT_EQ(QM::SeparateString(L"x,y", L',', out, false), 3);
    EXPECT_EQ(ToVector(out), (Fields{L"old", L"x", L"y"}));
    EXPECT_EQ(QM::SeparateString(L",,", L',', out, false), 3);
}

TEST(SeparateString, QuotedFieldHoldsDelimitersAndLosesItsQuotes)
{
    EXPECT_EQ(Split(L"\"a,b\",c", L',', true), (Fields{L"a,b", L"c"}));
    EXPECT_EQ(Split(L"\"a,b\",c", L',', false), (Fields{L"\"a", L"b\"", L"c"}));
}

TEST(SeparateString, UnescapedQuoteInsideAFieldStartsTheNextField)
{
    EXPECT_EQ(Split(L"ab\"c d\" e", L' ', true), (Fields{L"ab", L"c d", L"e"}));
}

TEST(SeparateString, EscapedQuotesAreOrdinaryAndBackslashesStay)
{
    EXPECT_EQ(Split(L"\"say \\\"hi\\\"\",x", L',', true), (Fields{L"say \\\"hi\\\"", L"x"}));
    EXPECT_EQ(Split(L"a\\\"b,c", L',', true), (Fields{L"a\\\"b", L"c"}));
}

TEST(SeparateString, UnclosedQuoteEndsAtTheEndOfTheText)
{
    EXPECT_EQ(Split(L"x,\"open, never closed", L',', true), (Fields{L"x", L"open, never closed"}));
}

TEST(SeparateString, ParenthesisDelimiterReturnsZeroAndLeavesOutputAlone)
{
    CStringArray out;
    out.Add(L"kept");
    EXPECT_EQ(QM::SeparateString(L"(a b)", L'(', out, false), 0);
    EXPECT_EQ(QM::SeparateString(L"(a b)", L')', out, false), 0);
    EXPECT_EQ(ToVector(out), Fields{L"kept"});
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

TEST(SeparateStringIndex, PicksOneFieldOrNothing)
{
    EXPECT_EQ(QM::SeparateString(L"a,b,c", L',', 1, false), CString(L"b"));
    EXPECT_EQ(QM::SeparateString(L"a,b,c", L',', 5, false), CString());
    EXPECT_EQ(QM::SeparateString(L"", L',', 0, false), CString());
    EXPECT_EQ(QM::SeparateString(L"", L',', -1, false), CString());
}

TEST(SeparateStringIndex, NegativeIndexOnFieldsThrowsInvalidArgument)
{
    EXPECT_TRUE(qmtest::ThrowsInvalidArg([] { QM::SeparateString(L"a,b", L',', -1, false); }));
}

TEST(DisCommaString, ClearsDropsEmptyFieldsAndKeepsBlanks)
{
    CStringArray out;
    out.Add(L"stale");
    EXPECT_EQ(QMOLD::DisCommaString(L"a,,b", out, false), 2);
    EXPECT_EQ(ToVector(out), (Fields{L"a", L"b"}));
    EXPECT_EQ(QMOLD::DisCommaString(L" a ,", out, false), 1);
    EXPECT_EQ(out[0], CString(L" a "));
}

TEST(DisCommaString, StripQuotesRemovesEveryOuterQuote)
{
    CStringArray out;
    EXPECT_EQ(QMOLD::DisCommaString(L"\"x\",\"\"\"y\",\"\"", out, true), 2);
    EXPECT_EQ(ToVector(out), (Fields{L"x", L"y"}));
    EXPECT_EQ(QMOLD::DisCommaString(L"\"x\"", out, false), 1);
    EXPECT_EQ(out[0], CString(L"\"x\""));
}

TEST(GetNumOfStr, FirstFieldNeedsAComma)
{
    EXPECT_EQ(QMOLD::getnumofStr(L"abc", 1), CString());
    EXPECT_EQ(QMOLD::getnumofStr(L" a , b ", 1), CString(L"a"));
}

TEST(GetNumOfStr, LaterFieldsAndNumbersPastTheEnd)
{
    EXPECT_EQ(QMOLD::getnumofStr(L"abc", 2), CString(L"abc"));
    EXPECT_EQ(QMOLD::getnumofStr(L"a,b,c", 2), CString(L"b"));
    EXPECT_EQ(QMOLD::getnumofStr(L"a,b,c", 7), CString(L"c"));
    EXPECT_EQ(QMOLD::getnumofStr(L"a, \"b\" ,c", 2), CString(L"b"));
}

TEST(GetNumOfStr, EmptyTextAndNonPositiveNumbers)
{
    EXPECT_EQ(QMOLD::getnumofStr(L"", 1), CString());
    EXPECT_EQ(QMOLD::getnumofStr(L"a,b", 0), CString());
    EXPECT_EQ(QMOLD::getnumofStr(L"a,b", -3), CString());
}

TEST(DisSpaceString, TabSplitsOnlyWhenNoBlankIsLeft)
{
    CStringArray out;
    EXPECT_EQ(QMOLD::DisSpaceString(L"a\tb c", out), 2);
    EXPECT_EQ(ToVector(out), (Fields{L"a\tb", L"c"}));
    out.RemoveAll();
    EXPECT_EQ(QMOLD::DisSpaceString(L"x\ty", out), 2);
    EXPECT_EQ(ToVector(out), (Fields{L"x", L"y"}));
}

TEST(DisSpaceString, AppendsAndReturnsZeroForBlankText)
{
    CStringArray out;
    out.Add(L"old");
    EXPECT_EQ(QMOLD::DisSpaceString(L"  p   q  ", out), 3);
    EXPECT_EQ(ToVector(out), (Fields{L"old", L"p", L"q"}));
    EXPECT_EQ(QMOLD::DisSpaceString(L"   ", out), 0);
    EXPECT_EQ(out.GetSize(), 3);
}

TEST(GetWordFromStr, BlankWords)
{
    EXPECT_EQ(QM::GetWordFromStr(L"x  y", 1, L' '), CString(L"y"));
    EXPECT_EQ(QM::GetWordFromStr(L"x  y", 0, L' '), CString(L"x"));
    EXPECT_EQ(QM::GetWordFromStr(L"x  y", 2, L' '), CString());
    EXPECT_EQ(QM::GetWordFromStr(L"a \"b\" c", 1, L' '), CString(L"b"));
}

TEST(GetWordFromStr, ListWordsCountOnlyAtDepthZero)
{
    EXPECT_EQ(QM::GetWordFromStr(L"(a (b c) d)", 1, L'('), CString(L"(b c)"));
    EXPECT_EQ(QM::GetWordFromStr(L"  (a (b c) d)  ", 2, L'('), CString(L"d"));
    EXPECT_EQ(QM::GetWordFromStr(L"(a (b (c e)) d)", 1, L'('), CString(L"(b (c e))"));
    EXPECT_EQ(QM::GetWordFromStr(L"(a b)", 3, L'('), CString());
}

TEST(GetWordFromStr, OtherDelimitersCountEmptyFields)
{
    EXPECT_EQ(QM::GetWordFromStr(L"a,,b", 1, L','), CString());
    EXPECT_EQ(QM::GetWordFromStr(L"a,,b", 2, L','), CString(L"b"));
    EXPECT_EQ(QM::GetWordFromStr(L"a,,b", 3, L','), CString());
    EXPECT_EQ(QM::GetWordFromStr(L"a; \"q r\" ;b", 1, L';'), CString(L"q r"));
}

TEST(Nth, ReadsNumbersStringsListsAndNil)
{
    const wchar_t* list = L"(1 \"a b\" (2 3) nil)";
    EXPECT_EQ(QM::Nth(list, 0, false), CString(L"1"));
    EXPECT_EQ(QM::Nth(list, 1, false), CString(L"\"a b\""));
    EXPECT_EQ(QM::Nth(list, 1, true), CString(L"a b"));
    EXPECT_EQ(QM::Nth(list, 2, false), CString(L"(2 3)"));
    EXPECT_EQ(QM::Nth(list, 3, false), CString(L"Nil"));
    EXPECT_EQ(QM::Nth(list, 4, false), CString());
    EXPECT_EQ(QM::Nth(list, -1, false), CString());
}

TEST(Nth, NumbersAreNormalised)
{
    EXPECT_EQ(QM::Nth(L"(.5)", 0, false), CString(L"0.5"));
    EXPECT_EQ(QM::Nth(L"(-.5 +3 1.2.3)", 0, false), CString(L"-0.5"));
    EXPECT_EQ(QM::Nth(L"(-.5 +3 1-2)", 1, false), CString(L"3"));
    EXPECT_EQ(QM::Nth(L"(+.25)", 0, false), CString(L"0.25"));
}

TEST(Nth, CommasBetweenElementsAreSkipped)
{
    EXPECT_EQ(QM::Nth(L"(1 , 2,3)", 2, false), CString(L"3"));
    EXPECT_EQ(QM::Nth(L"1 2 3", 1, false), CString(L"2"));
}

TEST(Nth, EscapedQuotesInsideStringsAndLists)
{
    EXPECT_EQ(QM::Nth(L"(\"a\\\"b\" x)", 0, false), CString(L"\"a\"b\""));
    EXPECT_EQ(QM::Nth(L"((\"p)\" 1) 2)", 0, false), CString(L"(\"p)\" 1)"));
    EXPECT_EQ(QM::Nth(L"((\"p)\" 1) 2)", 1, false), CString(L"2"));
}

TEST(Nth, NilIsAlwaysWrittenTheSameWay)
{
    EXPECT_EQ(QM::Nth(L"(NIL 1)", 0, false), CString(L"Nil"));
    EXPECT_EQ(QM::Nth(L"(NIL 1)", 1, false), CString(L"1"));
    EXPECT_EQ(QM::Nth(L"(nope)", 0, false), CString());
}

TEST(Nth, SymbolsReadAsEmptyStringsAndStopTheReading)
{
    EXPECT_EQ(QM::Nth(L"(1 abc 2)", 1, false), CString(L"\"\""));
    EXPECT_EQ(QM::Nth(L"(1 abc 2)", 2, false), CString(L"\"\""));
    EXPECT_EQ(QM::Nth(L"(1 abc 2)", 1, true), CString());
}

TEST(Nth, UnclosedElementsAreEmpty)
{
    EXPECT_EQ(QM::Nth(L"(\"open 1)", 0, false), CString());
    EXPECT_EQ(QM::Nth(L"((1 2 3)", 0, false), CString());
}

TEST(DoubleNulLists, SplitAndBuildRoundTrip)
{
    const wchar_t list[] = L"alpha\0beta\0\0";
    CStringArray items;
    EXPECT_EQ(QM::Get00Strings(list, items), 2);
    EXPECT_EQ(ToVector(items), (Fields{L"alpha", L"beta"}));

    auto* built = static_cast<wchar_t*>(QM::Get00Buffer(items, nullptr, 0));
    EXPECT_EQ(0, std::memcmp(built, list, sizeof list - sizeof(wchar_t)));
    CStringArray again;
    EXPECT_EQ(QM::Get00Strings(built, again), 2);
    delete[] built;
}

TEST(DoubleNulLists, EmptyListsAndTheClearedOutput)
{
    CStringArray items;
    items.Add(L"stale");
    EXPECT_EQ(QM::Get00Strings(L"\0\0", items), 0);
    EXPECT_EQ(items.GetSize(), 0);
    EXPECT_EQ(QM::Get00Strings(nullptr, items), 0);

    auto* built = static_cast<wchar_t*>(QM::Get00Buffer(items, nullptr, 0));
    EXPECT_EQ(built[0], L'\0');
    delete[] built;
}

TEST(DoubleNulLists, CallerBufferIsZeroedFirstAndNeverOverrun)
{
    CStringArray items;
    items.Add(L"ab");
    items.Add(L"c");
    wchar_t buffer[16];
    std::fill(buffer, buffer + 16, L'#');
    EXPECT_EQ(QM::Get00Buffer(items, buffer, sizeof buffer), buffer);
    const wchar_t expected[] = {L'a', L'b', 0, L'c', 0, 0, 0, 0};
    EXPECT_EQ(0, std::memcmp(buffer, expected, sizeof expected));

    std::fill(buffer, buffer + 16, L'#');
    EXPECT_EQ(QM::Get00Buffer(items, buffer, 4 * sizeof(wchar_t)), nullptr);
    EXPECT_EQ(buffer[3], L'\0');
    EXPECT_EQ(buffer[4], L'#');
}
