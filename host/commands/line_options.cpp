#include "host/commands/line_options.h"

namespace {

constexpr Bounds kRetries{0, 100};
constexpr Bounds kFrameLimit{1, 125};  // registers that a Modbus read carries; eight times as many coils fit as well
constexpr Bounds kNode{0, 255};

QStringList takeFaults(SimulatedLineOptions *simulation, const QString &text) {
    const simulation::Failure failure = parseFaults(text, simulation);
    return failure ? QStringList{QString::fromStdString(failure.text())} : QStringList();
}

}  // namespace

void addLineOptions(OptionSet *options, Options *settings) {
    LineSettings &line = settings->line;
    options->addText("port", "DEVICE", &line.device, "Serial port; without it the simulated line is used.");
    options->addNumber("baud", "N", kBaud, &line.baud, "Bits per second.");
    options->addChoice<QSerialPort::Parity>(
        "parity", {{"none", QSerialPort::NoParity}, {"even", QSerialPort::EvenParity}, {"odd", QSerialPort::OddParity}},
        &line.parity, "Parity.");
    options->addChoice<QSerialPort::StopBits>("stop-bits", {{"1", QSerialPort::OneStop}, {"2", QSerialPort::TwoStop}},
                                              &line.stopBits, "Stop bits.");
    options->addNumber("timeout", "MS", kTimeoutMs, &line.timeoutMs,
                       "Longest wait for a reply's first byte. Give more than the slowest controller takes: a reply is "
                       "lost for good after one and a half times this.");
    options->addNumber("retries", "N", kRetries, &settings->driver.retries,
                       "Times a request is sent again after a bad reply.");
    options->addNumber("frame-limit", "N", kFrameLimit, &settings->driver.frameLimit,
                       "Most elements in a request. Eight times as many coils. Above 61 a request of 32-bit values, "
                       "above 123 a write, is more than Modbus allows.");
    options->exclude("port", "faults", "--faults are faults of the simulated line and do not go with --port");
}

void addSimulationOptions(OptionSet *options, Options *settings) {
    options->addNumber("remote-node", "N", kNode, &settings->driver.remoteNode,
                       "Send remote frames for this node instead of controller frames. It is also taken as the own "
                       "node, so that all records name it, replies are stored and writes are reported.");
    SimulatedLineOptions &simulation = settings->simulation;
    options->add("faults", "LIST",
                 "Faults of the simulated line, separated by commas; P is the probability for each exchange:\n" +
                     faultListHelp(),
                 [&simulation](const QString &text) { return takeFaults(&simulation, text); });
}
