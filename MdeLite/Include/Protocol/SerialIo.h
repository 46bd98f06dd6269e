/** @file
  EFI_SERIAL_IO_PROTOCOL: only Write is used (the firmware test writes marker
  lines to the serial port without drawing them on the screen).
**/
#ifndef MDE_LITE_SERIAL_IO_H_
#define MDE_LITE_SERIAL_IO_H_

#include <Uefi.h>

#define EFI_SERIAL_IO_PROTOCOL_GUID                                                                                    \
  {                                                                                                                    \
    0xbb25cf6f, 0xf1d4, 0x11d2,                                                                                        \
    {                                                                                                                  \
      0x9a, 0x0c, 0x00, 0x90, 0x27, 0x3f, 0xc1, 0xfd                                                                   \
    }                                                                                                                  \
  }

typedef struct _EFI_SERIAL_IO_PROTOCOL EFI_SERIAL_IO_PROTOCOL;

typedef EFI_STATUS (EFIAPI *EFI_SERIAL_WRITE) (IN EFI_SERIAL_IO_PROTOCOL *This,
                                               IN OUT UINTN *BufferSize,
                                               IN VOID *Buffer);

struct _EFI_SERIAL_IO_PROTOCOL {
  UINT32 Revision;
  VOID *Reset;
  VOID *SetAttributes;
  VOID *SetControl;
  VOID *GetControl;
  EFI_SERIAL_WRITE Write;
  VOID *Read;
  VOID *Mode;
};

extern EFI_GUID gEfiSerialIoProtocolGuid;

#endif
