/** @file
  The answer for the UI driver's PCD token: with the firmware's PCD protocol
  wrapped in place, and with none in the firmware.
**/
#include <Guid/KestUiGuids.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/PiPcd.h>
#include <StandInDriver/PcdTokenAnswer.h>

#include "PlatformTest.h"

namespace {

UINTN mFirmwareCalls = 0;

BOOLEAN EFIAPI
FirmwareGetBool (IN CONST EFI_GUID *Guid, IN UINTN TokenNumber)
{
  (VOID) Guid;
  (VOID) TokenNumber;
  mFirmwareCalls++;
  return TRUE;
}

UINTN EFIAPI
FirmwareGetSize (IN CONST EFI_GUID *Guid, IN UINTN TokenNumber)
{
  (VOID) Guid;
  (VOID) TokenNumber;
  return 4;
}

EFI_GUID mOtherTokenSpace = {0x01234567, 0x89ab, 0xcdef, {1, 2, 3, 4, 5, 6, 7, 8}};

using PcdTokenAnswerTest = PlatformTest;

EFI_PCD_PROTOCOL *
LocatePcd ()
{
  EFI_PCD_PROTOCOL *Pcd = nullptr;

  EXPECT_EQ (gBS->LocateProtocol (&gEfiPcdProtocolGuid, nullptr, (VOID **)&Pcd), EFI_SUCCESS);
  return Pcd;
}

} // namespace

TEST_F (PcdTokenAnswerTest, FirmwarePcdIsWrappedInPlaceAndNeverAskedAboutOurTokenSpace)
{
  EFI_PCD_PROTOCOL Firmware = {};
  EFI_HANDLE FirmwareHandle;

  mFirmwareCalls = 0;
  Firmware.GetBool = FirmwareGetBool;
  Firmware.GetSize = FirmwareGetSize;
  FirmwareHandle = Platform ().Handles ().InstallProtocol (gEfiPcdProtocolGuid, &Firmware);

  ASSERT_EQ (AnswerUiModePcd (FALSE), EFI_SUCCESS);
  EFI_PCD_PROTOCOL *Pcd = LocatePcd ();
  ASSERT_NE (Pcd, nullptr);
  EXPECT_NE (Pcd, &Firmware) << "callers that locate the protocol now get the wrapper";

  EXPECT_FALSE (Pcd->GetBool (&gUiPcdTokenSpaceGuid, UI_PCD_TOKEN_BOOT_UI_MODE));
  EXPECT_FALSE (Pcd->GetBool (&gUiPcdTokenSpaceGuid, 1)) << "other tokens of our space are unknown: FALSE";
  EXPECT_EQ (mFirmwareCalls, 0U) << "the firmware is never asked about our token space";

  EXPECT_TRUE (Pcd->GetBool (&mOtherTokenSpace, 7)) << "other token spaces go to the firmware";
  EXPECT_EQ (mFirmwareCalls, 1U);
  EXPECT_EQ (Pcd->GetSize (&mOtherTokenSpace, 7), 4U) << "the other members are the firmware's";

  EFI_HANDLE Handles[4];
  UINTN Size = sizeof (Handles);
  ASSERT_EQ (gBS->LocateHandle (ByProtocol, &gEfiPcdProtocolGuid, nullptr, &Size, Handles), EFI_SUCCESS);
  EXPECT_EQ (Size, sizeof (EFI_HANDLE)) << "still one PCD protocol, on the firmware's handle";
  EXPECT_EQ (Handles[0], FirmwareHandle);
}

TEST_F (PcdTokenAnswerTest, WithoutAFirmwarePcdTheStandInAnswers)
{
  ASSERT_EQ (AnswerUiModePcd (TRUE), EFI_SUCCESS);
  EFI_PCD_PROTOCOL *Pcd = LocatePcd ();
  ASSERT_NE (Pcd, nullptr);
  EXPECT_TRUE (Pcd->GetBool (&gUiPcdTokenSpaceGuid, UI_PCD_TOKEN_BOOT_UI_MODE));
}
