// COleDateTime: status and formatting, Chinese literal text included.
#include <QMUtil.h>

#include <gtest/gtest.h>

TEST(OleDateTime, FormatsByStatus)
{
    const COleDateTime valid(2024, 3, 5, 14, 7, 9);
    COleDateTime nulled = valid;
    nulled.SetStatus(COleDateTime::null);
    const SYSTEMTIME noDate{2024, 13, 0, 40, 0, 0, 0, 0};
    const struct { COleDateTime value; const wchar_t* format; const wchar_t* text; } rows[] = {
        {valid, L"%Y年%m月%d日", L"2024年03月05日"}, {valid, L"%H:%M:%S %j %%", L"14:07:09 065 %"},
        {nulled, L"%Y", L""}, {COleDateTime(noDate), L"%Y", L"Invalid DateTime"},
        {COleDateTime(2023, 2, 29, 0, 0, 0), L"%Y", L"Invalid DateTime"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.value.Format(row.format), row.text) << testing::PrintToString(std::wstring(row.format));
}
