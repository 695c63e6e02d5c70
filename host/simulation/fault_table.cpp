#include "host/simulation/fault_table.h"

namespace simulation {

namespace {

constexpr unsigned kHighestStation = 247;

// Whether the request is lost as well, or only its reply, is drawn with the exchange.
bool loseAnswer(FaultyExchange &exchange, const DrawBelow & /*drawBelow*/) {
    exchange.replyLost = true;
    return true;
}

bool refuse(FaultyExchange &exchange, const DrawBelow &drawBelow) {
    if (exchange.replyLost) {
        return false;
    }
    // Those that pass. A master may take the others, 1 to 3, for final; of them there is "refuse".
    exchange.exceptionCode = drawBelow(2) == 0 ? kDeviceFailure : kDeviceBusy;
    return true;
}

bool nameOtherStation(FaultyExchange &exchange, const DrawBelow &drawBelow) {
    Bytes &reply = exchange.reply;
    reply[0] = static_cast<std::uint8_t>((reply[0] + drawBelow(kHighestStation - 1)) % kHighestStation + 1U);
    reply.resize(reply.size() - 2);
    appendCrc(reply);  // so that nothing but the station is wrong
    return true;
}

bool flipBit(FaultyExchange &exchange, const DrawBelow &drawBelow) {
    const unsigned bit = drawBelow(exchange.reply.size() * 8);
    std::uint8_t &byte = exchange.reply[bit / 8];
    byte = static_cast<std::uint8_t>(byte ^ 1U << bit % 8);
    return true;
}

bool truncate(FaultyExchange &exchange, const DrawBelow &drawBelow) {
    // Something is left: no reply at all is another fault.
    exchange.reply.resize(1 + drawBelow(exchange.reply.size() - 1));
    return true;
}

bool addStrayByte(FaultyExchange &exchange, const DrawBelow &drawBelow) {
    exchange.reply.insert(exchange.reply.begin(), static_cast<std::uint8_t>(drawBelow(256)));
    return true;
}

bool holdBack(FaultyExchange &exchange, const DrawBelow & /*drawBelow*/) {
    exchange.late = true;
    return true;
}

}  // namespace

const std::vector<FaultRow> &faultTable() {
    using Kind = FaultKind;
    using Stage = FaultStage;
    static const std::vector<FaultRow> kFaults{
        {"noreply", Kind::NoReply, "no reply, maybe no request", Stage::Request, &loseAnswer},
        {"exception", Kind::ExceptionReply, "refused, exception 4 or 6", Stage::Request, &refuse},
        {"wrongstation", Kind::WrongStation, "another station's number", Stage::Reply, &nameOtherStation},
        {"flip", Kind::FlippedBit, "one bit flipped", Stage::Reply, &flipBit},
        {"truncated", Kind::Truncated, "bytes missing at the end", Stage::Reply, &truncate},
        {"stray", Kind::StrayByte, "a byte too many before it", Stage::Reply, &addStrayByte},
        {"late", Kind::LateReply, "later than the timeout", Stage::Reply, &holdBack},
    };
    return kFaults;
}

}  // namespace simulation
