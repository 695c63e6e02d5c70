// A manual page as roff source, in the macros of man(7). Texts go in as they are read; what has a meaning to roff is
// escaped here. Pure; any thread.
#ifndef DRAVO_HOST_REFERENCE_ROFF_H
#define DRAVO_HOST_REFERENCE_ROFF_H

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

/// Text that roff shows as it stands: dashes stay the dashes of options.
QString roffEscaped(const QString &text);
QString roffBold(const QString &text);
QString roffItalic(const QString &text);

class RoffPage {
public:
    /// A page of section 1. date: as ISO 8601. source: program and version.
    RoffPage(const QString &title, const QString &date, const QString &source);

    void section(const QString &name);
    /// Plain text; an empty line starts a paragraph, other lines behind the first keep their columns.
    void text(const QString &plain);
    /// The head of an indented text, of escaped parts.
    void tag(const QString &escaped);
    /// A line of escaped parts.
    void line(const QString &escaped) { source_ += escaped.toUtf8() + '\n'; }
    /// Lines that keep their columns.
    void columns(const QStringList &plain);

    const QByteArray &source() const { return source_; }

private:
    void flow(const QString &plain);

    QByteArray source_;
    QByteArray paragraph_ = ".PP";  // what starts the next paragraph of the same text
};

#endif  // DRAVO_HOST_REFERENCE_ROFF_H
