#include "support/driver_scene.h"

#include <QtCore/QRegExp>
#include <QtCore/QStringList>

namespace {

DriverScene *currentScene = nullptr;  // the callback for lists carries no context

}  // namespace

QList<RW_VAR> records(const std::string &text) {
    QRegExp match(
        QString::fromLatin1("(?:(-?\\d+)/)?(-?\\d+)@([^+]*)\\+(-?\\d+)(?:=(\\w*))?(?::(\\d+)/(\\d+))?"
                            "(?:\\^(\\d+))?"));
    QList<RW_VAR> list;
    for (const QString &word : QString::fromStdString(text).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        EXPECT_TRUE(match.exactMatch(word)) << text;
        RW_VAR var = RW_VAR();
        var.station = match.cap(1).isEmpty() ? 1 : match.cap(1).toInt();
        var.elemType = match.cap(2).toInt();
        var.addressText = match.cap(3);
        var.address = match.cap(3).toInt();
        var.count = match.cap(4).toInt();
        var.data = QByteArray::fromHex(match.cap(5).toLatin1());
        var.ownerId = match.cap(6).toInt();
        var.itemId = match.cap(7).toInt();
        var.nodeId = match.cap(8).toInt();
        list.append(var);
    }
    return list;
}

RW_VAR record(const std::string &text) {
    return records(text).at(0);
}

std::string listText(const QList<RW_VAR> &list) {
    QStringList words;
    for (const RW_VAR &var : list) {
        const bool hasOwner = var.ownerId > 0 || var.itemId > 0;
        words += (var.station != 1 ? QString::asprintf("%d/", var.station) : QString()) +
                 QString::asprintf("%d@%d+%d", var.elemType, var.address, var.count) +
                 (var.data.isEmpty() ? QString() : QString::fromLatin1("=" + var.data.toHex())) +
                 (hasOwner ? QString::asprintf(":%d/%d", var.ownerId, var.itemId) : QString()) +
                 (var.nodeId != 0 ? QString::asprintf("^%d", var.nodeId) : QString());
    }
    return words.join(QLatin1Char(' ')).toStdString();
}

std::string cacheText() {
    const QMutexLocker lock(&PLC_driver.cacheMutex);
    QStringList words;
    for (auto entry = PLC_driver.valueCache.constBegin(); entry != PLC_driver.valueCache.constEnd(); ++entry) {
        words += QString::asprintf("%08x=%s", entry.key(), entry.value().toHex().constData());
    }
    words.sort();
    return words.join(QLatin1Char(' ')).toStdString();
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

void DriverScene::play(const char *transcript) {
    for (const Row &row : rows(transcript)) {
        SCOPED_TRACE(row.text);
        const std::string call = row.fields[0].substr(0, row.fields[0].find(' '));
        const std::string variables = row.fields[0].substr(call.size());
        call == "cyclic" ? addCyclic(variables) : call == "read" ? queueOnceRead(variables) : queueWrite(variables);
        EXPECT_EQ(send(), row.fields[1].empty() ? QByteArray() : withCrc(row[1]));
        EXPECT_EQ(row.fields[2].empty() ? noReply() : answer(row[2]), row.number(3));
        expectCallbacks(row.fields[4]);
        EXPECT_EQ(listText({PLC_driver.retVar}), row.fields[5]);
        EXPECT_EQ(listText(PLC_driver.writeVarList + PLC_driver.onceReadVarList + PLC_driver.readVarList), row[6]);
    }
}

void DriverScene::expectRequest(void (*build)(RW_VAR *), const RW_VAR &var, const QByteArray &frame,
                                const ExpectedReply &reply) {
    restart();
    settings.frameTotal = settings.frameDone = 7;
    RW_VAR given = var;
    build(&given);
    const Protocol &request = PLC_driver.protocolList.at(0);
    EXPECT_EQ(request.frame, frame);
    EXPECT_EQ(request.frameLength, frame.size());
    EXPECT_EQ(request.replyLength, reply.length);
    EXPECT_EQ(request.dataOffset, reply.dataOffset);
    EXPECT_EQ(request.dataLength, reply.dataLength);
    EXPECT_EQ(listText({request.var, given}), listText({var, var}));
    EXPECT_EQ(settings.frameTotal, 1);
    EXPECT_EQ(settings.frameDone, 0);
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
