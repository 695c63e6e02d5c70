// The manual pages of the program and of each command, made of the texts that --help shows. Main thread.
#ifndef DRAVO_HOST_REFERENCE_MANUAL_H
#define DRAVO_HOST_REFERENCE_MANUAL_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <vector>

#include "host/commands/command_tree.h"

struct ManualPage {
    QString name;  // "dravo-host-read"
    QByteArray source;
};

/// date: as ISO 8601.
std::vector<ManualPage> manualPages(const CommandTree &tree, const QString &date);

#endif  // DRAVO_HOST_REFERENCE_MANUAL_H
