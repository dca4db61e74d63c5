// CMap.h: a hash map, walked in the order in which its keys came.
//
//   CMap<CString, char const*, int, int> lengths;
//   lengths["model"] = 5;
//   int length = 0;
//   lengths.Lookup("model", length);                       // TRUE; 5
//   for (POSITION at = lengths.GetStartPosition(); at;) {
//       CString key;
//       lengths.GetNextAssoc(at, key, length);             // at is null behind the last one
//   }
//
// Keys are found with HashKey and CompareElements (collections.h). GetNextAssoc
// moves on before it gives the pair, so the pair may be removed at once; keys
// that are added while a walk goes on are met at its end. References to values
// stay good until their key is removed.
//
// The table starts with the size of InitHashTable, 17 by default, and grows
// with the map: a look-up takes a constant time at any size.
#pragma once

#include "platform/classlib/CObject.h"
#include "platform/classlib/collections.h"
#include "platform/classlib/nodePool.h"

#include <cstdint>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <utility>

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CMap : public CObject {
public:
    struct CPair {
        KEY const key;
        VALUE value;

    protected:
        explicit CPair(ARG_KEY argument) : key(argument), value() { }
    };

private:
    struct Node : CPair {
        Node(ARG_KEY argument, UINT hashOfKey, Node* previousNode)
            : CPair(argument), hash(hashOfKey), previous(previousNode)
        {
        }
        UINT hash;
        Node* chain = nullptr;  // the next one in the same bucket
        Node* previous;         // in the order of the walk
        Node* next = nullptr;
    };

    template <class Pair>
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = CPair;
        using difference_type = std::ptrdiff_t;
        using pointer = Pair*;
        using reference = Pair&;

        Iterator() = default;
        explicit Iterator(Node* node) : node_(node) { }
        reference operator*() const { return *node_; }
        pointer operator->() const { return node_; }
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
    explicit CMap(INT_PTR blockSize = 10) noexcept : nodes_(blockSize) { }
    ~CMap() override { RemoveAll(); }

    INT_PTR GetCount() const noexcept { return count_; }
    INT_PTR GetSize() const noexcept { return count_; }
    BOOL IsEmpty() const noexcept { return count_ == 0; }

    // -- By key --------------------------------------------------------------------

    /// Copies the key's value to `value` and gives whether there is one; `value` stays as it is if not.
    BOOL Lookup(ARG_KEY key, VALUE& value) const
    {
        Node const* const found = find(key, HashKey<ARG_KEY>(key));
        if (found)
            value = found->value;
        return found != nullptr;
    }
    /// The key and its value, or null.
    CPair* PLookup(ARG_KEY key) { return find(key, HashKey<ARG_KEY>(key)); }
    CPair const* PLookup(ARG_KEY key) const { return find(key, HashKey<ARG_KEY>(key)); }

    /// The key's value; a key that is new comes in with a value-initialised one.
    VALUE& operator[](ARG_KEY key)
    {
        UINT const hash = HashKey<ARG_KEY>(key);
        Node* const found = find(key, hash);
        return (found ? found : add(key, hash))->value;
    }
    /// Sets the value of a key, new or not. Without memory for both the map stays as it was.
    void SetAt(ARG_KEY key, ARG_VALUE value)
    {
        UINT const hash = HashKey<ARG_KEY>(key);
        if (Node* const found = find(key, hash)) {
            found->value = value;
            return;
        }
        Node* const added = add(key, hash);
        try {
            added->value = value;
        } catch (...) {
            RemoveKey(key);
            throw;
        }
    }

    /// Removes a key and gives whether it was there.
    BOOL RemoveKey(ARG_KEY key)
    {
        if (count_ == 0)
            return FALSE;
        UINT const hash = HashKey<ARG_KEY>(key);
        for (Node** link = &buckets_[bucketOf(hash)]; *link; link = &(*link)->chain) {
            Node* const node = *link;
            if (node->hash == hash && CompareElements(&node->key, &key)) {
                *link = node->chain;
                (node->previous ? node->previous->next : first_) = node->next;
                (node->next ? node->next->previous : last_) = node->previous;
                --count_;
                nodes_.destroy(node);
                return TRUE;
            }
        }
        return FALSE;
    }
    /// Removes all keys and gives their memory back.
    void RemoveAll() noexcept
    {
        for (Node* node = first_; node;) {
            Node* const next = node->next;
            node->~Node();
            node = next;
        }
        first_ = last_ = nullptr;
        count_ = 0;
        nodes_.clear();
        buckets_.reset();
        size_ = 0;
    }

    // -- Walking -------------------------------------------------------------------

    POSITION GetStartPosition() const noexcept { return reinterpret_cast<POSITION>(first_); }
    /// Gives the pair at `at` and moves `at` on: null behind the last one.
    void GetNextAssoc(POSITION& at, KEY& key, VALUE& value) const
    {
        if (!at)
            throw std::out_of_range("a map has no pair there");
        Node const* const node = reinterpret_cast<Node*>(at);
        key = node->key;
        value = node->value;
        at = reinterpret_cast<POSITION>(node->next);
    }
    /// The first pair, and the one behind `pair`; null if there is none.
    CPair* PGetFirstAssoc() noexcept { return first_; }
    CPair const* PGetFirstAssoc() const noexcept { return first_; }
    CPair* PGetNextAssoc(CPair const* pair) noexcept { return static_cast<Node const*>(pair)->next; }
    CPair const* PGetNextAssoc(CPair const* pair) const noexcept
    {
        return static_cast<Node const*>(pair)->next;
    }

    auto begin() noexcept { return Iterator<CPair>(first_); }
    auto begin() const noexcept { return Iterator<CPair const>(first_); }
    auto end() noexcept { return Iterator<CPair>(); }
    auto end() const noexcept { return Iterator<CPair const>(); }

    // -- The table -----------------------------------------------------------------

    /// The size that the table starts with.
    UINT GetHashTableSize() const noexcept { return startSize_; }
    /// Sets that size, 0 counting as 17, and makes a table of it at once if
    /// `allocate` is set. A map that has keys already keeps them.
    void InitHashTable(UINT size, BOOL allocate = TRUE)
    {
        startSize_ = size ? size : defaultSize;
        if (allocate || count_ > 0)
            rebuild(startSize_);
    }

private:
    static constexpr UINT defaultSize = 17;

    // Spreads a hash that HashKey may have left as small as a character, then
    // scales it to the table: two multiplications where a remainder takes a division.
    std::size_t bucketOf(UINT hash) const noexcept
    {
        return static_cast<std::size_t>((std::uint64_t(std::uint32_t(hash * 0x9E3779B1u)) * size_) >> 32);
    }

    Node* find(ARG_KEY key, UINT hash) const
    {
        if (count_ == 0)
            return nullptr;
        for (Node* node = buckets_[bucketOf(hash)]; node; node = node->chain) {
            if (node->hash == hash && CompareElements(&node->key, &key))
                return node;
        }
        return nullptr;
    }

    Node* add(ARG_KEY key, UINT hash)
    {
        if (size_ == 0)
            rebuild(startSize_);
        else if (static_cast<std::size_t>(count_) >= size_ && size_ < maximalSize)
            rebuild(static_cast<UINT>(size_ * 2 + 1));
        Node* const node = nodes_.make(key, hash, last_);
        (last_ ? last_->next : first_) = node;
        last_ = node;
        ++count_;
        enter(node);
        return node;
    }

    void enter(Node* node) noexcept
    {
        Node*& bucket = buckets_[bucketOf(node->hash)];
        node->chain = bucket;
        bucket = node;
    }

    void rebuild(UINT size)
    {
        buckets_ = std::make_unique<Node*[]>(size);
        size_ = size;
        for (Node* node = first_; node; node = node->next)
            enter(node);
    }

    static constexpr std::size_t maximalSize = 0x40000000;

    zk::NodePool<Node> nodes_;
    std::unique_ptr<Node*[]> buckets_;
    std::size_t size_ = 0;  // of buckets_
    Node* first_ = nullptr;
    Node* last_ = nullptr;
    INT_PTR count_ = 0;
    UINT startSize_ = defaultSize;
};
