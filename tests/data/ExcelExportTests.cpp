// ExcelExportTests.cpp - QM::ExportToExcelTable against the stand-in
// Excel, which records every call and saves XML spreadsheets.
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "support/MsgBoxWatcher.h"
#include "support/TempDir.h"

namespace {

// The calls the stand-in (the registered one, beside the tests) recorded since the last look.
CString TakeCalls()
{
    using Take = BSTR(WINAPI*)(BOOL);
    const HMODULE server = LoadLibraryW(L"qmstandins.dll");
    auto take = reinterpret_cast<Take>(reinterpret_cast<void*>(GetProcAddress(server, "StandInExcelCalls")));
    const BSTR calls = take != nullptr ? take(TRUE) : nullptr;
    const CString text = calls;
    return SysFreeString(calls), text;
}

std::vector<std::pair<int, int>> g_progress;

class ExcelExport : public ::testing::Test
{
protected:
    void SetUp() override
    {
        TakeCalls();
        g_progress.clear();
        for (const wchar_t* h : {L"名称", L"编号", L"备注"})
            headers.Add(h);
        for (const wchar_t* c : {L"钢管", L"007", L"a<b", L"角钢", L"12", L""})
            cells.Add(c);
    }
    CStringArray headers, cells;
    qmtest::TempDir dir;
};

TEST_F(ExcelExport, DroppedAndCappedColumnsTextCellsAndTheCallSequence)
{
    int widths[] = {-1, 40, 8};
    const CString file = dir.Path() + L"out.xml";
    ASSERT_EQ(0, QM::ExportToExcelTable(file, headers, cells, [](int last, int row) { g_progress.emplace_back(last, row); },
                                        L"ignored", widths, 0));
    const CString expected = L"get Application.Workbooks\ncall Workbooks.Add(<missing>)\nget Workbook.Worksheets\n"
        L"get Worksheets.Item(\"sheet1\")\nget Worksheet.Cells\nput Range.NumberFormat = \"@\"\n"
        L"put Range.Item(1, 1) = \"编号\"\nput Range.Item(1, 2) = \"备注\"\n"
        L"put Range.Item(2, 1) = \"007\"\nput Range.Item(2, 2) = \"a<b\"\n"
        L"put Range.Item(3, 1) = \"12\"\nput Range.Item(3, 2) = \"\"\n"
        L"get Worksheet.Columns\nget Range.Item(1)\nput Range.ColumnWidth = 20\nget Range.Item(2)\nput Range.ColumnWidth = 8\n"
        L"call Workbook.SaveAs(\"" + file + L"\", <missing>, <missing>, <missing>, <missing>, <missing>, 0, "
        L"<missing>, <missing>, <missing>, <missing>)\nput Workbook.Saved = -1\n"
        L"call Workbook.Close(<missing>, <missing>, <missing>)\n";
    EXPECT_STREQ(expected, TakeCalls());
    EXPECT_EQ((std::vector<std::pair<int, int>>{{1, 0}, {1, 1}}), g_progress);

    const std::string xml = qmtest::TempDir::ReadFile(file);
    for (const char* part : {"<Column ss:Index=\"1\" ss:Width=\"108\"/>", "<Column ss:Index=\"2\" ss:Width=\"45\"/>",
                             "<NumberFormat ss:Format=\"@\"/>",
                             "<Row ss:Index=\"2\"><Cell ss:Index=\"1\" ss:StyleID=\"s1\"><Data ss:Type=\"String\">007</Data>",
                             "<Data ss:Type=\"String\">a&lt;b</Data>", "<Data ss:Type=\"String\">\xE7\xBC\x96\xE5\x8F\xB7</Data>"})
        EXPECT_NE(std::string::npos, xml.find(part)) << part;
}

TEST_F(ExcelExport, WidthsFollowTheTextsUpToTwentyAndShowLeavesTheWorkbookOpen)
{
    cells[0] = CString(L'x', 35);
    ASSERT_EQ(0, QM::ExportToExcelTable(nullptr, headers, cells, nullptr, L"", nullptr, 1));
    const CString calls = TakeCalls();
    const int widths = calls.Find(L"get Worksheet.Columns");
    EXPECT_STREQ(L"get Worksheet.Columns\nget Range.Item(1)\nput Range.ColumnWidth = 20\nget Range.Item(2)\n"
                 L"put Range.ColumnWidth = 3\nget Range.Item(3)\nput Range.ColumnWidth = 3\nput Application.Visible = -1\n",
                 calls.Mid(widths));
    EXPECT_TRUE(g_progress.empty());
}

TEST_F(ExcelExport, BadTablesAreRefusedBeforeExcelStarts)
{
    CStringArray none, wide;
    for (int i = 0; i < 513; ++i)
        wide.Add(L"h");
    cells.Add(L"odd");
    const struct { CStringArray* headers; int result; } rows[] = {{&headers, -1}, {&none, -1}, {&wide, -2}};
    for (const auto& row : rows) {
        CStringArray noCells;
        EXPECT_EQ(row.result, QM::ExportToExcelTable(nullptr, *row.headers, row.headers == &headers ? cells : noCells,
                                                     nullptr, L"", nullptr, 0));
    }
    EXPECT_STREQ(L"", TakeCalls());
}

TEST_F(ExcelExport, AFileHeldOpenIsNotSavedOver)
{
    const CString file = dir.WriteFile(L"busy.xls", "kept");
    HANDLE holder = CreateFileW(file, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, holder);
    qmtest::MsgBoxWatcher watcher(qmtest::MsgBoxWatcher::Press(IDOK));
    EXPECT_EQ(0, QM::ExportToExcelTable(file, headers, cells, nullptr, L"", nullptr, 0));
    const qmtest::MsgBoxSeen& seen = watcher.Wait();
    CloseHandle(holder);
    EXPECT_STREQ(L"文件" + file + L"可能正被其它程序使用。保存失败！", seen.text);
    EXPECT_EQ(static_cast<UINT>(MB_ICONEXCLAMATION), seen.icon);
    EXPECT_EQ("kept", qmtest::TempDir::ReadFile(file));
    EXPECT_EQ(-1, TakeCalls().Find(L"SaveAs"));
}

}  // namespace
