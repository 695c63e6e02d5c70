#include "remote/remote_request.h"

#include "support/record_text.h"

namespace {

// Every field as it stands in the record; data: bytes in the reply to a read.

TEST(RemoteRequest, EveryField) {
    for (const TableRow &row : table(cases("remote/remote_request", "requests"))) {
        SCOPED_TRACE(row.line());
        const RW_VAR var = record(row["variable"]);
        if (row.empty("data")) {
            expectRequest(remoteWriteRequest(var), var, bytes(row["frame"]), var.station == 0 ? 0 : 8, 0, 0);
        } else {
            const int data = row.number("data");
            expectRequest(remoteReadRequest(var), var, bytes(row["frame"]), data + 5, 3, data);
        }
    }
    RW_VAR var = record("13@305419896+300:5/6^2");
    var.accessFlag = 3;
    var.param1 = 0x01020304;
    var.param2 = -2;
    EXPECT_EQ(remoteReadRequest(var).frame, bytes("16 05 03 02 01 000d 12345678 012c 01020304 fffffffe 74"));
    for (const int data : {233, 234, 600}) {
        var.data = QByteArray(data, '\x01');
        EXPECT_EQ(remoteWriteRequest(var).frame.at(0), char(22 + data)) << "wraps at 256";
    }
}

}  // namespace
