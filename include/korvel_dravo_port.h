// The communication driver of an operator panel: everything a host needs to bind libkorvel_dravo_port.so.1.
//
// The host owns the line and its variables; the driver owns the protocol. The host asks for the next request frame
// (ComCommunication), sends it, and passes back what arrived (DataCom). Values are read from the driver's cache.
//
// Threads. ComCommunication and DataCom run on one thread, the communication thread. AddListReadVar, and
// SetRegisterData when it writes to the device (writeMode 2), take no lock of their own: call them from a callback; or
// on the communication thread between its two calls, or while communication is stopped, and then only while no other
// thread is in ReCreatReadVarList, AddListOnceReadVar or AddListWriteVar. Every other entry point but those
// that bind may be called from any thread. Callbacks run on the communication thread with the driver's list lock held:
// in a callback call only AddListReadVar, SetRegisterData, GetRegisterData, the station table and pure functions.
//
// Binding. Until SetComInfo has been given a record, and again after it was given a null pointer: list calls return 0
// and change nothing, ComCommunication returns null, DataCom returns the result record with code 1, SetRegisterData
// returns 0, GetRegisterData returns 0 with count * 2 zero bytes. A null callback is skipped. No thread is in a call
// while the host binds, unbinds, unloads the library or exits. What is queued stays queued: the record that is bound
// next would send an old write; docs/host-guide.md, "Stopping", empties the driver.
//
// Counts. A count above kMaxElementCount cannot belong to any controller. ReCreatReadVarList leaves such a variable
// out; every other entry point that takes a count returns 0 and changes nothing (GetRegisterData: out is empty).
//
// Build host and library with the same Qt major version: the records below embed its containers.
#ifndef KORVEL_DRAVO_PORT_H
#define KORVEL_DRAVO_PORT_H

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

/// Largest count a variable may have: the bits of 65,536 registers. Of every other type a controller holds at most
/// 65,536; no call refuses the rest, so a host that takes counts from outside compares them first.
/// What the largest calls cost, measured on amd64 at a frame limit of 1: a rebuild with ten word variables of this
/// count makes 10,485,760 requests in 1 s of processor time and takes 0.92 GB (88 bytes each), twice that while the
/// list before is still there; one write to the device 1,048,576 requests and 0.24 GB. One-shot reads end at 1024.
enum { kMaxElementCount = 1048576 };

/// Settings and counters of the line. Owned by the host, borrowed by the driver from SetComInfo on, never freed.
/// Offsets are the same in 32-bit and 64-bit builds.
/// Read and written without a lock, but ReCreatReadVarList takes the list lock for it. So the host changes settings
/// while no other thread is in a call of the driver; retryTimes and, in writeMode 2, remoteMode and localNode in a
/// callback too, whatever other threads call. What the driver writes is for the communication thread to read;
/// cycleDone, while another thread may be in ReCreatReadVarList, in a callback.
struct ComInfo {
    unsigned char hostArea1[16];  // never touched
    int maxGroupLength;           // most elements in one request frame, times 8 for bit types; below 1 counts as 1
    int hostArea2;                // never touched
    int defaultStation;           // station of every variable while useVarStation is 0
    int retryTimes;               // bad replies beyond this many make a request fail
    int retryCount;               // written by the driver: bad replies since the limit was last passed
    int useVarStation;            // nonzero: each variable's own station
    int clearedWordA;             // set to 0 by SetComInfo
    int frameTotal;               // written by the driver: replies that finish the operation in progress
    int frameDone;                // written by the driver: good replies received for it
    int clearedWordB;             // set to 0 by SetComInfo
    int remoteMode;               // nonzero: requests are remote frames
    int localNode;                // node number of this panel
    int writeMode;                // 2: SetRegisterData writes to the device; anything else: to the cache only
    int cycleDone;      // driver: 1 after a pass over the cyclic list or when idle, 0 after a failure or rebuild
    void *hostContext;  // handed back as the first argument of VarCallBack
};

/// A variable, and a request for it. Whoever builds a record sets every field.
struct RW_VAR {
    int ownerId;          // host's identifier, first half; 0 in cyclic entries
    int itemId;           // host's identifier, second half; -1 in cyclic entries
    int accessFlag;       // 0: read, nonzero: write (the reply carries nothing to store)
    int remoteMode;       // copy of ComInfo::remoteMode
    int nodeId;           // node that holds the variable; ComInfo::localNode: this panel's own
    int retValue;         // cyclic entry: -1 while its request is in flight; result record: the result code
    QString label;        // travels with the record
    QString addressText;  // address as written: octal for types 0, 1; "word.bit" for 15, 16, 17, 20; else decimal
    int elemType;         // element type, 0 to 21
    int address;          // element address
    int station;          // 0: refused in cyclic and checked one-shot reads, a broadcast in a write
    int count;            // elements; in a write, of the 32-bit types, values
    int param1;           // -1: read half of a write to a bit inside a word
    int param2;           // 0
    QByteArray data;      // values, least significant byte first; bits of bit types packed, lowest address in bit 0 of
                          // byte 0; bits inside words one byte each
};

/// One request: the frame to send and the reply to expect. Owned by the driver.
struct Protocol {
    QByteArray frame;  // the bytes to send, checksum included
    int frameLength;   // bytes in frame
    int replyLength;   // bytes of the expected reply; 0: no reply comes; -1: any length
    int dataOffset;    // index in the reply of the first data byte
    int dataLength;    // data bytes in the reply; 0 for a write
    RW_VAR var;        // the variable that the request was built from
    int reserved1;     // 0, never read
    int reserved2;     // 0, never read
    int reserved3;     // 0, never read
};

/// A host variable as ReCreatReadVarList reads it. The host's entries may be longer: the driver only looks at the
/// fields named here and never copies an entry.
struct ReadVarEntry {
    unsigned char hostByte;      // not read
    unsigned char elemType;      // element type, 0 to 21
    unsigned char station;       // used while ComInfo::useVarStation is nonzero
    unsigned char hostBytes[5];  // not read
    QString addressText;
    QString label;
    int count;  // bits for bit and bit-in-word types, else 16-bit registers
};

/// A finished write, or a finished one-shot read of the own node. code 1: done, 2: failed, the retries are used up.
/// While a later request with the same two identifiers is queued, success is not reported. After a failure all queued
/// requests of these identifiers (with useVarStation nonzero: and of the same station) are dropped, those included that
/// are queued from inside the callback.
typedef void (*VarCallBack)(void *hostContext, int ownerId, int itemId, int code);

/// A request used up its retries. list is empty and dropped after the call; code is always 1.
typedef void (*ListCallBack)(QList<RW_VAR> *list, int ownerId, int code);

class Communication_Protocol;  // 136 bytes in 32-bit builds; its layout: docs/host-guide.md

/// Result codes that DataCom leaves in RW_VAR::retValue. A failure code is one of the bases, plus the request's ownerId
/// when that is 0 to 11, plus 1.
enum ResultCode {
    kResultRetry = 0,               // bad reply; ComCommunication hands the same request out again
    kResultGood = 1,                // good reply, or nothing was outstanding
    kResultLocalRejected = 10,      // 11 to 22: station or checksum of the reply was wrong, or it was too short
    kResultLocalNoReply = 40,       // 41 to 52
    kResultLocalWrongLength = 70,   // 71 to 82
    kResultRemoteGood = 100,        // good reply of another node; the driver stored nothing, the host has the bytes
    kResultRemoteRejected = 110,    // 111 to 122
    kResultRemoteNoReply = 140,     // 141 to 152
    kResultRemoteWrongLength = 170  // 171 to 182
};

#pragma GCC visibility push(default)
extern "C" {

// ---- Binding: before the communication thread starts. No lock, no check. ----

/// Binds the host's record and zeroes its two cleared words; null unbinds. Bind anew with nothing outstanding only: the
/// record counts the replies that the operation in progress still needs, and a fresh one says that none is. Its next
/// good reply then finishes it. Of a write to a bit inside a word that is the reply to its read half: the write half
/// goes out as the request of the next operation, and the write that is queued next is reported done though it was
/// never sent.
void SetComInfo(ComInfo *comInfo);

/// Stores three words in LB, LW and RWI for the host's other modules. The driver never reads them.
void FlashLocalRegister(unsigned int lb, unsigned int lw, unsigned int rwi);

/// Replaces both callbacks; null: not called.
void RegistCallBackFuncIntf(VarCallBack varCallBack, ListCallBack listCallBack);

// ---- The call loop: communication thread only. ----

/// The request to send now: the outstanding one while it is unanswered, else the next write, one-shot read or cyclic
/// read. Owned by the driver, valid until DataCom removes it.
/// @return null when there is nothing to send (then cycleDone is 1). Takes listMutex, stationMutex, cacheMutex.
Protocol *ComCommunication();

/// Judges the reply to the request handed out last, stores its values, finishes or retries the operation.
/// @param reply   the bytes received; null is an empty reply.
/// @param length  their number; 0: nothing came.
/// @return the result record, always the same address: retValue holds the result code, the other fields name the
///         variable finished last; data is empty. Takes listMutex (held during callbacks), cacheMutex.
RW_VAR *DataCom(QByteArray *reply, int length);

// ---- Stations: any thread, callbacks included. Take stationMutex. ----

/// Takes a station out of communication (enable 0) or back in (1); other values change nothing. A negative station
/// enables all. Writes and one-shot reads of a disabled station are dropped, without a callback, when they reach the
/// head of their queue; cyclic reads are skipped and kept.
void EnableEthernet(int station, int enable);
void EnCommStation(int station, int enable);  // the same

// ---- Lists. ----

/// The element address of an address text; negative: unusable. Pure; any thread. See StringAddressToInt.
int PLCAddressChangeIntef(int elemType, QString addressText);

/// Appends one ready-made cyclic read, unchanged: it is not cut at the frame limit nor at an area bound.
/// @return entries in the cyclic list. Takes no lock.
int AddListReadVar(RW_VAR *var);

/// Rebuilds the cyclic list: the variables are normalised, grouped by station and type, sorted by address and merged
/// into requests of at most the frame limit; the elements between two variables of a request are read too. Every
/// earlier entry is dropped, those of AddListReadVar and those before an empty list included. Variables whose address
/// does not convert, whose station is 0 or whose type is above 21 are left out.
/// The requests are made aside, so that others wait for the exchange of the lists alone: until then they see the old
/// list, and an entry that AddListReadVar adds to it from a callback goes with it. The host's list stays as it is
/// during the call. Of two calls at a time the later one is carried out after the earlier.
/// @return requests in the list. Takes listMutex; not in a callback.
int ReCreatReadVarList(QList<ReadVarEntry> *entries);

/// Queues a one-shot read. mode 1: the record as it stands, of any count from INT_MIN to kMaxElementCount, neither cut
/// nor checked. Any other mode: works out address, station and normalised type, cuts into frames and at area bounds,
/// skips pieces already queued, stops at 1024 entries; a negative count queues nothing. The record is changed: it ends
/// as the last piece.
/// @return entries in the queue; 0: address, station or type refused. Takes listMutex; not in a callback.
int AddListOnceReadVar(RW_VAR *var, int mode);

/// Queues a write. mode 1: appended as it stands. Any other mode: replaces a queued write (not the head) of the same
/// station, type, address and count, else appends below 1024 entries. Neither mode cuts: a record across an area bound
/// is sent as one request. The record is not changed.
/// @return entries in the queue. Takes listMutex; not in a callback.
int AddListWriteVar(RW_VAR *var, int mode);

// ---- Values. ----

/// Copies the last known values of a variable to out; never waits for the link.
/// @param firstArg     never read.
/// @param elemType     0 to 21; any other code reads as count * 2 zero bytes.
/// @param addressText  octal for types 0 and 1, "word.bit" for 15, 16, 17, 20, decimal otherwise.
/// @param out    replaced. 1 byte per bit, 2 per register (low byte first), 4 per 32-bit value (least significant
/// first).
/// @param count  bits or 16-bit registers; an odd count of a 32-bit type is rounded up; below 1 gives an empty out.
/// @return 1: filled, elements never seen as zeros. 0: addressText did not convert, out holds count * 2 zero bytes.
/// Any thread, callbacks included. Takes cacheMutex.
int GetRegisterData(const QString &firstArg, int elemType, const QString &addressText, int station, QByteArray &out,
                    int count);

/// Writes values: to the device through the write queue (writeMode 2), else to the cache only. Layout of values and
/// unit of count as in GetRegisterData; missing bytes count as 0. Requests are cut at maxGroupLength (bit types are
/// not) and at every area bound; each bit of a bit-in-word type is a write of its own.
/// @param label            travels with the records.
/// @param ownerId, itemId  come back in VarCallBack.
/// Most bits in one write: 1968 (Modbus). A count below 1 writes nothing, but for bit types it queues a request of no
/// bits.
/// @return 1: cache only (an unknown type stores nothing). 0: queued, or refused (addressText did not convert, or in
/// writeMode 2 no such type).
/// writeMode 2: takes no lock but cacheMutex, see Threads. Otherwise any thread. Callbacks included.
int SetRegisterData(const QString &label, int elemType, const QString &addressText, int station,
                    const QByteArray &values, int count, int ownerId, int itemId);

/// Always 1.
int QueryFinishFlag();

extern Communication_Protocol PLC_driver;
extern unsigned int LB, LW, RWI;

}  // extern "C"

// ---- Utilities with C++ linkage: no driver state, no lock; any thread that owns the arguments. ----

/// The element address of text, read by the rule of type (see GetRegisterData).
/// @return negative: unusable; -1: the text does not convert, or the address exceeds an int.
int StringAddressToInt(int type, QString text);

/// The type that carries type on the wire: 7 for 12, 15; 8 for 14, 16; 11 for 17, 18; 19 for 20, 21; else type itself.
int getPlcReg(int type);

/// Normalises a variable for reading, in place.
/// @return 0: usable; 1: elemType is not 0 to 21, var unchanged.
int updateRwVar(RW_VAR *var);

/// The Modbus start address of an element; 0 for bit-in-word types and codes outside 0 to 21. Frames carry its low 16
/// bits. Changes neither argument.
int get_offset_address(int &type, int &address);

/// Cuts a request of count elements into requests of at most limit (below 1 counts as 1) and appends them to list; var
/// ends as the last piece. A count within limit appends var unchanged.
void WhetherGroup(int count, int limit, RW_VAR *var, QList<RW_VAR> *list);

// These three cut at the bounds 2048 (type 2), 256 (3, 5, 6, 8, 9, 13) and 1024 (4); type 7 is not cut here, unlike in
// the requests that the driver builds itself. After a cut var holds the second part.

/// Appends a read request.
void function_rw_var_add_read(QList<RW_VAR> &list, RW_VAR &var);
/// Sets the count of the last request of list, whose address var shares; what lies beyond the bound is appended.
void function_rw_var_revise(QList<RW_VAR> &list, RW_VAR &var);
/// Appends a write request; its data are cut with it.
void function_rw_var_add_write(QList<RW_VAR> &list, RW_VAR &var);

/// Sum of the bytes modulo 65,536; 0 for none.
int CalSUM(unsigned char *data, unsigned short length);
/// CRC-16 of Modbus (reflected 0xA001, initial 0xFFFF), sent low byte first; 0xFFFF for no bytes.
int CalCRC(unsigned char *data, unsigned short length);
/// Two's complement of the sum's low byte, 1 to 256; 256 for no bytes.
int CalLRC(unsigned char *data, unsigned short length);
/// Exclusive-or of the bytes; 0 for none.
int CalXOR(unsigned char *data, unsigned short length);
/// Character of a hexadecimal digit, upper case; no range check.
int DigitalToASCII(int value);
/// Value of a hexadecimal digit, upper case; no range check.
int ASCIIToDigital(int character);

#pragma GCC visibility pop

#endif  // KORVEL_DRAVO_PORT_H
