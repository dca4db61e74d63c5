#include "Foundtn/util/globalFlags.h"

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
        globalFlags::instance()->setFlag(name_, previous_);
}
