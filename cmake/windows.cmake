# 64-bit Windows with Debian's MinGW-w64, in one file without further libraries. The search's recursion wants more stack
# than the usual megabyte.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--stack,16777216")
