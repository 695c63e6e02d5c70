// What comes back for a request: a good reply, one that was damaged on the way, or anything.
#ifndef DRAVO_FUZZ_DRIVER_REPLIES_H
#define DRAVO_FUZZ_DRIVER_REPLIES_H

#include "fuzz/driver_choices.h"
#include "korvel_dravo_port.h"

struct Reply {
    bool isNull;
    QByteArray bytes;
    int length;  // as the host says it
};

/// @param request  null: none is outstanding.
Reply anyReply(Choices &choices, const Protocol *request, bool remoteMode);
Reply goodReply(Choices &choices, const Protocol &request, bool remoteMode);

#endif  // DRAVO_FUZZ_DRIVER_REPLIES_H
