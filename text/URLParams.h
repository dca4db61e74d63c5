// URLParams.h: parameters in the query form of a URI, "name=value&name=value".
//
//   URLParams params;
//   omGetParamsFromUri("model?name=a%20b&open=true#top", params, true);
//   params.getParam("name");                     // "a b"
//   params.getParamAsBool("open", false);        // true
#pragma once

#include "zk_export.h"

#include "platform/classlib/CString.h"
#include "platform/classlib/CStringMaps.h"

/// One string in query form; every operation works on it directly. A value type.
class ZK_UTIL_API URLParams {
public:
    URLParams();
    URLParams(CString params);
    /// The pairs of a map, in the map's own order.
    URLParams(CMapStringToString& map);
    URLParams(URLParams const&);
    URLParams& operator=(URLParams const&);
    URLParams(URLParams&&) noexcept;
    URLParams& operator=(URLParams&&) noexcept;
    virtual ~URLParams();

    bool IsEmpty() const;

    /// Whether values are escaped when they are added and decoded when they are read; true at first.
    void setEncode(bool encode);

    /// Takes the whole string as it stands, or adds the pairs of a map to what there is.
    void setParams(CString const& params);
    void setParams(CMapStringToString& map);
    CString getParams() const;

    /// Appends "name=value". The name is not escaped, and one that is there already is not looked for.
    void addParam(CString name, CString value);

    /// Gives the value behind the first `name` and "=" that stands anywhere: a name "x" finds
    /// "maxx=1" too. False, with `value` as it was, for a name that is absent or has an empty value.
    bool getParam(CString const& name, CString& value) const;
    /// The same; empty for an absent one.
    CString getParam(CString const& name) const;

    /// "true" in any case and "1" are true, "false" in any case and "0" false, all else the default.
    bool getParamAsBool(CString name, bool defaultValue) const;

private:
    CString m_params;
    bool m_encode;
};

/// Takes what stands between the first "?" and the end of `uri`, or with `fragment` its last "#".
///
/// True with `params` untouched if there is no "?". False, and nothing done, for an empty `uri` or one
/// with a "#" before its "?".
ZK_UTIL_API bool omGetParamsFromUri(CString const& uri, URLParams& params, bool fragment);
