/** @file
  The count against the PM timer: the 24-bit and 32-bit counters, their
  wrap-around, the reserved upper byte of a 24-bit timer, and a timer that
  does not run.
**/
#include "TscTestFixture.h"

#include <vector>

#include <Library/IoLibHostHook.h>

namespace {

//
// A timer driven by a script of counts, the last one repeated without end.
//
struct SCRIPTED_TIMER {
  std::vector<UINT32> Counts;
  bool Alternate = false; // after the script: alternate between the last two counts
  size_t Reads = 0;

  static UINT32
  Read (UINTN Port, VOID *Context)
  {
    auto *Self = static_cast<SCRIPTED_TIMER *> (Context);
    size_t Index = Self->Reads++;
    size_t Last = Self->Counts.size () - 1;

    if (Index > Last) {
      Index = Self->Alternate ? Last - 1 + ((Index - Last) & 1) : Last;
    }

    return Self->Counts[Index];
  }
};

TEST_F (TscTimerLibTest, TwentyFourBitTimerWrapsDuringTheCount)
{
  SimulatedPmTimer::SETTINGS Settings = TimerSettings (kTimerPort, 24);
  Settings.Start = 0xFFFFFF - 1000; // the wrap comes a third of the way in
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SimulatedPmTimer Timer (Settings);

  ExpectMeasuredFrom (Timer);
}

TEST_F (TscTimerLibTest, TwentyFourBitTimerIgnoresTheReservedUpperByte)
{
  // The simulated timer fills bits 24..31 with noise on every read.
  SimulatedPmTimer::SETTINGS Settings = TimerSettings (kTimerPort, 24);
  Settings.NoisyUpperByte = true;
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SimulatedPmTimer Timer (Settings);

  ExpectMeasuredFrom (Timer);
}

TEST_F (TscTimerLibTest, ThirtyTwoBitTimerWrapsDuringTheCount)
{
  SimulatedPmTimer::SETTINGS Settings = TimerSettings (kTimerPort, 32);
  Settings.Start = 0xFFFFFFFFU - 1000;
  FakeAcpi::FADT_SETTINGS Fadt = TimerAtPort (kTimerPort);
  Fadt.Flags = EFI_ACPI_2_0_TMR_VAL_EXT;
  PublishAcpi20Platform (Fadt);
  SimulatedPmTimer Timer (Settings);

  ExpectMeasuredFrom (Timer);
}

TEST_F (TscTimerLibTest, ThirtyTwoBitTimerCountsItsUpperByte)
{
  // Each read moves the timer by 2^24 + 1: all of that change is in the upper
  // byte but one tick. Read as 32 bits, the interval has passed at the first
  // read after the start; read as 24 bits it would take 3,579 more reads.
  SimulatedPmTimer::SETTINGS Settings = TimerSettings (kTimerPort, 32);
  Settings.Behaviour = SimulatedPmTimer::Mode::StepsPerRead;
  Settings.Step = 0x01000001;
  FakeAcpi::FADT_SETTINGS Fadt = TimerAtPort (kTimerPort);
  Fadt.Flags = EFI_ACPI_2_0_TMR_VAL_EXT;
  PublishAcpi20Platform (Fadt);
  SimulatedPmTimer Timer (Settings);

  PublishTscFrequency ();

  EXPECT_EQ (Timer.Reads (), 3U) << "one read before the edge, the edge, the end";
}

TEST_F (TscTimerLibTest, CountEndsOnTheReadThatCompletesTheInterval)
{
  // One tick per read: the start read, the edge, then 3,579 reads to the end.
  SimulatedPmTimer::SETTINGS Settings = TimerSettings (kTimerPort, 24);
  Settings.Behaviour = SimulatedPmTimer::Mode::StepsPerRead;
  Settings.Step = 1;
  Settings.Start = 0xFFFFFF - 10;
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SimulatedPmTimer Timer (Settings);

  EXPECT_EQ (PublishTscFrequency (), EFI_SUCCESS);

  EXPECT_EQ (Timer.Reads (), 2U + TSC_CALIBRATION_PM_TICKS);
}

TEST_F (TscTimerLibTest, CoarseTimerOvershootIsScaledBack)
{
  // The count moves 1,000 ticks at a time, so the interval ends at 4,000
  // ticks: the TSC ticks counted over them are scaled back to 3,579.
  SimulatedPmTimer::SETTINGS Settings = TimerSettings (kTimerPort, 24);
  Settings.Granularity = 1000;
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SimulatedPmTimer Timer (Settings);

  ExpectMeasuredFrom (Timer);
}

TEST_F (TscTimerLibTest, TimerThatNeverAdvancesIsADeviceError)
{
  // Only the reserved upper byte changes (with noise): the count stands still.
  SimulatedPmTimer::SETTINGS Settings = TimerSettings (kTimerPort, 24);
  Settings.Behaviour = SimulatedPmTimer::Mode::Stuck;
  Settings.NoisyUpperByte = true;
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SimulatedPmTimer Timer (Settings);

  EXPECT_EQ (PublishTscFrequency (), EFI_DEVICE_ERROR);

  ExpectNothingPublished ();
  EXPECT_GT (Timer.Reads (), 1U);
}

TEST_F (TscTimerLibTest, TimerThatStopsMidwayIsADeviceError)
{
  // The timer runs past the start edge for a while, then stands still.
  SCRIPTED_TIMER Stopping{{1, 2, 3, 50, 100}, false};
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SetIoRead32Hook (&SCRIPTED_TIMER::Read, &Stopping);

  EFI_STATUS Status = PublishTscFrequency ();
  SetIoRead32Hook (nullptr, nullptr);

  EXPECT_EQ (Status, EFI_DEVICE_ERROR);
  EXPECT_GT (Stopping.Reads, 1000000U);
  ExpectNothingPublished ();
}

TEST_F (TscTimerLibTest, TimerThatFlickersWithoutProgressIsADeviceError)
{
  // After the start edge (10 -> 11) every read differs from the last, yet the
  // count never gets past two ticks.
  SCRIPTED_TIMER Flickering{{10, 11, 12, 13}, true};
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SetIoRead32Hook (&SCRIPTED_TIMER::Read, &Flickering);

  EFI_STATUS Status = PublishTscFrequency ();
  SetIoRead32Hook (nullptr, nullptr);

  EXPECT_EQ (Status, EFI_DEVICE_ERROR);
  EXPECT_GT (Flickering.Reads, 1000000U);
  ExpectNothingPublished ();
}

TEST_F (TscTimerLibTest, TimerThatRunsBackwardsIsADeviceError)
{
  SCRIPTED_TIMER Backwards{{10, 11, 500, 7}, false};
  PublishAcpi20Platform (TimerAtPort (kTimerPort));
  SetIoRead32Hook (&SCRIPTED_TIMER::Read, &Backwards);

  EFI_STATUS Status = PublishTscFrequency ();
  SetIoRead32Hook (nullptr, nullptr);

  EXPECT_EQ (Status, EFI_DEVICE_ERROR);
  EXPECT_EQ (Backwards.Reads, 4U) << "refused at the read that went back";
  ExpectNothingPublished ();
}

TEST_F (TscTimerLibTest, UnclaimedPortReadingAllOnesIsADeviceError)
{
  // No hook: every port reads 0xFFFFFFFF, as an unclaimed port does.
  PublishAcpi20Platform (TimerAtPort (kTimerPort));

  EXPECT_EQ (PublishTscFrequency (), EFI_DEVICE_ERROR);

  ExpectNothingPublished ();
}

} // namespace
