// HyperLink.h: links on ranges of a description text, stored with it in one string.
//
//   CList<HyperLink> links;
//   links.AddTail(HyperLink("abc", HyperLink::urlLink, "x", {0, 3}));
//   getRichTextFromPlainText("abc", links);      // "abc$OMHYPERLINKINFO$abc::x::URL::0::3::"
//
// Keyword and target must not hold "::" themselves.
#pragma once

#include "zk_export.h"

#include "platform/classlib/CList.h"
#include "platform/classlib/CString.h"
#include "platform/os/os.h"

/// The target of a link.
class ZK_UTIL_API LinkData {
public:
    LinkData();
    LinkData(CString const& target);

    /// The target's text.
    operator CString const&() const { return m_target; }

private:
    CString m_target;
};

/// A link on a range of characters. A value type.
class ZK_UTIL_API HyperLink {
public:
    enum LinkType { urlLink = 0, fileLink = 1 };

    /// An empty URL link on the range from 0 to 0.
    HyperLink();
    HyperLink(CString const& keyword, LinkType const& type, CString const& link, _charrange range);
    HyperLink(HyperLink const&);
    HyperLink& operator=(HyperLink const&);
    HyperLink(HyperLink&&) noexcept;
    HyperLink& operator=(HyperLink&&) noexcept;
    virtual ~HyperLink();

    /// The text that is shown.
    CString const& GetKeyWord() const { return m_keyword; }
    void SetKeyWord(CString const& keyword) { m_keyword = keyword; }

    LinkType GetLinkType() const { return m_type; }
    void SetLinkType(LinkType const& type) { m_type = type; }

    /// The characters of the plain text that the link covers.
    _charrange GetRange() const { return m_range; }
    void SetRange(_charrange const& range) { m_range = range; }

    LinkData const& GetLink() const { return m_link; }
    void SetLink(CString const& link) { m_link = LinkData(link); }
    void SetLink(LinkData const& link) { m_link = link; }

private:
    _charrange m_range;
    CString m_keyword;
    LinkType m_type;
    LinkData m_link;
};

/// What stands before the first marker of a stored text; all of it if there is none.
ZK_UTIL_API CString getPlainTextFromRichText(CString const& rich);

/// The stored form: `plain`, the marker and the links in the list's order; `plain` itself without links.
ZK_UTIL_API CString getRichTextFromPlainText(CString const& plain, CList<HyperLink> const& links);

/// Takes a stored text apart: the plain text is the result, the links replace those of `links`.
///
/// A type other than "File" is a URL. A number that is none is 0, one that fits no int the nearest that does.
/// A field without an end is empty and uses up one character, so that any text comes to its end. Linear time.
ZK_UTIL_API CString getPlainTextAndLinksFromRichText(CString const& rich, CList<HyperLink>& links);
