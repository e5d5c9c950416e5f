// slide_decoder_fuzz.cpp - libFuzzer target for the slide decoder, built
// natively with AddressSanitizer and UndefinedBehaviorSanitizer by
// scripts/fuzz. Any byte sequence must decode without a bad read, and the
// events must keep the promises the renderer relies on.
#include "slide/SlideDecoder.h"

#include <cstdint>
#include <cstdlib>

namespace {

class CheckingSink : public QM::SlideSink
{
public:
    void OnVector(QM::SlidePoint, QM::SlidePoint) override { ++vectors; }
    void OnColour(int index) override
    {
        if (index < 0 || index > 255)
            std::abort();
        ++colours;
    }
    void OnFill(const QM::SlidePoint* vertices, std::size_t count) override
    {
        if (vertices == nullptr || count == 0)
            std::abort();
        for (std::size_t i = 0; i < count; ++i)
            if (vertices[i].y < 0 || vertices[i].y >= 0x1000 || vertices[i].x < 0 || vertices[i].x > 0xFFFF)
                std::abort();
        ++fills;
    }
    std::size_t vectors = 0, colours = 0, fills = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QM::SlideHeader header{};
    QM::ReadSlideHeader(data, size, header);
    CheckingSink sink;
    const QM::SlideStats stats = QM::DecodeSlide(data, size, sink);
    if (stats.absoluteVectors + stats.offsetVectors + stats.endpointVectors != sink.vectors ||
        stats.colourChanges != sink.colours || stats.fills != sink.fills || stats.fills > stats.fillMarkers)
        std::abort();
    return 0;
}
