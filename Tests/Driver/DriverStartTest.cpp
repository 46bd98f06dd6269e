/** @file
  Start-up of the driver: the second stage inside the entry point, the wait for
  the page engine, the UI framework that comes late.
**/
#include "DriverTest.h"
#include "HostHii.h"
#include "UserInterface.h"

#include <Guid/KestUiGuids.h>
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Protocol/LoadedImage.h>

namespace {

using DriverStartTest = DriverTest;

TEST_F (DriverStartTest, PageEngineFirstRunsTheSecondStageInsideTheEntryWithoutAWait)
{
  InstallPageEngine ();
  InstallUiFramework ();
  InstallModuleRegistry ();

  EXPECT_EQ (StartDriver (), EFI_SUCCESS);

  HostHandles &Handles = Platform ().Handles ();
  ASSERT_TRUE (HasDriverProtocols ());
  EXPECT_EQ (Handles.Interface (mImage, gUiDriverProtocolGuid), gUiDriverProtocol);
  EXPECT_EQ (Handles.Interface (mImage, gFlashUpdatePageProtocolGuid), gFlashUpdatePageProtocol);
  EXPECT_EQ (Handles.RegistrationCount (gPageEngineProtocolGuid), 0u) << "no wait when the page engine is there";
  EXPECT_EQ (gPageEngine, &mPageEngine);

  // Every slot of both records is filled; the flash record carries revision 2.
  VOID *const *Slots = (VOID *const *)gUiDriverProtocol;
  for (UINTN Slot = 0; Slot < sizeof (UI_DRIVER_PROTOCOL) / sizeof (VOID *); Slot++) {
    EXPECT_NE (Slots[Slot], nullptr) << "slot " << Slot;
  }

  EXPECT_NE (gFlashUpdatePageProtocol->Show, nullptr);
  EXPECT_NE (gFlashUpdatePageProtocol->SetProgress, nullptr);
  EXPECT_NE (gFlashUpdatePageProtocol->SetStatusText, nullptr);
  EXPECT_NE (gFlashUpdatePageProtocol->ShowResult, nullptr);
  EXPECT_NE (gFlashUpdatePageProtocol->SessionPassThrough, nullptr);
  EXPECT_EQ (gFlashUpdatePageProtocol->Revision, 2u);
  EXPECT_EQ (gFlashUpdatePageProtocol->Reserved, 0u);

  // Strings registered on the image handle; the logo package handed to the framework.
  ASSERT_NE (gHiiHandle, nullptr);
  EXPECT_EQ (HostHiiDriverHandle (gHiiHandle), mImage);
  ASSERT_EQ (ImagePackages ().size (), 1u);
  EXPECT_EQ (ImagePackages ()[0].Size, 63854u);
  EXPECT_TRUE (CompareGuid (&ImagePackages ()[0].Guid, &gUiDriverComponentGuid));
  EXPECT_EQ (ImagePackages ()[0].Reserved, 0u);

  // The image can be unloaded.
  EXPECT_EQ (Platform ().Images ().LoadedImage (mImage)->Unload, UnloadUserInterface);
  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_SUCCESS);
}

TEST_F (DriverStartTest, PageEngineLaterInstallsBothProtocolsOnceItAppears)
{
  InstallUiFramework ();

  EXPECT_EQ (StartDriver (), EFI_SUCCESS);
  EXPECT_FALSE (Platform ().Handles ().HasProtocol (mImage, gUiDriverProtocolGuid));
  EXPECT_FALSE (Platform ().Handles ().HasProtocol (mImage, gFlashUpdatePageProtocolGuid));
  EXPECT_EQ (gPageEngine, nullptr);
  EXPECT_EQ (HostHiiNewPackageListCallCount (), 0u);

  FLASH_UPDATE_PAGE_PROTOCOL *FirstFlashRecord = gFlashUpdatePageProtocol;
  ASSERT_NE (FirstFlashRecord, nullptr) << "the failed first attempt made the flash record";

  InstallPageEngine ();
  ASSERT_TRUE (HasDriverProtocols ());
  EXPECT_EQ (gFlashUpdatePageProtocol, FirstFlashRecord) << "the flash record is made only once";
  EXPECT_EQ (HostHiiNewPackageListCallCount (), 1u);
  EXPECT_EQ (ImagePackages ().size (), 1u);

  // A second page engine changes nothing.
  UI_DRIVER_PROTOCOL *Installed = gUiDriverProtocol;
  UINTN LiveBuffers = Platform ().Pool ().LiveCount ();
  Platform ().Handles ().InstallProtocol (gPageEngineProtocolGuid, &mSecondPageEngine);
  EXPECT_EQ (gPageEngine, &mPageEngine);
  EXPECT_EQ (gUiDriverProtocol, Installed);
  EXPECT_EQ (HostHiiNewPackageListCallCount (), 1u);
  EXPECT_EQ (Platform ().Pool ().LiveCount (), LiveBuffers);

  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_SUCCESS);
}

TEST_F (DriverStartTest, SecondStageRunsOnlyOnce)
{
  InstallPageEngine ();
  ASSERT_EQ (StartDriver (), EFI_SUCCESS);
  ASSERT_TRUE (HasDriverProtocols ());

  UINTN LiveBuffers = Platform ().Pool ().LiveCount ();
  UINT64 Installs = Platform ().Calls ().Count (HostService::InstallProtocolInterface);

  EXPECT_EQ (PrereqReadyLoadUIDrv (mImage, nullptr), EFI_NOT_READY);
  EXPECT_EQ (Platform ().Pool ().LiveCount (), LiveBuffers);
  EXPECT_EQ (Platform ().Calls ().Count (HostService::InstallProtocolInterface), Installs);
  EXPECT_EQ (HostHiiNewPackageListCallCount (), 1u);

  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_SUCCESS);
}

TEST_F (DriverStartTest, UiFrameworkInstalledLaterIsFoundAndTheLogoPackageIsSkippedBeforeIt)
{
  InstallPageEngine ();
  ASSERT_EQ (StartDriver (), EFI_SUCCESS);
  ASSERT_TRUE (HasDriverProtocols ());
  EXPECT_EQ (gUiFramework, nullptr);
  EXPECT_TRUE (ImagePackages ().empty ());

  EFI_HANDLE FrameworkHandle = InstallUiFramework ();
  EXPECT_EQ (gUiFramework, Platform ().Handles ().Interface (FrameworkHandle, gUiFrameworkProtocolGuid));

  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_SUCCESS);
}

TEST_F (DriverStartTest, NoHiiDatabaseLeavesANullHiiHandleAndStillInstalls)
{
  ASSERT_EQ (UninstallHostHii (), EFI_SUCCESS);
  InstallPageEngine ();

  ASSERT_EQ (StartDriver (), EFI_SUCCESS);
  EXPECT_TRUE (HasDriverProtocols ());
  EXPECT_EQ (gHiiHandle, nullptr);

  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_SUCCESS);
  ASSERT_EQ (InstallHostHii (), EFI_SUCCESS);
}

TEST_F (DriverStartTest, FailedUiDriverInstallLeavesNoWaitAndNoSecondAttempt)
{
  InstallPageEngine ();
  Platform ().Calls ().FailNth (HostService::InstallProtocolInterface, EFI_OUT_OF_RESOURCES, 1, &gUiDriverProtocolGuid);

  ASSERT_EQ (StartDriver (), EFI_SUCCESS);
  EXPECT_FALSE (Platform ().Handles ().HasProtocol (mImage, gUiDriverProtocolGuid));
  EXPECT_FALSE (Platform ().Handles ().HasProtocol (mImage, gFlashUpdatePageProtocolGuid));
  EXPECT_EQ (Platform ().Handles ().RegistrationCount (gPageEngineProtocolGuid), 0u)
    << "the page engine was found: the driver stays without its protocols";

  // Both records stay with the driver, which cannot be unloaded: nothing of it is installed.
  KeepPoolBuffer (gUiDriverProtocol);
  KeepPoolBuffer (gFlashUpdatePageProtocol);
  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_NOT_FOUND);
  EXPECT_EQ (Platform ().Pool ().LiveCount (), 7u)
    << "two records, the module list head and its three entries, the password records";
  for (const HostPoolBuffer &Buffer : Platform ().Pool ().LiveBuffers ()) {
    KeepPoolBuffer (Buffer.Address);
  }
}

TEST_F (DriverStartTest, FailedFlashInstallReleasesItsRecordAndKeepsTheUiDriverProtocol)
{
  InstallPageEngine ();
  Platform ().Calls ().FailNth (HostService::InstallProtocolInterface, EFI_OUT_OF_RESOURCES, 1,
                                &gFlashUpdatePageProtocolGuid);

  ASSERT_EQ (StartDriver (), EFI_SUCCESS);
  EXPECT_TRUE (Platform ().Handles ().HasProtocol (mImage, gUiDriverProtocolGuid));
  EXPECT_FALSE (Platform ().Handles ().HasProtocol (mImage, gFlashUpdatePageProtocolGuid));
  EXPECT_EQ (gFlashUpdatePageProtocol, nullptr);

  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_SUCCESS);
}

} // namespace
