// Turns the bytes of an input into choices: numbers, texts, values. Past its end an input chooses 0 and nothing.
#ifndef DRAVO_FUZZ_DRIVER_CHOICES_H
#define DRAVO_FUZZ_DRIVER_CHOICES_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstddef>
#include <cstdint>

class Choices {
public:
    Choices(const std::uint8_t *bytes, std::size_t size) : next_(bytes), end_(bytes + size) {}

    bool left() const { return next_ != end_; }
    int byte() { return left() ? *next_++ : 0; }
    int below(int bound) { return byte() % bound; }
    bool oneIn(int number) { return below(number) == number - 1; }

    /// Any int, most often one near a bound of something.
    int number();
    /// One from 0 to 65,535; half of them below 256.
    int smallNumber() { return oneIn(2) ? byte() << 8 | byte() : byte(); }
    QByteArray bytes(int most);
    /// An address of a type as a host writes it, and sometimes anything.
    QString addressText(int elemType);
    /// Mostly one of the 22.
    int elementType() { return oneIn(16) ? number() : below(22); }

private:
    const std::uint8_t *next_;
    const std::uint8_t *end_;
};

#endif  // DRAVO_FUZZ_DRIVER_CHOICES_H
