/** @file
  GUIDs and notification recorders shared by the tests of the host platform.
**/
#ifndef HOST_PLATFORM_SELF_TEST_HELPERS_H_
#define HOST_PLATFORM_SELF_TEST_HELPERS_H_

#include <vector>

#include <Library/UefiBootServicesTableLib.h>
#include <Uefi.h>

#include "PlatformTest.h"

inline EFI_GUID gTestProtocolA = {0x6b1c2d3e, 0x1111, 0x4a4a, {0x81, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07}};
inline EFI_GUID gTestProtocolB = {0x6b1c2d3e, 0x2222, 0x4b4b, {0x82, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07}};
inline EFI_GUID gTestGroup1 = {0x7c2d3e4f, 0x3333, 0x4c4c, {0x83, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07}};
inline EFI_GUID gTestGroup2 = {0x7c2d3e4f, 0x4444, 0x4d4d, {0x84, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07}};

///
/// What a notification function saw: its context and the TPL it ran at.
///
struct NOTIFY_RECORD {
  VOID *Context;
  EFI_TPL Tpl;
};

inline std::vector<NOTIFY_RECORD> gNotifyLog;

/** @return the current TPL, found the way firmware code finds it. **/
inline EFI_TPL
CurrentTplThroughServices ()
{
  EFI_TPL Tpl = gBS->RaiseTPL (TPL_HIGH_LEVEL);
  gBS->RestoreTPL (Tpl);
  return Tpl;
}

/** A notification function that appends its context and TPL to gNotifyLog. **/
inline VOID EFIAPI
RecordNotify (IN EFI_EVENT Event, IN VOID *Context)
{
  gNotifyLog.push_back (NOTIFY_RECORD{Context, CurrentTplThroughServices ()});
}

///
/// The fixture of the platform's own tests: a fresh platform and an empty log.
///
class HostPlatformTest : public PlatformTest {
protected:
  void
  SetUp () override
  {
    PlatformTest::SetUp ();
    gNotifyLog.clear ();
  }
};

#endif
