// The one way to fail in this folder, which stands on its own: a call that can fail returns a Failure and hands over
// what it made through its last argument, which it leaves alone when it fails. errno is turned into words where it was
// set.
#ifndef DRAVO_SIMULATION_FAILURE_H
#define DRAVO_SIMULATION_FAILURE_H

#include <string>
#include <system_error>
#include <utility>

namespace simulation {

class [[nodiscard]] Failure {
public:
    Failure() = default;  // none
    explicit Failure(std::string text) : text_(std::move(text)) {}
    /// "what: reason", with the system's reason for an errno.
    static Failure ofSystem(const std::string &what, int errorNumber) {
        return Failure(what + ": " + std::generic_category().message(errorNumber));
    }

    /// Whether something failed.
    explicit operator bool() const { return !text_.empty(); }
    const std::string &text() const { return text_; }

private:
    std::string text_;
};

}  // namespace simulation

#endif
