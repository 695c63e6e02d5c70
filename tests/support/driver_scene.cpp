#include "support/driver_scene.h"

#include <QtCore/QRegExp>
#include <QtCore/QStringList>
#include <algorithm>

namespace {

DriverScene *currentScene = nullptr;  // the callback for lists carries no context

std::string hexText(const QByteArray &value) {
    return value.toHex().constData();
}

std::string joined(const std::vector<std::string> &words) {
    std::string text;
    for (const std::string &word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

}  // namespace

RW_VAR record(int elemType, int address, int count, const char *data) {
    RW_VAR var = RW_VAR();
    var.elemType = elemType;
    var.address = address;
    var.count = count;
    var.station = 1;
    var.data = bytes(data);
    return var;
}

QList<RW_VAR> records(const char *text) {
    static const QRegExp kRecord(QString::fromLatin1("(?:(-?\\d+)/)?(-?\\d+)@([^+]*)\\+(-?\\d+)=?(\\w*)"));
    QList<RW_VAR> list;
    for (const QString &word : QString::fromLatin1(text).split(QLatin1Char(' '))) {
        if (word.isEmpty()) {
            continue;
        }
        QRegExp match = kRecord;
        EXPECT_TRUE(match.exactMatch(word)) << text;
        RW_VAR var = record(match.cap(2).toInt(), match.cap(3).toInt(), match.cap(4).toInt());
        var.addressText = match.cap(3);
        var.data = QByteArray::fromHex(match.cap(5).toLatin1());
        var.station = match.cap(1).isEmpty() ? 1 : match.cap(1).toInt();
        list.append(var);
    }
    return list;
}

RW_VAR record(const char *text) {
    return records(text).at(0);
}

RW_VAR recordOf(int ownerId, int itemId, const RW_VAR &var) {
    RW_VAR result = var;
    result.ownerId = ownerId;
    result.itemId = itemId;
    return result;
}

RW_VAR recordAt(int station, const RW_VAR &var) {
    RW_VAR result = var;
    result.station = station;
    return result;
}

std::string listText(const QList<RW_VAR> &list) {
    std::vector<std::string> words;
    for (const RW_VAR &var : list) {
        const std::string station = var.station == 1 ? "" : std::to_string(var.station) + "/";
        const std::string data = var.data.isEmpty() ? "" : "=" + hexText(var.data);
        words.push_back(station + std::to_string(var.elemType) + "@" + std::to_string(var.address) + "+" +
                        std::to_string(var.count) + data);
    }
    return joined(words);
}

std::string cacheText() {
    const QMutexLocker lock(&PLC_driver.cacheMutex);
    std::vector<std::string> words;
    for (auto entry = PLC_driver.valueCache.constBegin(); entry != PLC_driver.valueCache.constEnd(); ++entry) {
        char key[9];
        snprintf(key, sizeof key, "%08x", entry.key());
        words.push_back(std::string(key) + "=" + hexText(entry.value()));
    }
    std::sort(words.begin(), words.end());
    return joined(words);
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
    if (ComCommunication() == nullptr) {
        return "-";
    }
    const int kind = PLC_driver.comType;
    return kind == kWrite ? "W" : kind == kOnceRead ? "O" : kind == kCyclicRead ? "C" : "?";
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

int DriverScene::setValues(const char *variable, int ownerId, int itemId) {
    const RW_VAR var = record(variable);
    return SetRegisterData(QString::fromLatin1("label"), var.elemType, var.addressText, var.station, var.data,
                           var.count, ownerId, itemId);
}

QByteArray DriverScene::getValues(const char *variable, int expectedResult) {
    const RW_VAR var = record(variable);
    QByteArray out("left over");
    const int result = GetRegisterData(QString(), var.elemType, var.addressText, var.station, out, var.count);
    EXPECT_EQ(result, expectedResult) << variable;
    return out;
}

void DriverScene::expectCallbacks(const std::vector<std::string> &expected) {
    EXPECT_EQ(calls, expected);
    calls.clear();
}

RW_VAR *DriverScene::copyOf(const RW_VAR &var) {
    static RW_VAR copy;  // overwritten by the next call, as a host may do once a queueing call has returned
    copy = var;
    return &copy;
}

void DriverScene::onVariable(void *context, int ownerId, int itemId, int code) {
    EXPECT_EQ(context, &currentScene->settings);
    const std::string outcome = code == 1 ? "done " : code == 2 ? "failed " : "code " + std::to_string(code) + " ";
    currentScene->calls.push_back(outcome + std::to_string(ownerId) + "/" + std::to_string(itemId));
    if (currentScene->duringCallback) {
        currentScene->duringCallback(nullptr);
    }
}

void DriverScene::onList(QList<RW_VAR> *list, int ownerId, int code) {
    EXPECT_TRUE(list != nullptr && list->isEmpty());
    EXPECT_EQ(code, 1);
    currentScene->calls.push_back("list " + std::to_string(ownerId));
    if (currentScene->duringCallback) {
        currentScene->duringCallback(list);
    }
}
