// animationPorts.h: the settings of the channel on which a running model is animated.
#pragma once

#include "platform/classlib/CString.h"

#include "zk_export.h"

/// "General", "AnimationPortNumber", read at the first call: 6423 if absent then, or no number. Later changes
/// are not seen.
ZK_UTIL_API int zkGetAnimationPortNumber(CString* error = nullptr);

/// "General", "AnimationSndBufSize"; -1 if absent or 0.
ZK_UTIL_API int zkGetAnimationSndBufSize(CString* error = nullptr);

/// "General", "AnimationPortRange"; 0 if absent.
ZK_UTIL_API int zkGetAnimationPortRange(CString* error = nullptr);

/// The port in use, as the host set it; -1 before.
ZK_UTIL_API void zkSetDynamicAnimPortNumber(int port);
ZK_UTIL_API int zkGetDynamicAnimPortNumber();
