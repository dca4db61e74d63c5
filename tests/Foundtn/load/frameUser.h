// frameUser.h: what the module frame_user exports.
#pragma once

/// What the module found; written while it is unloaded too.
struct FrameUserReport {
    bool libraryWorkedAtLoad = false;
    bool libraryWorkedAtUnload = false;
};

#define FRAME_USER_API __attribute__((visibility("default")))

using ReportTo = void (*)(FrameUserReport*);
using UseLibrary = int (*)();
