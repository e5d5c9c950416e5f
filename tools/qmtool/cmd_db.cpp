// cmd_db.cpp - qmtool db: tables, queries and statements on a database
// through CAdoForVc. DB is an Access file (.mdb, .accdb) or a connection
// string; the library's failure boxes are answered and echoed to stderr.
#include "qmtool.h"

namespace qmtool {
namespace {

bool IsAccessFile(const CString& db)
{
    const CString ext = QM::GetFileExt(db);
    return ext.CompareNoCase(L"mdb") == 0 || ext.CompareNoCase(L"accdb") == 0;
}

bool Open(CAdoForVc& ado, const CString& db)
{
    if (ado.m_bCreated && (IsAccessFile(db) ? ado.OpenAccess(db) : ado.ConnectToDB(db)))
        return true;
    Err(L"qmtool db: cannot open database " + db + L"\n");
    return false;
}

int Tables(CAdoForVc& ado)
{
    CStringArray names;
    if (!ado.GetAllTableName(names)) {
        Err(L"qmtool db: the database gives no table list\n");
        return kFailed;
    }
    CString text;
    for (INT_PTR i = 0; i < names.GetSize(); ++i)
        text += names[i] + L"\n";
    Out(text);
    return kOk;
}

// One record a line, whatever the values hold: backslash, tab and line
// breaks inside a value are written as \\, \t, \r and \n.
CString TabField(CString value)
{
    value.Replace(L"\\", L"\\\\");
    value.Replace(L"\t", L"\\t");
    value.Replace(L"\r", L"\\r");
    value.Replace(L"\n", L"\\n");
    return value;
}

// RFC 4180: a field holding a comma, a quote or a line break is quoted, its
// quotes doubled.
CString CsvField(CString value)
{
    if (value.FindOneOf(L",\"\r\n") < 0)
        return value;
    value.Replace(L"\"", L"\"\"");
    return L"\"" + value + L"\"";
}

// The default: a header of "name (type)" fields, then one line per row,
// tab-separated. CSV: a byte-order mark (so the spreadsheet program reads
// the text as UTF-8), a header of the names, CR LF after each record.
int Query(CAdoForVc& ado, const CString& sql, bool csv)
{
    CStringArray cells;
    ado.m_nLastError = 0;
    const int rows = ado.GetRecordFromDB(sql, cells);
    if (rows == 0 && ado.m_nLastError != 0)
        return kFailed;
    const INT_PTR columns = ado.m_arrFieldName.GetSize();
    const wchar_t* const separator = csv ? L"," : L"\t";
    const wchar_t* const end = csv ? L"\r\n" : L"\n";
    CString text = csv ? L"\xFEFF" : L"";
    for (INT_PTR c = 0; c < columns; ++c) {
        text += c > 0 ? separator : L"";
        if (csv)
            text += CsvField(ado.m_arrFieldName[c]);
        else
            text.AppendFormat(L"%s (%u)", TabField(ado.m_arrFieldName[c]).GetString(), ado.m_arrFieldType[c]);
    }
    text += end;
    for (INT_PTR i = 0; i < static_cast<INT_PTR>(rows) * columns; ++i)
        text += (csv ? CsvField(cells[i]) : TabField(cells[i])) + ((i + 1) % columns == 0 ? end : separator);
    Out(text);
    return kOk;
}

int RunDb(const Command& self, Args& args)
{
    const bool csv = args.Flag(L"csv");
    if (int bad = args.Reject(self, 2, 3, L"needs an action and DB (and SQL for query and exec)"))
        return bad;
    const std::vector<CString>& words = args.Positional();
    const CString action = words[0];
    const bool needsSql = action == L"query" || action == L"exec";
    if ((action != L"tables" && !needsSql) || words.size() != (needsSql ? 3u : 2u))
        return Usage(self, L"the actions are tables DB, query DB SQL and exec DB SQL");
    if (csv && action != L"query")
        return Usage(self, L"--csv goes with query only");
    EchoMessageBoxes echo;
    CAdoForVc ado;
    if (!Open(ado, words[1]))
        return kFailed;
    if (action == L"tables")
        return Tables(ado);
    if (action == L"query")
        return Query(ado, words[2], csv);
    const bool done = ado.ExecuteSQL(words[2]) != 0;
    Out(done ? L"done\n" : L"");
    return done ? kOk : kFailed;
}

Command db{L"db", L"db tables DB | db query DB SQL [--csv] | db exec DB SQL",
           L"list tables, print a query's rows or run a statement; DB is an .mdb or .accdb file or an ADO connection "
           L"string",
           RunDb, L"qmtool db query --csv a.mdb \"select * from T\" > t.csv",
           L"tables: one name a line; query: a header of names (type codes), then one line a record, tab-separated, "
           L"with \\\\ \\t \\r \\n escaped (--csv: RFC 4180 in UTF-8 with a byte-order mark); exec: \"done\""};

}  // namespace
}  // namespace qmtool
