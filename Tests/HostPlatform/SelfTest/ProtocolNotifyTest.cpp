/** @file
  Tests of RegisterProtocolNotify: signalling on install, and the handles that
  a registration returns one by one.
**/
#include "SelfTestHelpers.h"

namespace {

struct WATCH {
  VOID *Registration;
  std::vector<EFI_HANDLE> Seen; ///< every handle the notification found
  std::vector<EFI_TPL> Tpls;
};

//
// The usual notification: take every new handle of the registration.
//
VOID EFIAPI
TakeNewHandles (IN EFI_EVENT Event, IN VOID *Context)
{
  WATCH *Watch = static_cast<WATCH *> (Context);

  Watch->Tpls.push_back (CurrentTplThroughServices ());
  for (;;) {
    EFI_HANDLE Handle = nullptr;
    UINTN Size = sizeof (Handle);
    if (EFI_ERROR (gBS->LocateHandle (ByRegisterNotify, nullptr, Watch->Registration, &Size, &Handle))) {
      return;
    }

    Watch->Seen.push_back (Handle);
  }
}

EFI_EVENT
Register (EFI_GUID &Guid, WATCH &Watch)
{
  EFI_EVENT Event = nullptr;

  EXPECT_EQ (gBS->CreateEvent (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, TakeNewHandles, &Watch, &Event), EFI_SUCCESS);
  EXPECT_EQ (gBS->RegisterProtocolNotify (&Guid, Event, &Watch.Registration), EFI_SUCCESS);
  return Event;
}

} // namespace

TEST_F (HostPlatformTest, InstallFromApplicationTplRunsTheNotificationBeforeItReturns)
{
  WATCH Watch;
  UINT32 Interface = 0;
  EFI_HANDLE Handle = nullptr;

  Register (gTestProtocolA, Watch);
  ASSERT_EQ (gBS->InstallProtocolInterface (&Handle, &gTestProtocolA, EFI_NATIVE_INTERFACE, &Interface), EFI_SUCCESS);

  ASSERT_EQ (Watch.Seen.size (), 1U);
  EXPECT_EQ (Watch.Seen[0], Handle);
  EXPECT_EQ (Watch.Tpls, std::vector<EFI_TPL> ({TPL_CALLBACK}));
  EXPECT_EQ (CurrentTplThroughServices (), (EFI_TPL)TPL_APPLICATION);
}

TEST_F (HostPlatformTest, InstallsOnSeveralHandlesAreReturnedOneByOneInOrder)
{
  WATCH Watch;
  UINT32 Interfaces[3] = {};
  EFI_HANDLE Handles[3] = {};

  Register (gTestProtocolA, Watch);

  //
  // Above TPL_CALLBACK the event is signalled three times but notified once,
  // when the TPL drops; that one notification finds all three handles.
  //
  EFI_TPL OldTpl = gBS->RaiseTPL (TPL_NOTIFY);
  for (UINTN Index = 0; Index < 3; Index++) {
    ASSERT_EQ (
      gBS->InstallProtocolInterface (&Handles[Index], &gTestProtocolA, EFI_NATIVE_INTERFACE, &Interfaces[Index]),
      EFI_SUCCESS);
  }

  EXPECT_TRUE (Watch.Seen.empty ());
  gBS->RestoreTPL (OldTpl);

  EXPECT_EQ (Watch.Tpls.size (), 1U);
  EXPECT_EQ (Watch.Seen, std::vector<EFI_HANDLE> (Handles, Handles + 3));
}

TEST_F (HostPlatformTest, ARegistrationStartsWithTheProtocolsInstalledBeforeIt)
{
  UINT32 Early = 0;
  UINT32 Late = 0;
  EFI_EVENT Event = nullptr;
  VOID *Registration = nullptr;
  VOID *Found = nullptr;

  Platform ().Handles ().InstallProtocol (gTestProtocolA, &Early);
  ASSERT_EQ (gBS->CreateEvent (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, RecordNotify, nullptr, &Event), EFI_SUCCESS);
  ASSERT_EQ (gBS->RegisterProtocolNotify (&gTestProtocolA, Event, &Registration), EFI_SUCCESS);
  EXPECT_TRUE (gNotifyLog.empty ());

  ASSERT_EQ (gBS->LocateProtocol (&gTestProtocolA, Registration, &Found), EFI_SUCCESS);
  EXPECT_EQ (Found, &Early);
  EXPECT_EQ (gBS->LocateProtocol (&gTestProtocolA, Registration, &Found), EFI_NOT_FOUND);
  EXPECT_EQ (Found, nullptr);

  Platform ().Handles ().InstallProtocol (gTestProtocolA, &Late);
  EXPECT_EQ (gNotifyLog.size (), 1U);
  ASSERT_EQ (gBS->LocateProtocol (&gTestProtocolA, Registration, &Found), EFI_SUCCESS);
  EXPECT_EQ (Found, &Late);
  EXPECT_EQ (gBS->LocateProtocol (&gTestProtocolB, Registration, &Found), EFI_INVALID_PARAMETER);
}

TEST_F (HostPlatformTest, ATooSmallBufferDoesNotAdvanceTheRegistration)
{
  WATCH Unused;
  EFI_EVENT Event = nullptr;
  VOID *Registration = nullptr;
  UINT32 Interface = 0;
  EFI_HANDLE Handle = nullptr;
  UINTN Size = 0;

  ASSERT_EQ (gBS->CreateEvent (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, RecordNotify, nullptr, &Event), EFI_SUCCESS);
  ASSERT_EQ (gBS->RegisterProtocolNotify (&gTestProtocolA, Event, &Registration), EFI_SUCCESS);
  EFI_HANDLE Installed = Platform ().Handles ().InstallProtocol (gTestProtocolA, &Interface);

  EXPECT_EQ (gBS->LocateHandle (ByRegisterNotify, nullptr, Registration, &Size, &Handle), EFI_BUFFER_TOO_SMALL);
  EXPECT_EQ (Size, sizeof (EFI_HANDLE));
  ASSERT_EQ (gBS->LocateHandle (ByRegisterNotify, nullptr, Registration, &Size, &Handle), EFI_SUCCESS);
  EXPECT_EQ (Handle, Installed);
  EXPECT_EQ (gBS->LocateHandle (ByRegisterNotify, nullptr, Registration, &Size, &Handle), EFI_NOT_FOUND);
  EXPECT_EQ (gBS->LocateHandle (ByRegisterNotify, nullptr, &Unused, &Size, &Handle), EFI_INVALID_PARAMETER);
}

TEST_F (HostPlatformTest, UninstalledHandlesAreSkippedAndReinstalledOnesReturnedAgain)
{
  WATCH Watch;
  UINT32 First = 0;
  UINT32 Second = 0;
  UINT32 Replacement = 0;

  EFI_TPL OldTpl = gBS->RaiseTPL (TPL_NOTIFY);
  Register (gTestProtocolA, Watch);
  EFI_HANDLE Kept = Platform ().Handles ().InstallProtocol (gTestProtocolA, &First);
  EFI_HANDLE Removed = Platform ().Handles ().InstallProtocol (gTestProtocolA, &Second);
  ASSERT_EQ (gBS->UninstallProtocolInterface (Removed, &gTestProtocolA, &Second), EFI_SUCCESS);
  gBS->RestoreTPL (OldTpl);
  EXPECT_EQ (Watch.Seen, std::vector<EFI_HANDLE> ({Kept}));

  ASSERT_EQ (gBS->ReinstallProtocolInterface (Kept, &gTestProtocolA, &First, &Replacement), EFI_SUCCESS);
  EXPECT_EQ (Watch.Seen, std::vector<EFI_HANDLE> ({Kept, Kept}));
  EXPECT_EQ (Platform ().Handles ().Interface (Kept, gTestProtocolA), &Replacement);
  EXPECT_EQ (gBS->ReinstallProtocolInterface (Kept, &gTestProtocolA, &First, &Replacement), EFI_NOT_FOUND);
}

TEST_F (HostPlatformTest, ClosingTheEventEndsItsRegistration)
{
  UINT32 Interface = 0;
  EFI_EVENT Event = nullptr;
  VOID *Registration = nullptr;
  VOID *Found = nullptr;

  ASSERT_EQ (gBS->CreateEvent (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, RecordNotify, nullptr, &Event), EFI_SUCCESS);
  ASSERT_EQ (gBS->RegisterProtocolNotify (&gTestProtocolA, Event, &Registration), EFI_SUCCESS);
  EXPECT_EQ (Platform ().Handles ().RegistrationCount (gTestProtocolA), 1U);

  ASSERT_EQ (gBS->CloseEvent (Event), EFI_SUCCESS);
  EXPECT_EQ (Platform ().Handles ().RegistrationCount (gTestProtocolA), 0U);
  Platform ().Handles ().InstallProtocol (gTestProtocolA, &Interface);
  EXPECT_TRUE (gNotifyLog.empty ());
  EXPECT_EQ (gBS->LocateProtocol (&gTestProtocolA, Registration, &Found), EFI_INVALID_PARAMETER);
  EXPECT_EQ (gBS->RegisterProtocolNotify (&gTestProtocolA, Event, &Registration), EFI_INVALID_PARAMETER);
}
