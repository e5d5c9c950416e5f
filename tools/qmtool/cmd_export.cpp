// cmd_export.cpp - qmtool export: a CSV file (header row first) into
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

// The text of `bytes` in `codePage`; false when they are not valid there.
bool Decode(UINT codePage, const char* bytes, int length, CString& text)
{
    const int chars = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes, length, nullptr, 0);
    if (chars == 0 && length > 0)
        return false;
    MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes, length, text.GetBufferSetLength(chars), chars);
    text.ReleaseBuffer(chars);
    return true;
}

// UTF-8 (with or without a byte-order mark) or, as Chinese Windows programs
// save it, the ANSI code page; which one is said on standard error, since a
// wrong guess would show as wrong characters in the workbook.
bool ReadCsv(const CString& path, std::vector<std::vector<CString>>& rows, CString& why)
{
    std::vector<unsigned char> bytes;
    if (!ReadAll(path, bytes)) {
        why = L"cannot read " + path;
        return false;
    }
    const size_t bom = bytes.size() >= 3 && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF ? 3 : 0;
    const char* data = reinterpret_cast<const char*>(bytes.data()) + bom;
    const int length = static_cast<int>(bytes.size() - bom);
    CString text;
    CString encoding = L"UTF-8";
    if (!Decode(CP_UTF8, data, length, text)) {
        encoding.Format(L"the ANSI code page (%u)", GetACP());
        if (bom != 0 || !Decode(CP_ACP, data, length, text)) {
            why = path + L" is neither UTF-8 nor text in " + encoding;
            return false;
        }
    }
    Err(L"qmtool export: read " + path + L" as " + encoding + L"\n");
    rows = ParseCsv(text);
    if (rows.empty())
        why = path + L" is empty";
    return !rows.empty();
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
        // -1 leaves a column out of the sheet; a smaller width the
        // spreadsheet program refuses.
        if (!ParseInt(list.Mid(start, end - start), width) || width < -1)
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
        if (rc < 0) {
            Err(CString(L"qmtool export: ") + kWhy[-rc] + L"\n");
            return kFailed;
        }
        // The library reports a refused save in its box, not in the result.
        if (!out.IsEmpty() && !QM::IsExist(out)) {
            Err(L"qmtool export: nothing was saved to " + out + L"\n");
            return kFailed;
        }
        if (!out.IsEmpty())
            Out(L"saved " + out + L"\n");
        return kOk;
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
    for (size_t i : {0u, 1u})
        if (int bad = args.RejectEmptyPath(self, i))
            return bad;
    const CString csv = args.Positional()[0];
    const CString out = args.Positional().size() > 1 ? args.Positional()[1] : CString();
    // Without either the workbook would be made and thrown away, and the
    // real program would stay open and invisible.
    if (out.IsEmpty() && !show)
        return Usage(self, L"needs OUT, --show or both");
    if (!out.IsEmpty() && FullPath(out).CompareNoCase(FullPath(csv)) == 0)
        return Usage(self, L"OUT names the CSV file itself, which the workbook would overwrite");
    std::vector<std::vector<CString>> rows;
    CString why;
    if (!ReadCsv(csv, rows, why)) {
        Err(L"qmtool export: " + why + L"\n");
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
        return Usage(self, L"--widths needs one whole number of at least -1 per column");
    return Export(rows, out, hasWidths ? widths.data() : nullptr, show);
}

Command exportCommand{L"export", L"export CSV [OUT] [--widths 10,-1,...] [--show]",
                      L"a CSV table (UTF-8, or the ANSI code page) into an Excel workbook saved to OUT, shown with "
                      L"--show; a width of -1 leaves the column out",
                      RunExport, L"qmtool export t.csv 'C:\\out\\t.xls' --widths 10,-1",
                      L"the progress, then \"saved OUT\"; the encoding it read on standard error"};

}  // namespace
}  // namespace qmtool
