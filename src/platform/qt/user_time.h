#pragma once

#include <QLocale>

#include "base/clock.h"

namespace orvalis {

/// How `locale` writes dates, with all digits of the year, and times of the day, without their zone. The "C" locale
/// has "2026-11-21" and "21:04:05".
[[nodiscard]] TimeStyle TimeStyleOf(const QLocale& locale);

}  // namespace orvalis
