/** @file
  Checks of the fuzz targets: a broken rule stops the run with a message, so
  that libFuzzer keeps the input that broke it.
**/
#ifndef FUZZ_CHECKS_H_
#define FUZZ_CHECKS_H_

#include <cstdio>
#include <cstdlib>

#include "HostPlatform.h"

/** Stops the run when Condition is false. **/
inline void
FuzzCheck (bool Condition, const char *What)
{
  if (!Condition) {
    std::fprintf (stderr, "fuzz check failed: %s\n", What);
    std::abort ();
  }
}

/** The end of every input: no pool buffer left, no open file, no platform fault. **/
inline void
FuzzCheckClean (HostPlatform &Platform)
{
  for (const std::string &Error : Platform.Errors ()) {
    std::fprintf (stderr, "platform: %s\n", Error.c_str ());
  }

  FuzzCheck (Platform.Errors ().empty (), "the platform recorded a fault");
  FuzzCheck (Platform.Pool ().LiveCount () == 0, "a pool buffer was left");
  FuzzCheck (Platform.Volumes ().OpenHandles () == 0, "a file handle was left open");
}

#endif
