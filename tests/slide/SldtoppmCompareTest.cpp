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

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using qmtest::SlideWriter;
const int kHighX = 199, kHighY = 149, kWidth = kHighX + 1, kHeight = kHighY + 1;
using LitMap = std::vector<bool>;  // kWidth x kHeight, row by row

// The Unix path of a Windows path through Wine's own kernel32 export.
std::string UnixPath(const CString& path)
{
    using ToUnix = char*(__cdecl*)(const wchar_t*);
    const auto toUnix = reinterpret_cast<ToUnix>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    char* name = toUnix ? toUnix(path) : nullptr;
    const std::string result = name ? name : "";
    ::HeapFree(::GetProcessHeap(), 0, name);
    return result;
}

// Lit pixels of `a` farther than one pixel from any lit pixel of `b`.
int Unmatched(const LitMap& a, const LitMap& b)
{
    int misses = 0;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
            bool matched = !a[y * kWidth + x];
            for (int nx = std::max(x - 1, 0); nx <= std::min(x + 1, kWidth - 1); ++nx)
                for (int ny = std::max(y - 1, 0); ny <= std::min(y + 1, kHeight - 1); ++ny)
                    matched = matched || b[ny * kWidth + nx];
            misses += matched ? 0 : 1;
        }
    return misses;
}

class SldtoppmCompare : public ::testing::Test
{
protected:
    // Runs sldtoppm on `sld` and reads its picture, a binary PPM with maxval
    // 255 and no comments. The shell writes to a temporary name first so
    // that a half-written file is never read.
    bool Reference(const CString& sld, LitMap& map)
    {
        const CString ppm = dir.Path() + L"ref.ppm";
        ::DeleteFileW(ppm);  // left by the previous comparison
        const std::string out = "'" + UnixPath(ppm) + "'";
        const CString script = dir.WriteFile(
            L"ref.sh", "sldtoppm '" + UnixPath(sld) + "' > " + out + ".part 2>/dev/null && mv " + out + ".part " + out + "\n");
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
        int width = 0, height = 0, maxval = 0, start = 0;
        if (std::sscanf(bytes.c_str(), "P6 %d %d %d%n", &width, &height, &maxval, &start) != 3 || maxval != 255 ||
            width != kWidth || height != kHeight || bytes.size() < start + 1 + 3u * kWidth * kHeight)
            return false;
        for (std::size_t i = start + 1; i < start + 1 + 3u * kWidth * kHeight; i += 3)
            map.push_back(bytes[i] || bytes[i + 1] || bytes[i + 2]);
        return true;
    }

    void Compare(const SlideWriter& slide, const char* what)
    {
        const CString sld = dir.WriteFile(L"cmp.sld", slide.Bytes());
        LitMap reference, ours;
        ASSERT_TRUE(Reference(sld, reference)) << what << ": sldtoppm (package netpbm) gave no picture of 200 x 150";
        qmtest::SlideCanvas canvas(kWidth, kHeight);
        QM::slideStruct s{0, &canvas.dc, 0, 0, kHighX, kHighY, sld, 0, QM::SLD_FILLALL};
        ASSERT_EQ(QM::SldBlt(&s), 0) << what;
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                ours.push_back(canvas.At(x, y) != qmtest::kBlack && canvas.At(x, y) != qmtest::kUntouched);
        EXPECT_GT(std::count(ours.begin(), ours.end(), true), 100) << what;
        EXPECT_EQ(Unmatched(ours, reference), 0) << what;
        EXPECT_EQ(Unmatched(reference, ours), 0) << what;
    }

    // A small deterministic generator, so a failure can be replayed.
    unsigned Next() { return m_seed = m_seed * 1103515245u + 12345u, (m_seed >> 16) & 0x7FFF; }
    int Delta() { return static_cast<int>(Next() % 41) - 20; }

    qmtest::TempDir dir;
    unsigned m_seed = 20020121u;
};

TEST_F(SldtoppmCompare, VectorsColoursAndFillsMatch)
{
    SlideWriter absolute(kHighX, kHighY), relative(kHighX, kHighY), fills(kHighX, kHighY);
    for (int i = 0; i < 60; ++i) {
        if (i % 7 == 0)
            absolute.Colour(1 + Next() % 255);
        absolute.Vector(Next() % kWidth, Next() % kHeight, Next() % kWidth, Next() % kHeight);
    }
    for (int i = 0; i < 12; ++i) {
        relative.Colour(1 + i * 20).Vector(60 + Next() % 80, 40 + Next() % 70, 100, 75);
        for (int j = 0; j < 5; ++j)
            relative.Endpoint(Delta(), Delta());
        relative.Offset(Delta(), Delta(), Delta(), Delta());
    }
    fills.Colour(3).Fill(4, 0xFFFF).Fill(10, 10).Fill(90, 20).Fill(80, 120).Fill(20, 100).Fill(0, 0xFFFF);
    fills.Colour(5).Fill(3, 0xFFFF).Fill(120, 10).Fill(190, 70).Fill(130, 140).Fill(0, 0xFFFF);
    fills.Colour(7).Vector(0, 0, kHighX, kHighY);
    Compare(absolute.End(), "absolute vectors and colours");
    Compare(relative.End(), "offset and endpoint vectors");
    Compare(fills.End(), "solid fills");
}

}  // namespace
