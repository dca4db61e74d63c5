// MemoryProfile.h: a profile in memory, for tests of what reads settings.
//
//   MemoryProfile profile;                        // is IAppProfileInterface::Instance() now
//   profile.set("General", "OMROOT", "/opt");
#pragma once

#include "Foundtn/util/IAppProfileInterface.h"

#include <map>
#include <string>
#include <utility>

namespace zk::test {

class MemoryProfile : public IAppProfileInterface {
public:
    MemoryProfile() : IAppProfileInterface(false) { }

    void set(char const* section, char const* key, char const* value) { values_[{section, key}] = value; }

    /// The text as it was written; empty if there is none.
    std::string text(char const* section, char const* key) const
    {
        auto const found = values_.find({section, key});
        return found == values_.end() ? std::string() : found->second;
    }

    /// How often a value was asked for.
    int reads = 0;

    void WriteProfileStringA(char const* section, char const* key, char const* value) override
    {
        set(section, key, value);
    }
    bool GetProfileValue(char const* section, char const* key, double& value, double defaultValue) override
    {
        CString read;
        int ok = 0;
        value = defaultValue;
        if (GetProfileValue(section, key, read, nullptr))
            String2Double(read, ok, value);
        return ok != 0;
    }
    bool GetProfileValue(char const* section, char const* key, int& value, int defaultValue) override
    {
        CString read;
        int ok = 0;
        value = defaultValue;
        if (GetProfileValue(section, key, read, nullptr))
            String2Int(read, ok, value);
        return ok != 0;
    }
    bool GetProfileValue(char const* section, char const* key, CString& value,
                         char const* defaultValue) override
    {
        ++reads;
        std::string const found = text(section, key);
        value = found.empty() ? CString(defaultValue) : CString(found);
        return !found.empty();
    }
    CString GetProfileStringA(char const* section, char const* key, char const* defaultValue) override
    {
        CString value;
        GetProfileValue(section, key, value, defaultValue);
        return value;
    }
    CString const& GetProfileName() override { return name_; }
    void WriteProfileInt(char const* section, char const* key, int value) override
    {
        set(section, key, Int2String(value));
    }
    int GetProfileIntA(char const* section, char const* key, int defaultValue) override
    {
        int value = 0;
        GetProfileValue(section, key, value, defaultValue);
        return value;
    }
    void WriteProfileDouble(char const* section, char const* key, double value) override
    {
        set(section, key, Double2String(value));
    }
    double GetProfileDouble(char const* section, char const* key, double defaultValue) override
    {
        double value = 0;
        GetProfileValue(section, key, value, defaultValue);
        return value;
    }
    int WriteProfileBinary(char const*, char const*, void*, unsigned int) override { return 0; }
    int GetProfileBinary(char const*, char const*, void*, unsigned int) override { return 0; }
    void WriteProfileBool(char const* section, char const* key, int value) override
    {
        set(section, key, Bool2String(value));
    }
    int GetProfileBool(char const* section, char const* key, int defaultValue) override
    {
        return String2Bool(GetProfileStringA(section, key, nullptr), defaultValue);
    }
    void WriteProfileColor(char const* section, char const* key, unsigned long value) override
    {
        set(section, key, Color2String(value));
    }
    unsigned long GetProfileColor(char const* section, char const* key, unsigned long defaultValue) override
    {
        return String2Color(GetProfileStringA(section, key, nullptr), defaultValue);
    }
    void WriteProfileRect(char const* section, char const* key, CRect const& value) override
    {
        set(section, key, Rect2String(value));
    }
    bool GetProfileRect(char const* section, char const* key, CRect& value) override
    {
        return String2Rect(GetProfileStringA(section, key, nullptr), value);
    }

private:
    CString const name_ = "memory";
    std::map<std::pair<std::string, std::string>, std::string> values_;
};

}  // namespace zk::test
