// SlideWriter.cpp - the byte layout of slide records.
#include "SlideWriter.h"

#include <cstdlib>

namespace qmtest {

SlideWriter::SlideWriter(std::uint16_t highX, std::uint16_t highY, double aspect)
{
    m_bytes.assign("AutoCAD Slide\r\n\x1a", 16);
    m_bytes.push_back('\0');
    m_bytes.push_back('\x56');
    m_bytes.push_back('\x02');
    Word(highX);
    Word(highY);
    const std::uint32_t ratio = static_cast<std::uint32_t>(aspect * 10000000.0);
    Word(static_cast<std::uint16_t>(ratio & 0xFFFF));
    Word(static_cast<std::uint16_t>(ratio >> 16));
    Word(0);
    Word(0x1234);
}

void SlideWriter::Word(std::uint16_t value)
{
    m_bytes.push_back(static_cast<char>(value & 0xFF));
    m_bytes.push_back(static_cast<char>(value >> 8));
}

// An offset outside -128..127 cannot be written: a test asking for one is
// wrong, so stop at once rather than write a different slide.
void SlideWriter::Signed(int value)
{
    if (value < -128 || value > 127)
        std::abort();
    m_bytes.push_back(static_cast<char>(static_cast<signed char>(value)));
}

SlideWriter& SlideWriter::Vector(std::uint16_t x1, std::uint16_t y1, std::uint16_t x2, std::uint16_t y2)
{
    if (x1 >= 0x8000)
        std::abort();
    Word(x1);
    Word(y1);
    Word(x2);
    Word(y2);
    return *this;
}

SlideWriter& SlideWriter::Offset(int dx1, int dy1, int dx2, int dy2)
{
    Signed(dx1);
    m_bytes.push_back('\xFB');
    Signed(dy1);
    Signed(dx2);
    Signed(dy2);
    return *this;
}

SlideWriter& SlideWriter::Endpoint(int dx, int dy)
{
    Signed(dx);
    m_bytes.push_back('\xFE');
    Signed(dy);
    return *this;
}

SlideWriter& SlideWriter::Fill(std::uint16_t x, std::uint16_t y)
{
    m_bytes.push_back('\0');
    m_bytes.push_back('\xFD');
    Word(x);
    Word(y);
    return *this;
}

SlideWriter& SlideWriter::Colour(std::uint8_t index)
{
    m_bytes.push_back(static_cast<char>(index));
    m_bytes.push_back('\xFF');
    return *this;
}

SlideWriter& SlideWriter::End()
{
    m_bytes.push_back('\0');
    m_bytes.push_back('\xFC');
    return *this;
}

SlideWriter& SlideWriter::Raw(const std::string& bytes)
{
    m_bytes += bytes;
    return *this;
}

}  // namespace qmtest
