// cmd_export.cpp - qmtool export: a UTF-8 CSV file (header row first) into
// an Excel workbook through QM::ExportToExcelTable.
#include "qmtool.h"

namespace qmtool {
namespace {

// Splits CSV text into rows of fields: commas, double quotes around fields
// that hold commas, quotes or line breaks, "" for a quote inside them.
std::vector<std::vector<CString>> ParseCsv(const CString& text)
{
    std::vector<std::vector<CString>> rows(1, std::vector<CString>(1));
    bool quoted = false;
    for (int i = 0; i < text.GetLength(); ++i) {
        const wchar_t c = text[i];
        if (quoted && c == L'"' && i + 1 < text.GetLength() && text[i + 1] == L'"')
            rows.back().back() += text[i++];
        else if (c == L'"')
            quoted = !quoted;
        else if (!quoted && c == L',')
            rows.back().emplace_back();
        else if (!quoted && (c == L'\n' || c == L'\r')) {
            if (c == L'\r' && i + 1 < text.GetLength() && text[i + 1] == L'\n')
                ++i;
            rows.emplace_back(1);
        } else
            rows.back().back() += c;
    }
    while (!rows.empty() && rows.back().size() == 1 && rows.back()[0].IsEmpty())
        rows.pop_back();   // the final line break
    return rows;
}

bool ReadCsv(const CString& path, std::vector<std::vector<CString>>& rows)
{
    std::vector<unsigned char> bytes;
    if (!ReadAll(path, bytes))
        return false;
    const size_t bom = bytes.size() >= 3 && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF ? 3 : 0;
    const char* utf8 = reinterpret_cast<const char*>(bytes.data()) + bom;
    const int length = static_cast<int>(bytes.size() - bom);
    CString text;
    const int chars = MultiByteToWideChar(CP_UTF8, 0, utf8, length, nullptr, 0);
    MultiByteToWideChar(CP_UTF8, 0, utf8, length, text.GetBufferSetLength(chars), chars);
    text.ReleaseBuffer(chars);
    rows = ParseCsv(text);
    return true;
}

void ShowProgress(int last, int row)
{
    CString text;
    text.Format(L"\rrow %d of %d", row + 1, last + 1);
    Out(row == last ? text + L"\n" : text);
}

bool ParseWidths(const CString& list, size_t count, std::vector<int>& widths)
{
    for (int start = 0; start <= list.GetLength();) {
        int end = list.Find(L',', start);
        end = end < 0 ? list.GetLength() : end;
        int width = 0;
        if (!ParseInt(list.Mid(start, end - start), width))
            return false;
        widths.push_back(width);
        start = end + 1;
    }
    return widths.size() == count;
}

int Export(const std::vector<std::vector<CString>>& rows, const CString& out, int* widths, bool show)
{
    CStringArray headers, cells;
    for (const CString& h : rows[0])
        headers.Add(h);
    for (size_t r = 1; r < rows.size(); ++r)
        for (const CString& cell : rows[r])
            cells.Add(cell);
    EchoMessageBoxes echo;
    try {
        const int rc = QM::ExportToExcelTable(out.IsEmpty() ? nullptr : out.GetString(), headers, cells, ShowProgress,
                                              L"", widths, show);
        static const wchar_t* const kWhy[] = {L"", L"a row has the wrong field count", L"more than 512 columns",
                                             L"COM would not start", L"Excel.Application cannot be created"};
        if (rc < 0)
            Err(CString(L"qmtool export: ") + kWhy[-rc] + L"\n");
        return rc < 0 ? kFailed : kOk;
    } catch (COleDispatchException* e) {
        Err(L"qmtool export: Excel failed: " + e->m_strDescription + L"\n");
        e->Delete();
        return kFailed;
    }
}

int RunExport(const Command& self, Args& args)
{
    const bool show = args.Flag(L"show");
    bool hasWidths = false;
    const CString widthList = args.Option(L"widths", &hasWidths);
    if (int bad = args.Reject(self, 1, 2, L"needs CSV and optionally OUT"))
        return bad;
    std::vector<std::vector<CString>> rows;
    if (!ReadCsv(args.Positional()[0], rows) || rows.empty()) {
        Err(L"qmtool export: cannot read " + args.Positional()[0] + L" (or it is empty)\n");
        return kFailed;
    }
    for (size_t r = 1; r < rows.size(); ++r)
        if (rows[r].size() != rows[0].size()) {
            CString text;
            text.Format(L"qmtool export: row %d has %d fields, the header %d\n", static_cast<int>(r + 1),
                        static_cast<int>(rows[r].size()), static_cast<int>(rows[0].size()));
            Err(text);
            return kFailed;
        }
    std::vector<int> widths;
    if (hasWidths && !ParseWidths(widthList, rows[0].size(), widths))
        return Usage(self, L"--widths needs one whole number per column");
    return Export(rows, args.Positional().size() > 1 ? args.Positional()[1] : CString(), hasWidths ? widths.data() : nullptr,
                  show);
}

Command exportCommand{L"export", L"export CSV [OUT] [--widths 10,-1,...] [--show]",
                      L"a CSV table into an Excel workbook (saved to OUT)", RunExport,
                      L"qmtool export t.csv 'C:\\out\\t.xls' --widths 10,-1", L"where the workbook was saved"};

}  // namespace
}  // namespace qmtool
