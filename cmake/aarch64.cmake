# 64-bit Arm Linux with Debian's cross compiler.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
# What runs here of what is built, such as the training for a profile.
find_program(HELVAN_QEMU qemu-aarch64)
if(HELVAN_QEMU)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${HELVAN_QEMU})
endif()
