// textFiles.h: how this system's text files end their lines.
#pragma once

namespace zk::os {

/// Whether a line of a text file ends in CR LF, which programs read and write as one line feed.
#ifdef _WIN32
inline constexpr bool textLinesEndInCrLf = true;
#else
inline constexpr bool textLinesEndInCrLf = false;
#endif

}  // namespace zk::os
