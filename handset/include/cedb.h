// The database calls of Windows CE 5.2 (EDB): volumes, databases of property records, cursors.
//
// A volume is one file. A call that returned success is on the disk. Failures are told by GetLastError:
// ERROR_INVALID_PARAMETER (an argument, a closed handle, an unknown record or an unmounted volume),
// ERROR_DISK_FULL, ERROR_FILE_CORRUPT (the volume's contents contradict themselves) and those named below.
// Every call may be made from any thread; two threads do not use one database handle at the same time.
#pragma once

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef DWORD CEOID;     // a record or database in its volume; 0 = none; never given out twice
typedef DWORD CEPROPID;  // a property: its number in the high word, its type (CEVT_…) in the low word
typedef CEOID* PCEOID;
typedef CEPROPID* PCEPROPID;

// A mounted volume.
typedef struct _CEGUID {
    DWORD Data1;
    DWORD Data2;
    DWORD Data3;
    DWORD Data4;
} CEGUID;
typedef CEGUID* PCEGUID;
#define CREATE_INVALIDGUID(guid) memset((guid), 0xFF, sizeof(CEGUID))
#define CHECK_INVALIDGUID(guid) \
    (((guid)->Data1 & (guid)->Data2 & (guid)->Data3 & (guid)->Data4) == 0xFFFFFFFF)

#define CEVT_I2 2
#define CEVT_I4 3
#define CEVT_R8 5
#define CEVT_BOOL 11
#define CEVT_UI2 18
#define CEVT_UI4 19
#define CEVT_LPWSTR 31
#define CEVT_FILETIME 64
#define CEVT_BLOB 65

#define TypeFromPropID(propid) LOWORD(propid)

typedef struct _CEBLOB {
    DWORD dwCount;  // bytes
    LPBYTE lpb;
} CEBLOB;

typedef union _CEVALUNION {
    short iVal;
    USHORT uiVal;
    LONG lVal;
    ULONG ulVal;
    FILETIME filetime;
    LPWSTR lpwstr;
    CEBLOB blob;
    BOOL boolVal;
    double dblVal;
} CEVALUNION;

#define CEDB_PROPNOTFOUND 0x0100  // read: the record has no such property
#define CEDB_PROPDELETE 0x0200    // write: take the property away

typedef struct _CEPROPVAL {
    CEPROPID propid;
    WORD wLenData;  // not used
    WORD wFlags;
    CEVALUNION val;
} CEPROPVAL;
typedef CEPROPVAL* PCEPROPVAL;

#define CEDB_MAXDBASENAMELEN 128  // with the terminator
#define CEDB_MAXSORTORDER 16
#define CEDB_MAXSORTPROP 16
#define CEDB_MAXPROPDATALEN 65471  // bytes in one property
#define CEDB_MAXRECORDSIZE 131072  // bytes in one record

// rgdwFlags of a sort order. The default is ascending, case-sensitive, records without the property last.
#define CEDB_SORT_DESCENDING 0x00000001
#define CEDB_SORT_CASEINSENSITIVE 0x00000002
#define CEDB_SORT_UNKNOWNFIRST 0x00000004
#define CEDB_SORT_IGNORENONSPACE 0x00000010
#define CEDB_SORT_IGNORESYMBOLS 0x00000020
#define CEDB_SORT_IGNOREKANATYPE 0x00000040
#define CEDB_SORT_IGNOREWIDTH 0x00000080
#define CEDB_SORT_STRINGSORT 0x00000100
#define CEDB_SORT_NONNULL 0x00000400  // a record without the property is refused
// wKeyFlags: no two records have the same key (a second one fails with ERROR_ALREADY_EXISTS).
#define CEDB_SORT_UNIQUE 0x00000200

#define SORTORDERSPECEX_VERSION 2
typedef struct _SORTORDERSPECEX {
    WORD wVersion;
    WORD wNumProps;
    WORD wKeyFlags;
    WORD wReserved;
    CEPROPID rgPropID[CEDB_MAXSORTPROP];  // no blobs
    DWORD rgdwFlags[CEDB_MAXSORTPROP];
} SORTORDERSPECEX;

#define CEDB_VALIDNAME 0x0001
#define CEDB_VALIDTYPE 0x0002
#define CEDB_VALIDSORTSPEC 0x0004
#define CEDB_VALIDMODTIME 0x0008
#define CEDB_VALIDDBFLAGS 0x0010
#define CEDB_VALIDCREATE (CEDB_VALIDNAME | CEDB_VALIDTYPE | CEDB_VALIDSORTSPEC | CEDB_VALIDDBFLAGS)
#define CEDB_NOCOMPRESS 0x00010000

#define CEDBASEINFOEX_VERSION 2
typedef struct _CEDBASEINFOEX {
    WORD wVersion;
    WORD wNumSortOrder;
    DWORD dwFlags;
    WCHAR szDbaseName[CEDB_MAXDBASENAMELEN];
    DWORD dwDbaseType;
    DWORD dwNumRecords;
    DWORD dwSize;
    FILETIME ftLastModified;
    SORTORDERSPECEX rgSortSpecs[CEDB_MAXSORTORDER];
} CEDBASEINFOEX;

typedef struct _CENOTIFYREQUEST {
    DWORD dwSize;
    HWND hwnd;
    DWORD dwFlags;
    HANDLE hHeap;
    DWORD dwParam;
} CENOTIFYREQUEST;

typedef struct _CEPROPSPEC {
    WORD wVersion;
    CEPROPID propid;
    DWORD dwFlags;
    LPWSTR pwszPropName;
    DWORD cchPropName;
} CEPROPSPEC;

// Or'ed to the flags of CeMountDBVol: an EDB volume. Volumes have one format here, with and without it.
#define EDB_MOUNT_FLAG 0x80000000

// Mounts the file `name` (without a folder: in the root of the object store). `flags`: CREATE_NEW
// (ERROR_ALREADY_EXISTS), CREATE_ALWAYS (discards what is there), OPEN_EXISTING and TRUNCATE_EXISTING
// (ERROR_FILE_NOT_FOUND), OPEN_ALWAYS. Mounting a mounted volume succeeds with the same identifier and is
// counted, but to empty one fails with ERROR_ACCESS_DENIED. A file that is no volume is never opened
// (ERROR_BAD_FORMAT, ERROR_FILE_CORRUPT) and only CREATE_ALWAYS replaces it. ERROR_PATH_NOT_FOUND: no such
// folder, or the storage card is out. After a failure the identifier is the invalid one.
BOOL WINAPI CeMountDBVol(PCEGUID volume, LPWSTR name, DWORD flags);
// Takes one mount back; TRUE while others or open databases keep the volume. ERROR_NOT_FOUND: not mounted.
BOOL WINAPI CeUnmountDBVol(PCEGUID volume);
// Everything is on the disk already; fails for a volume that is not mounted.
BOOL WINAPI CeFlushDBVol(PCEGUID volume);
// The language in which the volume sorts text.
BOOL WINAPI CeChangeDatabaseLCID(PCEGUID volume, DWORD lcid);

// Makes a database; its identifier, or 0: ERROR_DUP_NAME when the name exists (in any letter case).
CEOID WINAPI CeCreateDatabaseEx2(PCEGUID volume, CEDBASEINFOEX* info);
// Opens the database *oid, or with *oid = 0 the one of that name, which puts its identifier there.
// `sort`: one of the orders that the database was made with, or NULL for the order in which the records were
// made. `flags`: CEDB_AUTOINCREMENT or 0. The cursor stands in front of the first record. CloseHandle closes.
// INVALID_HANDLE_VALUE: ERROR_FILE_NOT_FOUND; ERROR_NOT_SUPPORTED for a notification request.
HANDLE WINAPI CeOpenDatabaseEx2(PCEGUID volume, PCEOID oid, LPWSTR name, SORTORDERSPECEX* sort, DWORD flags,
                                CENOTIFYREQUEST* request);
#define CEDB_AUTOINCREMENT 0x00000001  // a read steps on to the next record

// CeSeekDatabaseEx. The value is a number or the address of CEPROPVALs, one for each of the first columns of
// the sort order: a DWORD on the device, as wide as a pointer here.
#define CEDB_SEEK_CEOID 0x00000001         // the record with this identifier
#define CEDB_SEEK_BEGINNING 0x00000002     // so many records from the first (0 = the first)
#define CEDB_SEEK_END 0x00000004           // so many records back from the last (0 = the last)
#define CEDB_SEEK_CURRENT 0x00000008       // so many records on; a negative LONG goes back
#define CEDB_SEEK_VALUESMALLER 0x00000010  // the last record in front of all with these values
#define CEDB_SEEK_VALUEFIRSTEQUAL 0x00000020
#define CEDB_SEEK_VALUEGREATER 0x00000040    // the first record behind all with these values
#define CEDB_SEEK_VALUENEXTEQUAL 0x00000080  // the very next record, if it has these values
#define CEDB_SEEK_VALUESMALLEROREQUAL 0x00000100
#define CEDB_SEEK_VALUEGREATEROREQUAL 0x00000200
// The record found, or 0: ERROR_SEEK, and the cursor stands at the end. `index`, unless NULL, gets the number
// of records in front of the one found.
CEOID WINAPI CeSeekDatabaseEx(HANDLE database, DWORD type, DWORD_PTR value, WORD values, LPDWORD index);
CEOID WINAPI CeSeekDatabase(HANDLE database, DWORD type, DWORD_PTR value, LPDWORD index);

#define CEDB_ALLOWREALLOC 0x00000001
// Reads the record at the cursor into one block: the CEPROPVALs, behind them the strings and blobs that they
// point to. `ids` NULL: every property, their number comes back in *count; otherwise *count identifiers, and
// what is missing is marked CEDB_PROPNOTFOUND (all of them: ERROR_NO_DATA). With CEDB_ALLOWREALLOC *buffer is
// NULL or a block of `heap` (NULL: of LocalAlloc), made larger as needed; *size gets the bytes used.
// 0: ERROR_NO_MORE_ITEMS at the end, ERROR_KEY_DELETED when the record is gone, ERROR_INSUFFICIENT_BUFFER
// (*size gets the bytes needed; the cursor stays).
CEOID WINAPI CeReadRecordPropsEx(HANDLE database, DWORD flags, LPWORD count, CEPROPID* ids, LPBYTE* buffer,
                                 LPDWORD size, HANDLE heap);
// Changes the record, or makes one when `record` is 0. The cursor keeps its place, and stays on the record
// that it stands on. The record's identifier, or 0.
CEOID WINAPI CeWriteRecordProps(HANDLE database, CEOID record, WORD count, CEPROPVAL* values);
// Deletes a record. With CEDB_AUTOINCREMENT a cursor that stands on it moves on; without, the next read
// fails.
BOOL WINAPI CeDeleteRecord(HANDLE database, CEOID record);

// Makes a database without descriptions of its properties.
inline CEOID CeCreateDatabaseWithProps(PCEGUID volume, CEDBASEINFOEX* info, DWORD properties,
                                       CEPROPSPEC* /*descriptions*/) {
    if (properties == 0) return CeCreateDatabaseEx2(volume, info);
    SetLastError(ERROR_NOT_SUPPORTED);
    return 0;
}

// A session scopes transactions; as nothing on this device begins one, each call is a transaction of its own
// and a session is no more than a handle. INVALID_HANDLE_VALUE when the volume is not mounted.
inline HANDLE CeCreateSession(PCEGUID volume) {
    if (!CeFlushDBVol(volume)) return INVALID_HANDLE_VALUE;
    const HANDLE session = CreateEventW(NULL, TRUE, FALSE, NULL);
    return session == NULL ? INVALID_HANDLE_VALUE : session;
}

// As CeOpenDatabaseEx2. `session` may be NULL.
inline HANDLE CeOpenDatabaseInSession(HANDLE session, PCEGUID volume, PCEOID oid, LPWSTR name,
                                      SORTORDERSPECEX* sort, DWORD flags, CENOTIFYREQUEST* request) {
    if (session == INVALID_HANDLE_VALUE) {
        SetLastError(ERROR_INVALID_HANDLE);
        return INVALID_HANDLE_VALUE;
    }
    if (session != NULL && WaitForSingleObject(session, 0) == WAIT_FAILED) return INVALID_HANDLE_VALUE;
    return CeOpenDatabaseEx2(volume, oid, name, sort, flags, request);
}

#ifdef __cplusplus
}
#endif
