// ExcelExport.h - a table written into a new Excel workbook through Excel's
// automation server.
//
//   CStringArray headers, cells;   // cells row-major: cells[r * headers.GetSize() + c]
//   int widths[] = {10, -1, 40};    // -1 leaves the column out
//   int rc = QM::ExportToExcelTable(L"D:\\out.xls", headers, cells, nullptr, L"", widths, 0);
//
// Results: 0 done (also when the file was in use and the save refused),
// -1 the cell count is no multiple of the column count (or no headers), -2 more than 512
// columns, -3 the component library would not start on this thread, -4
// "Excel.Application" could not be created. Failures inside Excel reach the
// caller as COleDispatchException*.
#pragma once
#include "platform/Collections.h"

namespace QM {

// Every cell is stored as text ("007" stays so). Column widths are the given
// ones, or the longest text of the column when `widths` is null, capped at
// 20 either way. `progress(rows - 1, r)` follows each data row. `sheetName`
// is not used: the data goes to the first sheet. `show` non-zero makes Excel
// visible and leaves the workbook open; Excel itself is never quit.
QM_API int ExportToExcelTable(const wchar_t* file, CStringArray& headers, CStringArray& cells,
                              void (*progress)(int, int), const wchar_t* sheetName, int* widths, int show);

}  // namespace QM
