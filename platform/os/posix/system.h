// system.h: all operations that are supplied on this system, by capability.
#pragma once

#include "platform/os/posix/types.h"

#include "platform/os/posix/lastError.h"

#include "platform/os/posix/handles.h"

#include "platform/os/posix/messageBox.h"

#include "platform/os/posix/characters.h"
#include "platform/os/posix/codePages.h"
#include "platform/os/posix/textOperations.h"

#include "platform/os/posix/calendar.h"
#include "platform/os/posix/environment.h"
#include "platform/os/posix/module.h"

#include "platform/os/posix/debugOutput.h"
#include "platform/os/posix/locale.h"
#include "platform/os/posix/messageTexts.h"

#include "platform/os/posix/copyMove.h"
#include "platform/os/posix/directories.h"
#include "platform/os/posix/fileAttributes.h"
#include "platform/os/posix/files.h"
#include "platform/os/posix/findFiles.h"
#include "platform/os/posix/pathNames.h"
#include "platform/os/posix/pipes.h"
#include "platform/os/posix/process.h"
#include "platform/os/posix/profile.h"
#include "platform/os/posix/registry.h"
#include "platform/os/posix/standardHandles.h"
#include "platform/os/posix/time.h"

#include "platform/os/posix/controls.h"
#include "platform/os/posix/dialogs.h"
#include "platform/os/posix/messageQueue.h"
#include "platform/os/posix/scrollBars.h"
#include "platform/os/posix/windowPlaces.h"
#include "platform/os/posix/windows.h"

#include "platform/os/posix/globalMemory.h"

#include "platform/os/posix/clipboard.h"
#include "platform/os/posix/criticalSection.h"
#include "platform/os/posix/event.h"
#include "platform/os/posix/interlocked.h"
#include "platform/os/posix/mutex.h"
#include "platform/os/posix/securityDescriptor.h"
#include "platform/os/posix/semaphore.h"
#include "platform/os/posix/threadLocal.h"
#include "platform/os/posix/threads.h"
#include "platform/os/posix/waits.h"
