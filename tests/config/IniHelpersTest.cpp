// IniHelpersTest.cpp - section reads and writes, and ANSI text files, on real files.
#include "TestText.h"
#include "support/MsgBoxWatcher.h"
#include "support/TempDir.h"
#include "support/Throws.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using qmtest::Ansi;
using qmtest::Profile;
using Strings = std::vector<std::wstring>;

CStringArray Array(const Strings& items)
{
    CStringArray out;
    for (const std::wstring& item : items)
        out.Add(item.c_str());
    return out;
}

Strings Items(const CStringArray& array) { return Strings(array.GetData(), array.GetData() + array.GetSize()); }

class IniHelpersTest : public ::testing::Test
{
protected:
    qmtest::TempDir dir;
};

TEST_F(IniHelpersTest, WriteIniReplacesKeysInPlaceCreatesAMissingFileButNeverTakesWinIni)
{
    EXPECT_FALSE(QM::WriteIni(L"S", Array({L"A"}), Array({L"1"}), nullptr));
    EXPECT_FALSE(QM::WriteIni(L"S", Array({L"A"}), Array({L"1"}), L""));
    const CString path = dir.WriteFile(L"a.ini", "[S]\r\nA=1\r\nB=2\r\n[T]\r\nA=3\r\n");
    const CString fresh = dir.Path() + L"new.ini";
    QM::WriteIni(L"S", Array({L"a", L"颜色"}), Array({L"9", L"红"}), path);
    QM::WriteIni(L"Software", Array({L"Name"}), Array({L"塔维"}), fresh);
    EXPECT_EQ(Profile(L"S", L"A", path) + Profile(L"S", L"颜色", path) + Profile(L"S", L"B", path) +
                  Profile(L"T", L"A", path), CString(L"9红23"));
    EXPECT_NE(qmtest::TempDir::ReadFile(fresh).find(Ansi(L"[Software]\r\nName=塔维")), std::string::npos);
    // Fewer values than keys: the keys before are written, then it throws.
    const CString shorter = dir.Path() + L"short.ini";
    EXPECT_TRUE(qmtest::ThrowsInvalidArg([&] { QM::WriteIni(L"S", Array({L"A", L"B"}), Array({L"1"}), shorter); }));
    EXPECT_EQ(Profile(L"S", L"A", shorter) + Profile(L"S", L"B", shorter), CString(L"1<absent>"));
}

class ReadIniTest : public IniHelpersTest
{
protected:
    const CString path = dir.WriteFile(L"r.ini", Ansi(L"[图层]\r\nZ=26\r\n颜色=红\r\nA = spaced  \r\n; note\r\n"
                                                      L"Empty=\r\n[Case]\r\nKey=first\r\nKEY=second\r\n"));
};

TEST_F(ReadIniTest, KeysAreReadInFileOrderOrInTheGivenOrderAndNothingIsEmpty)
{
    CStringArray keys, values = Array({L"junk"});
    EXPECT_TRUE(QM::ReadIni(L"图层", keys, values, path));
    EXPECT_EQ(Items(keys), (Strings{L"Z", L"颜色", L"A", L"Empty"}));
    EXPECT_EQ(Items(values), (Strings{L"26", L"红", L"spaced", L""}));
    keys = Array({L"颜色", L"nothing", L"z"});
    EXPECT_TRUE(QM::ReadIni(L"图层", keys, values, path));
    EXPECT_EQ(Items(keys), (Strings{L"颜色", L"nothing", L"z"}));
    EXPECT_EQ(Items(values), (Strings{L"红", L"", L"26"}));
    keys.RemoveAll();   // a null section: the platform answers with the section names
    EXPECT_TRUE(QM::ReadIni(nullptr, keys, values, path));
    EXPECT_EQ(Items(keys), (Strings{L"图层", L"Case"}));
    EXPECT_EQ(values.GetSize(), 2);
    // A missing file, section or path gives empty arrays and true.
    const CString missing = dir.Path() + L"none.ini";
    const struct { const wchar_t* section; const wchar_t* path; } rows[] = {
        {L"图层", missing}, {L"Nowhere", path}, {L"图层", nullptr}, {L"图层", L""}};
    for (const auto& row : rows) {
        CStringArray keys, values = Array({L"junk"});
        EXPECT_TRUE(QM::ReadIni(row.section, keys, values, row.path)) << row.section << " " << row.path;
        EXPECT_EQ(keys.GetSize() + values.GetSize(), 0) << row.section << " " << row.path;
    }
}

TEST_F(ReadIniTest, TheMapFormUpperCasesKeysOnlyWhenAsked)
{
    CMapStringToString map;
    map[L"STALE"] = L"x";
    EXPECT_TRUE(QM::ReadIni(L"case", map, path, true));
    EXPECT_EQ(map.GetCount(), 1);
    EXPECT_EQ(map[L"KEY"], CString(L"first"));   // the platform answers every spelling with the first
    CString value;
    EXPECT_TRUE(QM::ReadIni(L"图层", map, path, false));
    EXPECT_EQ(map.GetCount(), 4);
    EXPECT_TRUE(map.Lookup(L"Empty", value));
    EXPECT_FALSE(map.Lookup(L"EMPTY", value));
    EXPECT_FALSE(QM::ReadIni(L"Nowhere", map, path, true));
    EXPECT_TRUE(map.IsEmpty());
}

using Reader = QM::FO_ErrorStatus (*)(const wchar_t*, CStringArray&, bool, const wchar_t*, HWND);
const Reader kStrict = QM::ReadTextFileToStringArray, kLenient = QM::ReadTextFileToStringArray2;

TEST_F(IniHelpersTest, TheTwoLineReadersTrimSkipCommentsAndTreatEmptyLongAndMissingFiles)
{
    const std::string comments = "\t//c\r\nx // y\r\n;d\n/ e", blanks = "a\r\n\r\n  b  \r\n//c\r\n;d\r\n";
    const std::wstring x57(40957, L'x'), x58(40958, L'x');
    const struct { std::string content; Reader read; bool skip; QM::FO_ErrorStatus status; Strings lines; } rows[] = {
        {blanks, kStrict, true, QM::FO_Success, {L"a", L"b"}},
        {blanks, kLenient, true, QM::FO_Success, {L"a", L"", L"b"}},
        {comments, kStrict, false, QM::FO_Success, {L"//c", L"x // y", L";d", L"/ e"}},
        {comments, kStrict, true, QM::FO_Success, {L"x // y", L"/ e"}},
        {"a\r\n\r\n", kLenient, false, QM::FO_Success, {L"a", L""}},
        {"", kLenient, false, QM::FO_Success, {}},
        // 40958 bytes fit; a longer line fails the strict reader and empties the lines, while the
        // lenient one cuts it where the double-byte 中 would otherwise be split.
        {std::string(40958, 'x') + "\r\nnext\r\n", kStrict, true, QM::FO_Success, {x58, L"next"}},
        {"first\r\n" + std::string(40959, 'x') + "\r\nlast\r\n", kStrict, true, QM::FO_ReadFailed, {}},
        {std::string(40957, 'x') + Ansi(L"中文") + "\r\nlast\r\n", kLenient, true, QM::FO_Success,
         {x57, L"中文", L"last"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.content.substr(0, 12));
        CStringArray lines = Array({L"old"});
        EXPECT_EQ(row.read(dir.WriteFile(L"t.txt", row.content), lines, row.skip, nullptr, nullptr), row.status);
        EXPECT_EQ(Items(lines), row.lines);
    }
    // A file open for writing elsewhere can still be read.
    const CString busy = dir.WriteFile(L"busy.txt", "a\r\nb\r\n");
    HANDLE writer = CreateFileW(busy, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                nullptr);
    CStringArray lines;
    EXPECT_EQ(kStrict(busy, lines, true, nullptr, nullptr), QM::FO_Success);
    CloseHandle(writer);
    EXPECT_EQ(Items(lines), (Strings{L"a", L"b"}));
    // A missing file leaves the lines alone and shows the given text in an error box.
    const CString missing = dir.Path() + L"none.txt";
    lines.Copy(Array({L"kept"}));
    EXPECT_EQ(QM::ReadTextFileToStringArray(missing, lines, true), QM::FO_ReadFailed);
    EXPECT_EQ(QM::ReadTextFileToStringArray2(missing, lines, true), QM::FO_ReadFailed);
    EXPECT_EQ(Items(lines), Strings{L"kept"});

    qmtest::MsgBoxWatcher watcher(qmtest::MsgBoxWatcher::Enter());
    EXPECT_EQ(QM::ReadTextFileToStringArray(missing, lines, true, L"找不到列表文件！"), QM::FO_ReadFailed);
    const qmtest::MsgBoxSeen& seen = watcher.Wait();
    EXPECT_EQ(seen.text, CString(L"找不到列表文件！"));
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONERROR));
}

TEST_F(IniHelpersTest, WrittenLinesLoseTrailingBlanksAndEndInCrLfInCodePage936WhereWritingIsAllowed)
{
    const CString path = dir.Path() + L"w.txt";
    CStringArray lines = Array({L"图层 颜色  ", L"y", L"  z", L""});
    ASSERT_EQ(QM::WriteStringArrayToTextFile(path, lines, false), QM::FO_Success);
    // GBK: 图 CDBC, 层 B2E3, 颜 D1D5, 色 C9AB.
    EXPECT_EQ(qmtest::TempDir::ReadFile(path), "\xCD\xBC\xB2\xE3 \xD1\xD5\xC9\xAB\r\ny\r\n  z\r\n\r\n");
    CStringArray back;
    EXPECT_EQ(QM::ReadTextFileToStringArray(path, back, true), QM::FO_Success);
    EXPECT_EQ(Items(back), (Strings{L"图层 颜色", L"y", L"z"}));
    // An existing file is kept when asked, else replaced; a read-only one throws, keeping its content.
    lines.Copy(Array({L"new"}));
    const CString old = dir.WriteFile(L"w.txt", "old\r\n");
    EXPECT_EQ(QM::WriteStringArrayToTextFile(old, lines, true), QM::FO_FileExists);
    EXPECT_EQ(qmtest::TempDir::ReadFile(old), "old\r\n");
    EXPECT_EQ(QM::WriteStringArrayToTextFile(old, lines, false), QM::FO_Success);
    EXPECT_EQ(qmtest::TempDir::ReadFile(old), "new\r\n");
    EXPECT_EQ(QM::WriteStringArrayToTextFile(dir.Path() + L"no\\such\\f.txt", lines, false), QM::FO_OpenWriteFailed);
    EXPECT_EQ(QM::WriteStringArrayToTextFile(nullptr, lines, false), QM::FO_OpenWriteFailed);
    const CString readOnly = dir.WriteFile(L"ro.txt", "keep\r\n");
    ASSERT_TRUE(SetFileAttributesW(readOnly, FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(qmtest::FileFaultCause([&] { QM::WriteStringArrayToTextFile(readOnly, lines, false); }),
              CFileException::accessDenied);
    EXPECT_EQ(qmtest::TempDir::ReadFile(readOnly), "keep\r\n");
}

}  // namespace
