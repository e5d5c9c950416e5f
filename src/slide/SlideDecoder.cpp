// SlideDecoder.cpp - the record loop of a slide file.
#include "slide/SlideDecoder.h"

#include <climits>
#include <cstdint>

namespace QM {
namespace {

const unsigned char kCodeEnd = 0xFC;
const unsigned char kCodeOffset = 0xFB;
const unsigned char kCodeFill = 0xFD;
const unsigned char kCodeEndpoint = 0xFE;
const unsigned char kCodeColour = 0xFF;

// Fill points with any of these Y bits set close the polygon collected so
// far. The format only writes negative Y values as markers, but slides in the
// field rely on every Y of 0x1000 or more acting as one.
const unsigned int kFillMarkerBits = 0xF000;

int SaturatedAdd(int base, int delta)
{
    const long long sum = static_cast<long long>(base) + delta;
    return sum > INT_MAX ? INT_MAX : sum < INT_MIN ? INT_MIN : static_cast<int>(sum);
}

class RecordReader
{
public:
    RecordReader(const unsigned char* data, std::size_t size, SlideSink& sink) : m_data(data), m_size(size), m_sink(sink) {}

    SlideStats Run();

private:
    bool Has(std::size_t bytes) const { return m_pos + bytes <= m_size; }
    unsigned int U16(std::size_t at) const { return m_data[m_pos + at] | (m_data[m_pos + at + 1] << 8); }
    int S8(std::size_t at) const { return static_cast<signed char>(m_data[m_pos + at]); }
    SlidePoint Offset(int dx, int dy) const { return SlidePoint{SaturatedAdd(m_last.x, dx), SaturatedAdd(m_last.y, dy)}; }

    // Returns the record's length, or 0 when the data ends inside it.
    std::size_t Dispatch(unsigned char code);
    void FlushFill();

    const unsigned char* m_data;
    std::size_t m_size;
    SlideSink& m_sink;
    std::size_t m_pos = kSlideHeaderSize;
    // The format leaves the point before the first absolute vector open.
    SlidePoint m_last{0, 0};
    std::vector<SlidePoint> m_fillList;
    std::vector<SlidePoint> m_vertices;
    SlideStats m_stats;
};

SlideStats RecordReader::Run()
{
    while (Has(2)) {
        const unsigned char code = m_data[m_pos + 1];
        if (!m_fillList.empty() && code != kCodeFill)
            FlushFill();
        if (code == kCodeEnd) {
            m_stats.endRecord = true;
            break;
        }
        const std::size_t length = Dispatch(code);
        if (length == 0)
            break;
        m_pos += length;
    }
    // Missing bytes count as the end of the file: a fill still pending is
    // painted as it would be before an end record.
    FlushFill();
    return m_stats;
}

std::size_t RecordReader::Dispatch(unsigned char code)
{
    if (code < 0x80) {
        if (!Has(8))
            return 0;
        const SlidePoint from{static_cast<int>(U16(0)), static_cast<int>(U16(2))};
        m_sink.OnVector(from, SlidePoint{static_cast<int>(U16(4)), static_cast<int>(U16(6))});
        m_last = from;
        ++m_stats.absoluteVectors;
        return 8;
    }
    switch (code) {
    case kCodeOffset: {
        if (!Has(5))
            return 0;
        const SlidePoint from = Offset(S8(0), S8(2));
        m_sink.OnVector(from, Offset(S8(3), S8(4)));
        m_last = from;
        ++m_stats.offsetVectors;
        return 5;
    }
    case kCodeFill: {
        if (!Has(6))
            return 0;
        const SlidePoint point{static_cast<int>(U16(2)), static_cast<int>(U16(4))};
        m_fillList.push_back(point);
        ++((static_cast<unsigned int>(point.y) & kFillMarkerBits) ? m_stats.fillMarkers : m_stats.fillVertices);
        return 6;
    }
    case kCodeEndpoint: {
        if (!Has(3))
            return 0;
        const SlidePoint to = Offset(S8(0), S8(2));
        m_sink.OnVector(m_last, to);
        m_last = to;
        ++m_stats.endpointVectors;
        return 3;
    }
    case kCodeColour:
        m_sink.OnColour(m_data[m_pos]);
        ++m_stats.colourChanges;
        return 2;
    default:
        // Undefined codes move on by one byte only, so that a stray byte
        // does not swallow the record that follows it.
        ++m_stats.skippedBytes;
        return 1;
    }
}

// Vertices collect until a marker closes them into one polygon; vertices
// after the last marker have no polygon and are dropped.
void RecordReader::FlushFill()
{
    m_vertices.clear();
    for (const SlidePoint& point : m_fillList) {
        if ((static_cast<unsigned int>(point.y) & kFillMarkerBits) == 0) {
            m_vertices.push_back(point);
            continue;
        }
        if (!m_vertices.empty()) {
            m_sink.OnFill(m_vertices.data(), m_vertices.size());
            ++m_stats.fills;
            m_vertices.clear();
        }
    }
    m_fillList.clear();
}

}  // namespace

bool ReadSlideHeader(const unsigned char* data, std::size_t size, SlideHeader& header)
{
    if (data == nullptr || size < kSlideHeaderSize)
        return false;
    header.highX = data[19] | (data[20] << 8);
    header.highY = data[21] | (data[22] << 8);
    return true;
}

SlideStats DecodeSlide(const unsigned char* data, std::size_t size, SlideSink& sink)
{
    if (data == nullptr || size < kSlideHeaderSize)
        return SlideStats();
    return RecordReader(data, size, sink).Run();
}

}  // namespace QM
