#include "logging/CCgMsgId.h"

#include "logging/util/CxChars.h"

namespace {

struct Row {
    int letters, digits;
    CCgMsgIdForm form;
};

constexpr Row rows[] = {
    {6, 3, {"Norvane6.3.1", 631, 10, 9}}, {5, 4, {"Norvane5.4.1", 541, 10, 9}},
    {5, 3, {"Norvane5.3.1", 531, 9, 8}},  {5, 2, {"Norvane5.2.1", 521, 8, 7}},
    {4, 4, {"Norvane4.4.1", 441, 9, 8}},  {4, 3, {"Norvane4.3.1", 431, 8, 7}},
    {4, 5, {"Norvane4.5.1", 451, 10, 9}}, {3, 4, {"Norvane3.4.1", 341, 8, 7}},
    {3, 3, {"Norvane3.3.1", 331, 7, 6}},  {3, 5, {"Norvane3.5.1", 351, 9, 8}},
    {3, 6, {"Norvane3.6.1", 361, 10, 9}},
};

constexpr std::size_t shortestId = 7;
constexpr int fewestLetters = 3;
constexpr int mostLetters = 6;

bool isSeverity(char c) noexcept
{
    return c == 'I' || c == 'W' || c == 'E';
}

// How many of the letters allowed at the beginning there are.
int lettersOf(std::string_view text) noexcept
{
    int count = 0;
    while (count < mostLetters && CxIsLetter(text[static_cast<std::size_t>(count)]))
        ++count;
    return count;
}

bool digitsAndSeverityFollow(std::string_view text, Row const& row) noexcept
{
    if (text.size() < static_cast<std::size_t>(row.form.length))
        return false;
    for (char const c :
         text.substr(static_cast<std::size_t>(row.letters), static_cast<std::size_t>(row.digits)))
        if (!CxIsDigit(c))
            return false;
    return isSeverity(text[static_cast<std::size_t>(row.form.severityAt)]);
}

}  // namespace

CCgMsgIdForm ccg_classifyMsgId(std::string_view text) noexcept
{
    if (text.size() < shortestId)
        return {};
    int const letters = lettersOf(text);
    if (letters < fewestLetters)
        return {};
    for (Row const& row : rows)
        if (row.letters == letters && digitsAndSeverityFollow(text, row))
            return row.form;
    return {};
}
