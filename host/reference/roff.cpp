#include "host/reference/roff.h"

namespace {

constexpr int kSourceWidth = 72;

constexpr uint kLastAscii = 126;

QString replacement(uint character) {
    switch (character) {
        case '\\':
            return QStringLiteral("\\e");
        case '-':
            return QStringLiteral("\\-");
        case '\'':
            return QStringLiteral("\\(aq");
        case '`':
            return QStringLiteral("\\(ga");
        case '^':
            return QStringLiteral("\\(ha");
        case '~':
            return QStringLiteral("\\(ti");
        default:
            return character > kLastAscii
                       ? QStringLiteral("\\[u%1]").arg(QString::number(character, 16).toUpper(), 4, QLatin1Char('0'))
                       : QString(QChar(character));
    }
}

/// A line that does not pass for a request.
QString protectedLine(const QString &escaped) {
    return escaped.startsWith(QLatin1Char('.')) ? QStringLiteral("\\&") + escaped : escaped;
}

bool endsSentence(const QString &word) {
    return word.endsWith(QLatin1Char('.')) || word.endsWith(QLatin1String(".)"));
}

}  // namespace

QString roffEscaped(const QString &text) {
    QString escaped;
    for (const uint character : text.toUcs4()) {
        escaped += replacement(character);
    }
    return escaped;
}

QString roffBold(const QString &text) {
    return QStringLiteral("\\fB") + roffEscaped(text) + QStringLiteral("\\fR");
}

QString roffItalic(const QString &text) {
    return QStringLiteral("\\fI") + roffEscaped(text) + QStringLiteral("\\fR");
}

RoffPage::RoffPage(const QString &title, const QString &date, const QString &source) {
    line(QStringLiteral(".TH \"%1\" \"1\" \"%2\" \"%3\" \"User Commands\"")
             .arg(roffEscaped(title.toUpper()), date, roffEscaped(source)));
    line(QStringLiteral(".nh"));    // names of columns and options stay whole,
    line(QStringLiteral(".ad l"));  // which leaves gaps where lines are adjusted
}

void RoffPage::section(const QString &name) {
    line(QStringLiteral(".SH ") + roffEscaped(name));
    paragraph_ = ".PP";
}

void RoffPage::tag(const QString &escaped) {
    line(QStringLiteral(".TP"));
    line(protectedLine(escaped));
    paragraph_ = ".IP";
}

void RoffPage::text(const QString &plain) {
    QByteArray start;
    for (const QString &paragraph : plain.split(QStringLiteral("\n\n"), Qt::SkipEmptyParts)) {
        source_ += start;
        start = paragraph_ + '\n';
        QStringList lines = paragraph.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        flow(lines.takeFirst());
        if (!lines.isEmpty()) {
            line(QStringLiteral(".br"));
            columns(lines);
        }
    }
}

// A sentence starts on a line of its own, so that roff sees where it ends.
void RoffPage::flow(const QString &plain) {
    QString current;
    for (const QString &word : plain.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QString escaped = roffEscaped(word);
        if (!current.isEmpty() && current.size() + escaped.size() >= kSourceWidth) {
            line(protectedLine(current));
            current.clear();
        }
        current += (current.isEmpty() ? QString() : QStringLiteral(" ")) + escaped;
        if (endsSentence(word)) {
            line(protectedLine(current));
            current.clear();
        }
    }
    if (!current.isEmpty()) {
        line(protectedLine(current));
    }
}

void RoffPage::columns(const QStringList &plain) {
    line(QStringLiteral(".EX"));
    for (const QString &text : plain) {
        line(protectedLine(roffEscaped(text)));
    }
    line(QStringLiteral(".EE"));
}
