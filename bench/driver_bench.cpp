// What the driver costs its host, through the entry points that a host calls. Runs:
//   rebuild/N          ReCreatReadVarList of N variables of 2 registers on one station, in no order (10x N: 10x time)
//   sorted_rebuild/N   the same in address order: the difference is the sort
//   cyclic_read/N      one call of ComCommunication and DataCom, request built to N registers stored
//   get_register/N     GetRegisterData of N registers from the cache
//   write_register     SetRegisterData of one register, its request and reply
//   crc/N              CalCRC of N bytes
#include <benchmark/benchmark.h>

#include "korvel_dravo_port.h"

namespace {

ComInfo comInfo;

void bindHost() {
    comInfo = ComInfo();
    comInfo.maxGroupLength = 120;
    comInfo.defaultStation = 1;
    comInfo.writeMode = 2;
    SetComInfo(&comInfo);
    QList<ReadVarEntry> none;
    ReCreatReadVarList(&none);
}

QList<ReadVarEntry> variables(int count, bool sorted) {
    QList<ReadVarEntry> entries;
    for (int i = 0; i < count; ++i) {
        const int place = sorted ? i : int(qint64(i) * 7919 % count);
        ReadVarEntry entry = ReadVarEntry();
        entry.elemType = 10;
        entry.addressText = QString::number(place * 3);
        entry.count = 2;
        entries.append(entry);
    }
    return entries;
}

void rebuild(benchmark::State &state, bool sorted) {
    bindHost();
    QList<ReadVarEntry> entries = variables(int(state.range(0)), sorted);
    for (auto _ : state) {
        benchmark::DoNotOptimize(ReCreatReadVarList(&entries));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}
BENCHMARK_CAPTURE(rebuild, , false)
    ->Name("rebuild")
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Complexity(benchmark::oNLogN);
BENCHMARK_CAPTURE(rebuild, , true)->Name("sorted_rebuild")->Arg(100000);

QByteArray withCrc(QByteArray frame) {
    const int crc = CalCRC(reinterpret_cast<unsigned char *>(frame.data()), static_cast<unsigned short>(frame.size()));
    return frame.append(char(crc & 0xFF)).append(char(crc >> 8));
}

void cyclicRead(benchmark::State &state) {
    bindHost();
    const int registers = int(state.range(0));
    QList<ReadVarEntry> entries = variables(1, true);
    entries[0].count = registers;
    ReCreatReadVarList(&entries);
    QByteArray reply = QByteArray("\x01\x03", 2).append(char(2 * registers));
    reply = withCrc(reply.append(QByteArray(2 * registers, 'x')));
    for (auto _ : state) {
        ComCommunication();
        if (DataCom(&reply, reply.size())->retValue != kResultGood) {
            state.SkipWithError("the reply was not taken");
            break;
        }
    }
}
BENCHMARK(cyclicRead)->Name("cyclic_read")->Arg(1)->Arg(120);

void getRegister(benchmark::State &state) {
    bindHost();
    const QString address = QString::fromLatin1("100");
    QByteArray values;
    for (auto _ : state) {
        benchmark::DoNotOptimize(GetRegisterData(QString(), 7, address, 1, values, int(state.range(0))));
    }
}
BENCHMARK(getRegister)->Name("get_register")->Arg(1)->Arg(120);

void writeRegister(benchmark::State &state) {
    bindHost();
    const QString address = QString::fromLatin1("100");
    const QByteArray value("\x34\x12", 2);
    QByteArray reply = withCrc(QByteArray("\x01\x06\x00\x64\x12\x34", 6));
    for (auto _ : state) {
        SetRegisterData(QString(), 7, address, 1, value, 1, 1, 1);
        if (!ComCommunication()) {  // five writes in a row, then an idle call
            ComCommunication();
        }
        if (DataCom(&reply, reply.size())->retValue != kResultGood) {
            state.SkipWithError("the reply was not taken");
            break;
        }
    }
}
BENCHMARK(writeRegister)->Name("write_register");

void crc(benchmark::State &state) {
    QByteArray bytes(int(state.range(0)), 'x');
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            CalCRC(reinterpret_cast<unsigned char *>(bytes.data()), static_cast<unsigned short>(bytes.size())));
    }
}
BENCHMARK(crc)->Arg(6)->Arg(256);

}  // namespace

BENCHMARK_MAIN();
