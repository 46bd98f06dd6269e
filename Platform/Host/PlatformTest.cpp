/** @file
  The fixture's checks at the end of every test.
**/
#include "PlatformTest.h"

void
PlatformTest::SetUp ()
{
  mPlatform = std::make_unique<HostPlatform> (Options ());
}

void
PlatformTest::TearDown ()
{
  for (const std::string &Error : mPlatform->Errors ()) {
    ADD_FAILURE () << "platform: " << Error;
  }

  for (const HostPoolBuffer &Buffer : mPlatform->Pool ().LiveBuffers ()) {
    if (mKept.count (Buffer.Number) == 0) {
      ADD_FAILURE () << "pool buffer of allocation " << Buffer.Number << " (" << Buffer.Size << " bytes, memory type "
                     << Buffer.Type << ") was not freed";
    }
  }

  mPlatform.reset ();
}

VOID
PlatformTest::KeepPoolBuffer (const VOID *Buffer)
{
  const HostPoolBuffer *Found = mPlatform->Pool ().Find (Buffer);

  if (Found == nullptr) {
    ADD_FAILURE () << "KeepPoolBuffer: " << Buffer << " is not a live pool buffer";
    return;
  }

  mKept.insert (Found->Number);
}
