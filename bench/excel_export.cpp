// excel_export.cpp - what QM::ExportToExcelTable adds to the automation calls
// it has to make: a 10,000 x 10 table exported through the library, against
// a bare loop writing the same cells through IDispatch::Invoke, both into the
// Excel stand-in, in the same run. The export should cost at most 1.2 times
// the calls themselves.
//
//   excel-export: ExportToExcelTable 1.10 s, bare Range.Item loop 1.00 s, ratio 1.10 (target <= 1.2)
#include "BenchDispatch.h"

#include <algorithm>
#include <cstdio>

namespace {

const int kRows = 10000;
const int kColumns = 10;

// The cells the export writes, header row included, as bare puts.
void BareLoop(const CStringArray& headers, const CStringArray& cells)
{
    IDispatch* app = bench::Create(L"Excel.Application");
    if (app == nullptr)
        return;
    VARIANT books = bench::Call(app, L"Workbooks", DISPATCH_PROPERTYGET, {});
    VARIANT book = bench::Call(V_DISPATCH(&books), L"Add", DISPATCH_METHOD, {bench::Missing()});
    VARIANT sheets = bench::Call(V_DISPATCH(&book), L"Worksheets", DISPATCH_PROPERTYGET, {});
    VARIANT sheet = bench::Call(V_DISPATCH(&sheets), L"Item", DISPATCH_PROPERTYGET, {bench::Long(1)});
    VARIANT range = bench::Call(V_DISPATCH(&sheet), L"Cells", DISPATCH_PROPERTYGET, {});
    IDispatch* cellsObject = V_DISPATCH(&range);
    const DISPID item = bench::Id(cellsObject, L"Item");
    for (int r = 0; r <= kRows; ++r)
        for (int c = 0; c < kColumns; ++c) {
            VARIANT text;
            V_VT(&text) = VT_BSTR;
            V_BSTR(&text) = SysAllocString(r == 0 ? headers[c] : cells[(r - 1) * kColumns + c]);
            bench::Invoke(cellsObject, item, DISPATCH_PROPERTYPUT, {bench::Long(r + 1), bench::Long(c + 1), text});
            VariantClear(&text);
        }
    for (VARIANT* v : {&range, &sheet, &sheets, &book, &books})
        VariantClear(v);
    app->Release();
}

}  // namespace

int main()
{
    CStringArray headers, cells;
    for (int c = 0; c < kColumns; ++c) {
        CString text;
        text.Format(L"列%d", c + 1);
        headers.Add(text);
    }
    for (int i = 0; i < kRows * kColumns; ++i) {
        CString text;
        text.Format(L"%07d", i);
        cells.Add(text);
    }
    CoInitialize(nullptr);
    double bare = 1e9, library = 1e9;
    int rc = 0;
    for (int round = 0; round < 2 && rc == 0; ++round) {
        double start = bench::Seconds();
        BareLoop(headers, cells);
        bare = std::min(bare, bench::Seconds() - start);
        start = bench::Seconds();
        rc = QM::ExportToExcelTable(nullptr, headers, cells, nullptr, L"", nullptr, 0);
        library = std::min(library, bench::Seconds() - start);
    }
    CoUninitialize();
    if (rc != 0) {
        std::printf("excel-export: ExportToExcelTable gave %d (is the stand-in registered?)\n", rc);
        return 1;
    }
    std::printf("excel-export: ExportToExcelTable %.2f s, bare Range.Item loop %.2f s, ratio %.2f (target <= 1.2)\n",
                library, bare, library / bare);
    return 0;
}
