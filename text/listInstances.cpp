// The lists that the module holds and exports.
#include "text/Range.h"
#include "text/SPList.h"
#include "text/SPString.h"

template class ZK_UTIL_API SPListBase<Range>;
template class ZK_UTIL_API SPList<Range>;
template class ZK_UTIL_API SPListBase<SPString>;
template class ZK_UTIL_API SPList<SPString>;
template class ZK_UTIL_API SubList<SPString>;
