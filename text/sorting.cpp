#include "text/sorting.h"

#include "platform/os/os.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

unsigned char const* bytesOf(CString const& text)
{
    return reinterpret_cast<unsigned char const*>(text.GetString());
}

// Up to the first NUL.
bool isBeforeAsMultibyte(CString const& left, CString const& right)
{
    return _mbscmp(bytesOf(left), bytesOf(right)) < 0;
}

bool isBefore(CString const& left, CString const& right)
{
    return left.Compare(right) < 0;
}

template <class Order>
void sortList(CStringList& list, Order order)
{
    std::vector<CString> texts;
    texts.reserve(std::size_t(list.GetCount()));
    for (POSITION at = list.GetHeadPosition(); at;)
        texts.push_back(std::move(list.GetNext(at)));
    std::stable_sort(texts.begin(), texts.end(), order);
    auto next = texts.begin();
    for (POSITION at = list.GetHeadPosition(); at;)
        list.GetNext(at) = std::move(*next++);
}

}  // namespace

void Sort(CStringList& list)
{
    sortList(list, isBefore);
}

void BubbleSort(CStringList* list)
{
    if (list)
        sortList(*list, isBeforeAsMultibyte);
}

void omSortStringList(CStringList* list)
{
    if (list)
        sortList(*list, isBeforeAsMultibyte);
}

void BubbleSort(CStringArray* array)
{
    if (!array)
        return;
    std::vector<CString> texts;
    texts.reserve(std::size_t(array->GetSize()));
    for (int i = 0; i < int(array->GetSize()); ++i)
        texts.push_back(std::move(array->ElementAt(i)));
    std::stable_sort(texts.begin(), texts.end(), isBeforeAsMultibyte);
    for (int i = 0; i < int(array->GetSize()); ++i)
        array->ElementAt(i) = std::move(texts[std::size_t(i)]);
}
