#include "text/sorting.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

void sortTexts(std::vector<CString>& texts)
{
    std::stable_sort(texts.begin(), texts.end(),
                     [](CString const& left, CString const& right) { return left.Compare(right) < 0; });
}

}  // namespace

void Sort(CStringList& list)
{
    std::vector<CString> texts;
    texts.reserve(std::size_t(list.GetCount()));
    for (POSITION at = list.GetHeadPosition(); at;)
        texts.push_back(std::move(list.GetNext(at)));
    sortTexts(texts);
    auto next = texts.begin();
    for (POSITION at = list.GetHeadPosition(); at;)
        list.GetNext(at) = std::move(*next++);
}

void BubbleSort(CStringList* list)
{
    if (list)
        Sort(*list);
}

void omSortStringList(CStringList* list)
{
    if (list)
        Sort(*list);
}

void BubbleSort(CStringArray* array)
{
    if (!array)
        return;
    std::vector<CString> texts;
    texts.reserve(std::size_t(array->GetSize()));
    for (int i = 0; i < int(array->GetSize()); ++i)
        texts.push_back(std::move(array->ElementAt(i)));
    sortTexts(texts);
    for (int i = 0; i < int(array->GetSize()); ++i)
        array->ElementAt(i) = std::move(texts[std::size_t(i)]);
}
