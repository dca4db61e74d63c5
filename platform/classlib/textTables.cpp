#include "platform/classlib/textTables.h"

#include "platform/os/os.h"
#include "platform/os/resourceTexts.h"

#include <algorithm>
#include <new>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

struct Table {
    ZkText const* texts;
    std::size_t count;
    std::unordered_map<unsigned int, char const*> byNumber;
};

// A section of the system's, as the standard library's locks keep their memory at unload.
struct Tables {
    CRITICAL_SECTION section;
    std::vector<Table> registered;  // the newest last
    inline static bool isMade = false;

    Tables()
    {
        InitializeCriticalSection(&section);
        isMade = true;
    }
};

// Never destroyed, only emptied: texts are asked for until the very end of the process.
Tables& tables()
{
    alignas(Tables) static unsigned char memory[sizeof(Tables)];
    static Tables& instance = *new (memory) Tables;
    return instance;
}

class Lock {
public:
    Lock() { EnterCriticalSection(&tables().section); }
    ~Lock() { LeaveCriticalSection(&tables().section); }
    Lock(Lock const&) = delete;
    Lock& operator=(Lock const&) = delete;
};

struct EmptiesTables {
    ~EmptiesTables()
    {
        if (!Tables::isMade)
            return;
        {
            Lock const lock;
            std::vector<Table>().swap(tables().registered);
        }
        DeleteCriticalSection(&tables().section);
    }
};

EmptiesTables const atModuleEnd;

Table makeTable(ZkText const* texts, std::size_t count)
{
    Table table = {texts, count, {}};
    table.byNumber.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (texts[i].text)
            table.byNumber.emplace(texts[i].id, texts[i].text);
    }
    return table;
}

bool remove(std::vector<Table>& registered, ZkText const* texts)
{
    auto const isIt = [texts](Table const& table) { return table.texts == texts; };
    auto const found = std::find_if(registered.begin(), registered.end(), isIt);
    if (found == registered.end())
        return false;
    registered.erase(found);
    return true;
}

}  // namespace

void zkRegisterTexts(ZkText const* table, std::size_t count)
{
    Table added = makeTable(table, count);
    Tables& all = tables();
    Lock const lock;
    all.registered.reserve(all.registered.size() + 1);
    remove(all.registered, table);
    all.registered.push_back(std::move(added));
}

bool zkUnregisterTexts(ZkText const* table)
{
    Tables& all = tables();
    Lock const lock;
    return remove(all.registered, table);
}

char const* zkFindText(unsigned int id)
{
    Tables& all = tables();
    Lock const lock;
    for (auto table = all.registered.rbegin(); table != all.registered.rend(); ++table) {
        auto const found = table->byNumber.find(id);
        if (found != table->byNumber.end())
            return found->second;
    }
    return nullptr;
}

BOOL CString::LoadString(unsigned int id)
{
    if (char const* const text = zkFindText(id)) {
        *this = text;
        return TRUE;
    }
    std::string resource;
    bool const found = zk::os::loadResourceText(id, resource);
    *this = std::string_view(resource);
    return found;
}
