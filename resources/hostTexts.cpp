#include "resources/hostTexts.h"

#include "platform/classlib/textTables.h"

#include <iterator>

namespace {

constexpr ZkText hostTexts[] = {
#define ZK_TEXT(id, text) {id, text},
#include "resources/hostTexts.inc"
#undef ZK_TEXT
};

}  // namespace

void zkRegisterHostTexts()
{
    zkRegisterTexts(hostTexts, std::size(hostTexts));
}
