# 64-bit Windows with Debian's MinGW-w64, in one file without further libraries. The search's recursion wants more stack
# than the usual megabyte.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
# The compiler believes in a stack aligned for vectors of 256 bits, and Windows aligns it for 128: moves that demand
# the alignment would fault.
set(CMAKE_CXX_FLAGS_INIT -Wa,-muse-unaligned-vector-move)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--stack,16777216")
# What runs here of what is built, such as the training for a profile.
find_program(HELVAN_WINE wine)
if(HELVAN_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${HELVAN_WINE})
endif()
