// StartupToleranceTest.cpp - the tolerances and the text width factor as
// they come from the start-up settings. The zero tolerance and the width
// factor are read once per process, so each case runs in a fresh child
// process: the parent writes an INIT.ini, runs this executable again with
// one child test selected, and checks that it passed.
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const wchar_t kIniVariable[] = L"QM_TEST_STARTUP_INI";

// The INIT.ini the parent prepared, or empty outside a child run.
CString ChildIni()
{
    wchar_t path[MAX_PATH] = L"";
    if (GetEnvironmentVariableW(kIniVariable, path, MAX_PATH) == 0)
        return CString();
    return CString(path);
}

#define CHILD_ONLY()                                                                      \
    const CString ini = ChildIni();                                                       \
    if (ini.IsEmpty())                                                                    \
        GTEST_SKIP() << "runs in a child process started by StartupToleranceTest";        \
    ASSERT_TRUE(QM::CInitSetting().SetFilePath(ini));                                    \
    WritePrivateProfileStringW(L"Child", L"Ran", L"1", ini)

void Rewrite(const CString& ini, const wchar_t* section, const wchar_t* key, const wchar_t* value)
{
    WritePrivateProfileStringW(section, key, value, ini);
    WritePrivateProfileStringW(nullptr, nullptr, nullptr, ini);
    QM::CInitSetting().SetFilePath(ini);
}

TEST(StartupChild, ZeroIsReadOnceAndInclusive)
{
    CHILD_ONLY();
    EXPECT_EQ(QM::ZERO(), 0.25);
    EXPECT_TRUE(QM::ISZERO(0.25));
    EXPECT_TRUE(QM::ISZERO(-0.25));
    EXPECT_FALSE(QM::ISZERO(0.2500001));
    Rewrite(ini, L"Precision", L"ZERO", L"0.5");
    EXPECT_EQ(QM::ZERO(), 0.25);
}

TEST(StartupChild, TextWidthFactorIsReadOnce)
{
    CHILD_ONLY();
    EXPECT_EQ(QM::GetTextWidthFactor(), 0.5);
    Rewrite(ini, L"Software", L"TextWidthFactor", L"0.9");
    EXPECT_EQ(QM::GetTextWidthFactor(), 0.5);
}

TEST(StartupChild, TextWidthFactorNotAboveZeroFallsBack)
{
    CHILD_ONLY();
    EXPECT_EQ(QM::GetTextWidthFactor(), 0.7);
}

TEST(StartupChild, DoubleEqFollowsTheSettings)
{
    CHILD_ONLY();
    EXPECT_EQ(QM::GetDoubleEQ(), 0.5);
    EXPECT_TRUE(QM::IsDoubleEQ(1.0, 1.25));
    EXPECT_FALSE(QM::IsDoubleEQ(1.0, 1.5));

    QM::SetDoubleEQ(0.25);
    EXPECT_EQ(QM::GetDoubleEQ(), 0.25);
    wchar_t written[64] = L"";
    GetPrivateProfileStringW(L"Precision", L"DoubleEQ", L"", written, 64, ini);
    EXPECT_STREQ(written, L"0.2500000000");

    Rewrite(ini, L"Precision", L"DoubleEQ", L"0.125");
    EXPECT_EQ(QM::GetDoubleEQ(), 0.125);
    EXPECT_FALSE(QM::IsDoubleEQ(1.0, 1.125));
}

class StartupToleranceTest : public ::testing::Test
{
protected:
    // Runs child test `name` with `content` as its INIT.ini; its exit code,
    // or 0xDEAD when it could not start or did not run its body.
    DWORD RunChild(const char* name, const char* content)
    {
        const DWORD code = StartChild(name, content);
        wchar_t ran[8] = L"";
        GetPrivateProfileStringW(L"Child", L"Ran", L"", ran, 8, dir.Path() + L"INIT.ini");
        return CString(ran) == L"1" ? code : 0xDEAD;
    }

    DWORD StartChild(const char* name, const char* content)
    {
        const CString ini = dir.WriteFile(L"INIT.ini", content);
        wchar_t exe[MAX_PATH];
        GetModuleFileNameW(nullptr, exe, MAX_PATH);
        CString command;
        command.Format(L"\"%s\" --gtest_brief=1 --gtest_filter=StartupChild.%S", exe, name);
        SetEnvironmentVariableW(kIniVariable, ini);
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process = {};
        const BOOL started = CreateProcessW(nullptr, command.GetBuffer(), nullptr, nullptr, FALSE, 0, nullptr,
                                            nullptr, &startup, &process);
        SetEnvironmentVariableW(kIniVariable, nullptr);
        if (!started)
            return 0xDEAD;
        WaitForSingleObject(process.hProcess, 60000);
        DWORD code = 0xDEAD;
        GetExitCodeProcess(process.hProcess, &code);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        return code;
    }

    qmtest::TempDir dir;
};

TEST_F(StartupToleranceTest, ZeroIsReadOnceAndInclusive)
{
    EXPECT_EQ(RunChild("ZeroIsReadOnceAndInclusive", "[Precision]\r\nZERO=0.25\r\n"), 0u);
}

TEST_F(StartupToleranceTest, TextWidthFactorIsReadOnce)
{
    EXPECT_EQ(RunChild("TextWidthFactorIsReadOnce", "[Software]\r\nTextWidthFactor=0.5\r\n"), 0u);
}

TEST_F(StartupToleranceTest, TextWidthFactorOfZeroGivesTheDefault)
{
    EXPECT_EQ(RunChild("TextWidthFactorNotAboveZeroFallsBack", "[Software]\r\nTextWidthFactor=0\r\n"), 0u);
}

TEST_F(StartupToleranceTest, TextWidthFactorNotAboveTheZeroToleranceGivesTheDefault)
{
    EXPECT_EQ(RunChild("TextWidthFactorNotAboveZeroFallsBack",
                       "[Precision]\r\nZERO=0.6\r\n[Software]\r\nTextWidthFactor=0.5\r\n"),
              0u);
}

TEST_F(StartupToleranceTest, DoubleEqFollowsTheSettings)
{
    EXPECT_EQ(RunChild("DoubleEqFollowsTheSettings", "[Precision]\r\nDoubleEQ=0.5\r\n"), 0u);
}

}  // namespace
