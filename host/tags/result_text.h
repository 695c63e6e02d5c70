// Result codes and exception codes in words. Pure; any thread.
#ifndef DRAVO_HOST_TAGS_RESULT_TEXT_H
#define DRAVO_HOST_TAGS_RESULT_TEXT_H

#include <QtCore/QString>

enum class Outcome { Good, Retry, NoReply, WrongLength, Rejected };

/// What a result code of DataCom says, whatever the request's ownerId added to it.
Outcome outcomeOf(int code);

/// The result code in words; a failed request that was refused with an exception (exceptionCode not 0) is named by
/// that.
QString describeResult(int code, int exceptionCode = 0);

#endif  // DRAVO_HOST_TAGS_RESULT_TEXT_H
