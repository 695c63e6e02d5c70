#include "host/tags/tag_columns.h"

#include "host/tags/quoted_text.h"

namespace {

const QStringList &needed() {
    static const QStringList names{QStringLiteral("label"), QStringLiteral("type"), QStringLiteral("address"),
                                   QStringLiteral("station"), QStringLiteral("count")};
    return names;
}

const QStringList &optional() {
    static const QStringList names{QStringLiteral("format"), QStringLiteral("scale"), QStringLiteral("offset"),
                                   QStringLiteral("unit")};
    return names;
}

QStringList missingFrom(const QStringList &names) {
    QStringList missing;
    for (const QString &name : needed()) {
        if (!names.contains(name)) {
            missing.append(name);
        }
    }
    return missing;
}

}  // namespace

bool TagColumns::complete() const {
    return missingFrom(names_).isEmpty();
}

QStringList TagColumns::read(const CsvRow &header) {
    names_ = header.fields;
    const QStringList missing = missingFrom(names_);
    if (missing == needed()) {
        return {QStringLiteral("line %1: the first line must name the columns: %2, and any of %3")
                    .arg(QString::number(qMax(header.line, 1)), needed().join(QLatin1Char(',')),
                         optional().join(QLatin1Char(',')))};
    }
    QStringList faults;
    if (header.badField != 0) {
        faults.append(fault(header, header.badField, header.badReason));
    }
    for (int i = 0; i < names_.size() && faults.size() < kMostTagFaults; ++i) {
        const QString &name = names_.at(i);
        if (names_.indexOf(name) < i) {
            faults.append(fault(header, i + 1, quoted(name) + QStringLiteral(" is there twice")));
        } else if (!needed().contains(name) && !optional().contains(name)) {
            faults.append(
                fault(header, i + 1,
                      QStringLiteral("%1 is no column of a tag list: %2,%3")
                          .arg(quoted(name), needed().join(QLatin1Char(',')), optional().join(QLatin1Char(',')))));
        }
    }
    if (!missing.isEmpty()) {
        faults.append(QStringLiteral("line %1: there is no column %2")
                          .arg(QString::number(header.line), missing.join(QStringLiteral(", "))));
    }
    return faults;
}

QString TagColumns::fault(const CsvRow &row, int column, const QString &reason) const {
    const QString known = names_.value(column - 1);
    const bool named = needed().contains(known) || optional().contains(known);
    return QStringLiteral("line %1, column %2 (%3): %4")
        .arg(QString::number(row.line), QString::number(column), named ? known : QStringLiteral("extra"), reason);
}
