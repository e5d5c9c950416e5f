// RegistryTest.cpp - CKey and the string helpers against a test key under HKEY_CURRENT_USER.
#include "support/RegGuard.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// The bytes of a REG_SZ holding `text`, its NUL included.
std::string Utf16(const std::wstring& s) { return std::string(reinterpret_cast<const char*>(s.c_str()), (s.size() + 1) * 2); }

// Values are prepared and checked with the registry's own calls, never the code under test.
class RegStrTest : public ::testing::Test
{
protected:
    CString Sub(const wchar_t* relative) const { return *relative ? CString(kPath) + L"\\" + relative : CString(kPath); }
    bool Write(const wchar_t* relative, const wchar_t* name, DWORD type, const void* data, DWORD bytes) const
    {
        return RegSetKeyValueW(HKEY_CURRENT_USER, Sub(relative), name, type, data, bytes) == ERROR_SUCCESS;
    }
    void Write(const wchar_t* relative, const wchar_t* name, const CString& text) const
    {
        qmtest::SetRegValue(HKEY_CURRENT_USER, Sub(relative), name, text);
    }
    // The value's bytes as stored, or "<missing>" (an odd length, so never UTF-16 data).
    std::string Read(const wchar_t* relative, const wchar_t* name, DWORD* type = nullptr) const
    {
        std::string bytes(65536, '\0');
        DWORD size = static_cast<DWORD>(bytes.size());
        const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, Sub(relative), name,
                                            RRF_RT_ANY | RRF_NOEXPAND, type, &bytes[0], &size);
        return status == ERROR_SUCCESS ? bytes.substr(0, size) : "<missing>";
    }

    static constexpr const wchar_t* kPath = L"Software\\QMUtilTests\\Registry";
    const HKEY root = HKEY_CURRENT_USER;
    qmtest::RegGuard guard{HKEY_CURRENT_USER, kPath};
};

TEST_F(RegStrTest, SetWritesANulTerminatedStringGetTakes2047CharactersOfAnyType)
{
    EXPECT_TRUE(QM::SetRegStr(root, Sub(L"A\\B\\C"), L"WorkDir", L"D:\\塔维\\"));
    DWORD type = 0;
    EXPECT_EQ(Read(L"A\\B\\C", L"WorkDir", &type), Utf16(L"D:\\塔维\\"));
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_TRUE(QM::SetRegStr(root, Sub(L"A\\B\\C"), L"WorkDir", L""));
    EXPECT_EQ(Read(L"A\\B\\C", L"WorkDir"), Utf16(L""));
    EXPECT_FALSE(QM::SetRegStr(root, Sub(L"New"), L"Name", nullptr));   // the key is made, nothing written
    EXPECT_EQ(Read(L"New", L"Name"), "<missing>");
    // Up to 2047 characters of any type are read to the first NUL, never expanded; longer or missing
    // values fail and leave the output alone.
    const CString fits(L'x', 2047), tooLong(L'y', 2048);
    const struct { DWORD type; const wchar_t* data; DWORD chars; bool ok; const wchar_t* expected; } rows[] = {
        {REG_SZ, fits, 2048, true, fits}, {REG_SZ, tooLong, 2049, false, L"before"},
        {REG_MULTI_SZ, L"first\0second\0", 14, true, L"first"}, {REG_EXPAND_SZ, L"%TEMP%\\x", 9, true, L"%TEMP%\\x"},
        {REG_SZ, L"abc", 3, true, L"abc"},   // stored without its NUL
        {REG_SZ, nullptr, 0, false, L"before"}};
    for (const auto& row : rows) {
        RegDeleteKeyValueW(root, kPath, L"V");
        ASSERT_TRUE(row.data == nullptr || Write(L"", L"V", row.type, row.data, row.chars * sizeof(wchar_t)));
        CString value = L"before";
        EXPECT_EQ(QM::GetRegStr(root, Sub(L""), L"V", value), row.ok) << row.chars;
        EXPECT_EQ(value, CString(row.expected)) << row.chars;
    }
    CString value = L"before";
    EXPECT_FALSE(QM::GetRegStr(root, Sub(L"Missing"), L"V", value));
    EXPECT_EQ(value, CString(L"before"));
}

using CKeyTest = RegStrTest;

TEST_F(CKeyTest, WithoutAnOpenKeyEverythingFailsStringValuesHaveNoLengthLimit)
{
    CKey key;
    EXPECT_EQ(key.Open(root, Sub(L"Missing")), 0);
    CString name = L"x";
    unsigned long count = 7;
    EXPECT_EQ(key.SetStringValue(L"v", L"a"), 0);
    EXPECT_EQ(key.EnumKey(0, name), 0);
    EXPECT_EQ(key.GetSubKeyCount(count), 0);
    EXPECT_EQ(name, CString(L"x"));
    EXPECT_EQ(count, 7u);
    // String values have no length limit, and a failed read still empties the output.
    Write(L"K", L"Long", CString(L'q', 10000));
    ASSERT_EQ(key.Create(root, Sub(L"K")), 1);
    EXPECT_EQ(key.SetStringValue(L"值", L"Name"), 1);
    EXPECT_EQ(key.SetStringValue(L"", L"Empty"), 1);
    EXPECT_EQ(key.SetStringValue(nullptr, L"Null"), 0);
    const struct { const wchar_t* name; int result; CString expected; } rows[] = {
        {L"Name", 1, L"值"}, {L"Empty", 1, L""}, {L"Long", 1, CString(L'q', 10000)}, {L"Null", 0, L""}};
    for (const auto& row : rows) {
        CString value = L"junk";
        EXPECT_EQ(key.GetStringValue(value, row.name), row.result) << row.name;
        EXPECT_EQ(value, row.expected) << row.name;
    }
}

TEST_F(CKeyTest, EnumKeyAndSubKeyCountSeeDirectSubKeysOnlyAndAssignmentSharesTheHandle)
{
    Write(L"R18.2", L"", L"");
    Write(L"R17.0\\zh-CN", L"", L"");
    CKey key;
    ASSERT_EQ(key.Open(root, Sub(L"")), 1);
    unsigned long count = 99;
    EXPECT_EQ(key.GetSubKeyCount(count), 1);
    EXPECT_EQ(count, 2u);
    CString first, second, name = L"untouched";
    EXPECT_EQ(key.EnumKey(0, first), 1);
    EXPECT_EQ(key.EnumKey(1, second), 1);
    EXPECT_EQ(key.EnumKey(2, name), 0);
    EXPECT_EQ(name, CString(L"untouched"));
    EXPECT_TRUE((first == L"R18.2" && second == L"R17.0") || (first == L"R17.0" && second == L"R18.2"));
    CKey borrower;
    borrower = key;   // shares the handle rather than duplicating it
    EXPECT_EQ(borrower.m_hKey, key.m_hKey);
    borrower.m_hKey = nullptr;   // only `key` may close it
}

}  // namespace
