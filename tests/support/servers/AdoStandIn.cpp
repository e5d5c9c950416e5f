// AdoStandIn.cpp - "ADODB.Connection" and "ADODB.Recordset" backed by real
// databases through ODBC (Wine's odbc32 reaches unixODBC): the Access
// provider's connection string is served by the MDBTools driver on the named
// file, any other string goes to ODBC as it stands, Windows paths in it made
// Linux paths. A query is read whole when it is opened; errors carry the
// driver's own message.
#include "StandIn.h"

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <memory>

namespace standin {
namespace {

// The codes real ADO raises in these cases.
const HRESULT kConnectFailed = E_FAIL;
const HRESULT kCommandFailed = static_cast<HRESULT>(0x80040E14);   // errors in the command
const HRESULT kObjectClosed = static_cast<HRESULT>(0x800A0E78);
const HRESULT kObjectOpen = static_cast<HRESULT>(0x800A0E79);
const HRESULT kNoCurrentRecord = static_cast<HRESULT>(0x800A0BCD);
const HRESULT kNotCapable = static_cast<HRESULT>(0x800A0CB3);
const HRESULT kItemNotFound = static_cast<HRESULT>(0x800A0CC1);

const wchar_t kClosedText[] = L"Operation is not allowed when the object is closed.";
const wchar_t kNoRecordText[] = L"Either BOF or EOF is True, or the current record has been deleted.";

std::wstring DriverMessage(SQLSMALLINT type, SQLHANDLE handle)
{
    SQLWCHAR state[6] = {}, text[1024] = {};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    SQLGetDiagRecW(type, handle, 1, state, &native, text, 1024, &length);
    return text[0] != 0 ? reinterpret_cast<wchar_t*>(text) : L"The ODBC driver refused the request.";
}

struct Statement
{
    SQLHSTMT h = SQL_NULL_HSTMT;
    ~Statement()
    {
        if (h != SQL_NULL_HSTMT)
            SQLFreeHandle(SQL_HANDLE_STMT, h);
    }
};

// A result held whole: names, ADO type codes and cells row-major.
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
    case SQL_TINYINT: return {17, VT_UI1};
    case SQL_BIGINT: return {20, VT_I8};
    case SQL_REAL:
    case SQL_FLOAT: return {4, VT_R4};   // MDBTools reports Access's Single as SQL_FLOAT
    case SQL_DOUBLE: return {5, VT_R8};
    case SQL_DECIMAL:
    case SQL_NUMERIC: return {6, VT_CY};
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
    case SQL_DATETIME:
    case SQL_TIMESTAMP: return {7, VT_DATE};
    case SQL_BIT: return {11, VT_BOOL};
    case SQL_BINARY:
    case SQL_VARBINARY:
    case SQL_LONGVARBINARY: return {205, VT_ARRAY | VT_UI1};
    case SQL_LONGVARCHAR:
    case SQL_WLONGVARCHAR: return {203, VT_BSTR};
    default: return {size == 0 || size > 255 ? 203 : 202, VT_BSTR};   // MDBTools: a Memo is VARCHAR of size 0
    }
}

// The bytes of one cell; false for NULL or a failure (then `failed` is set).
bool GetBytes(SQLHSTMT st, SQLUSMALLINT column, SQLSMALLINT cType, std::string& bytes, bool& failed)
{
    char buffer[4096];
    const SQLLEN room = sizeof buffer - (cType == SQL_C_WCHAR ? sizeof(SQLWCHAR) : 0);
    SQLLEN got = 0;
    SQLRETURN rc;
    while ((rc = SQLGetData(st, column, cType, buffer, sizeof buffer, &got)) == SQL_SUCCESS ||
           rc == SQL_SUCCESS_WITH_INFO) {
        if (got == SQL_NULL_DATA)
            return false;
        bytes.append(buffer, static_cast<size_t>(got == SQL_NO_TOTAL || got > room ? room : got));
        if (rc == SQL_SUCCESS)
            break;
    }
    failed = rc != SQL_SUCCESS && rc != SQL_NO_DATA;
    return !failed;
}

// One cell as ADO gives it: the driver's text converted to the column's
// type, kept as text when it does not convert, so no value is lost.
bool ReadCell(SQLHSTMT st, SQLUSMALLINT column, VARTYPE vt, VARIANT& cell)
{
    std::string bytes;
    bool failed = false;
    const bool binary = vt == (VT_ARRAY | VT_UI1);
    if (!GetBytes(st, column, binary ? SQL_C_BINARY : SQL_C_WCHAR, bytes, failed)) {
        V_VT(&cell) = VT_NULL;
        return !failed;
    }
    if (binary) {
        V_VT(&cell) = vt;
        V_ARRAY(&cell) = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
        return V_ARRAY(&cell) != nullptr && (std::copy(bytes.begin(), bytes.end(), static_cast<char*>(V_ARRAY(&cell)->pvData)), true);
    }
    V_VT(&cell) = VT_BSTR;
    V_BSTR(&cell) = SysAllocStringLen(reinterpret_cast<const wchar_t*>(bytes.data()), static_cast<UINT>(bytes.size() / 2));
    if (vt != VT_BSTR)
        VariantChangeTypeEx(&cell, &cell, LOCALE_INVARIANT, 0, vt);
    return true;
}

// Describes and fetches every row of an executed statement.
bool ReadTable(SQLHSTMT st, Table& table)
{
    SQLSMALLINT count = 0;
    SQLNumResultCols(st, &count);
    if (count == 0)
        return true;   // a statement that returns no rows
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
    SQLRETURN rc;
    while ((rc = SQLFetch(st)) == SQL_SUCCESS || rc == SQL_SUCCESS_WITH_INFO)
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
    auto toUnix = reinterpret_cast<ToUnix>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
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

class Recordset;

class Connection : public Object
{
public:
    Connection() : Object(L"Connection", {L"Mode", L"Open", L"Close", L"Execute", L"OpenSchema", L"BeginTrans", L"RollbackTrans"}) {}
    ~Connection() override { Disconnect(); }
    HRESULT Call(int member, WORD flags, Args& a, VARIANT* result) override;
    // Runs `sql` (the table list when null) into `table`; DISP_E_EXCEPTION
    // with the driver's message when it fails.
    HRESULT Query(Args& a, const std::wstring* sql, Table& table);

private:
    HRESULT Open(Args& a);
    HRESULT Execute(Args& a, VARIANT* result);
    void Disconnect();

    long m_mode = 0;
    SQLHENV m_env = SQL_NULL_HENV;
    SQLHDBC m_dbc = SQL_NULL_HDBC;
};

class Recordset : public Object
{
public:
    Recordset() : Object(L"Recordset", {L"Open", L"Close", L"Fields", L"BOF", L"EOF", L"GetRows", L"MoveNext"}) {}
    HRESULT Call(int member, WORD flags, Args& a, VARIANT* result) override;
    bool AtEnd() const { return m_pos >= m_table->Rows(); }

    std::unique_ptr<Table> m_table;   // null while closed
    size_t m_pos = 0;

private:
    HRESULT GetRows(Args& a, VARIANT* result);
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

void Connection::Disconnect()
{
    if (m_dbc != SQL_NULL_HDBC) {
        SQLDisconnect(m_dbc);
        SQLFreeHandle(SQL_HANDLE_DBC, m_dbc);
    }
    if (m_env != SQL_NULL_HENV)
        SQLFreeHandle(SQL_HANDLE_ENV, m_env);
    m_dbc = SQL_NULL_HDBC;
    m_env = SQL_NULL_HENV;
}

HRESULT Connection::Open(Args& a)
{
    if (m_dbc != SQL_NULL_HDBC)
        return Raise(a, kObjectOpen, L"Operation is not allowed when the object is open.");
    const std::wstring odbc = OdbcString(a.Text(0));
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_env);
    SQLSetEnvAttr(m_env, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, m_env, &m_dbc);
    SQLWCHAR out[1024];
    SQLSMALLINT length = 0;
    const SQLRETURN rc = SQLDriverConnectW(m_dbc, nullptr, reinterpret_cast<SQLWCHAR*>(const_cast<wchar_t*>(odbc.c_str())),
                                           SQL_NTS, out, 1024, &length, SQL_DRIVER_NOPROMPT);
    if (SQL_SUCCEEDED(rc))
        return S_OK;
    const std::wstring message = DriverMessage(SQL_HANDLE_DBC, m_dbc);
    SQLFreeHandle(SQL_HANDLE_DBC, m_dbc);   // never connected: no SQLDisconnect
    m_dbc = SQL_NULL_HDBC;
    Disconnect();
    return Raise(a, kConnectFailed, message);
}

HRESULT Connection::Query(Args& a, const std::wstring* sql, Table& table)
{
    if (m_dbc == SQL_NULL_HDBC)
        return Raise(a, kObjectClosed, kClosedText);
    Statement st;
    SQLAllocHandle(SQL_HANDLE_STMT, m_dbc, &st.h);
    const SQLRETURN rc = sql != nullptr
        ? SQLExecDirectW(st.h, reinterpret_cast<SQLWCHAR*>(const_cast<wchar_t*>(sql->c_str())), SQL_NTS)
        : SQLTablesW(st.h, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0);
    if ((!SQL_SUCCEEDED(rc) && rc != SQL_NO_DATA) || !ReadTable(st.h, table))
        return Raise(a, kCommandFailed, DriverMessage(SQL_HANDLE_STMT, st.h));
    return S_OK;
}

// Execute(CommandText, [RecordsAffected], [Options]): with option 128 no
// recordset is made, else an open one is returned.
HRESULT Connection::Execute(Args& a, VARIANT* result)
{
    if (m_dbc == SQL_NULL_HDBC)
        return Raise(a, kObjectClosed, kClosedText);
    const std::wstring sql = a.Text(0);
    if (!(a.Long(2, 0) & 128)) {
        auto* records = new Recordset;
        records->m_table = std::make_unique<Table>();
        const HRESULT hr = Query(a, &sql, *records->m_table);
        return SUCCEEDED(hr) ? Return(result, records) : (records->Release(), hr);
    }
    Statement st;
    SQLAllocHandle(SQL_HANDLE_STMT, m_dbc, &st.h);
    const SQLRETURN rc = SQLExecDirectW(st.h, reinterpret_cast<SQLWCHAR*>(const_cast<wchar_t*>(sql.c_str())), SQL_NTS);
    if (!SQL_SUCCEEDED(rc) && rc != SQL_NO_DATA)
        return Raise(a, kCommandFailed, DriverMessage(SQL_HANDLE_STMT, st.h));
    SQLLEN rows = 0;
    SQLRowCount(st.h, &rows);
    if (a.Count() > 1 && V_VT(a.v[1]) == (VT_BYREF | VT_I4))
        *V_I4REF(a.v[1]) = static_cast<LONG>(rows);
    return S_OK;
}

HRESULT Connection::Call(int member, WORD flags, Args& a, VARIANT* result)
{
    switch (member) {
    case 0:
        if (flags & DISPATCH_PROPERTYPUT)
            return m_mode = a.Long(0, 0), S_OK;
        return Return(result, m_mode);
    case 1: return Open(a);
    case 2:
        if (m_dbc == SQL_NULL_HDBC)
            return Raise(a, kObjectClosed, kClosedText);
        if (!SQL_SUCCEEDED(SQLDisconnect(m_dbc)))   // a transaction still open, say
            return Raise(a, kConnectFailed, DriverMessage(SQL_HANDLE_DBC, m_dbc));
        return Disconnect(), S_OK;
    case 3: return Execute(a, result);
    case 5:
    case 6: {
        if (m_dbc == SQL_NULL_HDBC)
            return Raise(a, kObjectClosed, kClosedText);
        if (member == 6)
            SQLEndTran(SQL_HANDLE_DBC, m_dbc, SQL_ROLLBACK);
        const SQLULEN autoCommit = member == 5 ? SQL_AUTOCOMMIT_OFF : SQL_AUTOCOMMIT_ON;
        SQLSetConnectAttrW(m_dbc, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(autoCommit), 0);
        return S_OK;
    }
    default: {
        if (a.Long(0, -1) != 20)
            return Raise(a, kNotCapable, L"Object or provider is not capable of performing requested operation.");
        auto* records = new Recordset;
        records->m_table = std::make_unique<Table>();
        const HRESULT hr = Query(a, nullptr, *records->m_table);
        return SUCCEEDED(hr) ? Return(result, records) : (records->Release(), hr);
    }
    }
}

// GetRows([Rows], [Start], [Fields]): the rows from the current one on, an
// array indexed (field, row).
HRESULT Recordset::GetRows(Args& a, VARIANT* result)
{
    if (AtEnd())
        return Raise(a, kNoCurrentRecord, kNoRecordText);
    if (result == nullptr)
        return S_OK;
    const size_t columns = m_table->names.size(), left = m_table->Rows() - m_pos;
    const long asked = a.Long(0, -1);
    const size_t rows = asked < 0 ? left : std::min(left, static_cast<size_t>(asked));
    SAFEARRAYBOUND bounds[2] = {{static_cast<ULONG>(columns), 0}, {static_cast<ULONG>(rows), 0}};
    SAFEARRAY* array = SafeArrayCreate(VT_VARIANT, 2, bounds);
    if (array == nullptr)
        return E_OUTOFMEMORY;
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
    if (member == 0) {
        if (m_table)
            return Raise(a, kObjectOpen, L"Operation is not allowed when the object is open.");
        auto* connection = a.Count() > 1 && V_VT(a.v[1]) == VT_DISPATCH
            ? dynamic_cast<Connection*>(Object::From(V_DISPATCH(a.v[1]))) : nullptr;
        if (connection == nullptr)
            return Raise(a, kObjectClosed, L"The connection cannot be used to perform this operation.");
        auto table = std::make_unique<Table>();
        const std::wstring sql = a.Text(0);
        const HRESULT hr = connection->Query(a, &sql, *table);
        if (SUCCEEDED(hr))
            m_table = std::move(table), m_pos = 0;
        return hr;
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
    if (member == 1) {
        const bool byName = !a.v.empty() && V_VT(a.v[0]) == VT_BSTR;
        long index = byName ? -1 : a.Long(0, -1);
        for (long c = 0; byName && index < 0 && c < columns; ++c)
            if (_wcsicmp(table->names[c].c_str(), a.Text(0).c_str()) == 0)
                index = c;
        if (index < 0 || index >= columns)
            return Raise(a, kItemNotFound, L"Item cannot be found in the collection.");
        return Return(result, new FieldObject(m_owner, index));
    }
    if (member == 2)
        return Return(result, table->names[m_column]);
    if (member == 3)
        return Return(result, table->types[m_column]);
    if (m_owner->AtEnd())
        return Raise(a, kNoCurrentRecord, kNoRecordText);
    return result == nullptr ? S_OK : VariantCopy(result, const_cast<VARIANT*>(&table->cells[m_owner->m_pos * columns + m_column]));
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
