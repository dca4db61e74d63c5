// CatalogBytes.h: the content of a catalog file, well formed or not.
//
//   CatalogBytes bytes;
//   bytes.set(1).message(7, "%s has %d units").message(8, "text");
//   bytes.set(2).invalid = true;
//   folder.write("my.cat", bytes.content());
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

class CatalogBytes {
public:
    struct Message {
        std::uint32_t id;
        std::string text;
        std::uint32_t invalid = 0;
    };

    struct Set {
        explicit Set(std::uint32_t id) : id(id) { }

        Set& message(std::uint32_t messageId, std::string text, bool isInvalid = false)
        {
            messages.push_back({messageId, std::move(text), isInvalid});
            return *this;
        }

        std::uint32_t id;
        bool invalid = false;
        std::vector<Message> messages;
    };

    Set& set(std::uint32_t id)
    {
        sets_.emplace_back(id);
        return sets_.back();
    }

    std::string magic = "*nazgul*";
    std::uint32_t majorVersion = 1;

    std::string content() const
    {
        std::string head = magic + number(majorVersion) + number(0) + number(0) +
            number(static_cast<std::uint32_t>(sets_.size())) + number(28);
        std::string records;
        std::string rest;
        std::uint32_t const restAt = 28 + 28 * static_cast<std::uint32_t>(sets_.size());
        std::uint32_t next = 28;
        for (Set const& set : sets_) {
            next += 28;
            std::string messages;
            std::string texts;
            for (Message const& message : set.messages) {
                messages += number(message.id) + number(static_cast<std::uint32_t>(texts.size())) +
                    number(message.invalid);
                texts += message.text + '\0';
            }
            bool const isLast = &set == &sets_.back();
            auto const messagesAt = restAt + static_cast<std::uint32_t>(rest.size());
            auto const textsAt = messagesAt + static_cast<std::uint32_t>(messages.size());
            records += number(set.id) + number(isLast ? 0 : next) + number(messagesAt) + number(textsAt) +
                number(static_cast<std::uint32_t>(texts.size())) +
                number(static_cast<std::uint32_t>(set.messages.size())) + number(set.invalid);
            rest += messages + texts;
        }
        return head + records + rest;
    }

    static std::string number(std::uint32_t value)
    {
        std::string bytes;
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += static_cast<char>(value >> shift);
        return bytes;
    }

    // Where the numbers of a file with one set stand.
    enum : std::size_t {
        setCount = 20,
        firstSet = 24,
        setId = 28,
        nextSet = 32,
        messagesAt = 36,
        textsAt = 40,
        textsLength = 44,
        messageCount = 48,
        setInvalid = 52,
        firstMessage = 56,
        firstTextAt = 60,
    };

    /// A content with one number replaced.
    static std::string with(std::string content, std::size_t place, std::uint32_t value)
    {
        return content.replace(place, 4, number(value));
    }

private:
    std::deque<Set> sets_;
};
