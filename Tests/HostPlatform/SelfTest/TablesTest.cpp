/** @file
  Tests of the tables, the globals, unexpected calls, configuration tables,
  the clock and ResetSystem.
**/
#include <Library/UefiRuntimeServicesTableLib.h>

#include "HostGuid.h"
#include "HostPlatformInternal.h"
#include "SelfTestHelpers.h"

namespace {

template <typename TABLE>
UINT32
CrcWithoutField (const TABLE &Table)
{
  TABLE Copy = Table;
  Copy.Hdr.CRC32 = 0;
  return HostCrc32 (&Copy, sizeof (Copy));
}

} // namespace

TEST (HostPlatformLifetime, SetsTablesAndGlobalsAndClearsThemAtTheEnd)
{
  {
    HostPlatform Platform;

    ASSERT_EQ (gST, Platform.SystemTable ());
    EXPECT_EQ (gBS, Platform.BootServices ());
    EXPECT_EQ (gRT, Platform.RuntimeServices ());
    EXPECT_EQ (gST->BootServices, gBS);
    EXPECT_EQ (gST->RuntimeServices, gRT);
    EXPECT_EQ (gST->Hdr.Signature, EFI_SYSTEM_TABLE_SIGNATURE);
    EXPECT_EQ (gBS->Hdr.Signature, EFI_BOOT_SERVICES_SIGNATURE);
    EXPECT_EQ (gRT->Hdr.Signature, EFI_RUNTIME_SERVICES_SIGNATURE);
    EXPECT_EQ (gBS->Hdr.HeaderSize, sizeof (EFI_BOOT_SERVICES));
    EXPECT_EQ (gST->Hdr.Revision, (UINT32)EFI_2_70_SYSTEM_TABLE_REVISION);
    EXPECT_EQ (gST->Hdr.CRC32, CrcWithoutField (*gST));
    EXPECT_EQ (gBS->Hdr.CRC32, CrcWithoutField (*gBS));
    EXPECT_EQ (gRT->Hdr.CRC32, CrcWithoutField (*gRT));
    EXPECT_NE (gST->ConIn, nullptr);
    EXPECT_NE (gST->ConOut, nullptr);
    EXPECT_TRUE (Platform.Errors ().empty ());
  }

  EXPECT_EQ (gST, nullptr);
  EXPECT_EQ (gBS, nullptr);
  EXPECT_EQ (gRT, nullptr);
}

TEST_F (HostPlatformTest, UnsimulatedSlotsRecordAnUnexpectedCall)
{
  EFI_EVENT Event = nullptr;
  UINTN Size = 0;

  ASSERT_EQ (gBS->CreateEvent (EVT_TIMER, 0, nullptr, nullptr, &Event), EFI_SUCCESS);
  EXPECT_EQ (gBS->SetTimer (Event, TimerRelative, 10), EFI_UNSUPPORTED);
  EXPECT_EQ (gRT->GetNextVariableName (&Size, nullptr, nullptr), EFI_UNSUPPORTED);

  std::vector<std::string> Errors = Platform ().TakeErrors ();
  ASSERT_EQ (Errors.size (), 2U);
  EXPECT_NE (Errors[0].find ("gBS->SetTimer"), std::string::npos);
  EXPECT_NE (Errors[1].find ("gRT->GetNextVariableName"), std::string::npos);
  EXPECT_EQ (gBS->CloseEvent (Event), EFI_SUCCESS);
}

TEST_F (HostPlatformTest, ResetSystemIsRecordedAndReturns)
{
  UINT8 Data[] = {0x41, 0x00};

  gRT->ResetSystem (EfiResetShutdown, EFI_ABORTED, sizeof (Data), Data);

  ASSERT_EQ (Platform ().Reset ().Calls ().size (), 1U);
  const HostResetCall &Call = Platform ().Reset ().Calls ()[0];
  EXPECT_EQ (Call.Type, EfiResetShutdown);
  EXPECT_EQ (Call.Status, EFI_ABORTED);
  EXPECT_EQ (Call.Data, std::vector<UINT8> (Data, Data + sizeof (Data)));
}
