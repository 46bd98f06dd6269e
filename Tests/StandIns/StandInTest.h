/** @file
  Fixture of the stand-in tests: a fresh host platform with both stand-ins
  installed, found through LocateProtocol as the driver finds them; every call
  seen by the observer is recorded; events come from a script of the test.

  TearDown uninstalls both stand-ins before the platform's own checks, so
  every test also checks that the stand-ins leave no pool buffer behind.
**/
#ifndef STAND_IN_TEST_H_
#define STAND_IN_TEST_H_

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include <Protocol/PageEngine.h>
#include <Protocol/UiFramework.h>
#include <StandIns/PageEngineStandIn.h>
#include <StandIns/StandInCalls.h>
#include <StandIns/UiFrameworkStandIn.h>

#include "PlatformTest.h"

/** @return the pointer that an attribute value (or a made-up handle value) stands for. **/
template <typename TYPE>
TYPE *
AsPointer (UINTN Value)
{
  return (TYPE *)Value; // NOLINT(performance-no-int-to-ptr)
}

///
/// One call as the observer saw it.
///
struct RecordedCall {
  STAND_IN_OPERATION Operation;
  std::vector<UINTN> Arguments;
};

///
/// One scripted event; Before runs when the loop takes it (e.g. to type a password).
///
struct ScriptedEvent {
  UI_EVENT Event;
  std::function<void ()> Before;
};

///
/// Three event handlers whose behaviour each test sets.
///
enum TestHandler { HandlerA, HandlerB, HandlerC, TestHandlerCount };

class StandInTest : public PlatformTest {
protected:
  void SetUp () override;
  void TearDown () override;

  /** @return the EFIAPI function behind Which; its behaviour is Handle (Which). **/
  static UI_EVENT_HANDLER HandlerFunction (TestHandler Which);

  /** Sets what a handler does; by default it records the event and returns UI_EVENT_HANDLED. **/
  static void OnEvent (TestHandler Which, std::function<UINTN (UI_EVENT *)> Behaviour);

  /** @return the events each handler received, in order (copies as they arrived). **/
  static const std::vector<UI_EVENT> &Received (TestHandler Which);

  /** Appends an event to the script. **/
  void Script (UINTN Control, UINTN EventCode, UINTN Data = 0, std::function<void ()> Before = nullptr);

  /** @return the calls of one operation, oldest first. **/
  std::vector<RecordedCall> CallsOf (STAND_IN_OPERATION Operation) const;

  /** @return the framework's state now. **/
  static STAND_IN_FRAMEWORK_STATE State ();

  //
  // Shortcuts over the protocols; each expects success.
  //
  UINTN NewPage (UINT16 ThemeId = 2);
  UINTN NewImageControl (UINTN Page, UI_EVENT_HANDLER Handler = nullptr);
  UINTN NewTextControl (UINTN Page, EFI_STRING_ID StringId = 0);
  UINTN NewProgressControl (UINTN Page, UI_EVENT_HANDLER Handler = nullptr);
  UINTN NewPromptPage (PROMPT_INTERFACE **Prompt = nullptr);

  EFI_HANDLE mEngineHandle = nullptr;
  EFI_HANDLE mFrameworkHandle = nullptr;
  PAGE_ENGINE_PROTOCOL *mEngine = nullptr;
  UI_FRAMEWORK_PROTOCOL *mUi = nullptr;
  std::vector<RecordedCall> mCalls;
  std::deque<ScriptedEvent> mScript;
  UINTN mScriptTaken = 0;

  ///
  /// An HII handle value for pages; the stand-ins only pass it on.
  ///
  EFI_HII_HANDLE mHii = AsPointer<VOID> (0x4811);

private:
  static VOID EFIAPI RecordCall (IN VOID *Context,
                                 IN STAND_IN_OPERATION Operation,
                                 IN CONST UINTN *Arguments,
                                 IN UINTN ArgumentCount);
  static BOOLEAN EFIAPI NextEvent (IN VOID *Context, OUT UI_EVENT *Event);
};

/** @return a CHAR16 string of a narrow literal, terminated. **/
std::vector<CHAR16> Wide (const std::string &Text);

/** @return Text (null-terminated) as a narrow string, for messages; "(null)" for null. **/
std::string Narrow (const CHAR16 *Text);

#endif
