#include "host/plan/plan_table.h"

#include "host/plan/plan_columns.h"
#include "host/screen/printable.h"

namespace {

constexpr int kWidth = 80;
constexpr int kLeastForLabel = 12;

struct Cell {
    QString text;
    bool isNumber;
};

// Lines of cells, each column as wide as its widest cell; the last takes what is left and ends in an ellipsis where
// that is too little.
QString aligned(const QVector<QVector<Cell>> &lines) {
    QVector<int> widths(lines.first().size(), 0);
    int used = 0;
    for (int column = 0; column + 1 < widths.size(); ++column) {
        for (const QVector<Cell> &line : lines) {
            widths[column] = qMax(widths.at(column), line.at(column).text.size());
        }
        used += widths.at(column) + 1;
    }
    widths.last() = qMax(kLeastForLabel, kWidth - used);
    QString text;
    for (const QVector<Cell> &line : lines) {
        QString row;
        for (int column = 0; column < widths.size(); ++column) {
            const Cell &cell = line.at(column);
            const int width = widths.at(column);
            const QString fitting = cell.text.size() > width ? cell.text.left(width - 1) + QChar(0x2026) : cell.text;
            row += cell.isNumber ? fitting.rightJustified(width) : fitting.leftJustified(width);
            row += QLatin1Char(' ');
        }
        while (row.endsWith(QLatin1Char(' '))) {
            row.chop(1);
        }
        text += row + QLatin1Char('\n');
    }
    return text;
}

QString noteLetters(const PlannedRequest &request) {
    QString letters;
    for (const PlanNote note : kPlanNotes) {
        letters += request.notes & note ? noteText(note).left(1) : QString();
    }
    return letters;
}

QString noteLegend(const PassPlan &plan) {
    int notes = 0;
    for (const PlannedRequest &request : plan.requests) {
        notes |= request.notes;
    }
    QStringList words;
    for (const PlanNote note : kPlanNotes) {
        if (notes & note) {
            words.append(noteText(note).left(1) + QStringLiteral(" = ") + noteText(note));
        }
    }
    return words.isEmpty() ? QString()
                           : QStringLiteral("Notes: ") + words.join(QStringLiteral(", ")) + QStringLiteral("\n");
}

QString failureLines(const PassPlan &plan) {
    QString lines;
    for (int i = 0; i < plan.requests.size(); ++i) {
        const QString &failure = plan.requests.at(i).failure;
        lines += failure.isEmpty() ? QString() : QStringLiteral("Request %1: %2\n").arg(i + 1).arg(failure);
    }
    return lines;
}

QString requestLines(const PassPlan &plan) {
    const QVector<PlanColumn> columns = planColumns(plan.isMeasured);
    QVector<Cell> titles{{QStringLiteral("#"), true}};
    for (const PlanColumn &column : columns) {
        titles.append({QLatin1String(column.title), column.isNumber});
    }
    titles +=
        {{QStringLiteral("note"), false}, {QStringLiteral("vars"), true}, {QStringLiteral("first of them"), false}};
    QVector<QVector<Cell>> lines{titles};
    for (const PlannedRequest &request : plan.requests) {
        QVector<Cell> line{{QString::number(lines.size()), true}};
        for (const PlanColumn &column : columns) {
            line.append({column.text(request), column.isNumber});
        }
        line += {{noteLetters(request), false},
                 {QString::number(request.variables), true},
                 {printable(request.labels.value(0)), false}};
        lines.append(line);
    }
    return aligned(lines);
}

QVector<Cell> passLine(const QString &name, const OtherPass &pass, const QString &difference) {
    return {{name, false},
            {QString::number(pass.figures.requests), true},
            {msText(pass.figures.us), true},
            {difference.rightJustified(10), false}};
}

QString passLines(const PassPlan &plan) {
    QVector<QVector<Cell>> lines{
        {{QString(), false}, {QStringLiteral("requests"), true}, {QStringLiteral("pass ms"), true}, {QString(), false}},
        passLine(QStringLiteral("this plan"), plan.itself, QString())};
    for (const PlanAlternative &other : planAlternatives(plan)) {
        lines.append(passLine(other.name, other.pass, differenceText(other.pass.figures.us, plan.itself.figures.us)));
    }
    return aligned(lines);
}

QString measuredLine(const PassPlan &plan) {
    qint64 us = 0;
    int count = 0;
    for (const PlannedRequest &request : plan.requests) {
        us += qMax<qint64>(0, request.measuredUs);
        count += request.measuredUs < 0 ? 0 : 1;
    }
    return plan.isMeasured ? QStringLiteral("        measured: %1 ms for %2 of the %3 requests\n")
                                 .arg(msText(us))
                                 .arg(count)
                                 .arg(plan.requests.size())
                           : QString();
}

QString sums(const PassPlan &plan) {
    return QStringLiteral("A pass: %1 requests, %2 bytes out, %3 in, %4 ms\n")
               .arg(plan.requests.size())
               .arg(plan.bytesOut)
               .arg(plan.bytesIn)
               .arg(msText(plan.itself.figures.us)) +
           measuredLine(plan) +
           QStringLiteral("        %1 values a second, %2 % of the time goes to gaps\n")
               .arg(QString::number(plan.valuesPerSecond(), 'f', 1), QString::number(100 * plan.gapShare(), 'f', 1)) +
           QStringLiteral("Line:   %1 baud, %2 bits a character, turnaround %3 ms\n")
               .arg(plan.line.baud)
               .arg(plan.line.bitsPerCharacter)
               .arg(msText(plan.line.replyDelayUs)) +
           QStringLiteral("Merge:  %1, frame limit %2\n").arg(mergeName(plan.line.merge)).arg(plan.line.frameLimit);
}

}  // namespace

QString planTable(const PassPlan &plan) {
    const QString blank = QStringLiteral("\n");
    return requestLines(plan) + noteLegend(plan) + failureLines(plan) + blank + sums(plan) + blank + passLines(plan);
}
