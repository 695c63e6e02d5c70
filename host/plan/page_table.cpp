#include "host/plan/page_sections.h"
#include "host/plan/plan_columns.h"

namespace {

constexpr int kLabelsShown = 12;

void cell(PageWriter *page, const char *element, bool isNumber, const QString &text) {
    if (isNumber) {
        page->element(element, {{"class", QStringLiteral("number")}}, text);
    } else {
        page->element(element, {}, text);
    }
}

QString labelsText(const PlannedRequest &request) {
    const QString shown = QStringList(request.labels.mid(0, kLabelsShown)).join(QStringLiteral(", "));
    const int more = request.variables - qMin(request.labels.size(), kLabelsShown);
    return more > 0 ? shown + QStringLiteral(" and %1 more").arg(more) : shown;
}

void writeNotes(const PlannedRequest &request, PageWriter *page) {
    page->start("td");
    for (const PlanNote note : kPlanNotes) {
        if (request.notes & note) {
            page->element("em", {}, noteText(note));
        }
    }
    if (!request.failure.isEmpty()) {
        page->element("em", {{"class", QStringLiteral("failed")}}, request.failure);
    }
    page->end();
}

void writePass(const QString &name, const OtherPass &pass, const QString &difference, qint64 longestUs,
               PageWriter *page) {
    cell(page, "td", false, name);
    cell(page, "td", true, QString::number(pass.figures.requests));
    cell(page, "td", true, msText(pass.figures.us));
    cell(page, "td", true, difference);
    page->start("td", {{"class", QStringLiteral("bar")}});
    const double percent = 100.0 * double(pass.figures.us) / double(qMax<qint64>(1, longestUs));
    page->element("i", {{"style", QStringLiteral("width: %1%").arg(pixels(percent))}}, QString());
    page->end();
}

qint64 longestPass(const PassPlan &plan) {
    qint64 longest = plan.itself.figures.us;
    for (const PlanAlternative &other : planAlternatives(plan)) {
        longest = qMax(longest, other.pass.figures.us);
    }
    return longest;
}

}  // namespace

void writePasses(const PassPlan &plan, PageWriter *page) {
    const qint64 longestUs = longestPass(plan);
    page->element("h2", {}, QStringLiteral("With other settings"));
    page->start("div", {{"class", QStringLiteral("scroll")}});
    page->start("table");
    page->start("tr");
    cell(page, "th", false, QStringLiteral("one setting changed"));
    cell(page, "th", true, QStringLiteral("requests"));
    cell(page, "th", true, QStringLiteral("pass ms"));
    cell(page, "th", true, QStringLiteral("difference"));
    cell(page, "th", false, QString());
    page->end();
    page->start("tr", {{"class", QStringLiteral("own")}});
    writePass(QStringLiteral("this plan"), plan.itself, QString(), longestUs, page);
    page->end();
    for (const PlanAlternative &other : planAlternatives(plan)) {
        page->start("tr");
        writePass(other.name, other.pass, differenceText(other.pass.figures.us, plan.itself.figures.us), longestUs,
                  page);
        page->end();
    }
    page->end();
    page->end();
}

void writeRequests(const PassPlan &plan, PageWriter *page) {
    const QVector<PlanColumn> columns = planColumns(plan.isMeasured);
    page->element("h2", {}, QStringLiteral("Every request"));
    page->start("div", {{"class", QStringLiteral("scroll")}});
    page->start("table");
    page->start("tr");
    cell(page, "th", true, QStringLiteral("#"));
    for (const PlanColumn &column : columns) {
        cell(page, "th", column.isNumber, QString::fromLatin1(column.longTitle));
    }
    cell(page, "th", false, QStringLiteral("variables"));
    cell(page, "th", false, QStringLiteral("notes"));
    page->end();
    int number = 0;
    for (const PlannedRequest &request : plan.requests) {
        page->start("tr");
        cell(page, "td", true, QString::number(++number));
        for (const PlanColumn &column : columns) {
            cell(page, "td", column.isNumber, column.text(request));
        }
        page->element("td", {{"class", QStringLiteral("labels")}}, labelsText(request));
        writeNotes(request, page);
        page->end();
    }
    page->end();
    page->end();
}
