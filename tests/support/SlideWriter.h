// SlideWriter.h - builds CAD slide files record by record, little-endian.
// Each member appends exactly one record, so a test can also build broken
// files (Raw, a missing End, a cut-off record).
#pragma once
#include <cstdint>
#include <cstdlib>
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

    // Code 0x00-0x7F: the high byte of from-X is the code.
    SlideWriter& Vector(std::uint16_t x1, std::uint16_t y1, std::uint16_t x2, std::uint16_t y2)
    {
        return Check(x1 < 0x8000).Word(x1).Word(y1).Word(x2).Word(y2);
    }
    // 0xFB: from = last + (dx1, dy1), to = last + (dx2, dy2).
    SlideWriter& Offset(int dx1, int dy1, int dx2, int dy2) { return S8(dx1).Raw("\xFB").S8(dy1).S8(dx2).S8(dy2); }
    // 0xFE: from the last point to last + (dx, dy).
    SlideWriter& Endpoint(int dx, int dy) { return S8(dx).Raw("\xFE").S8(dy); }
    // 0xFD: a fill vertex, or a marker when y has any of the bits 0xF000.
    SlideWriter& Fill(std::uint16_t x, std::uint16_t y) { return Word(0xFD00).Word(x).Word(y); }
    SlideWriter& FillMarker() { return Fill(0, 0xFFFF); }  // the marker the host writes
    SlideWriter& Colour(std::uint8_t index) { return Word(0xFF00 | index); }
    SlideWriter& End() { return Word(0xFC00); }
    SlideWriter& Raw(const std::string& bytes) { m_bytes += bytes; return *this; }

    const std::string& Bytes() const { return m_bytes; }

private:
    SlideWriter& Word(unsigned value) { return Raw({static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)}); }
    SlideWriter& S8(int value) { return Check(value >= -128 && value <= 127).Raw({static_cast<char>(value)}); }
    // A record the format cannot hold means the test is wrong: stop at once
    // rather than write a different slide.
    SlideWriter& Check(bool writable)
    {
        if (!writable)
            std::abort();
        return *this;
    }

    std::string m_bytes;
};

}  // namespace qmtest
