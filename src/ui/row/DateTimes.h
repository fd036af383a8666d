/// Instants as QML knows them.
#pragma once

#include "base/Instant.h"

#include <QDateTime>
#include <optional>

namespace quillo {

/// To the millisecond; beyond the years 1 to 9999 their first or last.
QDateTime toDateTime(Instant instant);

/// Absent for an invalid date and time, and beyond the years 1 to 9999.
std::optional<Instant> toInstant(const QDateTime& dateTime);

} // namespace quillo
