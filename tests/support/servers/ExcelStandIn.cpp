// ExcelStandIn.cpp - "Excel.Application" for the export: every call of the
// object model subset it uses is recorded (StandInExcelCalls hands the record
// over), and SaveAs writes the sheet as one XML Spreadsheet 2003 file, cells
// as text, with the column widths.
#include "StandIn.h"

#include <map>
#include <memory>

namespace standin {
namespace {

std::wstring& CallLog()
{
    static std::wstring log;
    return log;
}

struct Book
{
    std::map<std::pair<long, long>, std::wstring> cells;   // (row, column) from 1
    std::map<long, long> widths;                           // column -> characters
    std::wstring numberFormat;
};

enum Kind { kApplication, kWorkbooks, kWorkbook, kWorksheets, kWorksheet, kRange };
const wchar_t* const kKindNames[] = {L"Application", L"Workbooks", L"Workbook", L"Worksheets", L"Worksheet", L"Range"};
const std::vector<const wchar_t*> kMembers[] = {
    {L"Workbooks", L"Visible"}, {L"Add"}, {L"Worksheets", L"SaveAs", L"Saved", L"Close"},
    {L"Item"}, {L"Cells", L"Columns"}, {L"Item", L"NumberFormat", L"ColumnWidth"}};

std::string Utf8(const std::wstring& text)
{
    std::string bytes(static_cast<size_t>(WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, nullptr, 0, nullptr, nullptr)), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, &bytes[0], static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.pop_back();
    return bytes;
}

std::wstring Escape(const std::wstring& text)
{
    std::wstring out;
    for (wchar_t c : text)
        out += c == L'&' ? L"&amp;" : c == L'<' ? L"&lt;" : c == L'>' ? L"&gt;" : c == L'"' ? L"&quot;" : std::wstring(1, c);
    return out;
}

// The sheet in the form every spreadsheet program opens; a width in
// characters becomes points as Excel draws them (7-pixel digits, 5 pixels of margin).
std::wstring SheetXml(const Book& book)
{
    std::wstring xml = L"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<?mso-application progid=\"Excel.Sheet\"?>\n"
                       L"<Workbook xmlns=\"urn:schemas-microsoft-com:office:spreadsheet\" "
                       L"xmlns:ss=\"urn:schemas-microsoft-com:office:spreadsheet\">\n<Styles><Style ss:ID=\"s1\">"
                       L"<NumberFormat ss:Format=\"" + Escape(book.numberFormat) + L"\"/></Style></Styles>\n"
                       L"<Worksheet ss:Name=\"Sheet1\"><Table>\n";
    for (const auto& w : book.widths)
        xml += L"<Column ss:Index=\"" + std::to_wstring(w.first) + L"\" ss:Width=\"" +
               std::to_wstring(w.second > 0 ? (w.second * 7 + 5) * 3 / 4 : 0) + L"\"/>\n";
    long row = 0;
    for (const auto& cell : book.cells) {
        if (cell.first.first != row) {
            xml += (row != 0 ? L"</Row>\n<Row ss:Index=\"" : L"<Row ss:Index=\"") + std::to_wstring(cell.first.first) + L"\">";
            row = cell.first.first;
        }
        xml += L"<Cell ss:Index=\"" + std::to_wstring(cell.first.second) + L"\" ss:StyleID=\"s1\"><Data ss:Type=\"String\">" +
               Escape(cell.second) + L"</Data></Cell>";
    }
    return xml + (row != 0 ? L"</Row>\n" : L"") + L"</Table></Worksheet>\n</Workbook>\n";
}

// The objects live apart and share the workbook; Visible, Saved and Close
// are only recorded.
class Excel : public Object
{
public:
    Excel(Kind kind, std::shared_ptr<Book> book, long column = 0)
        : Object(kKindNames[kind], kMembers[kind]), m_kind(kind), m_book(std::move(book)), m_column(column) {}
    HRESULT Call(int member, WORD flags, Args& a, VARIANT* result) override;

private:
    HRESULT SaveAs(Args& a);
    HRESULT RangeCall(int member, bool put, Args& a, VARIANT* result);
    HRESULT Make(VARIANT* result, Kind kind, long column = 0) const
    {
        return Return(result, new Excel(kind, kind == kWorkbook ? std::make_shared<Book>() : m_book, column));
    }

    const Kind m_kind;
    std::shared_ptr<Book> m_book;
    const long m_column;   // of a Range: 0 all cells, -1 all columns, else one column
};

HRESULT Excel::SaveAs(Args& a)
{
    const std::wstring file = a.Text(0);
    const std::string bytes = Utf8(SheetXml(*m_book));
    HANDLE out = CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    const bool ok = out != INVALID_HANDLE_VALUE && WriteFile(out, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    const DWORD error = GetLastError();
    if (out != INVALID_HANDLE_VALUE)
        CloseHandle(out);
    return ok ? S_OK : Raise(a, HRESULT_FROM_WIN32(error), L"Cannot access '" + file + L"'.");
}

HRESULT Excel::RangeCall(int member, bool put, Args& a, VARIANT* result)
{
    if (member == 0 && m_column == 0 && put && a.Count() == 3)
        return m_book->cells[{a.Long(0, 0), a.Long(1, 0)}] = a.Text(2), S_OK;
    if (member == 0 && m_column == -1 && !put && a.Count() == 1)
        return Make(result, kRange, a.Long(0, 0));
    if (member == 1 && m_column == 0 && put)
        return m_book->numberFormat = a.Text(0), S_OK;
    if (member == 2 && m_column > 0 && put)
        return m_book->widths[m_column] = a.Long(0, 0), S_OK;
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT Excel::Call(int member, WORD flags, Args& a, VARIANT* result)
{
    CallLog() += CallText(member, flags, a) + L"\n";
    switch (m_kind * 10 + member) {
    case kApplication * 10: return Make(result, kWorkbooks);
    case kWorkbooks * 10: return Make(result, kWorkbook);
    case kWorkbook * 10: return Make(result, kWorksheets);
    case kWorkbook * 10 + 1: return SaveAs(a);
    case kWorksheets * 10:
        if (a.Long(0, 0) != 1 && _wcsicmp(a.Text(0).c_str(), L"Sheet1") != 0)
            return Raise(a, DISP_E_BADINDEX, L"Subscript out of range");
        return Make(result, kWorksheet);
    case kWorksheet * 10: return Make(result, kRange, 0);
    case kWorksheet * 10 + 1: return Make(result, kRange, -1);
    case kRange * 10: case kRange * 10 + 1: case kRange * 10 + 2:
        return RangeCall(member, flags & DISPATCH_PROPERTYPUT, a, result);
    default: return S_OK;
    }
}

}  // namespace

IDispatch* MakeExcel()
{
    return new Excel(kApplication, nullptr);
}

}  // namespace standin

// The calls recorded since the last clearing, one a line; the caller frees the text.
extern "C" __declspec(dllexport) BSTR WINAPI StandInExcelCalls(BOOL clear)
{
    const BSTR calls = SysAllocString(standin::CallLog().c_str());
    if (clear)
        standin::CallLog().clear();
    return calls;
}
