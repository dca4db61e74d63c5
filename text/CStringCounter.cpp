#include "text/CStringCounter.h"

#include <cstring>

void CStringCounter::reset()
{
    std::memcpy(m_text, "\1\1\1\1", sizeof m_text);
}

char* CStringCounter::getNext()
{
    m_text[3] = static_cast<char>(static_cast<unsigned char>(m_text[3]) + 1);
    return m_text;
}
