// CStringList.h: a doubly linked list of texts.
//
//   CStringList names;
//   names.AddTail("model");
//   names.AddHead(CString("main"));
//   names.Find("model");                 // a position; null for a text that is not there
//
// See CList.h for positions and walking.
#pragma once

#include "platform/os/exportMacro.h"

#include "platform/classlib/CList.h"
#include "platform/classlib/CString.h"

#include <utility>

class ZK_UTIL_API CStringList : public CList<CString, CString const&> {
    using Base = CList<CString, CString const&>;
    DECLARE_DYNCREATE(CStringList)

    explicit CStringList(INT_PTR blockSize = 10) noexcept;
    ~CStringList() override;

    using Base::AddHead;
    using Base::AddTail;
    POSITION AddHead(char const* text) { return addHead(CString(text)); }
    POSITION AddTail(char const* text) { return addTail(CString(text)); }
    POSITION AddHead(CString&& text) { return addHead(std::move(text)); }
    POSITION AddTail(CString&& text) { return addTail(std::move(text)); }
};
