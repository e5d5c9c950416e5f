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

class CadVirus : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (qmtest::IsChildProcess())
            GTEST_SKIP();
    }
    void TearDown() override
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

TEST_F(CadVirus, FoldersInSearchOrderWithDuplicatesKept)
{
    CStringArray folders;
    QM::GetCadVirusFolders(folders);
    std::vector<CString> expected = {Cad().Folder(L"AutoCAD 2005\\"), Cad().Folder(L"AutoCAD 2005\\Support\\"),
                                     Cad().Folder(L"AutoCAD 2005\\Fonts\\"), Cad().Folder(L"Work\\W\\X\\"),
                                     Cad().Folder(L"Suite\\")};
    ASSERT_GE(folders.GetSize(), 8);
    for (size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(expected[i], folders[static_cast<INT_PTR>(i)]);
    std::vector<CString> subs;
    for (INT_PTR i = 5; i < folders.GetSize(); ++i)
        subs.push_back(folders[i]);
    std::sort(subs.begin(), subs.end(), [](const CString& a, const CString& b) { return wcscmp(a, b) < 0; });
    EXPECT_EQ((std::vector<CString>{Cad().Folder(L"Suite\\Bin\\"), Cad().Folder(L"Suite\\Support\\"),
                                    Cad().Folder(L"Suite\\Sys\\")}),
              subs);
}

TEST_F(CadVirus, HostileWordsMustAllBeThere)
{
    EXPECT_TRUE(QM::IsCadVirusFile(Write(L"Suite\\Bin\\acad.lsp", kHostile)));
    EXPECT_FALSE(QM::IsCadVirusFile(Write(L"Suite\\Sys\\acad.lsp", kThreeWords)));
    EXPECT_FALSE(QM::IsCadVirusFile(Write(L"Suite\\Support\\acadapp.lsp", "(load \"acadapp\")\r\n")));
    EXPECT_FALSE(QM::IsCadVirusFile(Write(L"Suite\\Support\\other.lsp", kHostile)));
    EXPECT_TRUE(QM::IsCadVirusFile(Write(L"Suite\\Support\\ACADAPP.LSP", kHostile)));
}

TEST_F(CadVirus, HostileScriptsAreDeletedReadOnlyOnesToo)
{
    const CString hostile = Write(L"AutoCAD 2005\\Support\\acad.lsp", kHostile);
    const CString readOnly = Write(L"Suite\\Bin\\acadapp.lsp", kHostile);
    SetFileAttributesW(readOnly, FILE_ATTRIBUTE_READONLY);
    const CString kept = Write(L"Suite\\acad.lsp", kThreeWords);
    const CString benign = Write(L"AutoCAD 2005\\acadapp.lsp", "(load \"acadapp\")\r\n");
    QM::KillCadVirus();
    EXPECT_FALSE(QM::IsExist(hostile));
    EXPECT_FALSE(QM::IsExist(readOnly));
    EXPECT_TRUE(QM::IsExist(kept));
    EXPECT_TRUE(QM::IsExist(benign));
}

TEST_F(CadVirus, UndeletableScriptsAreListedInOneMessage)
{
    const CString first = Write(L"AutoCAD 2005\\acad.lsp", kHostile);
    const CString second = Write(L"Suite\\Sys\\acadapp.lsp", kHostile);
    HANDLE locks[2];
    int n = 0;
    for (const CString& file : {first, second})
        locks[n++] = CreateFileW(file, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                 nullptr);
    qmtest::MsgBoxWatcher watcher(qmtest::MsgBoxWatcher::Press(IDOK));
    QM::KillCadVirus();
    const qmtest::MsgBoxSeen& seen = watcher.Wait();
    for (HANDLE lock : locks)
        CloseHandle(lock);
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(L"CAD病毒文件未能删除：\n" + first + L"\n" + second + L"\n\n请手动删除！", seen.text);
    EXPECT_EQ(std::vector<int>{IDOK}, seen.buttons);
    EXPECT_TRUE(QM::IsExist(first));
}

}  // namespace
