/** @file
  I/O port access.
**/
#ifndef MDE_LITE_IO_LIB_H_
#define MDE_LITE_IO_LIB_H_

#include <Base.h>

/** Reads a 32-bit I/O port. @return the value read. **/
UINT32 EFIAPI IoRead32 (IN UINTN Port);

/** @return the byte read from I/O port Port. **/
UINT8 EFIAPI IoRead8 (IN UINTN Port);

/** Writes Value to I/O port Port. @return Value. **/
UINT16 EFIAPI IoWrite16 (IN UINTN Port, IN UINT16 Value);

#endif
