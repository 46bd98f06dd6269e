/** @file
  Reading a whole file from the volume that the running image was loaded from.
**/
#ifndef FIRMWARE_OWN_VOLUME_FILES_H_
#define FIRMWARE_OWN_VOLUME_FILES_H_

#include <Uefi.h>

/**
  Reads a whole file from the volume that this application was loaded from.

  @param[in]  Path    Path of the file on that volume, from its root.
  @param[out] Buffer  Pool buffer with the file's bytes; the caller frees it. Null on failure.
  @param[out] Size    Number of bytes in Buffer.

  @retval EFI_SUCCESS           The file was read completely.
  @retval EFI_END_OF_FILE       The file is empty, or the volume delivered fewer bytes than its size.
  @retval EFI_OUT_OF_RESOURCES  No pool for the file or its information.
  @return Any error of the loaded image, file system or file protocols.
**/
EFI_STATUS
ReadFileFromOwnVolume (IN CONST CHAR16 *Path, OUT VOID **Buffer, OUT UINTN *Size);

#endif
