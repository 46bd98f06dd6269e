/** @file
  Root include file for UEFI drivers and applications.
**/
#ifndef MDE_LITE_UEFI_H_
#define MDE_LITE_UEFI_H_

#include <Uefi/UefiBaseType.h>
#include <Uefi/UefiSpec.h>

#endif
