#include "platform/classlib/CMap.h"
#include "platform/classlib/CStringMaps.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Numbers = CMap<int, int, int, int>;

static_assert(std::is_base_of_v<CObject, Numbers>);
static_assert(!std::is_copy_constructible_v<Numbers>);
static_assert(!std::is_copy_constructible_v<CMapStringToString>);

template <class Map>
auto keys(Map const& map)
{
    std::vector<std::decay_t<decltype(map.PGetFirstAssoc()->key)>> result;
    for (auto const& pair : map)
        result.push_back(pair.key);
    return result;
}

// A key with hooks of its own: only the tens count.
struct Tens {
    int number;
};

}  // namespace

template <>
UINT HashKey<Tens const&>(Tens const& key)
{
    return static_cast<UINT>(key.number / 10);
}

template <>
BOOL CompareElements<Tens, Tens>(Tens const* element, Tens const* wanted)
{
    return element->number / 10 == wanted->number / 10;
}

TEST(CMap, isEmptyAtFirst)
{
    Numbers const map;
    int value = 7;

    EXPECT_TRUE(map.IsEmpty());
    EXPECT_EQ(map.GetCount(), 0);
    EXPECT_EQ(map.GetSize(), 0);
    EXPECT_EQ(map.GetStartPosition(), nullptr);
    EXPECT_EQ(map.PGetFirstAssoc(), nullptr);
    EXPECT_FALSE(map.Lookup(1, value));
    EXPECT_EQ(value, 7);
    EXPECT_EQ(map.PLookup(1), nullptr);
}

TEST(CMap, setsAndFindsValues)
{
    Numbers map;
    int value = 0;

    map.SetAt(1, 10);
    map[2] = 20;
    map.SetAt(1, 11);

    EXPECT_TRUE(map.Lookup(1, value));
    EXPECT_EQ(value, 11);
    EXPECT_EQ(map.PLookup(2)->value, 20);
    EXPECT_EQ(std::as_const(map).PLookup(2)->key, 2);
    EXPECT_EQ(map.GetCount(), 2);
}

TEST(CMap, makesAnEmptyValueForANewKey)
{
    Numbers map;

    EXPECT_EQ(map[5], 0);
    map[5] += 3;

    EXPECT_EQ(map[5], 3);
    EXPECT_EQ(map.GetCount(), 1);
}

TEST(CMap, removesKeys)
{
    Numbers map;
    EXPECT_FALSE(map.RemoveKey(1));
    for (int i = 0; i < 100; ++i)
        map[i] = i;

    for (int i = 0; i < 100; i += 2)
        EXPECT_TRUE(map.RemoveKey(i));

    EXPECT_FALSE(map.RemoveKey(0));
    EXPECT_EQ(map.GetCount(), 50);
    EXPECT_EQ(map.PLookup(2), nullptr);
    EXPECT_EQ(map.PLookup(99)->value, 99);
}

TEST(CMap, isWalkedInTheOrderOfItsKeysComing)
{
    Numbers map;
    std::vector<int> expected;
    for (int i = 0; i < 100; ++i) {
        map[i * 7919 % 1000] = i;
        expected.push_back(i * 7919 % 1000);
    }
    map[expected[0]] = -1;
    map.RemoveKey(expected[1]);
    expected.erase(expected.begin() + 1);

    std::vector<int> walked;
    for (POSITION at = map.GetStartPosition(); at;) {
        int key = 0;
        int value = 0;
        map.GetNextAssoc(at, key, value);
        walked.push_back(key);
    }
    EXPECT_EQ(walked, expected);
    EXPECT_EQ(keys(map), expected);

    std::vector<int> byPairs;
    for (auto const* pair = std::as_const(map).PGetFirstAssoc(); pair;
         pair = std::as_const(map).PGetNextAssoc(pair))
        byPairs.push_back(pair->key);
    EXPECT_EQ(byPairs, expected);
    for (auto* pair = map.PGetFirstAssoc(); pair; pair = map.PGetNextAssoc(pair))
        pair->value = 1;
    EXPECT_EQ(map.begin()->value, 1);
    auto at = map.begin();
    EXPECT_EQ((*at++).key, expected[0]);
    EXPECT_TRUE(at != map.end());
}

TEST(CMap, letsTheCurrentPairBeRemovedOnAWalk)
{
    Numbers map;
    for (int i = 0; i < 100; ++i)
        map[i] = i;
    int met = 0;

    for (POSITION at = map.GetStartPosition(); at; ++met) {
        int key = 0;
        int value = 0;
        map.GetNextAssoc(at, key, value);
        if (key % 3 != 0) {
            EXPECT_TRUE(map.RemoveKey(key));
        }
    }

    EXPECT_EQ(met, 100);
    EXPECT_EQ(map.GetCount(), 34);
}

TEST(CMap, meetsTheEndOfAWalkWithAnException)
{
    Numbers const map;
    POSITION none = nullptr;
    int key = 0;
    int value = 0;

    EXPECT_THROW(map.GetNextAssoc(none, key, value), std::out_of_range);
}

TEST(CMap, startsWithSeventeenBuckets)
{
    Numbers map;

    EXPECT_EQ(map.GetHashTableSize(), 17u);
    map.InitHashTable(1009);
    EXPECT_EQ(map.GetHashTableSize(), 1009u);
    map.InitHashTable(5, FALSE);
    EXPECT_EQ(map.GetHashTableSize(), 5u);
    map.InitHashTable(0);
    EXPECT_EQ(map.GetHashTableSize(), 17u);
}

TEST(CMap, keepsItsKeysWhenTheTableIsMadeAnew)
{
    Numbers map;
    for (int i = 0; i < 100; ++i)
        map[i] = i;

    for (UINT size : {1u, 7u, 1000u}) {
        map.InitHashTable(size, FALSE);
        for (int i = 0; i < 100; ++i)
            EXPECT_EQ(map.PLookup(i)->value, i);
    }
    EXPECT_EQ(map.GetHashTableSize(), 1000u);
}

TEST(CMap, keepsReferencesToValuesWhenItGrows)
{
    Numbers map;
    int& first = map[0];
    for (int i = 1; i < 10000; ++i)
        map[i] = i;

    first = 77;

    EXPECT_EQ(map[0], 77);
}

TEST(CMap, isUsableAfterRemovingAll)
{
    Numbers map;
    map[1] = 1;

    map.RemoveAll();
    EXPECT_TRUE(map.IsEmpty());
    EXPECT_EQ(map.GetStartPosition(), nullptr);
    EXPECT_EQ(map.PLookup(1), nullptr);

    map[2] = 2;
    EXPECT_EQ(keys(map), std::vector<int>{2});
}

TEST(CMap, findsKeysByTheHooksOfTheirType)
{
    CMap<Tens, Tens const&, int, int> map;

    map[Tens{11}] = 1;
    map[Tens{12}] = 2;
    map[Tens{21}] = 3;

    EXPECT_EQ(map.GetCount(), 2);
    EXPECT_EQ(map.PLookup(Tens{19})->value, 2);
}

TEST(CMap, takesKeysOfManyKinds)
{
    CMap<char, char, int, int> characters;
    CMap<CString, CString const&, bool, bool> flags;
    CMap<CString, char const*, CString, CString const&> texts;
    CMap<void*, void*, int, int> pointers;
    CMap<double, double, int, int> numbers;
    CString const key("key");

    characters['a'] = 1;
    flags["key"] = true;
    texts[key] = "value";
    pointers[&characters] = 2;
    numbers[1.5] = 3;

    EXPECT_EQ(characters.PLookup('a')->value, 1);
    EXPECT_TRUE(flags.PLookup(key)->value);
    EXPECT_EQ(texts.PLookup("key")->value, "value");
    EXPECT_EQ(pointers.PLookup(&characters)->value, 2);
    EXPECT_EQ(numbers.PLookup(1.5)->value, 3);
}

TEST(CMap, doesWhatAModelDoesOverRandomChanges)
{
    std::mt19937 random(20260113);
    Numbers map(3);
    std::map<int, int> model;
    for (int i = 0; i < 20000; ++i) {
        int const key = static_cast<int>(random() % 300);
        if (random() % 3 == 0) {
            ASSERT_EQ(map.RemoveKey(key) != FALSE, model.erase(key) == 1);
        } else {
            map[key] = i;
            model[key] = i;
        }
        ASSERT_EQ(map.GetCount(), static_cast<INT_PTR>(model.size()));
    }
    std::map<int, int> walked;
    for (auto const& pair : map)
        walked[pair.key] = pair.value;
    EXPECT_EQ(walked, model);
}

TEST(HashKey, isTheSameForATextOfAnyKind)
{
    CString const text("a text of more than eight bytes");

    UINT const hash = HashKey<CString const&>(text);

    EXPECT_EQ(HashKey<CString>(text), hash);
    EXPECT_EQ(HashKey<char const*>(text), hash);
    EXPECT_EQ(HashKey<zk::TextArgument>(text), hash);
    EXPECT_EQ(HashKey<char const*>(nullptr), HashKey<CString const&>(CString()));
}

TEST(HashKey, tellsTextsThatDifferInOneByteApart)
{
    std::set<UINT> hashes;
    for (int length = 1; length <= 24; ++length) {
        for (int at = 0; at < length; ++at) {
            CString text('a', length);
            text.SetAt(at, 'b');
            hashes.insert(HashKey<CString const&>(text));
        }
    }

    EXPECT_EQ(hashes.size(), 24u * 25 / 2);
}

TEST(CMapStringToString, setsFindsAndRemoves)
{
    CMapStringToString map;
    CString const key("key");
    CString value("before");

    map["a"] = "b";
    map.SetAt(key, "value");
    map.SetAt("c", CString("d"));

    EXPECT_TRUE(map.Lookup("key", value));
    EXPECT_EQ(value, "value");
    EXPECT_FALSE(map.Lookup("KEY", value));
    EXPECT_EQ(value, "value");
    EXPECT_EQ(map[key], "value");
    EXPECT_TRUE(map.RemoveKey(key));
    EXPECT_EQ(keys(map), (std::vector<CString>{"a", "c"}));
}

TEST(CMapStringToString, tellsKeysWithNulBytesApart)
{
    CMapStringToString map;

    map[CString("a\0b", 3)] = "1";
    map["a"] = "2";

    EXPECT_EQ(map.GetCount(), 2);
    EXPECT_EQ(map[CString("a\0b", 3)], "1");
}

TEST(CMapStringToPtr, holdsPointers)
{
    CMapStringToPtr map(10);
    int number = 0;
    void* pointer = nullptr;

    map.SetAt("a", &number);

    EXPECT_TRUE(map.Lookup("a", pointer));
    EXPECT_EQ(pointer, &number);
    EXPECT_EQ(map["b"], nullptr);
}

TEST(CMapStringToOb, holdsObjectsAndNull)
{
    CMapStringToOb map(10);
    CObject* object = &map;

    map["question"] = nullptr;

    EXPECT_TRUE(map.Lookup("question", object));
    EXPECT_EQ(object, nullptr);
    EXPECT_FALSE(map.Lookup("other", object));
}

TEST(CMapPtrToPtr, holdsPointers)
{
    CMapPtrToPtr map;
    int number = 0;

    map[&number] = &map;

    EXPECT_EQ(map[&number], &map);
}

TEST(StringMaps, haveClassRecords)
{
    for (CRuntimeClass* record : {RUNTIME_CLASS(CMapStringToString), RUNTIME_CLASS(CMapStringToPtr),
                                  RUNTIME_CLASS(CMapStringToOb), RUNTIME_CLASS(CMapPtrToPtr)}) {
        std::unique_ptr<CObject> const made(record->CreateObject());
        EXPECT_TRUE(made->IsKindOf(record));
        EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CObject)));
    }
}
