// IAppProfileService.h: the profile on the system's private-profile files, and
// the search that decides which file it is.
//
//   IAppProfileService profile(false);                    // becomes IAppProfileInterface::Instance()
//   profile.InitProfileName("Zentrika.ini", nullptr, nullptr);
//   profile.GetProfileName();                             // "/home/me/Zentrika.ini", if the folder has one
//   profile.GetProfileStringA("General", "Depth", "3");   // "3": absent
//
// A missing profile is a normal state: reads give their defaults and the first
// write makes the file. Nothing throws but std::bad_alloc, and nothing is reported.
// The object belongs to the main thread until InitProfileName() has returned.
#pragma once

#include "Foundtn/util/IAppProfileInterface.h"

#include "platform/classlib/CWinApp.h"

class ZK_UTIL_API IAppProfileService : public IAppProfileInterface {
public:
    /// A local object neither becomes Instance() nor tells the application object its file.
    explicit IAppProfileService(bool localInstance);
    ~IAppProfileService() override;

    void WriteProfileStringA(char const* section, char const* key, char const* value) override;
    bool GetProfileValue(char const* section, char const* key, double& value, double defaultValue) override;
    bool GetProfileValue(char const* section, char const* key, int& value, int defaultValue) override;
    bool GetProfileValue(char const* section, char const* key, CString& value,
                         char const* defaultValue) override;
    CString GetProfileStringA(char const* section, char const* key, char const* defaultValue) override;
    CString const& GetProfileName() override;
    void WriteProfileInt(char const* section, char const* key, int value) override;
    int GetProfileIntA(char const* section, char const* key, int defaultValue) override;
    void WriteProfileDouble(char const* section, char const* key, double value) override;
    double GetProfileDouble(char const* section, char const* key, double defaultValue) override;
    int WriteProfileBinary(char const* section, char const* key, void* data, unsigned int size) override;
    int GetProfileBinary(char const* section, char const* key, void* data, unsigned int size) override;
    void WriteProfileBool(char const* section, char const* key, int value) override;
    int GetProfileBool(char const* section, char const* key, int defaultValue) override;
    void WriteProfileColor(char const* section, char const* key, unsigned long value) override;
    unsigned long GetProfileColor(char const* section, char const* key, unsigned long defaultValue) override;
    void WriteProfileRect(char const* section, char const* key, CRect const& value) override;
    bool GetProfileRect(char const* section, char const* key, CRect& value) override;

    /// Selects the profile file: the first that exists in a fixed order of places.
    ///
    /// That is: the file behind "-iniFile=" on the application's command line (looked at only with a
    /// `profileName`) and in the global flag "CommandLine"; the current directory; unless in
    /// model-server mode, the folders of the user (USERPROFILE) and of all users (ALLUSERSPROFILE),
    /// "Zentrika.ini" beside the executable, the folder in the registry; the executable's folder. Otherwise the
    /// bare name, which lies in the system's own place; in model-server mode none, but OMROOT and
    /// APPLICATION_ROOT are set in the environment. Of `profileName` the part behind the last native
    /// separator counts; null is "Zentrika.ini". The folder of `moduleName`, by default of the executable, is
    /// appended to the variable "Path" at each call. Without `application` AfxGetApp() is
    /// taken; its m_pszProfileName, which must be null or made with malloc(), is freed and replaced by a copy of
    /// the name. Files are only looked for, never made. If the current directory holds a file
    /// "IniFileNameLog.txt", it gets a line with the time and the name.
    void InitProfileName(char const* profileName, char const* moduleName, CWinApp* application);

    /// The folder of a module's file; of the executable for null and for a module that isn't loaded.
    /// True if it is not empty.
    static bool GetExecutableDir(char const* moduleName, CString& dir);

    /// A variable of the process environment, white space trimmed on both sides. False for an absent and an
    /// empty one, with `value` the default, or empty if that is null.
    static bool GetEnvironmentVariableA(CString const& name, CString& value, char const* defaultValue);

    /// The current directory; empty, and false, if it cannot be told.
    static bool GetCurrentDir(CString& dir);
    static CString GetCurrentDir();

    /// The file that all text behind the first "-iniFile=" names, white space and then a quote on either
    /// side taken off. False, with `path` as it was, without the flag, or if that file does not exist.
    static bool GetProfileNameFromCmdLineFlag(CString commandLine, CString& path);

private:
    virtual void SetProfileName(CString const& name, CWinApp* app);

    CString profileName_;
    bool localInstance_;
};

/// The folder that InitProfileName() found the executable in; empty before.
ZK_UTIL_API CString getExcecutableFolder();
/// The same; valid until the next InitProfileName().
ZK_UTIL_API char const* getExecutableFolder();
