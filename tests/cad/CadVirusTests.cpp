// CadVirusTests.cpp - hostile start-up scripts in the host's folders.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "support/CadFixture.h"
#include "support/ChildProcess.h"
#include "support/MsgBoxWatcher.h"

using qmtest::Cad;

namespace {

const char kHostile[] = "(defun s::startup () (command \"explode\"))\r\n(command \"Undefine\" \"save\")\r\n"
                        "(setq p (getvar \"AcadPath\"))\r\n";
const char kThreeWords[] = "(defun s::startup () (command \"explode\"))\r\n(command \"Undefine\" \"save\")\r\n";
const char kLoader[] = "(load \"acadapp\")\r\n";

// Scripts written into the installation, removed (read-only or not) after each test.
class CadVirus : public ::testing::Test
{
protected:
    ~CadVirus() override
    {
        for (const CString& file : m_written) {
            SetFileAttributesW(file, FILE_ATTRIBUTE_NORMAL);
            DeleteFileW(file);
        }
    }
    CString Write(const wchar_t* relative, const char* text)
    {
        m_written.push_back(Cad().Dir().WriteFile(relative, text));
        return m_written.back();
    }
    std::vector<CString> m_written;
};

// The host's folder, the profile's support path, the work and install folders, then the latter's sub-folders.
TEST_F(CadVirus, FoldersAreSearchedInOrderHostileScriptsFoundDeletedOrListed)
{
    CStringArray folders;
    QM::GetCadVirusFolders(folders);
    ASSERT_EQ(8, folders.GetSize());
    std::vector<CString> found(folders.GetData(), folders.GetData() + 8), expected;
    std::sort(found.begin() + 5, found.end());
    for (const wchar_t* folder : {L"AutoCAD 2005\\", L"AutoCAD 2005\\Support\\", L"AutoCAD 2005\\Fonts\\",
                                  L"Work\\W\\X\\", L"Suite\\", L"Suite\\Bin\\", L"Suite\\Support\\", L"Suite\\Sys\\"})
        expected.push_back(Cad().Folder(folder));
    EXPECT_EQ(expected, found);
    // Only acad.lsp and acadapp.lsp (any case) with all four words are hostile; the loader rule looks
    // for lower-case words in an upper-cased line and never fires, which keeps the host's acadapp.lsp.
    const struct { const wchar_t* file; const char* text; bool hostile; } rows[] = {
        {L"Suite\\Bin\\acad.lsp", kHostile, true},           {L"Suite\\Support\\ACADAPP.LSP", kHostile, true},
        {L"Suite\\Sys\\acad.lsp", kThreeWords, false},       {L"Suite\\Support\\acadapp.lsp", kLoader, false},
        {L"Suite\\Support\\other.lsp", kHostile, false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.hostile, QM::IsCadVirusFile(Write(row.file, row.text))) << row.file;
    // Hostile scripts are deleted, read-only ones too; those that cannot be are listed in one message.
    const CString hostile = Write(L"AutoCAD 2005\\Support\\acad.lsp", kHostile);
    const CString readOnly = Write(L"Suite\\Bin\\acadapp.lsp", kHostile);
    SetFileAttributesW(readOnly, FILE_ATTRIBUTE_READONLY);
    const CString kept = Write(L"Suite\\acad.lsp", kThreeWords), benign = Write(L"AutoCAD 2005\\acadapp.lsp", kLoader);
    const CString first = Write(L"AutoCAD 2005\\acad.lsp", kHostile), second = Write(L"Suite\\Sys\\acadapp.lsp", kHostile);
    std::vector<HANDLE> locks;
    for (const CString& file : {first, second})
        locks.push_back(CreateFileW(file, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                    nullptr));
    qmtest::MsgBoxWatcher watcher(qmtest::MsgBoxWatcher::Press(IDOK));
    QM::KillCadVirus();
    const qmtest::MsgBoxSeen& seen = watcher.Wait();
    for (HANDLE lock : locks)
        CloseHandle(lock);
    EXPECT_EQ(L"CAD病毒文件未能删除：\n" + first + L"\n" + second + L"\n\n请手动删除！", seen.text);
    EXPECT_EQ(std::vector<int>{IDOK}, seen.buttons);
    EXPECT_FALSE(QM::IsExist(hostile) || QM::IsExist(readOnly));
    EXPECT_TRUE(QM::IsExist(kept) && QM::IsExist(benign) && QM::IsExist(first));
}

// Every look-up fails: they stay lone backslashes, and the sub-folders listed are the current folder's.
TEST(CadVirusChild, NothingFoundListsTheCurrentFolder)
{
    QMTEST_CHILD_ONLY();
    qmtest::TempDir here;
    CreateDirectoryW(here.Path() + L"only", nullptr);
    SetCurrentDirectoryW(here.Path());
    CStringArray folders;
    QM::GetCadVirusFolders(folders);
    EXPECT_EQ((std::vector<CString>{L"\\", L"\\", L"\\", L"only\\"}),
              std::vector<CString>(folders.GetData(), folders.GetData() + folders.GetSize()));
    SetCurrentDirectoryW(L"C:\\");
    qmtest::ChildReached();
}

TEST(CadVirusInFreshProcess, NothingFoundListsTheCurrentFolder)
{
    EXPECT_EQ(0, qmtest::RunInChild("CadVirusChild.NothingFoundListsTheCurrentFolder", "[Software]\r\n"));
}

}  // namespace
