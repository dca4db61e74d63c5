#include "logging/CCgObject.h"

#include "logging/CCgInternalError.h"
#include "logging/CCgLogManager.h"
#include "logging/CCgMisc.h"
#include "logging/CCgProps.h"
#include "logging/CCgStrTok.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace zk::logging {

namespace {

constexpr char const* defaultFormatterName = "cclog.defaultFormatter";
constexpr char const* defaultFormatterClass = "ccg_basicformatter";
constexpr std::string_view nameSeparators(" \t\r\n\f\v");

// Objects build the ones they name. A chain longer than this is a mistake, and would end the stack.
constexpr int deepestNesting = 100;
thread_local int nesting = 0;

void configure(CCgObject* object, std::string_view key)
{
    if (object->objClass)
        object->objClass->object.configure(object, std::string(key).c_str());
}

// Sets every property that the node of a name and the nodes above it have, the nearest last.
void applyConfiguration(CCgObject* object, std::string const& nodeName)
{
    std::vector<CCgObjConfig*> nodes;
    for (CCgObjConfig* node = configOf(nodeName); node; node = configOf(parentNameOf(*node)))
        nodes.push_back(node);
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node)
        // By place and by copy: what a class does with one property may set others.
        for (std::size_t i = 0; i < (*node)->properties.size(); ++i) {
            auto const [key, value] = (*node)->properties.at(i);
            setProperty(object, key, value);
        }
}

CCgObject* refuse(CCgObject* object)
{
    releaseObject(object);
    return nullptr;
}

// An object that exists, with a reference, if it is what was asked for.
CCgObject* checked(CCgObject* object, char const* className)
{
    addReference(object);
    if (!object->objClass) {
        report(CCG_ERROR, 60, {CCgParm::ofText(object->name.c_str())});
        return refuse(object);
    }
    if (className && object->objClass->name != className) {
        report(CCG_ERROR, 61,
               {CCgParm::ofText(object->name.c_str()), CCgParm::ofText(object->objClass->name.c_str()),
                CCgParm::ofText(className)});
        return refuse(object);
    }
    return object;
}

ObjClass* classFor(char const* name, char const* className)
{
    std::string configured;
    if (!className) {
        CCgObjConfig const* const node = configOf(name);
        std::string const* const value = node ? lookUpConfig(*node, "className") : nullptr;
        if (!value) {
            report(CCG_ERROR, 63, {CCgParm::ofText(name)});
            return nullptr;
        }
        configured = *value;
        className = configured.c_str();
    }
    if (auto const* const found = manager()->classes.find(className))
        return found->get();
    report(CCG_ERROR, 62, {CCgParm::ofText(className), CCgParm::ofText(name)});
    return nullptr;
}

void letGo(CCgObject* object)
{
    object->properties.clear();
    object->listeners = CCgListenerGroup();
    if (object->objClass->object.destroyData)
        object->objClass->object.destroyData(std::exchange(object->data, nullptr));
    releaseObject(std::exchange(object->formatter, nullptr));
}

void close(CCgObject* object)
{
    if (object->objClass->kind == CCG_HANDLER)
        object->objClass->handler.close(object);
}

CCgObject* build(char const* name, ObjClass* objClass)
{
    auto made = std::make_unique<CCgObject>();
    made->objClass = objClass;
    made->name = name;
    if (objClass->kind == CCG_HANDLER)
        made->formatter = getObject(defaultFormatterName, defaultFormatterClass);
    if (objClass->object.createData)
        made->data = objClass->object.createData(made.get());

    // What the object needs may have taken its name meanwhile.
    Manager* const known = manager();
    if (auto* const found = known->objects.find(name)) {
        CCgObject* const other = *found;
        addReference(other);  // it may be the object made here that keeps it
        letGo(made.get());
        CCgObject* const result = checked(other, objClass->name.c_str());
        releaseObject(other);
        return result;
    }
    CCgObject* const object = made.get();
    known->objects.set(name, object);
    made.release();
    object->registered = true;
    object->references = 2;  // the toolkit's and the caller's: the object must not end while it is configured
    applyConfiguration(object, object->name);
    return object;
}

void destroy(CCgObject* object)
{
    object->ending = true;
    if (object->registered)
        manager()->objects.remove(object->name);
    object->registered = false;
    object->references = 0;
    if (object->objClass) {
        close(object);
        letGo(object);
    }
    delete object;
}

std::string const* ownProperty(CCgObject* object, char const* key)
{
    return object && key ? object->properties.find(key) : nullptr;
}

void setListeners(CCgObject* object, std::string const& names)
{
    if (!object->objClass || object->objClass->kind == CCG_FORMATTER)
        return;
    object->listeners = CCgListenerGroup();
    CCgStrTok tokens(names, nameSeparators);
    while (auto const token = tokens.next()) {
        CCgObject* const listener = getObject(std::string(*token).c_str(), nullptr);
        object->listeners.add(listener);
        releaseObject(listener);
    }
}

}  // namespace

CCgObject* getObject(char const* name, char const* className)
{
    Manager* const known = manager();
    if (!name || !known)
        return nullptr;
    if (auto* const found = known->objects.find(name))
        return checked(*found, className);
    ObjClass* const objClass = classFor(name, className);
    if (!objClass)
        return nullptr;
    if (nesting >= deepestNesting || known->stopping) {
        report(CCG_ERROR, 60, {CCgParm::ofText(name)});
        return nullptr;
    }
    struct Nested {
        Nested() { ++nesting; }
        ~Nested() { --nesting; }
    } const nested;
    try {
        return build(name, objClass);
    } catch (std::bad_alloc const&) {
        report(CCG_ERROR, 20);
        return nullptr;
    }
}

void addReference(CCgObject* object) noexcept
{
    if (object)
        ++object->references;
}

void releaseObject(CCgObject* object)
{
    if (!object || object->references <= 0)
        return;
    --object->references;
    // Of an object that the toolkit knows, its own reference is the last.
    if (!object->ending && object->references == (object->registered ? 1 : 0))
        destroy(object);
}

void retireObject(CCgObject* object)
{
    object->ending = true;
    close(object);
    object->logging.store(false, std::memory_order_relaxed);
    manager()->objects.remove(object->name);
    if (manager()->errorLogger == object)
        releaseObject(std::exchange(manager()->errorLogger, nullptr));
    letGo(object);
    object->objClass = nullptr;
    object->registered = false;
    object->ending = false;
    releaseObject(object);
}

void setProperty(CCgObject* object, std::string_view key, std::string value)
{
    object->properties.set(key, std::move(value));
    configure(object, key);
}

bool isOfKind(CCgObject const* object, std::int32_t kind) noexcept
{
    return object && object->objClass && object->objClass->kind == kind;
}

void configureBase(CCgObject* object, char const* key)
{
    std::string const* const value = ownProperty(object, key);
    if (!value || !object->objClass)
        return;
    std::string_view const name(key);
    auto const description = [&]() -> CCgI18Msg& {
        auto& own = object->objClass->description;
        return own ? *own : own.emplace();
    };
    if (name == "description")
        description().defaultText = *value;
    else if (name == "descriptionFile")
        description().catalogName = *value;
    else if (name == "descriptionSet")
        description().set = scanInt32(*value).value_or(0);
    else if (name == "descriptionKey")
        description().key = scanInt32(*value).value_or(0);
    else if (name == "logging" && (sameIgnoringCase(*value, "on") || sameIgnoringCase(*value, "true")))
        object->logging.store(true, std::memory_order_relaxed);
    else if (name == "logging" && (sameIgnoringCase(*value, "off") || sameIgnoringCase(*value, "false")))
        object->logging.store(false, std::memory_order_relaxed);
    else if (name == "listenerNames")
        setListeners(object, std::string(*value));
}

void configureLevel(CCgObject* object, char const* key)
{
    std::string const* const value = ownProperty(object, key);
    if (value && std::string_view(key) == "level")
        object->level.store(ccg_parseLevel(value->c_str()), std::memory_order_relaxed);
    else
        configureBase(object, key);
}

void configureHandler(CCgObject* object, char const* key)
{
    std::string const* const value = ownProperty(object, key);
    if (!value || std::string_view(key) != "formatterName") {
        configureBase(object, key);
        return;
    }
    CCgObject* const formatter = getObject(std::string(*value).c_str(), nullptr);
    releaseObject(std::exchange(object->formatter, formatter));
}

void configureFormatter(CCgObject* object, char const* key)
{
    std::string const* const value = ownProperty(object, key);
    std::string_view const name(key);
    if (value && name == "separator")
        object->separator = *value;
    else if (value && name == "dateTimeFormat")
        object->dateTimeFormat = *value;
    else if (value && name == "locale")
        object->locale = *value;
    else
        configureBase(object, key);
}

}  // namespace zk::logging

namespace {

using zk::logging::Locked;

template <class Value>
void setTyped(CCgObject* object, char const* key, Value value)
{
    if (!object || !key)
        return;
    if (Locked const locked; locked)
        zk::logging::setProperty(object, key, zk::logging::propertyText(value));
}

template <class Get>
auto getTyped(CCgObject* object, char const* key, bool* found, Get get)
{
    bool there = false;
    decltype(get(object->properties, key, there)) value = {};
    if (object && key)
        if (Locked const locked; locked)
            value = get(object->properties, key, there);
    if (found)
        *found = there;
    return value;
}

}  // namespace

CCgObject* ccg_getObject(char const* name, char const* className)
{
    Locked const locked;
    return locked ? zk::logging::getObject(name, className) : nullptr;
}

void ccg_addRefObject(CCgObject* object)
{
    if (Locked const locked; locked)
        zk::logging::addReference(object);
}

void ccg_releaseObject(CCgObject* object)
{
    if (Locked const locked; locked)
        zk::logging::releaseObject(object);
}

void ccg_setProperty(CCgObject* object, char const* key, char const* value)
{
    if (!object || !key || !value)
        return;
    if (Locked const locked; locked)
        zk::logging::setProperty(object, key, value);
}

void ccg_setProperty(CCgObject* object, char const* key, bool value)
{
    setTyped(object, key, value);
}

void ccg_setProperty(CCgObject* object, char const* key, std::int32_t value)
{
    setTyped(object, key, value);
}

void ccg_setProperty(CCgObject* object, char const* key, std::int64_t value)
{
    setTyped(object, key, value);
}

void ccg_setProperty(CCgObject* object, char const* key, float value)
{
    setTyped(object, key, value);
}

void ccg_setProperty(CCgObject* object, char const* key, double value)
{
    setTyped(object, key, value);
}

void ccg_setProperty(CCgObject* object, char const* key, char value)
{
    setTyped(object, key, value);
}

char* ccg_getProperty(CCgObject* object, char const* key, bool* found)
{
    Locked const locked;
    std::string const* const value = locked ? zk::logging::ownProperty(object, key) : nullptr;
    if (found)
        *found = value != nullptr;
    return value ? zk::logging::newText(*value) : nullptr;
}

bool ccg_getBooleanProperty(CCgObject* object, char const* key, bool* found)
{
    return getTyped(object, key, found, CCgPropsGetBoolean);
}

std::int32_t ccg_getInt32Property(CCgObject* object, char const* key, bool* found)
{
    return getTyped(object, key, found, CCgPropsGetInt32);
}

std::int64_t ccg_getInt64Property(CCgObject* object, char const* key, bool* found)
{
    return getTyped(object, key, found, CCgPropsGetInt64);
}

float ccg_getFloatProperty(CCgObject* object, char const* key, bool* found)
{
    return getTyped(object, key, found, CCgPropsGetFloat);
}

double ccg_getDoubleProperty(CCgObject* object, char const* key, bool* found)
{
    return getTyped(object, key, found, CCgPropsGetDouble);
}

char ccg_getCharProperty(CCgObject* object, char const* key, bool* found)
{
    return getTyped(object, key, found, CCgPropsGetChar);
}

bool ccg_addListener(CCgObject* object, CCgObject* listener)
{
    Locked const locked;
    return locked && object && object->objClass && object->objClass->kind != CCG_FORMATTER &&
        object->listeners.add(listener);
}

bool ccg_removeListener(CCgObject* object, CCgObject* listener)
{
    Locked const locked;
    return locked && object && object->listeners.remove(listener);
}

CCgListenerGroup ccg_getListeners(CCgObject* object)
{
    Locked const locked;
    return locked && object ? object->listeners : CCgListenerGroup();
}
