/* The public headers serve a C program. */
#include "volindex/include/volindex.h"
#include "volindex/include/volindex_folders.h"

uint32_t CountInC(const char16_t* path, uint32_t* folders);

uint32_t CountInC(const char16_t* path, uint32_t* folders) {
  TTallyscopeNotify nobody = {0, 0};
  uint32_t files = 0;
  Tallyscope_SetNotifyHwnd(&nobody, 8048);
  if (Tallyscope_CheckFileSystem(path) == 0) return 0;
  Tallyscope_ScanLocalDrive(path);
  Tallyscope_OpenRecord(TALLYSCOPE_FOLDERS);
  Tallyscope_GetRecordCount(&files, folders);
  Tallyscope_Free();
  Tallyscope_SetNotifyHwnd(0, 0);
  return files;
}
