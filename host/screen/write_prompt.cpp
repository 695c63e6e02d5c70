#include "host/screen/write_prompt.h"

#include "host/screen/cell_text.h"
#include "host/screen/detail.h"

TypedValues typedValues(const Tag &variable, const QString &text) {
    const QStringList texts = text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    TypedValues values = valueBytes(variable.kind, variable.format, texts);
    if (texts.size() != variable.count) {
        values.faults.prepend(variable.count == 1
                                  ? QStringLiteral("give one value, not %1").arg(texts.size())
                                  : QStringLiteral("give all %1 values, not %2").arg(variable.count).arg(texts.size()));
    }
    return values;
}

TypedLine::Outcome WritePrompt::press(const Key &key) {
    if (key.kind == Key::Kind::Other) {
        return TypedLine::Outcome::GoesOn;  // the terminal's size has changed: faults stay in sight
    }
    const TypedLine::Outcome outcome = typed_.press(key);
    values_ = TypedValues();
    if (outcome != TypedLine::Outcome::Entered) {
        return outcome;
    }
    if (typed_.text().trimmed().isEmpty()) {
        return TypedLine::Outcome::GivenUp;
    }
    values_ = typedValues(variable_, typed_.text());
    return values_.faults.isEmpty() ? outcome : TypedLine::Outcome::GoesOn;
}

ScreenLines WritePrompt::lines(const ShownVariable &current, int rows, int width) const {
    // The label gives way, since the number of values has to be seen.
    const QString place = QStringLiteral(": ") + placeWords(variable_);
    const QString verb = QStringLiteral("write ");
    const QString label = fitted(variable_.label, qMax(width - cellsOf(verb + place), 8));
    ScreenLines faults;
    for (const QString &fault : values_.faults) {
        faults += wrappedLines(fault, width, Tone::Bad);
    }
    if (faults.size() > rows - 3 && rows > 3) {
        faults.resize(rows - 3);
        faults.last() = ScreenLine(fitted(faults.last().text() + cutMark(), width), Tone::Bad);
    }
    ScreenLines lines{ScreenLine(fitted(verb + label + place, width), Tone::Strong),
                      ScreenLine(fitted(QStringLiteral("now: ") + valuesAndUnit(current), width)),
                      ScreenLine(QStringLiteral("new: ") + fittedEnd(typed_.text() + QLatin1Char('_'), width - 5))};
    return (lines + faults).mid(0, rows);
}
