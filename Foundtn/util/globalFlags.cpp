#include "Foundtn/util/globalFlags.h"

#include <new>
#include <utility>

namespace {

constexpr int blockSize = 10;
constexpr unsigned int hashTableSize = 17;

}  // namespace

globalFlags::globalFlags() : flags_(blockSize)
{
    flags_.InitHashTable(hashTableSize);
}

globalFlags* globalFlags::instance()
{
    static globalFlags* const theFlags = new globalFlags;
    return theFlags;
}

CString globalFlags::getFlag(CString const& name) const
{
    CString value;
    flags_.Lookup(name, value);
    return value;
}

void globalFlags::setFlag(CString const& name, CString const& value)
{
    flags_.SetAt(name, value);
}

void globalFlags::removeFlag(CString const& name)
{
    flags_.RemoveKey(name);
}

// Where the flag is still there this needs no memory.
void globalFlags::putBack(CString const& name, CString&& value) noexcept
{
    try {
        if (auto* const flag = flags_.PLookup(name))
            flag->value = std::move(value);
        else
            flags_.SetAt(name, value);
    } catch (std::bad_alloc const&) {  // it stays away
    }
}

setGlobalFlag::setGlobalFlag(CString const& name, CString const& value)
    : isChanged_(false), name_(name), previous_(globalFlags::instance()->getFlag(name))
{
    if (previous_ == value)
        return;
    globalFlags::instance()->setFlag(name, value);
    isChanged_ = true;
}

setGlobalFlag::~setGlobalFlag()
{
    if (!isChanged_)
        return;
    if (previous_.IsEmpty())
        globalFlags::instance()->removeFlag(name_);
    else
        globalFlags::instance()->putBack(name_, std::move(previous_));
}
