/** @file
  Tests of events and task priority levels.
**/
extern "C" {
#include <Library/BaseMemoryLib.h>
}
#include <Library/CompileTimeLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>

#include "SelfTestHelpers.h"

namespace {

EFI_EVENT
MakeEvent (EFI_TPL Tpl, VOID *Context, const EFI_GUID *Group = nullptr)
{
  EFI_EVENT Event = nullptr;

  EXPECT_EQ (gBS->CreateEventEx (EVT_NOTIFY_SIGNAL, Tpl, RecordNotify, Context, Group, &Event), EFI_SUCCESS);
  return Event;
}

} // namespace

TEST_F (HostPlatformTest, CallbackSignalledFromApplicationRunsBeforeSignalEventReturns)
{
  int Context = 0;
  EFI_EVENT Event = MakeEvent (TPL_CALLBACK, &Context);

  ASSERT_EQ (gBS->SignalEvent (Event), EFI_SUCCESS);

  ASSERT_EQ (gNotifyLog.size (), 1U);
  EXPECT_EQ (gNotifyLog[0].Context, &Context);
  EXPECT_EQ (gNotifyLog[0].Tpl, (EFI_TPL)TPL_CALLBACK);
  EXPECT_EQ (Platform ().Events ().CurrentTpl (), (EFI_TPL)TPL_APPLICATION);
}

TEST_F (HostPlatformTest, NotificationsWaitForTheTplToDropAndRunHighestFirst)
{
  int First = 0;
  int Second = 0;
  int Urgent = 0;
  int Closed = 0;
  EFI_EVENT FirstEvent = MakeEvent (TPL_CALLBACK, &First);
  EFI_EVENT SecondEvent = MakeEvent (TPL_CALLBACK, &Second);
  EFI_EVENT UrgentEvent = MakeEvent (TPL_NOTIFY, &Urgent);
  EFI_EVENT ClosedEvent = MakeEvent (TPL_CALLBACK, &Closed);

  EFI_TPL OldTpl = gBS->RaiseTPL (TPL_NOTIFY);
  gBS->SignalEvent (FirstEvent);
  gBS->SignalEvent (SecondEvent);
  gBS->SignalEvent (FirstEvent); // signalled already: still one notification
  gBS->SignalEvent (ClosedEvent);
  gBS->SignalEvent (UrgentEvent);
  ASSERT_EQ (gBS->CloseEvent (ClosedEvent), EFI_SUCCESS);
  EXPECT_TRUE (gNotifyLog.empty ());
  gBS->RestoreTPL (OldTpl);

  ASSERT_EQ (gNotifyLog.size (), 3U);
  EXPECT_EQ (gNotifyLog[0].Context, &Urgent);
  EXPECT_EQ (gNotifyLog[0].Tpl, (EFI_TPL)TPL_NOTIFY);
  EXPECT_EQ (gNotifyLog[1].Context, &First);
  EXPECT_EQ (gNotifyLog[2].Context, &Second);
  EXPECT_EQ (gBS->SignalEvent (ClosedEvent), EFI_INVALID_PARAMETER);
}

TEST_F (HostPlatformTest, SignallingOneMemberOfAGroupSignalsEveryMember)
{
  int MemberA = 0;
  int MemberB = 0;
  int Outsider = 0;
  EFI_EVENT EventA = MakeEvent (TPL_CALLBACK, &MemberA, &gTestGroup1);
  MakeEvent (TPL_NOTIFY, &MemberB, &gTestGroup1);
  MakeEvent (TPL_CALLBACK, &Outsider, &gTestGroup2);

  ASSERT_EQ (gBS->SignalEvent (EventA), EFI_SUCCESS);

  ASSERT_EQ (gNotifyLog.size (), 2U);
  EXPECT_EQ (gNotifyLog[0].Context, &MemberB);
  EXPECT_EQ (gNotifyLog[1].Context, &MemberA);
  ASSERT_EQ (Platform ().Events ().SignalledGroups ().size (), 1U);
  EXPECT_TRUE (CompareGuid (&Platform ().Events ().SignalledGroups ()[0], &gTestGroup1));

  Platform ().Events ().SignalGroup (gTestGroup2);
  ASSERT_EQ (gNotifyLog.size (), 3U);
  EXPECT_EQ (gNotifyLog[2].Context, &Outsider);
}

TEST_F (HostPlatformTest, CreateEventRejectsWhatUefiRejects)
{
  EFI_EVENT Event = nullptr;

  EXPECT_EQ (gBS->CreateEvent (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, nullptr, nullptr, &Event), EFI_INVALID_PARAMETER);
  EXPECT_EQ (gBS->CreateEvent (EVT_NOTIFY_SIGNAL, TPL_APPLICATION, RecordNotify, nullptr, &Event),
             EFI_INVALID_PARAMETER);
  EXPECT_EQ (gBS->CreateEvent (EVT_NOTIFY_SIGNAL | EVT_NOTIFY_WAIT, TPL_CALLBACK, RecordNotify, nullptr, &Event),
             EFI_INVALID_PARAMETER);
  EXPECT_EQ (gBS->CreateEvent (0x00001000, TPL_CALLBACK, nullptr, nullptr, &Event), EFI_INVALID_PARAMETER);
  EXPECT_EQ (gBS->CreateEvent (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, RecordNotify, nullptr, nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ (
    gBS->CreateEventEx (EVT_SIGNAL_EXIT_BOOT_SERVICES, TPL_CALLBACK, RecordNotify, nullptr, &gTestGroup1, &Event),
    EFI_INVALID_PARAMETER);
  EXPECT_TRUE (Platform ().Events ().OpenEvents ().empty ());

  Platform ().Calls ().FailNth (HostService::CreateEvent, EFI_OUT_OF_RESOURCES);
  EXPECT_EQ (gBS->CreateEvent (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, RecordNotify, nullptr, &Event), EFI_OUT_OF_RESOURCES);
  EXPECT_EQ (gBS->CreateEvent (EVT_NOTIFY_SIGNAL, TPL_CALLBACK, RecordNotify, nullptr, &Event), EFI_SUCCESS);
  EXPECT_EQ (Platform ().Events ().OpenEvents ().size (), 1U);
}

TEST_F (HostPlatformTest, TplMisuseIsRecorded)
{
  static constexpr auto mName = CompileTime::MakeWideString (u"Missing");
  UINTN Size = 0;

  EFI_TPL OldTpl = gBS->RaiseTPL (TPL_NOTIFY);
  EXPECT_EQ (gRT->GetVariable (const_cast<CHAR16 *> (mName.Text), &gTestGroup1, nullptr, &Size, nullptr),
             EFI_NOT_FOUND);
  gBS->RaiseTPL (TPL_CALLBACK);
  gBS->RestoreTPL (OldTpl);

  std::vector<std::string> Errors = Platform ().TakeErrors ();
  ASSERT_EQ (Errors.size (), 2U);
  EXPECT_NE (Errors[0].find ("GetVariable called at TPL 16"), std::string::npos);
  EXPECT_NE (Errors[1].find ("RaiseTPL (8) below the current TPL 16"), std::string::npos);
}
