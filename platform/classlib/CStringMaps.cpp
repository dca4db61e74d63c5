#include "platform/classlib/CStringMaps.h"

IMPLEMENT_DYNCREATE(CMapStringToString, CObject)

CMapStringToString::CMapStringToString(INT_PTR blockSize) noexcept : CMap(blockSize)
{
}

CMapStringToString::~CMapStringToString() = default;

IMPLEMENT_DYNCREATE(CMapStringToPtr, CObject)

CMapStringToPtr::CMapStringToPtr(INT_PTR blockSize) noexcept : CMap(blockSize)
{
}

CMapStringToPtr::~CMapStringToPtr() = default;

IMPLEMENT_DYNCREATE(CMapStringToOb, CObject)

CMapStringToOb::CMapStringToOb(INT_PTR blockSize) noexcept : CMap(blockSize)
{
}

CMapStringToOb::~CMapStringToOb() = default;

IMPLEMENT_DYNCREATE(CMapPtrToPtr, CObject)

CMapPtrToPtr::CMapPtrToPtr(INT_PTR blockSize) noexcept : CMap(blockSize)
{
}

CMapPtrToPtr::~CMapPtrToPtr() = default;
