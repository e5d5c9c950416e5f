// The project folder: one process-wide value that moves the project settings.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/TempDir.h"

// The folder cannot be cleared once set, so the whole life of it is one test.
TEST(ProjectDir, LifeOfTheProcessWideFolder)
{
    CString dir(L"untouched"), name(L"untouched");
    EXPECT_FALSE(QM::GetSoftwareProjectDir(dir));
    EXPECT_FALSE(QM::GetSoftwareProjectName(name));
    EXPECT_EQ(dir, CString(L"untouched"));

    qmtest::TempDir temp;
    const CString projectA = temp.Path() + L"Proj\\工程A";
    ASSERT_TRUE(QM::MkMDir(projectA));
    temp.WriteFile(L"Proj\\工程A\\Project.INI", "[Layer]\r\nColor=7\r\n");

    EXPECT_FALSE(QM::SetSoftwareProjectDir(projectA + L"\\\\")) << "false even on success";
    ASSERT_TRUE(QM::GetSoftwareProjectDir(dir));
    EXPECT_EQ(dir, projectA + L"\\");
    ASSERT_TRUE(QM::GetSoftwareProjectName(name));
    EXPECT_EQ(name, CString(L"工程A"));
    EXPECT_EQ(QM::GCINIFilePath(), projectA + L"\\Project.INI");
    EXPECT_EQ(QM::CGCSetting().GetFilePath(), projectA + L"\\Project.INI");
    EXPECT_EQ(QM::CGCSetting().GetSetting(L"color", L"?", L"layer"), CString(L"7"));

    EXPECT_FALSE(QM::SetSoftwareProjectDir(temp.Path() + L"missing"));
    ASSERT_TRUE(QM::GetSoftwareProjectDir(dir));
    EXPECT_EQ(dir, projectA + L"\\");

    // The file name comes from the start-up settings at every set.
    const CString init = temp.WriteFile(L"INIT.ini", "[Software]\r\nProjectINIFileName=GC.ini\r\n");
    const CString previous = QM::CInitSetting().GetFilePath();
    ASSERT_TRUE(QM::CInitSetting().SetFilePath(init) && QM::MkMDir(temp.Path() + L"B"));
    QM::SetSoftwareProjectDir(temp.Path() + L"B");
    EXPECT_EQ(QM::GCINIFilePath(), temp.Path() + L"B\\GC.ini");
    QM::CInitSetting().SetFilePath(previous);
}
