// What a master has set its device to, seen from the other end of the pseudo-terminal. Any thread.
#ifndef DRAVO_DEVICE_SETTINGS_H
#define DRAVO_DEVICE_SETTINGS_H

namespace simulation {

enum class Parity { None, Even, Odd };

/// Whether the master may have set this baud rate and parity. A pseudo-terminal keeps every rate, but of the parity
/// only what stands beside its switch: whether it is odd, and what becomes of a byte with a wrong one. Where that
/// leaves room, as with programs that let every byte in, the answer is yes. descriptor: of the relay's end.
bool mayBeSetTo(int descriptor, int baud, Parity parity);

}  // namespace simulation

#endif
