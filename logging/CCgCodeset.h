// CCgCodeset.h: texts in the code sets of consoles and files.
//
//   if (CCgCodeset* const latin = ccg_openCodeset("ISO-8859-1")) {
//       char bytes[80];
//       std::size_t const length = ccg_utf8ToCodeset(latin, text, -1, bytes, sizeof bytes);
//       ...
//       ccg_closeCodeset(latin);
//   }
//
// All texts of the toolkit are UTF-8; these calls are for its edges. A character that the target lacks, and
// bytes that are no character, become "?", and the code set's count of lost characters goes up.
//
// No call takes a lock: use each code set in one thread at a time, the current two under the toolkit's lock.
#pragma once

#include "zk_export.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace zk::os {
class CodeSet;
}

/// What kind of encoding a code set is.
enum CCgCodesetKind : std::uint16_t {
    CCG_CODESET_SINGLE_BYTE = 1,
    CCG_CODESET_DOUBLE_BYTE = 2,
    CCG_CODESET_MULTIBYTE = 3,
    CCG_CODESET_STATEFUL = 4,  ///< with shift in and shift out
    CCG_CODESET_UTF8 = 6,
    CCG_CODESET_EBCDIC = 8,  ///< a single byte, letters elsewhere than in ASCII
    CCG_CODESET_BYTES = 9,   ///< each byte is the character of its number, up to 255
    CCG_CODESET_GB18030 = 10,
};

struct CCgCodeset {
    zk::os::CodeSet* converter = nullptr;  ///< none for UTF-8 and bytes
    std::uint16_t kind = CCG_CODESET_BYTES;
    char name[33] = "";                ///< as it was found, cut after 32 bytes
    std::uint16_t lostCharacters = 0;  ///< how many became "?"; stays at the most there is
};

/// Opens a code set by name. Null if there is none; the caller closes it.
///
/// A name is put into upper case and loses all but letters and digits; three letters before a number, a
/// maker's, go too (not ISO, UTF and UCS). "DOS" is the number of the user's code page for consoles, "WIN" and
/// "OS" that for texts. "UTF8" and "INTERNAL37" (plain bytes) are always there. For others a file of that name
/// is looked for below the folder of the environment's QISDIR ("codeset", then itself), in
/// "../generic/codeset" beside BINDIR, and in the current directory: one that is shorter than 1760 bytes or has no
/// "ucv" at its ninth byte holds another name, an alias, which is looked for in the same folder, and so on five
/// times. The converter itself is the system's. A name with a "/" or backslash is such a file's path.
ZK_UTIL_API CCgCodeset* ccg_openCodeset(char const* name);

/// Closes a code set; null, and the toolkit's own, are left alone.
ZK_UTIL_API void ccg_closeCodeset(CCgCodeset* codeset);

/// The name under which a code set is looked for.
ZK_UTIL_API std::string ccg_normalizeCodesetName(char const* name);

/// The two that are current while the toolkit is started: that of texts without a code set of their own
/// (by the environment's QIS_CODESET, else "OS"), and that of the operating system. Plain bytes before.
ZK_UTIL_API CCgCodeset* ccg_defaultCodeset() noexcept;
ZK_UTIL_API CCgCodeset* ccg_systemCodeset() noexcept;

/// The folder of converter and alias files, as it stands in the environment's QISDIR. False on failure.
ZK_UTIL_API bool ccg_setQisDir(char const* folder);
ZK_UTIL_API std::optional<std::string> ccg_getQisDir();

/// Convert `length` units (-1: up to the NUL) of `source` into at most `size` units of `target`, and give how many were
/// written. A null code set is the default one.
///
/// What does not fit is cut, never within a character; a character that is cut off at the end of the source is
/// left out. No NUL is added. A code set with states ends in the initial one.
ZK_UTIL_API std::size_t ccg_utf8ToCodeset(CCgCodeset* codeset, char const* source, std::ptrdiff_t length,
                                          char* target, std::size_t size);
ZK_UTIL_API std::size_t ccg_codesetToUtf8(CCgCodeset* codeset, char const* source, std::ptrdiff_t length,
                                          char* target, std::size_t size);
ZK_UTIL_API std::size_t ccg_codesetToUtf16(CCgCodeset* codeset, char const* source, std::ptrdiff_t length,
                                           char16_t* target, std::size_t size);
ZK_UTIL_API std::size_t ccg_utf16ToCodeset(CCgCodeset* codeset, char16_t const* source, std::ptrdiff_t length,
                                           char* target, std::size_t size);

/// The same for one character; 0 if it does not fit.
ZK_UTIL_API std::size_t ccg_characterToCodeset(CCgCodeset* codeset, char32_t character, char* target,
                                               std::size_t size);
