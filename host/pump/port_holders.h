// Which programs have a device open, as far as the system lets this user see. Any thread.
#ifndef DRAVO_HOST_PUMP_PORT_HOLDERS_H
#define DRAVO_HOST_PUMP_PORT_HOLDERS_H

#include <QtCore/QStringList>

/// "minicom (process 4711)" for each other program that has the device open, this one left out. Those of other users
/// show to root alone.
QStringList portHolders(const QString &device);

#endif  // DRAVO_HOST_PUMP_PORT_HOLDERS_H
