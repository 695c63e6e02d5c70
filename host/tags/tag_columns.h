// The columns of a tag list, found by the names in its first line, in any order. Pure; any thread.
#ifndef DRAVO_HOST_TAGS_TAG_COLUMNS_H
#define DRAVO_HOST_TAGS_TAG_COLUMNS_H

#include "host/tags/csv_text.h"

/// Faults of a tag list after which nobody reads on.
constexpr int kMostTagFaults = 20;

class TagColumns {
public:
    /// @return the first faults of the first line. Empty: every column is known and there once, the needed ones are
    ///         there.
    QStringList read(const CsvRow &header);
    /// Whether the other lines can be read, despite faults of the first.
    bool complete() const;

    int size() const { return names_.size(); }
    /// The field of a row as wide as the header; empty where the list has no such column.
    QString field(const CsvRow &row, const char *name) const { return row.fields.value(place(name)); }
    /// "line 3, column 2 (type): reason"; column is counted from 1.
    QString fault(const CsvRow &row, int column, const QString &reason) const;
    QString fault(const CsvRow &row, const char *name, const QString &reason) const {
        return fault(row, place(name) + 1, reason);
    }

private:
    int place(const char *name) const { return names_.indexOf(QLatin1String(name)); }

    QStringList names_;
};

#endif  // DRAVO_HOST_TAGS_TAG_COLUMNS_H
