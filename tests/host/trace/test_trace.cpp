#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include "host/trace/frame_log.h"
#include "host/trace/recent_frames.h"
#include "host/trace/text_line.h"
#include "host/trace/trace_output.h"
#include "line/desk.h"

namespace {

struct Traced {
    QByteArray out, in;
    std::map<std::string, qint64> verdicts;  // by their first word
};

// On a line where everything goes wrong, the trace holds every byte once and in order, and says of each what the engine
// did with it.
TEST(Trace, EveryByteOnceInOrderAndJudgedAsTheEngineDid) {
    WireFaults faults;
    faults.late = 0.3;
    faults.foreign = 0.2;
    faults.lost = faults.cut = faults.altered = faults.stray = faults.exception = 0.1;
    faults.overtaking = true;
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        faults.echo = seed % 2 == 0;
        dravo::LineSettings settings = at9600();
        settings.timeoutUs = 100000;
        Wire wire(faults, wireAt9600(), {1, 2, 3}, Draws(seed));
        wire.alarm = [](const std::string &) {};
        wire.written = [](int, bool, int, quint16, quint16) {};
        dravo::Line line(settings, 0);
        line.watch({variable(1, 7, "1", 9), variable(2, 7, "4"), variable(3, 2, "2", 30)}, 0);
        Traced traced;
        qint64 lastUs = 0;
        FrameLog log(
            [&](const TracedFrame &frame) {
                (frame.sent ? traced.out : traced.in) += frame.bytes;
                ++traced.verdicts[frame.verdict.section(QLatin1Char(' '), 0, 0).toStdString()];
                EXPECT_GE(frame.us, lastUs);
                lastUs = frame.us;
            },
            false);
        QByteArray out, in;
        qint64 answers = 0;
        Us sentUs = 0;
        for (Us now = 0; now < 60000000;) {
            wire.advance(now);
            const QByteArray arrived = wire.take(now);
            in += arrived;
            line.received(arrived, now);
            log.received(arrived, now);
            const dravo::Step step = line.next(now);
            log.counted(line.statistics(), now);
            for (dravo::LineEvent event; line.takeEvent(&event);) {
                log.happened(event);
                if (event.kind == dravo::LineEvent::Exchange && !event.reply.isEmpty()) {
                    ++answers;
                    const Us arrivedUs = sentUs + wire.charactersUs(event.request.size()) + event.replyUs;
                    EXPECT_NEAR(double(lastUs), double(arrivedUs), event.replyUs > 0 ? 2 : 10000);  // of all alike
                }
            }
            if (step.kind == dravo::Step::Send) {
                out += step.bytes;
                log.sent(step.bytes, now);
                sentUs = now;
                wire.send(step.bytes, now, 1);
                line.sent(now);
                line.write(variable(1, 7, "40"), QByteArray("\1\2", 2));
            } else {
                now = std::max(now + 1, std::min(step.untilUs, wire.nextArrivalUs()));
            }
        }
        line.received(QByteArray(), 70000000);
        log.counted(line.statistics(), 70000000);
        log.ended();
        EXPECT_EQ(traced.out, out);
        EXPECT_EQ(traced.in, in);
        const dravo::LineCounts &counts = line.statistics().line().counts;
        EXPECT_EQ(traced.verdicts["answer"], answers);
        EXPECT_GE(traced.verdicts["echo,"], counts.echoes);
        EXPECT_EQ(traced.verdicts["late,"] + traced.verdicts["late"] + traced.verdicts["foreign,"],
                  counts.lateDropped + counts.foreignDropped);
        EXPECT_GT(traced.verdicts["late,"], 0);
    }
}

TEST(Trace, LineSaysWhoWhatWhereAndWhatBecameOfIt) {
    TracedFrame frame;
    frame.sent = true;
    frame.station = 2;
    frame.verdict = QStringLiteral("answered after 7.6 ms");
    frame.elements = {2, 0, 8, 10};
    frame.bytes = QByteArray::fromHex("020f04b8000a02850235d6");
    EXPECT_EQ(traceLine(frame, 1795435619000042).toStdString(),
              "2026-11-23T12:06:59.000042Z > station 2 write multiple coils 1208-1217 (type 0 10-21), answered after "
              "7.6 ms: 10100001 01 | 02 0f 04 b8 00 0a 02 85 02 35 d6");
    frame.kind = TracedFrame::Reply;
    frame.sent = false;
    frame.request = QByteArray::fromHex("020104b8000a3d0b");
    frame.bytes = QByteArray::fromHex("0201028502bf2d");
    EXPECT_TRUE(traceLine(frame, 0).contains(QLatin1String(" 7.6 ms: 10100001 01 | "))) << "without the last padding";
    frame.elements = {2, 13, 5, 1};
    frame.request = QByteArray::fromHex("0203245e00022f1a");
    frame.bytes = QByteArray::fromHex("0203043b9aca0035b6");
    frame.verdict = QStringLiteral("answer after 7.6 ms");
    EXPECT_EQ(
        traceLine(frame, 0).section(QLatin1Char(' '), 2).toStdString(),
        "station 2 read holding registers 9310-9311 (type 13 5), answer after 7.6 ms: 1000000000 | 02 03 04 3b 9a "
        "ca 00 35 b6");
    frame.bytes = QByteArray::fromHex("0283027131");
    EXPECT_EQ(traceLine(frame, 0).section(QLatin1Char(' '), 2).toStdString(),
              "station 2 read holding registers 9310-9311 (type 13 5) refused: illegal data address (exception 2), "
              "answer after 7.6 ms | 02 83 02 71 31");
    RecentFrames recent;
    for (int i = 0; i < 60; ++i) {
        frame.station = i < 55 ? 2 : 3;
        recent.add(frame, i * 1000LL);
    }
    EXPECT_EQ(recent.lines(2).size(), RecentFrames::kMost);
    EXPECT_EQ(recent.lines(3).size(), 5);
    EXPECT_TRUE(recent.lines(2).last().endsWith(QLatin1String(
        ".054 < read holding registers 9310-9311 (type 13 5) refused: illegal data address (exception 2), answer "
        "after 7.6 ms")))
        << recent.lines(2).last().toStdString();
}

TEST(Trace, AnyBytesMakeOneLine) {
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        TracedFrame frame;
        frame.kind = TracedFrame::Kind(random() % 4);
        frame.remote = random() % 4 == 0;
        frame.elements = {1, int(random() % 24) - 1, int(random() % 65536), int(random() % 3000)};
        frame.bytes.resize(int(random() % (i % 10 == 0 ? 4097 : 12)));
        std::generate(frame.bytes.begin(), frame.bytes.end(), [&random] { return char(random() % 20); });
        frame.request = frame.bytes.left(int(random() % 12));
        const QByteArray line = traceLine(frame, qint64(random())).toUtf8();
        ASSERT_TRUE(line.size() < 4096 && !line.contains('\n')) << line.constData();
    }
}

// Two files hold the last records, whole, and neither is longer than asked.
TEST(Trace, RotatesBetweenRecords) {
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("trace"));
    QByteArray all;
    TraceOutput output;
    ASSERT_FALSE(output.open(name, "head\n", 50));
    for (int i = 100; i < 130; ++i) {
        const QByteArray record = "record " + QByteArray::number(i) + '\n';
        bool leftOut = false;
        EXPECT_FALSE(output.append(record, &leftOut));
        all += record;
    }
    QByteArray last;
    for (const char *suffix : {".1", ""}) {
        QFile file(name + QLatin1String(suffix));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readLine(), "head\n");
        last += file.readAll();
        EXPECT_LE(file.size(), 50);
    }
    EXPECT_TRUE(all.endsWith(last) && last.size() > 50) << last.constData();
}

}  // namespace
