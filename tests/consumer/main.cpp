// main.cpp - an application built against the installed QMUtil package: one
// call into each part of the library. Exit code 0 when every answer is right,
// else the number of wrong ones, each named on stderr.
#include <QMUtil.h>

#include <cstdio>

// An index fault inside the library reaches the application as CException*,
// on 64-bit Windows only: 32-bit builds cannot unwind through the DLL boundary
// (see the README), so there the fault would end the process and is not made.
static bool IndexFaultReachesCaller()
{
#if defined(_WIN64)
    try {
        CStringArray().GetAt(0);
    } catch (CException* e) {
        e->Delete();
        return true;
    }
    return false;
#else
    return true;
#endif
}

int main()
{
    unsigned char slide[QM::kSlideHeaderSize] = {};
    slide[19] = 0x7F;   // high X dot 639, low byte first
    slide[20] = 0x02;
    QM::SlideHeader header{};
    CStringArray fields;
    const struct { const char* what; bool right; } checks[] = {
        {"index fault caught", IndexFaultReachesCaller()},
        {"revision text", CString(QM::GetLibVersionNumber()).Left(8) == L"[ 1.42 ]"},
        {"start-up file beside the DLL", QM::CInitSetting().GetSetting(L"SoftName", L"", L"System") == L"QMConsumer"},
        {"tolerance from the start-up file", QM::ZERO() == 0.001},
        {"splitting", QM::SeparateString(L"a,\"b,c\"", L',', fields, true) == 2 && fields[1] == L"b,c"},
        {"unknown path macro kept", QM::FixSystemDir(L"%NOSUCH%\\x") == L"%NOSUCH%\\x"},
        {"CAD colour 1 is red", QM::CADColorIndexToRGB(1) == RGB(255, 0, 0)},
        {"slide header", QM::ReadSlideHeader(slide, sizeof slide, header) && header.highX == 639},
        {"folder part", QM::GetFilePath(L"C:\\x\\a.dwg") == L"C:\\x\\"},
    };
    int wrong = 0;
    for (const auto& check : checks) {
        if (!check.right)
            std::fprintf(stderr, "wrong: %s\n", check.what);
        wrong += check.right ? 0 : 1;
    }
    return wrong;
}
