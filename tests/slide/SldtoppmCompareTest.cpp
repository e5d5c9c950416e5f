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
    typedef char*(__cdecl * ToUnix)(const wchar_t*);
    const auto toUnix = reinterpret_cast<ToUnix>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    if (toUnix == nullptr)
        return std::string();
    char* unixName = toUnix(path);
    if (unixName == nullptr)
        return std::string();
    std::string result(unixName);
    ::HeapFree(::GetProcessHeap(), 0, unixName);
    return result;
}

// Lit pixels of a picture, row by row.
struct LitMap
{
    int width = 0, height = 0;
    std::vector<std::uint8_t> lit;
    bool At(int x, int y) const { return x >= 0 && y >= 0 && x < width && y < height && lit[y * width + x]; }
};

// Parses a binary PPM (P6, maxval 255, no comments: what sldtoppm writes).
bool ParsePpm(const std::string& bytes, LitMap& map)
{
    int maxval = 0, consumed = 0;
    if (std::sscanf(bytes.c_str(), "P6 %d %d %d%n", &map.width, &map.height, &maxval, &consumed) != 3 || maxval != 255)
        return false;
    const std::size_t start = static_cast<std::size_t>(consumed) + 1;
    const std::size_t pixels = static_cast<std::size_t>(map.width) * map.height;
    if (bytes.size() < start + 3 * pixels)
        return false;
    map.lit.resize(pixels);
    for (std::size_t i = 0; i < pixels; ++i)
        map.lit[i] = bytes[start + 3 * i] || bytes[start + 3 * i + 1] || bytes[start + 3 * i + 2];
    return true;
}

// Lit pixels of `a` farther than one pixel from any lit pixel of `b`.
int Unmatched(const LitMap& a, const LitMap& b)
{
    int misses = 0;
    for (int y = 0; y < a.height; ++y)
        for (int x = 0; x < a.width; ++x) {
            if (!a.At(x, y))
                continue;
            bool matched = false;
            for (int dy = -1; dy <= 1 && !matched; ++dy)
                for (int dx = -1; dx <= 1 && !matched; ++dx)
                    matched = b.At(x + dx, y + dy);
            misses += matched ? 0 : 1;
        }
    return misses;
}

class SldtoppmCompare : public ::testing::Test
{
protected:
    static const int kHighX = 199, kHighY = 149;

    // Runs sldtoppm on `sld` and waits for its picture; the shell writes to a
    // temporary name first so that a half-written file is never read.
    bool Reference(const CString& sld, LitMap& map)
    {
        const CString ppm = dir.Path() + L"ref.ppm";
        const std::string script = "sldtoppm '" + UnixPath(sld) + "' > '" + UnixPath(ppm) + ".part' 2>/dev/null && mv '" +
                                   UnixPath(ppm) + ".part' '" + UnixPath(ppm) + "'\n";
        const CString scriptPath = dir.WriteFile(L"ref.sh", script);
        CString command = L"start.exe /unix /bin/sh " + CString(UnixPath(scriptPath).c_str());
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
        return ParsePpm(qmtest::TempDir::ReadFile(ppm), map);
    }

    LitMap Ours(const CString& sld)
    {
        qmtest::SlideCanvas canvas(kHighX + 1, kHighY + 1);
        QM::slideStruct s{};
        s.pDC = &canvas.dc;
        s.nRight = kHighX;
        s.nBottom = kHighY;
        s.lpszFileName = sld;
        s.nFlags = QM::SLD_FILLALL;
        EXPECT_EQ(QM::SldBlt(&s), 0);
        LitMap map;
        map.width = kHighX + 1;
        map.height = kHighY + 1;
        map.lit.resize(static_cast<std::size_t>(map.width) * map.height);
        for (int y = 0; y < map.height; ++y)
            for (int x = 0; x < map.width; ++x)
                map.lit[y * map.width + x] = canvas.At(x, y) != qmtest::kBlack && canvas.At(x, y) != qmtest::kUntouched;
        return map;
    }

    void Compare(const SlideWriter& slide)
    {
        const CString sld = dir.WriteFile(L"cmp.sld", slide.Bytes());
        LitMap reference;
        ASSERT_TRUE(Reference(sld, reference)) << "sldtoppm (package netpbm) gave no picture";
        const LitMap ours = Ours(sld);
        ASSERT_EQ(reference.width, ours.width);
        ASSERT_EQ(reference.height, ours.height);
        int litOurs = 0;
        for (std::uint8_t v : ours.lit)
            litOurs += v;
        EXPECT_GT(litOurs, 100);
        EXPECT_EQ(Unmatched(ours, reference), 0);
        EXPECT_EQ(Unmatched(reference, ours), 0);
    }

    // A small deterministic generator, so a failure can be replayed.
    unsigned Next() { return m_seed = m_seed * 1103515245u + 12345u, (m_seed >> 16) & 0x7FFF; }

    qmtest::TempDir dir;
    unsigned m_seed = 20020121u;
};

TEST_F(SldtoppmCompare, AbsoluteVectorsAndColours)
{
    SlideWriter slide(kHighX, kHighY);
    for (int i = 0; i < 60; ++i) {
        if (i % 7 == 0)
            slide.Colour(static_cast<std::uint8_t>(1 + Next() % 255));
        slide.Vector(Next() % (kHighX + 1), Next() % (kHighY + 1), Next() % (kHighX + 1), Next() % (kHighY + 1));
    }
    Compare(slide.End());
}

TEST_F(SldtoppmCompare, OffsetAndEndpointVectors)
{
    SlideWriter slide(kHighX, kHighY);
    for (int i = 0; i < 12; ++i) {
        slide.Colour(static_cast<std::uint8_t>(1 + i * 20)).Vector(60 + Next() % 80, 40 + Next() % 70, 100, 75);
        for (int j = 0; j < 5; ++j)
            slide.Endpoint(static_cast<int>(Next() % 41) - 20, static_cast<int>(Next() % 41) - 20);
        slide.Offset(static_cast<int>(Next() % 41) - 20, static_cast<int>(Next() % 41) - 20,
                     static_cast<int>(Next() % 41) - 20, static_cast<int>(Next() % 41) - 20);
    }
    Compare(slide.End());
}

TEST_F(SldtoppmCompare, SolidFills)
{
    SlideWriter slide(kHighX, kHighY);
    slide.Colour(3).Fill(4, 0xFFFF).Fill(10, 10).Fill(90, 20).Fill(80, 120).Fill(20, 100).Fill(0, 0xFFFF);
    slide.Colour(5).Fill(3, 0xFFFF).Fill(120, 10).Fill(190, 70).Fill(130, 140).Fill(0, 0xFFFF);
    slide.Colour(7).Vector(0, 0, kHighX, kHighY);
    Compare(slide.End());
}

}  // namespace
