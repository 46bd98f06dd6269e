/** @file
  Root include file for DXE drivers: UEFI plus the PI firmware file types.
**/
#ifndef MDE_LITE_PI_DXE_H_
#define MDE_LITE_PI_DXE_H_

#include <Pi/PiFirmwareFile.h>
#include <Pi/PiFirmwareVolume.h>
#include <Uefi.h>

#endif
