// The driver as the tool binds it.
#include "host/commands/driver_session.h"

#include <gtest/gtest.h>

#include "host/tags/driver_values.h"
#include "support/frame_text.h"

namespace {

TEST(DriverSession, TakesTheRemoteNodeForItsOwn) {
    SerialLink unopened;
    DriverSettings settings;
    settings.remoteNode = 9;
    DriverSession session(settings, unopened);
    Variable variable;
    variable.elemType = 7;
    variable.addressText = "100";
    ASSERT_TRUE(resolve(&variable).isEmpty());
    const int operation = session.readOnce(variable);
    const Protocol *request = ComCommunication();
    ASSERT_NE(request, nullptr);
    EXPECT_EQ(request->frame.mid(2, 3), bytes("00 09 01")) << "read, node, station";
    QByteArray reply = withCrc("0103 02 1234");
    EXPECT_EQ(DataCom(&reply, reply.size())->retValue, kResultGood);
    EXPECT_EQ(session.outcome(operation), DriverSession::OperationState::Done);
    EXPECT_EQ(lastKnownValues(variable), bytes("3412"));
}

}  // namespace
