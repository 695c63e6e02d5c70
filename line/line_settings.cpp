#include "korvel_dravo_line.h"

namespace dravo {

LineSettings::LineSettings()
    : baud(19200),
      bitsPerCharacter(11),
      timeoutUs(500000),
      lifetimeUs(0),
      startSilenceUs(-1),
      turnaroundUs(100000),
      silenceUs(20000),
      busyPauseUs(200000),
      echo(EchoAuto),
      answersMayDouble(false),
      retries(2),
      frameLimit(32),
      remoteNode(-1),
      merge(MergeByDriver),
      replyDelayUs(5000),
      passPeriodUs(0),
      staleAfterUs(0),
      refusedRetryUs(60000000),
      downAfter(3),
      firstProbeUs(1000000),
      longestProbeUs(30000000) {}

LineEvent::LineEvent()
    : kind(Exchange),
      station(0),
      over(false),
      cyclic(false),
      again(false),
      write(false),
      elemType(0),
      address(0),
      count(0),
      code(0),
      failure(None),
      exceptionCode(0),
      replyUs(-1),
      operation(0),
      done(false),
      passUs(0) {}

}  // namespace dravo
