#include "Foundtn/util/ToolLangFacade.h"

ToolLangFacade* ToolLangFacade::_theFacade = nullptr;

ToolLangFacade::~ToolLangFacade() = default;

ToolLangFacade* ToolLangFacade::theFacade()
{
    return _theFacade;
}
