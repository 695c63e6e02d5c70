// The text that stands in JSON for a value: parsed, a long number would lose digits. Pure; any thread.
#ifndef DRAVO_HOST_GATEWAY_JSON_TEXT_H
#define DRAVO_HOST_GATEWAY_JSON_TEXT_H

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayList>

/// Whether some object has a member twice, or a name is escaped and could be one. text: anything.
bool hasDoubtfulNames(const QByteArray &text);

/// The texts inside of an object, names and values in turn, or of an array. text: valid JSON.
QByteArrayList jsonItems(const QByteArray &text);

/// The value of an object's member, the last one of that name. Empty: there is none, or its name is escaped.
QByteArray jsonMember(const QByteArray &object, const QByteArray &name);

#endif  // DRAVO_HOST_GATEWAY_JSON_TEXT_H
