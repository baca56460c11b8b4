/* What the files of a scan occupy on their volume, beside how long they are, and what the scan could not see.
 *
 * The conventions of volindex.h hold. These functions are for the thread that makes the other calls, between
 * Tallyscope_ScanLocalDrive and Tallyscope_Free. What they write belongs to the caller. Nothing is an error:
 * without a scan, and after a stop, they answer 0 and write nothing.
 */
#ifndef VOLINDEX_USAGE_H
#define VOLINDEX_USAGE_H

#include "volindex/include/volindex.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Sizes are bytes.
 *
 * Allocated is what the files counted by the scan occupy: whole blocks, holes excluded, each file once
 * however many names it has. Blocks that several files share count for each. What lies within the file
 * system's own records counts nothing, or where the system has to be asked for each file, as the system tells
 * it. Folders count nothing.
 *
 * IsVolume is 1 where the scanned path is the root of a mounted volume that says how much of it is used; then
 * VolumeUsed is that, by the time the scan ended. Else both are 0. */
typedef struct TTallyscopeUsage {
  uint64_t Allocated;
  uint64_t VolumeUsed;
  uint32_t IsVolume;
  uint32_t Unreadable; /* folders that could not be read, or only in part */
} TTallyscopeUsage;

VOLINDEX_API uint8_t Tallyscope_GetUsage(TTallyscopeUsage* usage);

/* One of the unreadable folders, in the order of their paths: its path with a delimiter at the end. The
 * capacity is in UTF-16 units; 0 when there is no such folder or its path does not fit. */
VOLINDEX_API uint8_t Tallyscope_GetUnreadable(uint32_t index, char16_t* path, uint32_t capacity);

#ifdef __cplusplus
}
#endif

#endif
