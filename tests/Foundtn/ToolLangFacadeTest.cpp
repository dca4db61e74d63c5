#include "Foundtn/util/ToolLangFacade.h"

#include <gtest/gtest.h>

namespace {

class HostLanguages : public ToolLangFacade {
public:
    HostLanguages() { _theFacade = this; }
    ~HostLanguages() override { _theFacade = nullptr; }
    void* languageService() override { return this; }
};

TEST(ToolLangFacade, isTheObjectThatTheHostPutsInPlace)
{
    EXPECT_EQ(ToolLangFacade::theFacade(), nullptr);

    HostLanguages languages;

    EXPECT_EQ(ToolLangFacade::theFacade(), &languages);
    EXPECT_EQ(ToolLangFacade::theFacade()->languageService(), &languages);
}

}  // namespace
