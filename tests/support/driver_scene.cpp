#include "support/driver_scene.h"

#include <new>
#include <sstream>
#include <stdexcept>

std::string cacheText() {
    const QMutexLocker lock(&PLC_driver.cacheMutex);
    return cacheText(PLC_driver.valueCache);
}

void DriverScene::reset() {
    PLC_driver.~Communication_Protocol();
    new (&PLC_driver) Communication_Protocol();
    duringCallback = nullptr;
    calls.clear();
}

void DriverScene::restart() {
    reset();
    settings = ComInfo();
    settings.maxGroupLength = 32;
    settings.defaultStation = settings.useVarStation = 1;
    settings.writeMode = 2;
    settings.hostContext = &settings;
    SetComInfo(&settings);
    RegistCallBackFuncIntf(
        [](void *context, int ownerId, int itemId, int code) {
            EXPECT_EQ(context, &settings);
            const char *outcome = code == 1 ? "done" : code == 2 ? "failed" : "?";
            called(QString::asprintf("%s %d/%d", outcome, ownerId, itemId).toStdString(), nullptr);
        },
        [](QList<RW_VAR> *list, int ownerId, int code) {
            EXPECT_TRUE(list != nullptr && list->isEmpty());
            EXPECT_EQ(code, 1);
            called("list " + std::to_string(ownerId), list);
        });
}

int DriverScene::answer(const QByteArray &reply) {
    QByteArray received(reply);
    const RW_VAR *result = DataCom(&received, received.size());
    EXPECT_EQ(result, &PLC_driver.retVar);
    EXPECT_EQ(received, reply);
    EXPECT_TRUE(result->data.isEmpty());
    return result->retValue;
}

QByteArray DriverScene::goodReply(const QByteArray &data) {
    const Protocol &request = PLC_driver.protocolList.at(0);
    const QByteArray reply = request.frame.mid(settings.remoteMode != 0 ? 4 : 0, 1) + bytes("0302") + data;
    return request.replyLength < 1 ? QByteArray() : withCrc(reply.leftJustified(request.replyLength - 2, '\0', true));
}

void DriverScene::queue(const std::string &requests) {
    std::istringstream words(requests);
    for (std::string word, verb; words >> word;) {
        if (word.find('@') == std::string::npos) {
            verb = word;
            continue;
        }
        RW_VAR var = record(word);
        verb == "write"    ? AddListWriteVar(&var, 1)
        : verb == "read"   ? AddListOnceReadVar(&var, 1)
        : verb == "cyclic" ? AddListReadVar(&var)
                           : throw std::logic_error("no such verb: " + requests);
    }
}

int DriverScene::setValues(const char *variable) {
    const RW_VAR var = record(variable);
    return SetRegisterData(QString::fromLatin1("label"), var.elemType, var.addressText, var.station, var.data,
                           var.count, var.ownerId, var.itemId);
}

QByteArray DriverScene::getValues(const char *variable, int expectedResult) {
    const RW_VAR var = record(variable);
    QByteArray out("left over");
    const int result = GetRegisterData(QString(), var.elemType, var.addressText, var.station, out, var.count);
    EXPECT_EQ(result, expectedResult) << variable;
    return out;
}

void DriverScene::play(const char *transcript) {
    for (const TableRow &row : table(transcript)) {
        SCOPED_TRACE(row.line());
        queue(row["queued"]);
        EXPECT_EQ(send(), row.empty("sent") ? QByteArray() : withCrc(row["sent"]));
        EXPECT_EQ(row.empty("reply") ? noReply() : answer(row["reply"]), row.number("code"));
        EXPECT_EQ(takeCallbacks(), row["callbacks"]);
        EXPECT_EQ(listText({PLC_driver.retVar}), row["result"]);
        EXPECT_EQ(left(), row["left"]);
    }
}

void DriverScene::called(const std::string &callback, QList<RW_VAR> *list) {
    calls += (calls.empty() ? "" : ", ") + callback;
    if (duringCallback) {
        duringCallback(list);
    }
}
