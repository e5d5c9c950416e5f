// The decoder alone: which events come out of which bytes.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/SlideWriter.h"

#include <string>
#include <vector>

namespace {

using qmtest::SlideWriter;

// Every event as one line of text, so a whole decode compares at once.
class Recorder : public QM::SlideSink
{
public:
    void OnVector(QM::SlidePoint a, QM::SlidePoint b) override
    {
        events.push_back("V " + P(a) + " " + P(b));
    }
    void OnColour(int index) override { events.push_back("C " + std::to_string(index)); }
    void OnFill(const QM::SlidePoint* v, std::size_t n) override
    {
        std::string text = "F";
        for (std::size_t i = 0; i < n; ++i)
            text += " " + P(v[i]);
        events.push_back(text);
    }
    static std::string P(QM::SlidePoint p) { return std::to_string(p.x) + "," + std::to_string(p.y); }

    std::vector<std::string> events;
};

class SlideDecoder : public ::testing::Test
{
protected:
    std::vector<std::string> Decode(const std::string& bytes)
    {
        stats = QM::DecodeSlide(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), recorder);
        return recorder.events;
    }
    Recorder recorder;
    QM::SlideStats stats;
};

using Events = std::vector<std::string>;

TEST_F(SlideDecoder, HeaderGivesHighDots)
{
    const std::string bytes = SlideWriter(640, 0x1234).Bytes();
    QM::SlideHeader header{};
    ASSERT_TRUE(QM::ReadSlideHeader(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), header));
    EXPECT_EQ(header.highX, 640u);
    EXPECT_EQ(header.highY, 0x1234u);
    EXPECT_FALSE(QM::ReadSlideHeader(reinterpret_cast<const unsigned char*>(bytes.data()), 30, header));
}

TEST_F(SlideDecoder, RelativeVectorsStartFromTheLastFromPoint)
{
    SlideWriter slide(100, 100);
    slide.Vector(10, 20, 30, 40).Endpoint(5, -5).Endpoint(1, 1).Offset(-2, 3, 4, -1).Endpoint(1, 0).End();
    EXPECT_EQ(Decode(slide.Bytes()),
              (Events{"V 10,20 30,40", "V 10,20 15,15", "V 15,15 16,16", "V 14,19 20,15", "V 14,19 15,19"}));
    EXPECT_EQ(stats.absoluteVectors, 1u);
    EXPECT_EQ(stats.endpointVectors, 3u);
    EXPECT_EQ(stats.offsetVectors, 1u);
    EXPECT_TRUE(stats.endRecord);
}

TEST_F(SlideDecoder, FirstRelativeVectorStartsAtOrigin)
{
    EXPECT_EQ(Decode(SlideWriter(10, 10).Endpoint(3, 4).End().Bytes()), (Events{"V 0,0 3,4"}));
}

TEST_F(SlideDecoder, UndefinedCodeStepsOneByte)
{
    // 0xFA at the code position moves on by one byte; the next code is the
    // 0xFF that follows, whose data byte is the 0xFA itself.
    SlideWriter slide(10, 10);
    slide.Raw(std::string("\x07\xFA\xFF", 3)).Vector(1, 2, 3, 4).End();
    EXPECT_EQ(Decode(slide.Bytes()), (Events{"C 250", "V 1,2 3,4"}));
    EXPECT_EQ(stats.skippedBytes, 1u);
}

TEST_F(SlideDecoder, ColourChangesPassTheIndex)
{
    EXPECT_EQ(Decode(SlideWriter(10, 10).Colour(0).Colour(255).End().Bytes()), (Events{"C 0", "C 255"}));
}

class SlideDecoderFill : public SlideDecoder {};

TEST_F(SlideDecoderFill, MarkerClosesThePolygon)
{
    SlideWriter slide(100, 100);
    slide.FillMarker().Fill(1, 2).Fill(3, 4).Fill(5, 6).FillMarker().Vector(0, 0, 1, 1).End();
    EXPECT_EQ(Decode(slide.Bytes()), (Events{"F 1,2 3,4 5,6", "V 0,0 1,1"}));
    EXPECT_EQ(stats.fillVertices, 3u);
    EXPECT_EQ(stats.fillMarkers, 2u);
    EXPECT_EQ(stats.fills, 1u);
}

TEST_F(SlideDecoderFill, AnyYFrom0x1000IsAMarker)
{
    SlideWriter slide(100, 100);
    slide.Fill(1, 1).Fill(2, 0x0FFF).Fill(3, 3).Fill(9, 0x1000).Fill(4, 4).Fill(5, 5).Fill(6, 6).Fill(0, 0x8000).End();
    EXPECT_EQ(Decode(slide.Bytes()), (Events{"F 1,1 2,4095 3,3", "F 4,4 5,5 6,6"}));
}

TEST_F(SlideDecoderFill, VerticesAfterTheLastMarkerAreDropped)
{
    SlideWriter slide(100, 100);
    slide.Fill(1, 1).Fill(2, 2).Fill(3, 3).FillMarker().Fill(7, 7).Fill(8, 8).Colour(3).End();
    EXPECT_EQ(Decode(slide.Bytes()), (Events{"F 1,1 2,2 3,3", "C 3"}));
}

TEST_F(SlideDecoderFill, FillBeforeTheEndRecordIsFlushed)
{
    SlideWriter slide(100, 100);
    slide.Fill(1, 1).Fill(2, 2).Fill(3, 3).FillMarker().End();
    EXPECT_EQ(Decode(slide.Bytes()), (Events{"F 1,1 2,2 3,3"}));
}

TEST_F(SlideDecoderFill, LoneMarkersDrawNothing)
{
    SlideWriter slide(100, 100);
    slide.FillMarker().FillMarker().End();
    EXPECT_TRUE(Decode(slide.Bytes()).empty());
    EXPECT_EQ(stats.fillMarkers, 2u);
}

class SlideDecoderEnd : public SlideDecoder {};

TEST_F(SlideDecoderEnd, EndRecordStopsDecoding)
{
    SlideWriter slide(100, 100);
    slide.Vector(1, 1, 2, 2).End().Vector(3, 3, 4, 4);
    EXPECT_EQ(Decode(slide.Bytes()), (Events{"V 1,1 2,2"}));
}

TEST_F(SlideDecoderEnd, DataWithoutEndRecordStopsAtItsEnd)
{
    SlideWriter slide(100, 100);
    slide.Vector(1, 1, 2, 2).Colour(4);
    EXPECT_EQ(Decode(slide.Bytes()), (Events{"V 1,1 2,2", "C 4"}));
    EXPECT_FALSE(stats.endRecord);
}

TEST_F(SlideDecoderEnd, RecordCutByTheEndOfDataIsNotDecoded)
{
    const std::string whole = SlideWriter(100, 100).Vector(1, 1, 2, 2).Vector(5, 6, 7, 8).Bytes();
    for (std::size_t cut = 1; cut < 8; ++cut) {
        recorder.events.clear();
        EXPECT_EQ(Decode(whole.substr(0, whole.size() - cut)), (Events{"V 1,1 2,2"})) << cut;
    }
}

TEST_F(SlideDecoderEnd, ShortOrMissingDataDecodesNothing)
{
    const std::string header = SlideWriter(100, 100).Bytes();
    EXPECT_TRUE(Decode(header.substr(0, 30) + std::string("\x01\xFF", 2)).empty());
    EXPECT_TRUE(Decode(header).empty());
    const QM::SlideStats none = QM::DecodeSlide(nullptr, 100, recorder);
    EXPECT_EQ(none.colourChanges, 0u);
    EXPECT_TRUE(recorder.events.empty());
}

TEST_F(SlideDecoderEnd, FillLeftOpenWhenDataRunsOutIsDropped)
{
    SlideWriter slide(100, 100);
    slide.Fill(1, 1).Fill(2, 2).Fill(3, 3).FillMarker();
    EXPECT_TRUE(Decode(slide.Bytes()).empty());
}

}  // namespace
