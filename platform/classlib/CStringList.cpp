#include "platform/classlib/CStringList.h"

IMPLEMENT_DYNCREATE(CStringList, CObject)

CStringList::CStringList(INT_PTR blockSize) noexcept : Base(blockSize)
{
}

CStringList::~CStringList() = default;
