// CCgHandler.h: what all handlers ask of their formatter.
#pragma once

#include "zk_export.h"

struct CCgEvent;
struct CCgI18Msg;
struct CCgObject;

/// The text of a record, the text for the top and for the end of a file, and a message's text, as the
/// formatter of a handler makes them, for the caller to free. Null is no text: the formatter has none,
/// is missing, or is no formatter. For entries of classes: the lock is held.
ZK_UTIL_API char* ccg_formatRecord(CCgObject* handler, CCgEvent* event);
ZK_UTIL_API char* ccg_formatHeader(CCgObject* handler);
ZK_UTIL_API char* ccg_formatFooter(CCgObject* handler);
ZK_UTIL_API char* ccg_formatMsgText(CCgObject* handler, CCgI18Msg const* message);
