// dravo-host-reference: writes manual pages and the completion of bash into a folder. Part of the build, not installed.
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <cstdio>

#include "host/reference/bash_completion.h"
#include "host/reference/manual.h"

namespace {

bool written(const QString &fileName, const QByteArray &text) {
    QFile file(fileName);
    const bool good = file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush();
    if (!good) {
        std::fprintf(stderr, "dravo-host-reference: %s: %s\n", qPrintable(fileName), qPrintable(file.errorString()));
    }
    return good;
}

}  // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(DRAVO_VERSION));
    if (argc != 3) {
        std::fputs("usage: dravo-host-reference FOLDER DATE\n", stderr);
        return 2;
    }
    const QString folder = QCoreApplication::arguments().at(1) + QLatin1Char('/');
    Options settings;
    const CommandTree tree = buildCommandTree(&settings);
    bool good = written(folder + QStringLiteral("dravo-host"), bashCompletion(tree));
    for (const ManualPage &page : manualPages(tree, QCoreApplication::arguments().at(2))) {
        good = written(folder + page.name + QStringLiteral(".1"), page.source) && good;
    }
    return good ? 0 : 1;
}
