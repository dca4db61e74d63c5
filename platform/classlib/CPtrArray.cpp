#include "platform/classlib/CPtrArray.h"

IMPLEMENT_DYNCREATE(CPtrArray, CObject)

CPtrArray::CPtrArray() noexcept = default;

CPtrArray::~CPtrArray() = default;
