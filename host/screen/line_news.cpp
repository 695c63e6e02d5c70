#include "host/screen/line_news.h"

#include "korvel_dravo_elements.h"

namespace {

qint64 endOf(int first, int count) {
    return qint64(first) + count;
}

/// As the user writes it.
QString addressWords(int elemType, int address) {
    const dravo::ElementType *type = dravo::findElementType(elemType);
    return QString::number(address, type != nullptr ? type->textBase : 10);
}

}  // namespace

qint64 LineNews::groupOf(const dravo::Elements &elements) {
    return qint64(elements.station) << 32 | quint32(elements.elemType);
}

void LineNews::take(const dravo::LineEvent &event, qint64 nowUs) {
    if (event.kind != dravo::LineEvent::Exchange) {
        return;
    }
    if (event.failure == dravo::LineEvent::None || event.failure == dravo::LineEvent::Refused) {
        answeredAtUs_[event.station] = nowUs;
    }
    if (!event.over || event.write || !(event.cyclic || event.again)) {
        return;
    }
    const bool failed = event.failure != dravo::LineEvent::None;
    const qint64 group = groupOf({event.station, event.elemType, event.address, event.count});
    if (!failed && !failures_.contains(group)) {
        return;
    }
    ByAddress &known = failures_[group];
    auto at = known.lowerBound(event.address);
    if (at != known.begin() && endOf((at - 1).key(), (at - 1)->count) > event.address) {
        --at;
    }
    while (at != known.end() && at.key() < endOf(event.address, event.count)) {
        at = known.erase(at);
    }
    if (failed) {
        known.insert(event.address, {event.count, event.code, event.exceptionCode});
    } else if (known.isEmpty()) {
        failures_.remove(group);
    }
}

QString LineNews::sharedRequest(const dravo::Variable &variable, const dravo::ValueState &state) const {
    const dravo::Elements &own = variable.elements;
    const ByAddress known = failures_.value(groupOf(own));
    for (auto at = known.begin(); at != known.end(); ++at) {
        const bool touches = at.key() < endOf(own.address, own.count) && endOf(at.key(), at->count) > own.address;
        const bool isJustIt = at.key() == own.address && at->count == own.count;
        if (touches && !isJustIt && at->code == state.code && at->exceptionCode == state.exceptionCode) {
            const bool isPart = at.key() >= own.address && endOf(at.key(), at->count) <= endOf(own.address, own.count);
            return QStringLiteral("%1 %2 to %3, ")
                .arg(isPart ? QStringLiteral("its part") : QStringLiteral("in one request with"),
                     addressWords(own.elemType, at.key()),
                     addressWords(own.elemType, int(endOf(at.key(), at->count) - 1)));
        }
    }
    return QString();
}
