/** @file
  Reading a file from the test application's own volume.
**/
#ifndef OVMF_IMAGE_LOADING_H_
#define OVMF_IMAGE_LOADING_H_

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
