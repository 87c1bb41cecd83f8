#pragma once

#include <QString>
#include <QVariant>

#include "server/observation_members.h"

namespace orvalis {

// The interface of the observation, as docs/dbus.md describes it.

inline const QString kObservationInterface = QStringLiteral("org.orvalis.Observation1");

/// Its element in the description of the object.
[[nodiscard]] QString IntrospectObservation();
/// The member of that name, or null.
[[nodiscard]] const ObservationMember* FindObservationMember(const QString& name);
/// One member as the bus has it.
[[nodiscard]] QVariant BusValue(const ObservationMember& member, const Observation& now);
/// All members.
[[nodiscard]] QVariantMap BusValues(const Observation& now);

}  // namespace orvalis
