// FileTest.cpp - CFile and CStdioFile at the edges the text-file helpers depend on.
#include "TestText.h"
#include "support/TempDir.h"
#include "support/Throws.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using Line = std::pair<CStdioFile::LineResult, std::string>;
const CStdioFile::LineResult kRead = CStdioFile::lineRead, kLong = CStdioFile::lineTooLong;

class StdioFileTest : public ::testing::Test
{
protected:
    // Every ReadLine result up to the end of `content`, read with a buffer of `size`.
    std::vector<Line> ReadAll(const std::string& content, UINT size)
    {
        CStdioFile file;
        EXPECT_TRUE(file.Open(dir.WriteFile(L"lines.txt", content), CFile::modeRead | CFile::shareDenyNone));
        std::vector<Line> lines;
        std::vector<char> buffer(size);
        CStdioFile::LineResult result;
        while (lines.size() < 100 && (result = file.ReadLine(buffer.data(), size)) != CStdioFile::endOfFile)
            lines.push_back({result, buffer.data()});
        return lines;
    }

    qmtest::TempDir dir;
};

TEST_F(StdioFileTest, ReadLineEndsLinesAtLfOrCrLfAndCutsOnlyBetweenCharacters)
{
    const std::string zhong = qmtest::Ansi(L"中"), big(65535, 'x');   // 中 is D6 D0
    const struct { std::string content; UINT size; std::vector<Line> lines; } rows[] = {
        {"a\r\nb\nc\rd\r\n\r\ne", 16, {{kRead, "a"}, {kRead, "b"}, {kRead, "c\rd"}, {kRead, ""}, {kRead, "e"}}},
        // A line that fills the buffer exactly is whole; a CR after a full buffer starts the rest.
        {"abc\r\ndefg\r\n", 4, {{kRead, "abc"}, {kLong, "def"}, {kRead, "g"}}},
        {"abc\rX\n", 4, {{kLong, "abc"}, {kRead, "\rX"}}},
        {"abc\r", 4, {{kLong, "abc"}, {kRead, "\r"}}},
        {"a" + zhong + "b\r\n", 3, {{kLong, "a"}, {kLong, zhong}, {kRead, "b"}}},
        // The CR is the last byte of the 65536-byte read-ahead, what follows it the first of the next.
        {big + "\r\nz", 65536, {{kRead, big}, {kRead, "z"}}},
        {big + "\ry\n", 65536, {{kLong, big}, {kRead, "\ry"}}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ReadAll(row.content, row.size), row.lines) << row.content.substr(0, 16) << " / " << row.size;
}

// A failed open gives its cause and leaves the file closed; a locked file still has a status.
TEST_F(StdioFileTest, FailedOpensStatusAndRemoveOfAMissingFile)
{
    const CString locked = dir.WriteFile(L"x.txt", "x"), missing = dir.Path() + L"missing.txt";
    CFile holder;
    ASSERT_TRUE(holder.Open(locked, CFile::modeRead | CFile::shareExclusive));
    const struct { const wchar_t* path; int cause; } rows[] = {
        {missing, CFileException::fileNotFound}, {nullptr, CFileException::badPath},
        {L"", CFileException::badPath}, {locked, CFileException::sharingViolation}};
    for (const auto& row : rows) {
        CFile file;
        CFileException error;
        EXPECT_FALSE(file.Open(row.path, CFile::modeRead | CFile::shareDenyNone, &error)) << row.path;
        EXPECT_EQ(error.m_cause, row.cause) << row.path;
        EXPECT_EQ(file.m_hFile, INVALID_HANDLE_VALUE) << row.path;
        CFileStatus status;
        EXPECT_EQ(CFile::GetStatus(row.path, status), &row == &rows[3]) << row.path;
    }
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(locked, status));
    EXPECT_EQ(status.m_size, 1u);
    EXPECT_FALSE(CFile::GetStatus(CString(L'a', MAX_PATH), status));
    EXPECT_EQ(qmtest::FileFaultCause([&] { CFile::Remove(dir.Path() + L"none.txt"); }), CFileException::fileNotFound);
}

}  // namespace
