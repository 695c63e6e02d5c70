// What a model of a line draws: numbers from a seed, or from the bytes of a fuzzer, which then decides everything.
#ifndef DRAVO_TESTS_LINE_DRAWS_H
#define DRAVO_TESTS_LINE_DRAWS_H

#include <QtCore/QByteArray>

#include <algorithm>
#include <memory>
#include <random>

class Draws {
public:
    explicit Draws(unsigned seed) : seeded_(seed) {}
    /// Once they are used up every number is 0, and nothing happens that is a matter of chance.
    explicit Draws(const QByteArray &bytes) : bytes_(std::make_shared<Bytes>(Bytes{bytes, 0})) {}

    bool isSpent() const { return bytes_ != nullptr && bytes_->next >= bytes_->all.size(); }
    bool chance(double probability) {
        if (bytes_ == nullptr) {
            return std::uniform_real_distribution<double>(0, 1)(seeded_) < probability;
        }
        return probability > 0 && double(255 - taken(1)) < 256 * probability;
    }
    qint64 between(qint64 from, qint64 to) {
        if (bytes_ == nullptr) {
            return std::uniform_int_distribution<qint64>(from, std::max(from, to))(seeded_);
        }
        const qint64 more = std::max<qint64>(to - from, 0);
        return from + (more == 0 ? 0 : taken(more < 256 ? 1 : more < 65536 ? 2 : 4) % (more + 1));
    }
    /// Another source: a seed of its own, or the rest of the same bytes.
    Draws branch() { return bytes_ == nullptr ? Draws(unsigned((*this)())) : *this; }

    // As a generator of the standard library.
    using result_type = std::mt19937::result_type;
    static constexpr result_type min() { return std::mt19937::min(); }
    static constexpr result_type max() { return std::mt19937::max(); }
    result_type operator()() { return bytes_ == nullptr ? seeded_() : result_type(taken(2) * 0x10001); }

private:
    struct Bytes {
        QByteArray all;
        int next;
    };
    qint64 taken(int count) {
        qint64 number = 0;
        for (; count > 0; --count) {
            number = number << 8 | (isSpent() ? 0 : uchar(bytes_->all.at(bytes_->next++)));
        }
        return number;
    }

    std::mt19937 seeded_;
    std::shared_ptr<Bytes> bytes_;
};

#endif  // DRAVO_TESTS_LINE_DRAWS_H
