// Requests as tests write them.
#ifndef DRAVO_TESTS_RECORD_TEXT_H
#define DRAVO_TESTS_RECORD_TEXT_H

#include <gtest/gtest.h>

#include <string>

#include "cache/value_cache.h"
#include "korvel_dravo_port.h"
#include "support/frame_text.h"
#include "support/table.h"

/// "7@100+2 2/8@5+1=3412:3/4^9" is type, address (or any address text) and count, then data, owner and item, node where
/// they are not empty or 0; a station other than 1 comes first. All other fields are 0 or empty.
QList<RW_VAR> records(const std::string &text);
RW_VAR record(const std::string &text);
std::string listText(const QList<RW_VAR> &list);

/// The fields that listText leaves out: "label, addressText: itemId accessFlag remoteMode retValue param1 param2".
std::string otherFields(const RW_VAR &var);

/// The same requests as a host's variables, labelled v0, v1, ...
QList<ReadVarEntry> hostEntries(const std::string &text);

/// "01070064=3412 01070065=7856": every entry by key.
std::string cacheText(const ValueCache &cache);

/// Looks at every field of a request made of var.
void expectRequest(const Protocol &request, const RW_VAR &var, const QByteArray &frame, int replyLength, int dataOffset,
                   int dataLength);

#endif  // DRAVO_TESTS_RECORD_TEXT_H
