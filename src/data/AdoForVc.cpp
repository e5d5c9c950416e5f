// AdoForVc.cpp - database access through "ADODB.Connection" and
// "ADODB.Recordset", late bound.
#include "data/AdoForVc.h"

#include "frame/Messages.h"

namespace {

// ADO's enumeration values this class passes.
const long adModeReadWrite = 3;
const long adOptionUnspecified = -1;
const long adExecuteNoRecords = 128;
const long adOpenForwardOnly = 0;
const long adLockReadOnly = 1;
const long adCmdText = 1;
const long adSchemaTables = 20;
const long adGetRowsRest = -1;

COleVariant Missing()
{
    return COleVariant(static_cast<long>(DISP_E_PARAMNOTFOUND), VT_ERROR);
}

// Shows `what` followed by the exception's description, frees the exception.
void ShowFailure(const wchar_t* what, COleDispatchException* e)
{
    QM::MsgOk(nullptr, CString(what) + e->m_strDescription);
    e->Delete();
}

LPDISPATCH GetDispatch(const COleDispatchDriver& object, const wchar_t* name)
{
    LPDISPATCH result = nullptr;
    object.GetProperty(object.GetIDOfName(name), VT_DISPATCH, &result);
    return result;
}

// One field of the recordset's current row: Fields.Item(name).
LPDISPATCH GetField(const COleDispatchDriver& recordset, const COleVariant& index)
{
    static const BYTE parms[] = VTS_VARIANT;
    COleDispatchDriver fields(GetDispatch(recordset, L"Fields"));
    LPDISPATCH field = nullptr;
    fields.InvokeHelper(fields.GetIDOfName(L"Item"), DISPATCH_PROPERTYGET | DISPATCH_METHOD, VT_DISPATCH, &field,
                        parms, static_cast<const VARIANT*>(index));
    return field;
}

BOOL GetBool(const COleDispatchDriver& object, const wchar_t* name)
{
    BOOL value = FALSE;
    object.GetProperty(object.GetIDOfName(name), VT_BOOL, &value);
    return value;
}

void CallMethod(const COleDispatchDriver& object, const wchar_t* name)
{
    object.InvokeHelper(object.GetIDOfName(name), DISPATCH_METHOD, VT_EMPTY, nullptr, nullptr);
}

// A cell as text; a value that has none (NULL above all) gives an empty one.
CString CellText(VARIANT& value)
{
    CString text;
    if (V_VT(&value) == VT_BSTR) {
        text = CString(V_BSTR(&value), static_cast<int>(SysStringLen(V_BSTR(&value))));
    } else {
        VARIANT converted;
        VariantInit(&converted);
        if (SUCCEEDED(VariantChangeType(&converted, &value, 0, VT_BSTR)))
            text = CString(V_BSTR(&converted), static_cast<int>(SysStringLen(V_BSTR(&converted))));
        VariantClear(&converted);
    }
    return text.TrimRight();
}

}  // namespace

CAdoForVc::CAdoForVc()
{
    AfxOleInitThread();
    m_bCreated = m_cn.CreateDispatch(L"ADODB.Connection") ? 1 : 0;
    if (!m_bCreated)
        QM::MsgOk(nullptr, L"创建ADO连接对象失败!");
}

CAdoForVc::CAdoForVc(const wchar_t* connectionString) : CAdoForVc()
{
    m_strCnString = connectionString;
    if (m_bCreated)
        ConnectToDB();
}

CAdoForVc::~CAdoForVc()
{
    if (m_bCreated)
        DeConnectDB();
    m_cn.ReleaseDispatch();
    AfxOleTermThread();
}

int CAdoForVc::OpenAccess(const wchar_t* path)
{
    CString text = L"Provider=Microsoft.ACE.OLEDB.12.0;";
    text += L"Data Source=";
    text += path;
    text += L";";
    text += L"Persist Security Info=False";
    return ConnectToDB(text);
}

int CAdoForVc::ConnectToDB(const wchar_t* connectionString)
{
    if (!m_bCreated) {
        if (!m_cn.CreateDispatch(L"ADODB.Connection")) {
            QM::MsgOk(nullptr, L"再次试图创建ADO连接对象失败!");
            return 0;
        }
        m_bCreated = 1;
    }
    if (connectionString == nullptr || *connectionString == L'\0') {
        if (m_strCnString.IsEmpty())
            m_bConnected = 0;
        else if (!m_bConnected)
            DoConnectDB();
    } else if (m_bConnected) {
        if (m_strCnString.CompareNoCase(connectionString) == 0)
            return m_bConnected;
        if (!DeConnectDB())
            return 0;
        m_strCnString = connectionString;
        DoConnectDB();
    } else {
        m_strCnString = connectionString;
        DoConnectDB();
    }
    return m_bConnected;
}

void CAdoForVc::DoConnectDB()
{
    static const BYTE parms[] = VTS_BSTR VTS_BSTR VTS_BSTR VTS_I4;
    try {
        m_cn.SetProperty(m_cn.GetIDOfName(L"Mode"), VT_I4, adModeReadWrite);
        m_cn.InvokeHelper(m_cn.GetIDOfName(L"Open"), DISPATCH_METHOD, VT_EMPTY, nullptr, parms,
                          m_strCnString.GetString(), L"", L"", adOptionUnspecified);
        m_bConnected = 1;
    } catch (COleDispatchException* e) {
        e->Delete();   // a failed attempt is silent; the caller sees the flag
    }
}

int CAdoForVc::DeConnectDB()
{
    if (!m_bConnected)
        return 1;
    try {
        CallMethod(m_cn, L"Close");
    } catch (COleDispatchException* e) {
        ShowFailure(L"断开数据库连接失败!\n错误描述:", e);
        return 0;
    }
    m_bConnected = 0;
    return 1;
}

int CAdoForVc::ExecuteSQL(const wchar_t* sql)
{
    if (!m_bCreated || !m_bConnected)
        return 0;
    static const BYTE parms[] = VTS_BSTR VTS_VARIANT VTS_I4;
    const COleVariant missing = Missing();
    try {
        m_cn.InvokeHelper(m_cn.GetIDOfName(L"Execute"), DISPATCH_METHOD, VT_EMPTY, nullptr, parms, sql,
                          static_cast<const VARIANT*>(missing), adExecuteNoRecords);
    } catch (COleDispatchException* e) {
        ShowFailure(L"执行SQL语句失败!\n错误描述:", e);
        return 0;
    }
    return 1;
}

void CAdoForVc::ReadFields(const COleDispatchDriver& recordset)
{
    m_arrFieldName.RemoveAll();
    m_arrFieldType.RemoveAll();
    COleDispatchDriver fields(GetDispatch(recordset, L"Fields"));
    long count = 0;
    fields.GetProperty(fields.GetIDOfName(L"Count"), VT_I4, &count);
    for (long i = 0; i < count; ++i) {
        COleDispatchDriver field(GetField(recordset, COleVariant(i)));
        CString name;
        long type = 0;
        field.GetProperty(field.GetIDOfName(L"Name"), VT_BSTR, &name);
        field.GetProperty(field.GetIDOfName(L"Type"), VT_I4, &type);
        m_arrFieldName.Add(name);
        m_arrFieldType.Add(static_cast<UINT>(type));
    }
}

// All remaining rows in one GetRows call, an array indexed (field, row).
int CAdoForVc::ReadRows(const COleDispatchDriver& recordset, CStringArray& out)
{
    static const BYTE parms[] = VTS_I4 VTS_VARIANT VTS_VARIANT;
    const COleVariant missing = Missing();
    VARIANT result;
    VariantInit(&result);
    recordset.InvokeHelper(recordset.GetIDOfName(L"GetRows"), DISPATCH_METHOD, VT_VARIANT, &result, parms,
                           adGetRowsRest, static_cast<const VARIANT*>(missing), static_cast<const VARIANT*>(missing));
    COleSafeArray rows;
    rows.Attach(result);
    long fieldLow = 0, fieldHigh = -1, rowLow = 0, rowHigh = -1;
    rows.GetLBound(1, &fieldLow);
    rows.GetUBound(1, &fieldHigh);
    rows.GetLBound(2, &rowLow);
    rows.GetUBound(2, &rowHigh);
    const long fieldCount = fieldHigh - fieldLow + 1, rowCount = rowHigh - rowLow + 1;
    out.RemoveAll();
    VARIANT* cells = nullptr;
    rows.AccessData(reinterpret_cast<void**>(&cells));
    for (long row = 0; row < rowCount; ++row)
        for (long field = 0; field < fieldCount; ++field)
            out.Add(CellText(cells[row * fieldCount + field]));
    rows.UnaccessData();
    return static_cast<int>(rowCount);
}

int CAdoForVc::GetRecordFromDB(const wchar_t* sql, CStringArray& out)
{
    if (!m_bCreated || !m_bConnected)
        return 0;
    COleDispatchDriver recordset;
    if (!recordset.CreateDispatch(L"ADODB.Recordset"))
        return 0;
    static const BYTE parms[] = VTS_VARIANT VTS_VARIANT VTS_I4 VTS_I4 VTS_I4;
    try {
        const COleVariant source(sql);
        VARIANT connection;
        V_VT(&connection) = VT_DISPATCH;
        V_DISPATCH(&connection) = m_cn.m_lpDispatch;   // borrowed for the call
        recordset.InvokeHelper(recordset.GetIDOfName(L"Open"), DISPATCH_METHOD, VT_EMPTY, nullptr, parms,
                               static_cast<const VARIANT*>(source), &connection, adOpenForwardOnly, adLockReadOnly,
                               adCmdText);
        ReadFields(recordset);
        const int rows = GetBool(recordset, L"BOF") && GetBool(recordset, L"EOF") ? 0 : ReadRows(recordset, out);
        CallMethod(recordset, L"Close");
        return rows;
    } catch (COleDispatchException* e) {
        m_nLastError = e->m_scError != 0 ? static_cast<int>(e->m_scError) : e->m_wCode;
        ShowFailure(L"取数据失败!\n错误描述:", e);
        return 0;
    }
}

int CAdoForVc::GetAllTableName(CStringArray& out)
{
    if (!m_bCreated)
        return 0;
    static const BYTE parms[] = VTS_I4 VTS_VARIANT VTS_VARIANT;
    const COleVariant missing = Missing();
    try {
        LPDISPATCH schema = nullptr;
        m_cn.InvokeHelper(m_cn.GetIDOfName(L"OpenSchema"), DISPATCH_METHOD, VT_DISPATCH, &schema, parms,
                          adSchemaTables, static_cast<const VARIANT*>(missing), static_cast<const VARIANT*>(missing));
        COleDispatchDriver tables(schema);
        const COleVariant typeName(L"TABLE_TYPE"), tableName(L"TABLE_NAME");
        while (!GetBool(tables, L"EOF")) {
            CString type, name;
            COleDispatchDriver typeField(GetField(tables, typeName));
            typeField.GetProperty(typeField.GetIDOfName(L"Value"), VT_BSTR, &type);
            if (type.CompareNoCase(L"TABLE") == 0) {
                COleDispatchDriver nameField(GetField(tables, tableName));
                nameField.GetProperty(nameField.GetIDOfName(L"Value"), VT_BSTR, &name);
                out.Add(name);
            }
            CallMethod(tables, L"MoveNext");
        }
    } catch (COleDispatchException* e) {
        e->Delete();   // no open connection or no schema from the provider: nothing listed
        return 0;
    }
    return 1;
}

int CAdoForVc::QMDelRecord(const wchar_t* table, const wchar_t* where)
{
    CString sql = CString(L"delete from ") + table;
    if (where != nullptr)
        sql += CString(L" where ") + where;
    return ExecuteSQL(sql);
}

int CAdoForVc::QuoteNeeded(long type)
{
    switch (type) {
    case 7: case 8: case 129: case 130: case 133: case 134: case 135: case 200: case 201: case 202: case 203:
        return 1;
    default:
        return 0;
    }
}
