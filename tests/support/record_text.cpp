#include "support/record_text.h"

#include <QtCore/QRegExp>
#include <QtCore/QStringList>
#include <stdexcept>
#include <tuple>

QList<RW_VAR> records(const std::string &text) {
    QRegExp match(
        QLatin1String("(?:(-?\\d+)/)?(-?\\d+)@([^+]*)\\+(-?\\d+)(?:=(\\w*))?(?::(\\d+)/(\\d+))?(?:\\^(\\d+))?"));
    QList<RW_VAR> list;
    for (const QString &word : QString::fromStdString(text).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (!match.exactMatch(word)) {
            throw std::logic_error("no request: " + text);
        }
        const auto number = [&match](int part) { return match.cap(part).toInt(); };
        list.append({number(6), number(7), 0, 0, number(8), 0, QString(), match.cap(3), number(2), number(3),
                     match.cap(1).isEmpty() ? 1 : number(1), number(4), 0, 0,
                     QByteArray::fromHex(match.cap(5).toLatin1())});
    }
    return list;
}

RW_VAR record(const std::string &text) {
    return records(text).at(0);
}

std::string listText(const QList<RW_VAR> &list) {
    QStringList words;
    for (const RW_VAR &var : list) {
        const bool hasOwner = var.ownerId > 0 || var.itemId > 0;
        words += (var.station != 1 ? QString::asprintf("%d/", var.station) : QString()) +
                 QString::asprintf("%d@%d+%d", var.elemType, var.address, var.count) +
                 (var.data.isEmpty() ? QString() : QString::fromLatin1("=" + var.data.toHex())) +
                 (hasOwner ? QString::asprintf(":%d/%d", var.ownerId, var.itemId) : QString()) +
                 (var.nodeId != 0 ? QString::asprintf("^%d", var.nodeId) : QString());
    }
    return words.join(QLatin1Char(' ')).toStdString();
}

std::string otherFields(const RW_VAR &var) {
    return qPrintable(var.label + QLatin1String(", ") + var.addressText +
                      QString::asprintf(": %d %d %d %d %d %d", var.itemId, var.accessFlag, var.remoteMode, var.retValue,
                                        var.param1, var.param2));
}

QList<ReadVarEntry> hostEntries(const std::string &text) {
    QList<ReadVarEntry> entries;
    for (const RW_VAR &var : records(text)) {
        const QString label = QString::fromLatin1("v%1").arg(entries.size());
        entries.append({0, uchar(var.elemType), uchar(var.station), {}, var.addressText, label, var.count});
    }
    return entries;
}

std::string cacheText(const ValueCache &cache) {
    QStringList words;
    for (auto entry = cache.constBegin(); entry != cache.constEnd(); ++entry) {
        words += QString::asprintf("%08x=%s", entry.key().bits, entry.value().toHex().constData());
    }
    words.sort();
    return words.join(QLatin1Char(' ')).toStdString();
}

void expectRequest(const Protocol &request, const RW_VAR &var, const QByteArray &frame, int replyLength, int dataOffset,
                   int dataLength) {
    EXPECT_EQ(request.frame, frame);
    EXPECT_EQ(std::make_tuple(request.frameLength, request.replyLength, request.dataOffset, request.dataLength),
              std::make_tuple(frame.size(), replyLength, dataOffset, dataLength));
    EXPECT_EQ(listText({request.var}), listText({var}));
}
