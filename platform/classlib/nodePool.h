// nodePool.h: the nodes of a list or map, in blocks.
//
// The first blocks hold the number asked for. As the container grows, so do
// they, up to some 32 KB: a million elements don't cost a hundred thousand
// calls of the heap. A node that is given back is the next one to be used.
// Blocks go back to the heap together, when the container is emptied.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace zk {

template <class Node>
class NodePool {
public:
    /// A block size below 1 counts as 10.
    explicit NodePool(std::ptrdiff_t blockSize) noexcept
        : blockSize_(blockSize > 0 ? static_cast<std::size_t>(blockSize) : 10)
    {
    }
    ~NodePool() { clear(); }
    NodePool(NodePool const&) = delete;
    NodePool& operator=(NodePool const&) = delete;

    /// A new node, made with `arguments`. What its constructor throws passes, and no node is lost.
    template <class... Arguments>
    Node* make(Arguments&&... arguments)
    {
        Slot* const slot = take();
        Return back = {this, slot};
        Node* const node =
            ::new (static_cast<void*>(slot->bytes)) Node(std::forward<Arguments>(arguments)...);
        back.pool = nullptr;
        return node;
    }

    /// Destroys a node and keeps its memory for the next one.
    void destroy(Node* node) noexcept
    {
        node->~Node();
        give(reinterpret_cast<Slot*>(node));
    }

    /// Gives all memory back. All nodes must have been destroyed (`~Node`) or `destroy`ed before.
    void clear() noexcept
    {
        while (blocks_) {
            Block const last = *blocks_;
            std::allocator<Slot>().deallocate(reinterpret_cast<Slot*>(blocks_), last.slots);
            blocks_ = last.next;
        }
        free_ = fresh_ = end_ = nullptr;
        made_ = 0;
    }

private:
    union Slot {
        Slot* next;
        alignas(Node) unsigned char bytes[sizeof(Node)];
    };

    // Stands in the first slots of each block.
    struct Block {
        Block* next;
        std::size_t slots;
    };
    static constexpr std::size_t headerSlots = (sizeof(Block) + sizeof(Slot) - 1) / sizeof(Slot);

    struct Return {
        NodePool* pool;
        Slot* slot;
        ~Return()
        {
            if (pool)
                pool->give(slot);
        }
    };

    Slot* take()
    {
        if (free_) {
            Slot* const slot = free_;
            free_ = slot->next;
            return slot;
        }
        if (fresh_ == end_)
            addBlock();
        return fresh_++;
    }

    void give(Slot* slot) noexcept
    {
        slot->next = free_;
        free_ = slot;
    }

    void addBlock()
    {
        // An eighth of what there is already, if that is more than was asked for.
        std::size_t const growing = made_ / 8 < largestBlock ? made_ / 8 : largestBlock;
        std::size_t const nodes = growing > blockSize_ ? growing : blockSize_;
        std::size_t const slots = headerSlots + nodes;
        Slot* const memory = std::allocator<Slot>().allocate(slots);
        blocks_ = ::new (static_cast<void*>(memory)) Block{blocks_, slots};
        fresh_ = memory + headerSlots;
        end_ = memory + slots;
        made_ += nodes;
    }

    static constexpr std::size_t largestBlock = (std::size_t(1) << 15) / sizeof(Slot);

    std::size_t blockSize_;
    std::size_t made_ = 0;  // nodes in all blocks
    Block* blocks_ = nullptr;
    Slot* free_ = nullptr;   // given back
    Slot* fresh_ = nullptr;  // never used, up to end_
    Slot* end_ = nullptr;
};

}  // namespace zk
