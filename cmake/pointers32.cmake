# Pointers of 32 bits on an x86-64 Linux, with the compiler's own libraries for them. The headers of the system lie where
# those for 64 bits do: Debian's package that links them together excludes all cross compilers.
set(CMAKE_CXX_FLAGS_INIT "-m32 -idirafter /usr/include/x86_64-linux-gnu")
