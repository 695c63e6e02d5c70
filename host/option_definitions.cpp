#include "host/option_definitions.h"

namespace {

const char kGeneralHelp[] =
    R"(Usage: dravo-host COMMAND [options]
Reads and writes the values of controllers through the driver library, over a serial port or, without
--port, over a simulated line with simulated controllers.

Commands:
  monitor                      watch the values of a tag list
  read TYPE ADDRESS            read values once
  write TYPE ADDRESS VALUE...  write values and read them back
  simulate                     serve a simulated line for other programs

dravo-host COMMAND --help lists the options of a command.
Exit status: 0 done, 1 a request failed or was refused, 2 usage or tag list, 3 the port could not be opened.
)";

const char kMonitorHelp[] =
    R"(Reads the variables of a tag list over and over and shows each value with its age and state: fresh,
stale (older than three passes and at least 3 seconds), never read, or failing with the result code and
its meaning. A value never read is shown as '-'.

On a terminal the values stand on a live screen: arrow keys select, w writes the selected value, q or
Ctrl-C leaves. Otherwise, or when --format is given, there is one record per value and pass.

The tag list is CSV with the header line label,type,address,station,count; count is in bits, registers
or 32-bit values, 1 to 2000. Bits are shown as 0 or 1, everything else as unsigned decimal numbers.)";

const char kReadHelp[] = "Reads values once. Bits are shown as 0 or 1, everything else as unsigned decimal numbers.";

const char kWriteHelp[] =
    R"(Writes values and reads them back. Bits are shown as 0 or 1, everything else as unsigned decimal
numbers.)";

const char kSimulateHelp[] =
    R"(Serves a simulated line with one controller per station until Ctrl-C. Prints the paths of two devices
on it: one for dravo-host --port, one for a second master such as another Modbus client.)";

void addLineOptions(CommandLine &line) {
    line.add("port", "DEVICE", "Serial port; without it the simulated line is used.");
    line.add("baud", "N", "Bits per second, 50 to 4000000 (19200).");
    line.add("parity", "none|even|odd", "Parity (even).");
    line.add("stop-bits", "1|2", "Stop bits (1).");
    line.add("timeout", "MS",
             "Longest wait for a reply's first byte, 1 to 60000 (500). Give more than the slowest controller "
             "takes: a reply is lost for good after one and a half times this.");
    line.add("retries", "N", "Times a request is sent again after a bad reply, 0 to 100 (2).");
    line.add("frame-limit", "N",
             "Most elements in a request, 1 to 125, eight times as many coils (32). Above 61 a request of 32-bit "
             "values, above 123 a write, is more than Modbus allows.");
}

void addSharedOptions(CommandLine &line) {
    line.add("remote-node", "N",
             "Send remote frames for node N, 0 to 255, instead of controller frames. N is also taken as the own "
             "node, so that all records name it, replies are stored and writes are reported.");
    line.add("faults", "LIST",
             "Faults of the simulated line, each with a probability: noreply=P, late=P, truncated=P, flip=P, "
             "wrongstation=P, stray=P, exception=P; dead=STATION, seed=N.");
}

void describe(CommandLine &line, const char *description) {
    line.parser().setApplicationDescription(description);
}

void addMonitor(CommandLine &line) {
    describe(line, kMonitorHelp);
    line.add("tags", "FILE", "The tag list (a built-in sample).");
    line.add("passes", "N", "Stop after N passes over the variables.");
    line.add("seconds", "N",
             "Stop after N seconds. Without either, a run on the simulated line without a terminal stops after 5 "
             "passes; any other goes on.");
    line.add("format", "table|csv|json", "Records in this form instead of the live screen.");
    line.add("period", "MS",
             "Least time from the start of a pass to the next, 0 to 3600000 (200 on the simulated line, 0 on a "
             "port).");
    addLineOptions(line);
    addSharedOptions(line);
}

void addAccess(CommandLine &line, Command command) {
    const bool write = command == Command::Write;
    describe(line, write ? kWriteHelp : kReadHelp);
    line.parser().addPositionalArgument("TYPE", "Element type, 0 to 21; 12, 13, 14, 18 and 21 hold 32-bit values.");
    line.parser().addPositionalArgument("ADDRESS",
                                        "Octal for types 0 and 1, word.bit for 15, 16, 17 and 20, else decimal.");
    if (write) {
        line.parser().addPositionalArgument(
            "VALUE", "Decimal, also negative, or 0x hexadecimal; for bits on, off, 1 or 0. One for each element.");
    } else {
        line.add("count", "N", "Values to read, 1 to 2000 (1).");
    }
    line.add("station", "S", "Station of the controller, 1 to 247 (1).");
    addLineOptions(line);
    addSharedOptions(line);
}

void addSimulate(CommandLine &line) {
    describe(line, kSimulateHelp);
    line.add("link", "FILE", "Make FILE a symbolic link to the first device while serving.");
    line.add("second-link", "FILE", "Make FILE a symbolic link to the second device.");
    line.add("stations", "LIST", "Stations, such as 1,2,3 (these).");
    line.add("seconds", "N", "Stop after N seconds.");
    line.add("timeout", "MS", "Timeout of the masters, which a late reply passes (500).");
    line.add("baud", "N", "Bits per second, for the silence between frames (19200).");
    addSharedOptions(line);
}

}  // namespace

QString usageLine(Command command) {
    switch (command) {
        case Command::Monitor:
            return "Usage: dravo-host monitor [options]";
        case Command::Read:
            return "Usage: dravo-host read TYPE ADDRESS [options]";
        case Command::Write:
            return "Usage: dravo-host write TYPE ADDRESS VALUE... [options]";
        case Command::Simulate:
            return "Usage: dravo-host simulate [options]";
    }
    return QString();
}

const char *generalHelp() {
    return kGeneralHelp;
}

void addOptions(CommandLine &line, Command command) {
    switch (command) {
        case Command::Monitor:
            return addMonitor(line);
        case Command::Read:
        case Command::Write:
            return addAccess(line, command);
        case Command::Simulate:
            return addSimulate(line);
    }
}
