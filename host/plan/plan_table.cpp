#include "host/plan/plan_table.h"

#include "host/plan/aligned_lines.h"
#include "host/plan/plan_columns.h"
#include "host/screen/printable.h"

namespace {

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
