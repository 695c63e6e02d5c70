#include "codec/reply_outcome.h"

#include "codec/protocol.h"

namespace {

const int kUnknownOutcome = 200;
const int kNumberedOwners = 12;  // ownerIds 0 to 11 have failure codes of their own

struct OutcomeCode {
    int code;
    bool isFailureBase;  // the ownerId completes it
};
const OutcomeCode kOutcomeCodes[] = {
    {kResultGood, false},         {kResultLocalRejected, true},
    {kResultLocalNoReply, true},  {kResultLocalWrongLength, true},
    {kResultRemoteGood, false},   {kResultRemoteRejected, true},
    {kResultRemoteNoReply, true}, {kResultRemoteWrongLength, true},
};
static_assert(sizeof kOutcomeCodes / sizeof kOutcomeCodes[0] == kOutcomes, "one code per outcome");

bool nothingCame(const Protocol &request, int length) {
    return length == 0 && request.replyLength != 0;
}

bool hasWrongLength(const Protocol &request, int length) {
    return request.replyLength != length && request.replyLength != kAnyReplyLength;
}

bool isAccepted(int checkResult) {
    return checkResult == kReplyToStore || checkResult == kReplyComplete;
}

}  // namespace

bool lengthFits(const Protocol &request, int length) {
    return !nothingCame(request, length) && !hasWrongLength(request, length);
}

Outcome localOutcome(const Protocol &request, int length, int checkResult) {
    if (nothingCame(request, length)) {
        return kLocalNoReply;
    }
    if (hasWrongLength(request, length)) {
        return kLocalWrongLength;
    }
    return isAccepted(checkResult) ? kLocalGood : kLocalRejected;
}

Outcome remoteOutcome(const Protocol &request, int length, int checkResult, int repliesBefore) {
    if (nothingCame(request, length)) {
        return kRemoteNoReply;
    }
    if (hasWrongLength(request, length)) {
        return kRemoteWrongLength;
    }
    if (!isAccepted(checkResult)) {
        return kRemoteRejected;
    }
    return isMergeRead(request) && repliesBefore != 1 ? kLocalGood : kRemoteGood;
}

int resultCode(int outcome, int ownerId) {
    if (outcome < 0 || outcome >= kOutcomes) {
        return kUnknownOutcome;
    }
    const OutcomeCode &row = kOutcomeCodes[outcome];
    return row.isFailureBase ? failureCode(row.code, ownerId) : row.code;
}

int failureCode(int base, int ownerId) {
    return base + 1 + (ownerId >= 0 && ownerId < kNumberedOwners ? ownerId : 0);
}
