// neverDestroyed.h: an object that is usable to the process's very end, in memory that was always there.
//
//   static NeverDestroyed<Table> table;      // static destructors may still use it
//   table.object.add(...);
#pragma once

namespace zk::os {

/// Made like any other object, ended never: what it refers to stays reachable. What it holds on the heap is given
/// back by an AtModuleEnd.
template <class Object>
union NeverDestroyed {
    constexpr NeverDestroyed() noexcept(noexcept(Object())) : object() { }
    ~NeverDestroyed() { }

    Object object;
};

/// At file scope: calls `empty` when the module is unloaded or the process ends. The object that it empties stays
/// usable, for threads and destructors that come later.
template <void (*empty)()>
struct AtModuleEnd {
    ~AtModuleEnd() { empty(); }
};

}  // namespace zk::os
