// CStringArray.h: an array of texts that grows.
//
//   CStringArray lines;
//   lines.Add("first");                  // 0, its index
//   lines[0] += " line";                 // "first line"
//
// See CArray.h.
#pragma once

#include "platform/os/exportMacro.h"

#include "platform/classlib/CArray.h"
#include "platform/classlib/CString.h"

#include <utility>

class ZK_UTIL_API CStringArray : public CArray<CString, CString const&> {
    using Base = CArray<CString, CString const&>;
    DECLARE_DYNCREATE(CStringArray)

    CStringArray() noexcept;
    ~CStringArray() override;

    using Base::Add;
    INT_PTR Add(char const* text) { return add(CString(text)); }
    INT_PTR Add(CString&& text) { return add(std::move(text)); }
};
