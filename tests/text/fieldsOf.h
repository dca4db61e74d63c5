// fieldsOf.h: the fields of strings and lists, read as other modules may read them.
//
// The order and the widths of the fields are part of the classes' contract, so
// a record of the same layout shows them.
#pragma once

#include "text/SPStringList.h"
#include "text/VarString.h"

#include <cstdint>
#include <cstring>

namespace zk::test {

struct StringFields {
    char* s;
    std::uint64_t len;
    std::uint64_t allocated;
    std::uint64_t allocinc : 63;
    std::uint64_t irregular : 1;
};

struct WindowFields {
    std::uint64_t pos;
    std::uint64_t len;
    SPString* str;
    char* pt;
};

template <class T>
struct ListFields {
    void* table;  // of virtual functions
    T* a;
    std::int32_t cnt;
    std::int32_t first;
    std::int32_t allocated;
    std::int32_t allocinc;
};

template <class Fields, class Object>
Fields readFields(Object const& object)
{
    static_assert(sizeof(Fields) == sizeof(Object));
    Fields fields;
    std::memcpy(static_cast<void*>(&fields), static_cast<void const*>(&object), sizeof fields);
    return fields;
}

inline StringFields fieldsOf(VarString const& text)
{
    return readFields<StringFields>(text);
}

inline StringFields fieldsOf(SPString const& text)
{
    return readFields<StringFields>(text);
}

inline WindowFields fieldsOf(SPString::substring const& window)
{
    return readFields<WindowFields>(window);
}

template <class T>
ListFields<T> fieldsOf(SPListBase<T> const& list)
{
    return readFields<ListFields<T>>(list);
}

}  // namespace zk::test
