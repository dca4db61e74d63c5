#include "text/SeperatorTables.h"

#include <array>
#include <string_view>

namespace {

using Table = std::array<int, 256>;

constexpr Table with(Table table, std::string_view characters)
{
    for (char const character : characters)
        table[static_cast<unsigned char>(character)] = 1;
    return table;
}

constexpr Table allBut(std::string_view characters)
{
    Table table{};
    for (int& accepted : table)
        accepted = 1;
    for (char const character : characters)
        table[static_cast<unsigned char>(character)] = 0;
    return table;
}

constexpr std::string_view digits = "0123456789";
constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

// Constants, so that they are there before any static initialiser asks for them.
constexpr Table identifier = with(with(with({}, letters), digits), "_");
constexpr Table identifierD = with(identifier, "-");
constexpr Table identifierX = with(identifierD, "<>?=\" .");
constexpr Table floatNumber = with(with({}, digits), ".");
constexpr Table stringContent = allBut({"\0\\\"", 3});
constexpr Table handleName = with(identifier, ":.");

}  // namespace

int const* SeperatorTables::getIdentifier()
{
    return identifier.data();
}

int const* SeperatorTables::getIdentifierD()
{
    return identifierD.data();
}

int const* SeperatorTables::getIdentifierX()
{
    return identifierX.data();
}

int const* SeperatorTables::getFloat()
{
    return floatNumber.data();
}

int const* SeperatorTables::getString()
{
    return stringContent.data();
}

int const* SeperatorTables::getHandleName()
{
    return handleName.data();
}
