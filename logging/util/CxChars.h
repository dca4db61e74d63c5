// CxChars.h: the classes of bytes that the toolkit asks for, the same in every locale.
#pragma once

/// Whether a byte is '0' to '9'.
constexpr bool CxIsDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

/// Whether a byte is 'A' to 'Z' or 'a' to 'z'.
constexpr bool CxIsLetter(char c) noexcept
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
