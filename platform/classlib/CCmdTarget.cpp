#include "platform/classlib/CCmdTarget.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

CCmdTarget::~CCmdTarget() = default;

AFX_MSGMAP const* CCmdTarget::GetThisMessageMap()
{
    static constexpr AFX_MSGMAP_ENTRY entries[] = {{ZkMessageKind::end, 0, 0, 0, nullptr}};
    static constexpr AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

AFX_MSGMAP const* CCmdTarget::GetMessageMap() const
{
    return GetThisMessageMap();
}

namespace {

// The first row from the derived class to the last base class that `fits`, or null.
template <class Fits>
AFX_MSGMAP_ENTRY const* findEntry(AFX_MSGMAP const* map, Fits fits)
{
    for (; map; map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr) {
        for (AFX_MSGMAP_ENTRY const* entry = map->lpEntries; entry->kind != ZkMessageKind::end; ++entry) {
            if (fits(*entry))
                return entry;
        }
    }
    return nullptr;
}

}  // namespace

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void*, void*)
{
    AFX_MSGMAP_ENTRY const* const entry = findEntry(GetMessageMap(), [=](AFX_MSGMAP_ENTRY const& row) {
        return row.kind == ZkMessageKind::command && row.nMessage == UINT(nCode) && row.nID <= nID &&
            nID <= row.nLastID;
    });
    if (!entry)
        return FALSE;
    entry->pfn(this, 0, 0);
    return TRUE;
}

bool CCmdTarget::callMessageHandler(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    AFX_MSGMAP_ENTRY const* const entry = findEntry(GetMessageMap(), [=](AFX_MSGMAP_ENTRY const& row) {
        return row.kind == ZkMessageKind::window && row.nMessage == message;
    });
    if (!entry)
        return false;
    LRESULT const value = entry->pfn(this, wParam, lParam);
    if (result)
        *result = value;
    return true;
}
