// Records: one per value and pass, as an aligned table, CSV or one JSON object a line. Pure; any thread.
#ifndef DRAVO_HOST_SCREEN_RECORD_OUTPUT_H
#define DRAVO_HOST_SCREEN_RECORD_OUTPUT_H

#include <QtCore/QByteArray>

#include "host/screen/columns.h"

enum class RecordFormat { Table, Csv, Json };

/// The header line, where the format has one.
QByteArray recordHeader(RecordFormat format);
QByteArray record(RecordFormat format, const ShownVariable &shown);

#endif  // DRAVO_HOST_SCREEN_RECORD_OUTPUT_H
