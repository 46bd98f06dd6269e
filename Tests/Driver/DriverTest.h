/** @file
  Fixture of the driver tests: a simulated boot with the host HII database and
  small recording fakes of the page engine, the UI framework and the module
  registry. The driver only looks these up at start-up; the pages that call
  them are tested with the stand-ins.
**/
#ifndef DRIVER_TEST_H_
#define DRIVER_TEST_H_

#include <vector>

#include "PlatformTest.h"

#include <Protocol/ModuleRegistry.h>
#include <Protocol/PageEngine.h>
#include <Protocol/UiFramework.h>

extern "C" EFI_STATUS EFIAPI _ModuleEntryPoint (IN EFI_HANDLE ImageHandle, IN EFI_SYSTEM_TABLE *SystemTable);

///
/// One AddImagePackage call.
///
struct ImagePackageCall {
  VOID *Package;
  UINTN Size;
  EFI_GUID Guid;
  UINTN Reserved;
};

///
/// One Register or Unregister call of the module registry.
///
struct RegistryCall {
  bool Register;
  LIST_ENTRY *ListHead;
};

class DriverTest : public PlatformTest {
public:
  /** @return the AddImagePackage calls that the UI framework fake saw. **/
  static std::vector<ImagePackageCall> &ImagePackages ();

  /** @return the calls that the module registry fake saw. **/
  static std::vector<RegistryCall> &RegistryCalls ();

protected:
  void SetUp () override;
  void TearDown () override;

  /** Creates the driver's image handle (loaded image protocol, no unload function yet). **/
  EFI_HANDLE CreateImage ();

  /** Calls the driver's entry point for the image made by CreateImage. **/
  EFI_STATUS StartDriver ();

  EFI_HANDLE InstallPageEngine ();
  EFI_HANDLE InstallUiFramework ();
  EFI_HANDLE InstallModuleRegistry ();

  bool HasDriverProtocols () const;

  EFI_HANDLE mImage = nullptr;
  PAGE_ENGINE_PROTOCOL mPageEngine = {};
  PAGE_ENGINE_PROTOCOL mSecondPageEngine = {};

private:
  UI_SERVICES mServices = {};
  UI_ATTRIBUTES mAttributes = {};
  UI_PAGES mPages = {};
  UI_FRAMEWORK_PROTOCOL mFramework = {};
  MODULE_REGISTRY_PROTOCOL mRegistry = {};
};

#endif
