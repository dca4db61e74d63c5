#include "logging/CCgObjConfig.h"

#include "logging/CCgLogManager.h"
#include "logging/CCgMisc.h"

#include <memory>
#include <utility>

namespace zk::logging {

namespace {

constexpr std::string_view rootName("/");

// The longest prefix of a name, cut at a ".", that names a node; "/" if there is none.
std::string computedParentName(std::string_view name)
{
    for (;;) {
        std::size_t const dot = name.rfind('.');
        if (dot == std::string_view::npos)
            return std::string(rootName);
        name = name.substr(0, dot);
        if (manager()->configs.find(name))
            return std::string(name);
    }
}

// Puts a new node below the one it belongs to. Those children of that one that belong below the new
// node now are moved there.
void placeInTree(CCgObjConfig& node)
{
    std::string const parentName = computedParentName(node.name);
    CCgObjConfig* const* const parent = manager()->configs.find(parentName);
    if (!parent)
        return;
    CCgStringGroup staying;
    for (std::string const& childName : (*parent)->children) {
        CCgObjConfig* const* const child = manager()->configs.find(childName);
        if (child && computedParentName(childName) != parentName) {
            node.children.add(childName);
            (*child)->parentName = node.name;
        } else {
            staying.add(childName);
        }
    }
    (*parent)->children = std::move(staying);
    (*parent)->children.add(node.name);
    node.parentName = parentName;
}

CCgObjConfig* addNode(std::string_view name)
{
    auto node = std::make_unique<CCgObjConfig>();
    node->references = 1;  // the toolkit's
    node->name = name;
    manager()->configs.set(name, node.get());
    CCgObjConfig* const added = node.release();
    placeInTree(*added);
    manager()->configNames.add(name);
    return added;
}

}  // namespace

CCgObjConfig* configOf(std::string_view name)
{
    if (!manager() || name.empty() || name == rootName)
        return nullptr;
    if (CCgObjConfig* const* const found = manager()->configs.find(name))
        return *found;
    return addNode(name);
}

bool setConfigProperty(std::string_view objectName, std::string_view key, std::string value)
{
    CCgObjConfig* const node = key.empty() ? nullptr : configOf(objectName);
    if (!node)
        return false;
    node->defined = true;
    node->properties.set(key, std::move(value));
    return true;
}

std::string const* lookUpConfig(CCgObjConfig const& node, std::string_view key)
{
    // A parent's name is shorter than its child's: the walk ends.
    for (CCgObjConfig const* current = &node; current; current = configOf(parentNameOf(*current)))
        if (std::string const* const value = current->properties.find(key))
            return value;
    return nullptr;
}

std::string parentNameOf(CCgObjConfig const& node)
{
    if (node.parentName)
        return *node.parentName;
    return manager() ? computedParentName(node.name) : std::string(rootName);
}

void releaseConfig(CCgObjConfig* node)
{
    if (node && --node->references == 0)
        delete node;
}

}  // namespace zk::logging

using zk::logging::Locked;

CCgObjConfig* ccg_getConfig(char const* name)
{
    Locked const locked;
    CCgObjConfig* const node = locked && name ? zk::logging::configOf(name) : nullptr;
    if (node)
        ++node->references;
    return node;
}

void ccg_releaseConfig(CCgObjConfig* node)
{
    if (Locked const locked; locked)
        zk::logging::releaseConfig(node);
}

bool ccg_setConfigProperty(char const* objectName, char const* key, char const* value)
{
    Locked const locked;
    return locked && objectName && key && value && zk::logging::setConfigProperty(objectName, key, value);
}

char* ccg_lookupConfig(CCgObjConfig* node, char const* key, bool* found)
{
    Locked const locked;
    std::string const* const value = locked && node && key ? zk::logging::lookUpConfig(*node, key) : nullptr;
    if (found)
        *found = value != nullptr;
    return value ? zk::logging::newText(*value) : nullptr;
}

CCgStringGroup ccg_getConfigNames()
{
    Locked const locked;
    return locked && zk::logging::manager() ? zk::logging::manager()->configNames : CCgStringGroup();
}
