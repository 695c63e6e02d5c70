// The tag list: the variables to watch, as CSV with the header line label,type,address,station,count. count is in
// values that the user sees (bits, registers, 32-bit values). Any thread.
#ifndef DRAVO_HOST_TAGS_TAG_LIST_H
#define DRAVO_HOST_TAGS_TAG_LIST_H

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include "korvel_dravo_line.h"

struct TagList {
    QVector<dravo::Variable> variables;  // resolved
    QStringList faults;  // "line 3, column 2 (type): ..." for everything wrong; empty: the list is usable
};

/// Reads UTF-8 text, with or without a byte order mark.
TagList parseTagList(const QByteArray &text);

/// Reads a file; an empty name is the built-in sample.
TagList loadTagList(const QString &fileName);

#endif  // DRAVO_HOST_TAGS_TAG_LIST_H
