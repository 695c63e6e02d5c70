// Commands for the variables of a tag list: what comes in goes to the line, and each is answered by exactly one record.
// Communication thread only.
#ifndef DRAVO_HOST_GATEWAY_GATEWAY_H
#define DRAVO_HOST_GATEWAY_GATEWAY_H

#include <QtCore/QHash>
#include <QtCore/QMap>
#include <functional>

#include "host/gateway/command_answer.h"
#include "host/gateway/command_text.h"
#include "host/gateway/line_input.h"

class Gateway {
public:
    /// Takes a record.
    using Answer = std::function<void(const QByteArray &record)>;
    /// variables, line and input outlive this object. input: open.
    Gateway(const QVector<Tag> &variables, dravo::Line *line, LineInput *input, const Answer &answer);

    /// Takes some of the commands that have arrived. @param isLost  the device; commands are refused then, for nobody
    /// wants them on a machine later.
    void serve(bool isLost);
    /// Answers the command whose operation is over. @return false: the operation is of no command.
    bool finish(const dravo::LineEvent &end);
    /// Answers every command that is on its way: nobody will see what becomes of it. Operations that end later are of
    /// no command.
    void abandon(const QString &why);

    /// Whether no more commands come, and whether everything is answered as well.
    bool inputEnded() const { return inputEnded_; }
    bool isOver() const { return inputEnded_ && pending_.isEmpty(); }

private:
    struct Pending {
        CommandAnswer answer;
        bool isWrite;
        int variable;  // its place
        QByteArray values;
    };
    void take(const QByteArray &text, bool isLost);
    QStringList start(const CommandText &command, bool isLost);
    QStringList queue(const Tag &variable, Pending pending);
    void refuse(CommandAnswer answer, const QString &why);
    void tell(const CommandAnswer &answer, const Tag *variable = nullptr, const QByteArray &values = QByteArray());

    const QVector<Tag> &variables_;
    dravo::Line *line_;
    LineInput *input_;
    Answer answer_;
    QHash<QString, QVector<int>> places_;  // of the variables of a label
    QMap<int, Pending> pending_;           // by operation
    bool inputEnded_ = false;
};

#endif  // DRAVO_HOST_GATEWAY_GATEWAY_H
