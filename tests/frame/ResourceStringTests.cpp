// The library's strings come from its own module, whatever the caller has.
#include <QMUtil.h>
#include <gtest/gtest.h>

TEST(LoadStr, EveryStringOfTheTableLoadsExactly)
{
    const struct { unsigned id; const wchar_t* text; } table[] = {
        {1, L"塔维提示！"},
        {3, L"产品甲"},
        {4, L"产品乙"},
        {5, L"1.工程名可以包含中文。\r\n\r\n2.双击已有工程列表中任一项，则设置为选择的工程。\r\n\r\n"
            L"3.选择已有工程中一顶，并点击确定按钮，则设置当前工程为选中项。\r\n\r\n"
            L"4.在工程名中输入新名称确定后则新建。\r\n"},
        {11, L"读取当前工作目录时发生错误！"},
        {12, L"软件运行时发生错误，请检查工作目录\n是否具有可写的权限！"},
        {13, L"软件运行时发生错误，请检查：\n1.软件是否正确安装！\n2.工作目录具有可写的权限！"},
        {14, L"没有发现 AutoCad R2000/2002，请安装AutoCad R2000/2002 后再运行本程序！"},
    };
    for (const auto& entry : table) {
        CString text;
        EXPECT_TRUE(QM::LoadStr(entry.id, text)) << entry.id;
        EXPECT_EQ(text, CString(entry.text)) << entry.id;
    }
}

TEST(LoadStr, IgnoresTheCallersStringsAndRestoresTheResourceHandle)
{
    const HINSTANCE before = AfxGetResourceHandle();
    EXPECT_EQ(before, GetModuleHandleW(nullptr));

    CString text(L"untouched");
    EXPECT_FALSE(QM::LoadStr(2, text));
    EXPECT_EQ(text, CString(L"untouched"));
    EXPECT_EQ(QM::GetMsgBoxCaption(), CString(L"塔维提示！"));
    EXPECT_EQ(AfxGetResourceHandle(), before);
}

TEST(LoadStr, CallerLoadsSearchTheApplicationThenTheLibrary)
{
    // The application's own table comes first; strings it lacks are found in
    // the library, which joined the resource chain when it was loaded.
    CString text;
    ASSERT_TRUE(text.LoadString(1));
    EXPECT_EQ(text, CString(L"调用者自己的标题"));
    ASSERT_TRUE(text.LoadString(3));
    EXPECT_EQ(text, CString(L"产品甲"));
    EXPECT_FALSE(text.LoadString(999));
}
