// IniHelpersTest.cpp - section reads and writes through the profile
// functions, and ANSI text files, on real files in a per-test folder.
#include "TestText.h"
#include "support/MsgBoxWatcher.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using qmtest::Ansi;
using qmtest::Profile;

CStringArray Array(std::initializer_list<const wchar_t*> items)
{
    CStringArray out;
    for (const wchar_t* item : items)
        out.Add(item);
    return out;
}

class WriteIniTest : public ::testing::Test
{
protected:
    qmtest::TempDir dir;
};

TEST_F(WriteIniTest, WritesEveryKeyOfTheSectionAndCreatesTheFile)
{
    const CString path = dir.Path() + L"new.ini";
    QM::WriteIni(L"Software", Array({L"Name", L"颜色"}), Array({L"塔维", L"红"}), path);
    EXPECT_EQ(Profile(L"software", L"NAME", path), CString(L"塔维"));
    EXPECT_EQ(Profile(L"Software", L"颜色", path), CString(L"红"));
    EXPECT_NE(qmtest::TempDir::ReadFile(path).find(Ansi(L"[Software]")), std::string::npos);
}

TEST_F(WriteIniTest, ReplacesAKeyInPlaceAndKeepsTheOthers)
{
    const CString path = dir.WriteFile(L"a.ini", "[S]\r\nA=1\r\nB=2\r\n[T]\r\nA=3\r\n");
    QM::WriteIni(L"S", Array({L"a"}), Array({L"9"}), path);
    EXPECT_EQ(Profile(L"S", L"A", path), CString(L"9"));
    EXPECT_EQ(Profile(L"S", L"B", path), CString(L"2"));
    EXPECT_EQ(Profile(L"T", L"A", path), CString(L"3"));
}

TEST_F(WriteIniTest, FewerValuesThanKeysThrowsAfterWritingTheKeysBefore)
{
    const CString path = dir.Path() + L"short.ini";
    bool thrown = false;
    try {
        QM::WriteIni(L"S", Array({L"A", L"B"}), Array({L"1"}), path);
    } catch (CException* e) {
        thrown = dynamic_cast<CInvalidArgException*>(e) != nullptr;
        e->Delete();
    }
    EXPECT_TRUE(thrown);
    EXPECT_EQ(Profile(L"S", L"A", path), CString(L"1"));
    EXPECT_EQ(Profile(L"S", L"B", path), CString(L"<absent>"));
}

TEST_F(WriteIniTest, NullOrEmptyPathWritesNothing)
{
    EXPECT_FALSE(QM::WriteIni(L"S", Array({L"A"}), Array({L"1"}), nullptr));
    EXPECT_FALSE(QM::WriteIni(L"S", Array({L"A"}), Array({L"1"}), L""));
}

class ReadIniTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        path = dir.WriteFile(L"r.ini", Ansi(L"[图层]\r\nZ=26\r\n颜色=红\r\nA = spaced  \r\n; note\r\nEmpty=\r\n"
                                            L"[Case]\r\nKey=first\r\nKEY=second\r\n"));
    }

    qmtest::TempDir dir;
    CString path;
};

TEST_F(ReadIniTest, EmptyKeyListIsFilledInFileOrder)
{
    CStringArray keys, values = Array({L"junk"});
    EXPECT_TRUE(QM::ReadIni(L"图层", keys, values, path));
    ASSERT_EQ(keys.GetSize(), 4);
    EXPECT_EQ(keys[0], CString(L"Z"));
    EXPECT_EQ(keys[1], CString(L"颜色"));
    EXPECT_EQ(keys[2], CString(L"A"));
    EXPECT_EQ(keys[3], CString(L"Empty"));
    ASSERT_EQ(values.GetSize(), 4);
    EXPECT_EQ(values[0], CString(L"26"));
    EXPECT_EQ(values[1], CString(L"红"));
    EXPECT_EQ(values[2], CString(L"spaced"));
    EXPECT_EQ(values[3], CString(L""));
}

TEST_F(ReadIniTest, GivenKeysAreReadInTheirOrderAndMissingOnesAreEmpty)
{
    CStringArray keys = Array({L"颜色", L"nothing", L"z"}), values;
    EXPECT_TRUE(QM::ReadIni(L"图层", keys, values, path));
    ASSERT_EQ(keys.GetSize(), 3);
    ASSERT_EQ(values.GetSize(), 3);
    EXPECT_EQ(values[0], CString(L"红"));
    EXPECT_EQ(values[1], CString(L""));
    EXPECT_EQ(values[2], CString(L"26"));
}

TEST_F(ReadIniTest, MissingFileSectionOrPathGiveEmptyArraysAndTrue)
{
    CStringArray keys, values = Array({L"junk"});
    EXPECT_TRUE(QM::ReadIni(L"图层", keys, values, dir.Path() + L"none.ini"));
    EXPECT_EQ(keys.GetSize(), 0);
    EXPECT_EQ(values.GetSize(), 0);
    EXPECT_TRUE(QM::ReadIni(L"Nowhere", keys, values, path));
    EXPECT_EQ(keys.GetSize(), 0);
    EXPECT_TRUE(QM::ReadIni(nullptr, keys, values, path));
    EXPECT_EQ(keys.GetSize(), 0);
    EXPECT_TRUE(QM::ReadIni(L"图层", keys, values, nullptr));
    EXPECT_EQ(keys.GetSize(), 0);
}

TEST_F(ReadIniTest, MapFormUpperCasesKeysAndMergesKeysDifferingInCase)
{
    CMapStringToString map;
    map[L"STALE"] = L"x";
    EXPECT_TRUE(QM::ReadIni(L"case", map, path, true));
    EXPECT_EQ(map.GetCount(), 1);
    CString value;
    EXPECT_TRUE(map.Lookup(L"KEY", value));
    // The platform answers every spelling of a key with its first occurrence.
    EXPECT_EQ(value, CString(L"first"));
}

TEST_F(ReadIniTest, MapFormKeepsTheFileSpellingWithoutUpperKeys)
{
    CMapStringToString map;
    EXPECT_TRUE(QM::ReadIni(L"图层", map, path, false));
    EXPECT_EQ(map.GetCount(), 4);
    CString value;
    EXPECT_TRUE(map.Lookup(L"Empty", value));
    EXPECT_FALSE(map.Lookup(L"EMPTY", value));
    EXPECT_FALSE(QM::ReadIni(L"Nowhere", map, path, true));
    EXPECT_TRUE(map.IsEmpty());
}

class TextFileTest : public ::testing::Test
{
protected:
    qmtest::TempDir dir;
};

TEST_F(TextFileTest, CommentAndEmptyLineRulesOfBothReaders)
{
    const CString path = dir.WriteFile(L"t.txt", "a\r\n\r\n  b  \r\n//c\r\n;d\r\n");
    CStringArray lines;
    EXPECT_EQ(QM::ReadTextFileToStringArray(path, lines, true), QM::FO_Success);
    ASSERT_EQ(lines.GetSize(), 2);
    EXPECT_EQ(lines[0], CString(L"a"));
    EXPECT_EQ(lines[1], CString(L"b"));

    EXPECT_EQ(QM::ReadTextFileToStringArray2(path, lines, true), QM::FO_Success);
    ASSERT_EQ(lines.GetSize(), 3);
    EXPECT_EQ(lines[0], CString(L"a"));
    EXPECT_EQ(lines[1], CString(L""));
    EXPECT_EQ(lines[2], CString(L"b"));
}

TEST_F(TextFileTest, CommentsAreKeptWhenNotSkippedAndOnlyLeadingMarkersCount)
{
    const CString path = dir.WriteFile(L"t.txt", "\t//c\r\nx // y\r\n;d\n/ e");
    CStringArray lines;
    EXPECT_EQ(QM::ReadTextFileToStringArray(path, lines, false), QM::FO_Success);
    ASSERT_EQ(lines.GetSize(), 4);
    EXPECT_EQ(lines[0], CString(L"//c"));
    EXPECT_EQ(lines[3], CString(L"/ e"));   // a last line without its line end
    EXPECT_EQ(QM::ReadTextFileToStringArray(path, lines, true), QM::FO_Success);
    ASSERT_EQ(lines.GetSize(), 2);
    EXPECT_EQ(lines[0], CString(L"x // y"));
    EXPECT_EQ(lines[1], CString(L"/ e"));
}

TEST_F(TextFileTest, ChineseLinesRoundTripInCodePage936)
{
    ASSERT_EQ(GetACP(), 936u) << "the test prefix runs with LANG=zh_CN.UTF-8";
    const CString path = dir.Path() + L"zh.txt";
    CStringArray lines = Array({L"图层 颜色", L"塔维提示！"});
    ASSERT_EQ(QM::WriteStringArrayToTextFile(path, lines, false), QM::FO_Success);
    // GBK: 图 CDBC, 层 B2E3, 颜 D1D5, 色 C9AB.
    EXPECT_EQ(qmtest::TempDir::ReadFile(path).substr(0, 11), std::string("\xCD\xBC\xB2\xE3 \xD1\xD5\xC9\xAB\r\n"));
    CStringArray back;
    EXPECT_EQ(QM::ReadTextFileToStringArray(path, back, true), QM::FO_Success);
    ASSERT_EQ(back.GetSize(), 2);
    EXPECT_EQ(back[0], CString(L"图层 颜色"));
    EXPECT_EQ(back[1], CString(L"塔维提示！"));
}

TEST_F(TextFileTest, WriteTrimsTrailingBlanksAndEndsLinesWithCrLf)
{
    const CString path = dir.Path() + L"w.txt";
    CStringArray lines = Array({L"x  ", L"y", L"  z", L""});
    ASSERT_EQ(QM::WriteStringArrayToTextFile(path, lines, false), QM::FO_Success);
    EXPECT_EQ(qmtest::TempDir::ReadFile(path), std::string("x\r\ny\r\n  z\r\n\r\n"));
}

TEST_F(TextFileTest, WriteKeepsOrReplacesAnExistingFile)
{
    const CString path = dir.WriteFile(L"w.txt", "old\r\n");
    CStringArray lines = Array({L"new"});
    EXPECT_EQ(QM::WriteStringArrayToTextFile(path, lines, true), QM::FO_FileExists);
    EXPECT_EQ(qmtest::TempDir::ReadFile(path), std::string("old\r\n"));
    EXPECT_EQ(QM::WriteStringArrayToTextFile(path, lines, false), QM::FO_Success);
    EXPECT_EQ(qmtest::TempDir::ReadFile(path), std::string("new\r\n"));
}

TEST_F(TextFileTest, WriteIntoMissingFolderCannotCreate)
{
    CStringArray lines = Array({L"a"});
    EXPECT_EQ(QM::WriteStringArrayToTextFile(dir.Path() + L"no\\such\\f.txt", lines, false), QM::FO_OpenWriteFailed);
    EXPECT_EQ(QM::WriteStringArrayToTextFile(nullptr, lines, false), QM::FO_OpenWriteFailed);
}

TEST_F(TextFileTest, WriteOverAFileThatCannotBeDeletedThrowsFileException)
{
    const CString path = dir.WriteFile(L"ro.txt", "keep\r\n");
    ASSERT_TRUE(SetFileAttributesW(path, FILE_ATTRIBUTE_READONLY));
    CStringArray lines = Array({L"new"});
    bool thrown = false;
    try {
        QM::WriteStringArrayToTextFile(path, lines, false);
    } catch (CFileException* e) {
        thrown = true;
        EXPECT_EQ(e->m_cause, CFileException::accessDenied);
        e->Delete();
    }
    EXPECT_TRUE(thrown);
    EXPECT_EQ(qmtest::TempDir::ReadFile(path), std::string("keep\r\n"));
}

TEST_F(TextFileTest, MissingFileFailsAndLeavesLinesUntouched)
{
    CStringArray lines = Array({L"kept"});
    EXPECT_EQ(QM::ReadTextFileToStringArray(dir.Path() + L"none.txt", lines, true), QM::FO_ReadFailed);
    EXPECT_EQ(QM::ReadTextFileToStringArray2(dir.Path() + L"none.txt", lines, true), QM::FO_ReadFailed);
    ASSERT_EQ(lines.GetSize(), 1);
    EXPECT_EQ(lines[0], CString(L"kept"));
}

TEST_F(TextFileTest, MissingFileShowsTheGivenTextInAnErrorBox)
{
    qmtest::MsgBoxWatcher watcher(qmtest::MsgBoxWatcher::Enter());
    CStringArray lines;
    EXPECT_EQ(QM::ReadTextFileToStringArray(dir.Path() + L"none.txt", lines, true, L"找不到列表文件！"),
              QM::FO_ReadFailed);
    const qmtest::MsgBoxSeen& seen = watcher.Wait();
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(seen.text, CString(L"找不到列表文件！"));
    EXPECT_EQ(seen.caption, CString(L"塔维提示！"));
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONERROR));
}

TEST_F(TextFileTest, AFileOpenForWritingElsewhereCanBeRead)
{
    const CString path = dir.WriteFile(L"busy.txt", "a\r\nb\r\n");
    HANDLE writer = CreateFileW(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                nullptr);
    ASSERT_NE(writer, INVALID_HANDLE_VALUE);
    CStringArray lines;
    EXPECT_EQ(QM::ReadTextFileToStringArray(path, lines, true), QM::FO_Success);
    CloseHandle(writer);
    EXPECT_EQ(lines.GetSize(), 2);
}

TEST_F(TextFileTest, ATextEndingWithALineEndHasNoExtraEmptyLine)
{
    CStringArray lines;
    EXPECT_EQ(QM::ReadTextFileToStringArray2(dir.WriteFile(L"e.txt", "a\r\n\r\n"), lines, false), QM::FO_Success);
    EXPECT_EQ(lines.GetSize(), 2);
    EXPECT_EQ(QM::ReadTextFileToStringArray2(dir.WriteFile(L"z.txt", ""), lines, false), QM::FO_Success);
    EXPECT_EQ(lines.GetSize(), 0);
}

class LongLineTest : public ::testing::Test
{
protected:
    qmtest::TempDir dir;
};

TEST_F(LongLineTest, ALineOf40958BytesIsRead)
{
    const std::string line(40958, 'x');
    CStringArray lines;
    EXPECT_EQ(QM::ReadTextFileToStringArray(dir.WriteFile(L"l.txt", line + "\r\nnext\r\n"), lines, true),
              QM::FO_Success);
    ASSERT_EQ(lines.GetSize(), 2);
    EXPECT_EQ(lines[0].GetLength(), 40958);
    EXPECT_EQ(lines[1], CString(L"next"));
}

TEST_F(LongLineTest, ALongerLineFailsTheFirstReaderAndEmptiesLines)
{
    const CString path = dir.WriteFile(L"l.txt", "first\r\n" + std::string(40959, 'x') + "\r\nlast\r\n");
    CStringArray lines = Array({L"old"});
    EXPECT_EQ(QM::ReadTextFileToStringArray(path, lines, true), QM::FO_ReadFailed);
    EXPECT_EQ(lines.GetSize(), 0);
}

TEST_F(LongLineTest, TheSecondReaderSplitsItWithoutCuttingACharacter)
{
    // 40957 single bytes, then 中 (two bytes) would end on a lead byte at the cut.
    const std::string line = std::string(40957, 'x') + Ansi(L"中文");
    const CString path = dir.WriteFile(L"l.txt", line + "\r\nlast\r\n");
    CStringArray lines;
    EXPECT_EQ(QM::ReadTextFileToStringArray2(path, lines, true), QM::FO_Success);
    ASSERT_EQ(lines.GetSize(), 3);
    EXPECT_EQ(lines[0], CString(L'x', 40957));
    EXPECT_EQ(lines[1], CString(L"中文"));
    EXPECT_EQ(lines[2], CString(L"last"));
}

}  // namespace
