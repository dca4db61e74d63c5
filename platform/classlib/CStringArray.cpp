#include "platform/classlib/CStringArray.h"

IMPLEMENT_DYNCREATE(CStringArray, CObject)

CStringArray::CStringArray() noexcept = default;

CStringArray::~CStringArray() = default;
