// paths.h: takes paths apart, puts them together and cleans them, purely as text.
//
//   CString dir, file;
//   omParseToDirAndFileName("src/model.cpp", dir, file);   // "src", "model.cpp"
//   CString path("src/./gen/../model.cpp");
//   omCleanPath(path, '/', true, true, false);             // "src/model.cpp"
//
// Nothing here touches the file system, makes a relative path absolute, fails or
// throws anything but std::bad_alloc. All work goes by bytes and takes time in
// proportion to the text. The native separator is '\' on Windows and '/' elsewhere.
//
// Look-alikes differ on purpose: one result keeps a separator at its end and
// another does not, one extension has its dot and another has not.
#pragma once

#include "zk_export.h"

#include "platform/classlib/CString.h"

/// The native separator.
ZK_UTIL_API char omPathSeparator();

/// Turns each '\' of `path` into '/' where the native separator is '/'; leaves it alone elsewhere.
ZK_UTIL_API void replaceBackSlashIfUnix(CString& path);

/// Turns each '\' and each '/' into the native separator. Doubled ones stay doubled.
ZK_UTIL_API void normalizeBackSlashes(CString& path);

/// Joins `dir` and `file` with the native separator.
///
/// An empty part yields the other one. A `dir` that already ends in a separator is not
/// looked at: the result then holds two in a row.
ZK_UTIL_API CString omConcatDirAndFile(CString const& dir, CString const& file);

/// Whether `path` begins with the native separator, or has letters, digits and '_' only
/// (or nothing) before its first ':', like a drive or the scheme of a URL.
ZK_UTIL_API bool omIsAbsolutePath(CString const& path);

/// Splits at the last separator of either kind, which goes to neither part.
///
/// Without one, `dir` is empty and `file` the whole path: "\x" gives "" and "x",
/// "C:\x" gives "C:" and "x", "a\" gives "a" and "".
ZK_UTIL_API void omParseToDirAndFileName(CString path, CString& dir, CString& file);

/// Splits like omParseToDirAndFileName and finds the extension of the file.
///
/// `file` keeps its extension; `extension` is what follows the last dot of `file`, without the
/// dot. From the first mark of a stored version on ("@@\main\" or, without one, "@@/main/") all
/// belongs to the file: "d\f.cpp@@\main\3" gives "d", "f.cpp@@\main\3" and "cpp". What stands
/// before the mark is taken apart in the same way. An empty path leaves all three results as they were.
ZK_UTIL_API void ParseToDirFileNameAndExtension(CString const& path, CString& dir, CString& file,
                                                CString& extension);

/// The text from the last dot of the whole path on, with the dot: ".b\c" for "a.b\c"; empty without a dot.
ZK_UTIL_API CString omGetFileExtension(CString const& path);

/// Removes ".." components and what stands before them: "a\b\..\c" becomes "a\c", "a\b\.." becomes "a".
///
/// With '\' or '/' as `separator` both kinds become that one first; with any other, the native
/// separator counts and none is changed. What climbs above the top stays in front, and so do leading
/// native separators. A path that begins with "http://" or "https://" is left alone. A component that
/// merely begins with two dots is not protected, and neither is a drive.
ZK_UTIL_API void omCutMidDDot(CString& path, char separator);

/// Cleans a path: separators, then case, then dots.
///
/// With '/' as `separator` each '\' becomes '/', else each '/' becomes `separator`.
/// `collapseSeparators` makes one of doubled ones, a leading pair included. Unless `keepCase`,
/// letters become lower case. With `resolveDots` "." components go, ".." components go with what
/// stands before them ("a/b/.." becomes "a/", with its separator), and doubled separators
/// become single but for a pair at the start.
ZK_UTIL_API void omCleanPath(CString& path, char separator, bool keepCase, bool resolveDots,
                             bool collapseSeparators);

/// Appends to `result` the way from the directory `base` to `target`; pass it empty.
///
/// Both are compared without case and otherwise as they are written; the way keeps the case of
/// `target`. Separators at the end of what `result` then holds go. Where the two share no directory,
/// `target` itself is assigned, and what `result` held is lost.
ZK_UTIL_API void omGetRelativePath(CString const& target, CString const& base, CString& result,
                                   char separator);
