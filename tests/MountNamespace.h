// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tav::test {

// Moves this process into a mount namespace of its own, with every mount
// private, so that what it mounts or makes read-only reaches no other
// process: as root directly, else through a user namespace in which this
// user is root. "" when done, else why not.
QString enterPrivateMountNamespace();

}  // namespace tav::test
