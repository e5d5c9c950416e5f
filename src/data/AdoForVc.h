// AdoForVc.h - one database connection through ADO's automation objects:
// run SQL, read a whole result as text, list the tables, delete records.
//
//   CAdoForVc db;
//   if (db.OpenAccess(L"D:\\Data\\parts.accdb")) {
//       CStringArray cells;
//       int rows = db.GetRecordFromDB(L"select * from Parts", cells);
//       int columns = static_cast<int>(db.m_arrFieldName.GetSize());   // cells[r * columns + c]
//   }
//
// Failures the user must see are shown in a message box with the library's
// caption and the operation gives 0; a failed connection attempt shows
// nothing. An object is used on the thread that made it.
#pragma once
#include "platform/Collections.h"
#include "platform/ole/OleDispatchDriver.h"

class QM_API CAdoForVc
{
public:
    // Starts the component library for this thread and creates the
    // connection object ("创建ADO连接对象失败!" when it cannot).
    CAdoForVc();
    // The same, then connects with `connectionString`.
    explicit CAdoForVc(const wchar_t* connectionString);
    // Disconnects, releases the connection and ends the component library.
    virtual ~CAdoForVc();
    CAdoForVc(const CAdoForVc&) = delete;
    CAdoForVc& operator=(const CAdoForVc&) = delete;

    // Connects to an Access file through the ACE provider.
    int OpenAccess(const wchar_t* path);
    // Non-zero when connected afterwards. Null or empty: (re)connect with the
    // stored string. The stored string again in any letter case while
    // connected: nothing is done.
    int ConnectToDB(const wchar_t* connectionString = nullptr);
    // Runs SQL that returns no records; 1 on success.
    int ExecuteSQL(const wchar_t* sql);
    // Reads the whole result of `sql` row-major into `out` (trailing white
    // space removed, NULL as an empty text) and returns the row count. The
    // field lists are refreshed even when no row comes; `out` is then left
    // untouched and 0 returned.
    int GetRecordFromDB(const wchar_t* sql, CStringArray& out);
    // Appends the names of the user tables to `out` and returns 1; 0
    // without a connection object, and also when the provider refuses the
    // table list (not connected): the caller's program goes on, `out` keeps
    // what it had.
    int GetAllTableName(CStringArray& out);
    // "delete from TABLE", plus " where WHERE" whenever `where` is not null
    // (an empty condition still adds the keyword); ExecuteSQL's result.
    int QMDelRecord(const wchar_t* table, const wchar_t* where);
    int GetCnState() { return m_bConnected; }
    CString GetCnString() { return m_strCnString; }

    int m_nLastError = 0;          // code of the last failure of GetRecordFromDB
    CStringArray m_arrFieldName;   // columns of the last query read
    CUIntArray m_arrFieldType;     // their ADO type codes
    int m_bCreated = 0;            // the connection object exists
    int m_bConnected = 0;
    CString m_strCnString;         // the last connection string used
    COleDispatchDriver m_cn;       // "ADODB.Connection"

private:
    void DoConnectDB();
    int DeConnectDB();
    // Whether literals of ADO type `type` are quoted in SQL.
    int QuoteNeeded(long type);
    void ReadFields(const COleDispatchDriver& recordset);
    int ReadRows(const COleDispatchDriver& recordset, CStringArray& out);
};
