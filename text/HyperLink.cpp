#include "text/HyperLink.h"

#include "text/numbers.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view marker = "$OMHYPERLINKINFO$";
constexpr std::string_view separator = "::";
constexpr char const* fileType = "File";
constexpr char const* urlType = "URL";

// Reads the fields of the links one after the other.
class FieldReader {
public:
    explicit FieldReader(std::string_view text) : rest_(text) { }

    bool isAtEnd() const { return rest_.empty(); }

    // The text before the next separator. Where there is none any more, the field is empty and
    // one character goes: what is left of "Left(-1)" and "Delete(0, -1 + 2)".
    CString next()
    {
        std::size_t const end = hasSeparator_ ? rest_.find(separator) : std::string_view::npos;
        hasSeparator_ = end != std::string_view::npos;
        CString field;
        if (hasSeparator_)
            field = rest_.substr(0, end);
        rest_.remove_prefix(hasSeparator_ ? end + separator.size() : std::min<std::size_t>(1, rest_.size()));
        return field;
    }

private:
    std::string_view rest_;
    bool hasSeparator_ = true;
};

}  // namespace

LinkData::LinkData() = default;

LinkData::LinkData(CString const& target) : m_target(target)
{
}

HyperLink::HyperLink() : m_range{0, 0}, m_type(urlLink)
{
}

HyperLink::HyperLink(CString const& keyword, LinkType const& type, CString const& link, _charrange range)
    : m_range(range), m_keyword(keyword), m_type(type), m_link(link)
{
}

HyperLink::HyperLink(HyperLink const&) = default;
HyperLink& HyperLink::operator=(HyperLink const&) = default;
HyperLink::HyperLink(HyperLink&&) noexcept = default;
HyperLink& HyperLink::operator=(HyperLink&&) noexcept = default;
HyperLink::~HyperLink() = default;

CString getPlainTextFromRichText(CString const& rich)
{
    return CString(rich.view().substr(0, rich.view().find(marker)));
}

CString getRichTextFromPlainText(CString const& plain, CList<HyperLink> const& links)
{
    if (links.IsEmpty())
        return plain;
    CString rich(plain);
    rich += marker;
    for (HyperLink const& link : links) {
        CString const& target = link.GetLink();
        std::string const from = std::to_string(link.GetRange().cpMin);
        std::string const to = std::to_string(link.GetRange().cpMax);
        std::string_view const type = link.GetLinkType() == HyperLink::fileLink ? fileType : urlType;
        for (std::string_view const field :
             {link.GetKeyWord().view(), target.view(), type, std::string_view(from), std::string_view(to)}) {
            rich += field;
            rich += separator;
        }
    }
    return rich;
}

CString getPlainTextAndLinksFromRichText(CString const& rich, CList<HyperLink>& links)
{
    // Copied, since the text may be part of a link that goes.
    CString const stored(rich);
    links.RemoveAll();
    std::size_t const end = stored.view().find(marker);
    if (end == std::string_view::npos)
        return stored;

    FieldReader fields(stored.view().substr(end + marker.size()));
    while (!fields.isAtEnd()) {
        CString const keyword = fields.next();
        CString const target = fields.next();
        HyperLink::LinkType const type = fields.next() == fileType ? HyperLink::fileLink : HyperLink::urlLink;
        LONG const from = zk::numberOf(fields.next());
        LONG const to = zk::numberOf(fields.next());
        links.AddTail(HyperLink(keyword, type, target, {from, to}));
    }
    return CString(stored.view().substr(0, end));
}
