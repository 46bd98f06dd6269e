/** @file
  Fixture of the driver tests.
**/
#include "DriverTest.h"

#include "HostHii.h"

#include <Protocol/FlashUpdatePage.h>
#include <Protocol/UiDriver.h>

std::vector<ImagePackageCall> &
DriverTest::ImagePackages ()
{
  static std::vector<ImagePackageCall> Calls;
  return Calls;
}

std::vector<RegistryCall> &
DriverTest::RegistryCalls ()
{
  static std::vector<RegistryCall> Calls;
  return Calls;
}

static EFI_STATUS EFIAPI
RecordAddImagePackage (IN VOID *Package, IN UINTN Size, IN EFI_GUID *Guid, IN UINTN Reserved)
{
  DriverTest::ImagePackages ().push_back ({Package, Size, *Guid, Reserved});
  return EFI_SUCCESS;
}

static EFI_STATUS EFIAPI
RecordRegister (IN MODULE_REGISTRY_PROTOCOL *Registry, IN LIST_ENTRY *ListHead)
{
  DriverTest::RegistryCalls ().push_back ({true, ListHead});
  return EFI_SUCCESS;
}

static EFI_STATUS EFIAPI
RecordUnregister (IN MODULE_REGISTRY_PROTOCOL *Registry, IN LIST_ENTRY *ListHead)
{
  DriverTest::RegistryCalls ().push_back ({false, ListHead});
  return EFI_SUCCESS;
}

void
DriverTest::SetUp ()
{
  PlatformTest::SetUp ();
  ImagePackages ().clear ();
  RegistryCalls ().clear ();
  ASSERT_EQ (InstallHostHii (), EFI_SUCCESS);
}

void
DriverTest::TearDown ()
{
  UninstallHostHii ();
  PlatformTest::TearDown ();
}

EFI_HANDLE
DriverTest::CreateImage ()
{
  mImage = Platform ().Images ().CreateDriverImage ();
  return mImage;
}

EFI_STATUS
DriverTest::StartDriver ()
{
  if (mImage == nullptr) {
    CreateImage ();
  }

  return _ModuleEntryPoint (mImage, Platform ().SystemTable ());
}

static EFI_STATUS EFIAPI
FakeShowPrompt (IN CHAR16 *Title,
                IN CHAR16 *Message,
                IN CHAR16 *Caption,
                IN UINTN Reserved,
                IN UINTN MaxLength,
                IN UI_EVENT_HANDLER Handler)
{
  return EFI_SUCCESS;
}

static EFI_STATUS EFIAPI
FakeCreatePromptPage (IN UINTN Reserved, OUT UINTN *Page, OUT PROMPT_INTERFACE **Prompt)
{
  static PROMPT_INTERFACE Interface = {FakeShowPrompt};

  *Page = 0x1710;
  *Prompt = &Interface;
  return EFI_SUCCESS;
}

EFI_HANDLE
DriverTest::InstallPageEngine ()
{
  mPageEngine.CreatePromptPage = FakeCreatePromptPage;
  return Platform ().Handles ().InstallProtocol (gPageEngineProtocolGuid, &mPageEngine);
}

EFI_HANDLE
DriverTest::InstallUiFramework ()
{
  mPages.AddImagePackage = RecordAddImagePackage;
  mFramework.Services = &mServices;
  mFramework.Attributes = &mAttributes;
  mFramework.Pages = &mPages;
  return Platform ().Handles ().InstallProtocol (gUiFrameworkProtocolGuid, &mFramework);
}

EFI_HANDLE
DriverTest::InstallModuleRegistry ()
{
  mRegistry.Register = RecordRegister;
  mRegistry.Unregister = RecordUnregister;
  return Platform ().Handles ().InstallProtocol (gModuleRegistryProtocolGuid, &mRegistry);
}

bool
DriverTest::HasDriverProtocols () const
{
  HostHandles &Handles = HostPlatform::Current ().Handles ();

  return Handles.HasProtocol (mImage, gUiDriverProtocolGuid) &&
         Handles.HasProtocol (mImage, gFlashUpdatePageProtocolGuid);
}
