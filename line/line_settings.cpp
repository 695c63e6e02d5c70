#include "line/line_settings.h"

#include "line/line_times.h"

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

LineSettings inRange(const LineSettings &given) {
    const qint64 longest = Q_INT64_C(86400000000);  // a day
    LineSettings settings = given;
    settings.baud = qBound(50, given.baud, 100000000);
    settings.bitsPerCharacter = qBound(10, given.bitsPerCharacter, 12);
    settings.timeoutUs = qBound<qint64>(1, given.timeoutUs, longest);
    const qint64 lifetimeUs = given.lifetimeUs <= 0 ? 3 * settings.timeoutUs : given.lifetimeUs;
    // At a low baud rate the longest answer alone takes longer than some lifetimes.
    const int longestReply = 5 + 2 * qBound(1, given.frameLimit, 125);
    const qint64 shortestUs = settings.timeoutUs + LineTimes(settings).charactersUs(longestReply);
    settings.lifetimeUs = qBound(shortestUs, lifetimeUs, qMax(shortestUs, 3 * longest));
    settings.startSilenceUs = given.startSilenceUs < 0 ? settings.lifetimeUs : qMin(given.startSilenceUs, 3 * longest);
    settings.frameLimit = qBound(1, given.frameLimit, 125);  // registers in a Modbus read
    settings.remoteNode = qBound(-1, given.remoteNode, 255);
    settings.retries = qBound(0, given.retries, 1000000);
    settings.replyDelayUs = qBound<qint64>(0, given.replyDelayUs, longest);
    settings.passPeriodUs = qBound<qint64>(0, given.passPeriodUs, longest);
    settings.staleAfterUs = qBound<qint64>(0, given.staleAfterUs, 365 * longest);
    settings.refusedRetryUs = qBound<qint64>(1000000, given.refusedRetryUs, longest);
    settings.turnaroundUs = qBound<qint64>(0, given.turnaroundUs, longest);
    settings.silenceUs = qBound<qint64>(0, given.silenceUs, longest);
    settings.busyPauseUs = qBound<qint64>(0, given.busyPauseUs, longest);
    settings.firstProbeUs = qBound<qint64>(1, given.firstProbeUs, longest);
    settings.longestProbeUs = qBound(settings.firstProbeUs, given.longestProbeUs, longest);
    return settings;
}

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
