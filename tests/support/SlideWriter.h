// SlideWriter.h - builds CAD slide files record by record for the tests.
//
//   qmtest::SlideWriter slide(100, 100);     // high X and Y dot
//   slide.Colour(1).Vector(10, 10, 90, 10).End();
//   CString path = dir.WriteFile(L"a.sld", slide.Bytes());
//
// Each member appends exactly the bytes of one record, little-endian, so a
// test can also build broken files (Raw, a missing End, a cut-off record).
#pragma once
#include <cstdint>
#include <string>

namespace qmtest {

class SlideWriter
{
public:
    // The 31-byte header: identification, type 0x56, level 2, the high dots,
    // aspect ratio x 10,000,000, hardware fill 0, byte-order word 0x1234.
    SlideWriter(std::uint16_t highX, std::uint16_t highY, double aspect = 1.0);

    // Code 0x00-0x7F: from-X must be below 0x8000, its high byte is the code.
    SlideWriter& Vector(std::uint16_t x1, std::uint16_t y1, std::uint16_t x2, std::uint16_t y2);
    // 0xFB: from = last + (dx1, dy1), to = last + (dx2, dy2).
    SlideWriter& Offset(int dx1, int dy1, int dx2, int dy2);
    // 0xFE: from the last point to last + (dx, dy).
    SlideWriter& Endpoint(int dx, int dy);
    // 0xFD: a fill vertex, or a marker when y has any of the bits 0xF000.
    SlideWriter& Fill(std::uint16_t x, std::uint16_t y);
    // 0xFD with Y = 0xFFFF, the marker the host itself writes.
    SlideWriter& FillMarker() { return Fill(0, 0xFFFF); }
    // 0xFF: colour index.
    SlideWriter& Colour(std::uint8_t index);
    // 0xFC.
    SlideWriter& End();
    SlideWriter& Raw(const std::string& bytes);

    const std::string& Bytes() const { return m_bytes; }

private:
    void Word(std::uint16_t value);
    void Signed(int value);

    std::string m_bytes;
};

}  // namespace qmtest
