// A profile of 200 KB, 200 sections of 50 keys: reads against stat() and GLib's
// key file, writes against the least that a durable write costs.
#include "platform/os/os.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#ifdef ZK_BENCH_GLIB
#    include <glib.h>
#endif

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace {

std::string profileText()
{
    std::string text;
    for (int section = 0; section < 200; ++section) {
        text += "[Section" + std::to_string(section) + "]\n";
        for (int key = 0; key < 50; ++key)
            text += "keyNumber" + std::to_string(key) + "=value " + std::to_string(section * key) + "\n";
    }
    return text;
}

// More copies of the file than the library keeps, so that each read in turn is a first one.
class Files {
public:
    Files()
    {
        char name[] = "/tmp/zk-bench-XXXXXX";
        folder_ = mkdtemp(name);
        for (int i = 0; i < 40; ++i) {
            paths_.push_back(folder_ / ("profile" + std::to_string(i) + ".ini"));
            std::ofstream(paths_.back()) << profileText();
        }
        // A file that has just changed is not kept yet.
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    ~Files() { std::filesystem::remove_all(folder_); }

    char const* one() const { return paths_[0].c_str(); }
    char const* next() { return paths_[++next_ % paths_.size()].c_str(); }
    std::string path(char const* name) const { return folder_ / name; }

private:
    std::filesystem::path folder_;
    std::vector<std::string> paths_;
    std::size_t next_ = 0;
};

Files& files()
{
    static Files instance;
    return instance;
}

constexpr char section[] = "Section150";
constexpr char key[] = "keyNumber25";

void readKnownOurs(benchmark::State& state)
{
    char value[100];
    for (auto _ : state)
        benchmark::DoNotOptimize(
            GetPrivateProfileStringA(section, key, "", value, sizeof value, files().one()));
}

void readKnownStat(benchmark::State& state)
{
    struct stat status;
    for (auto _ : state)
        benchmark::DoNotOptimize(stat(files().one(), &status));
}

void readFirstOurs(benchmark::State& state)
{
    char value[100];
    for (auto _ : state)
        benchmark::DoNotOptimize(
            GetPrivateProfileStringA(section, key, "", value, sizeof value, files().next()));
}

#ifdef ZK_BENCH_GLIB
void readFirstGlib(benchmark::State& state)
{
    for (auto _ : state) {
        GKeyFile* const file = g_key_file_new();
        g_key_file_load_from_file(file, files().next(), G_KEY_FILE_NONE, nullptr);
        char* const value = g_key_file_get_string(file, section, key, nullptr);
        benchmark::DoNotOptimize(value);
        g_free(value);
        g_key_file_free(file);
    }
}
#endif

void writeOneOurs(benchmark::State& state)
{
    std::string const path = files().path("written.ini");
    std::ofstream(path) << profileText();
    int count = 0;
    for (auto _ : state)
        WritePrivateProfileStringA(section, key, std::to_string(++count).c_str(), path.c_str());
}

void writeOneBare(benchmark::State& state)
{
    std::string const path = files().path("bare.ini");
    std::string const temporary = path + ".new";
    std::string const text = profileText();
    for (auto _ : state) {
        int const file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (write(file, text.data(), text.size()) == -1 || fsync(file) == -1)
            state.SkipWithError("the file cannot be written");
        close(file);
        rename(temporary.c_str(), path.c_str());
    }
}

BENCHMARK(readKnownOurs)->Name("profile: read a key again/ours");
BENCHMARK(readKnownStat)->Name("profile: read a key again/stat");
BENCHMARK(readFirstOurs)->Name("profile: first read of a key/ours");
#ifdef ZK_BENCH_GLIB
BENCHMARK(readFirstGlib)->Name("profile: first read of a key/glib");
#endif
BENCHMARK(writeOneOurs)->Name("profile: write a key/ours")->UseRealTime();
BENCHMARK(writeOneBare)->Name("profile: write a key/write+fsync+rename")->UseRealTime();

}  // namespace
