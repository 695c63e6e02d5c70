// Lines of text from a descriptor, without ever waiting for them. Main thread.
#ifndef DRAVO_HOST_GATEWAY_LINE_INPUT_H
#define DRAVO_HOST_GATEWAY_LINE_INPUT_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "host/failure.h"

class LineInput {
public:
    /// Bytes in a line; 2000 values of 32 digits, with what stands around them, fit.
    static constexpr int kLongest = 128 * 1024;

    LineInput() = default;
    ~LineInput();
    LineInput(const LineInput &) = delete;
    LineInput &operator=(const LineInput &) = delete;

    /// "-" is standard input. A named pipe does not end when its writer does: the next one goes on.
    Failure open(const QString &fileName);
    bool isOpen() const { return descriptor_ >= 0; }

    enum class Taken { None, Line, TooLong, Ended };
    /// The next line that has arrived, without its end; the last one may lack that. TooLong comes once for each line
    /// that is longer than kLongest, the rest of which is dropped. Once Ended it stays so.
    Taken take(QByteArray *line);

private:
    Taken fromBuffer(QByteArray *line);
    bool readSome();

    int descriptor_ = -1;
    QByteArray buffer_;
    int start_ = 0;          // of the first line in it
    bool dropping_ = false;  // the rest of a line that is too long
    bool ended_ = false;
};

#endif  // DRAVO_HOST_GATEWAY_LINE_INPUT_H
