// slide_render.cpp - QM::SldBlt against bare GDI on one million vectors.
//
// A generated slide (half absolute, half common-endpoint vectors, a colour
// change every 10,000 vectors) is drawn into a 1024 x 768 memory bitmap by
// QM::SldBlt, file reading and decoding included; the reference draws the
// same lines with MoveToEx/LineTo from an array decoded beforehand, switching
// pens at the same places. Best of five interleaved runs each, so that a
// busy machine slows both sides alike. netpbm's sldtoppm is timed on the
// same file at the same width through "start /unix".
#include "BenchClock.h"
#include <QMUtil.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace {

const int kVectors = 1000000, kColourEvery = 10000;
const int kHighX = 4095, kHighY = 3071, kWidth = 1024, kHeight = 768;

struct Line
{
    POINT from, to;
};

struct Generated
{
    std::string bytes;
    std::vector<Line> lines;      // screen coordinates, as SldBlt maps them
};

void Word(std::string& b, unsigned v)
{
    b.push_back(static_cast<char>(v & 0xFF));
    b.push_back(static_cast<char>((v >> 8) & 0xFF));
}

// Writes the slide and the lines it must produce, mapped into the 1024 x 768
// target exactly as the renderer maps them (the smaller scale, centred).
Generated Generate()
{
    Generated g;
    g.bytes.assign("AutoCAD Slide\r\n\x1a\0\x56\x02", 19);
    Word(g.bytes, kHighX);
    Word(g.bytes, kHighY);
    Word(g.bytes, 0x7355);  // aspect 1.3333333 x 10^7 = 0x00CB7355
    Word(g.bytes, 0x00CB);
    Word(g.bytes, 0);
    Word(g.bytes, 0x1234);
    const double s = std::min(static_cast<double>(kWidth) / kHighX, static_cast<double>(kHeight) / kHighY);
    const int cy = static_cast<int>((kHeight - kHighY * s) * 0.5);
    auto map = [&](int x, int y) { return POINT{static_cast<int>(x * s), -cy + kHeight - static_cast<int>(y * s)}; };
    std::uint32_t seed = 42;
    auto next = [&seed](int range) { return static_cast<int>((seed = seed * 1664525u + 1013904223u) >> 8) % range; };
    int lastX = 2000, lastY = 1500;
    g.lines.reserve(kVectors);
    for (int i = 0; i < kVectors; ++i) {
        if (i % kColourEvery == 0) {
            g.bytes.push_back(static_cast<char>(1 + (i / kColourEvery) % 254));
            g.bytes.push_back('\xFF');
        }
        if (i % 2 == 0) {
            const int x1 = 200 + next(3600), y1 = 200 + next(2600);
            const int x2 = x1 + next(401) - 200, y2 = y1 + next(401) - 200;
            Word(g.bytes, x1), Word(g.bytes, y1), Word(g.bytes, x2), Word(g.bytes, y2);
            g.lines.push_back(Line{map(x1, y1), map(x2, y2)});
            lastX = x1, lastY = y1;
        } else {
            const int dx = next(255) - 127, dy = next(255) - 127;
            g.bytes.push_back(static_cast<char>(static_cast<signed char>(dx)));
            g.bytes.push_back('\xFE');
            g.bytes.push_back(static_cast<char>(static_cast<signed char>(dy)));
            g.lines.push_back(Line{map(lastX, lastY), map(lastX + dx, lastY + dy)});
            lastX += dx, lastY += dy;
        }
    }
    g.bytes.push_back('\0');
    g.bytes.push_back('\xFC');
    return g;
}

double Now()
{
    return 1000.0 * bench::Seconds();
}

double TimeSldBlt(CDC& dc, const wchar_t* path)
{
    QM::slideStruct s{};
    s.pDC = &dc;
    s.nRight = kWidth;
    s.nBottom = kHeight;
    s.lpszFileName = path;
    const double start = Now();
    const int rc = QM::SldBlt(&s);
    const double ms = Now() - start;
    return rc == 0 ? ms : -1.0;
}

// The same work SldBlt does besides decoding: background, pens, lines.
double TimeBareGdi(CDC& dc, const std::vector<Line>& lines)
{
    const double start = Now();
    RECT all{0, 0, kWidth, kHeight};
    FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    HPEN pen = CreatePen(PS_SOLID, 1, RGB(255, 255, 255));
    HGDIOBJ old = SelectObject(dc, pen);
    for (size_t i = 0; i < lines.size(); ++i) {
        if (i % kColourEvery == 0) {
            HPEN next = CreatePen(PS_SOLID, 1, QM::CADColorIndexToRGB(1 + static_cast<int>(i / kColourEvery) % 254));
            DeleteObject(SelectObject(dc, next));
        }
        MoveToEx(dc, lines[i].from.x, lines[i].from.y, nullptr);
        LineTo(dc, lines[i].to.x, lines[i].to.y);
    }
    DeleteObject(SelectObject(dc, old));
    return Now() - start;
}

std::string UnixPath(const wchar_t* path)
{
    typedef char*(__cdecl * ToUnix)(const wchar_t*);
    const auto toUnix = reinterpret_cast<ToUnix>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    char* name = toUnix != nullptr ? toUnix(path) : nullptr;
    std::string result = name != nullptr ? name : "";
    if (name != nullptr)
        HeapFree(GetProcessHeap(), 0, name);
    return result;
}

// Milliseconds sldtoppm takes on the file, timed by the shell around the
// program alone (not Wine's start-up); -1 when it cannot be run.
double TimeSldtoppm(const CString& folder, const CString& sld)
{
    const CString result = folder + L"sldtoppm.ms", script = folder + L"time.sh";
    const std::string r = UnixPath(result);
    const std::string text = "s=$(date +%s%N); sldtoppm -xsize 1024 '" + UnixPath(sld) + "' >/dev/null 2>&1; e=$(date +%s%N); " +
                             "echo $(( (e - s) / 1000 )) > '" + r + ".part' && mv '" + r + ".part' '" + r + "'\n";
    FILE* f = _wfopen(script, L"wb");
    if (f == nullptr)
        return -1;
    fwrite(text.data(), 1, text.size(), f);
    fclose(f);
    CString command = L"start.exe /unix /bin/sh " + CString(UnixPath(script).c_str());
    STARTUPINFOW si{};
    si.cb = sizeof(si);
    PROCESS_INFORMATION pi{};
    if (!CreateProcessW(nullptr, command.GetBuffer(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi))
        return -1;
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    long long us = -1;
    for (int waited = 0; waited < 120000 && us < 0; waited += 100) {
        Sleep(100);
        if (FILE* in = _wfopen(result, L"rb")) {
            if (fscanf(in, "%lld", &us) != 1)
                us = -1;
            fclose(in);
        }
    }
    DeleteFileW(result);
    DeleteFileW(script);
    return us < 0 ? -1.0 : us / 1000.0;
}

}  // namespace

int main()
{
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    CString folder;
    folder.Format(L"%sqm_bench_%lu\\", temp, GetCurrentProcessId());
    CreateDirectoryW(folder, nullptr);
    const CString sld = folder + L"million.sld";
    const Generated g = Generate();
    if (FILE* f = _wfopen(sld, L"wb")) {
        fwrite(g.bytes.data(), 1, g.bytes.size(), f);
        fclose(f);
    }
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    HDC screen = GetDC(nullptr);
    CBitmap bitmap;
    bitmap.CreateCompatibleBitmap(screen, kWidth, kHeight);
    ReleaseDC(nullptr, screen);
    HGDIOBJ old = dc.SelectObject(bitmap.m_hObject);
    double sld_ms = 1e30, gdi_ms = 1e30;
    for (int round = 0; round < 5; ++round) {
        sld_ms = std::min(sld_ms, TimeSldBlt(dc, sld));
        gdi_ms = std::min(gdi_ms, TimeBareGdi(dc, g.lines));
    }
    dc.SelectObject(old);
    const double tool_ms = TimeSldtoppm(folder, sld);
    printf("slide-render: sldblt %.1f ms, bare GDI %.1f ms, ratio %.3f (target <= 1.15)\n", sld_ms, gdi_ms, sld_ms / gdi_ms);
    if (tool_ms >= 0)
        printf("slide-render: sldtoppm %.1f ms on the same file (Linux, 1024 px wide, PPM to /dev/null)\n", tool_ms);
    else
        printf("slide-render: sldtoppm could not be run (package netpbm)\n");
    DeleteFileW(sld);
    RemoveDirectoryW(folder);
    return sld_ms < 0 ? 1 : 0;
}
