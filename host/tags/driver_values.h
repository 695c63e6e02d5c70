// The driver's last known values. Any thread.
#ifndef DRAVO_HOST_TAGS_DRIVER_VALUES_H
#define DRAVO_HOST_TAGS_DRIVER_VALUES_H

#include <QtCore/QByteArray>

#include "host/tags/variable.h"

/// Of a usable variable, as valueAt reads them; elements never read are zeros.
QByteArray lastKnownValues(const Variable &variable);

#endif  // DRAVO_HOST_TAGS_DRIVER_VALUES_H
