// Qmtool.h - the command-line tool run as a user runs it, its output kept.
//
//   CString output;
//   EXPECT_EQ(1, qmtest::RunQmtool(L"rm Q:\\", output));
#pragma once
#include <QMUtil.h>

namespace qmtest {

// Runs qmtool.exe (beside this executable) with `arguments`; returns its
// exit code, or -1 when it could not start, with standard output and
// standard error in `output`.
int RunQmtool(const CString& arguments, CString& output);

}  // namespace qmtest
