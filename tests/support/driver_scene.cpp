#include "support/driver_scene.h"

#include <stdexcept>

namespace {

DriverScene *currentScene = nullptr;  // the callback for lists carries no context

}  // namespace

std::string cacheText() {
    const QMutexLocker lock(&PLC_driver.cacheMutex);
    return cacheText(PLC_driver.valueCache);
}

DriverScene::DriverScene() {
    currentScene = this;
    RegistCallBackFuncIntf(&DriverScene::onVariable, &DriverScene::onList);
    restart();
}

DriverScene::~DriverScene() {
    restart();
    SetComInfo(nullptr);
    RegistCallBackFuncIntf(nullptr, nullptr);
    currentScene = nullptr;
}

void DriverScene::restart() {
    settings = ComInfo();
    settings.maxGroupLength = 32;
    settings.defaultStation = 1;
    settings.useVarStation = 1;
    settings.writeMode = 2;
    settings.hostContext = &settings;
    SetComInfo(&settings);
    EnableEthernet(-1, 0);
    PLC_driver.readVarList.clear();
    PLC_driver.writeVarList.clear();
    PLC_driver.onceReadVarList.clear();
    PLC_driver.protocolList.clear();
    PLC_driver.valueCache.clear();
    PLC_driver.retVar = RW_VAR();
    PLC_driver.comType = kNothingBuilt;
    PLC_driver.writeTimes = PLC_driver.onceReadTimes = PLC_driver.readCycleCount = 0;
    PLC_driver.comFailed = 0;
    calls.clear();
}

QByteArray DriverScene::send() {
    const Protocol *request = ComCommunication();
    return request == nullptr ? QByteArray() : request->frame;
}

std::string DriverScene::sendKind() {
    const bool sent = ComCommunication() != nullptr;
    const int kind = PLC_driver.comType;
    return !sent ? "-" : kind == kWrite ? "W" : kind == kOnceRead ? "O" : kind == kCyclicRead ? "C" : "?";
}

int DriverScene::answer(const QByteArray &reply) {
    QByteArray received(reply);
    const RW_VAR *result = DataCom(&received, received.size());
    EXPECT_EQ(result, &PLC_driver.retVar);
    EXPECT_EQ(received, reply);
    EXPECT_TRUE(result->data.isEmpty());
    return result->retValue;
}

int DriverScene::exchange() {
    EXPECT_FALSE(send().isEmpty());
    return answer(goodReply());
}

QByteArray DriverScene::goodReply(const QByteArray &data) {
    const Protocol &request = PLC_driver.protocolList.at(0);
    if (request.replyLength < 1) {
        return QByteArray();
    }
    QByteArray reply = request.frame.mid(PLC_driver.comInfo->remoteMode != 0 ? 4 : 0, 1) + bytes("0302") + data;
    return withCrc(reply.leftJustified(request.replyLength - 2, '\0', true));
}

void DriverScene::queueWrite(const std::string &variables) {
    for (RW_VAR var : records(variables)) {
        AddListWriteVar(&var, 1);
    }
}

void DriverScene::queueOnceRead(const std::string &variables) {
    for (RW_VAR var : records(variables)) {
        AddListOnceReadVar(&var, 1);
    }
}

void DriverScene::addCyclic(const std::string &variables) {
    for (RW_VAR var : records(variables)) {
        AddListReadVar(&var);
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

void DriverScene::queue(const std::string &call) {
    const std::string verb = call.substr(0, call.find(' '));
    const std::string variables = call.substr(verb.size());
    if (verb == "write") {
        queueWrite(variables);
    } else if (verb == "read") {
        queueOnceRead(variables);
    } else if (verb == "cyclic") {
        addCyclic(variables);
    } else if (!verb.empty()) {
        throw std::logic_error("no such verb: " + call);
    }
}

void DriverScene::play(const char *transcript) {
    for (const TableRow &row : table(transcript)) {
        SCOPED_TRACE(row.line());
        queue(row["queued"]);
        EXPECT_EQ(send(), row.empty("sent") ? QByteArray() : withCrc(row["sent"]));
        EXPECT_EQ(row.empty("reply") ? noReply() : answer(row["reply"]), row.number("code"));
        expectCallbacks(row["callbacks"]);
        EXPECT_EQ(listText({PLC_driver.retVar}), row["result"]);
        EXPECT_EQ(listText(PLC_driver.writeVarList + PLC_driver.onceReadVarList + PLC_driver.readVarList), row["left"]);
    }
}

void DriverScene::expectCallbacks(const std::string &expected) {
    EXPECT_EQ(calls, expected);
    calls.clear();
}

void DriverScene::onVariable(void *context, int ownerId, int itemId, int code) {
    EXPECT_EQ(context, &currentScene->settings);
    const char *outcome = code == 1 ? "done" : code == 2 ? "failed" : "?";
    currentScene->called(QString::asprintf("%s %d/%d", outcome, ownerId, itemId).toStdString(), nullptr);
}

void DriverScene::onList(QList<RW_VAR> *list, int ownerId, int code) {
    EXPECT_TRUE(list != nullptr && list->isEmpty());
    EXPECT_EQ(code, 1);
    currentScene->called("list " + std::to_string(ownerId), list);
}

void DriverScene::called(const std::string &callback, QList<RW_VAR> *list) {
    calls += (calls.empty() ? "" : ", ") + callback;
    if (duringCallback) {
        duringCallback(list);
    }
}
