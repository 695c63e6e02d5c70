// What a reply is worth: its outcome, and the result code that the host sees. Pure; any thread.
#ifndef DRAVO_CODEC_REPLY_OUTCOME_H
#define DRAVO_CODEC_REPLY_OUTCOME_H

#include "codec/reply_check.h"
#include "korvel_dravo_port.h"

enum Outcome {
    kLocalGood,
    kLocalRejected,
    kLocalNoReply,
    kLocalWrongLength,
    kRemoteGood,
    kRemoteRejected,
    kRemoteNoReply,
    kRemoteWrongLength,
    kOutcomes
};

/// Whether a reply of length bytes is to be checked at all: a request without a reply gets none, any other the length
/// that it expects. Of one that is not, the bytes are not looked at.
bool lengthFits(const Protocol &request, int length);

/// The outcome of a reply of length bytes to a request of the own node.
Outcome localOutcome(const Protocol &request, int length, int checkResult);

/// The same for a request of another node. The read half of a bit write counts as a local success, unless it is the
/// second reply of its operation (repliesBefore is 1).
Outcome remoteOutcome(const Protocol &request, int length, int checkResult, int repliesBefore);

/// The result code of an outcome; 200 for a number that is none. ownerId: of the request.
int resultCode(int outcome, int ownerId);

/// A failure code: base + 1, plus an ownerId of 0 to 11.
int failureCode(int base, int ownerId);

#endif  // DRAVO_CODEC_REPLY_OUTCOME_H
