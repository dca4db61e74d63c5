#include "text/OMGrammar.h"

#include "platform/os/os.h"

#include <cstring>

bool OMGrammar::isVowel(char letter)
{
    return letter != '\0' && std::strchr("aeiouAEIOU", letter) != nullptr;
}

CString OMGrammar::capitalize(CString const& text)
{
    auto const first = static_cast<unsigned char>(text[0]);
    if (text.IsEmpty() || _ismbcupper(first))
        return text;
    CString result(text);
    result.SetAt(0, static_cast<char>(_mbctoupper(first)));
    return result;
}

CString OMGrammar::makePlural(CString const& word)
{
    if (word.IsEmpty())
        return word;
    int const length = word.GetLength();
    char const last = word[length - 1];
    bool const isBehindConsonant = length >= 2 && !isVowel(word[length - 2]);
    switch (last) {
    case 's': return word + "es";
    case 'S': return word + "ES";
    case 'y':
        if (isBehindConsonant)
            return word.Left(length - 1) + "ies";
        break;
    case 'Y':
        if (isBehindConsonant)
            return word.Left(length - 1) + "IES";
        break;
    default: break;
    }
    return word + (_ismbcupper(static_cast<unsigned char>(last)) ? "S" : "s");
}
