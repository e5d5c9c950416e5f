// Throws.h - whether an action raised the platform's invalid-argument fault,
// and the cause of the file fault it raised.
//
//   EXPECT_TRUE(qmtest::ThrowsInvalidArg([&] { names.GetAt(99); }));
//   EXPECT_EQ(CFileException::fileNotFound, qmtest::FileFaultCause([&] { CFile::Remove(L"none"); }));
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

// Runs `action`; the m_cause of the CFileException* it threw (freed), or -1.
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
