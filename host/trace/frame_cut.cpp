#include "host/trace/frame_cut.h"

#include <algorithm>

#include "korvel_dravo_port.h"

namespace {

constexpr int kCrcBytes = 2;
constexpr int kShortest = 4;         // station, function, CRC
constexpr int kLongestFrame = 4096;  // an answer to a remote frame can be longer than Modbus allows
constexpr int kReadOverhead = 5;     // station, function, byte count, CRC
constexpr int kWriteReply = 8;
constexpr int kExceptionReply = 5;
constexpr int kExceptionBit = 0x80;

bool crcFits(const QByteArray &bytes, int start, int size) {
    if (size < kShortest || size > kLongestFrame) {
        return false;
    }
    QByteArray body = bytes.mid(start, size - kCrcBytes);
    const int crc = CalCRC(reinterpret_cast<unsigned char *>(body.data()), static_cast<unsigned short>(body.size()));
    return uchar(bytes.at(start + size - 2)) == (crc & 0xFF) && uchar(bytes.at(start + size - 1)) == (crc >> 8);
}

/// Length of the reply that starts there, as its head says; 0: none starts there, or the head is not whole.
int lengthByHead(const QByteArray &bytes, int start) {
    if (bytes.size() - start < 3) {
        return 0;
    }
    const int function = uchar(bytes.at(start + 1));
    switch (function & ~kExceptionBit) {
        case 1:
        case 2:
        case 3:
        case 4:
            return function >= kExceptionBit ? kExceptionReply : uchar(bytes.at(start + 2)) + kReadOverhead;
        case 5:
        case 6:
        case 15:
        case 16:
            return function >= kExceptionBit ? kExceptionReply : kWriteReply;
        default:
            return 0;
    }
}

class Cutter {
public:
    Cutter(const QByteArray &bytes, const QList<QByteArray> &requests) : bytes_(bytes), requests_(requests) {}

    QVector<Piece> cut() {
        int offset = 0;
        while (offset < bytes_.size()) {
            Piece piece = frameAt(offset);
            if (piece.size > 0) {
                addDamaged(offset);
                pieces_.append(piece);
                damagedFrom_ = offset + piece.size;
            }
            offset += qMax(1, piece.size);
        }
        addDamaged(offset);
        return pieces_;
    }

private:
    /// The frame that starts there; one of size 0: none does.
    Piece frameAt(int offset) const {
        const int available = bytes_.size() - offset;
        for (const QByteArray &request : requests_) {
            if (request.size() <= available && std::equal(request.begin(), request.end(), bytes_.begin() + offset)) {
                return {offset, request.size(), Piece::Copy};
            }
        }
        const int byHead = lengthByHead(bytes_, offset);
        if (byHead <= available && crcFits(bytes_, offset, byHead)) {
            return {offset, byHead, Piece::Whole};
        }
        // What no head measures: the answer to a long remote frame, another master's request.
        const bool allFits = offset == damagedFrom_ && crcFits(bytes_, offset, available);
        return {offset, allFits ? available : 0, Piece::Whole};
    }

    void addDamaged(int end) {
        const int size = end - damagedFrom_;
        const int byHead = lengthByHead(bytes_.mid(damagedFrom_, size), 0);
        const Piece::Kind kind = byHead == 0      ? Piece::NoFrame
                                 : size == byHead ? Piece::WrongCrc
                                 : size < byHead  ? Piece::CutShort
                                                  : Piece::NoFrame;
        for (int start = damagedFrom_; start < end; start += kMostDamaged) {
            pieces_.append({start, qMin(kMostDamaged, end - start), kind});
        }
    }

    const QByteArray &bytes_;
    const QList<QByteArray> &requests_;
    QVector<Piece> pieces_;
    int damagedFrom_ = 0;
};

}  // namespace

QVector<Piece> cutFrames(const QByteArray &bytes, const QList<QByteArray> &requests) {
    return Cutter(bytes, requests).cut();
}
