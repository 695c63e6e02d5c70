// Why a serial port does not open, in words that say what to do. Any thread.
#ifndef DRAVO_HOST_PUMP_PORT_FAULT_H
#define DRAVO_HOST_PUMP_PORT_FAULT_H

#include <QtCore/QString>

/// Opens the device once more to learn the system's reason.
/// @param path       where the device is.
/// @param otherwise  the reason when the system has none.
QString portFault(const QString &path, const QString &otherwise);

/// Who may use the device and how to become one of them, for a user who may not.
QString portPermission(const QString &path);

#endif  // DRAVO_HOST_PUMP_PORT_FAULT_H
