// Paths against the stepwise way, on any bytes and every option.
#include "files/paths.h"

#include "platform/os/os.h"
#include "tests/files/stepwisePaths.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size < 2 || size > 4096)
        return 0;
    unsigned const options = data[0];
    char const separators[] = {'/', '\\', '!', char(data[1])};
    char const separator = separators[options & 3];
    char const native = options & 4 ? '/' : '\\';
    bool const keepCase = options & 8;
    bool const resolveDots = options & 16;
    bool const collapse = options & 32;
    std::string const text(reinterpret_cast<char const*>(data) + 2, size - 2);
    zk::os::ScopedNativeSeparator const switched(native);

    CString cut(text.data(), int(text.size()));
    omCutMidDDot(cut, separator);
    if (cut.view() != zk::test::stepwiseCutMidDDot(text, separator, native))
        std::abort();

    CString cleaned(text.data(), int(text.size()));
    omCleanPath(cleaned, separator, keepCase, resolveDots, collapse);
    if (cleaned.view() != zk::test::stepwiseCleanPath(text, separator, keepCase, resolveDots, collapse))
        std::abort();

    CString way("old");
    omGetRelativePath(cut, cleaned, way, separator);
    if (way.view() !=
        zk::test::stepwiseRelativePath(std::string(cut.view()), std::string(cleaned.view()), "old",
                                       separator))
        std::abort();

    CString dir, file, extension;
    ParseToDirFileNameAndExtension(CString(std::string_view(text)), dir, file, extension);
    zk::test::PathParts const parts = zk::test::stepwiseParts(text);
    if (dir.view() != parts.dir || file.view() != parts.file || extension.view() != parts.extension)
        std::abort();
    return 0;
}
