#include "text/URLParams.h"

#include "text/escapes.h"

#include <utility>

URLParams::URLParams() : m_encode(true)
{
}

URLParams::URLParams(CString params) : m_params(std::move(params)), m_encode(true)
{
}

URLParams::URLParams(CMapStringToString& map) : m_encode(true)
{
    setParams(map);
}

URLParams::URLParams(URLParams const&) = default;
URLParams& URLParams::operator=(URLParams const&) = default;
URLParams::URLParams(URLParams&&) noexcept = default;
URLParams& URLParams::operator=(URLParams&&) noexcept = default;
URLParams::~URLParams() = default;

bool URLParams::IsEmpty() const
{
    return m_params.IsEmpty();
}

void URLParams::setEncode(bool encode)
{
    m_encode = encode;
}

void URLParams::setParams(CString const& params)
{
    m_params = params;
}

void URLParams::setParams(CMapStringToString& map)
{
    for (POSITION at = map.GetStartPosition(); at;) {
        CString name;
        CString value;
        map.GetNextAssoc(at, name, value);
        addParam(name, value);
    }
}

CString URLParams::getParams() const
{
    return m_params;
}

void URLParams::addParam(CString name, CString value)
{
    if (m_encode)
        omEncodeUrl(value);
    if (!m_params.IsEmpty())
        m_params += '&';
    m_params += name;
    m_params += '=';
    m_params += value;
}

bool URLParams::getParam(CString const& name, CString& value) const
{
    CString const key = name + '=';
    int const found = m_params.Find(key);
    if (found < 0)
        return false;
    int const start = found + key.GetLength();
    int const end = m_params.Find('&', start);
    CString raw = end < 0 ? m_params.Mid(start) : m_params.Mid(start, end - start);
    if (raw.IsEmpty())
        return false;
    if (m_encode)
        omDecodeUrl(raw);
    value = std::move(raw);
    return true;
}

CString URLParams::getParam(CString const& name) const
{
    CString value;
    getParam(name, value);
    return value;
}

bool URLParams::getParamAsBool(CString name, bool defaultValue) const
{
    CString const value = getParam(name);
    if (value.CompareNoCase("false") == 0 || value == "0")
        return false;
    if (value.CompareNoCase("true") == 0 || value == "1")
        return true;
    return defaultValue;
}

bool omGetParamsFromUri(CString const& uri, URLParams& params, bool fragment)
{
    if (uri.IsEmpty())
        return false;
    int const query = uri.Find('?');
    if (query < 0)
        return true;
    int const firstMark = uri.Find('#');
    if (firstMark >= 0 && firstMark < query)
        return false;
    int const lastMark = uri.ReverseFind('#');
    int const end = fragment && lastMark >= 0 ? lastMark : uri.GetLength();
    params.setParams(uri.Mid(query + 1, end - query - 1));
    return true;
}
