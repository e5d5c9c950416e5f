// AdoTests.cpp - CAdoForVc against the stand-in ADO objects over SQLite (the
// real Access files are read through MDBTools by qmtool's checks).
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "support/MsgBoxWatcher.h"
#include "support/RegGuard.h"
#include "support/TempDir.h"

namespace {

CString Joined(const CStringArray& items)
{
    CString text;
    for (INT_PTR i = 0; i < items.GetSize(); ++i)
        text += (i > 0 ? L"|" : L"") + items[i];
    return text;
}

class SqliteDb : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(db.ConnectToDB(Connection(L"t.db")));
        for (const wchar_t* sql : {L"create table t(id INTEGER, name TEXT, price REAL, made DATE, code VARCHAR(8))",
                                   L"insert into t values(1, '  钢管 ', 2.5, '2024-01-02', '007')",
                                   L"insert into t values(2, NULL, -3, NULL, '   ')"})
            ASSERT_EQ(1, db.ExecuteSQL(sql)) << sql;
    }
    CString Connection(const wchar_t* file) const { return L"DRIVER={SQLite3};Database=" + dir.Path() + file; }
    CString Query(const wchar_t* sql)
    {
        CStringArray out;
        const int rows = db.GetRecordFromDB(sql, out);
        return Joined(out) + L" #" + CString(std::to_wstring(rows).c_str());
    }

    void Call(const wchar_t* method) { db.m_cn.InvokeHelper(db.m_cn.GetIDOfName(method), DISPATCH_METHOD, VT_EMPTY, nullptr, nullptr); }

    qmtest::TempDir dir;
    CAdoForVc db;
};

// No rows leave the output alone but still refresh the fields.
TEST_F(SqliteDb, RowsComeBackRowMajorAsTrimmedText)
{
    EXPECT_STREQ(L"1|  钢管|2.5|2024/1/2|007|2||-3|| #2", Query(L"select * from t order by id"));
    EXPECT_STREQ(L"id|name|price|made|code", Joined(db.m_arrFieldName));
    const CUIntArray& types = db.m_arrFieldType;
    EXPECT_EQ(std::vector<UINT>(types.GetData(), types.GetData() + types.GetSize()), (std::vector<UINT>{3, 203, 5, 7, 202}));
    CStringArray out;
    out.Add(L"kept");
    EXPECT_EQ(0, db.GetRecordFromDB(L"select code, id from t where id > 5", out));
    EXPECT_STREQ(L"kept", Joined(out));
    EXPECT_STREQ(L"code|id", Joined(db.m_arrFieldName));
}

// A temporary table lives as long as its connection: it tells a reconnect.
TEST_F(SqliteDb, ConnectToDBReconnectsOnlyForAnotherString)
{
    ASSERT_EQ(1, db.ExecuteSQL(L"create temp table scratch(x)"));
    const wchar_t* probe = L"select count(*) from sqlite_temp_master";
    CString same = Connection(L"t.db");
    same.MakeUpper();
    const struct { CString connection; int connected; const wchar_t* temps; } rows[] = {
        {same, 1, L"1 #1"}, {L"", 1, L"1 #1"}, {Connection(L"u.db"), 1, L"0 #1"}, {L"DRIVER={NoSuchDriver}", 0, L" #0"}};
    for (const auto& row : rows) {
        EXPECT_EQ(row.connected != 0, db.ConnectToDB(row.connection) != 0) << row.connection.GetString();
        EXPECT_EQ(row.connected, db.GetCnState());
        EXPECT_STREQ(row.temps, Query(probe)) << row.connection.GetString();
    }
    EXPECT_STREQ(L"DRIVER={NoSuchDriver}", db.GetCnString());
}

TEST_F(SqliteDb, QMDelRecordWithoutConditionEmptiesTheTable)
{
    EXPECT_EQ(1, db.QMDelRecord(L"t", L"id = 1"));
    EXPECT_STREQ(L"2 #1", Query(L"select id from t"));
    EXPECT_EQ(1, db.QMDelRecord(L"t", nullptr));
    EXPECT_STREQ(L" #0", Query(L"select id from t"));
}

TEST_F(SqliteDb, FailuresShowTheirMessage)
{
    const struct { std::function<int()> action; const wchar_t* text; } rows[] = {
        {[&] { return db.ExecuteSQL(L"bogus statement"); }, L"执行SQL语句失败!\n错误描述:"},
        {[&] { return db.QMDelRecord(L"t", L""); }, L"执行SQL语句失败!\n错误描述:"},
        {[&] { CStringArray out; return db.GetRecordFromDB(L"select * from nosuch", out); }, L"取数据失败!\n错误描述:"},
        // an insert inside a transaction: the driver refuses to disconnect until it ends
        {[&] { Call(L"BeginTrans"); db.ExecuteSQL(L"insert into t values(3, 'x', 0, NULL, NULL)");
               return db.ConnectToDB(Connection(L"u.db")); }, L"断开数据库连接失败!\n错误描述:"},
    };
    for (const auto& row : rows) {
        qmtest::MsgBoxWatcher watcher(qmtest::MsgBoxWatcher::Press(IDOK));
        EXPECT_EQ(0, row.action()) << CString(row.text).Left(4).GetString();
        const qmtest::MsgBoxSeen& seen = watcher.Wait();
        EXPECT_STREQ(L"塔维提示！", seen.caption);
        EXPECT_STREQ(row.text, seen.text.Left(CString(row.text).GetLength()));
        EXPECT_GT(seen.text.GetLength(), CString(row.text).GetLength()) << "the driver's description follows";
    }
    EXPECT_EQ(static_cast<int>(0x80040E14), db.m_nLastError);
    Call(L"RollbackTrans");   // the connection may close again
}

TEST(AdoWithoutServer, CreationFailuresAreShown)
{
    qmtest::RegGuard guard(HKEY_CLASSES_ROOT, L"ADODB.Connection\\CLSID");
    qmtest::SetRegValue(HKEY_CLASSES_ROOT, L"ADODB.Connection\\CLSID", L"", L"{00000000-0000-0000-0000-0000000000AB}");
    std::unique_ptr<CAdoForVc> db;
    const struct { std::function<void()> action; const wchar_t* text; } rows[] = {
        {[&] { db = std::make_unique<CAdoForVc>(); }, L"创建ADO连接对象失败!"},
        {[&] { EXPECT_EQ(0, db->ConnectToDB(L"DRIVER={SQLite3}")); }, L"再次试图创建ADO连接对象失败!"},
    };
    for (const auto& row : rows) {
        qmtest::MsgBoxWatcher watcher(qmtest::MsgBoxWatcher::Press(IDOK));
        row.action();
        EXPECT_STREQ(row.text, watcher.Wait().text);
    }
    CStringArray out;
    EXPECT_EQ(0, db->GetAllTableName(out));
}

}  // namespace
