# Cross build of the firmware images: clang++ for the Microsoft x64 ABI,
# linked by lld-link into PE32+ EFI images. No C runtime, no default libraries.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-unknown-windows)
set(CMAKE_CXX_COMPILER_TARGET x86_64-unknown-windows)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_EXECUTABLE_SUFFIX .efi)
set(CMAKE_CXX_LINK_EXECUTABLE "lld-link <LINK_FLAGS> <OBJECTS> <LINK_LIBRARIES> /out:<TARGET>")
set(KESTUI_EFI ON CACHE BOOL "Build the firmware images" FORCE)
# The Generic system knows no dependency-file flags: without them ninja would
# not rebuild objects when a header changes.
set(CMAKE_DEPFILE_FLAGS_CXX "-MD -MT <DEP_TARGET> -MF <DEP_FILE>")
set(CMAKE_CXX_DEPFILE_FORMAT gcc)
set(CMAKE_CXX_DEPENDS_USE_COMPILER TRUE)
