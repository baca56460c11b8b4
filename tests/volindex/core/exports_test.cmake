# Fails unless the shared library exports exactly the nine functions.
set(expected
  Tallyscope_CheckFileSystem
  Tallyscope_Free
  Tallyscope_GetFolderSize
  Tallyscope_GetRecordByIndex
  Tallyscope_GetRecordCount
  Tallyscope_OpenRecord
  Tallyscope_ScanLocalDrive
  Tallyscope_SetNotifyHwnd
  Tallyscope_Stop)

execute_process(COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY}
  OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${listing}")
set(exported)
foreach(line IN LISTS lines)
  string(REGEX REPLACE " .*" "" symbol "${line}")
  list(APPEND exported ${symbol})
endforeach()
list(SORT exported)
if(NOT exported STREQUAL expected)
  message(FATAL_ERROR "The library exports:\n${exported}\ninstead of:\n${expected}")
endif()
