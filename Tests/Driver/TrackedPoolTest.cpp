/** @file
  Tracked pool: allocation and release through the owning pointer.
**/
#include "PlatformTest.h"

#include <Library/TrackedAllocationLib.h>

#define TRACKED_POOL_FILE "Tests/Driver/TrackedPoolTest"

namespace {

using TrackedPoolTest = PlatformTest;

TEST_F (TrackedPoolTest, AllocationIsZeroFilledAndReleaseNullsTheOwnerOnce)
{
  UINT8 *Buffer = nullptr;

  ASSERT_EQ (ALLOCATE_TRACKED_POOL (Buffer, 300), EFI_SUCCESS);
  ASSERT_NE (Buffer, nullptr);
  const HostPoolBuffer *Record = Platform ().Pool ().Find (Buffer);
  ASSERT_NE (Record, nullptr);
  EXPECT_EQ (Record->Size, 300u);
  EXPECT_EQ (Record->Type, EfiBootServicesData);
  for (UINTN Index = 0; Index < 300; Index++) {
    ASSERT_EQ (Buffer[Index], 0) << "byte " << Index;
  }

  FREE_TRACKED_POOL (Buffer);
  EXPECT_EQ (Buffer, nullptr);
  EXPECT_EQ (Platform ().Pool ().LiveCount (), 0u);

  // The second release finds null and frees nothing (a double free would be recorded).
  FREE_TRACKED_POOL (Buffer);
  EXPECT_EQ (Platform ().Calls ().Count (HostService::FreePool), 1u);
}

TEST_F (TrackedPoolTest, BadArgumentsAreRefusedAndLeaveTheCellAsItWas)
{
  VOID *Cell = (VOID *)0x1234;

  EXPECT_EQ (AllocateTrackedPool (&Cell, 0, __func__, TRACKED_POOL_FILE, __LINE__), EFI_INVALID_PARAMETER);
  EXPECT_EQ (Cell, (VOID *)0x1234);
  EXPECT_EQ (AllocateTrackedPool (nullptr, 8, __func__, TRACKED_POOL_FILE, __LINE__), EFI_INVALID_PARAMETER);
  FreeTrackedPool (nullptr, __func__, TRACKED_POOL_FILE, __LINE__);
  EXPECT_EQ (Platform ().Calls ().Count (HostService::AllocatePool), 0u);
  EXPECT_EQ (Platform ().Calls ().Count (HostService::FreePool), 0u);
}

TEST_F (TrackedPoolTest, FailedAllocationLeavesNullInTheCell)
{
  VOID *Cell = (VOID *)0x1234;

  Platform ().Pool ().FailAllocation (1);
  EXPECT_EQ (AllocateTrackedPool (&Cell, 64, __func__, TRACKED_POOL_FILE, __LINE__), EFI_OUT_OF_RESOURCES);
  EXPECT_EQ (Cell, nullptr);
}

TEST_F (TrackedPoolTest, TheCellsOldBufferIsNeitherReadNorReleased)
{
  VOID *First = nullptr;

  ASSERT_EQ (ALLOCATE_TRACKED_POOL (First, 16), EFI_SUCCESS);
  VOID *Owner = First;
  ASSERT_EQ (ALLOCATE_TRACKED_POOL (Owner, 32), EFI_SUCCESS);
  EXPECT_NE (Owner, First);
  EXPECT_NE (Platform ().Pool ().Find (First), nullptr) << "the earlier buffer is the caller's to release";

  FREE_TRACKED_POOL (Owner);
  FREE_TRACKED_POOL (First);
}

} // namespace
