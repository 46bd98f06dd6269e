/** @file
  The EFI global variable namespace.
**/
#ifndef MDE_LITE_GLOBAL_VARIABLE_H_
#define MDE_LITE_GLOBAL_VARIABLE_H_

#include <Uefi.h>

#define EFI_GLOBAL_VARIABLE                                                                                            \
  {                                                                                                                    \
    0x8BE4DF61, 0x93CA, 0x11d2,                                                                                        \
    {                                                                                                                  \
      0xAA, 0x0D, 0x00, 0xE0, 0x98, 0x03, 0x2B, 0x8C                                                                   \
    }                                                                                                                  \
  }

extern EFI_GUID gEfiGlobalVariableGuid;

#endif
