/* What the C test needs of the system. What fails ends the test. */
#ifndef C_SYSTEM_H
#define C_SYSTEM_H

#include <stddef.h>
#include <stdint.h>
#ifdef __cplusplus
extern "C" {
#else
#include <uchar.h>
#endif

/* Of paths outside the library. */
char Delimiter(void);

/* A name that is changed by who takes texts for valid. */
const char16_t* OddName(void);

/* A path that there is but that can't be scanned. */
const char16_t* NoDisk(void);

/* A folder of the test's own, its path put into `root`; the paths below are relative to it, with '/'. */
void AddRoot(char* root, size_t capacity);
void RemoveRoot(void);
void AddFolder(const char* path);
void AddFile(const char* path, uint64_t size);
void AddOddFile(uint64_t size);

#ifdef __cplusplus
}
#endif

#endif
