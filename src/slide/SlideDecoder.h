// SlideDecoder.h - turns the bytes of a CAD slide file into drawing events.
//
//   class Printer : public QM::SlideSink { ... };   // OnVector, OnColour, OnFill
//   Printer printer;
//   QM::SlideStats stats = QM::DecodeSlide(bytes.data(), bytes.size(), printer);
//
// Bytes in, events out, nothing else: no windows.h, no allocation beyond the
// fill points, so the same code is drawn by the GDI renderer (SlideDeCode.h),
// counted by qmtool and run natively under the fuzzer.
//
// Coordinates are the slide's own: origin bottom left, Y growing upward, no
// scaling. Decoding starts at offset 31 whatever the header holds and stops
// at the end record or where the data runs out; a record cut short by the end
// of the data counts as the end (a fill still being collected then is
// dropped, as when the data simply ends without an end record).
#pragma once

#include <cstddef>
#include <vector>

// The same export macro QMExport.h defines, spelled out here so that this
// header stays free of windows.h.
#ifndef QM_API
#if !defined(_WIN32)
#define QM_API
#elif defined(QMUTIL_BUILDING_DLL)
#define QM_API __declspec(dllexport)
#else
#define QM_API __declspec(dllimport)
#endif
#endif

namespace QM {

// Size of the fixed header in front of the drawing records.
const std::size_t kSlideHeaderSize = 31;

struct SlidePoint
{
    int x;
    int y;
};

// The two header fields the renderer uses: the largest X and Y coordinate.
struct SlideHeader
{
    unsigned int highX;
    unsigned int highY;
};

// Receives the drawing events in file order.
class QM_API SlideSink
{
public:
    virtual ~SlideSink() = default;
    // A line from `from` to `to` (absolute, offset and common-endpoint
    // vectors alike).
    virtual void OnVector(SlidePoint from, SlidePoint to) = 0;
    // Colour index 0 to 255 for every later vector and fill.
    virtual void OnColour(int index) = 0;
    // A filled polygon of `count` (at least 1) vertices, closed by a marker.
    virtual void OnFill(const SlidePoint* vertices, std::size_t count) = 0;
};

// How many records of each kind the decoder met.
struct SlideStats
{
    std::size_t absoluteVectors = 0;   // codes 0x00 to 0x7F
    std::size_t offsetVectors = 0;     // 0xFB
    std::size_t endpointVectors = 0;   // 0xFE
    std::size_t fillVertices = 0;      // 0xFD with Y below 0x1000
    std::size_t fillMarkers = 0;       // 0xFD with Y of 0x1000 or more
    std::size_t colourChanges = 0;     // 0xFF
    std::size_t skippedBytes = 0;      // 0x80 to 0xFA: one byte each
    std::size_t fills = 0;             // polygons handed to OnFill
    bool endRecord = false;            // 0xFC seen
};

// Reads the high X and Y dots; false (header untouched) when `size` is below
// the 31-byte header.
QM_API bool ReadSlideHeader(const unsigned char* data, std::size_t size, SlideHeader& header);

// Decodes the records after the header into `sink`. A null `data` or a size
// below 31 decodes nothing. Any byte sequence is safe: no read goes past
// `size`, and points that drift far through offsets saturate at the int range.
QM_API SlideStats DecodeSlide(const unsigned char* data, std::size_t size, SlideSink& sink);

}  // namespace QM
