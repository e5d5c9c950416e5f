// RegistryTest.cpp - CKey and the string helpers against real keys of a
// sandbox under HKEY_CURRENT_USER.
#include "support/RegistrySandbox.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Utf16Bytes(const std::wstring& text)
{
    return std::string(reinterpret_cast<const char*>(text.c_str()), (text.size() + 1) * sizeof(wchar_t));
}

class RegStrTest : public ::testing::Test
{
protected:
    qmtest::RegistrySandbox reg;
};

TEST_F(RegStrTest, SetCreatesMissingKeysAndWritesNulTerminatedString)
{
    EXPECT_TRUE(QM::SetRegStr(reg.Root(), reg.Sub(L"A\\B\\C"), L"WorkDir", L"D:\\塔维\\"));
    std::string bytes;
    DWORD type = 0;
    ASSERT_TRUE(reg.ReadRaw(L"A\\B\\C", L"WorkDir", bytes, &type));
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(bytes, Utf16Bytes(L"D:\\塔维\\"));
}

TEST_F(RegStrTest, SetWithNullValueCreatesKeyButWritesNothing)
{
    EXPECT_FALSE(QM::SetRegStr(reg.Root(), reg.Sub(L"New"), L"Name", nullptr));
    EXPECT_TRUE(reg.KeyExists(L"New"));
    std::string bytes;
    EXPECT_FALSE(reg.ReadRaw(L"New", L"Name", bytes));
}

TEST_F(RegStrTest, SetReplacesAnExistingValue)
{
    ASSERT_TRUE(reg.WriteString(L"", L"Name", L"old"));
    EXPECT_TRUE(QM::SetRegStr(reg.Root(), reg.Path(), L"Name", L""));
    std::string bytes;
    ASSERT_TRUE(reg.ReadRaw(L"", L"Name", bytes));
    EXPECT_EQ(bytes, Utf16Bytes(L""));
}

TEST_F(RegStrTest, GetReadsValueWrittenBySet)
{
    ASSERT_TRUE(QM::SetRegStr(reg.Root(), reg.Path(), L"Path", L"C:\\QM\\"));
    CString value = L"stale";
    EXPECT_TRUE(QM::GetRegStr(reg.Root(), reg.Path(), L"Path", value));
    EXPECT_EQ(value, CString(L"C:\\QM\\"));
}

TEST_F(RegStrTest, GetAccepts2047CharactersAndRefusesLongerLeavingOutputAlone)
{
    ASSERT_TRUE(reg.WriteString(L"", L"Fits", std::wstring(2047, L'x')));
    ASSERT_TRUE(reg.WriteString(L"", L"Just", std::wstring(2048, L'y')));
    ASSERT_TRUE(reg.WriteString(L"", L"Long", std::wstring(3000, L'z')));
    CString value = L"before";
    EXPECT_TRUE(QM::GetRegStr(reg.Root(), reg.Path(), L"Fits", value));
    EXPECT_EQ(value, CString(L'x', 2047));
    value = L"before";
    EXPECT_FALSE(QM::GetRegStr(reg.Root(), reg.Path(), L"Just", value));
    EXPECT_EQ(value, CString(L"before"));
    EXPECT_FALSE(QM::GetRegStr(reg.Root(), reg.Path(), L"Long", value));
    EXPECT_EQ(value, CString(L"before"));
}

TEST_F(RegStrTest, GetFailsForMissingKeyOrValueLeavingOutputAlone)
{
    CString value = L"before";
    EXPECT_FALSE(QM::GetRegStr(reg.Root(), reg.Sub(L"Missing"), L"Name", value));
    EXPECT_FALSE(QM::GetRegStr(reg.Root(), reg.Path(), L"Missing", value));
    EXPECT_EQ(value, CString(L"before"));
}

TEST_F(RegStrTest, GetIgnoresTheValueTypeAndCutsAtFirstNul)
{
    const wchar_t multi[] = L"first\0second\0";
    ASSERT_TRUE(reg.WriteRaw(L"", L"Multi", REG_MULTI_SZ, multi, sizeof multi));
    const wchar_t expand[] = L"%TEMP%\\x";
    ASSERT_TRUE(reg.WriteRaw(L"", L"Expand", REG_EXPAND_SZ, expand, sizeof expand));
    CString value;
    EXPECT_TRUE(QM::GetRegStr(reg.Root(), reg.Path(), L"Multi", value));
    EXPECT_EQ(value, CString(L"first"));
    EXPECT_TRUE(QM::GetRegStr(reg.Root(), reg.Path(), L"Expand", value));
    EXPECT_EQ(value, CString(L"%TEMP%\\x"));   // not expanded
}

TEST_F(RegStrTest, GetReadsAStringStoredWithoutItsNul)
{
    const wchar_t text[] = {L'a', L'b', L'c'};
    ASSERT_TRUE(reg.WriteRaw(L"", L"Bare", REG_SZ, text, sizeof text));
    CString value;
    EXPECT_TRUE(QM::GetRegStr(reg.Root(), reg.Path(), L"Bare", value));
    EXPECT_EQ(value, CString(L"abc"));
}

class CKeyTest : public ::testing::Test
{
protected:
    qmtest::RegistrySandbox reg;
};

TEST_F(CKeyTest, OpenFailsForMissingKeyAndLeavesHandleNull)
{
    CKey key;
    EXPECT_EQ(key.Open(reg.Root(), reg.Sub(L"Missing")), 0);
    EXPECT_EQ(key.m_hKey, nullptr);
}

TEST_F(CKeyTest, StringValueRoundTripAndEmptyString)
{
    CKey key;
    ASSERT_EQ(key.Create(reg.Root(), reg.Sub(L"K")), 1);
    EXPECT_EQ(key.SetStringValue(L"值", L"Name"), 1);
    EXPECT_EQ(key.SetStringValue(L"", L"Empty"), 1);
    EXPECT_EQ(key.SetStringValue(nullptr, L"Null"), 0);

    CString value = L"junk";
    EXPECT_EQ(key.GetStringValue(value, L"Name"), 1);
    EXPECT_EQ(value, CString(L"值"));
    value = L"junk";
    EXPECT_EQ(key.GetStringValue(value, L"Empty"), 1);
    EXPECT_TRUE(value.IsEmpty());
    value = L"junk";
    EXPECT_EQ(key.GetStringValue(value, L"Null"), 0);
    EXPECT_TRUE(value.IsEmpty());   // emptied even when the read fails
}

TEST_F(CKeyTest, GetStringValueHasNoLengthLimit)
{
    ASSERT_TRUE(reg.WriteString(L"", L"Long", std::wstring(10000, L'q')));
    CKey key;
    ASSERT_EQ(key.Open(reg.Root(), reg.Path()), 1);
    CString value;
    EXPECT_EQ(key.GetStringValue(value, L"Long"), 1);
    EXPECT_EQ(value.GetLength(), 10000);
}

TEST_F(CKeyTest, EnumKeyAndSubKeyCount)
{
    CKey key;
    ASSERT_EQ(key.Create(reg.Root(), reg.Path()), 1);
    CKey newer, older;
    ASSERT_EQ(newer.Create(key.m_hKey, L"R18.2"), 1);
    ASSERT_EQ(older.Create(key.m_hKey, L"R17.0"), 1);

    unsigned long count = 99;
    EXPECT_EQ(key.GetSubKeyCount(count), 1);
    EXPECT_EQ(count, 2u);
    CString first, second, name = L"untouched";
    EXPECT_EQ(key.EnumKey(0, first), 1);
    EXPECT_EQ(key.EnumKey(1, second), 1);
    EXPECT_EQ(key.EnumKey(2, name), 0);
    EXPECT_EQ(name, CString(L"untouched"));
    EXPECT_NE(first, second);
    EXPECT_TRUE(first == L"R18.2" || first == L"R17.0");
    EXPECT_TRUE(second == L"R18.2" || second == L"R17.0");
}

TEST_F(CKeyTest, ClosedKeyFailsEveryOperation)
{
    CKey key;
    CString value = L"x";
    unsigned long count = 7;
    EXPECT_EQ(key.GetStringValue(value, L"a"), 0);
    EXPECT_EQ(key.SetStringValue(L"v", L"a"), 0);
    EXPECT_EQ(key.EnumKey(0, value), 0);
    EXPECT_EQ(key.GetSubKeyCount(count), 0);
    EXPECT_EQ(count, 7u);
    key.Close();   // closing a closed key is harmless
    EXPECT_EQ(key.m_hKey, nullptr);
}

TEST_F(CKeyTest, AssignmentSharesTheHandle)
{
    CKey owner;
    ASSERT_EQ(owner.Create(reg.Root(), reg.Path()), 1);
    ASSERT_EQ(owner.SetStringValue(L"shared", L"Name"), 1);
    {
        CKey borrower;
        borrower = owner;
        EXPECT_EQ(borrower.m_hKey, owner.m_hKey);
        CString value;
        EXPECT_EQ(borrower.GetStringValue(value, L"Name"), 1);
        EXPECT_EQ(value, CString(L"shared"));
        borrower.m_hKey = nullptr;   // hand it back so that only `owner` closes it
    }
    CString value;
    EXPECT_EQ(owner.GetStringValue(value, L"Name"), 1);
}

TEST_F(CKeyTest, OpenWithQueryAccessOnlyCannotWrite)
{
    ASSERT_TRUE(reg.WriteString(L"", L"Name", L"v"));
    CKey key;
    ASSERT_EQ(key.Open(reg.Root(), reg.Path(), KEY_QUERY_VALUE), 1);
    EXPECT_EQ(key.SetStringValue(L"w", L"Name"), 0);
    std::string bytes;
    ASSERT_TRUE(reg.ReadRaw(L"", L"Name", bytes));
    EXPECT_EQ(bytes, Utf16Bytes(L"v"));
}

}  // namespace
