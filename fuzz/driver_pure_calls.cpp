// The functions without state that the library exports beside the driver.
#include <algorithm>
#include <vector>

#include "fuzz/driver_cuts.h"
#include "fuzz/driver_frames.h"
#include "fuzz/driver_operations.h"
#include "fuzz/driver_types.h"

namespace {

typedef QList<RW_VAR> Records;

Operation pure(std::function<Outcome()> call, std::function<Outcome()> expected) {
    return {std::move(call), [expected = std::move(expected)](reference::Model &) { return expected(); }};
}

Operation checksum(Choices &choices) {
    const QByteArray some = choices.bytes(64);
    const int size = choices.oneIn(8) ? choices.smallNumber() : some.size();
    const int which = choices.below(4);
    const QByteArray bytes =
        some.isEmpty() ? QByteArray(size, '\xA5') : some.repeated(size / some.size() + 1).left(size);
    return pure(
        [=] {
            std::vector<unsigned char> own(bytes.begin(), bytes.end());  // no byte more, so that a read past it shows
            const auto length = static_cast<unsigned short>(own.size());
            int (*const functions[])(unsigned char *, unsigned short) = {CalCRC, CalSUM, CalLRC, CalXOR};
            return Outcome{functions[which](own.data(), length)};
        },
        [=] {
            int parity = 0;
            for (const char byte : bytes) {
                parity ^= static_cast<unsigned char>(byte);
            }
            const int sum = reference::sumOf(bytes);
            const int expected[] = {reference::crcOf(bytes, bytes.size()), sum, 256 - sum % 256, parity};
            return Outcome{expected[which]};
        });
}

Operation digit(Choices &choices) {
    const int code = choices.oneIn(2) ? choices.number() : choices.byte();
    return pure(
        [=] {
            return Outcome{ASCIIToDigital(code), QByteArray::number(DigitalToASCII(code))};
        },
        [=] {
            const int value = code < '0' || code == '@' ? 0 : code < '@' ? code - '0' : code - 'A' + 10;
            const qint64 character = code < 10 ? code + '0' : code - 10LL + 'A';
            return Outcome{value, QByteArray::number(reference::narrowed(character))};
        });
}

Operation address(Choices &choices) {
    const int type = choices.elementType();
    const int element = choices.number();
    const QString text = choices.addressText(type);
    return pure(
        [=] {
            int changeableType = type;
            int changeableElement = element;
            Outcome outcome{get_offset_address(changeableType, changeableElement)};
            outcome.bytes = QByteArray::number(StringAddressToInt(type, text)) + ' ' +
                            QByteArray::number(PLCAddressChangeIntef(type, text)) + ' ' +
                            QByteArray::number(getPlcReg(type)) + ' ' + QByteArray::number(changeableType) + ' ' +
                            QByteArray::number(changeableElement);
            return outcome;
        },
        [=] {
            const QByteArray converted = QByteArray::number(reference::elementAddress(type, text));
            return Outcome{static_cast<int>(reference::startAddress(type, element)),
                           converted + ' ' + converted + ' ' + QByteArray::number(reference::wireType(type)) + ' ' +
                               QByteArray::number(type) + ' ' + QByteArray::number(element)};
        });
}

Operation normalise(Choices &choices) {
    const RW_VAR var = anyRecord(choices);
    return pure(
        [=] {
            RW_VAR own = ownCopy(var);
            const int code = updateRwVar(&own);
            return Outcome{code, QByteArray(), {own}};
        },
        [=] {
            RW_VAR own = var;
            const int code = reference::normalise(own) ? 0 : 1;
            return Outcome{code, QByteArray(), {own}};
        });
}

Operation cutToFrames(Choices &choices, Budget &budget) {
    const RW_VAR var = anyRecord(choices);
    const int limit = choices.number();
    const int count = budget.entriesFor(choices.number(), limit, 1);
    return pure(
        [=] {
            Outcome outcome;
            RW_VAR own = ownCopy(var);
            WhetherGroup(count, limit, &own, &outcome.records);
            outcome.records.append(own);
            return outcome;
        },
        [=] {
            Records records;
            if (count <= std::max(limit, 1)) {
                records = {var};
            } else if (count <= kMaxElementCount) {
                records = reference::pieces(var, count, std::max(limit, 1));
            }
            return Outcome{0, QByteArray(), records + Records{records.isEmpty() ? var : records.last()}};
        });
}

Operation cutAtBound(Choices &choices, Budget &budget) {
    RW_VAR var = anyRecord(choices);
    var.count = budget.elementsFor(var.count, 300);
    if (var.count > kMaxElementCount) {
        var.count = budget.elementsFor(kMaxElementCount, var.count % 300);
    }
    const int which = choices.below(3);
    return pure(
        [=] {
            RW_VAR own = ownCopy(var);
            Outcome outcome;
            if (which == 0) {
                function_rw_var_add_read(outcome.records, own);
            } else if (which == 1) {
                function_rw_var_add_write(outcome.records, own);
            } else {
                RW_VAR last = own;
                last.count = 1;
                last.ownerId = 77;
                outcome.records.append(last);
                function_rw_var_revise(outcome.records, own);
            }
            outcome.records.append(own);
            return outcome;
        },
        [=] {
            const int bound = reference::listFunctionBound(var.elemType);
            Records records = which == 1 ? reference::writesOf(var, bound) : reference::readsOf(var, bound);
            const RW_VAR own = records.last();
            if (which == 2) {
                records.first().ownerId = 77;
            }
            return Outcome{0, QByteArray(), records + Records{own}};
        });
}

}  // namespace

Operation pureCall(Choices &choices, Budget &budget) {
    switch (choices.below(8)) {
        case 0:
            return checksum(choices);
        case 1:
            return digit(choices);
        case 2:
        case 3:
            return address(choices);
        case 4:
            return normalise(choices);
        case 5:
            return cutToFrames(choices, budget);
        default:
            return cutAtBound(choices, budget);
    }
}
