// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <cstdint>

namespace tav {

class RecordStore;

// Words how individuals A and B are related (marriage or descent from a
// common ancestor), e.g. "A is the great grand father of B", then two line
// breaks and "(Blood relations only)". Raises SubscriptOutOfRange when an
// ancestry has more than 15000 distinct ancestors.
QString relationshipText(const RecordStore& records, int32_t a, int32_t b,
                         const QString& lineBreak);

}  // namespace tav
