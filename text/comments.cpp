#include "text/comments.h"

#include "platform/classlib/blanks.h"
#include "text/escapedQuote.h"

#include <string_view>

namespace {

bool beginsWith(std::string_view text, std::string_view prefix)
{
    return text.substr(0, prefix.size()) == prefix;
}

}  // namespace

bool omIsCommentString(CString text)
{
    std::string_view rest = text.view();
    for (;;) {
        rest = zk::withoutLeadingBlanks(rest);
        if (rest.empty())
            return true;
        std::string_view const end = beginsWith(rest, "//") ? "\n" : "*/";
        if (end == "*/" && !beginsWith(rest, "/*"))
            return false;
        std::size_t const found = rest.find(end, 2);  // behind the opening: "/*/" is open
        if (found == std::string_view::npos)
            return true;
        rest.remove_prefix(found + end.size());
    }
}

bool omIsInCommentOrQuotedString(CString text, int pos)
{
    if (pos <= 0 || pos > text.GetLength())
        return false;
    enum class In { code, string, character, blockComment, lineComment };
    In state = In::code;
    std::string_view const all = text.view();
    auto const standsAt = [&](std::size_t at, std::string_view mark) {
        return beginsWith(all.substr(at), mark);
    };
    for (std::size_t at = 0; at < std::size_t(pos); ++at) {
        switch (state) {
        case In::code:
            if (all[at] == '"') {
                state = In::string;
            } else if (all[at] == '\'') {
                state = In::character;
            } else if (standsAt(at, "//")) {
                state = In::lineComment;
            } else if (standsAt(at, "/*")) {
                state = In::blockComment;
                ++at;
            }
            break;
        case In::string:
        case In::character:
            if (all[at] == (state == In::string ? '"' : '\'') && !zk::isEscaped(all, at))
                state = In::code;
            break;
        case In::blockComment:
            if (standsAt(at, "*/")) {
                state = In::code;
                ++at;
            }
            break;
        case In::lineComment:
            if (all[at] == '\n')
                state = In::code;
            break;
        }
    }
    return state != In::code;
}

bool omIsCTypePreComment(CString const& text)
{
    std::size_t const block = text.view().find("/*");
    return block != std::string_view::npos && block < text.view().find("//");
}
