/* Whether the volume index library may ask for the rights that reading a volume in bulk needs.
 *
 * A user who may not read a disk gets the readers that can do without, unless the program allows more: on Linux a small
 * program of its own, tallyscope-volume beside the library, then reads the volume as the administrator, after the system
 * has asked for his consent. What is refused is not asked for again until Tallyscope_SetElevation is called anew. Nothing
 * is reported: without consent the volume is read as it would have been. Without effect on Windows.
 */
#ifndef VOLINDEX_ELEVATION_H
#define VOLINDEX_ELEVATION_H

#include "volindex/include/volindex.h"

#ifdef __cplusplus
extern "C" {
#endif

/* How the user may be asked. */
enum { TALLYSCOPE_ASK_NEVER = 0, TALLYSCOPE_ASK_ON_DESKTOP = 1, TALLYSCOPE_ASK_ON_TERMINAL_TOO = 2 };

/* Any thread; for the scans that begin afterwards. TALLYSCOPE_ASK_NEVER at first. */
VOLINDEX_API void Tallyscope_SetElevation(int32_t ask);

#ifdef __cplusplus
}
#endif

#endif
