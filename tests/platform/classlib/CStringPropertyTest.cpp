// CString does what std::string does, over random texts from a fixed seed.
#include "platform/classlib/CString.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

// Few letters, so that things are found; lengths around the sizes that matter.
class RandomTexts {
public:
    std::string text(int longest)
    {
        std::string result(static_cast<std::size_t>(number(0, longest)), '\0');
        for (char& character : result)
            character = "abAB\0 \xE4/"[number(0, 7)];
        return result;
    }
    int number(int from, int to) { return std::uniform_int_distribution<int>(from, to)(engine_); }

private:
    std::mt19937 engine_{20260113};
};

CString stringOf(std::string const& text)
{
    return CString(std::string_view(text));
}

constexpr int rounds = 20000;

}  // namespace

TEST(CStringProperty, findsWhereTheModelFinds)
{
    RandomTexts random;
    for (int i = 0; i < rounds; ++i) {
        std::string const text = random.text(40);
        std::string const wanted = random.text(3);
        int const start = random.number(0, static_cast<int>(text.size()));

        std::size_t const found = text.find(wanted, static_cast<std::size_t>(start));

        ASSERT_EQ(stringOf(text).Find(stringOf(wanted), start),
                  found == std::string::npos ? -1 : static_cast<int>(found));
    }
}

TEST(CStringProperty, replacesWhatTheModelReplaces)
{
    RandomTexts random;
    for (int i = 0; i < rounds; ++i) {
        std::string model = random.text(40);
        CString text = stringOf(model);
        std::string from = random.text(2);
        std::string const to = random.text(4);
        int count = 0;
        for (std::size_t at = 0; !from.empty() && (at = model.find(from, at)) != std::string::npos;
             at += to.size()) {
            model.replace(at, from.size(), to);
            ++count;
        }

        ASSERT_EQ(text.Replace(stringOf(from), stringOf(to)), count);
        ASSERT_EQ(text, model);
    }
}

TEST(CStringProperty, staysEqualToTheModelThroughALongRowOfChanges)
{
    RandomTexts random;
    std::string model;
    CString text;
    for (int i = 0; i < rounds; ++i) {
        std::string const piece = random.text(20);
        int const at = random.number(0, static_cast<int>(model.size()));
        int const count = random.number(0, 30);
        std::size_t const index = static_cast<std::size_t>(at);
        switch (random.number(0, 7)) {
        case 0:
            text.Insert(at, stringOf(piece));
            model.insert(index, piece);
            break;
        case 1:
        case 2:
            text.Delete(at, count);
            model.erase(index, static_cast<std::size_t>(count));
            break;
        case 3:
            text += stringOf(piece);
            model += piece;
            break;
        case 4:
            text = text.Mid(at, count);
            model = model.substr(index, static_cast<std::size_t>(count));
            break;
        case 5:
            text = stringOf(piece) + text;
            model = piece + model;
            break;
        case 6: text.FreeExtra(); break;
        default: {
            CString copy(text);
            text = std::move(copy);
        }
        }
        ASSERT_EQ(text, model) << i;
        ASSERT_EQ(text.GetString()[text.GetLength()], '\0') << i;
        ASSERT_LE(text.GetLength(), text.GetAllocLength()) << i;
    }
}

TEST(CStringProperty, ordersAsTheModelDoes)
{
    RandomTexts random;
    for (int i = 0; i < rounds; ++i) {
        std::string const left = random.text(4);
        std::string const right = random.text(4);

        ASSERT_EQ(stringOf(left) < stringOf(right), left < right);
        ASSERT_EQ(stringOf(left) == stringOf(right), left == right);
    }
}
