// db_read.cpp - what CAdoForVc::GetRecordFromDB adds to the fetch it cannot
// avoid: reading 100,000 rows x 5 fields from SQLite through the library,
// against the ADO stand-in's own Recordset.Open and GetRows called bare, in
// the same run. Turning the cells into trimmed texts should cost at most as
// much as the fetch itself.
//
//   db-read: GetRecordFromDB 2.10 s, bare Open+GetRows 1.30 s, ratio 1.62 (target <= 2)
#include "BenchDispatch.h"

#include <algorithm>
#include <cstdio>

namespace {

const long kRows = 100000;
const wchar_t kQuery[] = L"select id, name, price, made, note from t";

// The bare fetch; the row count read, or -1.
long BareFetch(IDispatch* connection)
{
    IDispatch* records = bench::Create(L"ADODB.Recordset");
    if (records == nullptr)
        return -1;
    VARIANT sql, active;
    V_VT(&sql) = VT_BSTR;
    V_BSTR(&sql) = SysAllocString(kQuery);
    V_VT(&active) = VT_DISPATCH;
    V_DISPATCH(&active) = connection;
    VARIANT ignored = bench::Call(records, L"Open", DISPATCH_METHOD, {sql, active, bench::Long(0), bench::Long(1), bench::Long(1)});
    VARIANT rows = bench::Call(records, L"GetRows", DISPATCH_METHOD, {bench::Long(-1), bench::Missing(), bench::Missing()});
    long last = -1;
    if (V_VT(&rows) & VT_ARRAY)
        SafeArrayGetUBound(V_ARRAY(&rows), 2, &last);
    VariantClear(&rows);
    VariantClear(&ignored);
    SysFreeString(V_BSTR(&sql));
    records->Release();
    return last + 1;
}

}  // namespace

int main()
{
    wchar_t temp[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    const CString file = CString(temp) + L"qm_bench_read.db";
    DeleteFileW(file);
    CAdoForVc db(L"DRIVER={SQLite3};Database=" + file);
    CString fill;
    fill.Format(L"with recursive n(i) as (select 1 union all select i + 1 from n where i < %ld) insert into t "
                L"select i, '名称 ' || i || '  ', i * 0.25, '2024-01-02', 'note' from n", kRows);
    if (!db.ExecuteSQL(L"create table t(id INTEGER, name TEXT, price REAL, made DATE, note VARCHAR(20))") ||
        !db.ExecuteSQL(fill)) {
        std::printf("db-read: cannot make the SQLite database (is the stand-in registered?)\n");
        return 1;
    }
    double bare = 1e9, library = 1e9;
    long bareRows = 0;
    int libraryRows = 0;
    for (int round = 0; round < 2; ++round) {
        double start = bench::Seconds();
        bareRows = BareFetch(db.m_cn.m_lpDispatch);
        bare = std::min(bare, bench::Seconds() - start);
        CStringArray out;
        start = bench::Seconds();
        libraryRows = db.GetRecordFromDB(kQuery, out);
        library = std::min(library, bench::Seconds() - start);
    }
    db.ConnectToDB(L"DRIVER={SQLite3};Database=:memory:");   // lets the file go
    DeleteFileW(file);
    if (bareRows != kRows || libraryRows != kRows) {
        std::printf("db-read: rows read %ld bare, %d by the library, expected %ld\n", bareRows, libraryRows, kRows);
        return 1;
    }
    std::printf("db-read: GetRecordFromDB %.2f s, bare Open+GetRows %.2f s, ratio %.2f (target <= 2)\n", library, bare,
                library / bare);
    return 0;
}
