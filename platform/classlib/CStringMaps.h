// CStringMaps.h: maps from texts, and from pointers, to texts and pointers.
//
//   CMapStringToString flags;
//   flags["verbose"] = "yes";
//   CString value;
//   flags.Lookup("verbose", value);      // TRUE; "yes"
//
// See CMap.h. Keys compare exactly, with case. A map never owns what its
// pointers point to.
#pragma once

#include "platform/os/exportMacro.h"

#include "platform/classlib/CMap.h"
#include "platform/classlib/CString.h"

class ZK_UTIL_API CMapStringToString : public CMap<CString, zk::TextArgument, CString, CString const&> {
    DECLARE_DYNCREATE(CMapStringToString)

    explicit CMapStringToString(INT_PTR blockSize = 10) noexcept;
    ~CMapStringToString() override;
};

class ZK_UTIL_API CMapStringToPtr : public CMap<CString, zk::TextArgument, void*, void*> {
    DECLARE_DYNCREATE(CMapStringToPtr)

    explicit CMapStringToPtr(INT_PTR blockSize = 10) noexcept;
    ~CMapStringToPtr() override;
};

class ZK_UTIL_API CMapStringToOb : public CMap<CString, zk::TextArgument, CObject*, CObject*> {
    DECLARE_DYNCREATE(CMapStringToOb)

    explicit CMapStringToOb(INT_PTR blockSize = 10) noexcept;
    ~CMapStringToOb() override;
};

class ZK_UTIL_API CMapPtrToPtr : public CMap<void*, void*, void*, void*> {
    DECLARE_DYNCREATE(CMapPtrToPtr)

    explicit CMapPtrToPtr(INT_PTR blockSize = 10) noexcept;
    ~CMapPtrToPtr() override;
};
