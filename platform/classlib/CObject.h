// CObject.h: the root of the class library, with a record of each class at run time.
//
//   class Shape : public CObject { DECLARE_DYNCREATE(Shape) };    // in the header
//   IMPLEMENT_DYNCREATE(Shape, CObject)                           // in one source file
//
//   CObject* made = RUNTIME_CLASS(Shape)->CreateObject();         // a Shape; the caller deletes it
//   made->IsKindOf(RUNTIME_CLASS(CObject));                       // TRUE
//   made->GetRuntimeClass()->m_lpszClassName;                     // "Shape"
//
// Class records are constants: they can be used before any constructor of the
// program has run, from any thread, and cost nothing at start.
#pragma once

#include "platform/os/exportMacro.h"
#include "platform/os/os.h"

class CObject;

/// What is known about a class at run time. One constant record stands for each class.
struct ZK_UTIL_API CRuntimeClass {
    LPCSTR m_lpszClassName;                 ///< The name, as the program spells it.
    int m_nObjectSize;                      ///< Bytes of one object.
    UINT m_wSchema;                         ///< 0xFFFF: objects of the class are not stored.
    CObject* (*m_pfnCreateObject)();        ///< Makes an object with `new`; null if the class can't be made.
    CRuntimeClass* (*m_pfnGetBaseClass)();  ///< Gives the base class's record; null for CObject.

    /// Makes an object with its default constructor.
    ///
    /// Gives the object, owned by the caller, who deletes it. Null if the class
    /// was declared without creation (DECLARE_DYNAMIC) or memory ran out.
    CObject* CreateObject();

    /// Whether the class is `base` or is derived from it. One step per generation.
    BOOL IsDerivedFrom(CRuntimeClass const* base) const;
};

/// The root of all classes that have a run-time class record.
///
/// Objects are not copied: a derived class that can be copied says so itself.
class ZK_UTIL_API CObject {
public:
    static CRuntimeClass const classCObject;

    virtual ~CObject();
    CObject(CObject const&) = delete;
    CObject& operator=(CObject const&) = delete;

    /// The record of the object's own class.
    virtual CRuntimeClass* GetRuntimeClass() const;

    /// The record of CObject.
    static CRuntimeClass* GetThisClass();

    /// Whether the object's class is `base` or is derived from it.
    BOOL IsKindOf(CRuntimeClass const* base) const;

protected:
    CObject() = default;

    static CRuntimeClass* _GetBaseClass();
};

namespace zk {

/// `object` if it is of the class `wanted` or one derived from it, else null; null stays null.
ZK_UTIL_API CObject* dynamicDowncast(CRuntimeClass const* wanted, CObject* object);

}  // namespace zk

/// The record of a class.
#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())

/// A pointer to `object` as a `class_name` if it is one, else null.
#define DYNAMIC_DOWNCAST(class_name, object)                                                                 \
    (static_cast<class_name*>(zk::dynamicDowncast(RUNTIME_CLASS(class_name), object)))

/// Gives a class a record; in the class's body. What follows it is public.
#define DECLARE_DYNAMIC(class_name)                                                                          \
protected:                                                                                                   \
    static CRuntimeClass* _GetBaseClass();                                                                   \
                                                                                                             \
public:                                                                                                      \
    static CRuntimeClass const class##class_name;                                                            \
    static CRuntimeClass* GetThisClass();                                                                    \
    CRuntimeClass* GetRuntimeClass() const override;

/// The same for a class with a default constructor whose objects its record can make.
#define DECLARE_DYNCREATE(class_name)                                                                        \
    DECLARE_DYNAMIC(class_name)                                                                              \
    static CObject* CreateObject();

#define ZK_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, create)                                       \
    CRuntimeClass* class_name::_GetBaseClass()                                                               \
    {                                                                                                        \
        return RUNTIME_CLASS(base_class_name);                                                               \
    }                                                                                                        \
    CRuntimeClass const class_name::class##class_name = {#class_name, int(sizeof(class_name)), 0xFFFF,       \
                                                         create, &class_name::_GetBaseClass};                \
    CRuntimeClass* class_name::GetThisClass()                                                                \
    {                                                                                                        \
        return const_cast<CRuntimeClass*>(&class_name::class##class_name);                                   \
    }                                                                                                        \
    CRuntimeClass* class_name::GetRuntimeClass() const                                                       \
    {                                                                                                        \
        return class_name::GetThisClass();                                                                   \
    }

/// Completes DECLARE_DYNAMIC; once, in a source file, in the namespace of the class.
#define IMPLEMENT_DYNAMIC(class_name, base_class_name)                                                       \
    ZK_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, nullptr)

/// Completes DECLARE_DYNCREATE.
#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                                     \
    CObject* class_name::CreateObject()                                                                      \
    {                                                                                                        \
        return new class_name;                                                                               \
    }                                                                                                        \
    ZK_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, &class_name::CreateObject)
