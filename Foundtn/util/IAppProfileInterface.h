// IAppProfileInterface.h: the application's persistent settings, the profile,
// as its readers and writers see it.
//
//   if (IAppProfileInterface* const profile = IAppProfileInterface::Instance()) {
//       profile->WriteProfileInt("General", "Depth", 7);
//       profile->GetProfileIntA("General", "Depth", 3);       // 7
//       profile->GetProfileBool("General", "Verbose", 0);     // 0: absent
//   }
//   IAppProfileInterface::Color2String(0x030201);             // "1,2,3"
//
// Values are text, by section and key; the typed operations convert. A key
// with an empty value counts as absent. Nothing throws (but std::bad_alloc) or speaks to the user.
// The host makes the one object (an IAppProfileService) early; until then, and
// after its end, Instance() is null.
#pragma once

#include "platform/classlib/CRect.h"
#include "platform/classlib/CString.h"

#include "zk_export.h"

class ZK_UTIL_API IAppProfileInterface {
public:
    // The order of the virtual operations is fixed; the destructor is the last.

    virtual void WriteProfileStringA(char const* section, char const* key, char const* value) = 0;
    /// True if the profile holds a value that converts; otherwise `value` is the default, and the result false.
    /// A text has its white space trimmed on both sides; with a null default it becomes empty.
    virtual bool GetProfileValue(char const* section, char const* key, double& value,
                                 double defaultValue) = 0;
    virtual bool GetProfileValue(char const* section, char const* key, int& value, int defaultValue) = 0;
    virtual bool GetProfileValue(char const* section, char const* key, CString& value,
                                 char const* defaultValue) = 0;
    virtual CString GetProfileStringA(char const* section, char const* key, char const* defaultValue) = 0;
    /// The file that the profile is.
    virtual CString const& GetProfileName() = 0;
    virtual void WriteProfileInt(char const* section, char const* key, int value) = 0;
    virtual int GetProfileIntA(char const* section, char const* key, int defaultValue) = 0;
    /// Writes six decimals.
    virtual void WriteProfileDouble(char const* section, char const* key, double value) = 0;
    virtual double GetProfileDouble(char const* section, char const* key, double defaultValue) = 0;
    /// Bytes, kept with a checksum; 1 on success. Reading wants the size that was written.
    virtual int WriteProfileBinary(char const* section, char const* key, void* data, unsigned int size) = 0;
    virtual int GetProfileBinary(char const* section, char const* key, void* data, unsigned int size) = 0;
    virtual void WriteProfileBool(char const* section, char const* key, int value) = 0;
    virtual int GetProfileBool(char const* section, char const* key, int defaultValue) = 0;
    /// A colour has red in its low byte, then green, then blue.
    virtual void WriteProfileColor(char const* section, char const* key, unsigned long value) = 0;
    virtual unsigned long GetProfileColor(char const* section, char const* key,
                                          unsigned long defaultValue) = 0;
    virtual void WriteProfileRect(char const* section, char const* key, CRect const& value) = 0;
    /// False, with `value` unchanged, if the profile holds no rectangle there.
    virtual bool GetProfileRect(char const* section, char const* key, CRect& value) = 0;

    /// Takes the object back from Instance(), if it is the one.
    virtual ~IAppProfileInterface();

    IAppProfileInterface(IAppProfileInterface const&) = delete;
    IAppProfileInterface& operator=(IAppProfileInterface const&) = delete;

    /// The process's profile, not owned; null if there is none.
    static IAppProfileInterface* Instance();

    // -- Conversions -------------------------------------------------------------------
    //
    // The forms with a status set `ok` to 1 or 0. Text behind what is read is not looked at.

    /// A decimal number, beyond the ends of an int the nearest one. On failure `value` is unchanged.
    static void String2Int(CString const& text, int& ok, int& value);
    static int String2Int(CString const& text, int defaultValue);
    static void Int2String(int value, CString& text);
    static CString Int2String(int value);

    /// A number of single precision, with a point whatever the locale; beyond its ends infinity or 0. On failure `value` is unchanged.
    static void String2Double(CString const& text, int& ok, double& value);
    static double String2Double(CString const& text, double defaultValue);
    /// With six decimals.
    static void Double2String(double value, CString& text);
    static CString Double2String(double value);

    /// "TRUE" gives 1 and "FALSE" gives 0, in any case. On failure `value` is unchanged.
    static void String2Bool(CString const& text, int& ok, int& value);
    static int String2Bool(CString const& text, int defaultValue);
    static void Bool2String(int value, CString& text);
    static CString Bool2String(int value);

    /// "1,2,3" is red 1, green 2, blue 3, each cut to its low byte. On failure too `value` is set, from
    /// the numbers that were read and 0 for the others.
    static void String2Color(CString const& text, int& ok, unsigned long& value);
    static unsigned long String2Color(CString const& text, unsigned long defaultValue);
    static void Color2String(unsigned long value, CString& text);
    static CString Color2String(unsigned long value);

    /// "(1,2,3,4)" is left, top, right, bottom. False, with `value` unchanged, if four numbers aren't read.
    static bool String2Rect(CString const& text, CRect& value);
    static void Rect2String(CRect value, CString& text);
    static CString Rect2String(CRect value);

protected:
    /// Becomes the process's profile if there is none, unless `isLocal`.
    explicit IAppProfileInterface(bool isLocal);
};
