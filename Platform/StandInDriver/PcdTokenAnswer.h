/** @file
  The UI driver's PCD token in a firmware whose own PCD driver does not know
  the token space: OVMF's answers GetBool for an unknown token space with
  whatever memory it lands on, and hangs in GetSize.
**/
#ifndef KEST_PCD_TOKEN_ANSWER_H_
#define KEST_PCD_TOKEN_ANSWER_H_

#include <Uefi.h>

/**
  Wraps the firmware's EFI_PCD_PROTOCOL in place (ReinstallProtocolInterface),
  so that every caller, also one that locates it later, gets a table whose
  GetBool answers Value for the UI driver's boot-UI-mode token and asks the
  firmware's own GetBool for any other. The other members are the firmware's.
  Without a PCD protocol in the firmware, the stand-in's own is installed.

  @retval EFI_SUCCESS  The token is answered.
  @return the status of a failed reinstallation or installation.
**/
EFI_STATUS
AnswerUiModePcd (IN BOOLEAN Value);

#endif
