/** @file
  Polling the console input: no timer event is needed, and the keyboards that
  do not notify (see DEVELOPERS.md) are read all the same.
**/
#include "KeyWait.h"

#include <Library/UefiBootServicesTableLib.h>

#define KEY_POLL_MICROSECONDS 10000

BOOLEAN
WaitForKey (IN UINTN Milliseconds, OUT EFI_INPUT_KEY *Key)
{
  EFI_SIMPLE_TEXT_INPUT_PROTOCOL *Input = gST->ConIn;

  if ((Input == nullptr) || (Input->ReadKeyStroke == nullptr)) {
    return FALSE;
  }

  for (UINTN Waited = 0; Waited <= Milliseconds * 1000; Waited += KEY_POLL_MICROSECONDS) {
    if (!EFI_ERROR (Input->ReadKeyStroke (Input, Key))) {
      return TRUE;
    }

    gBS->Stall (KEY_POLL_MICROSECONDS);
  }

  return FALSE;
}
