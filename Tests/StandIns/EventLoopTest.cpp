/** @file
  The event loop: delivery to the right handler, nested loops, ends by
  ExitEventLoop and by the close code, a script that runs dry, and the depth
  limit.
**/
#include "StandInTest.h"

namespace {

using StandInEventLoopTest = StandInTest;

TEST_F (StandInEventLoopTest, EventGoesToControlHandlerElsePageHandler)
{
  UINTN Page = NewPage ();
  UINTN Image = NewImageControl (Page, HandlerFunction (HandlerA));
  UINTN Text = NewTextControl (Page);
  STAND_IN_DELIVERY Delivery{};

  ASSERT_EQ (mUi->Pages->SetEventHandler (HandlerFunction (HandlerB)), EFI_SUCCESS);
  Script (Image, UI_EVENT_KEY, UI_KEY_ENTER);
  Script (Text, UI_EVENT_CONTROL_ACTIVATED, 0);
  Script (0, UI_EVENT_KEY, 'x');

  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_ABORTED);
  ASSERT_EQ (Received (HandlerA).size (), 1U);
  EXPECT_EQ (Received (HandlerA)[0].Control, Image);
  EXPECT_EQ (Received (HandlerA)[0].Data, (UINTN)UI_KEY_ENTER);
  ASSERT_EQ (Received (HandlerB).size (), 2U);
  EXPECT_EQ (Received (HandlerB)[0].Control, Text);
  EXPECT_EQ (Received (HandlerB)[1].Control, 0U);

  ASSERT_TRUE (StandInGetDelivery (0, &Delivery));
  EXPECT_EQ (Delivery.Handler, HandlerFunction (HandlerA));
  EXPECT_EQ (Delivery.Event.EventCode, (UINTN)UI_EVENT_KEY);
  EXPECT_EQ (Delivery.LoopDepth, 1U);
  EXPECT_EQ (Delivery.Result, (UINTN)UI_EVENT_HANDLED);
  EXPECT_FALSE (StandInGetDelivery (3, &Delivery));
  EXPECT_EQ (State ().EventsDelivered, 3U);
}

TEST_F (StandInEventLoopTest, ActivePromptGetsItsShowHandlerWhenNoOther)
{
  PROMPT_INTERFACE *Prompt = nullptr;
  UINTN Page = NewPromptPage (&Prompt);
  std::vector<CHAR16> Text = Wide ("x");

  ASSERT_EQ (Prompt->ShowPrompt (Text.data (), Text.data (), Text.data (), 0, 32, HandlerFunction (HandlerC)),
             EFI_SUCCESS);
  Script (PROMPT_CONTROL_SUBMIT, UI_EVENT_CONTROL_ACTIVATED);
  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_ABORTED);
  EXPECT_EQ (State ().EventsUnrouted, 1U) << "no page is active: nobody gets the event";
  EXPECT_TRUE (Received (HandlerC).empty ());

  ASSERT_EQ (mUi->Pages->SetActivePage (Page), EFI_SUCCESS);
  Script (PROMPT_CONTROL_SUBMIT, UI_EVENT_CONTROL_ACTIVATED);
  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_ABORTED);
  ASSERT_EQ (Received (HandlerC).size (), 1U);
  EXPECT_EQ (Received (HandlerC)[0].Control, (UINTN)PROMPT_CONTROL_SUBMIT);

  ASSERT_EQ (mUi->Pages->SetEventHandler (HandlerFunction (HandlerA)), EFI_SUCCESS);
  Script (PROMPT_CONTROL_SUBMIT, UI_EVENT_CONTROL_ACTIVATED);
  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_ABORTED);
  EXPECT_EQ (Received (HandlerA).size (), 1U) << "a set page handler comes before the prompt's";
  EXPECT_EQ (Received (HandlerC).size (), 1U);
}

TEST_F (StandInEventLoopTest, ExitEventLoopEndsTheInnermostLoop)
{
  EFI_STATUS NestedStatus = EFI_NOT_STARTED;
  std::vector<UINTN> Order;

  ASSERT_EQ (mUi->Pages->SetEventHandler (HandlerFunction (HandlerA)), EFI_SUCCESS);
  //
  // As a prompt shown again from its own handler: end the outer loop, then run
  // a nested one; the nested loop ends at its own ExitEventLoop, the outer one
  // once the handler has returned.
  //
  OnEvent (HandlerA, [&] (UI_EVENT *Event) -> UINTN {
    Order.push_back (Event->Data);
    if (Event->Data == 1) {
      EXPECT_EQ (mUi->Pages->ExitEventLoop (), EFI_SUCCESS);
      NestedStatus = mUi->Pages->RunEventLoop ();
      Order.push_back (100);
    } else if (Event->Data == 3) {
      EXPECT_EQ (mUi->Pages->ExitEventLoop (), EFI_SUCCESS);
    }

    return UI_EVENT_HANDLED;
  });
  Script (0, UI_EVENT_KEY, 1);
  Script (0, UI_EVENT_KEY, 2);
  Script (0, UI_EVENT_KEY, 3);
  Script (0, UI_EVENT_KEY, 4);

  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  EXPECT_EQ (NestedStatus, EFI_SUCCESS);
  EXPECT_EQ (Order, (std::vector<UINTN>{1, 2, 3, 100}));
  EXPECT_EQ (mScript.size (), 1U) << "the outer loop ended without taking another event";

  STAND_IN_FRAMEWORK_STATE Now = State ();
  EXPECT_EQ (Now.LoopsRun, 2U);
  EXPECT_EQ (Now.LoopsEndedByExit, 2U);
  EXPECT_EQ (Now.LoopsRanDry, 0U);
  EXPECT_EQ (Now.LoopDepth, 0U);

  STAND_IN_DELIVERY Delivery{};
  ASSERT_TRUE (StandInGetDelivery (1, &Delivery));
  EXPECT_EQ (Delivery.LoopDepth, 2U) << "event 2 came in the nested loop";
}

TEST_F (StandInEventLoopTest, NestedLoopWithoutExitLeavesOuterLoopRunning)
{
  std::vector<UINTN> Order;

  ASSERT_EQ (mUi->Pages->SetEventHandler (HandlerFunction (HandlerA)), EFI_SUCCESS);
  OnEvent (HandlerA, [&] (UI_EVENT *Event) -> UINTN {
    Order.push_back (Event->Data);
    if (Event->Data == 1) {
      EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
    } else if (Event->Data == 2) {
      EXPECT_EQ (mUi->Pages->ExitEventLoop (), EFI_SUCCESS);
    }

    return UI_EVENT_HANDLED;
  });
  Script (0, UI_EVENT_KEY, 1);
  Script (0, UI_EVENT_KEY, 2);
  Script (0, UI_EVENT_KEY, 3);

  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_ABORTED) << "the outer loop goes on and then runs dry";
  EXPECT_EQ (Order, (std::vector<UINTN>{1, 2, 3}));
  EXPECT_EQ (State ().LoopsEndedByExit, 1U);
  EXPECT_EQ (State ().LoopsRanDry, 1U);
}

TEST_F (StandInEventLoopTest, CloseCodeOrClosedResultEndsTheLoop)
{
  ASSERT_EQ (mUi->Pages->SetEventHandler (HandlerFunction (HandlerA)), EFI_SUCCESS);
  OnEvent (HandlerA, [] (UI_EVENT *Event) -> UINTN {
    if (Event->Data == 13) {
      Event->EventCode = UI_EVENT_CLOSE;
    }

    return UI_EVENT_HANDLED;
  });
  Script (0, UI_EVENT_KEY, 'a');
  Script (0, UI_EVENT_KEY, 13);
  Script (0, UI_EVENT_KEY, 'b');

  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  EXPECT_EQ (mScript.size (), 1U);
  EXPECT_EQ (State ().LoopsEndedByClose, 1U);

  STAND_IN_DELIVERY Delivery{};
  ASSERT_TRUE (StandInGetDelivery (1, &Delivery));
  EXPECT_EQ (Delivery.Event.EventCode, (UINTN)UI_EVENT_KEY);
  EXPECT_EQ (Delivery.EventCodeAfter, (UINTN)UI_EVENT_CLOSE);

  OnEvent (HandlerA, [] (UI_EVENT *) -> UINTN { return UI_EVENT_HANDLED_PAGE_CLOSED; });
  Script (0, UI_EVENT_KEY, 'c');
  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  EXPECT_EQ (State ().LoopsEndedByClose, 2U);
  EXPECT_EQ (State ().LoopsRanDry, 0U);
}

TEST_F (StandInEventLoopTest, DryScriptEndsEveryLoopWithAnError)
{
  EFI_STATUS NestedStatus = EFI_SUCCESS;

  ASSERT_EQ (mUi->Pages->SetEventHandler (HandlerFunction (HandlerA)), EFI_SUCCESS);
  OnEvent (HandlerA, [&] (UI_EVENT *) -> UINTN {
    NestedStatus = mUi->Pages->RunEventLoop ();
    return UI_EVENT_HANDLED;
  });
  Script (0, UI_EVENT_KEY, 'a');

  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_ABORTED);
  EXPECT_EQ (NestedStatus, EFI_ABORTED);
  EXPECT_EQ (State ().LoopsRanDry, 2U);
  EXPECT_EQ (State ().LoopDepth, 0U);

  StandInSetEventSource (nullptr, nullptr);
  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_ABORTED) << "no source at all: dry at once";
  EXPECT_EQ (State ().LoopsRanDry, 3U);
}

TEST_F (StandInEventLoopTest, ExitOutsideALoopDoesNotEndTheNextOne)
{
  ASSERT_EQ (mUi->Pages->SetEventHandler (HandlerFunction (HandlerA)), EFI_SUCCESS);
  OnEvent (HandlerA, [&] (UI_EVENT *) -> UINTN {
    EXPECT_EQ (mUi->Pages->ExitEventLoop (), EFI_SUCCESS);
    return UI_EVENT_HANDLED;
  });

  EXPECT_EQ (mUi->Pages->ExitEventLoop (), EFI_SUCCESS);
  EXPECT_EQ (State ().ExitsOutsideLoop, 1U);
  Script (0, UI_EVENT_KEY, 'a');
  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  EXPECT_EQ (Received (HandlerA).size (), 1U) << "the loop took its event before it ended";
}

TEST_F (StandInEventLoopTest, TooDeepNestingIsRefused)
{
  std::vector<EFI_STATUS> Statuses;

  ASSERT_EQ (mUi->Pages->SetEventHandler (HandlerFunction (HandlerA)), EFI_SUCCESS);
  OnEvent (HandlerA, [&] (UI_EVENT *Event) -> UINTN {
    Statuses.push_back (mUi->Pages->RunEventLoop ());
    Event->EventCode = UI_EVENT_CLOSE;
    return UI_EVENT_HANDLED;
  });
  for (UINTN Index = 0; Index < 2 * STAND_IN_MAX_LOOP_DEPTH; Index++) {
    Script (0, UI_EVENT_KEY, Index);
  }

  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  ASSERT_EQ (Statuses.size (), (size_t)STAND_IN_MAX_LOOP_DEPTH);
  EXPECT_EQ (Statuses[0], EFI_OUT_OF_RESOURCES) << "the deepest handler's loop was refused";
  EXPECT_EQ (State ().LoopsRefused, 1U);
  EXPECT_EQ (State ().LoopsRun, (UINTN)STAND_IN_MAX_LOOP_DEPTH);
  EXPECT_EQ (State ().LoopsEndedByClose, (UINTN)STAND_IN_MAX_LOOP_DEPTH);
}

TEST_F (StandInEventLoopTest, FrameworkCannotBeRemovedUnderARunningLoop)
{
  EFI_STATUS Status = EFI_SUCCESS;

  ASSERT_EQ (mUi->Pages->SetEventHandler (HandlerFunction (HandlerA)), EFI_SUCCESS);
  OnEvent (HandlerA, [&] (UI_EVENT *) -> UINTN {
    Status = UninstallUiFrameworkStandIn (mFrameworkHandle);
    return UI_EVENT_HANDLED_PAGE_CLOSED;
  });
  Script (0, UI_EVENT_KEY, 'a');

  EXPECT_EQ (mUi->Pages->RunEventLoop (), EFI_SUCCESS);
  EXPECT_EQ (Status, EFI_ACCESS_DENIED);
}

} // namespace
