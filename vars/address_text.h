// From an address text to the element address. Pure; any thread.
#ifndef DRAVO_VARS_ADDRESS_TEXT_H
#define DRAVO_VARS_ADDRESS_TEXT_H

#include <QtCore/QString>

/// What an address text that does not convert gives.
const int kNoAddress = -1;

/// As StringAddressToInt, for callers that keep the text.
int elementAddress(int type, const QString &text);

#endif  // DRAVO_VARS_ADDRESS_TEXT_H
