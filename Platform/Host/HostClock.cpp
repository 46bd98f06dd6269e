/** @file
  The simulated clock: GetTime, Stall and GetNextMonotonicCount.
**/
#include "HostClock.h"

#include <gtest/gtest.h>

#include "HostPlatform.h"

namespace {

constexpr INT64 mSecondsPerDay = 86400;

//
// Days since 1970-01-01 of a date of the proleptic Gregorian calendar, and back
// (the well-known era-based conversion).
//
INT64
DaysFromCivil (INT64 Year, UINT32 Month, UINT32 Day)
{
  Year -= (Month <= 2) ? 1 : 0;
  const INT64 Era = ((Year >= 0) ? Year : Year - 399) / 400;
  const INT64 YearOfEra = Year - Era * 400;
  const INT64 DayOfYear = (153 * (Month + ((Month > 2) ? -3 : 9)) + 2) / 5 + Day - 1;
  const INT64 DayOfEra = YearOfEra * 365 + YearOfEra / 4 - YearOfEra / 100 + DayOfYear;
  return Era * 146097 + DayOfEra - 719468;
}

VOID
CivilFromDays (INT64 Days, INT64 &Year, UINT32 &Month, UINT32 &Day)
{
  Days += 719468;
  const INT64 Era = ((Days >= 0) ? Days : Days - 146096) / 146097;
  const INT64 DayOfEra = Days - Era * 146097;
  const INT64 YearOfEra = (DayOfEra - DayOfEra / 1460 + DayOfEra / 36524 - DayOfEra / 146096) / 365;
  const INT64 DayOfYear = DayOfEra - (365 * YearOfEra + YearOfEra / 4 - YearOfEra / 100);
  const INT64 MonthIndex = (5 * DayOfYear + 2) / 153;
  Day = (UINT32)(DayOfYear - (153 * MonthIndex + 2) / 5 + 1);
  Month = (UINT32)((MonthIndex < 10) ? MonthIndex + 3 : MonthIndex - 9);
  Year = YearOfEra + Era * 400 + ((Month <= 2) ? 1 : 0);
}

bool
IsLeapYear (UINT32 Year)
{
  return ((Year % 4 == 0) && (Year % 100 != 0)) || (Year % 400 == 0);
}

bool
IsValidTime (const EFI_TIME &Time)
{
  static constexpr UINT8 mDaysInMonth[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

  if ((Time.Year < 1900) || (Time.Year > 9999) || (Time.Month < 1) || (Time.Month > 12) || (Time.Day < 1) ||
      (Time.Hour > 23) || (Time.Minute > 59) || (Time.Second > 59) || (Time.Nanosecond > 999999999)) {
    return false;
  }

  UINT32 Days = mDaysInMonth[Time.Month - 1] + (((Time.Month == 2) && IsLeapYear (Time.Year)) ? 1 : 0);
  if (Time.Day > Days) {
    return false;
  }

  return (Time.TimeZone == EFI_UNSPECIFIED_TIMEZONE) || ((Time.TimeZone >= -1440) && (Time.TimeZone <= 1440));
}

} // namespace

HostClock::HostClock ()
{
  mSetSeconds = DaysFromCivil (2025, 1, 1) * mSecondsPerDay;
}

VOID
HostClock::SetTime (const EFI_TIME &Time)
{
  if (!IsValidTime (Time)) {
    ADD_FAILURE () << "HostClock::SetTime: not a valid EFI_TIME";
    return;
  }

  mSetSeconds = DaysFromCivil (Time.Year, Time.Month, Time.Day) * mSecondsPerDay + Time.Hour * 3600 + Time.Minute * 60 +
                Time.Second;
  mSetNanoseconds = Time.Nanosecond;
  mTimeZone = Time.TimeZone;
  mDaylight = Time.Daylight;
  mElapsedAtSet = mElapsedMicroseconds;
}

EFI_TIME
HostClock::Now () const
{
  UINT64 Nanoseconds = mSetNanoseconds + (mElapsedMicroseconds - mElapsedAtSet) * 1000;
  INT64 Seconds = mSetSeconds + (INT64)(Nanoseconds / 1000000000);
  INT64 Days = Seconds / mSecondsPerDay;
  INT64 SecondOfDay = Seconds % mSecondsPerDay;
  INT64 Year = 0;
  UINT32 Month = 0;
  UINT32 Day = 0;

  if (SecondOfDay < 0) {
    SecondOfDay += mSecondsPerDay;
    Days--;
  }

  CivilFromDays (Days, Year, Month, Day);

  EFI_TIME Time = {};
  Time.Year = (UINT16)Year;
  Time.Month = (UINT8)Month;
  Time.Day = (UINT8)Day;
  Time.Hour = (UINT8)(SecondOfDay / 3600);
  Time.Minute = (UINT8)((SecondOfDay / 60) % 60);
  Time.Second = (UINT8)(SecondOfDay % 60);
  Time.Nanosecond = (UINT32)(Nanoseconds % 1000000000);
  Time.TimeZone = mTimeZone;
  Time.Daylight = mDaylight;
  return Time;
}

VOID
HostClock::Advance (UINT64 Microseconds)
{
  mElapsedMicroseconds += Microseconds;
}

EFI_STATUS EFIAPI
HostClock::GetTimeService (OUT EFI_TIME *Time, OUT EFI_TIME_CAPABILITIES *Capabilities)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::GetTime)) {
    return *Failure;
  }

  if (Time == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  *Time = Platform.Clock ().Now ();
  if (Capabilities != nullptr) {
    Capabilities->Resolution = 1;
    Capabilities->Accuracy = 50000000; // 50 ppm, in units of 1e-6 ppm
    Capabilities->SetsToZero = FALSE;
  }

  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostClock::StallService (IN UINTN Microseconds)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::Stall)) {
    return *Failure;
  }

  Platform.Clock ().mStalledMicroseconds += Microseconds;
  Platform.Clock ().Advance (Microseconds);
  return EFI_SUCCESS;
}

EFI_STATUS EFIAPI
HostClock::GetNextMonotonicCountService (OUT UINT64 *Count)
{
  HostPlatform &Platform = HostPlatform::Current ();

  if (auto Failure = Platform.Calls ().Enter (HostService::GetNextMonotonicCount)) {
    return *Failure;
  }

  if (Count == nullptr) {
    return EFI_INVALID_PARAMETER;
  }

  *Count = Platform.Clock ().mMonotonicCount++;
  return EFI_SUCCESS;
}

VOID
HostClock::Publish (EFI_BOOT_SERVICES &BootServices, EFI_RUNTIME_SERVICES &RuntimeServices)
{
  BootServices.Stall = StallService;
  BootServices.GetNextMonotonicCount = GetNextMonotonicCountService;
  RuntimeServices.GetTime = GetTimeService;
}
