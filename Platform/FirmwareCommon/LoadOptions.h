/** @file
  The firmware's boot options (Boot####, BootOrder): read, found by the file
  they start, and started with LoadImage and StartImage, as a platform's boot
  menu and boot flow hand over to them.
**/
#ifndef FIRMWARE_LOAD_OPTIONS_H_
#define FIRMWARE_LOAD_OPTIONS_H_

#include <Protocol/DevicePath.h>
#include <Uefi.h>

///
/// One load option, checked: every pointer lies inside Buffer.
///
typedef struct {
  VOID *Buffer; ///< the variable's bytes, pool; FreeLoadOption releases it
  UINT16 Number;
  UINT32 Attributes;
  CONST CHAR16 *Description; ///< null-terminated inside Buffer
  EFI_DEVICE_PATH_PROTOCOL *FilePath;
  UINTN FilePathSize; ///< bytes of FilePath, its end node included
} LOAD_OPTION;

/**
  Reads Boot<Number> and checks its layout: a terminated description and a
  file path whose nodes stay inside the variable and end with an end node.

  @retval EFI_SUCCESS         Option is filled; FreeLoadOption releases it.
  @retval EFI_NOT_FOUND       No such variable.
  @retval EFI_COMPROMISED_DATA  The variable is not a well-formed load option.
  @return other failures of GetVariable or of the pool.
**/
EFI_STATUS
ReadBootOption (IN UINT16 Number, OUT LOAD_OPTION *Option);

/** Releases what ReadBootOption allocated; a zeroed or released Option is fine. **/
VOID FreeLoadOption (IN OUT LOAD_OPTION *Option);

/**
  Reads BootOrder into Order (at most Capacity entries).

  @return the number of entries read; 0 when there is no BootOrder.
**/
UINTN
ReadBootOrder (OUT UINT16 *Order, IN UINTN Capacity);

/**
  Finds the boot option that starts the firmware-volume file File (a path
  whose last node is that file), in the order of BootOrder.

  @retval EFI_SUCCESS    Number is the option's number.
  @retval EFI_NOT_FOUND  No option starts that file.
**/
EFI_STATUS
FindBootOptionOfFile (IN CONST EFI_GUID *File, OUT UINT16 *Number);

/**
  Starts boot option Number: LoadImage of its file path by this image, then
  StartImage with the option's description on the serial port.

  @return the status of the first failing step, or what the started image returned.
**/
EFI_STATUS
StartBootOption (IN UINT16 Number);

#endif
