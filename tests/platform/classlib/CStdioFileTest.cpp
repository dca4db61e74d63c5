#include "platform/classlib/CStdioFile.h"

#include "platform/os/textFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr bool crLf = zk::os::textLinesEndInCrLf;
constexpr std::size_t bufferSize = 16384;

class StdioFileTest : public testing::Test {
protected:
    CString path(char const* entry) const { return CString(folder.path(entry).c_str()); }

    std::vector<std::string> linesOf(std::string const& content, UINT type = CFile::typeText)
    {
        folder.write("lines.txt", content);
        CStdioFile file(path("lines.txt"), CFile::modeRead | type);
        std::vector<std::string> lines;
        CString line;
        while (file.ReadString(line))
            lines.emplace_back(line.view());
        EXPECT_TRUE(line.IsEmpty()) << "at the end of the file";
        return lines;
    }

    TemporaryFolder folder;
};

using StdioFileLines = StdioFileTest;
using StdioFileBuffer = StdioFileTest;
using StdioFileWriting = StdioFileTest;
using StdioFilePosition = StdioFileTest;

using Lines = std::vector<std::string>;

}  // namespace

TEST_F(StdioFileLines, comeWithoutTheirLineEnds)
{
    EXPECT_EQ(linesOf("a\nbc\n\nd\n"), (Lines{"a", "bc", "", "d"}));
}

TEST_F(StdioFileLines, includeALastOneWithoutLineEnd)
{
    EXPECT_EQ(linesOf("a\nlast"), (Lines{"a", "last"}));
    EXPECT_EQ(linesOf("last"), Lines{"last"});
    EXPECT_EQ(linesOf("\n"), Lines{""});
    EXPECT_EQ(linesOf(""), Lines{});
}

TEST_F(StdioFileLines, loseTheCarriageReturnWhereTheSystemsLinesHaveOne)
{
    Lines const kept{"a\r", "\r", "b\rc\r\r", "d\r"};
    Lines const dropped{"a", "", "b\rc\r", "d\r"};

    EXPECT_EQ(linesOf("a\r\n\r\nb\rc\r\r\nd\r"), crLf ? dropped : kept);
    EXPECT_EQ(linesOf("a\r\n\r\nb\rc\r\r\nd\r", CFile::typeBinary), kept);
}

TEST_F(StdioFileLines, holdAnyOtherByte)
{
    EXPECT_EQ(linesOf(std::string("a\0b\x1A\xFF\n\0\n", 8)),
              (Lines{std::string("a\0b\x1A\xFF", 5), std::string(1, '\0')}));
}

TEST_F(StdioFileLines, haveAnyLength)
{
    for (std::size_t const length : {127u, 128u, 129u, 16382u, 16383u, 16384u, 16385u, 100000u}) {
        std::string const longLine(length, 'x');

        EXPECT_EQ(linesOf(longLine + "\nb\n"), (Lines{longLine, "b"})) << "length " << length;
        EXPECT_EQ(linesOf(longLine + "\r\nb\n", CFile::typeBinary), (Lines{longLine + "\r", "b"}));
        EXPECT_EQ(linesOf(longLine + "\r\nb"), (Lines{crLf ? longLine : longLine + "\r", "b"}));
    }
}

TEST_F(StdioFileBuffer, getsALineWithItsLineFeed)
{
    folder.write("a.txt", "one\ntwo");
    CStdioFile file(path("a.txt"), CFile::modeRead);
    char buffer[10];

    EXPECT_EQ(file.ReadString(buffer, sizeof buffer), buffer);
    EXPECT_STREQ(buffer, "one\n");
    EXPECT_EQ(file.ReadString(buffer, sizeof buffer), buffer);
    EXPECT_STREQ(buffer, "two");
    EXPECT_EQ(file.ReadString(buffer, sizeof buffer), nullptr);
    EXPECT_STREQ(buffer, "two");
}

TEST_F(StdioFileBuffer, getsALongLineInPieces)
{
    struct {
        UINT size;
        Lines pieces;
    } const rows[] = {
        {2, {"a", "b", "c", "d", "\n", "e"}},
        {3, {"ab", "cd", "\n", "e"}},
        {4, {"abc", "d\n", "e"}},
        {5, {"abcd", "\n", "e"}},
        {6, {"abcd\n", "e"}},
        {7, {"abcd\n", "e"}},
    };
    folder.write("a.txt", "abcd\ne");
    for (auto const& row : rows) {
        CStdioFile file(path("a.txt"), CFile::modeRead);
        Lines pieces;
        char buffer[8];
        buffer[row.size] = '~';
        while (file.ReadString(buffer, row.size))
            pieces.emplace_back(buffer);

        EXPECT_EQ(pieces, row.pieces) << "buffer of " << row.size;
        EXPECT_EQ(buffer[row.size], '~');
    }
}

TEST_F(StdioFileBuffer, withoutRoomGetsNothing)
{
    folder.write("a.txt", "abc");
    CStdioFile file(path("a.txt"), CFile::modeRead);
    char buffer[] = "~~";

    EXPECT_EQ(file.ReadString(buffer, 0), nullptr);
    EXPECT_EQ(file.ReadString(nullptr, 5), nullptr);
    EXPECT_STREQ(buffer, "~~");
    EXPECT_EQ(file.ReadString(buffer, 1), buffer);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(file.GetPosition(), 0u);
}

TEST_F(StdioFileBuffer, getsCrLfAsTheSystemReadsIt)
{
    folder.write("a.txt", "ab\r\nc\r");
    CStdioFile file(path("a.txt"), CFile::modeRead);
    char buffer[8];

    file.ReadString(buffer, sizeof buffer);
    EXPECT_STREQ(buffer, crLf ? "ab\n" : "ab\r\n");
    file.ReadString(buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "c\r");
}

TEST_F(StdioFileBuffer, readsBytesAcrossItsEdge)
{
    std::string content;
    for (int i = 0; content.size() < 3 * bufferSize; ++i)
        content += std::to_string(i) + "\r\n";
    folder.write("a.txt", content);
    std::string expected = content;
    if (crLf)
        std::erase(expected, '\r');
    for (UINT const step : {1000u, 16383u, 16384u, 40000u, 70000u}) {
        CStdioFile file(path("a.txt"), CFile::modeRead);
        std::string read, part(step, '\0');
        while (UINT const count = file.Read(part.data(), step))
            read.append(part, 0, count);

        EXPECT_TRUE(read == expected) << "in steps of " << step;
    }
}

TEST_F(StdioFileWriting, writesLineEndsTheSystemsWay)
{
    CStdioFile file(path("a.txt"), CFile::modeCreate | CFile::modeWrite);

    file.WriteString("one\n");
    file.WriteString("");
    file.WriteString(nullptr);
    file.Write("two\n\nx", 6);
    file.Close();

    EXPECT_EQ(folder.read("a.txt"), crLf ? "one\r\ntwo\r\n\r\nx" : "one\ntwo\n\nx");
}

TEST_F(StdioFileWriting, writesABinaryFileAsItIs)
{
    CStdioFile file(path("a.txt"), CFile::modeCreate | CFile::modeWrite | CFile::typeBinary);

    file.WriteString("one\r\ntwo\n");
    file.Close();

    EXPECT_EQ(folder.read("a.txt"), "one\r\ntwo\n");
}

TEST_F(StdioFileWriting, reachesTheDiskAtFlushCloseAndTheEndOfTheObject)
{
    UINT const flags = CFile::modeCreate | CFile::modeWrite | CFile::shareDenyNone;
    CStdioFile flushed(path("a.txt"), flags);
    flushed.WriteString("a");
    EXPECT_EQ(folder.read("a.txt"), "");

    flushed.Flush();
    EXPECT_EQ(folder.read("a.txt"), "a");

    {
        CStdioFile file(path("b.txt"), flags);
        file.WriteString("b");
    }
    EXPECT_EQ(folder.read("b.txt"), "b");

    CStdioFile aborted(path("c.txt"), flags);
    aborted.WriteString("c");
    aborted.Abort();
    EXPECT_EQ(folder.read("c.txt"), "c");
}

TEST_F(StdioFileWriting, keepsTheOrderOfShortAndLongTexts)
{
    std::string expected;
    {
        CStdioFile file(path("a.txt"), CFile::modeCreate | CFile::modeWrite | CFile::typeBinary);
        for (std::size_t const length : {10u, 20000u, 3u, 16384u, 16383u, 2u, 50000u, 1u}) {
            std::string const part(length, char('a' + length % 26));
            file.WriteString(part.c_str());
            expected += part;
        }
    }

    EXPECT_TRUE(folder.read("a.txt") == expected);
}

TEST_F(StdioFileWriting, followsReadingWhereTheReaderStands)
{
    folder.write("a.txt", "one\ntwo\nthree\n");
    CStdioFile file(path("a.txt"), CFile::modeReadWrite | CFile::typeBinary);
    CString line;

    file.ReadString(line);
    file.WriteString("TWO");
    file.ReadString(line);
    EXPECT_EQ(line, "");
    file.ReadString(line);
    file.Close();

    EXPECT_EQ(line, "three");
    EXPECT_EQ(folder.read("a.txt"), "one\nTWO\nthree\n");
}

TEST_F(StdioFileWriting, failsOnAFileOpenForReading)
{
    folder.write("a.txt", "abc");
    CStdioFile file(path("a.txt"), CFile::modeRead);
    file.WriteString("x");

    EXPECT_THROW(
        {
            try {
                file.Close();
            } catch (CFileException* exception) {
                EXPECT_EQ(exception->m_cause, CFileException::accessDenied);
                exception->Delete();
                throw 0;
            }
        },
        int);

    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
    EXPECT_EQ(folder.read("a.txt"), "abc");
}

TEST_F(StdioFileWriting, thatFailedBeforeAnotherFileIsOpenedIsTold)
{
    folder.write("a.txt", "abc");
    folder.write("b.txt", "def");
    CStdioFile file(path("a.txt"), CFile::modeRead);
    file.WriteString("x");
    CFileException failure;

    EXPECT_FALSE(file.Open(path("b.txt"), CFile::modeRead, &failure));

    EXPECT_EQ(failure.m_cause, CFileException::accessDenied);
    EXPECT_EQ(failure.m_strFileName, path("a.txt"));
    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
    EXPECT_TRUE(file.Open(path("b.txt"), CFile::modeRead, &failure)) << "nothing is pending any more";
}

TEST_F(StdioFileWriting, isDoneBeforeAnotherFileIsOpened)
{
    CStdioFile file(path("a.txt"), CFile::modeCreate | CFile::modeWrite | CFile::typeBinary);
    file.WriteString("abc");

    EXPECT_TRUE(file.Open(path("b.txt"), CFile::modeCreate | CFile::modeWrite));

    EXPECT_EQ(folder.read("a.txt"), "abc");
}

#ifndef _WIN32  // the other system has no file like this one

TEST_F(StdioFileWriting, ontoAFullDiskIsToldOnce)
{
    CStdioFile file("/dev/full", CFile::modeWrite | CFile::shareDenyNone);
    file.WriteString("abc");

    try {
        file.Flush();
        ADD_FAILURE() << "nothing was thrown";
    } catch (CFileException* exception) {
        EXPECT_EQ(exception->m_cause, CFileException::diskFull);
        EXPECT_EQ(exception->m_strFileName, "/dev/full");
        exception->Delete();
    }
    file.Close();
}

#endif

TEST_F(StdioFilePosition, isWhereTheReaderStands)
{
    folder.write("a.txt", "one\r\ntwo\r\n");
    CStdioFile file(path("a.txt"), CFile::modeRead);
    CString line;

    file.ReadString(line);

    EXPECT_EQ(file.GetPosition(), 5u);
    EXPECT_EQ(file.Seek(-1, CFile::current), 4u);
    EXPECT_EQ(file.Seek(5, CFile::begin), 5u);
    char rest[4];
    file.ReadString(rest, 4);
    EXPECT_STREQ(rest, "two");
    EXPECT_EQ(file.SeekToEnd(), 10u);
    EXPECT_FALSE(file.ReadString(line));
    EXPECT_EQ(file.GetLength(), 10u);
}

TEST_F(StdioFilePosition, countsWhatIsWrittenButNotOnTheDisk)
{
    CStdioFile file(path("a.txt"), CFile::modeCreate | CFile::modeReadWrite | CFile::typeBinary);

    file.WriteString("12345");

    EXPECT_EQ(file.GetPosition(), 5u);
    EXPECT_EQ(file.GetLength(), 5u);
    file.Seek(1, CFile::begin);
    file.WriteString("x");
    EXPECT_EQ(file.GetPosition(), 2u);
    EXPECT_EQ(file.GetLength(), 5u);
    file.SetLength(3);
    file.Close();
    EXPECT_EQ(folder.read("a.txt"), "1x3");
}

TEST_F(StdioFilePosition, belongsToOneObjectAlone)
{
    folder.write("a.txt", "abc");
    CStdioFile file(path("a.txt"), CFile::modeRead);
    auto const refuses = [](auto call) {
        try {
            call();
        } catch (CNotSupportedException* exception) {
            exception->Delete();
            return true;
        }
        return false;
    };

    EXPECT_TRUE(refuses([&] { file.LockRange(0, 1); }));
    EXPECT_TRUE(refuses([&] { file.UnlockRange(0, 1); }));
    EXPECT_TRUE(refuses([&] { file.Duplicate(); }));
}

TEST_F(StdioFilePosition, startsAnewWithEachFile)
{
    folder.write("a.txt", "aaa\nbbb\n");
    folder.write("b.txt", "ccc\n");
    CStdioFile file(path("a.txt"), CFile::modeRead);
    CString line;
    file.ReadString(line);

    ASSERT_TRUE(file.Open(path("b.txt"), CFile::modeRead));
    file.ReadString(line);

    EXPECT_EQ(line, "ccc");
}

TEST_F(StdioFilePosition, ofAMissingFileThrowsFromTheConstructor)
{
    try {
        CStdioFile const file(path("missing"), CFile::modeRead);
        FAIL() << "nothing was thrown";
    } catch (CFileException* exception) {
        EXPECT_EQ(exception->m_cause, CFileException::fileNotFound);
        exception->Delete();
    }
}
