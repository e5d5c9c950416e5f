// Throws.h - the platform faults an action raised.
//   EXPECT_TRUE(qmtest::ThrowsInvalidArg([&] { names.GetAt(99); }));
//   EXPECT_EQ(CFileException::fileNotFound, qmtest::FileFaultCause([&] { CFile::Remove(L"none"); }));
#pragma once
#include <QMUtil.h>

namespace qmtest {

// True when `action` threw CInvalidArgException* (freed).
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

// The m_cause of the CFileException* `action` threw (freed), or -1.
template <class F>
int FileFaultCause(F action)
{
    try {
        action();
    } catch (CFileException* e) {
        const int cause = e->m_cause;
        e->Delete();
        return cause;
    }
    return -1;
}

}  // namespace qmtest
