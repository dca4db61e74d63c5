// CPtrArray.h: arrays of pointers that grow, plain and with the pointers' type.
//
//   CTypedPtrArray<CPtrArray, CString*> lines;
//   lines.Add(new CString("first"));     // 0, its index
//   *lines[0];                           // "first"
//   delete lines[0];                     // the array does not own what it points to
//
// See CArray.h.
#pragma once

#include "platform/os/exportMacro.h"

#include "platform/classlib/CArray.h"

class ZK_UTIL_API CPtrArray : public CArray<void*, void*> {
    DECLARE_DYNCREATE(CPtrArray)

    CPtrArray() noexcept;
    ~CPtrArray() override;
};

/// The array BASE of `void*` under the pointer type TYPE.
template <class BASE, class TYPE>
class CTypedPtrArray : public BASE {
public:
    TYPE GetAt(INT_PTR index) const { return static_cast<TYPE>(BASE::GetAt(index)); }
    TYPE operator[](INT_PTR index) const { return static_cast<TYPE>(BASE::GetAt(index)); }
    void SetAt(INT_PTR index, TYPE pointer) { BASE::SetAt(index, pointer); }
    void SetAtGrow(INT_PTR index, TYPE pointer) { BASE::SetAtGrow(index, pointer); }
    INT_PTR Add(TYPE pointer) { return BASE::Add(pointer); }
    INT_PTR Append(CTypedPtrArray const& other) { return BASE::Append(other); }
    void Copy(CTypedPtrArray const& other) { BASE::Copy(other); }
    void InsertAt(INT_PTR index, TYPE pointer, INT_PTR count = 1) { BASE::InsertAt(index, pointer, count); }
    void InsertAt(INT_PTR index, CTypedPtrArray const* other) { BASE::InsertAt(index, other); }
};
