// The decoder alone: which events come out of which bytes.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/SlideWriter.h"

#include <string>
#include <vector>

namespace {

using qmtest::SlideWriter;

// Every event as text, "; " between them, so a whole decode compares at once.
struct Recorder : QM::SlideSink
{
    void OnVector(QM::SlidePoint a, QM::SlidePoint b) override { Add("V " + P(a) + " " + P(b)); }
    void OnColour(int index) override { Add("C " + std::to_string(index)); }
    void OnFill(const QM::SlidePoint* v, std::size_t n) override
    {
        std::string fill = "F";
        for (std::size_t i = 0; i < n; ++i)
            fill += " " + P(v[i]);
        Add(fill);
    }
    void Add(const std::string& event) { events += (events.empty() ? "" : "; ") + event; }
    static std::string P(QM::SlidePoint p) { return std::to_string(p.x) + "," + std::to_string(p.y); }

    std::string events;
    QM::SlideStats stats;
};

const unsigned char* Data(const std::string& bytes) { return reinterpret_cast<const unsigned char*>(bytes.data()); }

Recorder Decode(const std::string& bytes)
{
    Recorder recorder;
    recorder.stats = QM::DecodeSlide(Data(bytes), bytes.size(), recorder);
    return recorder;
}

SlideWriter Slide() { return SlideWriter(100, 100); }

TEST(SlideDecoder, RecordsBecomeEventsInOrder)
{
    const struct { const char* what; std::string bytes; const char* expected; } rows[] = {
        {"relative vectors start from the last from-point",
         Slide().Vector(10, 20, 30, 40).Endpoint(5, -5).Endpoint(1, 1).Offset(-2, 3, 4, -1).Endpoint(1, 0).End().Bytes(),
         "V 10,20 30,40; V 10,20 15,15; V 15,15 16,16; V 14,19 20,15; V 14,19 15,19"},
        {"the first relative vector starts at the origin", Slide().Endpoint(3, 4).End().Bytes(), "V 0,0 3,4"},
        // 0xFA moves on by one byte, so the next code is the 0xFF after it
        // and the 0xFA becomes that record's data byte.
        {"an undefined code steps one byte", Slide().Raw(std::string("\x07\xFA\xFF", 3)).Vector(1, 2, 3, 4).Bytes(),
         "C 250; V 1,2 3,4"},
        {"colour changes pass the index", Slide().Colour(0).Colour(255).End().Bytes(), "C 0; C 255"},
        {"the end record stops decoding", Slide().Vector(1, 1, 2, 2).End().Vector(3, 3, 4, 4).Bytes(), "V 1,1 2,2"},
        {"without an end record the data's end stops", Slide().Vector(1, 1, 2, 2).Colour(4).Bytes(), "V 1,1 2,2; C 4"},
        {"a header alone", Slide().Bytes(), ""},
        {"records start after the 31-byte header", Slide().Bytes().substr(0, 30) + std::string("\x01\xFF", 2), ""},
        {"a marker closes the polygon",
         Slide().FillMarker().Fill(1, 2).Fill(3, 4).Fill(5, 6).FillMarker().Vector(0, 0, 1, 1).End().Bytes(),
         "F 1,2 3,4 5,6; V 0,0 1,1"},
        {"any Y from 0x1000 is a marker",
         Slide().Fill(1, 1).Fill(2, 0x0FFF).Fill(3, 3).Fill(9, 0x1000).Fill(4, 4).Fill(5, 5).Fill(6, 6).Fill(0, 0x8000)
             .End().Bytes(),
         "F 1,1 2,4095 3,3; F 4,4 5,5 6,6"},
        {"vertices after the last marker are dropped",
         Slide().Fill(1, 1).Fill(2, 2).Fill(3, 3).FillMarker().Fill(7, 7).Fill(8, 8).Colour(3).End().Bytes(),
         "F 1,1 2,2 3,3; C 3"},
        {"a closed fill before the end record is flushed",
         Slide().Fill(1, 1).Fill(2, 2).Fill(3, 3).FillMarker().End().Bytes(), "F 1,1 2,2 3,3"},
        {"a fill pending when the data runs out is painted as before an end record",
         Slide().Fill(1, 1).Fill(2, 2).Fill(3, 3).FillMarker().Bytes(), "F 1,1 2,2 3,3"},
        {"lone markers draw nothing", Slide().FillMarker().FillMarker().End().Bytes(), ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Decode(row.bytes).events, row.expected) << row.what;
}

TEST(SlideDecoder, StatsCountEachKindOfRecord)
{
    SlideWriter slide = Slide();
    slide.Vector(1, 2, 3, 4).Endpoint(1, 1).Offset(1, 1, 2, 2).Raw(std::string("\x07\xFA\xFF", 3));
    slide.FillMarker().Fill(1, 1).Fill(2, 2).Fill(3, 3).Fill(0, 0x1000).FillMarker().End();
    const QM::SlideStats s = Decode(slide.Bytes()).stats;
    EXPECT_EQ((std::vector<std::size_t>{s.absoluteVectors, s.endpointVectors, s.offsetVectors, s.skippedBytes,
                                        s.colourChanges, s.fillVertices, s.fillMarkers, s.fills}),
              (std::vector<std::size_t>{1, 1, 1, 1, 1, 3, 3, 1}));
    EXPECT_TRUE(s.endRecord);
}

TEST(SlideDecoder, RecordCutByTheEndOfDataIsNotDecoded)
{
    const std::string whole = Slide().Vector(1, 1, 2, 2).Vector(5, 6, 7, 8).Bytes();
    for (std::size_t cut = 1; cut < 8; ++cut) {
        const Recorder got = Decode(whole.substr(0, whole.size() - cut));
        EXPECT_EQ(got.events, "V 1,1 2,2") << cut;
        EXPECT_FALSE(got.stats.endRecord) << cut;
    }
}

TEST(SlideDecoder, HeaderNeedsAll31Bytes)
{
    const std::string bytes = SlideWriter(640, 0x1234).Bytes();
    QM::SlideHeader header{};
    ASSERT_TRUE(QM::ReadSlideHeader(Data(bytes), bytes.size(), header));
    EXPECT_TRUE(header.highX == 640u && header.highY == 0x1234u);
    EXPECT_FALSE(QM::ReadSlideHeader(Data(bytes), 30, header));
    Recorder recorder;
    EXPECT_EQ(QM::DecodeSlide(nullptr, 100, recorder).colourChanges, 0u);
}

}  // namespace
