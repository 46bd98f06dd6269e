/** @file
  The simulated ACPI PM timer, installed as the IoRead32 hook for its lifetime.
**/
#include "SimulatedPmTimer.h"

extern "C" {
#include <Library/BaseLib.h>
}
#include <Library/IoLibHostHook.h>

SimulatedPmTimer::SimulatedPmTimer (const SETTINGS &Settings) : mSettings (Settings), mTscStart (AsmReadTsc ())
{
  SetIoRead32Hook (&SimulatedPmTimer::Read, this);
}

SimulatedPmTimer::~SimulatedPmTimer ()
{
  SetIoRead32Hook (nullptr, nullptr);
}

UINT32
SimulatedPmTimer::Read (UINTN Port, VOID *Context)
{
  auto *Timer = static_cast<SimulatedPmTimer *> (Context);

  if (Port != Timer->mSettings.Port) {
    Timer->mStrayReads++;
    return MAX_UINT32;
  }

  Timer->mReads++;
  return Timer->Count ();
}

UINT32
SimulatedPmTimer::Count ()
{
  const UINT64 Mask = (mSettings.Width == 32) ? 0xFFFFFFFFULL : 0x00FFFFFFULL;
  UINT64 Ticks = 0;

  switch (mSettings.Behaviour) {
    case Mode::FollowsTsc:
      Ticks = (AsmReadTsc () - mTscStart) / mSettings.TscPerTick;
      Ticks -= Ticks % mSettings.Granularity;
      break;
    case Mode::Stuck:
      Ticks = 0;
      break;
    case Mode::StepsPerRead:
      Ticks = (mReads - 1) * mSettings.Step;
      break;
  }

  UINT32 Value = (UINT32)((mSettings.Start + Ticks) & Mask);
  if (mSettings.Width == 24 && mSettings.NoisyUpperByte) {
    mNoise = mNoise * 1103515245U + 12345U;
    Value |= mNoise & 0xFF000000U;
  }

  return Value;
}
