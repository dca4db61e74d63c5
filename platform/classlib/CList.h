// CList.h: a doubly linked list, walked with positions.
//
//   CList<int> numbers;
//   numbers.AddTail(1);
//   numbers.AddTail(2);
//   for (POSITION at = numbers.GetHeadPosition(); at;)
//       sum += numbers.GetNext(at);                        // 1, then 2; at is null at the end
//   for (int number : numbers) ...                         // the same
//
// GetNext moves on before it gives the element, so the element may be removed
// at once. Elements stay where they are until they are removed. A position
// must be one of the list's own; null and the ends of an empty list are met
// with std::out_of_range. Nodes come in blocks of the block size.
#pragma once

#include "platform/classlib/CObject.h"
#include "platform/classlib/collections.h"
#include "platform/classlib/nodePool.h"

#include <iterator>
#include <stdexcept>
#include <utility>

template <class TYPE, class ARG_TYPE = TYPE const&>
class CList : public CObject {
    struct Node {
        template <class Value>
        Node(Value&& argument, Node* previousNode, Node* nextNode)
            : value(std::forward<Value>(argument)), previous(previousNode), next(nextNode)
        {
        }
        TYPE value;
        Node* previous;
        Node* next;
    };

    template <class Value>
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = TYPE;
        using difference_type = std::ptrdiff_t;
        using pointer = Value*;
        using reference = Value&;

        Iterator() = default;
        explicit Iterator(Node* node) : node_(node) { }
        reference operator*() const { return node_->value; }
        pointer operator->() const { return &node_->value; }
        Iterator& operator++()
        {
            node_ = node_->next;
            return *this;
        }
        Iterator operator++(int)
        {
            Iterator const old = *this;
            ++*this;
            return old;
        }
        friend bool operator==(Iterator left, Iterator right) { return left.node_ == right.node_; }
        friend bool operator!=(Iterator left, Iterator right) { return left.node_ != right.node_; }

    private:
        Node* node_ = nullptr;
    };

public:
    explicit CList(INT_PTR blockSize = 10) noexcept : nodes_(blockSize) { }
    ~CList() override { RemoveAll(); }

    INT_PTR GetCount() const noexcept { return count_; }
    INT_PTR GetSize() const noexcept { return count_; }
    BOOL IsEmpty() const noexcept { return count_ == 0; }

    // -- Ends --------------------------------------------------------------------

    TYPE& GetHead() { return checked(head_)->value; }
    TYPE const& GetHead() const { return checked(head_)->value; }
    TYPE& GetTail() { return checked(tail_)->value; }
    TYPE const& GetTail() const { return checked(tail_)->value; }

    TYPE RemoveHead() { return extract(checked(head_)); }
    TYPE RemoveTail() { return extract(checked(tail_)); }

    /// Add an element and give its position.
    POSITION AddHead(ARG_TYPE element) { return position(link(element, nullptr, head_)); }
    POSITION AddTail(ARG_TYPE element) { return position(link(element, tail_, nullptr)); }

    /// Add copies of all elements of a list, in their order; the list may be this one.
    void AddHead(CList const* list)
    {
        Node* node = list->tail_;
        for (INT_PTR left = list->count_; left > 0; --left) {
            link(std::as_const(node->value), nullptr, head_);
            node = node->previous;
        }
    }
    void AddTail(CList const* list)
    {
        Node* node = list->head_;
        for (INT_PTR left = list->count_; left > 0; --left) {
            link(std::as_const(node->value), tail_, nullptr);
            node = node->next;
        }
    }

    /// Removes all elements and gives their memory back.
    void RemoveAll() noexcept
    {
        for (Node* node = head_; node;) {
            Node* const next = node->next;
            node->~Node();
            node = next;
        }
        head_ = tail_ = nullptr;
        count_ = 0;
        nodes_.clear();
    }

    // -- Walking -------------------------------------------------------------------

    POSITION GetHeadPosition() const noexcept { return position(head_); }
    POSITION GetTailPosition() const noexcept { return position(tail_); }

    /// Give the element at `at`, and move `at` on: null behind the last one.
    TYPE& GetNext(POSITION& at) { return step(at, &Node::next)->value; }
    TYPE const& GetNext(POSITION& at) const { return step(at, &Node::next)->value; }
    TYPE& GetPrev(POSITION& at) { return step(at, &Node::previous)->value; }
    TYPE const& GetPrev(POSITION& at) const { return step(at, &Node::previous)->value; }

    auto begin() noexcept { return Iterator<TYPE>(head_); }
    auto begin() const noexcept { return Iterator<TYPE const>(head_); }
    auto end() noexcept { return Iterator<TYPE>(); }
    auto end() const noexcept { return Iterator<TYPE const>(); }

    // -- At a position ---------------------------------------------------------------

    TYPE& GetAt(POSITION at) { return checked(node(at))->value; }
    TYPE const& GetAt(POSITION at) const { return checked(node(at))->value; }
    void SetAt(POSITION at, ARG_TYPE element) { checked(node(at))->value = element; }
    void RemoveAt(POSITION at) { unlink(checked(node(at))); }

    /// Insert an element and give its position. Before null is at the head, after null at the tail.
    POSITION InsertBefore(POSITION at, ARG_TYPE element)
    {
        return at ? position(link(element, node(at)->previous, node(at))) : AddHead(element);
    }
    POSITION InsertAfter(POSITION at, ARG_TYPE element)
    {
        return at ? position(link(element, node(at), node(at)->next)) : AddTail(element);
    }

    // -- Searching -------------------------------------------------------------------

    /// The first element that CompareElements finds equal, behind `after` or from the head on; or null.
    POSITION Find(ARG_TYPE wanted, POSITION after = nullptr) const
    {
        for (Node* candidate = after ? node(after)->next : head_; candidate; candidate = candidate->next) {
            if (CompareElements(&candidate->value, &wanted))
                return position(candidate);
        }
        return nullptr;
    }
    /// The position of the element with that number, counted from 0, or null. Linear, from the nearer end.
    POSITION FindIndex(INT_PTR index) const noexcept
    {
        if (index < 0 || index >= count_)
            return nullptr;
        Node* found = nullptr;
        if (index < count_ / 2) {
            for (found = head_; index > 0; --index)
                found = found->next;
        } else {
            for (found = tail_; index < count_ - 1; ++index)
                found = found->previous;
        }
        return position(found);
    }

protected:
    // For lists whose elements may also be moved in.
    template <class Value>
    POSITION addTail(Value&& value)
    {
        return position(link(std::forward<Value>(value), tail_, nullptr));
    }
    template <class Value>
    POSITION addHead(Value&& value)
    {
        return position(link(std::forward<Value>(value), nullptr, head_));
    }

private:
    static POSITION position(Node* node) noexcept { return reinterpret_cast<POSITION>(node); }
    static Node* node(POSITION at) noexcept { return reinterpret_cast<Node*>(at); }

    static Node* checked(Node* node)
    {
        if (!node)
            throw std::out_of_range("a list has no element there");
        return node;
    }

    static Node* step(POSITION& at, Node* Node::*direction)
    {
        Node* const here = checked(node(at));
        at = position(here->*direction);
        return here;
    }

    template <class Value>
    Node* link(Value&& value, Node* previous, Node* next)
    {
        Node* const added = nodes_.make(std::forward<Value>(value), previous, next);
        (previous ? previous->next : head_) = added;
        (next ? next->previous : tail_) = added;
        ++count_;
        return added;
    }

    void unlink(Node* node) noexcept
    {
        (node->previous ? node->previous->next : head_) = node->next;
        (node->next ? node->next->previous : tail_) = node->previous;
        --count_;
        nodes_.destroy(node);
    }

    TYPE extract(Node* node)
    {
        TYPE value = std::move(node->value);
        unlink(node);
        return value;
    }

    zk::NodePool<Node> nodes_;
    Node* head_ = nullptr;
    Node* tail_ = nullptr;
    INT_PTR count_ = 0;
};
