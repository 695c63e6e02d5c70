#include "remote/remote_request.h"

#include "support/record_text.h"

namespace {

// Every field as it stands in the record.

TEST(RemoteRequest, Reads) {
    for (const TableRow &row : table(cases("remote/remote_request", "reads"))) {
        SCOPED_TRACE(row.line());
        const RW_VAR var = record(row["variable"]);
        const int data = row.number("data");
        expectRequest(remoteReadRequest(var), var, bytes(row["frame"]), data + 5, 3, data);
    }
    RW_VAR var = record("13@305419896+300:5/6^2");
    var.param1 = 0x01020304;
    var.param2 = -2;
    EXPECT_EQ(remoteReadRequest(var).frame, bytes("16 05 00 02 01 000d 12345678 012c 01020304 fffffffe 71"));
}

TEST(RemoteRequest, WritesCarryTheirDataAsTheyStand) {
    RW_VAR var = record("7@100+1=3412:5/6^2");
    var.accessFlag = 1;
    expectRequest(remoteWriteRequest(var), var, bytes("18 05 01 02 01 0007 00000064 0001 00000000 00000000 3412 d3"), 8,
                  0, 0);
    var.station = 0;
    const int lengths[][2] = {{233, 255}, {234, 0}, {600, 110}};
    for (const auto &[data, lengthByte] : lengths) {
        var.data = QByteArray(data, '\x01');
        const Protocol request = remoteWriteRequest(var);
        EXPECT_EQ(static_cast<unsigned char>(request.frame.at(0)), lengthByte) << "wraps at 256";
        EXPECT_EQ(request.frameLength, 22 + data);
        EXPECT_EQ(request.replyLength, 0) << "a broadcast";
    }
}

}  // namespace
