# Fails unless the shared library exports exactly its nine functions and what the further headers add.
set(expected
  Tallyscope_CheckFileSystem
  Tallyscope_Free
  Tallyscope_GetFolder
  Tallyscope_GetFolderEnd
  Tallyscope_GetFolderName
  Tallyscope_GetFolderSize
  Tallyscope_GetKindOfName
  Tallyscope_GetRecordByIndex
  Tallyscope_GetRecordCount
  Tallyscope_GetUnreadable
  Tallyscope_GetUsage
  Tallyscope_KeepFolderKinds
  Tallyscope_OpenRecord
  Tallyscope_ScanLocalDrive
  Tallyscope_SetElevation
  Tallyscope_SetNotifyHwnd
  Tallyscope_Stop)

if(OBJDUMP) # a DLL: nm lists what lies in it, the export table is what is exported
  execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE ".*Name Pointer\\] Table" "" listing "${listing}")
  string(REGEX MATCHALL "\t\\[ *[0-9]+\\][^\n]*" lines "${listing}")
  set(beside "^.* ")
else()
  execute_process(COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY}
    OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^\n]+" lines "${listing}")
  set(beside " .*$")
endif()
set(exported)
foreach(line IN LISTS lines)
  string(REGEX REPLACE "${beside}" "" symbol "${line}")
  list(APPEND exported ${symbol})
endforeach()
list(SORT exported)
if(NOT exported STREQUAL expected)
  message(FATAL_ERROR "The library exports:\n${exported}\ninstead of:\n${expected}")
endif()
