#include "text/SpellChecker.h"

SpellChecker* SpellChecker::m_spellChecker = nullptr;

SpellChecker::SpellChecker()
{
    m_spellChecker = nullptr;
}

SpellChecker::~SpellChecker() = default;

SpellChecker* SpellChecker::GetSpellChecker()
{
    return m_spellChecker;
}
