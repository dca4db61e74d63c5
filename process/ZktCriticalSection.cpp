#include "process/ZktCriticalSection.h"

ZktCriticalSection::~ZktCriticalSection() = default;
