// The texts that dravo-host reads, each with what must hold of it: it takes bounded time, what is refused is refused in
// words, and what is taken reads the same when it is written back.
#ifndef DRAVO_FUZZ_TOOL_TEXTS_H
#define DRAVO_FUZZ_TOOL_TEXTS_H

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

#include "fuzz/promise.h"

void readAsTagList(const QByteArray &text);
void readAsCsv(const QByteArray &text);
/// Lines: kind, format, scale, offset, unit, and values.
void readAsValues(const QByteArray &text);
void readAsFaults(const QByteArray &text);
void readAsTurnarounds(const QByteArray &text);
void readAsLists(const QByteArray &text);
void readAsGatewayCommand(const QByteArray &text);

/// That something is refused in words: none of its faults is empty.
inline void expectWords(const QStringList &faults) {
    expect(!faults.contains(QString()), "a text is refused without a word");
}

#endif  // DRAVO_FUZZ_TOOL_TEXTS_H
