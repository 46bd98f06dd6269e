# The driver's resources: its string packages, the image package with the
# welcome-page logo, and their registration. Included by this folder's
# CMakeLists.txt (and by the resource tests); sets
#   UI_RESOURCE_SOURCES       the sources, absolute paths
#   UI_RESOURCE_INCLUDE_DIRS  empty: the logo's include file sits beside the sources
#
# Images/WelcomePageLogo.inc holds the PNG's bytes for UiImagePackage.cpp. It
# is kept in the repository, because an EDK II build runs no generator. CMake
# checks at configure time (and again whenever the PNG or the file changes)
# that it holds exactly the PNG's bytes; after a new PNG, write it again with
#   cmake -P Drivers/UserInterface/UiResources.cmake
# A PNG whose size differs from the one the image package states stops the
# build as well.

set(UI_RESOURCE_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/UiStrings.cpp
  ${CMAKE_CURRENT_LIST_DIR}/UiImagePackage.cpp
  ${CMAKE_CURRENT_LIST_DIR}/UiResources.cpp
)
set(UI_RESOURCE_INCLUDE_DIRS "")

set(UI_LOGO_PNG ${CMAKE_CURRENT_LIST_DIR}/Images/WelcomePageLogo.png)
set(UI_LOGO_INC ${CMAKE_CURRENT_LIST_DIR}/Images/WelcomePageLogo.inc)
set(UI_LOGO_PNG_SIZE 63655)

file(SIZE ${UI_LOGO_PNG} UI_LOGO_ACTUAL_SIZE)
if(NOT UI_LOGO_ACTUAL_SIZE EQUAL UI_LOGO_PNG_SIZE)
  message(FATAL_ERROR "${UI_LOGO_PNG} has ${UI_LOGO_ACTUAL_SIZE} bytes; the image package needs exactly "
    "${UI_LOGO_PNG_SIZE}. Make it again with Images/MakeWelcomePageLogo.py.")
endif()

# Sixteen bytes a line: "0x89, 0x50, ... \" inside one macro.
file(READ ${UI_LOGO_PNG} UI_LOGO_HEX HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f])"
  "\\1;" UI_LOGO_LINES "${UI_LOGO_HEX}")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1, " UI_LOGO_LINES "${UI_LOGO_LINES}")
string(REGEX REPLACE ", ;" ", \\\\\n  " UI_LOGO_LINES "${UI_LOGO_LINES}")
set(UI_LOGO_INC_TEXT "// Written by UiResources.cmake from Images/WelcomePageLogo.png; do not edit.
#define WELCOME_PAGE_LOGO_FILE_SIZE ${UI_LOGO_ACTUAL_SIZE}
#define WELCOME_PAGE_LOGO_FILE_BYTES \\
  ${UI_LOGO_LINES}
")

if(CMAKE_SCRIPT_MODE_FILE)
  file(WRITE ${UI_LOGO_INC} "${UI_LOGO_INC_TEXT}")
  message(STATUS "Wrote ${UI_LOGO_INC}")
  return()
endif()

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${UI_LOGO_PNG} ${UI_LOGO_INC})
set(UI_LOGO_INC_FOUND "")
if(EXISTS ${UI_LOGO_INC})
  file(READ ${UI_LOGO_INC} UI_LOGO_INC_FOUND)
endif()
if(NOT UI_LOGO_INC_FOUND STREQUAL UI_LOGO_INC_TEXT)
  message(FATAL_ERROR "${UI_LOGO_INC} does not hold the bytes of ${UI_LOGO_PNG}. Write it again with "
    "'cmake -P Drivers/UserInterface/UiResources.cmake' and commit it.")
endif()
