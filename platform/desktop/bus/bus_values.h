// Values of the bus between our own form and the toolkit's.
#pragma once

#include <QVariant>
#include <QVariantList>

#include "platform/desktop/session_bus.h"

namespace platform::desktop {

QVariant ToVariant(const BusValue& value);
QVariantList ToVariants(const BusValues& values);
BusValue FromVariant(const QVariant& variant);
BusValues FromVariants(const QVariantList& variants);

}  // namespace platform::desktop
