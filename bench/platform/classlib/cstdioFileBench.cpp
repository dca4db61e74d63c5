// CStdioFile against C's own files: a million lines, as they stand in a generated source.
#include "platform/classlib/CStdioFile.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int lineCount = 1'000'000;

// A file of its own, which goes with the object.
class ScratchFile {
public:
    ScratchFile() : path_((std::filesystem::temp_directory_path() / "zk-cstdioFileBench.txt").string()) { }
    ~ScratchFile() { std::filesystem::remove(path_); }
    ScratchFile(ScratchFile const&) = delete;
    ScratchFile& operator=(ScratchFile const&) = delete;

    char const* path() const { return path_.c_str(); }

private:
    std::string const path_;
};

std::vector<std::string> const& lines()
{
    static std::vector<std::string> const list = [] {
        std::vector<std::string> made;
        for (int number = 0; number < lineCount; ++number)
            made.push_back(std::string(std::size_t(number % 5) * 4, ' ') + "component" +
                           std::to_string(number) + ".setProperty(" +
                           std::string(std::size_t(number % 31), 'x') + ");\n");
        return made;
    }();
    return list;
}

void writeLines(char const* path)
{
    std::FILE* const file = std::fopen(path, "wb");
    for (std::string const& line : lines())
        std::fputs(line.c_str(), file);
    std::fclose(file);
}

void readLines(benchmark::State& state)
{
    ScratchFile const scratch;
    writeLines(scratch.path());
    for (auto _ : state) {
        CStdioFile file(scratch.path(), CFile::modeRead | CFile::shareDenyWrite);
        CString line;
        std::size_t length = 0;
        while (file.ReadString(line))
            length += std::size_t(line.GetLength());
        benchmark::DoNotOptimize(length);
    }
}

void readLinesPeer(benchmark::State& state)
{
    ScratchFile const scratch;
    writeLines(scratch.path());
    for (auto _ : state) {
        std::FILE* const file = std::fopen(scratch.path(), "rb");
        char* line = nullptr;
        std::size_t room = 0;
        std::size_t length = 0;
        for (ssize_t count; (count = getline(&line, &room, file)) > 0;)
            length += std::size_t(count) - (line[count - 1] == '\n');
        benchmark::DoNotOptimize(length);
        std::free(line);
        std::fclose(file);
    }
}

void readLinesIntoABuffer(benchmark::State& state)
{
    ScratchFile const scratch;
    writeLines(scratch.path());
    for (auto _ : state) {
        CStdioFile file(scratch.path(), CFile::modeRead | CFile::shareDenyWrite);
        char line[200];
        int count = 0;
        while (file.ReadString(line, sizeof line))
            ++count;
        benchmark::DoNotOptimize(count);
    }
}

void readLinesIntoABufferPeer(benchmark::State& state)
{
    ScratchFile const scratch;
    writeLines(scratch.path());
    for (auto _ : state) {
        std::FILE* const file = std::fopen(scratch.path(), "rb");
        char line[200];
        int count = 0;
        while (std::fgets(line, sizeof line, file))
            ++count;
        benchmark::DoNotOptimize(count);
        std::fclose(file);
    }
}

void writeText(benchmark::State& state)
{
    ScratchFile const scratch;
    lines();
    for (auto _ : state) {
        CStdioFile file(scratch.path(), CFile::modeCreate | CFile::modeWrite);
        for (std::string const& line : lines())
            file.WriteString(line.c_str());
        file.Close();
    }
}

void writeTextPeer(benchmark::State& state)
{
    ScratchFile const scratch;
    lines();
    for (auto _ : state)
        writeLines(scratch.path());
}

void readPieces(benchmark::State& state)
{
    ScratchFile const scratch;
    writeLines(scratch.path());
    for (auto _ : state) {
        CStdioFile file(scratch.path(), CFile::modeRead | CFile::shareDenyWrite);
        char piece[8];
        int count = 0;
        while (file.Read(piece, sizeof piece) == sizeof piece)
            ++count;
        benchmark::DoNotOptimize(count);
    }
}

void readPiecesPeer(benchmark::State& state)
{
    ScratchFile const scratch;
    writeLines(scratch.path());
    for (auto _ : state) {
        std::FILE* const file = std::fopen(scratch.path(), "rb");
        char piece[8];
        int count = 0;
        while (std::fread(piece, 1, sizeof piece, file) == sizeof piece)
            ++count;
        benchmark::DoNotOptimize(count);
        std::fclose(file);
    }
}

constexpr auto inMilliseconds = benchmark::kMillisecond;

BENCHMARK(readLines)->Name("read lines/ours")->Unit(inMilliseconds);
BENCHMARK(readLinesPeer)->Name("read lines/getline")->Unit(inMilliseconds);
BENCHMARK(readLinesIntoABuffer)->Name("read lines into a buffer/ours")->Unit(inMilliseconds);
BENCHMARK(readLinesIntoABufferPeer)->Name("read lines into a buffer/fgets")->Unit(inMilliseconds);
BENCHMARK(readPieces)->Name("read pieces of 8 bytes/ours")->Unit(inMilliseconds);
BENCHMARK(readPiecesPeer)->Name("read pieces of 8 bytes/fread")->Unit(inMilliseconds);
BENCHMARK(writeText)->Name("write lines/ours")->Unit(inMilliseconds);
BENCHMARK(writeTextPeer)->Name("write lines/fputs")->Unit(inMilliseconds);

}  // namespace
