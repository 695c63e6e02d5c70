// Commands from a pipe to a line and their answers: each is answered exactly once, and what cannot be carried out as it
// stands goes nowhere.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>

#include "host/gateway/gateway.h"
#include "support/frame_text.h"

namespace {

class GatewayTest : public ::testing::Test {
protected:
    GatewayTest() {
        EXPECT_EQ(mkfifo(qPrintable(pipe), 0600), 0);
        EXPECT_FALSE(input.open(pipe));
        settings.startSilenceUs = 0;
        settings.echo = dravo::EchoOff;
        line.emplace(settings, 0);
        gateway.emplace(list.variables, &*line, &input, [this](const QByteArray &record) {
            answers.append(QJsonDocument::fromJson(record).object());
            records.append(record);
        });
    }

    void send(const QByteArray &text) {
        const int writer = open(qPrintable(pipe), O_WRONLY);
        for (int at = 0; at < text.size(); at += 4096) {
            EXPECT_GT(write(writer, text.constData() + at, size_t(qMin(4096, text.size() - at))), 0);
            gateway->serve(false);
        }
        close(writer);
        for (int i = 0; i < 40; ++i) {
            gateway->serve(false);
        }
    }
    QString told(const char *key) const { return answers.value(answers.size() - 1).value(key).toVariant().toString(); }

    /// Lets the next request be answered. @return it.
    QByteArray exchange(const QByteArray &reply) {
        dravo::Step step = line->next(now);
        for (; step.kind == dravo::Step::Wait; step = line->next(now)) {
            now = qMax(now, step.untilUs);
        }
        line->sent(now);
        now += 50000;
        line->received(reply, now);
        line->next(now);
        for (dravo::LineEvent event; line->takeEvent(&event);) {
            EXPECT_TRUE(event.kind != dravo::LineEvent::Operation || gateway->finish(event));
        }
        return step.bytes;
    }

    const TagList list = parseTagList(
        "label,type,address,station,count,format,scale,unit\n"
        "speed,7,100,1,1,signed,0.1,rpm\npair,12,200,1,1,,,\ntwo,7,300,1,2,hex,,\nlamp,0,0,1,1,,,\nlamp,0,1,1,1,,,\n");
    const QTemporaryDir folder;
    const QString pipe = folder.filePath("commands");
    LineInput input;
    dravo::LineSettings settings;
    std::optional<dravo::Line> line;
    qint64 now = 0;
    QList<QJsonObject> answers;
    QByteArrayList records;
    std::optional<Gateway> gateway;
};

TEST_F(GatewayTest, CarriesOutWhatIsMeantAndSaysWhatBecameOfIt) {
    send(R"({"write": {"label": "speed", "values": [-12.50]}, "id": 123456789012345678901.50})"
         "\n");
    const QByteArray write = withCrc("0106 0064 ff83");
    EXPECT_EQ(exchange(write).toHex(), write.toHex());
    EXPECT_TRUE(records.last().startsWith("{\"id\":123456789012345678901.50,")) << records.last().toStdString();
    EXPECT_EQ(told("outcome") + told("shown") + told("unit") + told("record"),
              "done"
              "rpm"
              "command");
    send(R"({"id":{"a":[1e3,"}"]},"read":{"label":"two"}})"
         "\n");
    exchange(withCrc("0103 04 00ff 0002"));
    EXPECT_EQ(answers.last().value("shown"), QJsonArray({"0x00ff", "0x0002"}));
    EXPECT_TRUE(records.last().contains(R"({"a":[1e3,"}"]})"));
    send(R"({"write": {"label": "pair", "values": ["0x10"]}})"
         "\n");
    exchange(withCrc("0190 02"));
    EXPECT_EQ(told("outcome") + told("exception"), "refused2");
    send(R"({"write": {"label": "two", "values": ["0x1", "0x2"]}})");
    EXPECT_EQ(answers.size(), 3) << "without its end it is no line yet";
    send("\n");
    exchange(withCrc("0190 02"));
    EXPECT_EQ(told("outcome"), "failed") << "of several requests another part may have been carried out";
    send(R"({"write": {"label": "two", "values": ["0x1", "0x2"]}})"
         "\n");
    gateway->abandon("over");
    EXPECT_EQ(told("outcome") + told("why"), "not sureover; it may have been carried out");
    EXPECT_EQ(answers.size(), 5);
}

TEST_F(GatewayTest, RefusesEverythingElseAndLosesNothingElse) {
    const QByteArray good = R"({"write": {"label": "speed", "values": [1]}, "id": 1})"
                            "\n";
    const char *const bad[] = {
        "{",
        R"({"\u0069d": 1, "read": {"label": "speed"}})",
        "[1]",
        "7",
        "\xff",
        R"({"id": 1})",
        R"({"write": 1, "id": 1})",
        R"({"write": {"values": [1]}})",
        R"({"write": {"label": "speed"}})",
        R"({"write": {"label": "speed", "values": []}})",
        R"({"write": {"label": "speed", "values": [1, 2]}})",
        R"({"write": {"label": "speed", "values": [0.05]}})",
        R"({"write": {"label": "speed", "values": [1.0000000000000001]}})",
        R"({"write": {"label": "speed", "values": [null]}})",
        R"({"write": {"label": "speed", "values": [3276.8]}})",
        R"({"write": {"label": "speed", "values": [1], "station": 2}})",
        R"({"write": {"label": "lamp", "values": [1]}})",
        R"({"write": {"label": "Speed", "values": [1]}})",
        R"({"read": {"label": "speed", "values": [1]}})",
        R"({"write": {"label": "speed", "values": [1]}, "read": {"label": "speed"}})",
        R"({"write": {"label": "speed", "values": [1]}, "write": {"label": "speed", "values": [2]}})",
        R"({"write": {"label": "speed", "values": [1], "v\u0061lues": [2]}})",
        R"({"write": {"label": "speed", "values": [1.]}})",
        R"({"write": {"label": "two", "values": [1, 2]}})",
    };
    for (const char *text : bad) {
        send(QByteArray(text) + "\n\n");
        EXPECT_EQ(told("outcome"), "refused") << text;
        EXPECT_FALSE(told("why").isEmpty()) << text;
    }
    send(QByteArray(LineInput::kLongest + 1, ' ') + "\n" + QByteArray(3 * LineInput::kLongest, '{') + "\n");
    EXPECT_EQ(answers.size(), int(std::size(bad)) + 2);
    EXPECT_EQ(line->next(now).kind, dravo::Step::Wait) << "nothing goes on the line";
    answers.clear();
    send(good.repeated(1002));
    EXPECT_EQ(answers.size(), 2) << "1000 wait";
    gateway->serve(false);
    gateway->abandon("over");
    EXPECT_EQ(answers.size(), 1002);
    EXPECT_FALSE(gateway->isOver()) << "a pipe goes on with the next writer";
}

}  // namespace
