// MessageSequence.h - what a host dialog received, compared with what a
// test expects, in the manner of Wine's comctl32 conformance tests.
//
//   static const ExpectedMsg kSelect[] = {
//       {WM_COMMAND, kLParamIsHost, MAKEWPARAM(IDC_LIST, LBN_SELCHANGE)},
//       {0}};
//   EXPECT_TRUE(SequenceMatches(host.Received(), kSelect, host.Window()));
#pragma once
#include <windows.h>

#include <gtest/gtest.h>

#include <vector>

// One message as the dialog got it: WM_COMMAND (wParam, lParam), WM_NOTIFY
// (wParam = idFrom, code = NMHDR code) or a private message (WM_USER range).
struct ReceivedMsg
{
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    UINT code;
};

enum ExpectedFlags : UINT
{
    kOptional = 1,      // may be missing
    kLParamIsHost = 2,  // lParam must be the dialog's own window
};

struct ExpectedMsg
{
    UINT message;  // 0 ends a table
    UINT flags;
    WPARAM wParam;
    UINT code;     // WM_NOTIFY code
};

// Walks both in step, skipping optional entries that do not match; on a
// difference tells the expected and the received entry.
::testing::AssertionResult SequenceMatches(const std::vector<ReceivedMsg>& received, const ExpectedMsg* expected,
                                           HWND host);
