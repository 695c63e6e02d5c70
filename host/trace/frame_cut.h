// Cuts what has arrived, and was taken for no answer, into frames and what is none. Pure; any thread.
#ifndef DRAVO_HOST_TRACE_FRAME_CUT_H
#define DRAVO_HOST_TRACE_FRAME_CUT_H

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QVector>

struct Piece {
    enum Kind {
        Copy,      // of a request
        Whole,     // a frame with a right CRC
        WrongCrc,  // as long as its header says
        CutShort,
        NoFrame
    };
    int start;
    int size;
    Kind kind;
};

/// Bytes in a piece that is no frame, at most; longer ones become several.
constexpr int kMostDamaged = 256;

/// The bytes in pieces, all of them, in their order. @param requests  whose copies are looked for.
QVector<Piece> cutFrames(const QByteArray &bytes, const QList<QByteArray> &requests);

#endif  // DRAVO_HOST_TRACE_FRAME_CUT_H
