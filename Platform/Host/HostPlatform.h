/** @file
  The host platform: a small simulated UEFI firmware that runs firmware code
  in host tests.

  A HostPlatform builds the system table, boot services and runtime services
  (with valid headers and CRCs), a console, and sets gST, gBS and gRT; its
  destruction clears them and gImageHandle, and releases every pool buffer.
  Only one exists at a time (the EFIAPI services find it through Current()).

  What the code under test does is recorded for tests: pool buffers, calls per
  service, variable writes, key registrations, console output, resets. Faults
  that the platform sees (a call of a service it does not simulate, a bad free,
  a call above the TPL that UEFI allows) are kept in Errors(); PlatformTest
  fails a test that leaves any.
**/
#ifndef HOST_PLATFORM_H_
#define HOST_PLATFORM_H_

#include <string>
#include <vector>

#include <Uefi.h>

#include "HostCalls.h"
#include "HostClock.h"
#include "HostConfigTables.h"
#include "HostConsole.h"
#include "HostEvents.h"
#include "HostHandles.h"
#include "HostImages.h"
#include "HostPool.h"
#include "HostReset.h"
#include "HostVariables.h"
#include "HostVolumes.h"

///
/// How a platform is built.
///
struct HostPlatformOptions {
  bool ConInEx = true; ///< install EFI_SIMPLE_TEXT_INPUT_EX_PROTOCOL on the ConIn handle
};

class HostPlatform {
public:
  explicit HostPlatform (const HostPlatformOptions &Options = HostPlatformOptions ());
  ~HostPlatform ();
  HostPlatform (const HostPlatform &) = delete;
  HostPlatform &operator= (const HostPlatform &) = delete;

  /** @return the platform that exists now; aborts the test program when there is none. **/
  static HostPlatform &Current ();

  EFI_SYSTEM_TABLE *
  SystemTable ()
  {
    return &mSystemTable;
  }

  EFI_BOOT_SERVICES *
  BootServices ()
  {
    return &mBootServices;
  }

  EFI_RUNTIME_SERVICES *
  RuntimeServices ()
  {
    return &mRuntimeServices;
  }

  HostCalls &
  Calls ()
  {
    return mCalls;
  }

  HostPool &
  Pool ()
  {
    return mPool;
  }

  HostEvents &
  Events ()
  {
    return mEvents;
  }

  HostHandles &
  Handles ()
  {
    return mHandles;
  }

  HostConfigTables &
  ConfigTables ()
  {
    return mConfigTables;
  }

  HostImages &
  Images ()
  {
    return mImages;
  }

  HostVariables &
  Variables ()
  {
    return mVariables;
  }

  HostClock &
  Clock ()
  {
    return mClock;
  }

  HostReset &
  Reset ()
  {
    return mReset;
  }

  HostConsole &
  Console ()
  {
    return mConsole;
  }

  HostVolumes &
  Volumes ()
  {
    return mVolumes;
  }

  /** @return the faults recorded so far, oldest first. **/
  const std::vector<std::string> &
  Errors () const
  {
    return mErrors;
  }

  /** @return the faults recorded so far, and forgets them (for tests that expect one). **/
  std::vector<std::string> TakeErrors ();

  /** Records a fault of the code under test. **/
  VOID RecordError (const std::string &Message);

  /** Recomputes the system table's CRC after a change of its fields. **/
  VOID UpdateSystemTableCrc ();

private:
  static HostPlatform *mCurrent;

  EFI_SYSTEM_TABLE mSystemTable = {};
  EFI_BOOT_SERVICES mBootServices = {};
  EFI_RUNTIME_SERVICES mRuntimeServices = {};
  std::vector<std::string> mErrors;

  // Declared in the order they may depend on each other.
  HostCalls mCalls;
  HostPool mPool;
  HostEvents mEvents;
  HostHandles mHandles;
  HostConfigTables mConfigTables;
  HostImages mImages;
  HostVariables mVariables;
  HostClock mClock;
  HostReset mReset;
  HostConsole mConsole;
  HostVolumes mVolumes;
};

#endif
