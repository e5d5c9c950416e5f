// MessageSequence.cpp - comparing a received sequence with a table.
#include "support/MessageSequence.h"

#include <sstream>

namespace {

bool Same(const ReceivedMsg& got, const ExpectedMsg& want, HWND host)
{
    return got.message == want.message && got.wParam == want.wParam &&
           got.code == want.code && ((want.flags & kLParamIsHost) == 0 || got.lParam == reinterpret_cast<LPARAM>(host));
}

std::string Describe(const ReceivedMsg& msg)
{
    std::ostringstream text;
    text << "msg 0x" << std::hex << msg.message << " wParam 0x" << msg.wParam << " lParam 0x" << msg.lParam
         << " code " << std::dec << static_cast<int>(msg.code);
    return text.str();
}

} // namespace

::testing::AssertionResult SequenceMatches(const std::vector<ReceivedMsg>& received, const ExpectedMsg* expected,
                                           HWND host)
{
    size_t at = 0;
    for (; expected->message != 0; ++expected)
    {
        if (at < received.size() && Same(received[at], *expected, host))
            ++at;
        else if ((expected->flags & kOptional) == 0)
            return ::testing::AssertionFailure()
                   << "expected " << Describe({expected->message, expected->wParam, 0, expected->code})
                   << (expected->flags & kLParamIsHost ? " from the host" : "") << ", received "
                   << (at < received.size() ? Describe(received[at]) : "nothing") << " (entry " << at << " of "
                   << received.size() << ")";
    }
    if (at != received.size())
        return ::testing::AssertionFailure() << "unexpected " << Describe(received[at]);
    return ::testing::AssertionSuccess();
}
