/** @file
  GoogleTest fixture of every host test: a fresh HostPlatform per test.

  TearDown fails the test when the platform recorded a fault (an unexpected
  call, a bad free, a TPL violation) or when a pool buffer is still live that
  the test did not declare kept with KeepPoolBuffer, e.g. a protocol record
  that the code under test keeps installed.
**/
#ifndef PLATFORM_TEST_H_
#define PLATFORM_TEST_H_

#include <memory>
#include <set>

#include <gtest/gtest.h>

#include "HostPlatform.h"

class PlatformTest : public ::testing::Test {
protected:
  void SetUp () override;
  void TearDown () override;

  /** The options SetUp builds the platform with; a derived fixture may override them. **/
  virtual HostPlatformOptions
  Options () const
  {
    return HostPlatformOptions ();
  }

  HostPlatform &
  Platform ()
  {
    return *mPlatform;
  }

  /** Declares a live pool buffer as kept by design: TearDown does not count it as a leak. **/
  VOID KeepPoolBuffer (const VOID *Buffer);

private:
  std::unique_ptr<HostPlatform> mPlatform;
  std::set<UINT64> mKept; ///< allocation numbers, so that a reused address is not mistaken for a kept buffer
};

#endif
