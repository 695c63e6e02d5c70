// The one way to fail. A call that can fail returns a Failure and hands over what it made through its last argument,
// which it leaves alone when it fails. The text is made where the thing went wrong: errno is turned into words there.
// What a person has written (command line, option file, tag list, typed values) is looked at to its end instead: such a
// call returns all it found wrong as a list named faults.
#ifndef DRAVO_HOST_FAILURE_H
#define DRAVO_HOST_FAILURE_H

#include <QtCore/QString>
#include <system_error>

class [[nodiscard]] Failure {
public:
    Failure() = default;  // none
    explicit Failure(const QString &text) : text_(text) {}
    /// "what: reason", with the system's reason for an errno.
    static Failure ofSystem(const QString &what, int errorNumber) {
        // The category's text is strerror's, without its shared buffer.
        return Failure(what + QLatin1String(": ") +
                       QString::fromStdString(std::generic_category().message(errorNumber)));
    }

    /// Whether something failed.
    explicit operator bool() const { return !text_.isEmpty(); }
    const QString &text() const { return text_; }

private:
    QString text_;
};

#endif  // DRAVO_HOST_FAILURE_H
