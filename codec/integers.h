// Narrowing of widened integers: the two ways there are, by name. Pure; any thread.
#ifndef DRAVO_CODEC_INTEGERS_H
#define DRAVO_CODEC_INTEGERS_H

#include <QtCore/QtGlobal>

#include <climits>

/// The nearest int: for lengths and counts, which must not turn into other valid ones.
inline int saturated(qint64 value) {
    return value > INT_MAX ? INT_MAX : value < INT_MIN ? INT_MIN : int(value);
}

/// The low 32 bits: for addresses, of which the wire and the cache carry the low 16.
inline int wrapped(qint64 value) {
    return int(quint32(quint64(value)));
}

#endif  // DRAVO_CODEC_INTEGERS_H
