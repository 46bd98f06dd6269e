/** @file
  DIAGNOSTICS_LAUNCH_PROTOCOL: prepares and starts the platform diagnostics.
**/
#ifndef KEST_DIAGNOSTICS_LAUNCH_PROTOCOL_H_
#define KEST_DIAGNOSTICS_LAUNCH_PROTOCOL_H_

#include <Uefi.h>

#define DIAGNOSTICS_LAUNCH_PROTOCOL_GUID                                                                               \
  {                                                                                                                    \
    0x04484e87, 0xd0ea, 0x4f15,                                                                                        \
    {                                                                                                                  \
      0xa5, 0x66, 0xb2, 0x96, 0xb0, 0xe3, 0x8e, 0xcb                                                                   \
    }                                                                                                                  \
  }

#define DIAGNOSTICS_TARGET_ALL 0xFFFB

typedef struct _DIAGNOSTICS_LAUNCH_PROTOCOL DIAGNOSTICS_LAUNCH_PROTOCOL;

typedef EFI_STATUS (EFIAPI *DIAGNOSTICS_START) (
  IN DIAGNOSTICS_LAUNCH_PROTOCOL *This, IN UINTN Value1, IN UINTN Value2, OUT UINTN *Out1, OUT UINTN *Out2);

typedef EFI_STATUS (EFIAPI *DIAGNOSTICS_PREPARE) (
  IN DIAGNOSTICS_LAUNCH_PROTOCOL *This, IN UINTN Value1, IN UINTN Value2, IN UINTN Value3, IN UINT16 *Target);

struct _DIAGNOSTICS_LAUNCH_PROTOCOL {
  VOID *Slot0;
  DIAGNOSTICS_START StartDiagnostics; // 1
  VOID *Slot2;
  VOID *Slot3;
  VOID *Slot4;
  VOID *Slot5;
  VOID *Slot6;
  DIAGNOSTICS_PREPARE PrepareDiagnostics; // 7
};

STATIC_ASSERT (OFFSET_OF (DIAGNOSTICS_LAUNCH_PROTOCOL, StartDiagnostics) == 1 * 8, "diagnostics slot 1");
STATIC_ASSERT (OFFSET_OF (DIAGNOSTICS_LAUNCH_PROTOCOL, PrepareDiagnostics) == 7 * 8, "diagnostics slot 7");

extern EFI_GUID gDiagnosticsLaunchProtocolGuid;

#endif
