/** @file
  Tests of the pool account, its failure injection, and the fixture's checks.
**/
#include <gtest/gtest-spi.h>

#include "SelfTestHelpers.h"

TEST_F (HostPlatformTest, EveryLiveBufferIsAccountedAndFilledWithThePattern)
{
  VOID *First = nullptr;
  VOID *Second = nullptr;
  UINT64 Before = Platform ().Pool ().AllocationCount ();

  ASSERT_EQ (gBS->AllocatePool (EfiBootServicesData, 24, &First), EFI_SUCCESS);
  ASSERT_EQ (gBS->AllocatePool (EfiRuntimeServicesData, 3, &Second), EFI_SUCCESS);

  std::vector<HostPoolBuffer> Live = Platform ().Pool ().LiveBuffers ();
  ASSERT_EQ (Live.size (), 2U);
  EXPECT_EQ (Live[0].Address, First);
  EXPECT_EQ (Live[0].Size, 24U);
  EXPECT_EQ (Live[0].Type, EfiBootServicesData);
  EXPECT_EQ (Live[0].Number, Before + 1);
  EXPECT_EQ (Live[1].Type, EfiRuntimeServicesData);
  EXPECT_EQ (Live[1].Number, Before + 2);
  for (UINTN Index = 0; Index < 24; Index++) {
    ASSERT_EQ (static_cast<UINT8 *> (First)[Index], HostPool::FillPattern);
  }

  EXPECT_EQ (gBS->AllocatePool (EfiConventionalMemory, 8, &First), EFI_INVALID_PARAMETER);
  EXPECT_EQ (gBS->FreePool (Second), EFI_SUCCESS);
  EXPECT_EQ (gBS->FreePool (First), EFI_SUCCESS);
  EXPECT_EQ (Platform ().Pool ().LiveCount (), 0U);
}

TEST_F (HostPlatformTest, BadFreesAreRecordedAsErrors)
{
  VOID *Buffer = nullptr;
  UINT64 NotPool = 0;

  ASSERT_EQ (gBS->AllocatePool (EfiBootServicesData, 8, &Buffer), EFI_SUCCESS);
  ASSERT_EQ (gBS->FreePool (Buffer), EFI_SUCCESS);
  EXPECT_EQ (gBS->FreePool (Buffer), EFI_INVALID_PARAMETER);
  EXPECT_EQ (gBS->FreePool (&NotPool), EFI_INVALID_PARAMETER);
  EXPECT_EQ (gBS->FreePool (nullptr), EFI_INVALID_PARAMETER);

  std::vector<std::string> Errors = Platform ().TakeErrors ();
  ASSERT_EQ (Errors.size (), 3U);
  EXPECT_NE (Errors[0].find ("freed a second time"), std::string::npos);
  EXPECT_NE (Errors[1].find ("did not hand out"), std::string::npos);
  EXPECT_NE (Errors[2].find ("null"), std::string::npos);
}

TEST_F (HostPlatformTest, FailAllocationFailsOnlyTheNthAllocation)
{
  VOID *Buffers[3] = {};

  Platform ().Pool ().FailAllocation (2);
  EXPECT_EQ (gBS->AllocatePool (EfiBootServicesData, 8, &Buffers[0]), EFI_SUCCESS);
  EXPECT_EQ (gBS->AllocatePool (EfiBootServicesData, 8, &Buffers[1]), EFI_OUT_OF_RESOURCES);
  EXPECT_EQ (gBS->AllocatePool (EfiBootServicesData, 8, &Buffers[2]), EFI_SUCCESS);
  EXPECT_EQ (Platform ().Pool ().LiveCount (), 2U);

  gBS->FreePool (Buffers[0]);
  gBS->FreePool (Buffers[2]);
}

TEST_F (HostPlatformTest, FailAllocationsAfterFailsEveryLaterAllocation)
{
  VOID *Buffer = nullptr;

  Platform ().Pool ().FailAllocationsAfter (1);
  ASSERT_EQ (gBS->AllocatePool (EfiBootServicesData, 8, &Buffer), EFI_SUCCESS);
  gBS->FreePool (Buffer);
  for (int Attempt = 0; Attempt < 3; Attempt++) {
    VOID *Failed = nullptr;
    EXPECT_EQ (gBS->AllocatePool (EfiBootServicesData, 8, &Failed), EFI_OUT_OF_RESOURCES);
  }

  Platform ().Pool ().StopFailing ();
  ASSERT_EQ (gBS->AllocatePool (EfiBootServicesData, 8, &Buffer), EFI_SUCCESS);
  gBS->FreePool (Buffer);
}

//
// The fixture's own checks, run inside a test: EXPECT_NONFATAL_FAILURE reaches
// the fixture only through a static pointer.
//
class PlatformFixtureTest : public HostPlatformTest {
protected:
  static PlatformFixtureTest *mSelf;

  static void
  RunTearDown ()
  {
    mSelf->PlatformTest::TearDown ();
  }
};

PlatformFixtureTest *PlatformFixtureTest::mSelf = nullptr;

TEST_F (PlatformFixtureTest, AKeptBufferPassesAndALeakedOneFails)
{
  VOID *Kept = nullptr;
  VOID *Leaked = nullptr;

  ASSERT_EQ (gBS->AllocatePool (EfiBootServicesData, 16, &Kept), EFI_SUCCESS);
  ASSERT_EQ (gBS->AllocatePool (EfiBootServicesData, 32, &Leaked), EFI_SUCCESS);
  KeepPoolBuffer (Kept);

  mSelf = this;
  EXPECT_NONFATAL_FAILURE (RunTearDown (), "allocation 2 (32 bytes");
  SetUp ();
}

TEST_F (PlatformFixtureTest, ARecordedErrorFails)
{
  gBS->FreePool (nullptr);

  mSelf = this;
  EXPECT_NONFATAL_FAILURE (RunTearDown (), "FreePool: null pointer");
  SetUp ();
}
