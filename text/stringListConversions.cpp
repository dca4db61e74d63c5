#include "text/stringListConversions.h"

#include "platform/classlib/blanks.h"
#include "platform/classlib/textSearch.h"
#include "text/reserve.h"

#include <array>
#include <memory>
#include <string_view>

namespace {

constexpr int blockSize = 10;

std::size_t findPlace(std::string_view text, std::string_view part, std::size_t from)
{
    return static_cast<std::size_t>(zk::findFirst(text, part, from));  // -1 is npos
}

struct Parts {
    bool trim;
    bool keepEmpty;

    void add(CStringList& list, std::string_view part) const
    {
        if (trim)
            part = zk::trimmed(part);
        if (keepEmpty || !part.empty())
            list.AddTail(CString(part));
    }
};

// Cuts `text` at each occurrence of `delimiter`, which is not empty.
void cutAt(std::string_view text, std::string_view delimiter, Parts const& parts, CStringList& list)
{
    std::size_t begin = 0;
    for (;;) {
        std::size_t const end =
            delimiter.size() == 1 ? text.find(delimiter[0], begin) : findPlace(text, delimiter, begin);
        parts.add(list, text.substr(begin, end - begin));
        if (end == std::string_view::npos)
            return;
        begin = end + delimiter.size();
    }
}

// Cuts `text` at each character of `set`.
void cutAtAny(std::string_view text, std::string_view set, Parts const& parts, CStringList& list)
{
    std::array<bool, 256> separates{};
    for (char const character : set)
        separates[static_cast<unsigned char>(character)] = true;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (separates[static_cast<unsigned char>(text[at])]) {
            parts.add(list, text.substr(begin, at - begin));
            begin = at + 1;
        }
    }
    parts.add(list, text.substr(begin));
}

CStringList* converted(CString const& text, CString const& separators, bool isDelimiter, Parts const& parts)
{
    auto list = std::make_unique<CStringList>(blockSize);
    if (isDelimiter && !separators.IsEmpty())
        cutAt(text.view(), separators.view(), parts, *list);
    else
        cutAtAny(text.view(), separators.view(), parts, *list);
    return list.release();
}

CString joined(CStringList const* list, std::string_view separator)
{
    CString result;
    if (!list || list->IsEmpty())
        return result;
    std::size_t length = separator.size() * std::size_t(list->GetCount() - 1);
    for (POSITION at = list->GetHeadPosition(); at;)
        length += std::size_t(list->GetNext(at).GetLength());
    zk::reserve(result, length);
    for (POSITION at = list->GetHeadPosition(); at;) {
        result += list->GetNext(at);
        if (at)
            result += separator;
    }
    return result;
}

}  // namespace

CString omConvertStringListToString(CStringList* list, CString const& separator)
{
    return joined(list, separator.view());
}

CString omConvertStringListToString(CStringList* list, char separator)
{
    return joined(list, {&separator, 1});
}

CStringList* omConvertStringToStringList(CString const& text, CString const& separators, int wholeSeparator,
                                         int keepEmpty)
{
    bool const isDelimiter = wholeSeparator != 0 || separators.GetLength() == 1;
    return converted(text, separators, isDelimiter, {true, keepEmpty != 0});
}

CStringList* omConvertStringToStringListWithoutTrim(CString const& text, CString const& separators,
                                                    int wholeSeparator, int keepEmpty)
{
    return converted(text, separators, wholeSeparator != 0, {false, keepEmpty != 0});
}

void omConvertStringToStringList2(CStringList* result, CString const& text, char separator, int keepEmpty,
                                  int noTrim)
{
    if (result)
        cutAt(text.view(), {&separator, 1}, {noTrim == 0, keepEmpty != 0}, *result);
}

CStringList* omConvertTemplateParamsStringToStringList(CString const& text)
{
    auto list = std::make_unique<CStringList>(blockSize);
    std::string_view const all = text.view();
    int depth = 0;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < all.size(); ++at) {
        depth += (all[at] == '<') - (all[at] == '>');
        if (all[at] == ',' && depth == 0) {
            list->AddTail(CString(zk::trimmed(all.substr(begin, at - begin))));
            begin = at + 1;
        }
    }
    if (begin < all.size())
        list->AddTail(CString(all.substr(begin)));
    return list.release();
}

CStringList* omConvertXmlMultiStringToStringList(CString const& xml, CString const& tag, char onlyInside)
{
    auto list = std::make_unique<CStringList>(blockSize);
    CString const open = "<" + tag + ">";
    CString const close = "</" + tag + ">";
    Parts const parts{true, false};
    std::string_view rest = xml.view();
    for (;;) {
        std::size_t const begin = findPlace(rest, open.view(), 0);
        if (begin == std::string_view::npos)
            break;
        bool const isTextBefore = !onlyInside && !zk::trimmed(rest.substr(0, begin)).empty();
        if (isTextBefore)
            parts.add(*list, rest.substr(0, begin));
        rest.remove_prefix(begin + open.view().size());
        std::size_t const end = findPlace(rest, close.view(), 0);
        if (end == std::string_view::npos)
            break;
        parts.add(*list, rest.substr(0, end));
        if (isTextBefore)
            break;
        rest.remove_prefix(end + close.view().size());
    }
    return list.release();
}
