// commandLine.h: command lines taken apart and put together.
//
//   splitCommandLine(R"("C:\My Tools\zk.exe" -D "a \"b\"" c\\d)");
//   // C:\My Tools\zk.exe   -D   a "b"   c\\d
//   joinCommandLine({"zk", "a b", "c\"d"});            // zk "a b" "c\"d"
//
// The rules are those by which the Windows C runtime makes the arguments of
// main(): blanks separate, quotes hold together, a backslash has a meaning
// only before a quote.
#pragma once

#include "platform/os/exportMacro.h"

#include <string>
#include <string_view>
#include <vector>

namespace zk::os {

/// The arguments of a command line, the program first.
///
/// Outside quotes, blanks and tabs end an argument. Within an argument a quote opens or closes a
/// quoted part and vanishes; 2n backslashes before a quote are n backslashes and that quote,
/// 2n + 1 are n backslashes and a plain quote; two quotes within a quoted part are one plain
/// quote. In the program's name a backslash is always plain, and blanks before it make it empty. A quote
/// that is never closed holds up to the end. An empty command line gives one empty argument.
ZK_UTIL_API std::vector<std::string> splitCommandLine(std::string_view commandLine);

/// A command line that splitCommandLine() takes apart into `arguments` again.
///
/// Only arguments that need it are quoted. The one thing that cannot be written is a quote in the
/// program's name: it is left out.
ZK_UTIL_API std::string joinCommandLine(std::vector<std::string> const& arguments);

}  // namespace zk::os
