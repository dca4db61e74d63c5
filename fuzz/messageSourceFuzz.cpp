// Any bytes as a message source: what is read of it stays the same through a list of it, and through a catalog.
#include "tools/zkgencat/Messages.h"
#include "tools/zkgencat/Source.h"

#include "logging/util/CxUtf8.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

using namespace zkgencat;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const source(reinterpret_cast<char const*>(data), size);
    Messages messages;
    std::size_t before = 0;
    for (Mistake const& mistake : readSource(source, messages)) {
        require(mistake.line >= before && mistake.line >= 1);
        before = mistake.line;
    }
    if (before > 0)
        return 0;
    for (auto const& [id, text] : messages) {
        require(id.first > 0 && id.second > 0 && text.find('\0') == std::string::npos);
        for (std::string_view rest = text; !rest.empty();) {
            auto const step = zk::logging::takeUtf8(rest);
            require(step.state == zk::logging::Utf8Step::State::valid);
            rest.remove_prefix(step.length);
        }
    }
    Messages again;
    require(readSource(sourceOf(messages), again).empty());
    require(again == messages);
    require(catalogOf(messages).size() >= 56);
    return 0;
}
