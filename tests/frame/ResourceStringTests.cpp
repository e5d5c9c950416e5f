// The library's strings come from its own module, whatever the caller has.
#include <QMUtil.h>
#include <gtest/gtest.h>

TEST(LoadStr, LibraryStringsComeFromTheLibraryAloneCallersFromTheApplicationFirst)
{
    const struct { unsigned id; const wchar_t* text; } table[] = {
        {1, L"塔维提示！"},
        {3, L"产品甲"},
        {12, L"软件运行时发生错误，请检查工作目录\n是否具有可写的权限！"},
        {14, L"没有发现 AutoCad R2000/2002，请安装AutoCad R2000/2002 后再运行本程序！"},
    };
    for (const auto& entry : table) {
        CString text;
        EXPECT_TRUE(QM::LoadStr(entry.id, text)) << entry.id;
        EXPECT_EQ(text, CString(entry.text)) << entry.id;
    }
    // The caller's own strings are ignored and the resource handle restored.
    const HINSTANCE before = AfxGetResourceHandle();

    CString text(L"untouched");
    EXPECT_FALSE(QM::LoadStr(2, text));
    EXPECT_EQ(text, CString(L"untouched"));
    EXPECT_EQ(QM::GetMsgBoxCaption(), CString(L"塔维提示！"));
    EXPECT_EQ(AfxGetResourceHandle(), before);
    // The application's table comes first, then the library's (it joined the chain at load).
    ASSERT_TRUE(text.LoadString(1));
    EXPECT_EQ(text, CString(L"调用者自己的标题"));
    ASSERT_TRUE(text.LoadString(3));
    EXPECT_EQ(text, CString(L"产品甲"));
    EXPECT_FALSE(text.LoadString(999));
}
