// Arrays and string maps: growth, index faults and iteration.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/Throws.h"

#include <set>

using qmtest::ThrowsInvalidArg;

TEST(CStringArrayTest, InsertingPastTheEndOrFromItselfGrowsTheArray)
{
    CStringArray a;
    EXPECT_EQ(a.Add(L"b"), 0);
    a.InsertAt(0, L"a");
    a.InsertAt(4, L"g");  // past the end: grows with empty texts
    ASSERT_EQ(a.GetSize(), 5);
    EXPECT_TRUE(a[2].IsEmpty());
    a.RemoveAt(2, 2);
    EXPECT_EQ(a.GetAt(2), CString(L"g"));
    a.InsertAt(1, a[0], 2);  // an element of the array itself
    EXPECT_EQ(a[2], CString(L"a"));
    EXPECT_EQ(a.Append(a), 5);
    a.SetAtGrow(20, L"5");
    EXPECT_EQ(a.GetSize(), 21);
}

TEST(CStringArrayTest, IndexFaultsThrowInvalidArgumentAndChangeNothing)
{
    CStringArray a;
    a.Add(L"x");
    EXPECT_TRUE(ThrowsInvalidArg([&] { a.GetAt(1); }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { a[-1]; }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { a.SetAt(1, L"y"); }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { a.ElementAt(5); }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { a.RemoveAt(0, 2); }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { a.InsertAt(-1, L"z"); }));
    EXPECT_EQ(a.GetSize(), 1);
}

TEST(CMapStringToStringTest, KeysAreCaseSensitiveAndAFailedLookupLeavesTheValue)
{
    CMapStringToString map;
    CString value = L"kept";
    EXPECT_FALSE(map.Lookup(L"KEY", value));
    EXPECT_EQ(value, CString(L"kept"));
    map[L"KEY"] = L"v1";
    map.SetAt(L"KEY", L"v2");
    map.SetAt(L"key", L"lower");
    EXPECT_EQ(map.GetCount(), 2);
    ASSERT_TRUE(map.Lookup(L"KEY", value));
    EXPECT_EQ(value, CString(L"v2"));
    EXPECT_TRUE(map.RemoveKey(L"KEY"));
    EXPECT_FALSE(map.RemoveKey(L"KEY"));
    EXPECT_EQ(map.GetCount(), 1);
}

TEST(CMapStringToStringTest, IterationVisitsEveryPairOnceAcrossRehashes)
{
    CMapStringToString map;
    for (int i = 0; i < 500; ++i) {
        CString key;
        key.Format(L"K%d", i);
        map[key] = key + L"=";
        if (i == 250)
            map.InitHashTable(1021);
    }
    std::set<std::wstring> seen;
    for (POSITION pos = map.GetStartPosition(); pos != nullptr;) {
        CString key, value;
        map.GetNextAssoc(pos, key, value);
        EXPECT_EQ(value, key + L"=");
        seen.insert(key.GetString());
    }
    EXPECT_EQ(seen.size(), 500u);
    map.RemoveAll();
    EXPECT_EQ(map.GetStartPosition(), nullptr);
}
