// main.cpp - an application that uses QMUtil from its installed package: one
// call into each part of the library, answers checked, exit code 0 when all
// of them are right (1 otherwise, each wrong answer named on stderr).
#include <QMUtil.h>

#include <cstdio>

namespace {

struct Check
{
    const char* what;
    bool right;
};

// An index fault inside the library reaches the application as CException*.
// Only 64-bit Windows unwinds through the DLL boundary (see the README); on
// 32-bit the fault would end the process, so there the check is not made.
bool IndexFaultReachesCaller()
{
#if defined(_WIN64)
    CStringArray names;
    names.Add(L"a");
    try {
        names.GetAt(5);
    } catch (CException* e) {
        e->Delete();
        return true;
    }
    return false;
#else
    return true;
#endif
}

}  // namespace

int main()
{
    unsigned char slideHead[QM::kSlideHeaderSize] = {};
    slideHead[19] = 0x7F;   // high X dot 639, low byte first
    slideHead[20] = 0x02;
    QM::SlideHeader header{};

    CStringArray fields;
    const Check checks[] = {
        {"platform: index fault caught as CException*", IndexFaultReachesCaller()},
        {"frame: revision text", CString(QM::GetLibVersionNumber()).Left(8) == L"[ 1.42 ]"},
        {"config: start-up file beside the DLL",
         QM::CInitSetting().GetSetting(L"SoftName", L"", L"System") == L"QMConsumer"},
        {"text: tolerance from the start-up file", QM::ZERO() == 0.001},
        {"text: splitting", QM::SeparateString(L"a,\"b,c\",d", L',', fields, true) == 3 && fields[1] == L"b,c"},
        {"env: unknown macro kept", QM::FixSystemDir(L"%NOSUCH%\\x") == L"%NOSUCH%\\x"},
        {"cad: colour index 1 is red", QM::CADColorIndexToRGB(1) == RGB(255, 0, 0)},
        {"slide: header", QM::ReadSlideHeader(slideHead, sizeof slideHead, header) && header.highX == 639},
        {"fs: folder part", QM::GetFilePath(L"C:\\x\\a.dwg") == L"C:\\x\\"},
    };
    int wrong = 0;
    for (const Check& check : checks) {
        if (!check.right) {
            std::fprintf(stderr, "wrong: %s\n", check.what);
            ++wrong;
        }
    }
    std::printf("%d of %d checks right\n", static_cast<int>(sizeof checks / sizeof checks[0]) - wrong,
                static_cast<int>(sizeof checks / sizeof checks[0]));
    return wrong == 0 ? 0 : 1;
}
