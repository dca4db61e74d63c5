// neverDestroyed.h: an object that lives to the process's very end, in memory that was always there.
//
//   static NeverDestroyed<Table> table;      // static destructors may still use it
//   table.object.add(...);
#pragma once

namespace zk::os {

/// Made like any other object, ended never: what it refers to stays reachable.
template <class Object>
union NeverDestroyed {
    constexpr NeverDestroyed() noexcept(noexcept(Object())) : object() { }
    ~NeverDestroyed() { }

    Object object;
};

}  // namespace zk::os
