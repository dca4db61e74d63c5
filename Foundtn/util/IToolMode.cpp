#include "Foundtn/util/IToolMode.h"

#include <istream>
#include <optional>
#include <string>
#include <string_view>

namespace {

struct ToolModeState {
    IToolMode::Lang language = IToolMode::LangCpp;
    bool isLanguageChosen = false;
    IToolMode::ToolSet toolSet{};
    IToolMode::ZktMode mode = IToolMode::NoServer;
    IToolMode::PerspectiveSet perspective = IToolMode::DeveloperPerspective;
    int reader = 0;
    bool isInImport = false;
    bool isInKernelMode = false;
    bool isMultiLanguage = false;
    bool isInModelServerMode = false;
    bool isInComApiMode = false;
    bool isOwnedByAnother = false;
};

ToolModeState state;

struct LanguageName {
    std::string_view name;
    IToolMode::Lang lang;
};

// The first name of a language is the one it is shown by.
constexpr LanguageName languageNames[] = {
    {"C++", IToolMode::LangCpp}, {"C", IToolMode::LangC},       {"Java", IToolMode::LangJava},
    {"Ada", IToolMode::LangAda}, {"C#", IToolMode::LangCSharp}, {"CSharp", IToolMode::LangCSharp},
};

std::optional<IToolMode::Lang> languageNamed(std::string_view name)
{
    for (LanguageName const& row : languageNames) {
        if (row.name == name)
            return row.lang;
    }
    return std::nullopt;
}

int isCurrent(IToolMode::Lang lang)
{
    return state.isLanguageChosen && state.language == lang;
}

}  // namespace

void IToolMode::setLang(Lang lang)
{
    state.language = lang;
    state.isLanguageChosen = true;
}

void IToolMode::setLang(CString const& name)
{
    if (auto const lang = languageNamed(name.view()))
        setLang(*lang);
}

CString IToolMode::getLang()
{
    return getLang(state.language);
}

CString IToolMode::getLang(Lang lang)
{
    for (LanguageName const& row : languageNames) {
        if (row.lang == lang)
            return CString(row.name);
    }
    return "Unknown";
}

IToolMode::Lang IToolMode::getLangEnum()
{
    return state.language;
}

IToolMode::Lang IToolMode::getLangAsEnum(CString const& name)
{
    return languageNamed(name.view()).value_or(state.language);
}

int IToolMode::isLangCpp()
{
    return isCurrent(LangCpp);
}

int IToolMode::isLangC()
{
    return isCurrent(LangC);
}

int IToolMode::isLangJava()
{
    return isCurrent(LangJava);
}

int IToolMode::isLangCorba()
{
    return isCurrent(LangCorba);
}

int IToolMode::isLangAda()
{
    return isCurrent(LangAda);
}

int IToolMode::isLangCom()
{
    return isCurrent(LangCom);
}

int IToolMode::isLangCSharp()
{
    return isCurrent(LangCSharp);
}

int IToolMode::isLangCpp(CString const& name)
{
    return getLangAsEnum(name) == LangCpp;
}

int IToolMode::isLangC(CString const& name)
{
    return getLangAsEnum(name) == LangC;
}

int IToolMode::isLangJava(CString const& name)
{
    return getLangAsEnum(name) == LangJava;
}

int IToolMode::isLangAda(CString const& name)
{
    return getLangAsEnum(name) == LangAda;
}

int IToolMode::isLangCSharp(CString const& name)
{
    return getLangAsEnum(name) == LangCSharp;
}

void IToolMode::setPerspective(PerspectiveSet perspective)
{
    state.perspective = perspective;
}

IToolMode::PerspectiveSet IToolMode::getPerspective()
{
    return state.perspective;
}

int IToolMode::isSystemPerspective()
{
    return state.perspective == SystemPerspective;
}

int IToolMode::isDeveloperPerspective()
{
    return state.perspective == DeveloperPerspective;
}

void IToolMode::setToolSet(ToolSet toolSet)
{
    state.toolSet = toolSet;
    state.isLanguageChosen = true;
    bool const isForSystems = toolSet == ToolSet{1} || toolSet == ToolSet{4};
    state.perspective = isForSystems ? SystemPerspective : DeveloperPerspective;
}

IToolMode::ToolSet IToolMode::getToolSet()
{
    return state.toolSet;
}

void IToolMode::setZktMode(ZktMode mode)
{
    state.mode = mode;
}

IToolMode::ZktMode IToolMode::getZktMode()
{
    return state.mode;
}

int IToolMode::isKM()
{
    return state.mode == KM;
}

int IToolMode::isZMM()
{
    return state.mode == ZMM;
}

void IToolMode::setIsReader(int isReader)
{
    state.reader = isReader;
}

int IToolMode::isReader()
{
    return state.reader;
}

void IToolMode::setIsConverter(int)
{
}

int IToolMode::isConverter()
{
    return 0;
}

void IToolMode::setIsInGlen(bool isInImport)
{
    state.isInImport = isInImport;
}

bool IToolMode::isInGlenImport()
{
    return state.isInImport;
}

void IToolMode::setIsInKernelMode(bool isInKernelMode)
{
    state.isInKernelMode = isInKernelMode;
}

bool IToolMode::isInKernelMode()
{
    return state.isInKernelMode;
}

void IToolMode::setMultiLanguage(bool isMultiLanguage)
{
    state.isMultiLanguage = isMultiLanguage;
}

bool IToolMode::isMultiLanguage()
{
    return state.isMultiLanguage || state.isInModelServerMode;
}

void IToolMode::setIsInModelServerMode(bool isInModelServerMode)
{
    state.isInModelServerMode = isInModelServerMode;
}

bool IToolMode::isInModelServerMode()
{
    return state.isInModelServerMode;
}

bool IToolMode::setIsInComApiMode(bool isInComApiMode)
{
    bool const previous = state.isInComApiMode;
    state.isInComApiMode = isInComApiMode;
    return previous;
}

bool IToolMode::isInComApiMode()
{
    return state.isInComApiMode;
}

void IToolMode::setProcessOwnerAnotherZentrika(bool isAnother)
{
    state.isOwnedByAnother = isAnother;
}

bool IToolMode::isProcessOwnerAnotherZentrika()
{
    return state.isOwnedByAnother;
}

bool IToolMode::IsPanelDiagramSupported()
{
    return true;
}

std::istream& operator>>(std::istream& in, IToolMode::Lang& lang)
{
    std::string word;
    if (in >> word)
        lang = languageNamed(word).value_or(lang);
    return in;
}

IToolLangLocalSwitcher::IToolLangLocalSwitcher()
{
    InitClassData();
}

IToolLangLocalSwitcher::IToolLangLocalSwitcher(IToolMode::Lang lang)
{
    InitClassData();
    IToolMode::setLang(lang);
}

IToolLangLocalSwitcher::IToolLangLocalSwitcher(CString const& name)
{
    InitClassData();
    IToolMode::setLang(name);
}

IToolLangLocalSwitcher::~IToolLangLocalSwitcher()
{
    IToolMode::setLang(savedLang_);
}

void IToolLangLocalSwitcher::InitClassData()
{
    savedLang_ = IToolMode::getLangEnum();
}
