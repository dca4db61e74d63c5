// pumlFuzz.cpp: any bytes as a diagram, read and turned into code that goes nowhere.
#include "examples/modelgen/cppWriter.h"
#include "examples/modelgen/pumlReader.h"

#include <cstdint>
#include <cstdlib>
#include <sstream>

namespace {

// No file may be asked for outside the folder.
class CheckingSink : public modelgen::FileSink {
public:
    void put(CString const& path, CString const&) override
    {
        for (char const c : path.view())
            if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
                  c == '.' || c == '/'))
                std::abort();
        if (path.Find("..") >= 0 || path.Find("//") >= 0 || path[0] == '/' || path[0] == '.')
            std::abort();
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    CString const text(reinterpret_cast<char const*>(data), int(size));
    std::ostringstream messages;
    modelgen::Model model;
    modelgen::Report report(messages);
    modelgen::PumlReader reader(model, report);
    reader.read("fuzz.puml", text);
    reader.finish();
    if (report.hasErrors())
        return 0;
    modelgen::CppWriter writer;
    writer.prepare(model, report);
    if (report.hasErrors())
        return 0;
    CheckingSink sink;
    writer.write(sink);
    return 0;
}
