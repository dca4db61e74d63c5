#include "platform/classlib/CObject.h"

#include <new>

CRuntimeClass const CObject::classCObject = {"CObject", int(sizeof(CObject)), 0xFFFF, nullptr, nullptr};

CObject::~CObject() = default;

CRuntimeClass* CObject::_GetBaseClass()
{
    return nullptr;
}

CRuntimeClass* CObject::GetThisClass()
{
    return const_cast<CRuntimeClass*>(
        &classCObject);  // nobody writes to a record: the type is the users' one
}

CRuntimeClass* CObject::GetRuntimeClass() const
{
    return GetThisClass();
}

BOOL CObject::IsKindOf(CRuntimeClass const* base) const
{
    return GetRuntimeClass()->IsDerivedFrom(base);
}

CObject* CRuntimeClass::CreateObject()
{
    if (!m_pfnCreateObject)
        return nullptr;
    try {
        return m_pfnCreateObject();
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

BOOL CRuntimeClass::IsDerivedFrom(CRuntimeClass const* base) const
{
    for (CRuntimeClass const* own = this; own;
         own = own->m_pfnGetBaseClass ? own->m_pfnGetBaseClass() : nullptr) {
        if (own == base)
            return TRUE;
    }
    return FALSE;
}

namespace zk {

CObject* dynamicDowncast(CRuntimeClass const* wanted, CObject* object)
{
    return object && object->IsKindOf(wanted) ? object : nullptr;
}

}  // namespace zk
