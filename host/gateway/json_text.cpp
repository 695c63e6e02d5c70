#include "host/gateway/json_text.h"

#include <QtCore/QSet>
#include <QtCore/QVector>

namespace {

/// Behind the string that begins at a quote.
int stringEnd(const QByteArray &text, int quote) {
    int i = quote + 1;
    while (i < text.size() && text.at(i) != '"') {
        i += text.at(i) == '\\' ? 2 : 1;
    }
    return i + 1;
}

}  // namespace

bool hasDoubtfulNames(const QByteArray &text) {
    QVector<QSet<QByteArray>> names;  // of each object around
    QByteArray name;
    for (int i = 0; i < text.size();) {
        const char character = text.at(i);
        const int next = character == '"' ? stringEnd(text, i) : i + 1;
        if (character == '"') {
            name = text.mid(i, next - i);
        } else if (character == '{' || character == '[') {
            names.append(QSet<QByteArray>());
        } else if (character == ':' && !names.isEmpty()) {
            if (name.contains('\\') || names.last().contains(name)) {
                return true;
            }
            names.last().insert(name);
        } else if ((character == '}' || character == ']') && !names.isEmpty()) {
            names.removeLast();
        }
        i = next;
    }
    return false;
}

QByteArrayList jsonItems(const QByteArray &text) {
    QByteArrayList items;
    int depth = 0;
    int start = 0;
    for (int i = 0; i < text.size();) {
        const char character = text.at(i);
        const bool opens = character == '{' || character == '[';
        const bool closes = character == '}' || character == ']';
        const bool parts = depth == 1 && (closes || character == ',' || character == ':');
        if (parts) {
            items.append(text.mid(start, i - start).trimmed());
        }
        depth += opens ? 1 : closes ? -1 : 0;
        i = character == '"' ? stringEnd(text, i) : i + 1;
        start = parts || (opens && depth == 1) ? i : start;
    }
    return items;
}

QByteArray jsonMember(const QByteArray &object, const QByteArray &name) {
    const QByteArrayList items = jsonItems(object);
    QByteArray value;
    for (int i = 0; i + 1 < items.size(); i += 2) {
        value = items.at(i) == '"' + name + '"' ? items.at(i + 1) : value;
    }
    return value;
}
