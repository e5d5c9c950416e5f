// AdoStandIn.cpp - "ADODB.Connection" and "ADODB.Recordset" backed by real
// databases through ODBC (Wine's odbc32 reaches unixODBC): the Access
// provider's connection string is served by the MDBTools driver on the named
// file, any other string goes to ODBC as it stands, Windows paths in it made
// Linux paths. A result is read whole when it is opened; values come as the
// driver's text converted to the column's type (binary ones stay the
// driver's hex text); errors carry the driver's own message.
#include "StandIn.h"

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <memory>

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

// A result held whole: names, ADO type codes, VARIANT types, cells row-major.
struct Table
{
    std::vector<std::wstring> names;
    std::vector<long> types;
    std::vector<VARTYPE> vts;
    std::vector<VARIANT> cells;
    ~Table()
    {
        for (VARIANT& cell : cells)
            VariantClear(&cell);
    }
    size_t Rows() const { return names.empty() ? 0 : cells.size() / names.size(); }
};

// ODBC's column type as the ADO type code and the VARIANT type ADO gives.
std::pair<long, VARTYPE> MapType(SQLSMALLINT type, SQLULEN size)
{
    switch (type) {
    case SQL_INTEGER: return {3, VT_I4};
    case SQL_SMALLINT: return {2, VT_I2};
    case SQL_BIGINT: return {20, VT_I8};
    case SQL_REAL: case SQL_FLOAT: return {4, VT_R4};   // MDBTools reports Access's Single as SQL_FLOAT
    case SQL_DOUBLE: return {5, VT_R8};
    case SQL_DECIMAL: case SQL_NUMERIC: return {6, VT_CY};
    case SQL_TYPE_DATE: case SQL_TYPE_TIMESTAMP: case SQL_DATETIME: case SQL_TIMESTAMP: return {7, VT_DATE};
    case SQL_BIT: return {11, VT_BOOL};
    case SQL_BINARY: case SQL_VARBINARY: case SQL_LONGVARBINARY: return {205, VT_BSTR};
    case SQL_LONGVARCHAR: case SQL_WLONGVARCHAR: return {203, VT_BSTR};
    default: return {size == 0 || size > 255 ? 203 : 202, VT_BSTR};   // MDBTools: a Memo is VARCHAR of size 0
    }
}

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
        const auto ado = MapType(type, size);
        table.names.push_back(reinterpret_cast<wchar_t*>(name));
        table.types.push_back(ado.first);
        table.vts.push_back(ado.second);
    }
    SQLRETURN rc = SQL_NO_DATA;
    while (count > 0 && SQL_SUCCEEDED(rc = SQLFetch(st)))
        for (SQLUSMALLINT c = 1; c <= count; ++c) {
            table.cells.emplace_back();
            VariantInit(&table.cells.back());
            if (!ReadCell(st, c, table.vts[c - 1], table.cells.back()))
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
    std::wstring result(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, unix, -1, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, unix, -1, &result[0], static_cast<int>(result.size()));
    HeapFree(GetProcessHeap(), 0, unix);
    result.pop_back();
    return result;
}

// ODBC's form of an ADO connection string.
std::wstring OdbcString(const std::wstring& ado)
{
    std::wstring odbc, file;
    bool access = false;
    for (size_t start = 0; start < ado.size();) {
        const size_t end = std::min(ado.find(L';', start), ado.size()), equals = std::min(ado.find(L'=', start), end);
        const std::wstring name = ado.substr(start, equals - start);
        std::wstring value = equals < end ? ado.substr(equals + 1, end - equals - 1) : L"";
        start = end + 1;
        if (_wcsicmp(name.c_str(), L"Provider") == 0) {
            access = _wcsnicmp(value.c_str(), L"Microsoft.ACE.OLEDB", 19) == 0;
            continue;
        }
        const bool pathKey = _wcsicmp(name.c_str(), L"Data Source") == 0 || _wcsicmp(name.c_str(), L"Database") == 0 ||
                             _wcsicmp(name.c_str(), L"DBQ") == 0;
        if (pathKey && value.size() > 2 && (value[1] == L':' || value.compare(0, 2, L"\\\\") == 0))
            value = UnixPath(value);
        if (_wcsicmp(name.c_str(), L"Data Source") == 0)
            file = value;
        if (!name.empty())
            odbc += name + L"=" + value + L";";
    }
    return access ? L"DRIVER={MDBTools};DBQ=" + file : odbc;
}

class Recordset : public Object
{
public:
    explicit Recordset(std::unique_ptr<Table> table = nullptr)
        : Object(L"Recordset", {L"Open", L"Close", L"Fields", L"BOF", L"EOF", L"GetRows", L"MoveNext"}),
          m_table(std::move(table)) {}
    HRESULT Call(int member, WORD flags, Args& a, VARIANT* result) override;
    bool AtEnd() const { return m_pos >= m_table->Rows(); }

    std::unique_ptr<Table> m_table;   // null while closed
    size_t m_pos = 0;

private:
    HRESULT GetRows(Args& a, VARIANT* result);
};

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
    HRESULT Transaction(bool begin);
    void Free();

    long m_mode = 0;
    SQLHENV m_env = SQL_NULL_HENV;
    SQLHDBC m_dbc = SQL_NULL_HDBC;   // set while open
};

// Fields (Count, Item) and Field (Name, Type, Value) of an open recordset.
class FieldObject : public Object
{
public:
    FieldObject(Recordset* owner, long column)
        : Object(column < 0 ? L"Fields" : L"Field", {L"Count", L"Item", L"Name", L"Type", L"Value"}),
          m_owner(owner), m_column(column)
    {
        owner->AddRef();
    }
    ~FieldObject() override { m_owner->Release(); }
    HRESULT Call(int member, WORD flags, Args& a, VARIANT* result) override;

private:
    Recordset* m_owner;
    long m_column;   // -1 for the collection
};

void Connection::Free()
{
    if (m_dbc != SQL_NULL_HDBC)
        SQLFreeHandle(SQL_HANDLE_DBC, m_dbc);
    if (m_env != SQL_NULL_HENV)
        SQLFreeHandle(SQL_HANDLE_ENV, m_env);
    m_dbc = SQL_NULL_HDBC;
    m_env = SQL_NULL_HENV;
}

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

// BeginTrans turns the driver's autocommit off, RollbackTrans undoes and turns it on.
HRESULT Connection::Transaction(bool begin)
{
    if (!begin)
        SQLEndTran(SQL_HANDLE_DBC, m_dbc, SQL_ROLLBACK);
    const SQLULEN autoCommit = begin ? SQL_AUTOCOMMIT_OFF : SQL_AUTOCOMMIT_ON;
    SQLSetConnectAttrW(m_dbc, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(autoCommit), 0);
    return S_OK;
}

HRESULT Connection::Call(int member, WORD flags, Args& a, VARIANT* result)
{
    if (member == 0)
        return flags & DISPATCH_PROPERTYPUT ? (m_mode = a.Long(0, 0), S_OK) : Return(result, m_mode);
    if (member == 1)
        return Open(a);
    if (m_dbc == SQL_NULL_HDBC)
        return Raise(a, kObjectClosed, kClosedText);
    std::unique_ptr<Table> table;
    const std::wstring sql = a.Text(0);
    switch (member) {
    case 2:   // refused while a transaction is open, as ADO refuses
        if (!SQL_SUCCEEDED(SQLDisconnect(m_dbc)))
            return Raise(a, kConnectFailed, DriverMessage(SQL_HANDLE_DBC, m_dbc));
        return Free(), S_OK;
    case 5: case 6: return Transaction(member == 5);
    case 4:   // OpenSchema(20): the tables, every kind, as ADO lists them
        if (a.Long(0, -1) != 20)
            return Raise(a, kNotFound, L"Object or provider is not capable of performing requested operation.");
        break;
    }
    // Execute(CommandText, [RecordsAffected], [Options]): option 128 makes no recordset.
    const HRESULT hr = Query(a, member == 3 ? &sql : nullptr, table);
    if (FAILED(hr) || (member == 3 && (a.Long(2, 0) & 128)))
        return hr;
    return Return(result, new Recordset(std::move(table)));
}

// GetRows([Rows], [Start], [Fields]): the rows from the current one on, an
// array indexed (field, row).
HRESULT Recordset::GetRows(Args& a, VARIANT* result)
{
    if (AtEnd())
        return Raise(a, kNoCurrentRecord, kNoRecordText);
    const size_t columns = m_table->names.size(), left = m_table->Rows() - m_pos;
    const size_t rows = a.Long(0, -1) < 0 ? left : std::min(left, static_cast<size_t>(a.Long(0, -1)));
    SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(columns), 0}, {static_cast<ULONG>(rows), 0}};
    SAFEARRAY* array = SafeArrayCreate(VT_VARIANT, 2, bounds);
    if (array == nullptr || result == nullptr)
        return array != nullptr ? SafeArrayDestroy(array) : E_OUTOFMEMORY;
    VARIANT* cells = static_cast<VARIANT*>(array->pvData);
    for (size_t i = 0; i < rows * columns; ++i)
        VariantCopy(&cells[i], &m_table->cells[m_pos * columns + i]);
    m_pos += rows;
    V_VT(result) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(result) = array;
    return S_OK;
}

HRESULT Recordset::Call(int member, WORD, Args& a, VARIANT* result)
{
    if (member == 0) {   // Open(Source, ActiveConnection, ...): always forward-only and read-only
        auto* connection = a.Count() > 1 && V_VT(a.v[1]) == VT_DISPATCH && !m_table
            ? dynamic_cast<Connection*>(Object::From(V_DISPATCH(a.v[1]))) : nullptr;
        const std::wstring sql = a.Text(0);
        m_pos = 0;
        return connection != nullptr ? connection->Query(a, &sql, m_table) : Raise(a, kObjectClosed, kClosedText);
    }
    if (!m_table)
        return Raise(a, kObjectClosed, kClosedText);
    switch (member) {
    case 1: return m_table.reset(), S_OK;
    case 2: return Return(result, new FieldObject(this, -1));
    case 3: return Return(result, m_table->Rows() == 0, VT_BOOL);
    case 4: return Return(result, AtEnd(), VT_BOOL);
    case 5: return GetRows(a, result);
    default: return AtEnd() ? Raise(a, kNoCurrentRecord, kNoRecordText) : (++m_pos, S_OK);
    }
}

HRESULT FieldObject::Call(int member, WORD, Args& a, VARIANT* result)
{
    const Table* table = m_owner->m_table.get();
    if (table == nullptr)
        return Raise(a, kObjectClosed, kClosedText);
    if ((m_column < 0) != (member < 2))
        return DISP_E_MEMBERNOTFOUND;
    const long columns = static_cast<long>(table->names.size());
    if (member == 0)
        return Return(result, columns);
    if (member == 1) {   // Item(index or name)
        const bool byName = !a.v.empty() && V_VT(a.v[0]) == VT_BSTR;
        long index = byName ? -1 : a.Long(0, -1);
        for (long c = 0; byName && index < 0 && c < columns; ++c)
            index = _wcsicmp(table->names[c].c_str(), a.Text(0).c_str()) == 0 ? c : -1;
        if (index < 0 || index >= columns)
            return Raise(a, kNotFound, L"Item cannot be found in the collection.");
        return Return(result, new FieldObject(m_owner, index));
    }
    if (member == 2 || member == 3)
        return member == 2 ? Return(result, table->names[m_column]) : Return(result, table->types[m_column]);
    if (m_owner->AtEnd())
        return Raise(a, kNoCurrentRecord, kNoRecordText);
    return result == nullptr ? S_OK
                             : VariantCopy(result, const_cast<VARIANT*>(&table->cells[m_owner->m_pos * columns + m_column]));
}

}  // namespace

IDispatch* MakeConnection()
{
    return new Connection;
}

IDispatch* MakeRecordset()
{
    return new Recordset;
}

}  // namespace standin
