#include "host/plan/plan_page.h"

#include <QtCore/QFile>

#include "host/plan/page_sections.h"
#include "host/plan/plan_columns.h"

// In a static library nobody refers to the resource, so it is registered by hand; the macro wants no namespace around.
static void registerStyle() {
    Q_INIT_RESOURCE(page);
}

namespace {

const char kTitle[] = "What a pass costs";

// Characters that XML would escape are none of it: a browser takes a style sheet as it stands.
QString styleSheet() {
    registerStyle();
    QFile file(QStringLiteral(":/page.css"));
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : QString();
}

void writeHead(PageWriter *page) {
    page->start("head");
    page->empty("meta", {{"charset", QStringLiteral("utf-8")}});
    page->empty("meta", {{"name", QStringLiteral("viewport")},
                         {"content", QStringLiteral("width=device-width, initial-scale=1")}});
    page->element("title", {}, QLatin1String(kTitle));
    page->element("style", {}, styleSheet());
    page->end();
}

void writeTile(const QString &figure, const QString &name, PageWriter *page) {
    page->start("div", {{"class", QStringLiteral("tile")}});
    page->element("b", {}, figure);
    page->element("span", {}, name);
    page->end();
}

void writeTiles(const PassPlan &plan, PageWriter *page) {
    page->start("div", {{"class", QStringLiteral("tiles")}});
    writeTile(timeText(plan.itself.figures.us), QStringLiteral("for a pass"), page);
    writeTile(QString::number(plan.requests.size()),
              QStringLiteral("requests, %1 bytes out, %2 in").arg(plan.bytesOut).arg(plan.bytesIn), page);
    writeTile(QString::number(plan.valuesPerSecond(), 'f', 1),
              QStringLiteral("values a second, %1 in a pass").arg(plan.values), page);
    writeTile(QString::number(100 * plan.gapShare(), 'f', 1) + QStringLiteral(" %"),
              QStringLiteral("of the time goes to gaps"), page);
    writeTile(timeText(plan.bestLimit.figures.us),
              QStringLiteral("with frame limit %1, the best").arg(plan.bestLimit.frameLimit), page);
    writeTile(timeText(plan.otherMerge.figures.us),
              QStringLiteral("with merge %1").arg(mergeName(plan.otherMerge.merge)), page);
    page->end();
}

QString settingsText(const PassPlan &plan, const QString &source) {
    return QStringLiteral("%1 · %2 baud, %3 bits a character, turnaround %4 ms · frame limit %5, merge %6")
        .arg(source)
        .arg(plan.line.baud)
        .arg(plan.line.bitsPerCharacter)
        .arg(msText(plan.line.replyDelayUs))
        .arg(plan.line.frameLimit)
        .arg(mergeName(plan.line.merge));
}

QString footerText(const PassPlan &plan) {
    const QString computed =
        QStringLiteral(
            "Computed from the requests that the driver makes: their bytes as characters, two silences of "
            "%1 ms and the turnaround for each.")
            .arg(double(RequestCost(plan.line).silenceUs()) / 1000, 0, 'f', 2);
    return plan.isMeasured
               ? computed + QStringLiteral(" Measured: from the end of one reply to the end of the next, medians.")
               : computed;
}

}  // namespace

QByteArray planPage(const PassPlan &plan, const QString &source) {
    QByteArray html;
    PageWriter page(&html);
    page.start("html", {{"xmlns", QStringLiteral("http://www.w3.org/1999/xhtml")}, {"lang", QStringLiteral("en")}});
    writeHead(&page);
    page.start("body");
    page.start("main");
    page.element("h1", {}, QLatin1String(kTitle));
    page.element("p", {{"class", QStringLiteral("settings")}}, settingsText(plan, source));
    writeTiles(plan, &page);
    for (const auto write : {&writeShares, &writeTimeline, &writeCurves, &writePasses, &writeStrips, &writeRequests}) {
        page.start("section");
        write(plan, &page);
        page.end();
    }
    page.element("footer", {}, footerText(plan));
    for (int i = 0; i < 3; ++i) {
        page.end();
    }
    html.append('\n');
    return html;
}
