// Frames in what arrives, where several are expected.
#include "line/frame_finder.h"

#include <gtest/gtest.h>

#include "line/echo_watch.h"
#include "line/outstanding.h"

namespace {

// In remote mode only station and length are known of an answer. The first 7 bytes of this answer of 8 have a right
// CRC too, and an answer of 7 is expected as well.
TEST(FrameFinder, TakesAnAnswerWholeThatHasAnotherInside) {
    const QByteArray whole = QByteArray::fromHex("0110002800030000");
    dravo::Outstanding outstanding(false);
    for (const int length : {7, 8}) {
        dravo::RequestShape shape = dravo::RequestShape();
        shape.station = 1;
        shape.function = dravo::kAnyFunction;
        shape.replyLength = length;
        outstanding.sent({shape, length, false, 0}, 0, 1000);
    }
    for (const int portion : {1, 7, 8}) {
        dravo::FrameFinder finder(0);
        dravo::Frame frame;
        for (int i = 0; i < whole.size(); i += portion) {
            EXPECT_FALSE(finder.take(outstanding, dravo::EchoWatch(dravo::EchoOff), false, &frame));
            finder.received(whole.mid(i, portion), 10 + i);
        }
        ASSERT_TRUE(finder.take(outstanding, dravo::EchoWatch(dravo::EchoOff), false, &frame));
        EXPECT_EQ(frame.bytes, whole) << portion;
    }
}

}  // namespace
