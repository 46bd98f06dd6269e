/** @file
  RegisterUiStringPackages against the host HII database on the simulated
  firmware: the list that the database receives, every text as the pages will
  read it, and the failures (no database, no pool, a refusing database, an
  empty array), none of which may leave pool behind.
**/
#include <Guid/KestUiGuids.h>
#include <Library/UefiBootServicesTableLib.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "HostHii.h"
#include "PlatformTest.h"
#include "ResourceTestHelpers.h"
#include "UiResources.h"

using ResourceTest::GuidBytes;
using ResourceTest::LookUp;
using ResourceTest::ReadLe32;

namespace {

const std::u16string kThemeText = u"BGCL=010101|FGCL=FFFFFF";

const std::u16string kAdminUnlockMessage =
  u"The administrative password is set on this computer. You cannot access Setup until the correct password is "
  u"entered. If you need to change any setup fields, you must first enter the administrative password in this field.";

const std::vector<std::u16string> kEnglishTexts = {
  u"English",
  u"",
  u"",
  u"Preparing to enter BIOS Setup",
  u"Preparing to launch Diagnostics",
  u"Preparing one-time boot menu",
  u"F12 Boot Options",
  u"",
  u"Updating your system's firmware. Do not power down your system.",
  u"Flash Progress",
  u"   000%            ",
  u"BIOS Update successful. Rebooting your system.",
  u"BIOS Update successful.",
  u"BIOS Update failed. Rebooting your system.",
  u"BIOS Update failed.",
  u"BIOS Update blocked due to Intel AntiTheft feature overide.",
  u"Downgrading to a BIOS without Secure Boot abilities was blocked.",
  u"BIOS Update blocked due to unsupported downgrade.",
  u"Admin Unlock",
  kAdminUnlockMessage,
  u"Password is incorrect, re-enter the password",
  u"Password Failure: System Shutdown in 2 seconds",
};

class StringRegistration : public PlatformTest {
protected:
  EFI_HII_DATABASE_PROTOCOL *Database = nullptr;
  EFI_HII_STRING_PROTOCOL *Strings = nullptr;
  EFI_HANDLE DriverHandle = (EFI_HANDLE)&kThemeText;

  void
  SetUp () override
  {
    PlatformTest::SetUp ();
    ASSERT_EQ (InstallHostHii (), EFI_SUCCESS);
    // The driver finds both protocols as it does in firmware: through boot services.
    ASSERT_EQ (gBS->LocateProtocol (&gEfiHiiDatabaseProtocolGuid, nullptr, (VOID **)&Database), EFI_SUCCESS);
    ASSERT_EQ (gBS->LocateProtocol (&gEfiHiiStringProtocolGuid, nullptr, (VOID **)&Strings), EFI_SUCCESS);
  }

  void
  TearDown () override
  {
    EXPECT_EQ (UninstallHostHii (), EFI_SUCCESS);
    PlatformTest::TearDown ();
  }

  /// Registers through the driver's call and checks that it took no pool for good.
  EFI_HII_HANDLE
  Register (EFI_HII_DATABASE_PROTOCOL *Through)
  {
    const UINTN LiveBefore = Platform ().Pool ().LiveCount ();
    EFI_HII_HANDLE Handle = RegisterUiStringPackages (Through, DriverHandle);

    EXPECT_EQ (Platform ().Pool ().LiveCount (), LiveBefore) << "the list's buffer is freed after the call";
    return Handle;
  }
};

} // namespace

TEST_F (StringRegistration, HandsTheDatabaseOneListOfBothPackagesOnTheDriverHandle)
{
  EFI_HII_HANDLE Handle = Register (Database);

  ASSERT_NE (Handle, nullptr);
  EXPECT_EQ (HostHiiNewPackageListCallCount (), 1U);
  EXPECT_EQ (HostHiiDriverHandle (Handle), DriverHandle);

  const auto *List = reinterpret_cast<const UINT8 *> (HostHiiPackageList (Handle));
  ASSERT_NE (List, nullptr);
  EXPECT_EQ (GuidBytes (*reinterpret_cast<const EFI_GUID *> (List)),
             GuidBytes ("BCCB2FA7-0FC7-43E4-A4DC-90ACC8871E7E"));

  // List header, the packages of the array in their order, the end package.
  const UINTN PackagesSize = sizeof (UserInterfaceStrings) - 4;
  ASSERT_EQ (ReadLe32 (List + 16), 24 + PackagesSize);
  EXPECT_EQ (0, std::memcmp (List + 20, UserInterfaceStrings.Bytes + 4, PackagesSize));
  EXPECT_EQ (ReadLe32 (List + 20 + PackagesSize), 4U | ((UINT32)EFI_HII_PACKAGE_END << 24));
}

TEST_F (StringRegistration, EveryEnglishTextReadsBackExactly)
{
  EFI_HII_HANDLE Handle = Register (Database);

  ASSERT_NE (Handle, nullptr);
  ASSERT_EQ (kEnglishTexts.size (), 22U);
  for (UINTN Index = 0; Index < kEnglishTexts.size (); Index++) {
    const auto Found = LookUp (Strings, Handle, "en-US", (EFI_STRING_ID)(Index + 1));
    EXPECT_EQ (Found.Status, EFI_SUCCESS) << "string " << Index + 1;
    EXPECT_TRUE (Found.Text == kEnglishTexts[Index]) << "string " << Index + 1;
  }

  EXPECT_EQ (LookUp (Strings, Handle, "en-US", 23).Status, EFI_NOT_FOUND);
}

TEST_F (StringRegistration, PercentageTextKeepsItsSpaces)
{
  EFI_HII_HANDLE Handle = Register (Database);
  const auto Found = LookUp (Strings, Handle, "en-US", STR_FLASH_PERCENTAGE);

  ASSERT_EQ (Found.Status, EFI_SUCCESS);
  EXPECT_TRUE (Found.Text == std::u16string (3, u' ') + u"000%" + std::u16string (12, u' '));
}

TEST_F (StringRegistration, ThemeLanguageAnswersOnlyItsFourIds)
{
  EFI_HII_HANDLE Handle = Register (Database);

  ASSERT_NE (Handle, nullptr);
  EXPECT_TRUE (LookUp (Strings, Handle, "tm-CL", 1).Text == u"Theme");
  for (EFI_STRING_ID Id : {2, 3, 8}) {
    const auto Found = LookUp (Strings, Handle, "tm-CL", Id);
    EXPECT_EQ (Found.Status, EFI_SUCCESS) << "theme id " << Id;
    EXPECT_TRUE (Found.Text == kThemeText) << "theme id " << Id;
  }

  for (EFI_STRING_ID Id = 4; Id <= 23; Id++) {
    if (Id != 8) {
      EXPECT_EQ (LookUp (Strings, Handle, "tm-CL", Id).Status, EFI_NOT_FOUND) << "id " << Id;
    }
  }
}

TEST_F (StringRegistration, NoDatabaseNoHandle)
{
  const UINT64 AllocationsBefore = Platform ().Pool ().AllocationCount ();

  EXPECT_EQ (Register (nullptr), nullptr);
  EXPECT_EQ (Platform ().Pool ().AllocationCount (), AllocationsBefore);
}

TEST_F (StringRegistration, RefusedListGivesANullHandleAndNoLeak)
{
  HostHiiFailNewPackageList (EFI_OUT_OF_RESOURCES);

  EXPECT_EQ (Register (Database), nullptr);
  EXPECT_EQ (HostHiiNewPackageListCallCount (), 1U);
  EXPECT_EQ (HostHiiPackageListCount (), 0U);
}

TEST_F (StringRegistration, OutOfPoolGivesANullHandleWithoutAskingTheDatabase)
{
  Platform ().Pool ().FailAllocation ();

  EXPECT_EQ (Register (Database), nullptr);
  EXPECT_EQ (HostHiiNewPackageListCallCount (), 0U);
}

TEST_F (StringRegistration, EmptyArraysRegisterNothing)
{
  const UINT8 LengthOnly[4] = {4, 0, 0, 0};
  const UINT8 LengthZero[4] = {0, 0, 0, 0};
  const UINT64 AllocationsBefore = Platform ().Pool ().AllocationCount ();

  EXPECT_EQ (RegisterPackageArray (Database, DriverHandle, nullptr), nullptr);
  EXPECT_EQ (RegisterPackageArray (Database, DriverHandle, LengthOnly), nullptr);
  EXPECT_EQ (RegisterPackageArray (Database, DriverHandle, LengthZero), nullptr);
  EXPECT_EQ (HostHiiNewPackageListCallCount (), 0U);
  EXPECT_EQ (Platform ().Pool ().AllocationCount (), AllocationsBefore);
}
