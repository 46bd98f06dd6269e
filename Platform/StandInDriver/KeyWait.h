/** @file
  Waiting for a key on the console input, as the platform's own screens do.
**/
#ifndef KEST_KEY_WAIT_H_
#define KEST_KEY_WAIT_H_

#include <Uefi.h>

/**
  Polls the console input for up to Milliseconds.

  @retval TRUE   A key was read into Key.
  @retval FALSE  None came in time (or there is no console input).
**/
BOOLEAN
WaitForKey (IN UINTN Milliseconds, OUT EFI_INPUT_KEY *Key);

#endif
