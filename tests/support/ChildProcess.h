// ChildProcess.h - one test of this executable in a fresh process (the
// library's once-per-process answers start from nothing), and qmtool.
//   TEST(Folders, RetriedAfterFailure) { EXPECT_EQ(0, qmtest::RunInChild("FoldersChild.RetriedAfterFailure")); }
//   TEST(FoldersChild, RetriedAfterFailure) { QMTEST_CHILD_ONLY(); ...; qmtest::ChildReached(); }
//   EXPECT_EQ(1, qmtest::RunQmtool(L"rm Q:\\", output));
#pragma once
#include <QMUtil.h>
#include <gtest/gtest.h>

namespace qmtest {

bool IsChildProcess();
// Runs this executable with --gtest_filter=`test`: its exit code, -1 when it
// could not start, -2 when it passed without reaching ChildReached(). With
// `startupIni` it runs from a copy beside QMUtil.dll and an INIT.ini of those bytes.
int RunInChild(const char* test, const char* startupIni = nullptr);
// Called by a child test at its end, so the parent knows it really ran.
void ChildReached();
// Runs qmtool.exe beside this executable: its exit code (or -1), its output in `output`.
int RunQmtool(const CString& arguments, CString& output);

}  // namespace qmtest

#define QMTEST_CHILD_ONLY() do { if (!qmtest::IsChildProcess()) GTEST_SKIP() << "runs in a child"; } while (0)
