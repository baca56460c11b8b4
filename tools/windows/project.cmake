# The toolchain of the project itself, as opposed to that of its libraries: Qt's tools run on this machine, the
# programs that are built run under Wine.
include(${CMAKE_CURRENT_LIST_DIR}/toolchain.cmake)

set(QT_HOST_PATH /usr CACHE PATH "Qt of this machine")
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake CACHE PATH "Its packages")
set(Qt6HostInfo_DIR ${QT_HOST_PATH_CMAKE_DIR}/Qt6HostInfo CACHE PATH "Its description")
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine)
