// ChildProcess.h - programs of the build run as child processes: one test of
// this executable again in a fresh process, for cases that need the
// library's once-per-process answers (cached folders, switches) to start
// from nothing, and qmtool as a user runs it, its output kept.
//
//   TEST(Folders, RetriedAfterFailure) { EXPECT_EQ(0, qmtest::RunInChild("FoldersChild.RetriedAfterFailure")); }
//   TEST(FoldersChild, RetriedAfterFailure) { QMTEST_CHILD_ONLY(); ...; qmtest::ChildReached(); }
//   EXPECT_EQ(1, qmtest::RunQmtool(L"rm Q:\\", output));
#pragma once
#include <QMUtil.h>
#include <gtest/gtest.h>

namespace qmtest {

bool IsChildProcess();
// Runs this executable with --gtest_filter=`test`; returns its exit code (0
// when every selected test passed), -1 when it could not start, and -2 when
// it passed without reaching ChildReached() (a filter that selected nothing,
// or a test that skipped). With `startupIni` the child runs from copies of
// this executable and QMUtil.dll beside an INIT.ini holding those bytes, so
// its library loads them.
int RunInChild(const char* test, const char* startupIni = nullptr);
// Called by a child test at its end, so the parent knows it really ran.
void ChildReached();
// Runs qmtool.exe (beside this executable) with `arguments`; returns its
// exit code, or -1 when it could not start, with standard output and
// standard error in `output`.
int RunQmtool(const CString& arguments, CString& output);

}  // namespace qmtest

#define QMTEST_CHILD_ONLY() do { if (!qmtest::IsChildProcess()) GTEST_SKIP() << "runs in a child"; } while (0)
