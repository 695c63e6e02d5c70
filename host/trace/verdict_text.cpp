#include "host/trace/verdict_text.h"

#include "korvel_dravo_port.h"

namespace {

QString msText(qint64 us) {
    return QString::number(double(us) / 1000, 'f', 1) + QStringLiteral(" ms");
}

QString withTime(const QString &text, qint64 sinceSendingUs) {
    return sinceSendingUs < 0 ? text : text + QStringLiteral(", %1 after the request").arg(msText(sinceSendingUs));
}

}  // namespace

QString requestVerdict(const dravo::LineEvent &exchange) {
    const bool answered = exchange.replyUs >= 0;
    switch (exchange.failure) {
        case dravo::LineEvent::None:
            return answered ? QStringLiteral("answered after %1").arg(msText(exchange.replyUs))
                            : QStringLiteral("to all stations, nobody answers");
        case dravo::LineEvent::Refused:
            return QStringLiteral("refused after %1").arg(msText(exchange.replyUs));
        case dravo::LineEvent::Damaged:
            return answered ? QStringLiteral("answer rejected by the driver") : QStringLiteral("no whole answer");
        case dravo::LineEvent::NotSure:
            return QStringLiteral("the same came back, answer or echo");
        case dravo::LineEvent::NoAnswer:
            break;
    }
    return QStringLiteral("no answer");
}

QString replyVerdict(const dravo::LineEvent &exchange) {
    return exchange.failure == dravo::LineEvent::Damaged
               ? QStringLiteral("rejected by the driver, %1").arg(msText(exchange.replyUs))
               : QStringLiteral("answer after %1").arg(msText(exchange.replyUs));
}

QString resultText(const dravo::LineEvent &exchange) {
    const bool again = exchange.code == kResultRetry;
    const QString meaning = again && exchange.exceptionCode == 0
                                ? QStringLiteral("sent again")
                                : dravo::describeResult(exchange.code, exchange.exceptionCode) +
                                      (again ? QStringLiteral(", sent again") : QString());
    return QStringLiteral("result %1: %2").arg(exchange.code).arg(meaning);
}

QString dropVerdict(DropCounts::Why why, qint64 sinceSendingUs) {
    switch (why) {
        case DropCounts::Echo:
            return QStringLiteral("echo, dropped");
        case DropCounts::Late:
            return withTime(QStringLiteral("late, dropped"), sinceSendingUs);
        case DropCounts::LateOrForeign:
            return withTime(QStringLiteral("late or foreign, dropped"), sinceSendingUs);
        case DropCounts::Foreign:
            break;
    }
    return withTime(QStringLiteral("foreign, dropped"), sinceSendingUs);
}

QString damageVerdict(Piece::Kind kind, qint64 sinceSendingUs) {
    const QString why = kind == Piece::WrongCrc   ? QStringLiteral("rejected: CRC")
                        : kind == Piece::CutShort ? QStringLiteral("rejected: cut short")
                                                  : QStringLiteral("rejected: no frame");
    return withTime(why, sinceSendingUs);
}
