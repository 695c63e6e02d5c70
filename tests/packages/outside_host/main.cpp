// A host in ten lines, built outside the source tree: binds the driver, asks for a request and prints its frame.
#include <korvel_dravo_port.h>

#include <cstdio>

int main() {
    ComInfo settings = ComInfo();
    settings.maxGroupLength = 32;
    SetComInfo(&settings);
    RW_VAR var = RW_VAR();
    var.elemType = 7;
    var.address = 100;
    var.station = 1;
    var.count = 2;
    AddListReadVar(&var);
    std::puts(ComCommunication()->frame.toHex().constData());
}
