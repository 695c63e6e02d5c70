// The tag list: the variables to watch, as CSV. Its first line names the columns, in any order: label, type, address,
// station and count, and where wanted format, scale, offset and unit. count is in values that the user sees (bits,
// registers, 32-bit values). Any thread.
#ifndef DRAVO_HOST_TAGS_TAG_LIST_H
#define DRAVO_HOST_TAGS_TAG_LIST_H

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include "host/tags/value_format.h"

/// A variable of the list, and how its values are shown.
struct Tag : dravo::Variable {
    ValueFormat format;
};

struct TagList {
    QVector<Tag> variables;  // resolved
    QStringList faults;      // "line 3, column 2 (type): '99' ..." for everything wrong; empty: the list is usable
};

/// What the engine is to read.
QVector<dravo::Variable> variablesOf(const QVector<Tag> &tags);

/// Reads UTF-8 text, with or without a byte order mark.
TagList parseTagList(const QByteArray &text);

/// Reads a file, which its faults then name; an empty name is the built-in sample.
TagList loadTagList(const QString &fileName);

#endif  // DRAVO_HOST_TAGS_TAG_LIST_H
