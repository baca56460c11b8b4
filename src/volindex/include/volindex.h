/* The volume index library: reads a whole volume and serves its largest files and folders.
 *
 * Conventions
 *  1. Texts are NUL-terminated UTF-16, paths with the system's delimiter. Where file names are bytes, a byte
 * 0xNN that is no valid UTF-8 stands as the lone surrogate U+DC00+NN. Integers are of the widths given; sizes
 * are bytes, in two halves of 32 bits.
 *  2. The library holds one scan at a time. Tallyscope_Stop may be called by any thread at any time. All
 * other calls come one after the other.
 *  3. Order: Tallyscope_SetNotifyHwnd, Tallyscope_CheckFileSystem, Tallyscope_ScanLocalDrive, which begins by
 *     dropping a former scan; then the record calls; then Tallyscope_Free. A record call without a scan finds
 *     empty sets.
 *  4. Nothing is reported as an error: what cannot be read is declined, left out, or answered with 0.
 */
#ifndef VOLINDEX_H
#define VOLINDEX_H

#include <stdint.h>
#ifndef __cplusplus
#include <uchar.h>
#endif

#if defined(_WIN32) && defined(Volindex_EXPORTS)
#define VOLINDEX_API __declspec(dllexport)
#elif defined(_WIN32)
#define VOLINDEX_API __declspec(dllimport)
#else
#define VOLINDEX_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Record sets. */
enum { TALLYSCOPE_FILES = 0, TALLYSCOPE_FOLDERS = 2 };

/* Where progress goes. Post is called by any thread, must not wait for the one that scans, and gets Self,
 * the message number, WPARAM 0 and as LPARAM a phase of 1 to 99 that is higher at each call of a scan. */
typedef struct TTallyscopeNotify {
  void* Self;
  void (*Post)(void* self, unsigned message, uintptr_t wparam, intptr_t lparam);
} TTallyscopeNotify;

/* `window` is a TTallyscopeNotify*, which must stay until it is replaced; null for no notification. */
VOLINDEX_API void Tallyscope_SetNotifyHwnd(const void* window, uint32_t message);

/* 0 when the path cannot be served: no folder, not readable, or on a file system that stores nothing. */
VOLINDEX_API int32_t Tallyscope_CheckFileSystem(const char16_t* path);

/* Blocks until the volume is read, or for at most about 100 ms after Tallyscope_Stop; the record sets are
 * empty after a stop. A stop from before the call has no effect on it. */
VOLINDEX_API void Tallyscope_ScanLocalDrive(const char16_t* path);

/* Makes a set current; TALLYSCOPE_FILES is after a scan. Another kind is an empty set. */
VOLINDEX_API void Tallyscope_OpenRecord(int32_t kind);

/* Number of records in the current set: the largest ones, 1,000 or all if there are fewer. Where a pointer is
 * given it gets the number of all files, or of all folders but the scanned one. */
VOLINDEX_API uint32_t Tallyscope_GetRecordCount(uint32_t* files, uint32_t* folders);

/* The record at `index`, largest first: its name, the folder that holds it with a delimiter at the end, and
 * its size. Capacities are in UTF-16 units. 0, with nothing written, when there is no such record or it does
 * not fit. `option` has no meaning. */
VOLINDEX_API uint8_t Tallyscope_GetRecordByIndex(int32_t index, char16_t* name, uint32_t nameCapacity,
                                                 char16_t* path, uint32_t pathCapacity, uint32_t* sizeHigh,
                                                 uint32_t* sizeLow, uint32_t option);

/* The total of a folder of the scan, the scanned one included; 0 for any other path. */
VOLINDEX_API void Tallyscope_GetFolderSize(const char16_t* path, uint32_t* sizeHigh, uint32_t* sizeLow);

/* Ends a running scan. Any thread. */
VOLINDEX_API void Tallyscope_Stop(void);

/* Releases the scan. */
VOLINDEX_API void Tallyscope_Free(void);

#ifdef __cplusplus
}
#endif

#endif
