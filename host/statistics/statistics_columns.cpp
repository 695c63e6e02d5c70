#include "host/statistics/statistics_columns.h"

#include <QtCore/QJsonObject>
#include <QtCore/QLocale>
#include <QtCore/QStringList>
#include <cmath>

namespace {

using Row = StatisticsRow;

QJsonValue milliseconds(qint64 us) {
    return double(us) / 1000;
}

QJsonValue oneDecimal(double number) {
    return std::round(number * 10) / 10;
}

/// What only the line has.
QJsonValue ofLine(const Row &row, const QJsonValue &value) {
    return row.station ? QJsonValue(QJsonValue::Null) : value;
}

QJsonValue ofPasses(const Row &row, double ms) {
    return ofLine(row, row.passes.passes() == 0 ? QJsonValue(QJsonValue::Null) : oneDecimal(ms));
}

QJsonValue ofReplies(const Row &row, qint64 us) {
    return row.counts.answered == 0 ? QJsonValue(QJsonValue::Null) : milliseconds(us);
}

QJsonValue failures(const Row &row, dravo::LineCounts::Failure failure) {
    return row.counts.failures[failure];
}

QJsonValue exceptions(const Row &row) {
    QJsonObject codes;
    for (int code = 0; code < dravo::LineCounts::kExceptionCodes; ++code) {
        if (const qint64 replies = row.counts.exceptions[code]) {
            codes.insert(code == 0 ? QStringLiteral("other") : QString::number(code), replies);
        }
    }
    return codes;
}

}  // namespace

const QVector<StatisticsColumn> &statisticsColumns() {
    using Counts = dravo::LineCounts;
    // clang-format off
    static const QVector<StatisticsColumn> kColumns{
        // in records                                                                                            in tables: title, even if zero, decimals
        {"seconds",             [](const Row &r) { return milliseconds(r.whole.us / 1000); }},
        {"station",             [](const Row &r) { return r.station ? QJsonValue(*r.station) : QJsonValue(); }},
        {"down",                [](const Row &r) { return r.station ? QJsonValue(r.isDown) : QJsonValue(); }},
        {"passes",              [](const Row &r) { return ofLine(r, r.passes.passes()); }},
        {"requests_per_pass",   [](const Row &r) { return ofLine(r, r.requestsPerPass); }},
        {"pass_ms_min",         [](const Row &r) { return ofPasses(r, r.passes.shortestMs()); }},
        {"pass_ms_median",      [](const Row &r) { return ofPasses(r, r.passes.medianMs()); }},
        {"pass_ms_max",         [](const Row &r) { return ofPasses(r, r.passes.longestMs()); }},
        {"pass_ms_planned",     [](const Row &r) { return ofLine(r, milliseconds(r.plannedPassUs)); }},
        {"pass_percent",        [](const Row &r) { return ofLine(r, oneDecimal(r.passPercent())); }},
        {"values",              [](const Row &r) { return QJsonValue(r.whole.values); }},
        {"values_per_second",   [](const Row &r) { return oneDecimal(r.whole.valuesPerSecond()); },              "values/s",  true, 1},
        {"requests",            [](const Row &r) { return QJsonValue(r.counts.sendings); },                      "requests",  true},
        {"retries",             [](const Row &r) { return QJsonValue(r.counts.retries); },                       "retries",   true},
        {"answered",            [](const Row &r) { return QJsonValue(r.counts.answered); },                      "answered",  true},
        {"no_answer",           [](const Row &r) { return failures(r, Counts::NoAnswer); },                      "no answer", true},
        {"damaged",             [](const Row &r) { return failures(r, Counts::Damaged); },                       "damaged",   true},
        {"refused",             [](const Row &r) { return failures(r, Counts::Refused); },                       "refused",   true},
        {"exceptions",          [](const Row &r) { return exceptions(r); }},
        {"late_dropped",        [](const Row &r) { return QJsonValue(r.counts.lateDropped); },                   "late",      false},
        {"foreign_dropped",     [](const Row &r) { return QJsonValue(r.counts.foreignDropped); },                "foreign",   false},
        {"echoes",              [](const Row &r) { return QJsonValue(r.counts.echoes); },                        "echoes",    false},
        {"waits",               [](const Row &r) { return QJsonValue(r.counts.waits); },                         "waits",     false},
        {"waited_ms",           [](const Row &r) { return milliseconds(r.counts.waitedUs); },                    "waited ms", false, 1},
        {"bytes_out",           [](const Row &r) { return QJsonValue(r.counts.bytesOut); },                      "bytes out", true},
        {"bytes_in",            [](const Row &r) { return QJsonValue(r.counts.bytesIn); },                       "bytes in",  true},
        {"busy_percent",        [](const Row &r) { return oneDecimal(r.whole.busyPercent()); },                  "busy %",    true, 1},
        {"reply_ms_median",     [](const Row &r) { return ofReplies(r, r.medianUs); },                           "reply ms",  true, 1},
        {"reply_ms_95",         [](const Row &r) { return ofReplies(r, r.percent95Us); },                        "95 %",      true, 1},
        {"reply_ms_99",         [](const Row &r) { return ofReplies(r, r.percent99Us); },                        "99 %",      true, 1},
        {"reply_ms_max",        [](const Row &r) { return ofReplies(r, r.longestUs); },                          "max",       true, 1},
        {"recent_seconds",      [](const Row &r) { return milliseconds(r.recent.us / 1000); }},
        {"recent_values_per_second", [](const Row &r) { return oneDecimal(r.recent.valuesPerSecond()); }},
        {"recent_busy_percent", [](const Row &r) { return oneDecimal(r.recent.busyPercent()); }},
    };
    // clang-format on
    return kColumns;
}

QString statisticsText(const QJsonValue &value) {
    if (value.isObject()) {
        QStringList members;
        const QJsonObject object = value.toObject();
        for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
            members.append(it.key() + QLatin1Char(':') + statisticsText(it.value()));
        }
        return members.join(QLatin1Char(' '));
    }
    return value.isDouble() ? QString::number(value.toDouble(), 'f', QLocale::FloatingPointShortest)
                            : value.toVariant().toString();
}
