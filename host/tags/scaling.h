// A raw value times a scale plus an offset, in exact decimal arithmetic: no two raw values share a text, and a text
// reads back to its raw value. Pure; any thread.
#ifndef DRAVO_HOST_TAGS_SCALING_H
#define DRAVO_HOST_TAGS_SCALING_H

#include <QtCore/QString>
#include <optional>

/// Whole numbers of 10^-decimals.
struct Scaling {
    qint64 scale = 1;   // not 0; 9 digits
    qint64 offset = 0;  // 18 digits
    int decimals = 0;
};

/// Why text cannot be a scale or an offset, whatever the other one is. Empty: it can.
QString decimalFault(const QString &text);

struct ScalingRead {
    Scaling scaling;
    QString scaleFault;  // without the value; both empty: usable
    QString offsetFault;
};
/// Reads decimal numbers such as 0.1 and -40; an empty text is scale 1 or offset 0.
ScalingRead readScaling(const QString &scale, const QString &offset);

/// What is shown of raw, with as many decimals as the longer of scale and offset has. raw: 32 bits, signed or unsigned.
QString scaledText(const Scaling &scaling, qint64 raw);

struct RawRead {
    std::optional<qint64> raw;
    QString allowed;  // where there is none: what can be given instead
};
/// Reads what scaledText() shows; zeros at the end may be more or fewer. Only values that a raw one from lowest to
/// highest (32 bits, signed or unsigned) gives exactly are taken.
RawRead rawOf(const Scaling &scaling, const QString &text, qint64 lowest, qint64 highest);

#endif  // DRAVO_HOST_TAGS_SCALING_H
