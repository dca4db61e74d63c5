// CCgLogManager.h: starts and stops the toolkit, and keeps what it knows.
//
//   if (ccg_initManager("zentrika.properties")) {
//       ...
//       ccg_shutdownManager();
//   }
//
// One lock, of the whole process and recursive, orders everything: a thread that delivers a record holds
// it until the last handler has written. Only the test whether a logger lets a level through takes no lock.
#pragma once

#include "logging/CCgObjConfig.h"
#include "logging/CCgObject.h"
#include "logging/ObjClass.h"
#include "logging/util/CxListUtil.h"
#include "zk_export.h"

#include <memory>

/// Starts the toolkit: registers the classes, reads the properties file if a path is given, and makes
/// the error logger "cclog.errorLogger", which writes to standard output unless the file gives it
/// listeners.
///
/// True if it is started, or was before. A file that cannot be read, or that is malformed, gives a
/// line on standard error, and false.
ZK_UTIL_API bool ccg_initManager(char const* propertiesPath);

/// Stops the toolkit: all handlers are closed, all objects and the configuration go. Objects that are
/// still referred to are off from then on.
ZK_UTIL_API void ccg_shutdownManager();

/// Take the toolkit's lock and give it back, for several operations in a row. False if there is none.
ZK_UTIL_API bool ccg_lock() noexcept;
ZK_UTIL_API void ccg_unlock() noexcept;

using CCgStringToObjClassMap = zk::logging::NamedList<std::unique_ptr<ObjClass>>;
using CCgStringToObjMap = zk::logging::NamedList<CCgObject*>;
using CCgStringToObjCfgMap = zk::logging::NamedList<CCgObjConfig*>;

namespace zk::logging {

/// What the toolkit knows while it is started, or starts or stops.
struct Manager {
    CCgStringToObjClassMap classes;
    CCgStringGroup classNames[4];  // by kind
    CCgStringToObjMap objects;
    CCgStringToObjCfgMap configs;
    CCgStringGroup configNames;
    CCgObject* errorLogger = nullptr;
    bool started = false;
    bool stopping = false;  // no object is built any more
};

/// Null while the toolkit is stopped. For code that holds the lock.
Manager* manager() noexcept;

/// Holds the lock for the life of the object, if it can be had.
class Locked {
public:
    Locked() noexcept : held_(ccg_lock()) { }
    ~Locked()
    {
        if (held_)
            ccg_unlock();
    }
    Locked(Locked const&) = delete;
    Locked& operator=(Locked const&) = delete;
    explicit operator bool() const noexcept { return held_; }

private:
    bool held_;
};

}  // namespace zk::logging
