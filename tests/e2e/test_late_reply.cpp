// Every second reply comes late, and every request expects a reply of the same station and length: nothing in a late
// reply says that it answers an earlier request. The link must never hand one on as the answer to another request.
#include <gtest/gtest.h>

#include "host/pump/serial_link.h"
#include "host/simulation/simulated_line.h"
#include "support/frame_text.h"

namespace {

constexpr int kTimeoutMs = 160;

TEST(SerialLink, NeverTakesALateReplyForAnotherRequest) {
    SimulatedLineOptions options;
    options.stations = {1};
    options.moving = false;
    options.lateBy = std::chrono::milliseconds(kTimeoutMs + kTimeoutMs / 4);
    options.faults = {{FaultKind::LateReply, 0.5}};
    std::unique_ptr<SimulatedLine> line;
    const simulation::Failure refused = SimulatedLine::start(options, &line);
    ASSERT_FALSE(refused) << refused.text();
    for (int address = 0; address < 16; ++address) {
        line->setHoldingRegister(1, address, quint16(0x4100 + address));
    }

    SerialLink link;
    LineSettings settings;
    settings.device = QString::fromStdString(line->device());
    settings.timeoutMs = kTimeoutMs;
    const Failure failure = link.open(settings);
    ASSERT_FALSE(failure) << failure.text().toStdString();
    int answered = 0;
    for (int i = 0; i < 24; ++i) {
        const int address = i % 16;
        const QByteArray request = withCrc(QByteArray("\x01\x03\x00", 3) + char(address) + QByteArray("\x00\x01", 2));
        QByteArray reply;
        ASSERT_EQ(link.exchange(
                      {request, 7, 1}, [] { return true; }, &reply),
                  SerialLink::Result::Done);
        if (!reply.isEmpty()) {
            ASSERT_EQ(reply, withCrc(QByteArray("\x01\x03\x02\x41", 4) + char(address))) << "exchange " << i;
            ++answered;
        }
    }
    EXPECT_GT(answered, 5);
    EXPECT_GT(line->faultCount(FaultKind::LateReply), 5u);
}

}  // namespace
