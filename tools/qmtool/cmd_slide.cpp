// cmd_slide.cpp - qmtool slide: slide files drawn to PNG through
// QM::SldBltEx, slide headers and record counts.
#include "qmtool.h"

#include "common/WindowImage.h"

#include <cwchar>
#include <memory>
#include <vector>

namespace qmtool {
namespace {

// "WxH" with both parts from 1 to 16384.
bool ParseSize(const CString& text, int& width, int& height)
{
    const int x = text.Find(L'x');
    return x > 0 && ParseInt(text.Left(x), width) && ParseInt(text.Mid(x + 1), height) && width > 0 &&
           height > 0 && width <= 16384 && height <= 16384;
}

// "RRGGBB" in the usual web order, returned as a COLORREF.
bool ParseRgb(const CString& text, COLORREF& colour)
{
    if (text.GetLength() != 6)
        return false;
    wchar_t* end = nullptr;
    const unsigned long value = std::wcstoul(text, &end, 16);
    if (end == nullptr || *end != L'\0')
        return false;
    colour = RGB((value >> 16) & 0xFF, (value >> 8) & 0xFF, value & 0xFF);
    return true;
}

// Why `path` cannot be drawn as a slide, or an empty text when it can.
CString SlideProblem(const CString& path)
{
    const DWORD attributes = GetFileAttributesW(path);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY))
        return path + L" is a folder, not a slide file";
    std::vector<unsigned char> bytes;
    if (!ReadAll(path, bytes))
        return L"cannot read " + path;
    if (bytes.empty())
        return path + L" is empty";
    if (bytes.size() < QM::kSlideHeaderSize)
        return path + L" is shorter than a slide header (31 bytes)";
    if (memcmp(bytes.data(), "AutoCAD Slide", 13) != 0)
        return path + L" is not a slide (no \"AutoCAD Slide\" identification)";
    return CString();
}

int Render(const Command& self, Args& args)
{
    QM::slideExStruct s{};
    s.nWidth = 640;
    s.nHeight = 480;
    COLORREF background = RGB(0, 0, 0);
    bool hasSize = false, hasBg = false;
    const CString size = args.Option(L"size", &hasSize), bg = args.Option(L"bg", &hasBg);
    const CString caption1 = args.Option(L"caption"), caption2 = args.Option(L"caption2");
    if (args.Flag(L"frame"))
        s.nFlags |= QM::SLD_FRAME;
    if (args.Flag(L"stretch"))
        s.nFlags |= QM::SLD_STRETCH;
    if (int bad = args.Reject(self, 3, 3, L"render needs IN.sld and OUT.png"))
        return bad;
    if (hasSize && !ParseSize(size, s.nWidth, s.nHeight))
        return Usage(self, L"--size takes WxH, each from 1 to 16384");
    if (hasBg && !ParseRgb(bg, background))
        return Usage(self, L"--bg takes six hexadecimal digits RRGGBB");
    const CString& in = args.Positional()[1];
    const CString problem = SlideProblem(in);
    if (!problem.IsEmpty()) {
        Err(L"qmtool slide: " + problem + L"\n");
        return kFailed;
    }
    CBrush brush(background);
    s.pBkBrush = &brush;
    s.lpszFileName = in;
    s.crSlideBack = background;
    s.nFlags |= QM::SLD_BKCOLOR;
    if (!caption1.IsEmpty()) {
        s.lpszCaption1 = caption1;
        s.nFlags |= QM::SLD_CAPTION1;
    }
    if (!caption2.IsEmpty()) {
        s.lpszCaption2 = caption2;
        s.nFlags |= QM::SLD_CAPTION2;
    }
    std::unique_ptr<CBitmap> bitmap(QM::SldBltEx(&s));
    if (bitmap == nullptr || bitmap->m_hObject == nullptr) {
        CString text;
        text.Format(L"qmtool slide: cannot make a %d x %d bitmap\n", s.nWidth, s.nHeight);
        Err(text);
        return kFailed;
    }
    const HRESULT init = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const HRESULT hr = qmimage::SavePng(*bitmap, args.Positional()[2]);
    if (SUCCEEDED(init))
        CoUninitialize();
    if (FAILED(hr)) {
        CString text;
        text.Format(L"qmtool slide: cannot write %s (0x%08lX)\n", args.Positional()[2].GetString(), hr);
        Err(text);
        return kFailed;
    }
    Out(L"wrote " + args.Positional()[2] + L"\n");
    return kOk;
}

// Counts every event without drawing.
class NullSink : public QM::SlideSink
{
public:
    void OnVector(QM::SlidePoint, QM::SlidePoint) override {}
    void OnColour(int) override {}
    void OnFill(const QM::SlidePoint*, std::size_t) override {}
};

int Info(const Command& self, Args& args)
{
    if (int bad = args.Reject(self, 2, 2, L"info needs IN.sld"))
        return bad;
    // What render refuses, info refuses the same way.
    const CString problem = SlideProblem(args.Positional()[1]);
    std::vector<unsigned char> b;
    QM::SlideHeader header{};
    if (!problem.IsEmpty() || !ReadAll(args.Positional()[1], b) || !QM::ReadSlideHeader(b.data(), b.size(), header)) {
        Err(L"qmtool slide: " + (problem.IsEmpty() ? L"cannot read " + args.Positional()[1] : problem) + L"\n");
        return kFailed;
    }
    CString text;
    text.Format(L"size          %u bytes\n", static_cast<unsigned>(b.size()));
    const bool id = memcmp(b.data(), "AutoCAD Slide\r\n\x1a", 17) == 0;
    const unsigned aspect = b[23] | (b[24] << 8) | (b[25] << 16) | (static_cast<unsigned>(b[26]) << 24);
    text.AppendFormat(L"identification %s\ntype          0x%02X\nlevel         %u\n", id ? L"AutoCAD Slide" : L"(other)",
                      b[17], b[18]);
    text.AppendFormat(L"high dots     %u x %u\naspect ratio  %.4f\nhardware fill %u\nbyte order    0x%04X\n",
                      header.highX, header.highY, aspect / 1e7, b[27] | (b[28] << 8), b[29] | (b[30] << 8));
    NullSink sink;
    const QM::SlideStats st = QM::DecodeSlide(b.data(), b.size(), sink);
    text.AppendFormat(L"vectors       %u absolute, %u offset, %u common-endpoint\n", unsigned(st.absoluteVectors),
                      unsigned(st.offsetVectors), unsigned(st.endpointVectors));
    text.AppendFormat(L"fills         %u polygons from %u vertices and %u markers\n", unsigned(st.fills),
                      unsigned(st.fillVertices), unsigned(st.fillMarkers));
    text.AppendFormat(L"colours       %u changes\nskipped bytes %u\nend record    %s\n", unsigned(st.colourChanges),
                      unsigned(st.skippedBytes), st.endRecord ? L"yes" : L"no");
    Out(text);
    return kOk;
}

int RunSlide(const Command& self, Args& args)
{
    const CString verb = args.Positional().empty() ? CString() : args.Positional()[0];
    if (verb == L"render")
        return Render(self, args);
    if (verb == L"info")
        return Info(self, args);
    return Usage(self, L"needs render or info");
}

const Command slide{L"slide", L"slide render IN.sld OUT.png [--size WxH] [--frame] [--caption TEXT] [--caption2 TEXT] [--stretch] [--bg RRGGBB] | slide info IN.sld",
                    L"draw a slide to PNG (640x480 on black unless told), or show its header and record counts", RunSlide,
                    L"qmtool slide render a.sld a.png --size 320x240 --frame",
                    L"render: the PNG's path; info: the header fields and a count of each record kind"};

}  // namespace
}  // namespace qmtool
