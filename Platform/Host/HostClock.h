/** @file
  The simulated clock: GetTime, Stall and GetNextMonotonicCount.

  Time passes only when code calls Stall or a test calls Advance; GetTime
  reads the wall-clock time that the test set, moved on by that much. The
  default is 2025-01-01 00:00:00 with an unspecified time zone.
**/
#ifndef HOST_CLOCK_H_
#define HOST_CLOCK_H_

#include <Uefi.h>

class HostClock {
public:
  HostClock ();

  HostClock (const HostClock &) = delete;
  HostClock &operator= (const HostClock &) = delete;

  /** Sets the wall-clock time; an invalid EFI_TIME fails the test and changes nothing. **/
  VOID SetTime (const EFI_TIME &Time);

  /** @return the wall-clock time that GetTime reports now. **/
  EFI_TIME Now () const;

  /** Lets Microseconds pass, as a Stall would (not counted as a Stall). **/
  VOID Advance (UINT64 Microseconds);

  /** @return the microseconds that have passed since the platform was built. **/
  UINT64
  ElapsedMicroseconds () const
  {
    return mElapsedMicroseconds;
  }

  /** @return the microseconds that Stall calls have waited in total. **/
  UINT64
  StalledMicroseconds () const
  {
    return mStalledMicroseconds;
  }

  //
  // Used by the platform.
  //

  VOID Publish (EFI_BOOT_SERVICES &BootServices, EFI_RUNTIME_SERVICES &RuntimeServices);

private:
  static EFI_STATUS EFIAPI GetTimeService (OUT EFI_TIME *Time, OUT EFI_TIME_CAPABILITIES *Capabilities);
  static EFI_STATUS EFIAPI StallService (IN UINTN Microseconds);
  static EFI_STATUS EFIAPI GetNextMonotonicCountService (OUT UINT64 *Count);

  INT64 mSetSeconds = 0; ///< SetTime's time, in seconds since 1970-01-01
  UINT32 mSetNanoseconds = 0;
  INT16 mTimeZone = EFI_UNSPECIFIED_TIMEZONE;
  UINT8 mDaylight = 0;
  UINT64 mElapsedAtSet = 0; ///< ElapsedMicroseconds when the time was set
  UINT64 mElapsedMicroseconds = 0;
  UINT64 mStalledMicroseconds = 0;
  UINT64 mMonotonicCount = 0;
};

#endif
