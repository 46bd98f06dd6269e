/** @file
  Out of pool at each allocation of the start-up path: the entry still
  succeeds, what is installed is whole, and the unload leaves nothing behind.
**/
#include "DriverTest.h"
#include "UserInterface.h"

namespace {

class StartupOutOfPoolTest : public DriverTest, public ::testing::WithParamInterface<UINT64> {};

//
// The start-up path with everything present makes these allocations, in order:
// the module list head and its three entries, the UI driver record, the flash
// page record, the package list handed to the HII database and the default
// pair of password records (there is no password service).
//
constexpr UINT64 kStartupAllocations = 8;
constexpr UINT64 kFlashRecordAllocation = 6;

TEST_F (DriverTest, StartupMakesTheAllocationsThatTheOutOfPoolCasesCover)
{
  InstallPageEngine ();
  InstallUiFramework ();
  InstallModuleRegistry ();
  ASSERT_EQ (StartDriver (), EFI_SUCCESS);
  EXPECT_EQ (Platform ().Pool ().AllocationCount (), kStartupAllocations);
  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_SUCCESS);
}

TEST_P (StartupOutOfPoolTest, EntrySucceedsInstallsWholeRecordsAndUnloadsClean)
{
  InstallPageEngine ();
  InstallUiFramework ();
  InstallModuleRegistry ();
  Platform ().Pool ().FailAllocation (GetParam ());

  ASSERT_EQ (StartDriver (), EFI_SUCCESS);
  Platform ().Pool ().StopFailing ();

  // A failed UI record is made again by the wait, which sees the page engine at once.
  ASSERT_TRUE (Platform ().Handles ().HasProtocol (mImage, gUiDriverProtocolGuid));
  const UI_DRIVER_PROTOCOL *Record =
    (const UI_DRIVER_PROTOCOL *)Platform ().Handles ().Interface (mImage, gUiDriverProtocolGuid);
  ASSERT_NE (Record, nullptr);
  EXPECT_NE (Record->IsPasswordInstalled, nullptr);

  // Without its record the flash page protocol is not installed with a null interface.
  bool FlashExpected = GetParam () != kFlashRecordAllocation;
  EXPECT_EQ (Platform ().Handles ().HasProtocol (mImage, gFlashUpdatePageProtocolGuid), FlashExpected);
  if (FlashExpected) {
    EXPECT_NE (Platform ().Handles ().Interface (mImage, gFlashUpdatePageProtocolGuid), nullptr);
  }

  EXPECT_EQ (Platform ().Images ().Unload (mImage), EFI_SUCCESS);
  EXPECT_EQ (Platform ().Pool ().LiveCount (), 0u);
}

INSTANTIATE_TEST_SUITE_P (EachAllocation, StartupOutOfPoolTest, ::testing::Range<UINT64> (1, kStartupAllocations + 1));

} // namespace
