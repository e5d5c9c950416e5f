// FileTest.cpp - CFile status and CStdioFile lines at the edges that the
// text-file helpers depend on: full buffers, CR LF split across reads,
// double-byte characters at a cut, the 64 KB read-ahead boundary.
#include "TestText.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Line
{
    CStdioFile::LineResult result;
    std::string bytes;
    bool operator==(const Line& other) const { return result == other.result && bytes == other.bytes; }
};

std::ostream& operator<<(std::ostream& out, const Line& line)
{
    return out << "{" << line.result << ", \"" << line.bytes << "\" (" << line.bytes.size() << " bytes)}";
}

class StdioFileTest : public ::testing::Test
{
protected:
    // Every ReadLine result up to the end of the file, read with `size`.
    std::vector<Line> ReadAll(const std::string& content, UINT size)
    {
        const CString path = dir.WriteFile(L"lines.txt", content);
        CStdioFile file;
        EXPECT_TRUE(file.Open(path, CFile::modeRead | CFile::shareDenyNone));
        std::vector<Line> lines;
        std::vector<char> buffer(size);
        for (int guard = 0; guard < 100; ++guard) {
            const CStdioFile::LineResult result = file.ReadLine(buffer.data(), size);
            if (result == CStdioFile::endOfFile)
                break;
            lines.push_back(Line{result, buffer.data()});
        }
        return lines;
    }

    qmtest::TempDir dir;
};

TEST_F(StdioFileTest, LineEndsAreLfOrCrLfAndALoneCrIsData)
{
    EXPECT_EQ(ReadAll("a\r\nb\nc\rd\r\n\r\ne", 16),
              (std::vector<Line>{{CStdioFile::lineRead, "a"},
                                 {CStdioFile::lineRead, "b"},
                                 {CStdioFile::lineRead, "c\rd"},
                                 {CStdioFile::lineRead, ""},
                                 {CStdioFile::lineRead, "e"}}));
}

TEST_F(StdioFileTest, ALineThatFillsTheBufferExactlyIsWhole)
{
    EXPECT_EQ(ReadAll("abc\r\ndefg\r\n", 4),
              (std::vector<Line>{{CStdioFile::lineRead, "abc"},
                                 {CStdioFile::lineTooLong, "def"},
                                 {CStdioFile::lineRead, "g"}}));
}

TEST_F(StdioFileTest, ACrAfterAFullBufferStartsTheRest)
{
    EXPECT_EQ(ReadAll("abc\rX\n", 4),
              (std::vector<Line>{{CStdioFile::lineTooLong, "abc"}, {CStdioFile::lineRead, "\rX"}}));
    EXPECT_EQ(ReadAll("abc\r", 4), (std::vector<Line>{{CStdioFile::lineTooLong, "abc"}, {CStdioFile::lineRead, "\r"}}));
}

TEST_F(StdioFileTest, ADoubleByteCharacterIsNotCutAtTheEndOfTheBuffer)
{
    ASSERT_EQ(GetACP(), 936u);
    const std::string zhong = qmtest::Ansi(L"中");   // D6 D0
    EXPECT_EQ(ReadAll("a" + zhong + "b\r\n", 3),
              (std::vector<Line>{{CStdioFile::lineTooLong, "a"},
                                 {CStdioFile::lineTooLong, zhong},
                                 {CStdioFile::lineRead, "b"}}));
}

TEST_F(StdioFileTest, ALineEndAcrossTheReadAheadBoundary)
{
    // The read-ahead holds 65536 bytes: the CR is its last byte, the LF or
    // the next byte the first of the following read.
    const std::string line(65535, 'x');
    std::vector<Line> lines = ReadAll(line + "\r\nz", 65536);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], (Line{CStdioFile::lineRead, line}));
    EXPECT_EQ(lines[1], (Line{CStdioFile::lineRead, "z"}));

    lines = ReadAll(line + "\ry\n", 65536);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], (Line{CStdioFile::lineTooLong, line}));
    EXPECT_EQ(lines[1], (Line{CStdioFile::lineRead, "\ry"}));
}

TEST_F(StdioFileTest, WriteStringInTextAndBinaryMode)
{
    const CString text = dir.Path() + L"t.txt", binary = dir.Path() + L"b.txt";
    {
        CStdioFile file;
        ASSERT_TRUE(file.Open(text, CFile::modeCreate | CFile::modeWrite | CFile::typeText));
        file.WriteString(L"中\n\nx");
        CStdioFile raw;
        ASSERT_TRUE(raw.Open(binary, CFile::modeCreate | CFile::modeWrite | CFile::typeBinary));
        raw.WriteString(L"a\nb\n");
    }
    EXPECT_EQ(qmtest::TempDir::ReadFile(text), qmtest::Ansi(L"中") + "\r\n\r\nx");
    EXPECT_EQ(qmtest::TempDir::ReadFile(binary), std::string("a\nb\n"));
}

TEST_F(StdioFileTest, OpenCreateTruncatesUnlessNoTruncate)
{
    const CString path = dir.WriteFile(L"f.txt", "old");
    {
        CStdioFile file;
        ASSERT_TRUE(file.Open(path, CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite));
        EXPECT_EQ(file.GetLength(), 3u);
    }
    EXPECT_EQ(qmtest::TempDir::ReadFile(path), std::string("old"));
    {
        CStdioFile file;
        ASSERT_TRUE(file.Open(path, CFile::modeCreate | CFile::modeWrite));
    }
    EXPECT_EQ(qmtest::TempDir::ReadFile(path), std::string(""));
}

TEST_F(StdioFileTest, OpenFailureFillsTheExceptionObject)
{
    CFile file;
    CFileException error;
    EXPECT_FALSE(file.Open(dir.Path() + L"missing.txt", CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
    EXPECT_FALSE(file.Open(nullptr, CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::badPath);
    EXPECT_EQ(file.m_hFile, INVALID_HANDLE_VALUE);
}

TEST_F(StdioFileTest, ExclusiveOpenKeepsOthersOut)
{
    const CString path = dir.WriteFile(L"x.txt", "x");
    CFile first;
    ASSERT_TRUE(first.Open(path, CFile::modeRead | CFile::shareExclusive));
    CFile second;
    CFileException error;
    EXPECT_FALSE(second.Open(path, CFile::modeRead | CFile::shareDenyNone, &error));
    EXPECT_EQ(error.m_cause, CFileException::sharingViolation);
}

TEST_F(StdioFileTest, GetStatusOfFileFolderAndMissingName)
{
    const CString path = dir.WriteFile(L"s.txt", "12345");
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(path, status));
    EXPECT_EQ(status.m_size, 5u);
    EXPECT_EQ(CString(status.m_szFullName).CompareNoCase(path), 0);
    ASSERT_TRUE(CFile::GetStatus(dir.Path(), status));
    EXPECT_TRUE(status.m_attribute & FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(status.m_size, 0u);
    EXPECT_FALSE(CFile::GetStatus(dir.Path() + L"none", status));
    EXPECT_FALSE(CFile::GetStatus(nullptr, status));
    EXPECT_FALSE(CFile::GetStatus(CString(L'a', MAX_PATH), status));
}

TEST_F(StdioFileTest, RemoveThrowsForAMissingFile)
{
    bool thrown = false;
    try {
        CFile::Remove(dir.Path() + L"none.txt");
    } catch (CFileException* e) {
        thrown = e->m_cause == CFileException::fileNotFound;
        e->Delete();
    }
    EXPECT_TRUE(thrown);
}

}  // namespace
