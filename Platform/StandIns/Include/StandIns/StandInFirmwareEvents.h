// TEMPORARY stub header until the firmware event source lands
#ifndef STAND_IN_FIRMWARE_EVENTS_H_
#define STAND_IN_FIRMWARE_EVENTS_H_
#include <Uefi.h>
EFI_STATUS EFIAPI StandInUseFirmwareEvents (VOID);
#endif
