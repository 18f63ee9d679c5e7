# SPDX-License-Identifier: Apache-2.0
# Builds for 64-bit Windows on a Debian machine. tools/windows/setup.sh brings what stands here; docs/windows.md says more.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

# The posix flavour: only it has std::thread and std::mutex.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(RPA_WINDOWS_QT /opt/qt5-mingw CACHE PATH "Qt for Windows")
set(RPA_WINDOWS_LIBRARIES /opt/mingw-libs CACHE PATH "libsodium, libcurl and Boost's headers for Windows")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES RPA_WINDOWS_QT RPA_WINDOWS_LIBRARIES)

# Nothing of this machine may be found by mistake, but its programs. What the caller asks to look in counts, too.
set(CMAKE_FIND_ROOT_PATH ${CMAKE_PREFIX_PATH} "${RPA_WINDOWS_QT}" "${RPA_WINDOWS_LIBRARIES}" /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} "${RPA_WINDOWS_LIBRARIES}/lib/pkgconfig")

set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../../tools/windows/run.sh")
