/** @file
  The event loop of the UI framework stand-in: events come from the source
  that the embedder sets, each goes to one handler, and loops nest.

  Each running loop has its own exit request, set by ExitEventLoop on the
  innermost loop at the time of the call. A handler that calls ExitEventLoop
  and then runs a nested loop (a prompt shown again) therefore ends the outer
  loop only once the nested one has returned and the handler with it.
**/
#include "StandInInternal.h"

VOID
StandInSetEventSource (IN STAND_IN_EVENT_SOURCE Source OPTIONAL, IN VOID *Context OPTIONAL)
{
  gStandInFramework.Source = Source;
  gStandInFramework.SourceContext = Context;
}

/**
  @return the handler of the control that raised Event, else the page
  handler, else the prompt's handler when a prompt page is active, or null.
**/
STATIC
UI_EVENT_HANDLER
RouteEvent (IN CONST UI_EVENT *Event)
{
  STAND_IN_CONTROL *Control;
  STAND_IN_PAGE *Active;

  Control = StandInLookUpControlAnywhere (Event->Control);
  if ((Control != nullptr) && (Control->Handler != nullptr)) {
    return Control->Handler;
  }

  if (gStandInFramework.State.EventHandler != nullptr) {
    return gStandInFramework.State.EventHandler;
  }

  Active = StandInLookUpLivePage (gStandInFramework.State.ActivePage);
  if ((Active != nullptr) && Active->IsPrompt) {
    return Active->Prompt.Handler;
  }

  return nullptr;
}

/**
  Keeps the event as it arrived. @return its index in the history, or MAX_UINTN when it is not kept.
**/
STATIC
UINTN
RecordDelivery (IN CONST UI_EVENT *Event, IN UI_EVENT_HANDLER Handler)
{
  STAND_IN_FRAMEWORK *Framework = &gStandInFramework;
  STAND_IN_DELIVERY *Delivery;

  if ((Framework->DeliveryCount >= STAND_IN_HISTORY_LIMIT) ||
      EFI_ERROR (StandInGrow (Framework->Deliveries, Framework->DeliveryCapacity, Framework->DeliveryCount))) {
    return MAX_UINTN;
  }

  Delivery = &Framework->Deliveries[Framework->DeliveryCount];
  Delivery->Event = *Event;
  Delivery->EventCodeAfter = Event->EventCode;
  Delivery->Handler = Handler;
  Delivery->Result = UI_EVENT_NOT_HANDLED;
  Delivery->LoopDepth = Framework->State.LoopDepth;
  return Framework->DeliveryCount++;
}

UINTN
StandInDispatchEvent (IN OUT UI_EVENT *Event)
{
  STAND_IN_FRAMEWORK *Framework = &gStandInFramework;
  UI_EVENT_HANDLER Handler = RouteEvent (Event);
  UINTN Arguments[] = {(UINTN)Handler, Event->Control, Event->EventCode, Event->Data, Framework->State.LoopDepth};
  EFI_STATUS Status;
  UINTN Index;
  UINTN Result;

  StandInEnter (StandInOpDeliverEvent, Arguments, ARRAY_SIZE (Arguments), &Status);
  Index = RecordDelivery (Event, Handler);
  if (Handler == nullptr) {
    Framework->State.EventsUnrouted++;
    return UI_EVENT_NOT_HANDLED;
  }

  Framework->State.EventsDelivered++;
  Result = Handler (Event);

  //
  // The history may have moved while the handler ran (nested loops), or been
  // released if the handler removed the framework: it is indexed afresh.
  //
  if (Index < Framework->DeliveryCount) {
    Framework->Deliveries[Index].EventCodeAfter = Event->EventCode;
    Framework->Deliveries[Index].Result = Result;
  }

  return Result;
}

UINTN
StandInDeliverEvent (IN OUT UI_EVENT *Event)
{
  if ((Event == nullptr) || !gStandInFramework.Installed) {
    return UI_EVENT_NOT_HANDLED;
  }

  return StandInDispatchEvent (Event);
}

EFI_STATUS
EFIAPI
StandInRunEventLoop (VOID)
{
  STAND_IN_FRAMEWORK *Framework = &gStandInFramework;
  STAND_IN_FRAMEWORK_STATE *State = &Framework->State;
  UI_EVENT Event;
  UINTN Level;
  UINTN Result;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpRunEventLoop, nullptr, 0, &Status)) {
    return Status;
  }

  if (State->LoopDepth >= STAND_IN_MAX_LOOP_DEPTH) {
    State->LoopsRefused++;
    return EFI_OUT_OF_RESOURCES;
  }

  Level = State->LoopDepth++;
  Framework->ExitRequested[Level] = FALSE;
  State->LoopsRun++;

  for (;;) {
    if (Framework->ExitRequested[Level]) {
      State->LoopsEndedByExit++;
      Status = EFI_SUCCESS;
      break;
    }

    //
    // A script that has nothing more ends the loop rather than hanging it.
    //
    Event = UI_EVENT{0, 0, 0, 0};
    if ((Framework->Source == nullptr) || !Framework->Source (Framework->SourceContext, &Event)) {
      State->LoopsRanDry++;
      Status = EFI_ABORTED;
      break;
    }

    Result = StandInDispatchEvent (&Event);
    if (!Framework->ExitRequested[Level] &&
        ((Event.EventCode == UI_EVENT_CLOSE) || (Result == UI_EVENT_HANDLED_PAGE_CLOSED))) {
      State->LoopsEndedByClose++;
      Status = EFI_SUCCESS;
      break;
    }
  }

  Framework->ExitRequested[Level] = FALSE;
  State->LoopDepth--;
  return Status;
}

EFI_STATUS
EFIAPI
StandInExitEventLoop (VOID)
{
  STAND_IN_FRAMEWORK_STATE *State = &gStandInFramework.State;
  EFI_STATUS Status;

  if (!StandInEnterFramework (StandInOpExitEventLoop, nullptr, 0, &Status)) {
    return Status;
  }

  //
  // Callers end a loop before they start their own, also when none runs.
  //
  if (State->LoopDepth == 0) {
    State->ExitsOutsideLoop++;
    return EFI_SUCCESS;
  }

  gStandInFramework.ExitRequested[State->LoopDepth - 1] = TRUE;
  return EFI_SUCCESS;
}

VOID
StandInReleaseDeliveries (VOID)
{
  StandInFree (gStandInFramework.Deliveries);
  gStandInFramework.DeliveryCount = 0;
  gStandInFramework.DeliveryCapacity = 0;
}
