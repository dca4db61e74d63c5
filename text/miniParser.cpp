#include "text/miniParser.h"

#include "text/escapedQuote.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>

namespace {

// Whether `word` stands in `text` from `position` on.
bool standsAt(CString const& text, int position, CString const& word)
{
    return position <= text.GetLength() - word.GetLength() &&
        std::memcmp(text.GetString() + position, word.GetString(), std::size_t(word.GetLength())) == 0;
}

}  // namespace

miniParser::miniParser()
    : m_alphabet(10), m_blockStarts("([{<"), m_blockEnds(")]}>"), m_ifdefWords{"ifdef", "ifndif"},
      m_endifWord("endif")
{
    m_alphabet.InitHashTable(17);
    std::fill(std::begin(m_kinds), std::end(m_kinds), static_cast<unsigned char>(charUnknown));
    initParserState();
    initAlphabet();
    initBlocks();
}

miniParser::~miniParser() = default;

void miniParser::initParserState()
{
    m_parserState = 0;
    m_ifdefLevel = 0;
    m_inHardBlock = false;
    m_hardEnd = '\0';
}

void miniParser::initAlphabet()
{
    static struct {
        charType kind;
        char const* characters;
    } const kinds[] = {
        {charLabel, "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_"},
        {charString, "'\""},
        {charCommentStart, "/"},
        {charCommentEnd, "*\n"},
        {charPreprocessor, "#"},
        {charBlank, " \t\r"},
    };
    for (auto const& [kind, characters] : kinds) {
        for (char const* character = characters; *character; ++character)
            setAlphabetKind(*character, kind);
    }
}

void miniParser::initBlocks()
{
    for (int i = 0; i < m_blockStarts.GetLength(); ++i)
        setAlphabetKind(m_blockStarts[i], charBlockStart);
    for (int i = 0; i < m_blockEnds.GetLength(); ++i)
        setAlphabetKind(m_blockEnds[i], charBlockEnd);
}

void miniParser::setAlphabetKind(char character, charType kind)
{
    m_alphabet.SetAt(character, kind);
    m_kinds[static_cast<unsigned char>(character)] = static_cast<unsigned char>(kind);
}

char miniParser::getBlockEnd(char start)
{
    int const position = m_blockStarts.Find(start);
    return position < 0 ? '\0' : m_blockEnds[position];
}

bool miniParser::checkHardStart(CString const& text, int& pos, int length)
{
    char const character = text[pos];
    charType const kind = getAlphabetKind(character);
    if (kind == charString) {
        m_hardEnd = character;
    } else if (kind == charCommentStart && pos + 1 < length &&
               (text[pos + 1] == '/' || text[pos + 1] == '*')) {
        ++pos;
        m_hardEnd = text[pos] == '/' ? '\n' : '*';
    } else {
        return false;
    }
    m_inHardBlock = true;
    return true;
}

bool miniParser::checkHardEnd(CString const& text, int& pos, int length)
{
    char const character = text[pos];
    if (character != m_hardEnd)
        return false;
    if (getAlphabetKind(character) == charString) {
        if (zk::isEscaped(text.view(), std::size_t(pos)))
            return false;
    } else if (character != '\n') {
        if (pos + 1 >= length || text[pos + 1] != '/')
            return false;
        ++pos;
    }
    m_inHardBlock = false;
    return true;
}

void miniParser::passHardBlock(CString const& text, int& pos, int length)
{
    while (m_inHardBlock && pos < length) {
        int const end = text.Find(m_hardEnd, pos);
        pos = end < 0 ? length : end;
        if (pos < length && !checkHardEnd(text, pos, length))
            ++pos;
    }
}

bool miniParser::checkIfdefStart(CString const& text, int& pos)
{
    if (getAlphabetKind(text[pos]) != charPreprocessor)
        return false;
    for (CString const& word : m_ifdefWords) {
        if (standsAt(text, pos + 1, word)) {
            ++m_ifdefLevel;
            pos += word.GetLength();
            return true;
        }
    }
    return false;
}

bool miniParser::checkIfdefEnd(CString const& text, int& pos)
{
    if (getAlphabetKind(text[pos]) != charPreprocessor || !standsAt(text, pos + 1, m_endifWord))
        return false;
    --m_ifdefLevel;
    pos += m_endifWord.GetLength();
    return true;
}

void miniParser::splitBySeperators(CString const& text, CStringList& result)
{
    initParserState();
    charType const kindOfComma = getAlphabetKind(',');
    setAlphabetKind(',', charSeparator);

    std::string closers;  // those expected, the innermost last
    int fieldStart = 0;
    int const length = text.GetLength();
    for (int pos = 0; pos < length; ++pos) {
        char const character = text[pos];
        if (m_inHardBlock) {
            passHardBlock(text, pos, length);
            continue;
        }
        charType const kind = getAlphabetKind(character);
        if (kind == charString || kind == charCommentStart) {
            checkHardStart(text, pos, length);
        } else if (kind == charPreprocessor) {
            if (m_ifdefLevel < 1 || !checkIfdefEnd(text, pos))
                checkIfdefStart(text, pos);
        } else if (m_ifdefLevel >= 1) {
            continue;
        } else if (kind == charBlockStart) {
            closers.push_back(getBlockEnd(character));
        } else if (kind == charBlockEnd) {
            bool const isArrow = character == '>' && pos > 0 && text[pos - 1] == '-';
            if (isArrow || closers.empty())
                continue;
            // A stray '>' unwinds nothing; any other closer drops all that is open inside its pair.
            if (character != '>')
                while (closers.size() > 1 && closers.back() != character)
                    closers.pop_back();
            if (character != '>' || closers.back() == character)
                closers.pop_back();
        } else if (kind == charSeparator && closers.empty()) {
            result.AddHead(text.Mid(fieldStart, pos - fieldStart));
            fieldStart = pos + 1;
        }
    }
    result.AddHead(text.Mid(fieldStart));

    setAlphabetKind(',', kindOfComma);
}

CString miniParser::getFirstLabel(CString const& text)
{
    CString ignored;
    return getFirstLabel(text, ignored);
}

CString miniParser::getFirstLabel(CString const& text, CString& params)
{
    initParserState();
    // A qualified or templated name counts as one label.
    static char const joined[] = {':', '<', ',', '>'};
    charType kindsBefore[sizeof joined];
    for (std::size_t i = 0; i < sizeof joined; ++i) {
        kindsBefore[i] = getAlphabetKind(joined[i]);
        setAlphabetKind(joined[i], charLabel);
    }

    constexpr int none = -1;
    int labelStart = none;
    int labelLength = 0;
    int angles = 0;
    bool labelTaken = false;
    int paramsStart = none;
    int paramsLength = none;  // known once they are closed
    int parentheses = 0;

    int const length = text.GetLength();
    for (int pos = 0; pos < length; ++pos) {
        char const character = text[pos];
        if (m_inHardBlock) {
            passHardBlock(text, pos, length);
            continue;
        }
        charType const kind = getAlphabetKind(character);
        bool const isPending = labelStart != none && !labelTaken;
        if (kind == charString || kind == charCommentStart) {
            labelTaken |= isPending;
            checkHardStart(text, pos, length);
        } else if (m_ifdefLevel >= 1) {
            if (kind == charPreprocessor && !checkIfdefEnd(text, pos))
                checkIfdefStart(text, pos);
        } else if (kind == charPreprocessor) {
            labelTaken |= isPending;
            checkIfdefStart(text, pos);
        } else if (!labelTaken) {
            if (kind == charLabel) {
                if (labelStart == none)
                    labelStart = pos;
                ++labelLength;
                angles += (character == '<') - (character == '>');
            } else if (isPending) {
                if (angles >= 1 && (character == '\n' || kind == charBlank)) {
                    ++labelLength;
                    continue;
                }
                labelTaken = true;
                if (character == '(') {
                    paramsStart = pos + 1;
                    parentheses = 1;
                }
            }
        } else if (paramsLength == none) {
            if (character == '(') {
                if (paramsStart == none)
                    paramsStart = pos + 1;
                ++parentheses;
            } else if (character == ')' && paramsStart != none && --parentheses == 0) {
                paramsLength = pos - paramsStart;
                break;  // nothing behind the parameters can change the result
            }
        }
    }

    for (std::size_t i = 0; i < sizeof joined; ++i)
        setAlphabetKind(joined[i], kindsBefore[i]);
    CString label = labelStart == none ? CString() : text.Mid(labelStart, labelLength);
    if (paramsLength != none)
        params = text.Mid(paramsStart, paramsLength);
    return label;
}
