// Statistics fit every width, with nothing cut, and tell in each form what was counted.
#include <gtest/gtest.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <random>

#include "host/statistics/statistics_columns.h"
#include "host/statistics/statistics_records.h"
#include "host/statistics/statistics_table.h"
#include "support/frame_text.h"

namespace {

TEST(Statistics, FitEveryWidthAndCutNothing) {
    std::mt19937_64 random(1);
    for (int width = 40; width <= 200; ++width) {
        QVector<StatisticsRow> rows(3);
        QStringList figures;
        for (StatisticsRow &row : rows) {
            row.station = int(random() % 256);
            row.isDown = random() % 2 != 0;
            dravo::LineCounts &counts = row.counts;
            for (qint64 *count : {&counts.sendings, &counts.retries, &counts.answered, &counts.failures[0],
                                  &counts.failures[1], &counts.failures[2], &counts.lateDropped, &counts.foreignDropped,
                                  &counts.echoes, &counts.waits, &counts.bytesOut, &counts.bytesIn}) {
                *count = (Q_INT64_C(1) << 53) >> (random() % 54);  // what JSON holds
                figures += QString::number(*count);
            }
            counts.exceptions[2] = counts.retries;
            for (qint64 *us : {&row.medianUs, &row.percent95Us, &row.percent99Us, &row.longestUs, &counts.waitedUs}) {
                *us = qint64(random() % 10000000) * 100;
                figures += QString::number(double(*us) / 1000, 'f', 1);
            }
        }
        rows.last().station.reset();
        const QStringList lines = statisticsTable(rows, width);
        const QStringList words = lines.join(' ').split(' ');
        for (const QString &figure : figures) {
            EXPECT_TRUE(words.contains(figure)) << width << ": " << figure.toStdString();
        }
        for (const QString &line : lines) {
            EXPECT_LE(line.size(), width) << line.toStdString();
        }
    }
}

TEST(Statistics, CountEachReadingOnceInEveryForm) {
    dravo::LineSettings settings;
    settings.startSilenceUs = 0;
    settings.retries = 0;
    settings.passPeriodUs = 500000;
    dravo::Line line(settings, 0);
    dravo::Variable variable;
    variable.addressText = "100";
    variable.elemType = 7;
    variable.count = 3;
    QVector<dravo::Variable> variables{variable, variable};
    variables[1].station = 2;
    for (dravo::Variable &each : variables) {
        EXPECT_TRUE(dravo::resolve(&each).isEmpty());
    }
    line.watch(variables, 0);
    RunStatistics statistics(variables, line, 0);
    qint64 now = 0;
    for (int request = 0; request < 5; ++request) {  // the second is refused, the others are readings
        dravo::Step step = line.next(now);
        for (; step.kind == dravo::Step::Wait; step = line.next(now)) {
            now = qMax(now, step.untilUs);
        }
        line.sent(now);
        now += 100000;
        line.received(withCrc(step.bytes.at(0) == 1 ? "0103 06 0001 0002 0003" : "0283 02"), now);
        line.next(now);
        for (dravo::LineEvent event; line.takeEvent(&event);) {
            if (event.kind == dravo::LineEvent::PassDone) {
                statistics.passDone(event.passUs, now);
                statistics.rows(now);  // to look does not count again
                statistics.markRecord(now);
                const StatisticsShare none = statistics.rows(now).last().recent;
                EXPECT_EQ(std::make_tuple(none.us, none.values, none.busyUs), std::make_tuple(0, 0, 0));
            }
        }
    }
    const QByteArrayList json = statisticsJson(statistics.rows(now), "noon");
    const QByteArrayList csv = statisticsCsv(statistics.rows(now), "noon");
    ASSERT_EQ(json.size(), 3);
    const QStringList names = QString(statisticsCsvHeader()).trimmed().split(',');
    for (int i = 0; i < json.size(); ++i) {
        const QJsonObject record = QJsonDocument::fromJson(json.at(i)).object();
        const QStringList fields = QString(csv.at(i)).split('\n').first().split(',');
        ASSERT_EQ(fields.size(), names.size());
        EXPECT_EQ(record.size(), names.size() + 1) << "and what kind of record it is";
        for (int field = 0; field < fields.size(); ++field) {
            EXPECT_EQ(fields.at(field), statisticsText(record.value(names.at(field))));
        }
    }
    EXPECT_TRUE(json.at(0).contains("\"values\":12,")) << json.at(0).toStdString();
    EXPECT_TRUE(json.at(2).contains("\"values\":12,"));
}

}  // namespace
