#include "host/scan/scan_report.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "host/plan/aligned_lines.h"

namespace {

QString answerText(const StationAnswer &answer, int timeoutMs) {
    switch (answer.answer) {
        case Answer::Whole:
            return answer.exceptionCode == 0
                       ? QStringLiteral("answers")
                       : QStringLiteral("answers, ") + dravo::describeResult(answer.code, answer.exceptionCode);
        case Answer::Late:
            return QStringLiteral("answers late, after more than %1 ms").arg(timeoutMs);
        case Answer::Damaged:
            return QStringLiteral("damaged: two with one number?");
        case Answer::None:
            break;
    }
    return QString();
}

QString answerName(const StationAnswer &answer) {
    return answer.answer == Answer::Damaged ? QStringLiteral("damaged")
           : answer.answer == Answer::Late  ? QStringLiteral("late")
           : answer.exceptionCode != 0      ? QStringLiteral("exception")
                                            : QStringLiteral("value");
}

int stopBits(const PortSettings &settings) {
    return settings.stopBits == QSerialPort::TwoStop ? 2 : 1;
}

QJsonObject findingObject(const Finding &finding) {
    const StationAnswer &answer = finding.answer;
    const bool timed = answer.answer == Answer::Whole;
    return {{QStringLiteral("baud"), finding.at.baud},
            {QStringLiteral("parity"), parityName(finding.at.parity)},
            {QStringLiteral("stop_bits"), stopBits(finding.at)},
            {QStringLiteral("station"), answer.station},
            {QStringLiteral("answer"), answerName(answer)},
            {QStringLiteral("exception_code"), answer.exceptionCode},
            {QStringLiteral("ms"), timed ? QJsonValue(double(answer.replyUs) / 1000) : QJsonValue()}};
}

}  // namespace

bool ScanResult::anyAnswers() const {
    for (const Finding &finding : findings) {
        if (finding.answer.answer >= Answer::Late) {
            return true;
        }
    }
    return false;
}

QString scanTable(const ScanResult &result, int timeoutMs) {
    QVector<QVector<Cell>> lines{{{QStringLiteral("baud"), true},
                                  {QStringLiteral("parity"), false},
                                  {QStringLiteral("stop bits"), true},
                                  {QStringLiteral("station"), true},
                                  {QStringLiteral("ms"), true},
                                  {QStringLiteral("answer"), false}}};
    for (const Finding &finding : result.findings) {
        const StationAnswer &answer = finding.answer;
        const bool timed = answer.answer == Answer::Whole;
        lines.append({{QString::number(finding.at.baud), true},
                      {parityName(finding.at.parity), false},
                      {QString::number(stopBits(finding.at)), true},
                      {QString::number(answer.station), true},
                      {timed ? QString::number(double(answer.replyUs) / 1000, 'f', 1) : QString(), true},
                      {answerText(answer, timeoutMs), false}});
    }
    return lines.size() > 1 ? aligned(lines) : QString();
}

QByteArray scanJson(const ScanResult &result) {
    QJsonArray found;
    for (const Finding &finding : result.findings) {
        found.append(findingObject(finding));
    }
    const QJsonObject whole{{QStringLiteral("stations"), result.stations},
                            {QStringLiteral("settings"), result.settings},
                            {QStringLiteral("settings_done"), result.settingsDone},
                            {QStringLiteral("found"), found}};
    return QJsonDocument(whole).toJson();
}

QString numberList(const std::vector<int> &numbers) {
    QString text;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::size_t first = i;
        while (i + 1 < numbers.size() && numbers[i + 1] == numbers[i] + 1) {
            ++i;
        }
        text += (text.isEmpty() ? QString() : QStringLiteral(",")) + QString::number(numbers[first]);
        text += i > first ? QStringLiteral("-%1").arg(numbers[i]) : QString();
    }
    return text;
}
