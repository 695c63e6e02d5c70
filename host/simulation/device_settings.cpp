#include "host/simulation/device_settings.h"

#include <asm/termbits.h>  // rates of any number; does not go together with <termios.h>
#include <sys/ioctl.h>

namespace simulation {

namespace {

// Input checks without IGNPAR are of programs that have a parity to check; with it, of those that have none.
bool mayBe(Parity parity, tcflag_t input, tcflag_t control) {
    const bool checks = (input & INPCK) != 0;
    if (checks && (input & IGNPAR) != 0) {
        return parity == Parity::None;
    }
    if ((control & PARODD) != 0) {
        return parity == Parity::Odd;
    }
    return parity == Parity::Even || (parity == Parity::None && !checks);
}

}  // namespace

bool mayBeSetTo(int descriptor, int baud, Parity parity) {
    struct termios2 device {};
    return ::ioctl(descriptor, TCGETS2, &device) != 0 ||
           (device.c_ospeed == static_cast<speed_t>(baud) && mayBe(parity, device.c_iflag, device.c_cflag));
}

}  // namespace simulation
