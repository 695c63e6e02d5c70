// HTML that is well-formed XML, written element by element. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_PAGE_WRITER_H
#define DRAVO_HOST_PLAN_PAGE_WRITER_H

#include <QtCore/QXmlStreamWriter>
#include <utility>

class PageWriter {
public:
    using Attributes = std::initializer_list<std::pair<const char *, QString>>;

    /// Appends UTF-8 to html, which outlives the writer.
    explicit PageWriter(QByteArray *html);

    void start(const char *element, Attributes attributes = {});
    void end();
    /// An element with nothing but text in it. Characters that XML does not have become blanks.
    void element(const char *name, Attributes attributes, const QString &text);
    void text(const QString &text);
    /// An element without content. Of HTML's only those that never have any.
    void empty(const char *name, Attributes attributes);

    // Shapes of a drawing. style: classes of the style sheet.

    void startDrawing(double width, double height, const QString &description);
    void rect(double x, double y, double width, double height, const char *style);
    void line(double x1, double y1, double x2, double y2);
    void label(double x, double y, const char *style, const QString &text);

    /// A row of coloured squares with names, and figures where there are any.
    struct LegendEntry {
        const char *style;
        QString name;
        QString figure;
    };
    void legend(const QVector<LegendEntry> &entries);

private:
    QXmlStreamWriter xml_;
};

/// A length or place in a drawing: two decimals at most.
QString pixels(double value);

#endif  // DRAVO_HOST_PLAN_PAGE_WRITER_H
