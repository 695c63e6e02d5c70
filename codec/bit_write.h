// The write of a bit inside a word: its word is read, gets the bit, and is written back. Both requests, and the place
// of the value in the second, are this file's. Pure; any thread.
#ifndef DRAVO_CODEC_BIT_WRITE_H
#define DRAVO_CODEC_BIT_WRITE_H

#include "korvel_dravo_port.h"

/// Whether var is written in two halves.
bool isBitWrite(const RW_VAR &var);

struct BitWrite {
    Protocol read;   // the merge read of the whole word
    Protocol write;  // of the same word; its value is zero until completeBitWrite
};

BitWrite bitWrite(const RW_VAR &var);

/// Puts the word that the reply to the merge read carries, with bit bitAddress % 16 switched, and a new CRC into the
/// frame of the write, be it one of function 6 or of function 16. A negative remainder names no bit: the word goes back
/// as it was read. Changes nothing when the reply has five bytes or fewer or the frame is too short.
void completeBitWrite(QByteArray &pendingFrame, const QByteArray &reply, int bitAddress, bool on);

#endif  // DRAVO_CODEC_BIT_WRITE_H
