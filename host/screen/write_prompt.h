// Asks the user for the new values of a variable. Pure; any one thread.
#ifndef DRAVO_HOST_SCREEN_WRITE_PROMPT_H
#define DRAVO_HOST_SCREEN_WRITE_PROMPT_H

#include "host/screen/columns.h"
#include "host/screen/typed_line.h"
#include "host/tags/value_text.h"

/// Values for all of a variable as they are typed, separated by blanks.
/// @return with a fault for each bad one, and one for a wrong number of them.
TypedValues typedValues(const Tag &variable, const QString &text);

class WritePrompt {
public:
    explicit WritePrompt(const Tag &variable) : variable_(variable) {}

    /// Entered: values() can be written; nothing typed is given up, faults keep the prompt open.
    TypedLine::Outcome press(const Key &key);
    /// The values that the variable has become what is typed.
    void takeOver(const ShownVariable &current) { typed_.setText(columnText(current.texts)); }
    const QByteArray &values() const { return values_.bytes; }

    /// At most rows lines, at least three.
    ScreenLines lines(const ShownVariable &current, int rows, int width) const;

private:
    Tag variable_;
    TypedLine typed_;
    TypedValues values_;
};

#endif  // DRAVO_HOST_SCREEN_WRITE_PROMPT_H
