// Code that calls the library goes by the pointers that the import of a library has. Here they lead to the
// fake, so that the linker takes none from the real one.
#include "volindex/include/volindex.h"
#include "volindex/include/volindex_elevation.h"
#include "volindex/include/volindex_folders.h"
#include "volindex/include/volindex_usage.h"

extern "C" {
#define TALLYSCOPE_IMPORT(name) extern decltype(&name) const __imp_##name = &name
TALLYSCOPE_IMPORT(Tallyscope_SetNotifyHwnd);
TALLYSCOPE_IMPORT(Tallyscope_CheckFileSystem);
TALLYSCOPE_IMPORT(Tallyscope_ScanLocalDrive);
TALLYSCOPE_IMPORT(Tallyscope_OpenRecord);
TALLYSCOPE_IMPORT(Tallyscope_GetRecordCount);
TALLYSCOPE_IMPORT(Tallyscope_GetRecordByIndex);
TALLYSCOPE_IMPORT(Tallyscope_GetFolderSize);
TALLYSCOPE_IMPORT(Tallyscope_GetUsage);
TALLYSCOPE_IMPORT(Tallyscope_GetUnreadable);
TALLYSCOPE_IMPORT(Tallyscope_SetElevation);
TALLYSCOPE_IMPORT(Tallyscope_KeepFolderKinds);
TALLYSCOPE_IMPORT(Tallyscope_GetFolderEnd);
TALLYSCOPE_IMPORT(Tallyscope_GetFolder);
TALLYSCOPE_IMPORT(Tallyscope_GetFolderName);
TALLYSCOPE_IMPORT(Tallyscope_GetKindOfName);
TALLYSCOPE_IMPORT(Tallyscope_Stop);
TALLYSCOPE_IMPORT(Tallyscope_Free);
}
