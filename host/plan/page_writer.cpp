#include "host/plan/page_writer.h"

namespace {

// XML 1.0 has no control characters but tab and line ends, and no U+FFFE and U+FFFF.
QString xmlText(QString text) {
    for (QChar &character : text) {
        if (character.category() == QChar::Other_Control || character.unicode() >= 0xFFFE) {
            character = QLatin1Char(' ');
        }
    }
    return text;
}

}  // namespace

PageWriter::PageWriter(QByteArray *html) : xml_(html) {
    xml_.writeDTD(QStringLiteral("<!DOCTYPE html>\n"));
}

void PageWriter::start(const char *element, Attributes attributes) {
    xml_.writeStartElement(QLatin1String(element));
    for (const auto &[name, value] : attributes) {
        xml_.writeAttribute(QLatin1String(name), xmlText(value));
    }
}

void PageWriter::end() {
    xml_.writeCharacters(QString());  // never the short form of an empty element, which HTML reads as its start
    xml_.writeEndElement();
}

void PageWriter::element(const char *name, Attributes attributes, const QString &text) {
    start(name, attributes);
    this->text(text);
    end();
}

void PageWriter::text(const QString &text) {
    xml_.writeCharacters(xmlText(text));
}

void PageWriter::empty(const char *name, Attributes attributes) {
    start(name, attributes);
    xml_.writeEndElement();
}

void PageWriter::startDrawing(double width, double height, const QString &description) {
    start("div", {{"class", QStringLiteral("scroll")}});
    start("svg", {{"xmlns", QStringLiteral("http://www.w3.org/2000/svg")},
                  {"viewBox", QStringLiteral("0 0 %1 %2").arg(pixels(width), pixels(height))},
                  {"role", QStringLiteral("img")},
                  {"aria-label", description}});
}

void PageWriter::rect(double x, double y, double width, double height, const char *style) {
    empty("rect", {{"x", pixels(x)},
                   {"y", pixels(y)},
                   {"width", pixels(width)},
                   {"height", pixels(height)},
                   {"class", QLatin1String(style)}});
}

void PageWriter::line(double x1, double y1, double x2, double y2) {
    empty("line", {{"x1", pixels(x1)},
                   {"y1", pixels(y1)},
                   {"x2", pixels(x2)},
                   {"y2", pixels(y2)},
                   {"class", QStringLiteral("rule")}});
}

void PageWriter::label(double x, double y, const char *style, const QString &text) {
    element("text", {{"x", pixels(x)}, {"y", pixels(y)}, {"class", QLatin1String(style)}}, text);
}

void PageWriter::legend(const QVector<LegendEntry> &entries) {
    start("div", {{"class", QStringLiteral("legend")}});
    for (const LegendEntry &entry : entries) {
        start("span");
        element("i", {{"class", QLatin1String(entry.style)}}, QString());
        text(entry.name);
        if (!entry.figure.isEmpty()) {
            element("b", {}, entry.figure);
        }
        end();
    }
    end();
}

QString pixels(double value) {
    return QString::number(double(qRound64(value * 100)) / 100);
}
