// What the screen tells the user once: it fades and goes. Times come in. Any one thread.
#ifndef DRAVO_HOST_SCREEN_NOTICE_H
#define DRAVO_HOST_SCREEN_NOTICE_H

#include "host/screen/screen_line.h"

class Notice {
public:
    Notice() = default;
    Notice(const QString &text, Tone tone, qint64 nowUs) : text_(text), tone_(tone), saidUs_(nowUs) {}

    /// Empty once it is gone.
    QString text(qint64 nowUs) const { return nowUs - saidUs_ < 2 * brightUs() ? text_ : QString(); }
    Tone tone(qint64 nowUs) const { return nowUs - saidUs_ < brightUs() ? tone_ : Tone::Faint; }

private:
    /// What went wrong stays longer: nobody looks all the time.
    qint64 brightUs() const { return tone_ == Tone::Bad ? 30000000 : 5000000; }

    QString text_;
    Tone tone_ = Tone::Plain;
    qint64 saidUs_ = 0;
};

#endif  // DRAVO_HOST_SCREEN_NOTICE_H
