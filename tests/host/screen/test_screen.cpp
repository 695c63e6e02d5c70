// The live screen without a terminal: nothing is cut without a sign, whatever its size and whichever keys are pressed.
#include <gtest/gtest.h>

#include <QtCore/QTextCodec>
#include <clocale>
#include <random>

#include "host/screen/cell_text.h"
#include "host/screen/detail.h"
#include "host/screen/record_output.h"
#include "host/screen/screen.h"
#include "support/frame_text.h"

namespace {

Tag tag(const QString &label, int type, const QString &address, int station, int count) {
    Tag tag;
    tag.label = label;
    tag.elemType = type;
    tag.addressText = address;
    tag.station = station;
    tag.count = count;
    EXPECT_TRUE(dravo::resolve(&tag).isEmpty());
    return tag;
}

QString without(QString text, QChar character) {
    return text.remove(character);
}

QString joined(const ScreenLines &lines) {
    QString all;
    for (const ScreenLine &line : lines) {
        all += line.text() + QLatin1Char('\n');
    }
    return all;
}

struct LiveScreen : testing::Test {
    LiveScreen() {
        std::setlocale(LC_CTYPE, "C.UTF-8");
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    }
    std::mt19937 random{20};
    int below(int bound) { return int(random() % unsigned(bound)); }
    QString letters(int most) {
        const QString kLetters = QString::fromUtf8(u8"ab 9é温度\u0301\u202e\n\U0001F525");
        QString text;
        for (int left = below(most); left >= 0; --left) {
            text += kLetters.at(below(kLetters.size()));
        }
        return text;
    }
};

TEST_F(LiveScreen, ShowsValuesWholeOrWithASignAndWholeInTheDetail) {
    for (int round = 0; round < 4000; ++round) {
        ShownVariable shown;
        Tag variable = tag(letters(40), 7, "4711", 1 + below(247), 1 + below(12));
        shown.state.condition = dravo::Condition(below(6));
        shown.state.ageUs = shown.state.condition == dravo::NeverRead ? -1 : qint64(random()) << below(20);
        for (int i = 0; i < variable.count; ++i) {
            shown.texts.append(QString::number(random() >> below(32), below(2) != 0 ? 10 : 2));
        }
        shown.unit = below(2) != 0 ? "kWh" : "";
        shown.meaning = below(2) != 0 ? "no reply" : "";
        shown.variable = variable;
        const int width = RowLayout::kLeastWidth + below(161);
        const ScreenLine line = RowLayout({variable}).row(shown, width);
        const QString row = line.text();
        EXPECT_EQ(cellsOf(row), width) << row.toStdString();
        EXPECT_TRUE(row.contains(shownText(variable.label)) || row.contains(cutMark())) << row.toStdString();
        const QString values = valuesAndUnit(shown);
        const QString cell = line.spans.at(line.spans.size() - 2).text;
        if (!cell.startsWith(values)) {  // whole values before the sign, unless the first one alone is too wide
            const QString some = cell.left(cell.indexOf(cutMark()));
            EXPECT_TRUE(cell.contains(cutMark()) && values.startsWith(some)) << row.toStdString();
            EXPECT_TRUE(some.endsWith(' ') || !some.contains(' ')) << row.toStdString();
        }
        for (const ScreenLine &told : detailLines(shown, width)) {
            EXPECT_LE(cellsOf(told.text()), width);
        }
        const QString detail = without(without(joined(detailLines(shown, width)), '\n'), ' ');
        for (const QString &whole : {values, shownText(variable.label), shown.meaning}) {
            EXPECT_TRUE(detail.contains(without(whole, ' '))) << detail.toStdString();
        }
        const QString record = QString::fromUtf8(::record(RecordFormat::Table, shown));
        const int label = qMax(28, cellsOf(variable.label));
        EXPECT_TRUE(record.contains(values) && cellsOf(record.left(record.indexOf("4711"))) == 39 + label)
            << record.toStdString();
    }
}

TEST_F(LiveScreen, FitsAnySizeWhateverIsTypedAndFindsAndChecks) {
    dravo::LineSettings settings;
    settings.startSilenceUs = 0;
    settings.retries = 0;
    QVector<Tag> tags{tag("lamps", 0, "17", 1, 3), tag("Oven A", 0, "24", 1, 1), tag("oven B", 7, "9", 2, 2000)};
    for (int i = 3; i < 40; ++i) {
        tags.append(tag(letters(9), 7, QString::number(i * 50), 3, 1));
    }
    dravo::Line line(settings, 0);
    MonitorModel model(tags, line, 0);
    line.watch(variablesOf(tags), 0);
    dravo::Step step = line.next(0);
    line.sent(0);
    line.received(withCrc("0181 04"), 9000);
    line.next(9000);
    for (dravo::LineEvent event; line.takeEvent(&event);) {
        model.take(event, 9000);
    }
    EXPECT_TRUE(model.shown(tags.at(0), 9000).meaning.startsWith("in one request with 17 to 24, refused: device f"));

    Screen screen(model, "/dev/x 19200 8E1");
    screen.addPage(
        {'s', "statistics", [](const Tag &, int, qint64) { return QString("figure ").repeated(60).split(' '); }});
    const auto press = [&](const QString &keys) {  // ^: Enter, <: Escape, #: Tab
        Screen::Wish wish;
        for (const QChar key : keys) {
            const Key::Kind kind = key == '^'   ? Key::Kind::Enter
                                   : key == '<' ? Key::Kind::Escape
                                   : key == '#' ? Key::Kind::Tab
                                                : Key::Kind::Character;
            wish = screen.press({kind, key}, 9000);
        }
        return wish;
    };
    const auto shows = [&](const QString &text) { return joined(screen.lines({24, 80}, 9000)).contains(text); };
    press("/OVEN^");
    EXPECT_TRUE(shows(" 2 of 40"));
    press("n");
    EXPECT_TRUE(shows(" 3 of 40"));
    press("nN/nothing^");
    EXPECT_TRUE(shows(" 3 of 40") && shows("no label has 'nothing'"));
    press("n/lamps^w1 0");
    EXPECT_EQ(press("^").kind, Screen::Wish::Kind::None);
    EXPECT_TRUE(shows("write lamps: type 0, address 17, station 1, 3 values") && shows("now: - - -") &&
                shows("new: 1 0_") && shows("give all 3 values, not 2"));
    press(" 7^");
    EXPECT_TRUE(shows("'7' is no value here"));
    const Screen::Wish wish = press("<w#<w1 0 on^");
    EXPECT_TRUE(wish.kind == Screen::Wish::Kind::Write && wish.variable == 0 && wish.values == QByteArray("\1\0\1", 3));
    screen.say("lamps is written", Tone::Good, 9000);
    EXPECT_TRUE(shows("lamps is written"));
    EXPECT_FALSE(joined(screen.lines({24, 80}, 20000000)).contains("written"));

    press("/oven b^");  // its values are more than there is room for, and the notice takes some of it
    screen.say("some news", Tone::Bad, 9000);
    EXPECT_TRUE(shows("more lines, Enter shows them") && shows("some news"));
    press("s");
    screen.press({Key::Kind::End, QString()}, 9000);
    EXPECT_TRUE(shows("lines 40 to 61 of 61"));
    press("<");

    const QString keys = "jknNw/s?^^<<#aq9 ";
    for (int round = 0; round < 4000; ++round) {
        const QChar key = keys.at(below(keys.size()));
        screen.press({below(2) != 0 ? Key::Kind::Character : Key::Kind(below(12)), key}, 9000);
        const ScreenSize size{below(60), below(200)};
        const ScreenLines lines = screen.lines(size, 9000 + round * 5000);
        EXPECT_LE(lines.size(), qMax(size.rows, 1));
        int selected = 0;
        for (const ScreenLine &shown : lines) {
            EXPECT_LE(cellsOf(shown.text()), size.columns) << shown.text().toStdString();
            selected += shown.reversed ? 1 : 0;
        }
        const bool isList = joined(lines).contains(" of 40\n");
        EXPECT_EQ(selected, isList ? 1 : 0) << joined(lines).toStdString();
    }
}

}  // namespace
