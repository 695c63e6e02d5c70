// A host over the line engine, built outside the source tree: watches a variable and prints the first frame.
#include <korvel_dravo_line.h>

#include <cstdio>

int main() {
    dravo::LineSettings settings;
    settings.startSilenceUs = 0;
    dravo::Line line(settings, 0);
    dravo::Variable variable;
    variable.elemType = 7;
    variable.addressText = QString::fromLatin1("100");
    variable.count = 2;
    const bool usable = dravo::resolve(&variable).isEmpty();
    line.watch(QVector<dravo::Variable>(1, variable), 0);
    std::puts(usable ? line.next(0).bytes.toHex().constData() : "refused");
}
