// Throws.h - whether an action raised the platform's invalid-argument fault.
//
//   EXPECT_TRUE(qmtest::ThrowsInvalidArg([&] { names.GetAt(99); }));
#pragma once
#include <QMUtil.h>

namespace qmtest {

// Runs `action`; true when it threw CInvalidArgException* (which is freed).
template <class F>
bool ThrowsInvalidArg(F action)
{
    try {
        action();
    } catch (CException* e) {
        const bool invalidArg = dynamic_cast<CInvalidArgException*>(e) != nullptr;
        e->Delete();
        return invalidArg;
    }
    return false;
}

}  // namespace qmtest
