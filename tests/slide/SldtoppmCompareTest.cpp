// Our renderer against an independent one: netpbm's sldtoppm, a Linux
// program started from Wine with "start /unix". Both draw the same generated
// slides at one slide unit per pixel; every lit pixel of either picture must
// have a lit pixel of the other within one pixel (line ends and rasterising
// rules differ by that much).
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "SlideCanvas.h"
#include "support/SlideWriter.h"
#include "support/TempDir.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using qmtest::SlideWriter;

// The Unix path of a Windows path through Wine's own kernel32 export.
std::string UnixPath(const CString& path)
{
    using ToUnix = char*(__cdecl*)(const wchar_t*);
    const auto toUnix = reinterpret_cast<ToUnix>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    char* name = toUnix ? toUnix(path) : nullptr;
    const std::string result = name ? name : "";
    if (name)
        ::HeapFree(::GetProcessHeap(), 0, name);
    return result;
}

// Lit pixels of a picture, row by row.
struct LitMap
{
    int width = 0, height = 0;
    std::vector<bool> lit;
    bool At(int x, int y) const { return x >= 0 && y >= 0 && x < width && y < height && lit[y * width + x]; }
    // Lit pixels farther than one pixel from any lit pixel of `other`.
    int UnmatchedIn(const LitMap& other) const
    {
        int misses = 0;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                bool matched = !At(x, y);
                for (int d = 0; d < 9 && !matched; ++d)
                    matched = other.At(x + d % 3 - 1, y + d / 3 - 1);
                misses += matched ? 0 : 1;
            }
        return misses;
    }
};

class SldtoppmCompare : public ::testing::Test
{
protected:
    static const int kHighX = 199, kHighY = 149;

    // Runs sldtoppm on `sld` and reads its picture, a binary PPM with maxval
    // 255 and no comments. The shell writes to a temporary name first so that
    // a half-written file is never read.
    bool Reference(const CString& sld, LitMap& map)
    {
        const CString ppm = dir.Path() + L"ref.ppm";
        const std::string out = "'" + UnixPath(ppm) + "'";
        const CString script = dir.WriteFile(L"ref.sh", "sldtoppm '" + UnixPath(sld) + "' > " + out + ".part 2>/dev/null && mv " +
                                                            out + ".part " + out + "\n");
        CString command = L"start.exe /unix /bin/sh " + CString(UnixPath(script).c_str());
        STARTUPINFOW si{};
        si.cb = sizeof(si);
        PROCESS_INFORMATION pi{};
        if (!::CreateProcessW(nullptr, command.GetBuffer(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi))
            return false;
        ::CloseHandle(pi.hThread);
        ::WaitForSingleObject(pi.hProcess, 20000);
        ::CloseHandle(pi.hProcess);
        for (int waited = 0; waited < 20000 && !QM::IsExist(ppm); waited += 50)
            ::Sleep(50);
        const std::string bytes = qmtest::TempDir::ReadFile(ppm);
        int maxval = 0, consumed = 0;
        if (std::sscanf(bytes.c_str(), "P6 %d %d %d%n", &map.width, &map.height, &maxval, &consumed) != 3 || maxval != 255)
            return false;
        const std::size_t start = static_cast<std::size_t>(consumed) + 1, pixels = std::size_t(map.width) * map.height;
        if (bytes.size() < start + 3 * pixels)
            return false;
        for (std::size_t i = start; i < start + 3 * pixels; i += 3)
            map.lit.push_back(bytes[i] || bytes[i + 1] || bytes[i + 2]);
        return true;
    }

    void Compare(const SlideWriter& slide)
    {
        const CString sld = dir.WriteFile(L"cmp.sld", slide.Bytes());
        LitMap reference, ours{kHighX + 1, kHighY + 1, {}};
        ASSERT_TRUE(Reference(sld, reference)) << "sldtoppm (package netpbm) gave no picture";
        qmtest::SlideCanvas canvas(ours.width, ours.height);
        QM::slideStruct s{0, &canvas.dc, 0, 0, kHighX, kHighY, sld, 0, QM::SLD_FILLALL};
        ASSERT_EQ(QM::SldBlt(&s), 0);
        int litOurs = 0;
        for (int y = 0; y < ours.height; ++y)
            for (int x = 0; x < ours.width; ++x) {
                ours.lit.push_back(canvas.At(x, y) != qmtest::kBlack && canvas.At(x, y) != qmtest::kUntouched);
                litOurs += ours.lit.back() ? 1 : 0;
            }
        ASSERT_EQ(reference.width, ours.width);
        ASSERT_EQ(reference.height, ours.height);
        EXPECT_GT(litOurs, 100);
        EXPECT_EQ(ours.UnmatchedIn(reference), 0);
        EXPECT_EQ(reference.UnmatchedIn(ours), 0);
    }

    // A small deterministic generator, so a failure can be replayed.
    unsigned Next() { return m_seed = m_seed * 1103515245u + 12345u, (m_seed >> 16) & 0x7FFF; }
    int Delta() { return static_cast<int>(Next() % 41) - 20; }

    qmtest::TempDir dir;
    unsigned m_seed = 20020121u;
};

TEST_F(SldtoppmCompare, AbsoluteVectorsAndColoursMatch)
{
    SlideWriter slide(kHighX, kHighY);
    for (int i = 0; i < 60; ++i) {
        if (i % 7 == 0)
            slide.Colour(static_cast<std::uint8_t>(1 + Next() % 255));
        slide.Vector(Next() % (kHighX + 1), Next() % (kHighY + 1), Next() % (kHighX + 1), Next() % (kHighY + 1));
    }
    Compare(slide.End());
}

TEST_F(SldtoppmCompare, OffsetAndEndpointVectorsMatch)
{
    SlideWriter slide(kHighX, kHighY);
    for (int i = 0; i < 12; ++i) {
        slide.Colour(static_cast<std::uint8_t>(1 + i * 20)).Vector(60 + Next() % 80, 40 + Next() % 70, 100, 75);
        for (int j = 0; j < 5; ++j)
            slide.Endpoint(Delta(), Delta());
        slide.Offset(Delta(), Delta(), Delta(), Delta());
    }
    Compare(slide.End());
}

TEST_F(SldtoppmCompare, SolidFillsMatch)
{
    SlideWriter slide(kHighX, kHighY);
    slide.Colour(3).Fill(4, 0xFFFF).Fill(10, 10).Fill(90, 20).Fill(80, 120).Fill(20, 100).Fill(0, 0xFFFF);
    slide.Colour(5).Fill(3, 0xFFFF).Fill(120, 10).Fill(190, 70).Fill(130, 140).Fill(0, 0xFFFF);
    slide.Colour(7).Vector(0, 0, kHighX, kHighY);
    Compare(slide.End());
}

}  // namespace
