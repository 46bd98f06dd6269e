/** @file
  Unload of the driver: after a full start, and while the wait for the page
  engine is still pending.
**/
#include "DriverTest.h"
#include "HostHii.h"
#include "UserInterface.h"

#include <algorithm>
#include <set>

#include <Library/ModuleInfoLib.h>
#include <Library/PrerequisiteWaitLib.h>
#include <Protocol/GraphicsOutput.h>

namespace {

using DriverUnloadTest = DriverTest;

TEST_F (DriverUnloadTest, AfterALateStartEverythingIsRemovedAndNothingStaysInPool)
{
  InstallModuleRegistry ();
  EFI_HANDLE Other = Platform ().Handles ().InstallProtocol (gEfiGraphicsOutputProtocolGuid, &mSecondPageEngine);
  ASSERT_EQ (StartDriver (), EFI_SUCCESS);
  InstallUiFramework ();
  InstallPageEngine ();
  ASSERT_TRUE (HasDriverProtocols ());
  ASSERT_EQ (RegistryCalls ().size (), 1u);
  LIST_ENTRY *ModuleList = RegistryCalls ()[0].ListHead;

  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_SUCCESS);

  EXPECT_FALSE (Platform ().Handles ().HasProtocol (mImage, gUiDriverProtocolGuid));
  EXPECT_FALSE (Platform ().Handles ().HasProtocol (mImage, gFlashUpdatePageProtocolGuid));
  EXPECT_EQ (gUiDriverProtocol, nullptr);
  EXPECT_EQ (gFlashUpdatePageProtocol, nullptr);

  // The image is disconnected from every handle, the console attribute reset.
  bool DisconnectedOther = false;
  for (const HostDisconnect &Call : Platform ().Handles ().Disconnects ()) {
    EXPECT_EQ (Call.DriverImageHandle, mImage);
    EXPECT_EQ (Call.ChildHandle, nullptr);
    DisconnectedOther = DisconnectedOther || (Call.ControllerHandle == Other);
  }

  EXPECT_TRUE (DisconnectedOther);
  ASSERT_FALSE (Platform ().Console ().Attributes ().empty ());
  EXPECT_EQ (Platform ().Console ().Attributes ().back (), 0x07u);

  // The module list goes back to the registry; the strings leave the HII database.
  ASSERT_EQ (RegistryCalls ().size (), 2u);
  EXPECT_FALSE (RegistryCalls ()[1].Register);
  EXPECT_EQ (RegistryCalls ()[1].ListHead, ModuleList);
  EXPECT_EQ (HostHiiPackageListCount (), 0u);

  // No event of the driver (the wait, the framework's notification) is left to
  // call into the unloaded image.
  EXPECT_TRUE (Platform ().Events ().OpenEvents ().empty ());
}

TEST_F (DriverUnloadTest, WhileTheWaitIsPendingReturnsTheUninstallFailureAndStillResetsTheConsole)
{
  InstallModuleRegistry ();
  ASSERT_EQ (StartDriver (), EFI_SUCCESS);
  ASSERT_FALSE (HasDriverProtocols ());
  ASSERT_NE (gUiDriverProtocol, nullptr);
  ASSERT_NE (gFlashUpdatePageProtocol, nullptr);

  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_NOT_FOUND);
  ASSERT_FALSE (Platform ().Console ().Attributes ().empty ());
  EXPECT_EQ (Platform ().Console ().Attributes ().back (), 0x07u);
  EXPECT_EQ (RegistryCalls ().size (), 1u) << "the module list stays registered";
  EXPECT_NE (gUiDriverProtocol, nullptr);
  EXPECT_NE (gFlashUpdatePageProtocol, nullptr);

  // What stays: both records, the module list (head and three entries) and the
  // wait (its record and one block with the GUID and its found flag).
  std::multiset<UINTN> Sizes;
  for (const HostPoolBuffer &Buffer : Platform ().Pool ().LiveBuffers ()) {
    Sizes.insert (Buffer.Size);
    KeepPoolBuffer (Buffer.Address);
  }

  std::multiset<UINTN> Expected = {sizeof (UI_DRIVER_PROTOCOL),
                                   sizeof (FLASH_UPDATE_PAGE_PROTOCOL),
                                   sizeof (LIST_ENTRY),
                                   sizeof (MODULE_INFO_LIST_ENTRY),
                                   sizeof (MODULE_INFO_LIST_ENTRY),
                                   sizeof (MODULE_INFO_LIST_ENTRY),
                                   sizeof (PREREQ_WAIT),
                                   sizeof (EFI_GUID) + 1};
  EXPECT_EQ (Sizes, Expected);
}

TEST_F (DriverUnloadTest, WithoutHandlesToSearchTheUnloadFailsAndChangesNothing)
{
  InstallPageEngine ();
  ASSERT_EQ (StartDriver (), EFI_SUCCESS);
  ASSERT_TRUE (HasDriverProtocols ());

  Platform ().Calls ().FailNth (HostService::LocateHandleBuffer, EFI_OUT_OF_RESOURCES);
  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_OUT_OF_RESOURCES);
  EXPECT_TRUE (HasDriverProtocols ());

  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_SUCCESS);
}

} // namespace
