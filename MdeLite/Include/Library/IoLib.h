/** @file
  I/O port access.
**/
#ifndef MDE_LITE_IO_LIB_H_
#define MDE_LITE_IO_LIB_H_

#include <Base.h>

/** Reads a 32-bit I/O port. @return the value read. **/
UINT32 EFIAPI IoRead32 (IN UINTN Port);

#endif
