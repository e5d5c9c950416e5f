// StartupToleranceTest.cpp - the tolerances and the text width factor as the
// start-up settings give them. The zero tolerance and the width factor are
// read once per process, so each case runs in a fresh child process whose
// library starts from an INIT.ini of the parent's making.
#include "support/ChildProcess.h"

#include <string>

namespace {

// Changes the start-up file and binds it again, as another program's change
// followed by a re-read would.
void Rewrite(const wchar_t* section, const wchar_t* key, const wchar_t* value)
{
    const CString ini = QM::CInitSetting().GetFilePath();
    WritePrivateProfileStringW(section, key, value, ini);
    WritePrivateProfileStringW(nullptr, nullptr, nullptr, ini);
    QM::CInitSetting().SetFilePath(ini);
}

// ZERO and TextWidthFactor keep their first reading; DoubleEQ follows the file.
TEST(StartupChild, ZeroAndWidthAreReadOnceDoubleEqAtEveryCall)
{
    QMTEST_CHILD_ONLY();
    EXPECT_EQ(QM::ZERO(), 0.25);
    EXPECT_TRUE(QM::ISZERO(-0.25));
    EXPECT_FALSE(QM::ISZERO(0.2500001));
    EXPECT_EQ(QM::GetTextWidthFactor(), 0.5);
    EXPECT_TRUE(QM::IsDoubleEQ(1.0, 1.25));
    EXPECT_FALSE(QM::IsDoubleEQ(1.0, 1.5));
    Rewrite(L"Precision", L"ZERO", L"0.5");
    Rewrite(L"Software", L"TextWidthFactor", L"0.9");
    QM::SetDoubleEQ(0.25);
    wchar_t written[64] = L"";
    GetPrivateProfileStringW(L"Precision", L"DoubleEQ", L"", written, 64, QM::CInitSetting().GetFilePath());
    EXPECT_STREQ(written, L"0.2500000000");
    Rewrite(L"Precision", L"DoubleEQ", L"0.125");
    EXPECT_EQ(QM::ZERO(), 0.25);
    EXPECT_EQ(QM::GetTextWidthFactor(), 0.5);
    EXPECT_FALSE(QM::IsDoubleEQ(1.0, 1.125));
    EXPECT_TRUE(QM::IsDoubleEQ(1.0, 1.1));
    qmtest::ChildReached();
}

TEST(StartupChild, TextWidthFactorNotAboveZeroFallsBack)
{
    QMTEST_CHILD_ONLY();
    EXPECT_EQ(QM::GetTextWidthFactor(), 0.7);
    qmtest::ChildReached();
}

TEST(StartupTolerance, EachChildCasePassesWithItsOwnStartupFile)
{
    const struct { const char* test; const char* ini; } rows[] = {
        {"ZeroAndWidthAreReadOnceDoubleEqAtEveryCall",
         "[Precision]\r\nZERO=0.25\r\nDoubleEQ=0.5\r\n[Software]\r\nTextWidthFactor=0.5\r\n"},
        {"TextWidthFactorNotAboveZeroFallsBack", "[Software]\r\nTextWidthFactor=0\r\n"},
        {"TextWidthFactorNotAboveZeroFallsBack", "[Precision]\r\nZERO=0.6\r\n[Software]\r\nTextWidthFactor=0.5\r\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(qmtest::RunInChild(("StartupChild." + std::string(row.test)).c_str(), row.ini), 0) << row.ini;
}

}  // namespace
