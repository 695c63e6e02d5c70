#include "fuzz/driver_operations.h"

#include <algorithm>

#include "driver/Communication_Protocol.h"
#include "fuzz/driver_host.h"
#include "fuzz/driver_promises.h"
#include "fuzz/driver_types.h"

using reference::Model;

ComInfo hostRecords[Model::kRecords];

namespace {

int limitInForce() {
    return PLC_driver.comInfo == nullptr ? 1 : PLC_driver.comInfo->maxGroupLength;
}

Operation changeSettings(Choices &choices) {
    static int ComInfo::*const fields[] = {&ComInfo::maxGroupLength, &ComInfo::defaultStation, &ComInfo::retryTimes,
                                           &ComInfo::retryCount,     &ComInfo::useVarStation,  &ComInfo::clearedWordA,
                                           &ComInfo::frameTotal,     &ComInfo::frameDone,      &ComInfo::clearedWordB,
                                           &ComInfo::remoteMode,     &ComInfo::localNode,      &ComInfo::writeMode,
                                           &ComInfo::cycleDone,      &ComInfo::hostArea2};
    int ComInfo::*const field = fields[choices.below(sizeof fields / sizeof fields[0])];
    const int record = choices.below(Model::kRecords);
    const int value = choices.oneIn(2) ? choices.number() : choices.below(3);
    return {[=] {
                hostRecords[record].*field = value;
                return Outcome();
            },
            [=](Model &model) {
                model.records[record].*field = value;
                return Outcome();
            }};
}

Operation addCyclic(Choices &choices, Budget &budget) {
    RW_VAR var = anyRecord(choices);
    budget.entriesFor(1, 1);
    return {[=] {
                RW_VAR own = ownCopy(var);
                const int code = AddListReadVar(&own);
                return Outcome{code, QByteArray(), {own}};
            },
            [=](Model &model) {
                return Outcome{model.addCyclic(var), QByteArray(), {var}};
            }};
}

Operation addOnceRead(Choices &choices, Budget &budget) {
    RW_VAR var = anyRecord(choices);
    const int mode = choices.below(4) - 1;
    var.count = budget.entriesFor(var.count, mode == 1 ? kMaxElementCount : limitInForce());
    return {[=] {
                RW_VAR own = ownCopy(var);
                const int code = AddListOnceReadVar(&own, mode);
                return Outcome{code, QByteArray(), {own}};
            },
            [=](Model &model) {
                RW_VAR own = var;
                const int code = model.addOnceRead(own, mode);
                return Outcome{code, QByteArray(), {own}};
            }};
}

Operation addWrite(Choices &choices, Budget &budget) {
    RW_VAR var = anyRecord(choices);
    const int mode = choices.below(4) - 1;
    var.count = budget.elementsFor(var.count);
    return {[=] {
                RW_VAR own = ownCopy(var);
                const int code = AddListWriteVar(&own, mode);
                return Outcome{code, QByteArray(), {own}};
            },
            [=](Model &model) {
                return Outcome{model.addWrite(var, mode), QByteArray(), {var}};
            }};
}

Operation rebuild(Choices &choices, Budget &budget) {
    QList<ReadVarEntry> entries;
    for (int left = choices.below(16); left > 0; --left) {
        ReadVarEntry entry = ReadVarEntry();
        entry.elemType = static_cast<unsigned char>(choices.elementType());
        entry.station = static_cast<unsigned char>(choices.oneIn(8) ? choices.byte() : choices.below(3));
        entry.addressText = choices.addressText(entry.elemType);
        entry.label = QString::number(left);
        const int count = choices.oneIn(4) ? choices.number() : choices.below(40);
        entry.count = budget.entriesFor(count, limitInForce());
        entries.append(entry);
    }
    return {[=] {
                QList<ReadVarEntry> own = entries;
                return Outcome{ReCreatReadVarList(&own)};
            },
            [=](Model &model) { return Outcome{model.rebuild(entries)}; }};
}

Operation setValues(Choices &choices, Budget &budget) {
    const RW_VAR var = anyRecord(choices);
    const int count = budget.elementsFor(var.count);
    return {[=] {
                const QByteArray values(var.data.constData(), var.data.size());
                return Outcome{SetRegisterData(var.label, var.elemType, var.addressText, var.station, values, count,
                                               var.ownerId, var.itemId)};
            },
            [=](Model &model) {
                RW_VAR record = RW_VAR();
                record.label = var.label;
                record.elemType = var.elemType;
                record.addressText = var.addressText;
                record.station = var.station;
                record.ownerId = var.ownerId;
                record.itemId = var.itemId;
                return Outcome{model.setValues(record, var.data, count)};
            }};
}

Operation getValues(Choices &choices, Budget &budget) {
    const RW_VAR var = anyRecord(choices);
    const int count = budget.elementsFor(var.count);
    return {[=] {
                Outcome outcome{0, var.data};
                outcome.code =
                    GetRegisterData(var.label, var.elemType, var.addressText, var.station, outcome.bytes, count);
                return outcome;
            },
            [=](Model &model) {
                Outcome outcome;
                outcome.code = model.getValues(var.elemType, var.addressText, var.station, outcome.bytes, count);
                return outcome;
            }};
}

Operation enableStation(Choices &choices) {
    const int station = choices.oneIn(4) ? choices.number() : choices.below(4);
    const int enable = choices.below(4) - 1;
    const bool other = choices.oneIn(2);
    return {[=] {
                other ? EnCommStation(station, enable) : EnableEthernet(station, enable);
                return Outcome();
            },
            [=](Model &model) {
                model.enableStation(station, enable);
                return Outcome();
            }};
}

/// What the driver only keeps, or only says.
Operation areaWords(Choices &choices) {
    const auto word = static_cast<unsigned>(choices.number());
    return {[=] {
                FlashLocalRegister(word, word + 1, word + 2);
                const bool kept = LB == word && LW == word + 1 && RWI == word + 2;
                return Outcome{kept ? QueryFinishFlag() : 0};
            },
            [=](Model &) { return Outcome{1}; }};
}

}  // namespace

bool operator==(const Outcome &a, const Outcome &b) {
    return a.code == b.code && a.bytes == b.bytes && sameList(a.records, b.records);
}

int Budget::entriesFor(int count, int limit, int instead) {
    return spend(entries, count < 1 ? 1 : (count - 1LL) / std::max(limit, 1) + 2, count, instead);
}

int Budget::spend(int &rest, qint64 cost, int count, int instead) {
    if (cost > rest && count <= kMaxElementCount) {
        return instead;
    }
    rest -= count > kMaxElementCount ? 0 : static_cast<int>(std::max<qint64>(cost, 0));
    return count;
}

Operation bind(int record) {
    return {[=] {
                SetComInfo(record < Model::kRecords ? &hostRecords[record] : nullptr);
                return Outcome();
            },
            [=](Model &model) {
                model.bind(record);
                return Outcome();
            }};
}

Operation anyCall(Choices &choices, Budget &budget) {
    switch (choices.below(16)) {
        case 0:
            return bind(choices.oneIn(16) ? Model::kRecords : choices.below(Model::kRecords));
        case 1:
            return registerCallbacks(!choices.oneIn(8), !choices.oneIn(8));
        case 2:
        case 3:
            return changeSettings(choices);
        case 4:
            return addCyclic(choices, budget);
        case 5:
        case 6:
            return addOnceRead(choices, budget);
        case 7:
        case 8:
            return addWrite(choices, budget);
        case 9:
            return rebuild(choices, budget);
        case 10:
        case 11:
            return setValues(choices, budget);
        case 12:
        case 13:
            return getValues(choices, budget);
        case 14:
            return enableStation(choices);
        default:
            return choices.oneIn(16) ? areaWords(choices) : pureCall(choices, budget);
    }
}

Operation callInCallback(Choices &choices, Budget &budget) {
    switch (choices.below(8)) {
        case 0:
            return bind(choices.below(Model::kRecords + 1));
        case 1:
            return addCyclic(choices, budget);
        case 2:
            return getValues(choices, budget);
        case 3:
            return enableStation(choices);
        case 4:
            return pureCall(choices, budget);
        default:
            return setValues(choices, budget);
    }
}

RW_VAR anyRecord(Choices &choices) {
    static const int stations[] = {1, 2, 1, 0};
    RW_VAR var = RW_VAR();
    const bool usual = !choices.oneIn(4);
    var.elemType = choices.elementType();
    var.addressText = choices.addressText(var.elemType);
    var.address = usual ? std::max(reference::elementAddress(var.elemType, var.addressText), 0) : choices.number();
    var.station = usual ? stations[choices.below(4)] : choices.number();
    var.count = usual ? 1 + choices.below(40) : choices.number();
    var.ownerId = usual ? choices.below(3) : choices.number();
    var.itemId = choices.below(3);
    var.nodeId = usual ? 0 : choices.below(3);
    if (!usual) {
        var.accessFlag = choices.oneIn(2) ? choices.number() : 0;
        var.remoteMode = choices.below(3);
        var.retValue = choices.below(3) - 1;
        var.param1 = choices.below(3) - 1;
        var.param2 = choices.number();
    }
    var.label = QString::number(choices.below(10));
    var.data = choices.bytes(choices.oneIn(8) ? 255 : 20);
    return var;
}

RW_VAR ownCopy(const RW_VAR &var) {
    RW_VAR copy = var;
    copy.data.detach();
    copy.label.detach();
    copy.addressText.detach();
    return copy;
}
