// CCgObjConfig.h: what the properties file says about an object, and the tree that names form.
//
//   CCgObjConfig* const node = ccg_getConfig("Load.file");
//   bool found;
//   char* const level = ccg_lookupConfig(node, "level", &found);   // of "Load.file", else of "Load"
//   std::free(level);
//   ccg_releaseConfig(node);
//
// The parent of a node is the one with the longest name that, cut from its own at a ".", exists.
#pragma once

#include "logging/CCgStringGroup.h"
#include "logging/CCgStringToStringMap.h"
#include "zk_export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct CCgObjConfig {
    std::int32_t references = 0;
    std::string name;
    std::optional<std::string> parentName;  ///< none as long as no node is above it
    CCgStringGroup children;
    CCgStringToStringMap properties;
    bool defined = false;  ///< it was named by the properties file, or by ccg_setConfigProperty
};

/// The node of a name, made if it is missing, with one reference for the caller. Null for no name,
/// an empty one, the name "/", and while the toolkit isn't started.
ZK_UTIL_API CCgObjConfig* ccg_getConfig(char const* name);
ZK_UTIL_API void ccg_releaseConfig(CCgObjConfig* node);

/// Sets a property of the node of a name. False for an empty name or key, and the name "/".
ZK_UTIL_API bool ccg_setConfigProperty(char const* objectName, char const* key, char const* value);

/// A node's own property, else its parent's, and so on, for the caller to free; null, and `found`
/// false, if none has it. `found` may be null.
ZK_UTIL_API char* ccg_lookupConfig(CCgObjConfig* node, char const* key, bool* found);

/// The names of all nodes, in the order of their making.
ZK_UTIL_API CCgStringGroup ccg_getConfigNames();

namespace zk::logging {

// The same for code that holds the lock.
CCgObjConfig* configOf(std::string_view name);  // takes no reference
bool setConfigProperty(std::string_view objectName, std::string_view key, std::string value);
std::string const* lookUpConfig(CCgObjConfig const& node, std::string_view key);

/// The name of a node's parent: the stored one, else computed; "/" if there is none.
std::string parentNameOf(CCgObjConfig const& node);
void releaseConfig(CCgObjConfig* node);

}  // namespace zk::logging
