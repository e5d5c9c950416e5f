// MessageSequence.h - what a host dialog received, compared with a table.
//
//   static const ExpectedMsg kSelect[] = {{WM_COMMAND, kLParamIsHost, MAKEWPARAM(IDC_LIST, LBN_SELCHANGE)}, {0}};
//   EXPECT_TRUE(SequenceMatches(host.Received(), kSelect, host.Window()));
#pragma once
#include <windows.h>

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

// WM_COMMAND (wParam, lParam), WM_NOTIFY (wParam = idFrom, code = NMHDR
// code) or a private message of the WM_USER range.
struct ReceivedMsg
{
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    UINT code;
};

enum ExpectedFlags : UINT { kOptional = 1, kLParamIsHost = 2 };

struct ExpectedMsg
{
    UINT message;  // 0 ends a table
    UINT flags;
    WPARAM wParam;
    UINT code;
};

inline std::string Describe(const ReceivedMsg& msg)
{
    std::ostringstream text;
    text << "msg 0x" << std::hex << msg.message << " wParam 0x" << msg.wParam << " lParam 0x" << msg.lParam
         << " code " << std::dec << static_cast<int>(msg.code);
    return text.str();
}

// Walks both in step, skipping optional entries that do not match.
inline ::testing::AssertionResult SequenceMatches(const std::vector<ReceivedMsg>& got, const ExpectedMsg* want,
                                                  HWND host)
{
    size_t at = 0;
    for (; want->message != 0; ++want)
    {
        if (at < got.size() && got[at].message == want->message && got[at].wParam == want->wParam &&
            got[at].code == want->code &&
            ((want->flags & kLParamIsHost) == 0 || got[at].lParam == reinterpret_cast<LPARAM>(host)))
            ++at;
        else if ((want->flags & kOptional) == 0)
            return ::testing::AssertionFailure()
                   << "expected " << Describe({want->message, want->wParam, 0, want->code})
                   << (want->flags & kLParamIsHost ? " from the host" : "") << ", received "
                   << (at < got.size() ? Describe(got[at]) : "nothing") << " (entry " << at << " of " << got.size() << ")";
    }
    if (at != got.size())
        return ::testing::AssertionFailure() << "unexpected " << Describe(got[at]);
    return ::testing::AssertionSuccess();
}
