/** @file
  A simulated ACPI PM timer behind the host IoRead32 hook.

  The count is derived from the time-stamp counter at a chosen ratio, so the
  frequency that the calibration must find is known exactly, and an
  interruption of the test process moves both clocks alike. The timer can
  start anywhere (to cross its wrap), move in coarse steps, fill the reserved upper byte of a 24-bit
  timer with noise, stand still, or jump by a fixed step per read.
**/
#ifndef KEST_TESTS_SIMULATED_PM_TIMER_H_
#define KEST_TESTS_SIMULATED_PM_TIMER_H_

#include <Base.h>

class SimulatedPmTimer {
public:
  enum class Mode { FollowsTsc, Stuck, StepsPerRead };

  struct SETTINGS {
    UINT16 Port = 0x608;
    UINT32 Width = 24;          // counting bits: 24 or 32
    UINT64 TscPerTick = 100;    // FollowsTsc: TSC ticks per timer tick
    UINT32 Start = 0;           // first count
    bool NoisyUpperByte = true; // 24-bit: reserved bits 24..31 change on every read
    Mode Behaviour = Mode::FollowsTsc;
    UINT32 Step = 1;        // StepsPerRead: counts added by each read
    UINT32 Granularity = 1; // FollowsTsc: the count moves in steps of this many ticks
  };

  explicit SimulatedPmTimer (const SETTINGS &Settings);
  ~SimulatedPmTimer ();
  SimulatedPmTimer (const SimulatedPmTimer &) = delete;
  SimulatedPmTimer &operator= (const SimulatedPmTimer &) = delete;

  /// Reads of the timer's port.
  UINT64
  Reads () const
  {
    return mReads;
  }

  /// Reads of any other port.
  UINT64
  StrayReads () const
  {
    return mStrayReads;
  }

  /// The TSC frequency that a calibration over PmTicks ticks, times 1,000, must report.
  UINT64
  ExpectedFrequency (UINT32 PmTicks) const
  {
    return (UINT64)PmTicks * mSettings.TscPerTick * 1000;
  }

private:
  static UINT32 Read (UINTN Port, VOID *Context);
  UINT32 Count ();

  SETTINGS mSettings;
  UINT64 mTscStart;
  UINT64 mReads = 0;
  UINT64 mStrayReads = 0;
  UINT32 mNoise = 0x5EED;
};

#endif
