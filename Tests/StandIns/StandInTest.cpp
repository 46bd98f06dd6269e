/** @file
  The stand-in test fixture.
**/
#include "StandInTest.h"

#include <array>

#include <Library/UefiBootServicesTableLib.h>

namespace {

std::array<std::function<UINTN (UI_EVENT *)>, TestHandlerCount> mBehaviours;
std::array<std::vector<UI_EVENT>, TestHandlerCount> mReceived;

UINTN
Handle (TestHandler Which, UI_EVENT *Event)
{
  mReceived[Which].push_back (*Event);
  return mBehaviours[Which] ? mBehaviours[Which](Event) : UI_EVENT_HANDLED;
}

UINTN EFIAPI
HandleA (IN OUT UI_EVENT *Event)
{
  return Handle (HandlerA, Event);
}

UINTN EFIAPI
HandleB (IN OUT UI_EVENT *Event)
{
  return Handle (HandlerB, Event);
}

UINTN EFIAPI
HandleC (IN OUT UI_EVENT *Event)
{
  return Handle (HandlerC, Event);
}

} // namespace

void
StandInTest::SetUp ()
{
  PlatformTest::SetUp ();
  for (UINTN Index = 0; Index < TestHandlerCount; Index++) {
    mBehaviours[Index] = nullptr;
    mReceived[Index].clear ();
  }

  ASSERT_EQ (InstallPageEngineStandIn (&mEngineHandle), EFI_SUCCESS);
  ASSERT_EQ (InstallUiFrameworkStandIn (&mFrameworkHandle), EFI_SUCCESS);
  ASSERT_EQ (gBS->LocateProtocol (&gPageEngineProtocolGuid, nullptr, (VOID **)&mEngine), EFI_SUCCESS);
  ASSERT_EQ (gBS->LocateProtocol (&gUiFrameworkProtocolGuid, nullptr, (VOID **)&mUi), EFI_SUCCESS);
  StandInSetCallObserver (RecordCall, this);
  StandInSetEventSource (NextEvent, this);
}

void
StandInTest::TearDown ()
{
  StandInSetCallObserver (nullptr, nullptr);
  StandInSetEventSource (nullptr, nullptr);
  StandInSetSessionRequestStatus (EFI_SUCCESS);
  for (UINTN Operation = 0; Operation < StandInOpCount; Operation++) {
    StandInFailOperation ((STAND_IN_OPERATION)Operation, 0, EFI_SUCCESS);
  }

  if (mFrameworkHandle != nullptr) {
    EXPECT_EQ (UninstallUiFrameworkStandIn (mFrameworkHandle), EFI_SUCCESS);
  }

  if (mEngineHandle != nullptr) {
    EXPECT_EQ (UninstallPageEngineStandIn (mEngineHandle), EFI_SUCCESS);
  }

  PlatformTest::TearDown ();
}

UI_EVENT_HANDLER
StandInTest::HandlerFunction (TestHandler Which)
{
  static const UI_EVENT_HANDLER Functions[TestHandlerCount] = {HandleA, HandleB, HandleC};

  return Functions[Which];
}

void
StandInTest::OnEvent (TestHandler Which, std::function<UINTN (UI_EVENT *)> Behaviour)
{
  mBehaviours[Which] = std::move (Behaviour);
}

const std::vector<UI_EVENT> &
StandInTest::Received (TestHandler Which)
{
  return mReceived[Which];
}

void
StandInTest::Script (UINTN Control, UINTN EventCode, UINTN Data, std::function<void ()> Before)
{
  mScript.push_back ({UI_EVENT{0, Control, EventCode, Data}, std::move (Before)});
}

std::vector<RecordedCall>
StandInTest::CallsOf (STAND_IN_OPERATION Operation) const
{
  std::vector<RecordedCall> Found;

  for (const RecordedCall &Call : mCalls) {
    if (Call.Operation == Operation) {
      Found.push_back (Call);
    }
  }

  return Found;
}

STAND_IN_FRAMEWORK_STATE
StandInTest::State ()
{
  STAND_IN_FRAMEWORK_STATE Current{};

  StandInGetFrameworkState (&Current);
  return Current;
}

UINTN
StandInTest::NewPage (UINT16 ThemeId)
{
  UINTN Page = 0;

  EXPECT_EQ (mEngine->CreatePage (&Page, UI_PAGE_ID, 0, 0, 0, mHii, ThemeId), EFI_SUCCESS);
  return Page;
}

UINTN
StandInTest::NewImageControl (UINTN Page, UI_EVENT_HANDLER Handler)
{
  UINTN Control = 0;

  EXPECT_EQ (mEngine->CreateImageControl (Page, UI_PAGE_CONTAINER, mHii, 2, 0, 0, 0, Handler, &Control), EFI_SUCCESS);
  return Control;
}

UINTN
StandInTest::NewTextControl (UINTN Page, EFI_STRING_ID StringId)
{
  UINTN Control = 0;

  EXPECT_EQ (mEngine->CreateTextControl (Page, UI_PAGE_CONTAINER, mHii, StringId, 0, &Control), EFI_SUCCESS);
  return Control;
}

UINTN
StandInTest::NewProgressControl (UINTN Page, UI_EVENT_HANDLER Handler)
{
  UINTN Control = 0;

  EXPECT_EQ (mEngine->CreateProgressControl (Page, UI_PAGE_CONTAINER, mHii, 3, 0, 0, 100, 0, Handler, &Control),
             EFI_SUCCESS);
  return Control;
}

UINTN
StandInTest::NewPromptPage (PROMPT_INTERFACE **Prompt)
{
  UINTN Page = 0;
  PROMPT_INTERFACE *Interface = nullptr;

  EXPECT_EQ (mEngine->CreatePromptPage (0, &Page, &Interface), EFI_SUCCESS);
  EXPECT_NE (Interface, nullptr);
  if (Prompt != nullptr) {
    *Prompt = Interface;
  }

  return Page;
}

VOID EFIAPI
StandInTest::RecordCall (IN VOID *Context,
                         IN STAND_IN_OPERATION Operation,
                         IN CONST UINTN *Arguments,
                         IN UINTN ArgumentCount)
{
  StandInTest *Test = (StandInTest *)Context;

  Test->mCalls.push_back ({Operation, std::vector<UINTN> (Arguments, Arguments + ArgumentCount)});
}

BOOLEAN EFIAPI
StandInTest::NextEvent (IN VOID *Context, OUT UI_EVENT *Event)
{
  StandInTest *Test = (StandInTest *)Context;

  if (Test->mScript.empty ()) {
    return FALSE;
  }

  ScriptedEvent Next = std::move (Test->mScript.front ());
  Test->mScript.pop_front ();
  Test->mScriptTaken++;
  if (Next.Before) {
    Next.Before ();
  }

  *Event = Next.Event;
  return TRUE;
}

std::vector<CHAR16>
Wide (const std::string &Text)
{
  std::vector<CHAR16> Result (Text.begin (), Text.end ());

  Result.push_back (0);
  return Result;
}

std::string
Narrow (const CHAR16 *Text)
{
  std::string Result;

  if (Text == nullptr) {
    return "(null)";
  }

  while (*Text != 0) {
    Result.push_back ((char)*Text++);
  }

  return Result;
}
