// sorting.h: lists and arrays of texts in ascending order of their bytes.
//
//   CStringList names;                           // "b", "a"
//   omSortStringList(&names);                    // "a", "b"
//
// All sort in place, stably, in n log n comparisons. A null argument is left alone. BubbleSort and
// omSortStringList compare texts up to a NUL, Sort compares all of them.
#pragma once

#include "zk_export.h"

#include "platform/classlib/CStringArray.h"
#include "platform/classlib/CStringList.h"

ZK_UTIL_API void BubbleSort(CStringList* list);
ZK_UTIL_API void BubbleSort(CStringArray* array);
ZK_UTIL_API void omSortStringList(CStringList* list);
ZK_UTIL_API void Sort(CStringList& list);
