// ScratchDrive.h - a free drive letter mapped to a fresh temporary folder, so
// tests can aim at a whole drive without risking one.
//   qmtest::ScratchDrive drive;  drive.Folder().WriteFile(L"keep.txt", "k");   // drive.Root() + L"keep.txt"
#pragma once
#include "support/TempDir.h"

namespace qmtest {

class ScratchDrive
{
public:
    ScratchDrive();
    ~ScratchDrive();
    ScratchDrive(const ScratchDrive&) = delete;
    ScratchDrive& operator=(const ScratchDrive&) = delete;

    bool Mapped() const { return m_letter != 0; }
    wchar_t Letter() const { return m_letter; }
    CString Root() const { return CString(m_letter) + L":\\"; }
    const TempDir& Folder() const { return m_folder; }

private:
    TempDir m_folder;
    wchar_t m_letter = 0;
};

}  // namespace qmtest
