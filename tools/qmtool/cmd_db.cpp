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

// A header of "name (type)" fields, then one line per row, tab-separated.
int Query(CAdoForVc& ado, const CString& sql)
{
    CStringArray cells;
    ado.m_nLastError = 0;
    const int rows = ado.GetRecordFromDB(sql, cells);
    if (rows == 0 && ado.m_nLastError != 0)
        return kFailed;
    const INT_PTR columns = ado.m_arrFieldName.GetSize();
    CString text;
    for (INT_PTR c = 0; c < columns; ++c)
        text.AppendFormat(L"%s%s (%u)", c > 0 ? L"\t" : L"", ado.m_arrFieldName[c].GetString(), ado.m_arrFieldType[c]);
    text += L"\n";
    for (INT_PTR i = 0; i < static_cast<INT_PTR>(rows) * columns; ++i)
        text += cells[i] + ((i + 1) % columns == 0 ? L"\n" : L"\t");
    Out(text);
    return kOk;
}

int RunDb(const Command& self, Args& args)
{
    if (int bad = args.Reject(self, 2, 3, L"needs an action and DB (and SQL for query and exec)"))
        return bad;
    const std::vector<CString>& words = args.Positional();
    const CString action = words[0];
    const bool needsSql = action == L"query" || action == L"exec";
    if ((action != L"tables" && !needsSql) || words.size() != (needsSql ? 3u : 2u))
        return Usage(self, L"the actions are tables DB, query DB SQL and exec DB SQL");
    EchoMessageBoxes echo;
    CAdoForVc ado;
    if (!Open(ado, words[1]))
        return kFailed;
    if (action == L"tables")
        return Tables(ado);
    if (action == L"query")
        return Query(ado, words[2]);
    const bool done = ado.ExecuteSQL(words[2]) != 0;
    Out(done ? L"done\n" : L"");
    return done ? kOk : kFailed;
}

Command db{L"db", L"db tables|query|exec DB [SQL]", L"list tables, print a query's rows or run SQL", RunDb,
           L"qmtool db query a.mdb \"select * from T\"", L"tables: one name a line; query: a header, then one line a row"};

}  // namespace
}  // namespace qmtool
