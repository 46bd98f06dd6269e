# Build settings shared by every target of the project.
#
# kestui_firmware_target(<target>): compile flags of the freestanding image.
# kestui_module_sources(<out_var> <module> <entry point> <efi_boot_service_driver|efi_application>):
#   the sources that make a module's _ModuleEntryPoint, as an EDK II build does:
#   the entry-point library of its kind and a generated file that runs the
#   libraries' constructors and then the module's entry point.
# kestui_efi_image(<name> SUBSYSTEM <efi_boot_service_driver|efi_application> ENTRY_POINT <function>
#                  SOURCES ... OBJECTS ...):
#   links a PE32+ image with entry _ModuleEntryPoint and no imports.

set(KESTUI_WARNINGS -Wall -Wextra -Werror -Wshadow -Wno-unused-parameter)

set(KESTUI_FIRMWARE_FLAGS
  --target=x86_64-unknown-windows -ffreestanding -fno-exceptions -fno-rtti -fno-threadsafe-statics -fno-stack-protector
  -mno-red-zone -mno-stack-arg-probe -fno-asynchronous-unwind-tables -fno-unwind-tables
  -nostdinc -fno-common -Os)

set(KESTUI_HOST_FLAGS -fno-exceptions -fno-rtti -fsanitize=address,undefined -fno-sanitize-recover=all
  -fno-omit-frame-pointer -g -O1)

# Every compiled unit sees the two include roots: our own UEFI definitions and
# the project's boundary definitions.
set(KESTUI_INCLUDES ${PROJECT_SOURCE_DIR}/MdeLite/Include ${PROJECT_SOURCE_DIR}/Include)

function(kestui_object_library name)
  add_library(${name} OBJECT ${ARGN})
  target_include_directories(${name} PUBLIC ${KESTUI_INCLUDES})
  target_compile_options(${name} PRIVATE ${KESTUI_WARNINGS})
  if(KESTUI_EFI)
    target_compile_options(${name} PRIVATE ${KESTUI_FIRMWARE_FLAGS})
  else()
    target_compile_options(${name} PRIVATE ${KESTUI_HOST_FLAGS})
    target_compile_definitions(${name} PUBLIC MDE_LITE_HOST=1)
  endif()
endfunction()

function(kestui_module_sources out module entry subsystem)
  set(KESTUI_MODULE ${module})
  set(KESTUI_ENTRY ${entry})
  set(generated ${CMAKE_CURRENT_BINARY_DIR}/${module}AutoGen.cpp)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/ModuleAutoGen.cpp.in ${generated} @ONLY)
  if(subsystem STREQUAL "efi_application")
    set(entry_library ${PROJECT_SOURCE_DIR}/MdeLite/Library/UefiApplicationEntryPoint/ApplicationEntryPoint.cpp)
  else()
    set(entry_library ${PROJECT_SOURCE_DIR}/MdeLite/Library/UefiDriverEntryPoint/DriverEntryPoint.cpp)
  endif()
  set(${out} ${generated} ${entry_library} PARENT_SCOPE)
endfunction()

function(kestui_efi_image name)
  cmake_parse_arguments(IMG "" "SUBSYSTEM;ENTRY_POINT" "SOURCES;OBJECTS" ${ARGN})
  set(module_sources)
  if(IMG_ENTRY_POINT)
    kestui_module_sources(module_sources ${name} ${IMG_ENTRY_POINT} ${IMG_SUBSYSTEM})
  endif()
  add_executable(${name} ${IMG_SOURCES} ${module_sources})
  target_include_directories(${name} PRIVATE ${KESTUI_INCLUDES})
  target_compile_options(${name} PRIVATE ${KESTUI_WARNINGS} ${KESTUI_FIRMWARE_FLAGS})
  foreach(obj ${IMG_OBJECTS})
    target_sources(${name} PRIVATE $<TARGET_OBJECTS:${obj}>)
  endforeach()
  set_target_properties(${name} PROPERTIES SUFFIX .efi LINK_FLAGS
    "/subsystem:${IMG_SUBSYSTEM} /entry:_ModuleEntryPoint /nodefaultlib /machine:x64 /opt:ref /opt:icf /dynamicbase /debug:none /merge:.rdata=.data")
endfunction()
