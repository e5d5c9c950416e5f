// SlideWriter.h - builds CAD slide files record by record, little-endian.
// Each member appends exactly one record, so a test can also build broken
// files (Raw, a missing End, a cut-off record).
#pragma once
#include <cstdint>
#include <string>

namespace qmtest {

class SlideWriter
{
public:
    // The 31-byte header: identification, type 0x56, level 2, the high dots,
    // aspect ratio 1 x 10,000,000, hardware fill 0, byte-order word 0x1234.
    SlideWriter(std::uint16_t highX, std::uint16_t highY) : m_bytes("AutoCAD Slide\r\n\x1a\0\x56\x02", 19)
    {
        Word(highX).Word(highY).Word(0x9680).Word(0x0098).Word(0).Word(0x1234);
    }

    // Code 0x00-0x7F (x1 below 0x8000): the high byte of from-X is the code.
    SlideWriter& Vector(unsigned x1, unsigned y1, unsigned x2, unsigned y2) { return Word(x1).Word(y1).Word(x2).Word(y2); }
    // 0xFB: from = last + (dx1, dy1), to = last + (dx2, dy2); each from -128 to 127.
    SlideWriter& Offset(int dx1, int dy1, int dx2, int dy2) { return S8(dx1).Raw("\xFB").S8(dy1).S8(dx2).S8(dy2); }
    // 0xFE: from the last point to last + (dx, dy).
    SlideWriter& Endpoint(int dx, int dy) { return S8(dx).Raw("\xFE").S8(dy); }
    // 0xFD: a fill vertex, or a marker when y has any of the bits 0xF000.
    SlideWriter& Fill(unsigned x, unsigned y) { return Word(0xFD00).Word(x).Word(y); }
    SlideWriter& FillMarker() { return Fill(0, 0xFFFF); }  // the marker the host writes
    SlideWriter& Colour(unsigned index) { return Word(0xFF00 | (index & 0xFF)); }
    SlideWriter& End() { return Word(0xFC00); }
    SlideWriter& Raw(const std::string& bytes) { return m_bytes += bytes, *this; }

    const std::string& Bytes() const { return m_bytes; }

private:
    SlideWriter& Word(unsigned value) { return Raw({static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)}); }
    SlideWriter& S8(int value) { return Raw({static_cast<char>(value)}); }

    std::string m_bytes;
};

}  // namespace qmtest
