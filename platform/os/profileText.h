// profileText.h: the text of a profile, that is an ini file, as the system's
// private-profile calls read it; and changes of it that touch one line.
//
//   ProfileText const profile("[General]\nDepth = 7   \n; a note\n");
//   profile.value("general", "DEPTH");                        // "7"
//
//   std::string text = "[General]\nDepth = 7\n; a note\n";
//   setProfileValue(text, "General", "Depth", "8");           // "[General]\nDepth = 8\n; a note\n"
//
// Any bytes may stand in it. A line ends with CR, LF or both. Blanks around
// lines, names and values count for nothing, names have no case (ASCII), a name
// or a value ends at a NUL. "[name]" begins a section, with the last "]" of the
// line; what stands before the first one belongs to the section "". Of sections
// or keys with one name the first counts. ";" begins a line of comment and is
// an ordinary character elsewhere. A line without "=" is a key without a value.
// A byte-order mark of UTF-8 at the start is passed over. A text that begins
// with a mark of UTF-16 is read and changed as if it were UTF-8, and stays what it is (wideText.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zk::os {

/// Finds places in a list of names, without case. Of equal names the first counts.
class NameIndex {
public:
    static constexpr std::size_t none = std::size_t(-1);

    template <class Named>
    void build(Named const& items)
    {
        std::size_t room = 8;
        while (room < 2 * items.size())
            room *= 2;
        slots_.assign(room, Slot());
        std::uint32_t number = 0;
        for (auto const& item : items) {
            Slot& slot = slots_[placeOf(items, item.name)];
            if (slot.number == Slot::free)
                slot = {hashOf(item.name), number};
            ++number;
        }
    }

    template <class Named>
    std::size_t find(Named const& items, std::string_view name) const
    {
        std::uint32_t const number = slots_[placeOf(items, name)].number;
        return number == Slot::free ? none : number;
    }

private:
    struct Slot {
        static constexpr std::uint32_t free = 0xFFFFFFFF;
        std::uint32_t hash = 0;
        std::uint32_t number = free;
    };

    static std::uint32_t hashOf(std::string_view name) noexcept;
    static bool isSame(std::string_view a, std::string_view b) noexcept;

    template <class Named>
    std::size_t placeOf(Named const& items, std::string_view name) const
    {
        std::uint32_t const hash = hashOf(name);
        std::size_t place = hash & (slots_.size() - 1);
        while (slots_[place].number != Slot::free &&
               (slots_[place].hash != hash || !isSame(items[slots_[place].number].name, name)))
            place = (place + 1) & (slots_.size() - 1);
        return place;
    }

    std::vector<Slot> slots_;
};

/// A profile for reading. Sections are found when it is made, the keys of one
/// when one of them is asked for first. May be read by several threads.
class ProfileText {
public:
    explicit ProfileText(std::string bytes);
    ProfileText(ProfileText const&) = delete;
    ProfileText& operator=(ProfileText const&) = delete;

    /// The value as it stands, blanks trimmed and quotes in place. The view is into this object.
    std::optional<std::string_view> value(std::string_view section, std::string_view key) const;

    /// The number, from 1, of the line that value() comes from; 0 if there is none.
    std::size_t lineOf(std::string_view section, std::string_view key) const;

    /// The names of all sections but "", or of all keys of a section that have a value; each with a NUL behind it.
    std::string sectionNames() const;
    std::string keyNames(std::string_view section) const;

private:
    struct Key {
        std::string_view name;
        std::string_view value;
        bool hasValue;
    };
    struct Section {
        Section(std::string_view theName, std::string_view theBody) noexcept
            : name(theName), body(theBody) { }
        std::string_view name;
        std::string_view body;
        mutable std::once_flag isIndexed;
        mutable std::vector<Key> keys;
        mutable NameIndex index;
    };

    Section const* sectionOf(std::string_view name) const;
    Key const* keyOf(std::string_view section, std::string_view key) const;

    std::string const bytes_;
    std::deque<Section> sections_;
    NameIndex index_;
};

/// The value in a pair of quotes, single or double, without them; any other value as it is.
std::string_view withoutQuotes(std::string_view value) noexcept;

/// Gives a key its value in a profile's text, and changes nothing else: the value alone where the key
/// exists, else a line more at the end of the section, else a section more at the end.
///
/// Blanks around the names and the value are left out, quotes stay. False, with `text` as it was, where
/// these could not be read back: with a line break, "=" in the key, a key that looks like a comment or a section; in UTF-16 with bytes that are no UTF-8.
bool setProfileValue(std::string& text, std::string_view section, std::string_view key,
                     std::string_view value);

/// Removes the line of a key.
void removeProfileKey(std::string& text, std::string_view section, std::string_view key);

/// Removes a section with its lines. Comments above the next section that a
/// blank line parts from this one belong to that and stay.
void removeProfileSection(std::string& text, std::string_view section);

}  // namespace zk::os
