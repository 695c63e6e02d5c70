#include "hosts.h"

#include <fcntl.h>
#include <modbus.h>
#include <termios.h>
#include <unistd.h>

#include <QtCore/QEventLoop>
#include <QtCore/QVariant>
#include <QtSerialBus/QModbusDataUnit>
#include <QtSerialBus/QModbusReply>
#include <QtSerialBus/QModbusRtuSerialMaster>
#include <stdexcept>
#include <vector>

#include "driver_work.h"

namespace {

class DriverInMemory : public Host {
public:
    explicit DriverInMemory(int registers) : reply_(readReply(1, registers)) {
        bindHost();
        fillCyclicList(1, registers);
    }
    bool exchange() override { return ComCommunication() && DataCom(&reply_, reply_.size())->retValue == kResultGood; }

private:
    QByteArray reply_;
};

// A host whose port gives up a read by itself, so that it needs no other call to wait.
class DriverOnPort : public Host {
public:
    DriverOnPort(int registers, int port) : port_(port) {
        bindHost();
        fillCyclicList(1, registers);
    }
    bool exchange() override {
        const Protocol *request = ComCommunication();
        if (!request || write(port_, request->frame.constData(), size_t(request->frameLength)) < 0) {
            return false;
        }
        reply_.resize(request->replyLength);
        int received = 0;
        while (received < reply_.size()) {
            const ssize_t got = read(port_, reply_.data() + received, size_t(reply_.size() - received));
            if (got <= 0) {
                break;
            }
            received += int(got);
        }
        return DataCom(&reply_, received)->retValue == kResultGood;
    }

protected:
    int port_;

private:
    QByteArray reply_;
};

class DriverOnTerminal : public DriverOnPort {
public:
    DriverOnTerminal(int registers, const std::string &path)
        : DriverOnPort(registers, open(path.c_str(), O_RDWR | O_NOCTTY)) {
        termios settings;
        if (port_ < 0 || tcgetattr(port_, &settings) != 0) {
            throw std::runtime_error(path);
        }
        cfmakeraw(&settings);
        settings.c_cc[VMIN] = 0;
        settings.c_cc[VTIME] = 10;
        tcsetattr(port_, TCSANOW, &settings);
    }
    ~DriverOnTerminal() override { close(port_); }
};

class Libmodbus : public Host {
public:
    Libmodbus(int registers, const std::string &path)
        : context_(modbus_new_rtu(path.c_str(), 115200, 'N', 8, 1)), values_(size_t(registers)) {
        modbus_set_slave(context_, 1);
    }
    ~Libmodbus() override { modbus_free(context_); }
    bool exchange() override {
        return modbus_read_registers(context_, 0, int(values_.size()), values_.data()) == int(values_.size());
    }
    modbus_t *context() const { return context_; }

private:
    modbus_t *context_;
    std::vector<uint16_t> values_;
};

class LibmodbusOnTerminal : public Libmodbus {
public:
    LibmodbusOnTerminal(int registers, const std::string &path) : Libmodbus(registers, path) {
        if (modbus_connect(context()) != 0) {
            throw std::runtime_error(path);
        }
    }
    ~LibmodbusOnTerminal() override { modbus_close(context()); }
};

class QtSerialBus : public Host {
public:
    QtSerialBus(int registers, const std::string &path)
        : registers_(QModbusDataUnit::HoldingRegisters, 0, quint16(registers)) {
        master_.setConnectionParameter(QModbusDevice::SerialPortNameParameter, QString::fromStdString(path));
        master_.setConnectionParameter(QModbusDevice::SerialBaudRateParameter, 115200);
        master_.setTimeout(1000);
        if (!master_.connectDevice()) {
            throw std::runtime_error(path);
        }
    }
    ~QtSerialBus() override { master_.disconnectDevice(); }
    bool exchange() override {
        const std::unique_ptr<QModbusReply> reply(master_.sendReadRequest(registers_, 1));
        if (reply && !reply->isFinished()) {
            QEventLoop loop;
            QObject::connect(reply.get(), &QModbusReply::finished, &loop, &QEventLoop::quit);
            loop.exec();
        }
        return reply && reply->error() == QModbusDevice::NoError &&
               reply->result().valueCount() == registers_.valueCount();
    }

private:
    QModbusRtuSerialMaster master_;
    QModbusDataUnit registers_;
};

}  // namespace

std::unique_ptr<Host> driverHost(int registers) {
    return std::make_unique<DriverInMemory>(registers);
}

std::unique_ptr<Host> driverHost(int registers, int descriptor) {
    return std::make_unique<DriverOnPort>(registers, descriptor);
}

std::unique_ptr<Host> driverHost(int registers, const std::string &path) {
    return std::make_unique<DriverOnTerminal>(registers, path);
}

std::unique_ptr<Host> libmodbusHost(int registers, int descriptor) {
    auto host = std::make_unique<Libmodbus>(registers, "memory");
    modbus_set_socket(host->context(), descriptor);
    return host;
}

std::unique_ptr<Host> libmodbusHost(int registers, const std::string &path) {
    return std::make_unique<LibmodbusOnTerminal>(registers, path);
}

std::unique_ptr<Host> qtSerialBusHost(int registers, const std::string &path) {
    return std::make_unique<QtSerialBus>(registers, path);
}
