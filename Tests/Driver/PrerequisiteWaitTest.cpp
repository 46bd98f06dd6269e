/** @file
  Prerequisite wait: the function runs once, when the last protocol of the list
  is installed.
**/
#include "PlatformTest.h"

#include <Library/PrerequisiteWaitLib.h>

namespace {

EFI_GUID mFirstGuid = {0x1e9a6d5c, 0x0c4b, 0x4d7e, {0x9a, 0x11, 0x3b, 0x52, 0x6f, 0x70, 0x81, 0x92}};
EFI_GUID mSecondGuid = {0x2f8b7e6d, 0x1d5c, 0x4e8f, {0xab, 0x22, 0x4c, 0x63, 0x70, 0x81, 0x92, 0xa3}};

struct Call {
  VOID *Context1;
  VOID *Context2;
};

std::vector<Call> mCalls;

EFI_STATUS EFIAPI
RecordCall (IN VOID *Context1, IN VOID *Context2)
{
  mCalls.push_back ({Context1, Context2});
  return EFI_DEVICE_ERROR; // what the function returns does not matter to the wait
}

class PrerequisiteWaitTest : public PlatformTest {
protected:
  void
  SetUp () override
  {
    PlatformTest::SetUp ();
    mCalls.clear ();
  }

  UINT8 mInterface = 0;
  VOID *mContext1 = (VOID *)0x11;
  VOID *mContext2 = (VOID *)0x22;
};

TEST_F (PrerequisiteWaitTest, RunsOnceWhenTheLastProtocolArrives)
{
  PREREQ_WAIT *Wait =
    RegisterPrerequisiteWait (nullptr, RecordCall, mContext1, mContext2, &mFirstGuid, &mSecondGuid, nullptr);
  ASSERT_NE (Wait, nullptr);
  EXPECT_EQ (Wait->Signature, PREREQ_WAIT_SIGNATURE);
  EXPECT_EQ (Wait->ProtocolCount, 2u);
  EXPECT_TRUE (mCalls.empty ());

  Platform ().Handles ().InstallProtocol (mSecondGuid, &mInterface);
  EXPECT_TRUE (mCalls.empty ());
  EXPECT_EQ (Wait->FoundCount, 1u);

  Platform ().Handles ().InstallProtocol (mFirstGuid, &mInterface);
  ASSERT_EQ (mCalls.size (), 1u);
  EXPECT_EQ (mCalls[0].Context1, mContext1);
  EXPECT_EQ (mCalls[0].Context2, mContext2);
  EXPECT_TRUE (Wait->Done);

  // Later installations leave it alone.
  Platform ().Handles ().InstallProtocol (mFirstGuid, &mInterface);
  EXPECT_EQ (mCalls.size (), 1u);

  CancelPrerequisiteWait (Wait);
  EXPECT_TRUE (Platform ().Events ().OpenEvents ().empty ());
}

TEST_F (PrerequisiteWaitTest, ProtocolsInstalledAlreadyAreSeenAtOnceEvenOnSeveralHandles)
{
  UINT8 Other = 0;
  Platform ().Handles ().InstallProtocol (mFirstGuid, &mInterface);
  Platform ().Handles ().InstallProtocol (mFirstGuid, &Other);

  PREREQ_WAIT *Wait = RegisterPrerequisiteWait (nullptr, RecordCall, mContext1, mContext2, &mFirstGuid, nullptr);
  ASSERT_NE (Wait, nullptr);
  EXPECT_EQ (mCalls.size (), 1u) << "one handle is not room enough for two, yet the protocol is there";

  CancelPrerequisiteWait (Wait);
}

TEST_F (PrerequisiteWaitTest, UnsupportedRequestsGiveNull)
{
  PREREQ_WAIT Earlier = {};

  EXPECT_EQ (RegisterPrerequisiteWait (&Earlier, RecordCall, mContext1, mContext2, &mFirstGuid, nullptr), nullptr);
  EXPECT_EQ (RegisterPrerequisiteWait (nullptr, RecordCall, mContext1, mContext2, nullptr), nullptr);
  EXPECT_EQ (RegisterPrerequisiteWait (nullptr, nullptr, mContext1, mContext2, &mFirstGuid, nullptr), nullptr);
  EXPECT_EQ (Platform ().Pool ().AllocationCount (), 0u);
}

TEST_F (PrerequisiteWaitTest, EveryFailureOnTheWayGivesNullAndLeavesNothingBehind)
{
  // The record, then the GUID block.
  for (UINT64 Nth = 1; Nth <= 2; Nth++) {
    Platform ().Pool ().FailAllocation (Nth);
    EXPECT_EQ (RegisterPrerequisiteWait (nullptr, RecordCall, mContext1, mContext2, &mFirstGuid, nullptr), nullptr);
    Platform ().Pool ().StopFailing ();
    EXPECT_EQ (Platform ().Pool ().LiveCount (), 0u) << "allocation " << Nth;
  }

  Platform ().Calls ().FailNth (HostService::CreateEvent, EFI_OUT_OF_RESOURCES);
  EXPECT_EQ (RegisterPrerequisiteWait (nullptr, RecordCall, mContext1, mContext2, &mFirstGuid, nullptr), nullptr);
  EXPECT_EQ (Platform ().Pool ().LiveCount (), 0u);

  // The second registration fails: the event is closed as well.
  Platform ().Calls ().FailNth (HostService::RegisterProtocolNotify, EFI_OUT_OF_RESOURCES, 2);
  EXPECT_EQ (RegisterPrerequisiteWait (nullptr, RecordCall, mContext1, mContext2, &mFirstGuid, &mSecondGuid, nullptr),
             nullptr);
  EXPECT_EQ (Platform ().Pool ().LiveCount (), 0u);
  EXPECT_TRUE (Platform ().Events ().OpenEvents ().empty ());
  EXPECT_TRUE (mCalls.empty ());
}

} // namespace
