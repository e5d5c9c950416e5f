// INISettingTest.cpp - the settings cache: what it answers, when it re-reads, what reaches the file.
#include "TestText.h"
#include "support/MsgBoxWatcher.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using qmtest::Ansi;
using qmtest::Profile;

class INISettingTest : public ::testing::Test
{
protected:
    CString Write(const wchar_t* name, const std::wstring& text) { return dir.WriteFile(name, Ansi(text.c_str())); }

    qmtest::TempDir dir;
};

TEST_F(INISettingTest, LookUpsIgnoreCaseAnswerAsTheProfileReaderAndFallBackToTheDefault)
{
    // Names of 64 characters and more are upper-cased apart from the short ones.
    const std::wstring longSection(70, L's'), longKey = std::wstring(63, L'k') + L"tail";
    const CString path = Write(L"a.ini", L"[Precision]\r\nZERO=0.001\r\nEmpty=\r\n[图层]\r\n颜色=红色\r\n[" + longSection +
                               L"]\r\n" + longKey + L"=long\r\n[S]\r\nPad =  spaced out  \r\nQuoted=\"q\"\r\nEq=a=b\r\n"
                               L"; Comment=1\r\nDup=first\r\nDup=second\r\n");
    INISetting ini(path);
    CString upperSection(longSection.c_str()), upperKey(longKey.c_str());
    upperSection.MakeUpper();
    const CString cutKey = upperKey.MakeUpper().Left(63);
    const struct { const wchar_t* key; const wchar_t* defaultValue; const wchar_t* section; const wchar_t* expected; }
        rows[] = {{L"zero", L"def", L"precision", L"0.001"}, {L"ZERO", L"def", L"PRECISION", L"0.001"},
                  {L"颜色", L"def", L"图层", L"红色"},       {upperKey, L"def", upperSection, L"long"},
                  {cutKey, L"def", upperSection, L"def"},    {L"Empty", L"def", L"Precision", L""},
                  {L"Other", L"def", L"Precision", L"def"},  {L"ZERO", L"def", L"Other", L"def"},
                  {L"ZERO", nullptr, L"Other", L""},         {nullptr, L"def", nullptr, L"def"}};
    for (const auto& row : rows)
        EXPECT_EQ(ini.GetSetting(row.key, row.defaultValue, row.section), CString(row.expected)) << row.key;
    // Values are what the platform's profile reader returns.
    for (const wchar_t* key : {L"Pad", L"Quoted", L"Eq", L"Dup"})
        EXPECT_EQ(ini.GetSetting(key, L"<absent>", L"S"), Profile(L"S", key, path)) << key;
    EXPECT_EQ(ini.GetSetting(L"; Comment", L"<absent>", L"S"), CString(L"<absent>"));
}

// A section without keys is never stored; a file of only such sections does not bind.
TEST_F(INISettingTest, AllKeysComeUpperCasedAndOnlyABindReadsTheFile)
{
    INISetting ini(Write(L"a.ini", L"[Empty]\r\n[S]\r\nalpha=1\r\nBeta=2\r\n颜色=红\r\n"));
    CStringArray keys, values;
    keys.Add(L"junk");
    values.Add(L"junk");
    ASSERT_EQ(ini.GetAllKeysAndValues(L"s", keys, values), 3);
    ASSERT_EQ(values.GetSize(), 3);
    std::vector<std::wstring> pairs;
    for (INT_PTR i = 0; i < keys.GetSize(); ++i)
        pairs.push_back(std::wstring(keys[i]) + L"=" + values[i].GetString());
    std::sort(pairs.begin(), pairs.end());
    EXPECT_EQ(pairs, (std::vector<std::wstring>{L"ALPHA=1", L"BETA=2", L"颜色=红"}));
    for (const wchar_t* section : {L"Unknown", L"Empty"}) {
        EXPECT_EQ(ini.GetAllKeysAndValues(section, keys, values), 0) << section;
        EXPECT_EQ(keys.GetSize() + values.GetSize(), 0) << section;
    }
    EXPECT_FALSE(ini.SetFilePath(Write(L"b.ini", L"[Empty]\r\n; nothing\r\n")));
    EXPECT_FALSE(ini.SetFilePath(Write(L"c.ini", L"")));
    // Only a bind reads the file, and a bind to a missing file keeps the old values.
    const CString path = Write(L"a.ini", L"[S]\r\nK=old\r\n[Old]\r\nK=1\r\n");
    ASSERT_TRUE(ini.SetFilePath(path));
    ASSERT_TRUE(WritePrivateProfileStringW(L"S", L"K", L"new", path));
    WritePrivateProfileStringW(nullptr, nullptr, nullptr, path);
    EXPECT_EQ(ini.GetSetting(L"K", L"", L"S"), CString(L"old"));
    ASSERT_TRUE(DeleteFileW(path));
    EXPECT_FALSE(ini.SetFilePath(path));
    EXPECT_EQ(ini.GetSetting(L"K", L"", L"S"), CString(L"old"));
    // A good file replaces every section of the one before.
    EXPECT_TRUE(ini.SetFilePath(Write(L"a.ini", L"[S]\r\nK=new\r\n")));
    EXPECT_EQ(ini.GetSetting(L"K", L"", L"S"), CString(L"new"));
    EXPECT_EQ(ini.GetSetting(L"K", L"def", L"Old"), CString(L"def"));
}

// Empty keys or sections change nothing; a new key replaces the cached section until the next
// bind; writes keep the caller's spelling; an unbound object writes no file.
TEST_F(INISettingTest, WritesReachTheFileAndTheCacheAndTooLargeFilesAreReported)
{
    const CString path = Write(L"w.ini", L"[Software]\r\nA=1\r\nB=2\r\n[Other]\r\nC=3\r\n");
    const std::string before = qmtest::TempDir::ReadFile(path);
    INISetting ini(path);
    EXPECT_FALSE(ini.SetSetting(L"", L"v", L"Software"));
    EXPECT_FALSE(ini.SetSetting(L"A", L"v", nullptr));
    EXPECT_EQ(qmtest::TempDir::ReadFile(path), before);
    ini.SetSetting(L"a", L"9", L"software");
    ini.SetSetting(L"B", nullptr, L"Software");
    EXPECT_EQ(ini.GetSetting(L"A", L"def", L"Software"), CString(L"9"));
    EXPECT_EQ(ini.GetSetting(L"B", L"def", L"Software"), CString(L""));
    EXPECT_EQ(Profile(L"Software", L"B", path), CString(L""));
    ini.SetSetting(L"NewKey", L"菜单.INI", L"Software");
    EXPECT_EQ(ini.GetSetting(L"NEWKEY", L"def", L"Software"), CString(L"菜单.INI"));
    EXPECT_EQ(ini.GetSetting(L"A", L"def", L"Software"), CString(L"def"));
    EXPECT_EQ(ini.GetSetting(L"C", L"def", L"Other"), CString(L"3"));
    EXPECT_NE(qmtest::TempDir::ReadFile(path).find(Ansi(L"NewKey=菜单.INI")), std::string::npos);
    ASSERT_TRUE(ini.SetFilePath(path));
    EXPECT_EQ(ini.GetSetting(L"A", L"def", L"Software"), CString(L"9"));
    INISetting unbound;
    EXPECT_FALSE(unbound.SetSetting(L"K", L"v", L"S"));
    EXPECT_EQ(unbound.GetSetting(L"K", L"def", L"S"), CString(L"v"));
    // A file too large to list is reported, and the old values stay.
    INISetting kept(Write(L"a.ini", L"[S]\r\nK=kept\r\n"));
    // A sparse file: its size alone makes the section-name buffer impossible.
    const CString big = dir.Path() + L"big.ini";
    HANDLE file = CreateFileW(big, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    const bool sized = SetFilePointer(file, 1500000000, nullptr, FILE_BEGIN) == 1500000000 && SetEndOfFile(file);
    CloseHandle(file);
    ASSERT_TRUE(sized);

    qmtest::MsgBoxWatcher watcher(qmtest::MsgBoxWatcher::Enter());
    EXPECT_TRUE(kept.SetFilePath(big));
    EXPECT_EQ(watcher.Wait().text, CString(L"ini文件分配内存错！\n[1800000000]字节"));
    EXPECT_EQ(kept.GetSetting(L"K", L"def", L"S"), CString(L"kept"));
}

TEST(ProcessSettingsTest, TheThreeObjectsAreDistinctAndProcessWide)
{
    qmtest::TempDir dir;
    const CString path = dir.WriteFile(L"ACADMenu.INI", "[CADMenu]\r\nGroup=acad\r\n");
    ASSERT_TRUE(QM::CADMenuSetting().SetFilePath(path));
    EXPECT_EQ(QM::CADMenuSetting().GetSetting(L"Group", L"", L"CADMenu"), CString(L"acad"));
    EXPECT_NE(QM::CInitSetting().GetFilePath(), path);
    EXPECT_EQ(QM::CGCSetting().GetSetting(L"Group", L"def", L"CADMenu"), CString(L"def"));
}

}  // namespace
