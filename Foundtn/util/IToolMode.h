// IToolMode.h: what this process works on: the target language, the
// perspective, and the special modes it runs in.
//
//   IToolMode::setLang("Java");
//   IToolMode::isLangJava();                          // 1
//   {
//       IToolLangLocalSwitcher const inAda("Ada");    // Ada for this scope
//       IToolMode::getLang();                         // "Ada"
//   }
//   IToolMode::getLang();                             // "Java"
//
// The host sets language, perspective and modes at start-up, before anything
// reads them. All of it is plain process-wide data of the main thread.
#pragma once

#include "platform/classlib/CString.h"

#include "zk_export.h"

#include <iosfwd>

/// Static members only; nobody makes an object of it.
class ZK_UTIL_API IToolMode {
public:
    /// The target languages. LangCorba and LangCom can be set by value only.
    enum Lang {
        LangCpp = 0,
        LangC = 1,
        LangJava = 2,
        LangCorba = 3,
        LangAda = 4,
        LangCom = 5,
        LangCSharp = 6,
    };
    enum PerspectiveSet { DeveloperPerspective = 0, SystemPerspective = 1 };
    /// A set of tools, by the host's own numbers; 1 and 4 are those of the system perspective.
    enum ToolSet : int {};
    /// The server that the process works with.
    enum ZktMode { NoServer = 0, KM = 1, ZMM = 2 };

    IToolMode() = delete;

    // -- The language --------------------------------------------------------------

    /// Makes `lang` the current language.
    static void setLang(Lang lang);
    /// The same by name: "C++", "C", "Java", "Ada", "C#" or "CSharp", exactly. Another name changes nothing.
    static void setLang(CString const& name);

    /// The name of the current language, or of `lang`: "C++", "C", "Java", "Ada", "C#"; "Unknown" for all others.
    static CString getLang();
    static CString getLang(Lang lang);
    static Lang getLangEnum();
    /// The language with this name, as setLang() knows it; the current one for another name.
    static Lang getLangAsEnum(CString const& name);

    /// 1 if this is the current language; 0 as long as none has been chosen.
    static int isLangCpp();
    static int isLangC();
    static int isLangJava();
    static int isLangCorba();
    static int isLangAda();
    static int isLangCom();
    static int isLangCSharp();

    /// 1 if `name` stands for this language. An unknown name answers as the current language does.
    static int isLangCpp(CString const& name);
    static int isLangC(CString const& name);
    static int isLangJava(CString const& name);
    static int isLangAda(CString const& name);
    static int isLangCSharp(CString const& name);

    // -- Perspective, tools, server --------------------------------------------------

    static void setPerspective(PerspectiveSet perspective);
    static PerspectiveSet getPerspective();
    static int isSystemPerspective();
    static int isDeveloperPerspective();

    /// Records the tool set, which decides the perspective too. Counts as having chosen a language.
    static void setToolSet(ToolSet toolSet);
    static ToolSet getToolSet();

    static void setZktMode(ZktMode mode);
    static ZktMode getZktMode();
    static int isKM();
    static int isZMM();

    // -- Modes of the process ----------------------------------------------------------

    static void setIsReader(int isReader);
    static int isReader();

    /// There is no converter any more: the argument is not looked at, and isConverter() is always 0.
    static void setIsConverter(int isConverter);
    static int isConverter();

    static void setIsInGlen(bool isInImport);
    static bool isInGlenImport();

    static void setIsInKernelMode(bool isInKernelMode);
    static bool isInKernelMode();

    static void setMultiLanguage(bool isMultiLanguage);
    /// True in multi-language mode and in model-server mode.
    static bool isMultiLanguage();

    static void setIsInModelServerMode(bool isInModelServerMode);
    static bool isInModelServerMode();

    /// Gives the value that was set before.
    static bool setIsInComApiMode(bool isInComApiMode);
    static bool isInComApiMode();

    static void setProcessOwnerAnotherZentrika(bool isAnother);
    static bool isProcessOwnerAnotherZentrika();

    /// Always true.
    static bool IsPanelDiagramSupported();

    // -- The user's preferences, from the profile -----------------------------------------

    /// "UserPreferences", "RTFConversionOff". Read once: without a profile at the first call it is false for good.
    static bool isRTFConversionOff();
    /// "UserPreferences", "LabelMode": the profile's boolean, or the text "True" in any case from profile or
    /// environment. Read at the first call and at each with `refresh`. A true from the environment
    /// stays until the profile is read as the boolean again.
    static bool isLabelMode(bool refresh);
    /// "UserPreferences", "GradientMode", true if absent. Read at the first call and at each with `refresh`.
    static bool isGradientMode(bool refresh);
    /// "General", "EnableKmToZmmMigration": true only if it was so, in the mode of isZMM(), at the first call.
    static bool isKmMigrationEnabled();
};

/// Reads one word; `lang` changes if it is a language's name as IToolMode::setLang() knows it.
ZK_UTIL_API std::istream& operator>>(std::istream& in, IToolMode::Lang& lang);

/// Another language for the length of a scope. Restoring counts as choosing a language: the
/// queries of IToolMode are true afterwards, even if none had been chosen before.
class ZK_UTIL_API IToolLangLocalSwitcher {
public:
    /// Keeps the language, and restores it at the end of the scope.
    IToolLangLocalSwitcher();
    explicit IToolLangLocalSwitcher(IToolMode::Lang lang);
    explicit IToolLangLocalSwitcher(CString const& name);
    virtual ~IToolLangLocalSwitcher();
    IToolLangLocalSwitcher(IToolLangLocalSwitcher const&) = delete;
    IToolLangLocalSwitcher& operator=(IToolLangLocalSwitcher const&) = delete;

protected:
    /// Saves the current language.
    void InitClassData();

private:
    IToolMode::Lang savedLang_;
};
