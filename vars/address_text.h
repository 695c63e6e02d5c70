// What an address text that does not convert gives.
#ifndef DRAVO_VARS_ADDRESS_TEXT_H
#define DRAVO_VARS_ADDRESS_TEXT_H

const int kNoAddress = -1;

#endif  // DRAVO_VARS_ADDRESS_TEXT_H
