// AdoStandIn.cpp - "ADODB.Connection" and "ADODB.Recordset" backed by real
// databases through ODBC (Wine's odbc32 reaches unixODBC). A result is read
// whole when it is opened; values come as the driver's text converted to the
// column's type (binary ones stay the driver's hex text); errors carry the
// driver's own message.
#include "StandIn.h"

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <memory>
#include <regex>

namespace standin {
namespace {

// The codes real ADO raises in these cases.
const HRESULT kConnectFailed = E_FAIL, kCommandFailed = static_cast<HRESULT>(0x80040E14),
              kObjectClosed = static_cast<HRESULT>(0x800A0E78), kNoCurrentRecord = static_cast<HRESULT>(0x800A0BCD),
              kNotFound = static_cast<HRESULT>(0x800A0CC1);
const wchar_t kClosedText[] = L"Operation is not allowed in this state of the object.";
const wchar_t kNoRecordText[] = L"Either BOF or EOF is True, or the current record has been deleted.";

std::wstring DriverMessage(SQLSMALLINT type, SQLHANDLE handle)
{
    SQLWCHAR state[6] = {}, text[1024] = {};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    SQLGetDiagRecW(type, handle, 1, state, &native, text, 1024, &length);
    return text[0] != 0 ? reinterpret_cast<wchar_t*>(text) : L"The ODBC driver refused the request.";
}

struct Column
{
    std::wstring name;
    long type;     // ADO's code
    VARTYPE vt;    // the VARIANT type ADO gives
};

// A result held whole, cells row-major.
struct Table
{
    std::vector<Column> columns;
    std::vector<VARIANT> cells;
    ~Table() { std::for_each(cells.begin(), cells.end(), [](VARIANT& cell) { VariantClear(&cell); }); }
    size_t Rows() const { return columns.empty() ? 0 : cells.size() / columns.size(); }
};

// ODBC's column types as ADO's; any other is text, 203 (Memo) when longer
// than 255 or of size 0 (MDBTools gives a Memo as VARCHAR of size 0).
const struct { SQLSMALLINT sql; long ado; VARTYPE vt; } kTypes[] = {
    {SQL_INTEGER, 3, VT_I4}, {SQL_SMALLINT, 2, VT_I2}, {SQL_BIGINT, 20, VT_I8}, {SQL_REAL, 4, VT_R4},
    {SQL_FLOAT, 4, VT_R4},   // MDBTools reports Access's Single as SQL_FLOAT
    {SQL_DOUBLE, 5, VT_R8}, {SQL_DECIMAL, 6, VT_CY}, {SQL_NUMERIC, 6, VT_CY}, {SQL_TYPE_DATE, 7, VT_DATE},
    {SQL_TYPE_TIMESTAMP, 7, VT_DATE}, {SQL_DATETIME, 7, VT_DATE}, {SQL_TIMESTAMP, 7, VT_DATE}, {SQL_BIT, 11, VT_BOOL},
    {SQL_BINARY, 205, VT_BSTR}, {SQL_VARBINARY, 205, VT_BSTR}, {SQL_LONGVARBINARY, 205, VT_BSTR},
    {SQL_LONGVARCHAR, 203, VT_BSTR}, {SQL_WLONGVARCHAR, 203, VT_BSTR}};

// One cell; a text that does not convert to the column's type stays text,
// so no value is lost. False when the driver fails.
bool ReadCell(SQLHSTMT st, SQLUSMALLINT column, VARTYPE vt, VARIANT& cell)
{
    std::wstring text;
    SQLWCHAR buffer[2048];
    SQLLEN got = 0;
    SQLRETURN rc;
    while (SQL_SUCCEEDED(rc = SQLGetData(st, column, SQL_C_WCHAR, buffer, sizeof buffer, &got))) {
        if (got == SQL_NULL_DATA)
            return V_VT(&cell) = VT_NULL, true;
        const SQLLEN room = ARRAYSIZE(buffer) - 1, chars = got == SQL_NO_TOTAL ? room : got / 2;
        text.append(reinterpret_cast<wchar_t*>(buffer), static_cast<size_t>(std::min(chars, room)));
        if (rc == SQL_SUCCESS)
            break;
    }
    V_VT(&cell) = VT_BSTR;
    V_BSTR(&cell) = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (vt != VT_BSTR)
        VariantChangeTypeEx(&cell, &cell, LOCALE_INVARIANT, 0, vt);
    return rc == SQL_SUCCESS || rc == SQL_NO_DATA;
}

// Describes and fetches every row of an executed statement.
bool ReadTable(SQLHSTMT st, Table& table)
{
    SQLSMALLINT count = 0;
    SQLNumResultCols(st, &count);
    for (SQLUSMALLINT c = 1; c <= count; ++c) {
        SQLWCHAR name[256] = {};
        SQLSMALLINT length = 0, type = 0, digits = 0, nullable = 0;
        SQLULEN size = 0;
        if (!SQL_SUCCEEDED(SQLDescribeColW(st, c, name, 256, &length, &type, &size, &digits, &nullable)))
            return false;
        Column column{reinterpret_cast<wchar_t*>(name), size == 0 || size > 255 ? 203 : 202, VT_BSTR};
        for (const auto& t : kTypes)
            if (t.sql == type)
                column.type = t.ado, column.vt = t.vt;
        table.columns.push_back(column);
    }
    SQLRETURN rc = SQL_NO_DATA;
    while (count > 0 && SQL_SUCCEEDED(rc = SQLFetch(st)))
        for (SQLUSMALLINT c = 1; c <= count; ++c) {
            table.cells.emplace_back();
            VariantInit(&table.cells.back());
            if (!ReadCell(st, c, table.columns[c - 1].vt, table.cells.back()))
                return false;
        }
    return rc == SQL_NO_DATA;
}

// The Linux path the drivers need; the text as given when Wine cannot tell.
std::wstring UnixPath(const std::wstring& path)
{
    using ToUnix = char*(CDECL*)(const wchar_t*);
    auto toUnix = reinterpret_cast<ToUnix>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
    char* unix = toUnix != nullptr ? toUnix(path.c_str()) : nullptr;
    if (unix == nullptr)
        return path;
    wchar_t result[MAX_PATH * 4] = {};
    MultiByteToWideChar(CP_UTF8, 0, unix, -1, result, ARRAYSIZE(result) - 1);
    HeapFree(GetProcessHeap(), 0, unix);
    return result;
}

// ODBC's form of an ADO connection string: the Access provider's file goes
// to MDBTools, any other string to ODBC as it stands, its file path made Linux's.
std::wstring OdbcString(const std::wstring& ado)
{
    const auto icase = std::regex_constants::icase;
    static const std::wregex access(L"Provider=Microsoft\\.ACE\\.OLEDB[^;]*;.*Data Source=([^;]*)", icase);
    static const std::wregex path(L"(Data Source|Database|DBQ)=([A-Za-z]:[^;]*|\\\\\\\\[^;]*)", icase);
    std::wsmatch m;
    if (std::regex_search(ado, m, access))
        return L"DRIVER={MDBTools};DBQ=" + UnixPath(m[1]);
    if (std::regex_search(ado, m, path))
        return m.prefix().str() + m[1].str() + L"=" + UnixPath(m[2]) + m.suffix().str();
    return ado;
}

// Mode is taken and ignored: the drivers open read-write. BeginTrans and
// RollbackTrans let a test hold a transaction open, which makes Close fail.
class Connection : public Object
{
public:
    Connection()
        : Object(L"Connection", {L"Mode", L"Open", L"Close", L"Execute", L"OpenSchema", L"BeginTrans", L"RollbackTrans"}) {}
    ~Connection() override { Free(); }
    HRESULT Call(int member, WORD flags, Args& a, VARIANT* result) override;
    // Runs `sql` (the table list when null) into a new table.
    HRESULT Query(Args& a, const std::wstring* sql, std::unique_ptr<Table>& table);

private:
    HRESULT Open(Args& a);
    void Free()
    {
        SQLFreeHandle(SQL_HANDLE_DBC, m_dbc);
        SQLFreeHandle(SQL_HANDLE_ENV, m_env);
        m_dbc = SQL_NULL_HDBC;
        m_env = SQL_NULL_HENV;
    }

    SQLHENV m_env = SQL_NULL_HENV;
    SQLHDBC m_dbc = SQL_NULL_HDBC;   // set while open
};

// What a recordset and the fields taken from it share; the table is null while closed.
struct Cursor
{
    std::unique_ptr<Table> table;
    size_t pos = 0;
    bool AtEnd() const { return pos >= table->Rows(); }
};

// A Recordset, its Fields, or one Field of them.
enum Kind { kRecordset, kFields, kField };
const wchar_t* const kKindNames[] = {L"Recordset", L"Fields", L"Field"};
const std::vector<const wchar_t*> kMembers[] = {
    {L"Open", L"Close", L"Fields", L"BOF", L"EOF", L"GetRows", L"MoveNext"}, {L"Count", L"Item"}, {L"Name", L"Type", L"Value"}};

class Records : public Object
{
public:
    Records(Kind kind, std::shared_ptr<Cursor> cursor, long column = -1)
        : Object(kKindNames[kind], kMembers[kind]), m_kind(kind), m_cursor(std::move(cursor)), m_column(column) {}
    HRESULT Call(int member, WORD flags, Args& a, VARIANT* result) override;

private:
    HRESULT Open(Args& a);
    HRESULT GetRows(Args& a, VARIANT* result);
    HRESULT Item(Args& a, VARIANT* result);

    const Kind m_kind;
    std::shared_ptr<Cursor> m_cursor;
    const long m_column;
};

HRESULT Connection::Open(Args& a)
{
    if (m_dbc != SQL_NULL_HDBC)
        return Raise(a, kConnectFailed, kClosedText);
    const std::wstring odbc = OdbcString(a.Text(0));
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_env);
    SQLSetEnvAttr(m_env, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, m_env, &m_dbc);
    SQLWCHAR out[1024];
    SQLSMALLINT length = 0;
    if (SQL_SUCCEEDED(SQLDriverConnectW(m_dbc, nullptr, reinterpret_cast<SQLWCHAR*>(const_cast<wchar_t*>(odbc.c_str())),
                                       SQL_NTS, out, 1024, &length, SQL_DRIVER_NOPROMPT)))
        return S_OK;
    const std::wstring message = DriverMessage(SQL_HANDLE_DBC, m_dbc);
    Free();
    return Raise(a, kConnectFailed, message);
}

HRESULT Connection::Query(Args& a, const std::wstring* sql, std::unique_ptr<Table>& table)
{
    if (m_dbc == SQL_NULL_HDBC)
        return Raise(a, kObjectClosed, kClosedText);
    SQLHSTMT st = SQL_NULL_HSTMT;
    SQLAllocHandle(SQL_HANDLE_STMT, m_dbc, &st);
    const SQLRETURN rc = sql != nullptr
        ? SQLExecDirectW(st, reinterpret_cast<SQLWCHAR*>(const_cast<wchar_t*>(sql->c_str())), SQL_NTS)
        : SQLTablesW(st, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0);
    auto read = std::make_unique<Table>();
    const bool ok = (SQL_SUCCEEDED(rc) || rc == SQL_NO_DATA) && ReadTable(st, *read);
    const std::wstring message = ok ? L"" : DriverMessage(SQL_HANDLE_STMT, st);
    SQLFreeHandle(SQL_HANDLE_STMT, st);
    if (!ok)
        return Raise(a, kCommandFailed, message);
    table = std::move(read);
    return S_OK;
}

HRESULT Connection::Call(int member, WORD, Args& a, VARIANT* result)
{
    if (member < 2)
        return member == 0 ? S_OK : Open(a);
    if (m_dbc == SQL_NULL_HDBC)
        return Raise(a, kObjectClosed, kClosedText);
    auto cursor = std::make_shared<Cursor>();
    const std::wstring sql = a.Text(0);
    switch (member) {
    case 2:   // refused while a transaction is open, as ADO refuses
        if (!SQL_SUCCEEDED(SQLDisconnect(m_dbc)))
            return Raise(a, kConnectFailed, DriverMessage(SQL_HANDLE_DBC, m_dbc));
        return Free(), S_OK;
    case 5: case 6:   // autocommit off; rolled back and on again
        if (member == 6)
            SQLEndTran(SQL_HANDLE_DBC, m_dbc, SQL_ROLLBACK);
        SQLSetConnectAttrW(m_dbc, SQL_ATTR_AUTOCOMMIT,
                           reinterpret_cast<SQLPOINTER>(member == 5 ? SQL_AUTOCOMMIT_OFF : SQL_AUTOCOMMIT_ON), 0);
        return S_OK;
    case 4:   // OpenSchema(20): the tables, every kind, as ADO lists them
        if (a.Long(0, -1) != 20)
            return Raise(a, kNotFound, L"Object or provider is not capable of performing requested operation.");
        break;
    }
    // Execute(CommandText, [RecordsAffected], [Options]): option 128 makes no recordset.
    const HRESULT hr = Query(a, member == 3 ? &sql : nullptr, cursor->table);
    if (FAILED(hr) || (member == 3 && (a.Long(2, 0) & 128)))
        return hr;
    return Return(result, new Records(kRecordset, cursor));
}

// Open(Source, ActiveConnection, ...): always forward-only and read-only.
HRESULT Records::Open(Args& a)
{
    auto* connection = a.Count() > 1 && V_VT(a.v[1]) == VT_DISPATCH && !m_cursor->table
        ? dynamic_cast<Connection*>(Object::From(V_DISPATCH(a.v[1]))) : nullptr;
    const std::wstring sql = a.Text(0);
    m_cursor->pos = 0;
    return connection != nullptr ? connection->Query(a, &sql, m_cursor->table) : Raise(a, kObjectClosed, kClosedText);
}

// GetRows([Rows], [Start], [Fields]): the rows from the current one on, an
// array indexed (field, row).
HRESULT Records::GetRows(Args& a, VARIANT* result)
{
    Cursor& c = *m_cursor;
    const size_t columns = c.table->columns.size(), left = c.table->Rows() - c.pos;
    const size_t rows = a.Long(0, -1) < 0 ? left : std::min(left, static_cast<size_t>(a.Long(0, -1)));
    SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(columns), 0}, {static_cast<ULONG>(rows), 0}};
    SAFEARRAY* array = SafeArrayCreate(VT_VARIANT, 2, bounds);
    if (array == nullptr || result == nullptr)
        return array != nullptr ? SafeArrayDestroy(array) : E_OUTOFMEMORY;
    VARIANT* cells = static_cast<VARIANT*>(array->pvData);
    for (size_t i = 0; i < rows * columns; ++i)
        VariantCopy(&cells[i], &c.table->cells[c.pos * columns + i]);
    c.pos += rows;
    V_VT(result) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(result) = array;
    return S_OK;
}

// Fields.Item(index or name).
HRESULT Records::Item(Args& a, VARIANT* result)
{
    const std::vector<Column>& columns = m_cursor->table->columns;
    const bool byName = !a.v.empty() && V_VT(a.v[0]) == VT_BSTR;
    long index = byName ? -1 : a.Long(0, -1);
    for (size_t c = 0; byName && index < 0 && c < columns.size(); ++c)
        index = _wcsicmp(columns[c].name.c_str(), a.Text(0).c_str()) == 0 ? static_cast<long>(c) : -1;
    if (index < 0 || index >= static_cast<long>(columns.size()))
        return Raise(a, kNotFound, L"Item cannot be found in the collection.");
    return Return(result, new Records(kField, m_cursor, index));
}

HRESULT Records::Call(int member, WORD, Args& a, VARIANT* result)
{
    Cursor& c = *m_cursor;
    if (m_kind == kRecordset && member == 0)
        return Open(a);
    if (!c.table)
        return Raise(a, kObjectClosed, kClosedText);
    const bool needsRow = (m_kind == kRecordset && (member == 5 || member == 6)) || (m_kind == kField && member == 2);
    if (needsRow && c.AtEnd())
        return Raise(a, kNoCurrentRecord, kNoRecordText);
    const size_t columns = c.table->columns.size();
    switch (m_kind * 10 + member) {
    case kRecordset * 10 + 1: return c.table.reset(), S_OK;
    case kRecordset * 10 + 2: return Return(result, new Records(kFields, m_cursor));
    case kRecordset * 10 + 3: return Return(result, c.table->Rows() == 0, VT_BOOL);
    case kRecordset * 10 + 4: return Return(result, c.AtEnd(), VT_BOOL);
    case kRecordset * 10 + 5: return GetRows(a, result);
    case kRecordset * 10 + 6: return ++c.pos, S_OK;
    case kFields * 10: return Return(result, static_cast<long>(columns));
    case kFields * 10 + 1: return Item(a, result);
    case kField * 10: return Return(result, c.table->columns[m_column].name);
    case kField * 10 + 1: return Return(result, c.table->columns[m_column].type);
    default: return result == nullptr ? S_OK : VariantCopy(result, &c.table->cells[c.pos * columns + m_column]);
    }
}

}  // namespace

IDispatch* MakeConnection()
{
    return new Connection;
}

IDispatch* MakeRecordset()
{
    return new Records(kRecordset, std::make_shared<Cursor>());
}

}  // namespace standin
