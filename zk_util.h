// zk_util.h: everything that the library exports.
#pragma once

#include "zk_export.h"

#include "platform/os/os.h"

#include "platform/classlib/AfxMessageBox.h"
#include "platform/classlib/CException.h"
#include "platform/classlib/CFileException.h"
#include "platform/classlib/CObject.h"
#include "platform/classlib/CString.h"
#include "platform/classlib/CArray.h"
#include "platform/classlib/CList.h"
#include "platform/classlib/CMap.h"
#include "platform/classlib/CPoint.h"
#include "platform/classlib/CPtrArray.h"
#include "platform/classlib/CRect.h"
#include "platform/classlib/CStringArray.h"
#include "platform/classlib/CStringList.h"
#include "platform/classlib/CStringMaps.h"
#include "platform/classlib/CTime.h"
#include "platform/classlib/clock.h"
#include "platform/classlib/textTables.h"

#include "text/HyperLink.h"
#include "text/SeperatorTables.h"
#include "text/URLParams.h"
#include "text/base64.h"
#include "text/escapes.h"
#include "text/miniParser.h"
#include "text/Range.h"
#include "text/regexpEngine.h"
#include "text/Regexp.h"

#include "files/paths.h"
