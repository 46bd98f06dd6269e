/** @file
  PublishTscFrequency: the configuration table it installs, the table it
  leaves alone, and the pool it gives back when it cannot finish.
**/
#include "TscTestFixture.h"

namespace {

TEST_F (TscTimerLibTest, PublishesTheMeasuredFrequencyInAnEightBytePoolBuffer)
{
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SimulatedPmTimer Timer (TimerSettings (kTimerPort));
  const size_t TablesBefore = Firmware.TableCount ();

  ExpectMeasuredFrom (Timer);
  EXPECT_EQ (Firmware.TableCount (), TablesBefore + 1);
}

TEST_F (TscTimerLibTest, FollowsTheRatioOfTheTwoClocks)
{
  SimulatedPmTimer::SETTINGS Settings = TimerSettings (kTimerPort);
  Settings.TscPerTick = 37;
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SimulatedPmTimer Timer (Settings);

  ExpectMeasuredFrom (Timer);
}

TEST_F (TscTimerLibTest, PublishedTableIsLeftUntouched)
{
  static UINT64 Existing = 2400000000ULL;
  ASSERT_EQ (gBS->InstallConfigurationTable (&gTscFrequencyGuid, &Existing), EFI_SUCCESS);
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SimulatedPmTimer Timer (TimerSettings (kTimerPort));
  const size_t InstallsBefore = Firmware.InstallCalls ();

  EXPECT_EQ (PublishTscFrequency (), EFI_SUCCESS);

  EXPECT_EQ (Firmware.FindTable (gTscFrequencyGuid), &Existing);
  EXPECT_EQ (Existing, 2400000000ULL);
  EXPECT_EQ (Firmware.InstallCalls (), InstallsBefore);
  EXPECT_EQ (Firmware.OutstandingPool (), 0U);
  EXPECT_EQ (Timer.Reads (), 0U) << "no calibration when the table exists";
}

TEST_F (TscTimerLibTest, SecondCallKeepsTheFirstTable)
{
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SimulatedPmTimer Timer (TimerSettings (kTimerPort));

  ASSERT_EQ (PublishTscFrequency (), EFI_SUCCESS);
  const void *First = Firmware.FindTable (gTscFrequencyGuid);
  const UINT64 Reads = Timer.Reads ();

  EXPECT_EQ (PublishTscFrequency (), EFI_SUCCESS);
  EXPECT_EQ (Firmware.FindTable (gTscFrequencyGuid), First);
  EXPECT_EQ (Firmware.OutstandingPool (), 1U);
  EXPECT_EQ (Timer.Reads (), Reads);
}

TEST_F (TscTimerLibTest, OutOfPoolPublishesNothingAndLeaksNothing)
{
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SimulatedPmTimer Timer (TimerSettings (kTimerPort));
  Firmware.FailAllocations = true;

  EXPECT_EQ (PublishTscFrequency (), EFI_OUT_OF_RESOURCES);

  ExpectNothingPublished ();
}

TEST_F (TscTimerLibTest, RefusedInstallationFreesTheBuffer)
{
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SimulatedPmTimer Timer (TimerSettings (kTimerPort));
  Firmware.InstallResult = EFI_OUT_OF_RESOURCES;

  EXPECT_EQ (PublishTscFrequency (), EFI_OUT_OF_RESOURCES);

  ExpectNothingPublished ();
}

TEST_F (TscTimerLibTest, WithoutAcpiTheStatusIsUnsupported)
{
  SimulatedPmTimer Timer (TimerSettings (kTimerPort));

  EXPECT_EQ (PublishTscFrequency (), EFI_UNSUPPORTED);

  ExpectNothingPublished ();
  EXPECT_EQ (Timer.Reads () + Timer.StrayReads (), 0U);
}

} // namespace
