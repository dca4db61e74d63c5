// CMap against std::unordered_map, at 10,000 entries unless a name says otherwise.
#include "platform/classlib/CMap.h"
#include "platform/classlib/CStringMaps.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

constexpr int entries = 10000;

// Keys in an order of chance, so that no contender profits from the order they came in.
std::vector<std::string> const& names()
{
    static std::vector<std::string> const list = [] {
        std::vector<std::string> made;
        for (int i = 0; i < entries; ++i)
            made.push_back("component" + std::to_string(i * 7919 % entries) + ".property");
        std::shuffle(made.begin(), made.end(), std::mt19937(1));
        return made;
    }();
    return list;
}

std::vector<int> const& numbers()
{
    static std::vector<int> const list = [] {
        std::vector<int> made;
        for (int i = 0; i < entries; ++i)
            made.push_back(i);
        std::shuffle(made.begin(), made.end(), std::mt19937(2));
        return made;
    }();
    return list;
}

template <class Key>
std::vector<Key> keysAs(std::vector<std::string> const& list)
{
    std::vector<Key> keys;
    for (std::string const& name : list)
        keys.emplace_back(name.c_str());
    return keys;
}

void lookUpTexts(benchmark::State& state, UINT tableSize, int count)
{
    CMap<CString, CString const&, int, int> map;
    if (tableSize)
        map.InitHashTable(tableSize);
    auto keys = keysAs<CString>(names());
    keys.resize(static_cast<std::size_t>(count));
    for (CString const& key : keys)
        map[key] = 1;
    std::shuffle(keys.begin(), keys.end(), std::mt19937(3));
    std::size_t next = 0;
    int value = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(map.Lookup(keys[next], value));
        next = next + 1 == keys.size() ? 0 : next + 1;
    }
}

void lookUpTextsPeer(benchmark::State& state, int count)
{
    std::unordered_map<std::string, int> map;
    auto keys = keysAs<std::string>(names());
    keys.resize(static_cast<std::size_t>(count));
    for (std::string const& key : keys)
        map[key] = 1;
    std::shuffle(keys.begin(), keys.end(), std::mt19937(3));
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(map.find(keys[next]));
        next = next + 1 == keys.size() ? 0 : next + 1;
    }
}

void lookUpNumbers(benchmark::State& state)
{
    CMap<int, int, int, int> map;
    map.InitHashTable(entries);
    for (int number : numbers())
        map[number] = 1;
    std::size_t next = 0;
    int value = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(map.Lookup(numbers()[next], value));
        next = next + 1 == entries ? 0 : next + 1;
    }
}

void lookUpNumbersPeer(benchmark::State& state)
{
    std::unordered_map<int, int> map;
    for (int number : numbers())
        map[number] = 1;
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(map.find(numbers()[next]));
        next = next + 1 == entries ? 0 : next + 1;
    }
}

void missTexts(benchmark::State& state)
{
    CMapStringToString map;
    for (std::string const& name : names())
        map[name.c_str()] = "x";
    CString const key("component.no property");
    CString value;
    for (auto _ : state)
        benchmark::DoNotOptimize(map.Lookup(key, value));
}

void missTextsPeer(benchmark::State& state)
{
    std::unordered_map<std::string, std::string> map;
    for (std::string const& name : names())
        map[name] = "x";
    std::string const key("component.no property");
    for (auto _ : state)
        benchmark::DoNotOptimize(map.find(key));
}

template <class Map, class Key>
void fill(benchmark::State& state)
{
    auto const keys = keysAs<Key>(names());
    for (auto _ : state) {
        Map map;
        for (Key const& key : keys)
            map[key] = 1;
        benchmark::DoNotOptimize(map);
    }
}

void walk(benchmark::State& state)
{
    CMap<int, int, int, int> map;
    for (int number : numbers())
        map[number] = 1;
    for (auto _ : state) {
        int sum = 0;
        for (POSITION at = map.GetStartPosition(); at;) {
            int key = 0;
            int value = 0;
            map.GetNextAssoc(at, key, value);
            sum += key + value;
        }
        benchmark::DoNotOptimize(sum);
    }
}

void walkPeer(benchmark::State& state)
{
    std::unordered_map<int, int> map;
    for (int number : numbers())
        map[number] = 1;
    for (auto _ : state) {
        int sum = 0;
        for (auto const& [key, value] : map)
            sum += key + value;
        benchmark::DoNotOptimize(sum);
    }
}

void lookUpTextsGrown(benchmark::State& state)
{
    lookUpTexts(state, entries, entries);
}

void lookUpTextsDefault(benchmark::State& state)
{
    lookUpTexts(state, 0, entries);
}

void lookUpTextsSmall(benchmark::State& state)
{
    lookUpTexts(state, 0, 10);
}

void lookUpTextsLargePeer(benchmark::State& state)
{
    lookUpTextsPeer(state, entries);
}

void lookUpTextsSmallPeer(benchmark::State& state)
{
    lookUpTextsPeer(state, 10);
}

BENCHMARK(lookUpTextsGrown)->Name("look up texts, InitHashTable(10000)/ours");
BENCHMARK(lookUpTextsLargePeer)->Name("look up texts, InitHashTable(10000)/std::unordered_map");
BENCHMARK(lookUpTextsDefault)->Name("look up texts, 17 buckets at the start/ours");
BENCHMARK(lookUpTextsLargePeer)->Name("look up texts, 17 buckets at the start/std::unordered_map");
BENCHMARK(lookUpTextsSmall)->Name("look up texts, 10 entries/ours");
BENCHMARK(lookUpTextsSmallPeer)->Name("look up texts, 10 entries/std::unordered_map");
BENCHMARK(missTexts)->Name("miss a text/ours");
BENCHMARK(missTextsPeer)->Name("miss a text/std::unordered_map");
BENCHMARK(lookUpNumbers)->Name("look up numbers/ours");
BENCHMARK(lookUpNumbersPeer)->Name("look up numbers/std::unordered_map");
BENCHMARK(fill<CMap<CString, CString const&, int, int>, CString>)->Name("fill with texts/ours");
BENCHMARK(fill<std::unordered_map<std::string, int>, std::string>)
    ->Name("fill with texts/std::unordered_map");
BENCHMARK(walk)->Name("walk/ours");
BENCHMARK(walkPeer)->Name("walk/std::unordered_map");

}  // namespace
