// CCgToolkit.h: the classes that the toolkit brings along.
#pragma once

namespace zk::logging {

/// Registers the toolkit's own classes, with their descriptions in catalog "ccgmsg".
void registerToolkitClasses();

}  // namespace zk::logging
