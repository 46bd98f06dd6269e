/** @file
  Files that QEMU hands to the firmware through its configuration device
  (fw_cfg), e.g. "-fw_cfg name=opt/kestui/demo.cfg,string=...": how a demo or a
  test configures a firmware that has KestUi in its flash, where there is no
  disk to read a file from before the boot options run.
**/
#ifndef FIRMWARE_QEMU_FW_CFG_H_
#define FIRMWARE_QEMU_FW_CFG_H_

#include <Uefi.h>

///
/// The largest file read: configuration texts are small.
///
#define QEMU_CONFIG_FILE_MAX_SIZE 0x10000

///
/// The demo's configuration (BootConfig.h) for a firmware with KestUi in its flash.
///
#define QEMU_DEMO_CONFIG_FILE "opt/kestui/demo.cfg"

/**
  Reads the whole file Name of QEMU's configuration device.

  @param[in]  Name    The file's name, e.g. "opt/kestui/demo.cfg".
  @param[out] Buffer  Pool buffer with the file's bytes (not terminated); the caller frees it.
  @param[out] Size    Number of bytes in Buffer.

  @retval EFI_SUCCESS           Read.
  @retval EFI_UNSUPPORTED       The machine has no QEMU configuration device.
  @retval EFI_NOT_FOUND         No such file.
  @retval EFI_BAD_BUFFER_SIZE   The file is empty or larger than QEMU_CONFIG_FILE_MAX_SIZE.
  @retval EFI_OUT_OF_RESOURCES  No pool for it.
**/
EFI_STATUS
ReadQemuConfigFile (IN CONST CHAR8 *Name, OUT VOID **Buffer, OUT UINTN *Size);

#endif
