/* All folders of the scan that the volume index library holds, with what lies in them by kind of content:
 * what a picture of a whole volume is drawn from.
 *
 * Conventions as in volindex.h. The library owns the folders and keeps them from the end of
 * Tallyscope_ScanLocalDrive to the next Tallyscope_ScanLocalDrive or Tallyscope_Free; what a call hands out
 * is a copy. All calls come from the thread that scans, one after the other, but for
 * Tallyscope_KeepFolderKinds and Tallyscope_GetKindOfName, which any thread may call at any time. Sizes are
 * bytes. Nothing is reported as an error: what is not there is answered with 0, and nothing is written then.
 */
#ifndef VOLINDEX_FOLDERS_H
#define VOLINDEX_FOLDERS_H

#include "volindex/include/volindex.h"

#ifdef __cplusplus
extern "C" {
#endif

/* What a file holds, by the ending of its name alone. */
enum {
  TALLYSCOPE_OTHER = 0,
  TALLYSCOPE_PICTURES = 1,
  TALLYSCOPE_VIDEO = 2,
  TALLYSCOPE_AUDIO = 3,
  TALLYSCOPE_DOCUMENTS = 4,
  TALLYSCOPE_ARCHIVES = 5, /* and images of disks */
  TALLYSCOPE_CODE = 6,
  TALLYSCOPE_PROGRAMS = 7, /* and libraries */
  TALLYSCOPE_KINDS = 8
};

typedef struct TTallyscopeFolder {
  uint32_t Parent; /* the number of the folder that it lies in; the scanned folder is its own */
  uint64_t Total;  /* all files below it */
  uint64_t Own[TALLYSCOPE_KINDS]; /* the files in it, by kind; a file with several names counts once */
} TTallyscopeFolder;

/* Whether the scans that begin afterwards keep what Tallyscope_GetFolder tells: not at first, and not with 0.
 * It takes 64 bytes of memory a folder and a look at each file's name. */
VOLINDEX_API void Tallyscope_KeepFolderKinds(int32_t keep);

/* Every folder of the scan has a number below this one, the scanned folder 0. Not every such number has a
 * folder, and a folder may come before the one that it lies in. 0 where no scan has kept them. */
VOLINDEX_API uint32_t Tallyscope_GetFolderEnd(void);

/* 0 where the number has no folder. */
VOLINDEX_API uint8_t Tallyscope_GetFolder(uint32_t number, TTallyscopeFolder* folder);

/* The folder's own name, empty for the scanned one. `capacity` is in UTF-16 units; 0 also when it does not
 * fit. */
VOLINDEX_API uint8_t Tallyscope_GetFolderName(uint32_t number, char16_t* name, uint32_t capacity);

/* The kind of a file of this name of so many units, which need not end in NUL. */
VOLINDEX_API int32_t Tallyscope_GetKindOfName(const char16_t* name, uint32_t units);

#ifdef __cplusplus
}
#endif

#endif
