// ExcelExport.cpp - QM::ExportToExcelTable through "Excel.Application".
#include "data/ExcelExport.h"

#include "frame/Messages.h"
#include "platform/ole/OleDispatchDriver.h"

#include <algorithm>
#include <vector>

namespace QM {
namespace {

const int kMaxColumns = 512;
const int kDropped = -1;     // a width entry that leaves its column out
const int kWidthCap = 20;    // wider columns crowd the sheet off the screen

// Ends the component library when the export returns or throws, after the
// automation objects declared later have been released.
struct ComLibrary
{
    ~ComLibrary() { AfxOleTermThread(); }
};

COleVariant Missing()
{
    return COleVariant(static_cast<long>(DISP_E_PARAMNOTFOUND), VT_ERROR);
}

LPDISPATCH GetDispatch(const COleDispatchDriver& object, const wchar_t* name)
{
    LPDISPATCH result = nullptr;
    object.GetProperty(object.GetIDOfName(name), VT_DISPATCH, &result);
    return result;
}

// Collection.Item(index) or Collection.Add(argument) and the like.
LPDISPATCH CallForDispatch(const COleDispatchDriver& object, const wchar_t* name, WORD flags, const VARIANT& arg)
{
    static const BYTE parms[] = VTS_VARIANT;
    LPDISPATCH result = nullptr;
    object.InvokeHelper(object.GetIDOfName(name), flags, VT_DISPATCH, &result, parms, &arg);
    return result;
}

// Writes one row of texts into `row` of the sheet, kept columns only, and
// widens the width table to the texts when the caller gave no widths.
void WriteRow(const COleDispatchDriver& cells, DISPID item, long row, const CString* texts, std::vector<int>& width,
              bool measure)
{
    static const BYTE parms[] = VTS_VARIANT VTS_VARIANT VTS_VARIANT;
    const COleVariant rowIndex(row);
    long column = 0;
    for (size_t c = 0; c < width.size(); ++c) {
        if (width[c] == kDropped)
            continue;
        ++column;
        if (measure)
            width[c] = std::max(width[c], texts[c].GetLength());
        const COleVariant columnIndex(column), value(texts[c].GetString());
        cells.InvokeHelper(item, DISPATCH_PROPERTYPUT, VT_EMPTY, nullptr, parms, static_cast<const VARIANT*>(rowIndex),
                           static_cast<const VARIANT*>(columnIndex), static_cast<const VARIANT*>(value));
    }
}

void SetWidths(const COleDispatchDriver& sheet, const std::vector<int>& width)
{
    COleDispatchDriver columns(GetDispatch(sheet, L"Columns"));
    long column = 0;
    for (int w : width) {
        if (w == kDropped)
            continue;
        COleDispatchDriver range(CallForDispatch(columns, L"Item", DISPATCH_PROPERTYGET, COleVariant(++column)));
        range.SetProperty(range.GetIDOfName(L"ColumnWidth"), VT_I4, static_cast<long>(std::min(w, kWidthCap)));
    }
}

// Saves only when the file can be had for itself: a workbook saved over a
// file another program holds would fail halfway or be lost to the user.
void Save(const COleDispatchDriver& workbook, const wchar_t* file)
{
    HANDLE probe = CreateFileW(file, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (probe == INVALID_HANDLE_VALUE && GetLastError() != ERROR_FILE_NOT_FOUND) {
        CString text;
        text.Format(L"文件%s可能正被其它程序使用。保存失败！", file);
        ShowMessage(nullptr, text, L"!");
        return;
    }
    if (probe != INVALID_HANDLE_VALUE)
        CloseHandle(probe);
    static const BYTE parms[] = VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_I4
        VTS_VARIANT VTS_VARIANT VTS_VARIANT VTS_VARIANT;
    const COleVariant name(file), missing = Missing();
    const VARIANT* m = &missing;
    workbook.InvokeHelper(workbook.GetIDOfName(L"SaveAs"), DISPATCH_METHOD, VT_EMPTY, nullptr, parms,
                          static_cast<const VARIANT*>(name), m, m, m, m, m, 0L, m, m, m, m);
    workbook.SetProperty(workbook.GetIDOfName(L"Saved"), VT_BOOL, TRUE);
}

}  // namespace

int ExportToExcelTable(const wchar_t* file, CStringArray& headers, CStringArray& cells, void (*progress)(int, int),
                       const wchar_t* /*sheetName*/, int* widths, int show)
{
    const INT_PTR columns = headers.GetSize();
    if (columns == 0 || cells.GetSize() % columns != 0)
        return -1;
    if (columns > kMaxColumns)
        return -2;
    const int rows = static_cast<int>(cells.GetSize() / columns);
    if (FAILED(AfxOleInitThread()))
        return -3;
    ComLibrary library;
    COleDispatchDriver app;
    if (!app.CreateDispatch(L"Excel.Application"))
        return -4;
    const COleVariant missing = Missing();
    COleDispatchDriver books(GetDispatch(app, L"Workbooks"));
    COleDispatchDriver book(CallForDispatch(books, L"Add", DISPATCH_METHOD, missing));
    COleDispatchDriver sheets(GetDispatch(book, L"Worksheets"));
    COleDispatchDriver sheet(CallForDispatch(sheets, L"Item", DISPATCH_PROPERTYGET, COleVariant(L"sheet1")));
    COleDispatchDriver range(GetDispatch(sheet, L"Cells"));
    range.SetProperty(range.GetIDOfName(L"NumberFormat"), VT_BSTR, L"@");

    std::vector<int> width = widths != nullptr ? std::vector<int>(widths, widths + columns)
                                               : std::vector<int>(static_cast<size_t>(columns), 0);
    const DISPID item = range.GetIDOfName(L"Item");
    WriteRow(range, item, 1, headers.GetData(), width, widths == nullptr);
    for (int r = 0; r < rows; ++r) {
        WriteRow(range, item, r + 2, cells.GetData() + static_cast<INT_PTR>(r) * columns, width, widths == nullptr);
        if (progress != nullptr)
            progress(rows - 1, r);
    }
    SetWidths(sheet, width);
    if (show)
        app.SetProperty(app.GetIDOfName(L"Visible"), VT_BOOL, TRUE);
    if (file != nullptr)
        Save(book, file);
    if (!show) {
        static const BYTE parms[] = VTS_VARIANT VTS_VARIANT VTS_VARIANT;
        book.InvokeHelper(book.GetIDOfName(L"Close"), DISPATCH_METHOD, VT_EMPTY, nullptr, parms,
                          static_cast<const VARIANT*>(missing), static_cast<const VARIANT*>(missing),
                          static_cast<const VARIANT*>(missing));
    }
    return 0;
}

}  // namespace QM
