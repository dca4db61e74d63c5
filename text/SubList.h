// SubList.h: a list seen through a slice.
//
//   SPStringList names;                    // "a", "b", "c", "d"
//   SPList<SPString> some = names("0,2-3");   // "a", "c", "d"
//
// A view is made by calling a list, and turned into a list of its own by SPList.
#pragma once

#include "text/Slice.h"
#include "zk_export.h"

#include <memory>

template <class T>
class SPList;

/// A copy of a slice and a reference to the list it picks from, which must outlive the view.
template <class T>
class SubList {
public:
    SubList(SPList<T>& list, Slice const& slice) : slice_(std::make_unique<Slice>(slice)), list_(list) { }

    SubList(SubList const& other) : SubList(other.list_, *other.slice_) { }

    Slice const& slice() const noexcept { return *slice_; }
    SPList<T>& list() const noexcept { return list_; }

private:
    std::unique_ptr<Slice> slice_;
    SPList<T>& list_;
};
