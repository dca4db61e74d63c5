// miniParser.h: finds separators and labels in code-like text that a user typed.
//
//   miniParser parser;
//   CStringList fields;
//   parser.splitBySeperators("int a, f(b, c)", fields);    // " f(b, c)", "int a": the last one first
//   CString parameters;
//   parser.getFirstLabel("std::map<int, char> foo(a, b)", parameters);
//                                                // "std::map<int, char>", parameters "a, b"
//
// Strings, comments and the insides of #ifdef blocks are passed over. Nothing is an
// error: an open bracket hides the separators behind it, an open string or comment runs
// to the end of the text. A call takes time in proportion to its text. A parser belongs
// to one thread at a time; it is not copied.
#pragma once

#include "zk_export.h"

#include "platform/classlib/CMap.h"
#include "platform/classlib/CString.h"
#include "platform/classlib/CStringList.h"

class ZK_UTIL_API miniParser {
public:
    /// What a character means to the scanner. 8 is not in use.
    enum charType {
        charLabel = 0,
        charBlockStart = 1,
        charBlockEnd = 2,
        charString = 3,
        charCommentStart = 4,
        charCommentEnd = 5,
        charPreprocessor = 6,
        charSeparator = 7,
        charBlank = 9,
        charUnknown = 10
    };

    miniParser();
    miniParser(miniParser const&) = delete;
    miniParser& operator=(miniParser const&) = delete;
    virtual ~miniParser();

    /// Puts each field of `text` between commas at top level, untrimmed, at the head of
    /// `result`, so that the last field comes first. `result` is not cleared before.
    ///
    /// Always adds at least one field, which may be empty. `<` opens a bracket, and a stray
    /// `>`, as in an arrow, closes nothing. "ifndef" opens no conditional block, "ifndif" does.
    void splitBySeperators(CString const& text, CStringList& result);

    /// The first label of `text`: letters, digits, `_`, `:`, `,`, and blanks inside `<` and `>`.
    ///
    /// `params` gets the raw text of the first pair of parentheses behind the label; without
    /// a closed pair it stays as it was. Empty where there is no label. `params` may be `text`.
    CString getFirstLabel(CString const& text, CString& params);
    CString getFirstLabel(CString const& text);

protected:
    /// Clears what a scan leaves behind.
    void initParserState();

    /// Fill the alphabet; the blocks come last and win.
    void initAlphabet();
    void initBlocks();
    void setAlphabetKind(char character, charType kind);
    /// The kind of a character; charUnknown for one that was never set.
    charType getAlphabetKind(char character)
    {
        return static_cast<charType>(m_kinds[static_cast<unsigned char>(character)]);
    }
    /// The closing character for an opening one, or NUL.
    char getBlockEnd(char start);

    /// Enters a string or comment that begins at `pos`; `pos` moves onto the second
    /// character of a comment's opening.
    bool checkHardStart(CString const& text, int& pos, int length);
    /// Whether the string or comment ends at `pos`, which moves onto the slash of "*/".
    bool checkHardEnd(CString const& text, int& pos, int length);
    /// Enters or leaves a conditional block whose word stands behind the `#` at `pos`;
    /// `pos` moves onto the word's last character.
    bool checkIfdefStart(CString const& text, int& pos);
    bool checkIfdefEnd(CString const& text, int& pos);

private:
    /// Goes to the last character of the string or comment that is open at `pos`, or behind the text.
    void passHardBlock(CString const& text, int& pos, int length);

    // The order of these is part of what other modules may rely on.
    CMap<char, char, charType, charType> m_alphabet;
    CString m_blockStarts;
    CString m_blockEnds;
    CString m_ifdefWords[2];  // "ifndif" letter for letter: "ifndef" is no opening
    CString m_endifWord;
    int m_parserState;  // has its place and is cleared, no more
    int m_ifdefLevel;
    bool m_inHardBlock;
    char m_hardEnd;

    unsigned char m_kinds[256];  // what the alphabet says, for each character
};
